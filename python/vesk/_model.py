# SPDX-License-Identifier: MIT
"""What a read plant is: a Model of columns."""

from __future__ import annotations

import math
import os
from collections.abc import Sequence
from typing import Any, ClassVar, NamedTuple, Optional, Union, cast

import numpy as np
import numpy.typing as npt

from . import _pages, _shapes, _vesk
from ._attributes import Attributes, TakeOff, take_off
from ._judging import Clashes, Differences, Finding, Findings, made

Floats = npt.NDArray[np.float64]
Ints = npt.NDArray[np.int32]
Longs = npt.NDArray[np.int64]
Bytes = npt.NDArray[np.uint8]

STYLES = {"fixed": 2, "token": 3}
_STYLE_NAMES = {number: name for name, number in STYLES.items()}


def text_of(characters: Bytes) -> str:
    return characters.tobytes().decode("utf-8", "surrogateescape")


Texts_ = Union[str, Sequence[str], None]
Boxes_ = Union[str, Sequence[float], Sequence[Sequence[float]], None]
_NUMBERS = {"bbox": 6, "near": 4}


def _criteria(words: dict[str, Any]) -> list[tuple[str, str]]:
    """Each text with what the tool calls its criterion."""
    texts: list[tuple[str, str]] = []
    for name, value in words.items():
        if value is None:
            continue
        several = [value] if isinstance(value, str) else list(value)
        if name in _NUMBERS and several and not isinstance(several[0], (str, Sequence, np.ndarray)):
            several = [several]
        for each in several:
            if name in _NUMBERS and not isinstance(each, str):
                each = ",".join(repr(float(number)) for number in each)
            texts.append(("only" if name == "kind" else name, each))
    return texts


def _finite(what: str, vector: Floats) -> Floats:
    if vector.shape != (3,) or not np.isfinite(vector).all():
        raise ValueError(f"{what}: {vector.tolist()} is not three numbers")
    return vector


# Quarter turns are exact.
_QUARTERS = {0.0: (0.0, 1.0), 90.0: (1.0, 0.0), 180.0: (0.0, -1.0), 270.0: (-1.0, 0.0)}


def _turn(axis: str, degrees: float) -> Floats:
    if axis not in ("x", "y", "z") or not math.isfinite(degrees):
        raise ValueError(f"rotate {axis!r}, {degrees}: an axis x, y or z and degrees")
    angle = math.radians(math.remainder(degrees, 360.0))
    s, c = _QUARTERS.get(degrees % 360.0, (math.sin(angle), math.cos(angle)))
    i = "xyz".index(axis)
    matrix = np.eye(3)
    j, k = (i + 1) % 3, (i + 2) % 3
    matrix[j, j] = matrix[k, k] = c
    matrix[j, k], matrix[k, j] = -s, s
    return matrix


class Header(NamedTuple):
    """What elements have in common: their header without the counter.

    Fields are without the blanks behind them. ft and tk are the closing attributes, None
    without one; f3 is None but for a counter that is no number.
    """

    f1: str = ""
    f2: str = ""
    f4: str = ""
    f5: str = ""
    f6: str = ""
    f7: str = ""
    ft: Optional[int] = None
    tk: Optional[int] = None
    f3: Optional[str] = None

    @property
    def name(self) -> str:
        """F1 and F2 as the tool prints them: "P-1001 01"."""
        return _vesk.header_name(self.f1, self.f2)


class Headers(tuple[Header, ...]):
    """The headers of a model, in the order in which they first come."""

    @property
    def names(self) -> npt.NDArray[np.object_]:
        """The name of each: headers.names[model.cylinders.header] has one for each row."""
        return np.array([each.name for each in self], dtype=object)


class Fault(NamedTuple):
    """Something in a file that is no element."""

    file: str
    line: int  # from 1
    column: int  # from 1; 0: the line as a whole
    code: str  # as `vesk explain` knows it
    message: str
    expected: str

    def __str__(self) -> str:
        text = f"{self.file}:{self.line}:{self.column}: {self.message}"
        return f"{text}; expected {self.expected}" if self.expected else text


class Faults(tuple[Fault, ...]):
    """The faults of a model, in the order of its files."""

    def to_dataframe(self) -> Any:
        """A row for each fault. Needs pandas."""
        from ._tables import pandas

        return pandas().DataFrame(list(self), columns=list(Fault._fields))


class Elements:
    """The elements of one kind, a row for each in the order of the files.

    header   into Model.headers                       (n,) int32
    counter  element number; -1: blank                (n,) int32
    file     into Model.files                         (n,) uint32
    line     its first line, from 1; 0: of no file    (n,) int64
    """

    kind: ClassVar[str]
    code: ClassVar[int]

    header: Ints
    counter: Ints
    file: npt.NDArray[np.uint32]
    line: Longs

    def __init__(self, columns: dict[str, Any]) -> None:
        self.__dict__.update(columns)

    def __len__(self) -> int:
        return len(self.header)

    def __repr__(self) -> str:
        return f"<{len(self):,} {self.kind}>"

    def columns(self) -> dict[str, Any]:
        """All columns by their names; the arrays themselves."""
        return dict(self.__dict__)


class Cylinders(Elements):
    """start, axis (n, 3); diameter (n,)."""

    kind = "cylinders"
    code = 1
    start: Floats
    axis: Floats
    diameter: Floats

    @property
    def end(self) -> Floats:
        """Centre of the end face, (n, 3)."""
        return np.asarray(self.start + self.axis)

    @property
    def length(self) -> Floats:
        """From face to face, (n,)."""
        return np.asarray(np.linalg.norm(self.axis, axis=1))


class Boxes(Elements):
    """origin (a corner), edge1, edge2, edge3 (n, 3).

    Edge marks: those of row i are tag_offsets[i] to tag_offsets[i + 1]; mark k has the name
    tag_names[tag_name_offsets[k]:tag_name_offsets[k + 1]] and its rows of tag_values by
    tag_value_offsets.
    """

    kind = "boxes"
    code = 2
    origin: Floats
    edge1: Floats
    edge2: Floats
    edge3: Floats
    tag_offsets: Longs
    tag_name_offsets: Longs
    tag_names: Bytes
    tag_value_offsets: Longs
    tag_values: Floats


class Elbows(Elements):
    """Duct elbows. centre, start_vector, end_vector (n, 3); width, depth (n,); flipped (n,)
    uint8: the written points start from the other side."""

    kind = "elbows"
    code = 3
    centre: Floats
    start_vector: Floats
    end_vector: Floats
    width: Floats
    depth: Floats
    flipped: Bytes

    @property
    def start(self) -> Floats:
        """Middle of the section at the start, (n, 3)."""
        return np.asarray(self.centre + self.start_vector)

    @property
    def end(self) -> Floats:
        """Middle of the section at the end, (n, 3)."""
        return np.asarray(self.centre + self.end_vector)


class Tori(Elements):
    """Bends of pipe. centre, start_vector, end_vector (n, 3); diameter of the tube (n,);
    bend_radius (n,), not given unless above 0."""

    kind = "tori"
    code = 4
    centre: Floats
    start_vector: Floats
    end_vector: Floats
    diameter: Floats
    bend_radius: Floats

    @property
    def start(self) -> Floats:
        """Start of the centre line, (n, 3)."""
        return np.asarray(self.centre + self.start_vector)

    @property
    def end(self) -> Floats:
        """End of the centre line, (n, 3)."""
        return np.asarray(self.centre + self.end_vector)


class Reducers(Elements):
    """origin (n, 3), corner 0; corner_vectors (n, 7, 3), from it to corners 1 to 7. Tags as
    the marks of Boxes."""

    kind = "reducers"
    code = 5
    origin: Floats
    corner_vectors: Floats
    tag_offsets: Longs
    tag_name_offsets: Longs
    tag_names: Bytes
    tag_value_offsets: Longs
    tag_values: Floats

    @property
    def corners(self) -> Floats:
        """All corners, (n, 8, 3)."""
        others = self.origin[:, None, :] + self.corner_vectors
        return np.concatenate([self.origin[:, None, :], others], axis=1)


class Cones(Elements):
    """start, axis (n, 3); diameter1 at the start and diameter2 at the end (n,)."""

    kind = "cones"
    code = 6
    start: Floats
    axis: Floats
    diameter1: Floats
    diameter2: Floats

    @property
    def end(self) -> Floats:
        """Centre of the end face, (n, 3)."""
        return np.asarray(self.start + self.axis)


class Polylines(Elements):
    """Points, segments and polylines: those of row i are points[offsets[i]:offsets[i + 1]].

    offsets (n + 1,) int64; points (m, 3); point_size (n,) int32 and point_direction (n, 3) of
    single points; arcs arc_offsets (n + 1,), arc_radius (k,), arc_values (k, 3) int32.
    """

    kind = "polylines"
    code = 7
    offsets: Longs
    points: Floats
    point_size: Ints
    point_direction: Floats
    arc_offsets: Longs
    arc_radius: Floats
    arc_values: Ints


class Polygons(Elements):
    """Faces: the corners of row i are points[offsets[i]:offsets[i + 1]].

    offsets (n + 1,) int64; points, normals (m, 3); has_normal (m,) uint8; arcs as Polylines.
    """

    kind = "polygons"
    code = 8
    offsets: Longs
    points: Floats
    normals: Floats
    has_normal: Bytes
    arc_offsets: Longs
    arc_radius: Floats
    arc_values: Ints


class Texts(Elements):
    """position, direction, up (n, 3); char_width, height (n,); alignment, flag (n,) int32;
    the characters of row i are text_bytes[text_offsets[i]:text_offsets[i + 1]]."""

    kind = "texts"
    code = 9
    position: Floats
    direction: Floats
    up: Floats
    char_width: Floats
    height: Floats
    alignment: Ints
    flag: Ints
    text_offsets: Longs
    text_bytes: Bytes

    @property
    def text(self) -> list[str]:
        """The characters of each row; bytes that are no UTF-8 as surrogates."""
        at = self.text_offsets
        return [text_of(self.text_bytes[at[i] : at[i + 1]]) for i in range(len(self))]


KINDS: tuple[type[Elements], ...] = (
    Cylinders,
    Boxes,
    Elbows,
    Tori,
    Reducers,
    Cones,
    Polylines,
    Polygons,
    Texts,
)


class Model:
    """Elements of one or more record files as arrays.

    files       names, by Elements.file
    styles      "fixed", "token" or "none" of each file
    headers     by Elements.header
    faults      what is no element, in the order of the files
    order       the kinds of all elements in the order of the files, Elements.code (n,)
                uint8: the next one of a kind is the next row of its arrays
    attributes  what the sidecars beside the files tell of components
    component   into attributes for each element in this order, (n,) int64; -1: none

    A model is plain data: it pickles, and threads may read it as they like. Who changes an
    array changes the model; no two threads at a time, please.
    """

    files: tuple[str, ...]
    styles: tuple[str, ...]
    headers: Headers
    faults: Faults
    order: Bytes
    attributes: Attributes
    component: Longs
    cylinders: Cylinders
    boxes: Boxes
    elbows: Elbows
    tori: Tori
    reducers: Reducers
    cones: Cones
    polylines: Polylines
    polygons: Polygons
    texts: Texts

    def __init__(
        self, table: _vesk.Table, files: Sequence[str] = (), styles: Sequence[str] = ()
    ) -> None:
        self.files = tuple(files)
        self.styles = tuple(styles)
        self.headers = Headers(Header(*each) for each in table["headers"])
        self.faults = Faults(
            Fault(self.files[each[0]], *each[1:]) for each in table.get("faults", ())
        )
        self.order = table["order"]
        known = table.get("attributes")
        self.attributes = Attributes(known)
        self.component = known["of"] if known else np.full(len(self.order), -1, dtype=np.int64)
        for kind in KINDS:
            setattr(self, kind.kind, kind(table[kind.kind]))

    def known(self) -> Optional[_vesk.Table]:
        """The attributes as the compiled module takes them; None without any."""
        return self.attributes.table(self.component) if self.attributes.columns else None

    @property
    def style_number(self) -> int:
        """What the compiled module calls the style."""
        return STYLES[self.style]

    @property
    def style(self) -> str:
        """That of the first file with elements; "token" without one."""
        return next((each for each in self.styles if each in STYLES), "token")

    def kinds(self) -> tuple[Elements, ...]:
        """The elements of every kind, in the order of their codes."""
        return tuple(getattr(self, kind.kind) for kind in KINDS)

    def table(self) -> _vesk.Table:
        """What the compiled module takes; the arrays themselves."""
        table: _vesk.Table = {each.kind: each.columns() for each in self.kinds()}
        table["order"] = self.order
        table["headers"] = list(self.headers)
        return table

    def _part(
        self, table: _vesk.Table, mask: Optional[npt.NDArray[np.bool_]] = None
    ) -> Model:
        part = Model(table, self.files, self.styles)
        part.attributes = self.attributes
        part.component = self.component if mask is None else self.component[mask]
        return part

    def take(self, mask: npt.ArrayLike) -> Model:
        """The elements whose mark is true, (n,) in the order of the files."""
        marks = np.asarray(mask)
        if marks.dtype != np.bool_:
            raise TypeError(f"a mask is bool, not {marks.dtype}")
        return self._part(_vesk.take(self.table(), marks.astype(np.uint8)), marks)

    def select(
        self,
        *,
        header: Texts_ = None,
        kind: Texts_ = None,
        size: Texts_ = None,
        bbox: Boxes_ = None,
        near: Boxes_ = None,
        touching: Texts_ = None,
        lines: Texts_ = None,
        exclude: Optional[dict[str, Any]] = None,
        tolerance: float = 0.0,
    ) -> Model:
        """The elements that are meant, by the words and rules of the tool's selection.

        header    a pattern for F1, or F1 and F2: "P-1001", "P-10*", "* 01"
        kind      "pipe", "cylinder", "bend", "pipe,bend"
        size      "..50", "100..", "60.3,168.3"
        bbox      X1, Y1, Z1, X2, Y2, Z2: what has a point in this box
        near      X, Y, Z, R: what has a point no further than R from this one
        touching  what is no further than the tolerance from the headers of this pattern
        lines     lines of the file: "1-100"
        exclude   the same words, for what is left out: {"size": "..50"}

        Each may be several in a list: these are alternatives; different words must all be
        met. ValueError for a text that means nothing.
        """
        wanted = {
            "header": header,
            "kind": kind,
            "size": size,
            "bbox": bbox,
            "near": near,
            "touching": touching,
            "lines": lines,
        }
        unknown = set(exclude or {}) - set(wanted)
        if unknown:
            raise ValueError(f"exclude: there is no {', '.join(sorted(unknown))}")
        texts = [(*each, False) for each in _criteria(wanted)]
        texts += [(*each, True) for each in _criteria(exclude or {})]
        marks = _vesk.select(self.table(), texts, tolerance)
        return self._part(_vesk.take(self.table(), marks), marks.astype(np.bool_))

    def extents(self) -> Floats:
        """The least and the greatest corner of all elements, (2, 3); nan without any."""
        return np.asarray(_vesk.extents(self.table()))

    def volumes(self) -> Floats:
        """The volume of each element in the order of the files, (n,); 0 for lines, faces and
        texts."""
        return np.asarray(_vesk.volumes(self.table()))

    def volume(self) -> float:
        """The sum of the volumes of the solids, what overlaps counted twice."""
        return float(self.volumes().sum())

    def measures(self) -> dict[str, Floats]:
        """What each element measures by the rules of the tool's take-off, in the order of the
        files and the unit of the file; 0 for what a kind does not have.

        length   of the centre line of what is round or a duct; of a box, (n,)
        lines    of segments and polylines, (n,)
        surface  outside; of what is round or a duct elbow without the ends, (n,)
        volume   of the body that is drawn, (n,)
        """
        return dict(_vesk.measures(self.table()))

    def measure(
        self,
        by: Texts_ = None,
        *,
        sums: bool = False,
        unit: float = 1.0,
        units: str = "metric",
        schedule: Optional[str] = None,
        walls: Union[str, "os.PathLike[str]", None] = None,
        density: Optional[float] = None,
        content: Optional[float] = None,
        insulation: float = 0.0,
    ) -> TakeOff:
        """The take-off of `vesk measure`, element by element as measures() has it.

        by          "header", "group", "kind", "size", and of the sidecar "item", "spec" or any
                    column; "header,size" are combinations, a list gives one table behind
                    the other; without it one table of kinds and sizes
        sums        only the sum of each group
        unit        length of the model's unit in millimetres
        units       "metric" (mm, m, kg) or "imperial" (in, ft, lb), of the result
        schedule    walls of ASME B36.10M and B36.19M by outside diameter: "40", "STD"
        walls       walls of one's own, a CSV file
        density     kg/m3 of the solids; without it 0, with walls that of steel
        content     kg/m3 of what flows inside of walls; without it that of water
        insulation  thickness of insulation in millimetres

        ValueError for a word that means nothing and for a model without attributes where
        they are asked for, OSError for a table of walls that can't be read.
        """
        if units not in ("metric", "imperial"):
            raise ValueError(f"units {units!r}: metric or imperial")
        if schedule is not None and walls is not None:
            raise ValueError("walls are those of a schedule or of a table, not of both")
        numbers = {"density": density, "content": content, "insulation": insulation}
        for name, number in numbers.items():
            if number is not None and not (math.isfinite(number) and number >= 0):
                raise ValueError(f"{name} {number}: it is no number, 0 or more")
        if not (math.isfinite(unit) and unit > 0):
            raise ValueError(f"unit {unit}: it is no length above 0")
        words = {
            **numbers,
            "by": [by] if isinstance(by, str) else list(by or ()),
            "sums": sums,
            "unit": unit,
            "imperial": units == "imperial",
            "schedule": schedule or "",
            "walls": os.fspath(walls) if walls is not None else "",
        }
        return take_off(_vesk.measure(self.table(), list(self.files), self.known(), words))

    def move(self, vector: npt.ArrayLike) -> Model:
        """A copy, shifted; texts too."""
        by = np.asarray(vector, dtype=np.float64)
        return self._part(_vesk.move(self.table(), 1.0, np.eye(3), _finite("move", by)))

    def rotate(self, axis: str, degrees: float) -> Model:
        """A copy, turned about the world's x, y or z axis by the right hand."""
        matrix = _turn(axis, float(degrees))
        return self._part(_vesk.move(self.table(), 1.0, matrix, np.zeros(3)))

    def scale(self, factor: float) -> Model:
        """A copy, multiplied about the origin, sizes too; the factor is above 0."""
        if not (np.isfinite(factor) and factor > 0):
            raise ValueError(f"scale {factor}: it is no number above 0")
        return self._part(_vesk.move(self.table(), float(factor), np.eye(3), np.zeros(3)))

    def to_dataframe(self, *, attributes: bool = True) -> Any:
        """A row for each element in the order of the files. Needs pandas.

        kind, header, counter, file, line; x0, y0, z0, its first point; x1, y1, z1, the end of
        what has two; diameter1 and diameter2 of what is round; length, lines, surface and
        volume as measures() has them. What a kind does not have is nan, or 0 of the last
        four. Then the columns of the sidecars, of which one that has a name of these is called
        "attribute ..."; nan without a component. Texts are categories.
        """
        from ._tables import dataframe

        return dataframe(self, attributes)

    def places(self) -> tuple[Longs, Longs]:
        """File, into files, and line of each element in the order of the files, (n,) each."""
        file = np.zeros(len(self), dtype=np.int64)
        line = np.zeros(len(self), dtype=np.int64)
        for each in self.kinds():
            at = np.flatnonzero(self.order == each.code)
            file[at], line[at] = each.file, each.line
        return file, line

    def check(
        self, *, joints: bool = False, tolerance: float = 0.1, reach: float = 10.0
    ) -> Findings:
        """What `vesk check` finds in the model as one record file of its style.

        joints     ends of pipes that do not meet as well
        tolerance  how far apart the ends of a joint may be
        reach      ends further apart have nothing to do with each other

        What could not be read is in `faults`. Attributes beside the files are not looked
        at. A line that a message names is that of the model as it would be written.
        """
        rows = _vesk.check(self.table(), self.style_number, joints, tolerance, reach)
        files, lines = self.places()
        findings = []
        for element, behind, column, code, severity, message, expected in rows:
            known = element >= 0
            file = self.files[files[element]] if known and self.files else ""
            line = int(lines[element]) if known else 0
            line += behind if line else 0
            findings.append(
                Finding(file, line, column, code, severity, message, expected, element)
            )
        return Findings(findings)

    def joints(self, *, tolerance: float = 0.1, reach: float = 10.0) -> Findings:
        """The findings of check that are about joints: V201 to V207 but for V204."""
        found = self.check(joints=True, tolerance=tolerance, reach=reach)
        return Findings(each for each in found if each.code[:2] == "V2" and each.code != "V204")

    def clash(
        self,
        *,
        between: str = "headers",
        clearance: float = 0.0,
        tolerance: float = 0.1,
        strict: bool = False,
        ignore: Sequence[tuple[str, str]] = (),
    ) -> Clashes:
        """Solids and faces that are in each other's way, as `vesk clash` finds them.

        between    "elements", "headers", "lines" (headers of the same F1) or "files"
        clearance  what is nearer than this is told as well
        tolerance  what is no deeper than this only touches
        strict     tell pipes that end inside another as well
        ignore     pairs of patterns for headers that may clash

        Elements of one component, of which the attributes tell, do not clash.
        """
        table = _vesk.clash(
            self.table(),
            list(self.files),
            between,
            clearance,
            tolerance,
            strict,
            list(ignore),
            self.known(),
        )
        return cast(Clashes, made(Clashes, table))

    def diff(self, other: Model, *, tolerance: float = 0.01) -> Differences:
        """Which elements of `other` are those of this model, by header, kind and nearness."""
        table = _vesk.diff(self.table(), other.table(), tolerance)
        return cast(Differences, made(Differences, table))

    def mesh(self, *, tolerance: Optional[float] = None, quality: str = "normal") -> _shapes.Mesh:
        """The surfaces of all solids and faces as triangles, for trimesh, Open3D and others.

        tolerance  the most that a round surface and its triangles may be apart, above 0
        quality    without a tolerance: "draft", "normal" or "fine", 16, 32 or 64 pieces for
                   a circle

        Memory: the arrays, some 600 vertices and 1,200 triangles for ten pipes.
        """
        return _shapes.mesh(self, tolerance, quality)

    def to_glb(
        self,
        path: Union[str, "os.PathLike[str]"],
        *,
        tolerance: Optional[float] = None,
        quality: str = "normal",
        unit: float = 1.0,
        grouping: str = "elements",
    ) -> None:
        """Write a .glb as `vesk export` does: metres, y up, colours by kind, and the header,
        kind, file and line of each element at its node.

        tolerance, quality  as mesh() has them
        unit                length of the model's unit in millimetres
        grouping            "elements", a node for each; "instances", each shape once and its
                            places; "merged", a mesh for each kind of a header

        The file appears whole or not at all, in place of one of this name. OSError for what
        the system refuses, ValueError for more than 4 GB; a warning names what can't be
        shown.
        """
        _shapes.to_glb(self, path, tolerance, quality, unit, grouping)

    def draw(
        self,
        path: Union[str, "os.PathLike[str]", None] = None,
        *,
        format: Optional[str] = None,
        view: str = "iso",
        pixels: Sequence[int] = (1600, 1200),
        background: str = "white",
        unit: float = 1.0,
        faces: bool = True,
        plain: bool = False,
        title: Optional[str] = None,
    ) -> Optional[bytes]:
        """Draw without hidden lines, as `vesk view -o` does: an .svg of lines or a .png in
        the colours of the kinds. Returns the bytes if there is no path.

        format      "svg" or "png"; without it by the ending of the path, else "svg"
        view        "iso", "top", "bottom", "front", "back", "left" or "right"; z is up
        pixels      width and height, 16 to 8192
        background  "white", "black", "transparent" or "#rrggbb"
        unit        length of the model's unit in millimetres, for the scale bar
        faces       surfaces in a .png; else lines alone
        plain       without scale bar and axes
        title       of an .svg; without it the name of the file

        Files appear whole or not at all, in place of one of this name. OSError for what the
        system refuses; a warning names what can't be shown.
        """
        return _shapes.draw(
            self, path, format, view, pixels, background, unit, faces, plain, title
        )

    def to_html(
        self,
        path: Union[str, "os.PathLike[str]", None] = None,
        *,
        tolerance: Optional[float] = None,
        quality: str = "normal",
        title: Optional[str] = None,
    ) -> Optional[bytes]:
        """Write the page of `vesk view`, one HTML file that needs no network. Returns the bytes
        if there is no path.

        tolerance, quality  as mesh() has them
        title               what stands above the model; without it the name of the file

        RuntimeError if the package was built without the page; else as draw().
        """
        return _pages.to_html(self, path, tolerance, quality, title)

    def _repr_mimebundle_(self, include: Any = None, exclude: Any = None) -> dict[str, str]:
        """What a notebook shows: the page in a frame, or the drawing; neither of a model that
        would make it slow."""
        return _pages.shown(self)

    def _repr_html_(self) -> Optional[str]:
        return _pages.shown(self).get("text/html")

    @property
    def nbytes(self) -> int:
        """Bytes of all arrays."""
        arrays = [a for each in self.kinds() for a in each.columns().values()]
        return int(self.order.nbytes + sum(a.nbytes for a in arrays))

    def __len__(self) -> int:
        return len(self.order)

    def __repr__(self) -> str:
        parts = [f"{len(each):,} {each.kind}" for each in self.kinds() if len(each)]
        text = ", ".join(parts) or "no elements"
        if self.faults:
            text += f"; {len(self.faults):,} faults"
        return f"<vesk.Model: {text}>"


def style_name(number: int) -> str:
    return _STYLE_NAMES.get(number, "none")
