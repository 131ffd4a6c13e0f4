# SPDX-License-Identifier: MIT
"""Packages that are used where they are there."""

from __future__ import annotations

import importlib
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from ._model import Model


def needed(name: str, what: str) -> Any:
    """The module; ImportError says what it is for and what it is called."""
    try:
        return importlib.import_module(name)
    except ImportError as error:
        raise ImportError(f"{what} needs {name}, which is not installed") from error


def pandas() -> Any:
    return needed("pandas", "to_dataframe()")


# Of each kind the name of one element, and the attributes that fill columns.
_COLUMNS: dict[str, tuple[str, str, str, str, str]] = {
    "cylinders": ("cylinder", "start", "end", "diameter", "diameter"),
    "boxes": ("box", "origin", "", "", ""),
    "elbows": ("elbow", "start", "end", "", ""),
    "tori": ("torus", "start", "end", "diameter", "diameter"),
    "reducers": ("reducer", "origin", "", "", ""),
    "cones": ("cone", "start", "end", "diameter1", "diameter2"),
    "polylines": ("polyline", "", "", "", ""),
    "polygons": ("polygon", "", "", "", ""),
    "texts": ("text", "position", "", "", ""),
}


def _names(pd: Any, codes: Any, names: Any) -> Any:
    """Categories of texts, each of which may stand for several codes."""
    unique, places = np.unique(np.asarray(names, dtype=object), return_inverse=True)
    return pd.Categorical.from_codes(places[codes] if len(places) else codes, unique)


def _attributes(pd: Any, model: Model, taken: set[str]) -> dict[str, Any]:
    columns = {}
    for name in model.attributes.columns:
        unique, places = np.unique(model.attributes[name].astype(str), return_inverse=True)
        codes = np.full(len(model), -1, dtype=np.int64)
        known = model.component >= 0
        codes[known] = places[model.component[known]]
        title = f"attribute {name}" if name in taken else name
        columns[title] = pd.Categorical.from_codes(codes, unique.astype(object))
    return columns


def dataframe(model: Model, attributes: bool = True) -> Any:
    pd = pandas()
    rows = len(model)
    whole = {name: np.zeros(rows, dtype=np.int64) for name in ("header", "counter", "file", "line")}
    numbers = {
        name: np.full(rows, np.nan)
        for name in ("x0", "y0", "z0", "x1", "y1", "z1", "diameter1", "diameter2")
    }
    for each in model.kinds():
        at = np.flatnonzero(model.order == each.code)
        for name, column in whole.items():
            column[at] = getattr(each, name)
        _, first, end, one, other = _COLUMNS[each.kind]
        if first:
            points = {"0": getattr(each, first)}
        else:
            points = {"0": _first_points(each)}
        if end:
            points["1"] = getattr(each, end)
        for digit, values in points.items():
            for axis, letter in enumerate("xyz"):
                numbers[letter + digit][at] = values[:, axis]
        if one:
            numbers["diameter1"][at] = getattr(each, one)
            numbers["diameter2"][at] = getattr(each, other)
    kinds = [each[0] for each in _COLUMNS.values()]
    columns = {
        "kind": pd.Categorical.from_codes(model.order.astype(np.int8) - 1, kinds),
        "header": _names(pd, whole["header"], model.headers.names),
        "counter": whole["counter"],
        "file": _names(pd, whole["file"], model.files),
        "line": whole["line"],
        **numbers,
        **model.measures(),
    }
    if attributes:
        columns.update(_attributes(pd, model, set(columns)))
    return pd.DataFrame(columns)


def _first_points(runs: Any) -> Any:
    """The first point of each run; nan for one without points."""
    first = np.full((len(runs), 3), np.nan)
    has = np.diff(runs.offsets) > 0
    first[has] = runs.points[runs.offsets[:-1][has]]
    return first
