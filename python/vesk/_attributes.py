# SPDX-License-Identifier: MIT
"""What is known of components beyond the headers of their elements, and take-offs."""

from __future__ import annotations

import json
from dataclasses import dataclass
from typing import Any, NamedTuple, Optional

import numpy as np
import numpy.typing as npt


class Attributes:
    """The rows of sidecars, one for each component: model.attributes["item-code"].

    columns      their names behind the key, those of all files together
    f1, f2       header fields of the component's elements, (n,) texts
    first, last  their first and last counter, (n,) int64

    Model.component tells the row of each element.
    """

    columns: tuple[str, ...]
    f1: npt.NDArray[np.object_]
    f2: npt.NDArray[np.object_]
    first: npt.NDArray[np.int64]
    last: npt.NDArray[np.int64]

    def __init__(self, table: Optional[dict[str, Any]] = None) -> None:
        table = table or {"columns": (), "f1": (), "f2": (), "first": (), "last": (), "values": ()}
        self.columns = tuple(table["columns"])
        self.f1 = np.array(table["f1"], dtype=object)
        self.f2 = np.array(table["f2"], dtype=object)
        self.first = np.asarray(table["first"], dtype=np.int64)
        self.last = np.asarray(table["last"], dtype=np.int64)
        self._values = {
            name: np.array(values, dtype=object)
            for name, values in zip(self.columns, table["values"])
        }

    def __len__(self) -> int:
        return len(self.f1)

    def __getitem__(self, name: str) -> npt.NDArray[np.object_]:
        """The texts of a column, (n,); "" where a file has none of this name."""
        if name not in self._values:
            raise KeyError(f"no column {name!r}; columns: {', '.join(self.columns)}")
        return self._values[name]

    def __repr__(self) -> str:
        return f"<{len(self):,} components: {', '.join(self.columns)}>"

    def table(self, of: npt.NDArray[np.int64]) -> dict[str, Any]:
        """What the compiled module takes, with the row of each element."""
        return {
            "columns": list(self.columns),
            "f1": self.f1.tolist(),
            "f2": self.f2.tolist(),
            "first": self.first,
            "last": self.last,
            "values": [self[name].tolist() for name in self.columns],
            "of": of,
        }

    def to_dataframe(self) -> Any:
        """A row for each component. Needs pandas."""
        from ._tables import pandas

        key = {"f1": self.f1, "f2": self.f2, "first": self.first, "last": self.last}
        return pandas().DataFrame({**key, **self._values})


class Remark(NamedTuple):
    """What is measured otherwise than its numbers say, or not at all."""

    text: str
    times: int
    places: tuple[str, ...]  # "plant.dat:12"


@dataclass(frozen=True)
class TakeOff:
    """What `vesk measure` tells: a line for each kind and size of a group ("row"), for each
    group ("subtotal") and for all ("total"), by `level`.

    columns  by name and unit, "length_m": (n,) float64, or (n,) texts
    remarks  what is measured otherwise than its numbers say
    faults   elements of which nothing was measured
    """

    columns: dict[str, npt.NDArray[Any]]
    remarks: tuple[Remark, ...]
    faults: int

    def __len__(self) -> int:
        return len(self.columns["level"])

    def __getitem__(self, name: str) -> npt.NDArray[Any]:
        if name not in self.columns:
            raise KeyError(f"no column {name!r}; columns: {', '.join(self.columns)}")
        return self.columns[name]

    def to_dataframe(self) -> Any:
        """A row for each line. Needs pandas."""
        from ._tables import pandas

        return pandas().DataFrame(self.columns)


def take_off(table: dict[str, Any]) -> TakeOff:
    columns = {
        name: np.array(each, dtype=object) if isinstance(each, list) else each
        for name, each in table["columns"].items()
    }
    remarks = tuple(
        Remark(each["text"], each["count"], tuple(each["places"]))
        for each in json.loads(table["remarks"])
    )
    return TakeOff(columns, remarks, int(table["faults"]))
