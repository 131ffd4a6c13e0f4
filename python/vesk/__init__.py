# SPDX-License-Identifier: MIT
"""Plants as arrays: Vesk record files for numpy.

    import vesk

    model = vesk.read("plant.dat")       # one file, several, a folder, bytes, a file object
    model.cylinders.diameter             # numpy arrays, a set for each kind of element
    vesk.write("copy.dat", model)

Lengths are in the unit of the file, by custom millimetres; angles are degrees where they
are asked for. See docs/python.md.
"""

from ._attributes import Attributes, Remark, TakeOff
from ._judging import Clashes, Differences, Finding, Findings
from ._model import (
    Boxes,
    Cones,
    Cylinders,
    Elbows,
    Elements,
    Fault,
    Faults,
    Header,
    Headers,
    Model,
    Polygons,
    Polylines,
    Reducers,
    Texts,
    Tori,
)
from ._reading import ReadError, read, scan
from ._shapes import Mesh, Missing
from ._writing import Writer, write

__all__ = [
    "Attributes",
    "Boxes",
    "Clashes",
    "Cones",
    "Cylinders",
    "Differences",
    "Elbows",
    "Elements",
    "Fault",
    "Faults",
    "Finding",
    "Findings",
    "Header",
    "Headers",
    "Mesh",
    "Missing",
    "Model",
    "Polygons",
    "Polylines",
    "ReadError",
    "Reducers",
    "Remark",
    "TakeOff",
    "Texts",
    "Tori",
    "Writer",
    "read",
    "scan",
    "write",
]
