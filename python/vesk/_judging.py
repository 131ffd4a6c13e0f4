# SPDX-License-Identifier: MIT
"""What the tool's judging commands find, as tables."""

from __future__ import annotations

from dataclasses import dataclass, fields
from typing import Any, NamedTuple

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]
Longs = npt.NDArray[np.int64]


class Finding(NamedTuple):
    """Something wrong with an element, as `vesk check` tells it."""

    file: str
    line: int  # from 1; 0: of no file
    column: int  # from 1; 0: the line as a whole
    code: str  # as `vesk explain` knows it
    severity: str  # "error", "warning" or "note"
    message: str
    expected: str
    element: int  # in the order of the model; -1: the model as a whole


class Findings(tuple[Finding, ...]):
    """Findings in the order of the elements, those of joints behind."""

    def to_dataframe(self) -> Any:
        """A row for each finding. Needs pandas."""
        from ._tables import pandas

        return pandas().DataFrame(list(self), columns=list(Finding._fields))


@dataclass(frozen=True)
class Clashes:
    """Pairs of elements that are in each other's way, as `vesk clash` tells them.

    code      "V501" they overlap, "V502" too near, "V503" the same shape, "V504" a pipe ends
              inside another
    pairs     elements in the order of the model, (n, 2)
    distance  (n,), 0 where they overlap
    depth     how deep they are in each other, at least, (n,); 0 where they do not overlap
    place     a point of both, or between them, (n, 3)
    message   for people
    """

    code: list[str]
    pairs: Longs
    distance: Floats
    depth: Floats
    place: Floats
    message: list[str]

    def __len__(self) -> int:
        return len(self.code)

    def to_dataframe(self) -> Any:
        """A row for each pair. Needs pandas."""
        from ._tables import pandas

        table = {
            "code": self.code,
            "a": self.pairs[:, 0],
            "b": self.pairs[:, 1],
            "distance": self.distance,
            "depth": self.depth,
            "x": self.place[:, 0],
            "y": self.place[:, 1],
            "z": self.place[:, 2],
            "message": self.message,
        }
        return pandas().DataFrame(table)


@dataclass(frozen=True)
class Differences:
    """Which element of one model is which of another, as `vesk diff` matches them.

    same     pairs that are equal within the tolerance, (n, 2)
    changed  pairs that moved, or have another size or header, (n, 2)
    removed  elements of the first alone, (n,)
    added    elements of the second alone, (n,)

    Elements count in the order of their models.
    """

    same: Longs
    changed: Longs
    removed: Longs
    added: Longs

    def __bool__(self) -> bool:
        """Whether anything changed, was removed or was added."""
        return bool(len(self.changed) or len(self.removed) or len(self.added))


def made(kind: type[Any], table: dict[str, Any]) -> Any:
    return kind(**{each.name: table[each.name] for each in fields(kind)})
