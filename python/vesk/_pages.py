# SPDX-License-Identifier: MIT
"""The page of a model, and how it shows itself in a notebook."""

from __future__ import annotations

import html
import os
import pathlib
import warnings
from typing import TYPE_CHECKING, Any, Optional

from . import _vesk
from ._shapes import Path, fineness, title_of, warn

if TYPE_CHECKING:
    from ._model import Model

TEMPLATE = pathlib.Path(__file__).with_name("page.html")

# More makes a notebook slow.
MOST_IN_A_PAGE = 50_000
MOST_IN_A_DRAWING = 200_000


def to_html(
    model: Model,
    path: Optional[Path],
    tolerance: Optional[float],
    quality: str,
    title: Optional[str],
) -> Optional[bytes]:
    try:
        template = TEMPLATE.read_bytes()
    except FileNotFoundError:
        raise RuntimeError(
            "this package was built without the page of the viewer; draw() needs none"
        ) from None
    words: dict[str, Any] = {
        "files": list(model.files),
        "style": model.style_number,
        "tolerance": fineness(tolerance),
        "quality": quality,
        "title": title_of(model, title),
    }
    name = None if path is None else os.fspath(path)
    page, missing = _vesk.page(model.table(), model.known(), template, name, words)
    warn(model, missing)
    made: Optional[bytes] = page
    return made


def _frame(page: bytes) -> str:
    text = html.escape(page.decode("utf-8", "replace"))
    return f'<iframe srcdoc="{text}" width="100%" height="600" style="border: 0"></iframe>'


def shown(model: Model) -> dict[str, str]:
    """By their types: the page in a frame where it is there, and the drawing."""
    bundle = {"text/plain": repr(model)}
    if not len(model) or len(model) > MOST_IN_A_DRAWING:
        return bundle
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # what can't be shown is named where it is asked for
        drawing = model.draw(format="svg", pixels=(960, 600))
        assert drawing is not None
        bundle["image/svg+xml"] = drawing.decode("utf-8", "replace")
        bundle["text/html"] = bundle["image/svg+xml"]
        if TEMPLATE.exists() and len(model) <= MOST_IN_A_PAGE:
            page = to_html(model, None, None, "draft", None)
            assert page is not None
            bundle["text/html"] = _frame(page)
    return bundle
