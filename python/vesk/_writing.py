# SPDX-License-Identifier: MIT
"""Writing record files from arrays."""

from __future__ import annotations

import os
from collections.abc import Sequence
from types import TracebackType
from typing import Any, Optional, Union

import numpy as np
import numpy.typing as npt

from . import _vesk
from ._model import STYLES, Floats, Header, Model

HeaderLike = Union[str, tuple[str, str], Header]
Headers = Union[HeaderLike, Sequence[HeaderLike], npt.NDArray[Any]]
Numbers = npt.ArrayLike

_MOST = 46655  # three digits of base 36


def _fault(what: str, row: Optional[int], text: str) -> ValueError:
    return ValueError(f"{what}: {text}" if row is None else f"{what}: row {row}: {text}")


def _first_wrong(value: Any, shape: tuple[int, ...]) -> Optional[int]:
    """The first row that is not of this shape, or no numbers."""
    try:
        rows = list(value)
    except TypeError:
        return None
    for row, each in enumerate(rows):
        try:
            if np.asarray(each, dtype=np.float64).shape != shape:
                return row
        except (TypeError, ValueError):
            return row
    return None


def _numbers(what: str, value: Numbers, shape: tuple[int, ...]) -> Floats:
    wanted = "numbers" if not shape else f"{' x '.join(map(str, shape))} numbers"
    try:
        array = np.asarray(value)
        if array.dtype.kind not in "fiub":
            raise ValueError
        array = array.astype(np.float64, copy=False)
        if array.shape[array.ndim - len(shape) :] != shape or array.ndim > len(shape) + 1:
            raise ValueError
    except (TypeError, ValueError):
        raise _fault(what, _first_wrong(value, shape), f"no {wanted}") from None
    rows = array if array.ndim > len(shape) else array[None]
    bad = ~np.isfinite(rows).reshape(len(rows), -1).all(axis=1)
    if bad.any():
        row = int(np.argmax(bad))
        raise _fault(what, row, f"{rows[row].tolist()} is not finite")
    return rows


def _together(kind: str, columns: dict[str, Floats], more: int = 1) -> tuple[int, list[Floats]]:
    """All columns with as many rows as the longest; one row stands for all."""
    rows = more
    for name, column in columns.items():
        if len(column) != 1 and rows not in (1, len(column)):
            raise ValueError(f"{kind}: {name} has {len(column)} rows, and others have {rows}")
        rows = rows if len(column) == 1 else len(column)
    wide = [np.broadcast_to(column, (rows, *column.shape[1:])) for column in columns.values()]
    return rows, [np.ascontiguousarray(each) for each in wide]


def _header(what: str, value: Any, row: Optional[int]) -> Header:
    if isinstance(value, Header):
        return value
    words = (value, "") if isinstance(value, str) else tuple(value)
    if len(words) != 2 or not all(isinstance(each, str) for each in words):
        raise _fault(what, row, f"header {value!r} is neither F1 nor (F1, F2)")
    for text, most in zip(words, (8, 2)):
        if len(text.encode("utf-8", "surrogateescape")) > most:
            raise _fault(what, row, f"header {text!r} has more than {most} bytes")
        if any(ord(each) < 32 for each in text):
            raise _fault(what, row, f"header {text!r} has a control character")
    return Header(*words)


class _Labels:
    """Headers and counters of the elements of one call."""

    def __init__(self, kind: str, rows: int, header: Headers, number: npt.ArrayLike) -> None:
        one = isinstance(header, str) or (
            isinstance(header, tuple) and len(header) != rows or isinstance(header, Header)
        )
        if isinstance(header, tuple) and len(header) == 2 and isinstance(header[0], str):
            one = True
        if one:
            self.words = [_header(kind, header, None)]
            self.codes = np.zeros(rows, dtype=np.int32)
        else:
            self._take_many(kind, rows, list(header))
        self.counters = self._counters(kind, rows, number)

    def _take_many(self, kind: str, rows: int, headers: list[Any]) -> None:
        if len(headers) != rows:
            raise ValueError(f"{kind}: {len(headers)} headers for {rows} rows")
        known: dict[Any, int] = {}
        self.words = []
        self.codes = np.empty(rows, dtype=np.int32)
        for row, each in enumerate(headers):
            key = each if isinstance(each, (str, tuple)) else tuple(each)
            if key not in known:
                known[key] = len(self.words)
                self.words.append(_header(kind, key, row))
            self.codes[row] = known[key]

    @staticmethod
    def _counters(kind: str, rows: int, number: npt.ArrayLike) -> npt.NDArray[np.int32]:
        given = np.asarray(number)
        if given.dtype.kind not in "iu" or given.ndim > 1 or given.size not in (1, rows):
            raise ValueError(f"{kind}: number is one integer or one for each of {rows} rows")
        wide = np.broadcast_to(given.reshape(-1), (rows,))
        bad = (wide < 0) | (wide > _MOST)
        if bad.any():
            row = int(np.argmax(bad))
            raise _fault(kind, row, f"number {wide[row]} is not 0 to {_MOST}")
        return np.ascontiguousarray(wide, dtype=np.int32)


class Writer:
    """Write a record file from arrays.

        with vesk.Writer("pump.dat") as file:
            file.cylinders(start, end, diameter, header=("P-1001", "01"))

    path     the file appears whole, when the block ends without an exception, and replaces
             one of that name then; a device or a pipe is written directly
    style    "token", as the exported functions of the library write, or "fixed"

    Points are (n, 3) or one (3,), numbers (n,) or one: one row stands for all. `header` is
    F1, (F1, F2), a Header, or one of these for each row; `number` the element number, 0 to
    46655. Bytes are those of the exported functions. ValueError names the row that is wrong,
    and nothing of the call is written; OSError says what the system refused.

    One thread at a time.
    """

    def __init__(self, path: Union[str, "os.PathLike[str]"], style: str = "token") -> None:
        if style not in STYLES:
            raise ValueError(f"style {style!r}: it is 'fixed' or 'token'")
        self._file = _vesk.Writer(os.fspath(path), STYLES[style])

    def __enter__(self) -> Writer:
        return self

    def __exit__(
        self,
        kind: Optional[type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        if kind is None:
            self.close()
        else:
            self.discard()

    def close(self) -> None:
        """Finish the file: all of it is on the disk then."""
        self._file.close()

    def discard(self) -> None:
        """Leave nothing, and a file that was there as it is."""
        self._file.discard()

    def _solids(
        self,
        kind: str,
        code: int,
        header: Headers,
        number: npt.ArrayLike,
        columns: dict[str, tuple[Numbers, tuple[int, ...]]],
    ) -> None:
        read = {
            name: _numbers(f"{kind}.{name}", value, shape)
            for name, (value, shape) in columns.items()
        }
        rows, arrays = _together(kind, read)
        labels = _Labels(kind, rows, header, number)
        self._file.solids(code, arrays, labels.words, labels.codes, labels.counters)

    def cylinders(
        self,
        start: Numbers,
        end: Numbers,
        diameter: Numbers,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """start, end (n, 3); diameter (n,)."""
        self._solids(
            "cylinders",
            1,
            header,
            number,
            {"start": (start, (3,)), "end": (end, (3,)), "diameter": (diameter, ())},
        )

    def cones(
        self,
        start: Numbers,
        end: Numbers,
        diameter1: Numbers,
        diameter2: Numbers,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """start, end (n, 3); diameters at both (n,)."""
        self._solids(
            "cones",
            6,
            header,
            number,
            {
                "start": (start, (3,)),
                "end": (end, (3,)),
                "diameter1": (diameter1, ()),
                "diameter2": (diameter2, ()),
            },
        )

    def boxes(
        self,
        corner: Numbers,
        end1: Numbers,
        end2: Numbers,
        end3: Numbers,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """A corner and the ends of its three edges, (n, 3) each."""
        columns = {"corner": corner, "end1": end1, "end2": end2, "end3": end3}
        self._solids("boxes", 2, header, number, {k: (v, (3,)) for k, v in columns.items()})

    def tori(
        self,
        centre: Numbers,
        start: Numbers,
        end: Numbers,
        diameter: Numbers,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """Bends of pipe: centre, start and end of the centre line (n, 3); diameter (n,)."""
        self._solids(
            "tori",
            4,
            header,
            number,
            {
                "centre": (centre, (3,)),
                "start": (start, (3,)),
                "end": (end, (3,)),
                "diameter": (diameter, ()),
            },
        )

    def elbows(
        self,
        axis_start: Numbers,
        axis_end: Numbers,
        outer_start: Numbers,
        outer_end: Numbers,
        inner_radius: Numbers,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """Duct elbows: both ends of the bend axis, a point of the outer face at the start and
        at the end beside axis_start, (n, 3) each; inner bend radius (n,)."""
        points = {
            "axis_start": axis_start,
            "axis_end": axis_end,
            "outer_start": outer_start,
            "outer_end": outer_end,
        }
        columns: dict[str, tuple[Numbers, tuple[int, ...]]] = {
            k: (v, (3,)) for k, v in points.items()
        }
        columns["inner_radius"] = (inner_radius, ())
        self._solids("elbows", 3, header, number, columns)

    def reducers(
        self, corners: Numbers, *, header: Headers = "", number: npt.ArrayLike = 0
    ) -> None:
        """corners (n, 8, 3): four of the first end in the order 0, 1, 3, 2 round its face,
        four of the second opposite to them."""
        self._solids("reducers", 5, header, number, {"corners": (corners, (8, 3))})

    def _runs(
        self,
        kind: str,
        points: Numbers,
        offsets: npt.ArrayLike,
        least: int,
        header: Headers,
        number: npt.ArrayLike,
    ) -> None:
        at = np.asarray(offsets)
        if at.dtype.kind not in "iu" or at.ndim != 1 or len(at) < 1:
            raise ValueError(f"{kind}.offsets: no integers (n + 1,)")
        if at[0] != 0:
            raise ValueError(f"{kind}.offsets: the first is {at[0]}, not 0")
        short = np.diff(at) < least
        if short.any():
            row = int(np.argmax(short))
            raise _fault(kind, row, f"{at[row + 1] - at[row]} points, not {least} or more")
        given = np.asarray(points)
        if given.shape != (int(at[-1]), 3):
            raise ValueError(f"{kind}.points: the shape is {given.shape}, not ({at[-1]}, 3)")
        if given.dtype.kind in "fiub":
            bad = ~np.isfinite(given).all(axis=1)
            if bad.any():
                point = int(np.argmax(bad))
                row = int(np.searchsorted(at, point, side="right")) - 1
                raise _fault(kind, row, f"{given[point].tolist()} is not finite")
        labels = _Labels(kind, len(at) - 1, header, number)
        self._file.runs(
            kind == "polygons",
            np.ascontiguousarray(given, dtype=np.float64),
            np.ascontiguousarray(at, dtype=np.int64),
            labels.words,
            labels.codes,
            labels.counters,
        )

    def polylines(
        self,
        points: Numbers,
        offsets: npt.ArrayLike,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """points (m, 3); those of row i are points[offsets[i]:offsets[i + 1]]: one is a
        point, two are a segment."""
        self._runs("polylines", points, offsets, 1, header, number)

    def polygons(
        self,
        points: Numbers,
        offsets: npt.ArrayLike,
        *,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """points (m, 3); the corners of row i are points[offsets[i]:offsets[i + 1]]."""
        self._runs("polygons", points, offsets, 3, header, number)

    def texts(
        self,
        position: Numbers,
        text: Union[str, Sequence[str]],
        *,
        direction: Numbers = (1.0, 0.0, 0.0),
        up: Numbers = (0.0, 1.0, 0.0),
        char_width: Numbers = 1.0,
        height: Numbers = 1.0,
        alignment: Numbers = 1,
        flag: Numbers = 0,
        header: Headers = "",
        number: npt.ArrayLike = 0,
    ) -> None:
        """position, direction, up (n, 3); char_width, height (n,); alignment 1 to 9."""
        texts = [text] if isinstance(text, str) else list(text)
        for row, each in enumerate(texts):
            if not isinstance(each, str):
                raise _fault("texts.text", row, f"{each!r} is no text")
            if "\n" in each or "\0" in each:
                raise _fault("texts.text", row, "a line feed or a zero character")
            if len(each.encode("utf-8", "surrogateescape")) > 512:
                raise _fault("texts.text", row, "more than 512 bytes")
        columns = {
            name: _numbers(f"texts.{name}", value, shape)
            for name, value, shape in (
                ("position", position, (3,)),
                ("direction", direction, (3,)),
                ("up", up, (3,)),
                ("char_width", char_width, ()),
                ("height", height, ()),
                ("alignment", alignment, ()),
                ("flag", flag, ()),
            )
        }
        for name in ("alignment", "flag"):
            odd = (columns[name] % 1 != 0) | (abs(columns[name]) > 2**31 - 1)
            if odd.any():
                raise _fault(f"texts.{name}", int(np.argmax(odd)), "no integer")
        rows, arrays = _together("texts", columns, len(texts))
        if len(texts) not in (1, rows):
            raise ValueError(f"texts: {len(texts)} texts, and others have {rows} rows")
        labels = _Labels("texts", rows, header, number)
        self._file.texts(
            texts * rows if len(texts) == 1 else texts,
            arrays,
            labels.words,
            labels.codes,
            labels.counters,
        )


def _refuse_nan(model: Model) -> None:
    for each in model.kinds():
        for name, column in each.columns().items():
            if column.dtype.kind != "f" or np.isfinite(column).all():
                continue
            bad = ~np.isfinite(column).reshape(len(column), -1).all(axis=1)
            row = int(np.argmax(bad))
            raise _fault(f"{each.kind}.{name}", row, f"{column[row].tolist()} is not finite")


def write(
    path: Union[str, "os.PathLike[str]"],
    model: Model,
    *,
    style: Optional[str] = None,
    allow_nan: bool = False,
) -> None:
    """Write a model, its elements in their order and with all of their headers.

    style      "fixed" or "token"; without it as the model was read
    allow_nan  write NaN and the infinities, as "nan", "inf" and "-inf", where else they are
               a ValueError that names the row

    The file appears whole or not at all. ValueError for arrays that do not fit each other,
    OSError for what the system refuses, a full disk too.
    """
    if not allow_nan:
        _refuse_nan(model)
    with Writer(path, style if style is not None else model.style) as file:
        file._file.plant(model.table())
