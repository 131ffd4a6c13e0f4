# SPDX-License-Identifier: MIT
"""Triangles of a model, and pictures of it."""

from __future__ import annotations

import os
import pathlib
import warnings
from collections.abc import Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from . import _vesk

if TYPE_CHECKING:
    from ._model import Model

Path = Union[str, "os.PathLike[str]"]

_LEAST, _MOST = 16, 8192  # pixels
_FORMATS = (".svg", ".png")


class Missing(NamedTuple):
    """An element that has no surface, though its kind ought to have one."""

    element: int  # in the order of the model
    reason: str


@dataclass(frozen=True)
class Mesh:
    """The surfaces of a model as triangles. Solids are closed, faces are open.

    vertices   corners, (n, 3) float64, in the unit of the model
    triangles  into vertices, (m, 3) int64; counter-clockwise seen from outside
    elements   of which element each triangle is, (m,) int64, in the order of the model
    missing    elements that have no surface, though their kind ought to have one
    """

    vertices: npt.NDArray[np.float64]
    triangles: npt.NDArray[np.int64]
    elements: npt.NDArray[np.int64]
    missing: tuple[Missing, ...]


def fineness(tolerance: Optional[float]) -> float:
    if tolerance is None:
        return 0.0
    if not (np.isfinite(tolerance) and tolerance > 0):
        raise ValueError(f"tolerance {tolerance}: it is no length above 0")
    return float(tolerance)


def _unit(unit: float) -> float:
    if not (np.isfinite(unit) and unit > 0):
        raise ValueError(f"unit {unit}: it is no length above 0")
    return float(unit)


def mesh(model: Model, tolerance: Optional[float], quality: str) -> Mesh:
    table = _vesk.mesh(model.table(), fineness(tolerance), quality)
    table["missing"] = tuple(Missing(*each) for each in table["missing"])
    return Mesh(**table)


def warn(model: Model, missing: Sequence[tuple[int, str]]) -> None:
    if not missing:
        return
    (element, reason), count = missing[0], len(missing)
    files, lines = model.places()
    place = f"{model.files[files[element]]}:{lines[element]}" if model.files else f"{element}"
    others = f", and {count - 1:,} more; mesh().missing has all" if count > 1 else ""
    # Behind this function, its caller and the model's method.
    warnings.warn(f"an element can't be shown: {place}: {reason}{others}", stacklevel=4)


def title_of(model: Model, title: Optional[str]) -> str:
    """The title, or without one the name of the first file."""
    if title is not None:
        return title
    first = os.path.basename(model.files[0]) if model.files else "model"
    return first + (" and others" if len(model.files) > 1 else "")


_GROUPINGS = ("elements", "instances", "merged")


def to_glb(
    model: Model,
    path: Path,
    tolerance: Optional[float],
    quality: str,
    unit: float,
    grouping: str,
) -> None:
    if grouping not in _GROUPINGS:
        raise ValueError(f"grouping {grouping!r}: elements, instances or merged")
    missing = _vesk.to_glb(
        model.table(),
        list(model.files),
        os.fspath(path),
        fineness(tolerance),
        quality,
        _unit(unit),
        grouping,
    )
    warn(model, missing)


def draw(
    model: Model,
    path: Optional[Path],
    format: Optional[str],
    view: str,
    pixels: Sequence[int],
    background: str,
    unit: float,
    faces: bool,
    plain: bool,
    title: Optional[str],
) -> Optional[bytes]:
    ending = f".{format}" if format else pathlib.Path(path).suffix.lower() if path else ".svg"
    if ending not in _FORMATS:
        raise ValueError(f"{path if format is None else format}: a drawing is svg or png")
    width, height = pixels
    for size in (width, height):
        if size != int(size) or not _LEAST <= size <= _MOST:
            raise ValueError(f"pixels {width} x {height}: not two sizes from 16 to 8192")
    words: dict[str, Any] = {
        "view": view,
        "background": background,
        "width": int(width),
        "height": int(height),
        "unit": _unit(unit),
        "plain": plain,
        "png": ending == ".png",
        "faces": faces,
        "title": title_of(model, title),
    }
    name = None if path is None else os.fspath(path)
    made, missing = _vesk.draw(model.table(), list(model.files), name, words)
    warn(model, missing)
    drawing: Optional[bytes] = made
    return drawing
