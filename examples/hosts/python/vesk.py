# SPDX-License-Identifier: MIT
"""Write plant geometry as Vesk record files.

    import vesk

    with vesk.File("pump") as file:             # creates veskpump.dat
        file.header("P-1001", "01", 1)
        file.cylinder((0, 0, 0), (0, 0, 100), 219.1)

    with vesk.File(path="/models/pump.rec") as file:  # appears when it is whole
        ...

A point or a vector is any sequence of three finite real numbers. Lengths have
no unit; by custom they are millimetres.

The library keeps one open file for the process: opening another one closes the
first, whose object is closed from then on. Calls from several threads wait for
each other.

An exception inside the library cannot pass through Python, it would end the
interpreter. So everything that could throw is checked before the call:
TypeError and ValueError say what is wrong, and nothing is written then.

The library is looked for at the first use: the environment variable
VESK_LIBRARY (the file itself), the folder of this module, the build folders of
a source tree, the system's own places. OSError says where it was not.
"""

from __future__ import annotations

import ctypes
import ctypes.util
import errno
import functools
import math
import numbers
import operator
import os
import pathlib
import shutil
import sys
import threading
from typing import Iterable, Optional, Union

__all__ = ["File", "Point"]

Point = Iterable[float]  # x, y and z

_NAMES = ("CVeskDll.dll",) if sys.platform == "win32" else ("libCVeskDll.so", "libCVeskDll.so.1")
_MAX_ELEMENT = 36**3 - 1
_MAX_TEXT = 512
# An elbow closer than this to its bend axis has no direction. The library
# throws at 2.2e-15 already; in between is no bend either.
_MIN_RADIUS = 1e-12

_lock = threading.RLock()
_current = None  # the File that is open


def _candidates():
    named = os.environ.get("VESK_LIBRARY")
    if named:
        yield named
        return
    folders = [pathlib.Path(__file__).resolve().parent]
    tree = folders[0] / ".." / ".." / ".."
    if (tree / "include" / "vesk.h").is_file():
        builds = (tree / "build" / preset for preset in ("release", "dev"))
        folders += [build / part for build in builds for part in ("lib", "bin")]
    for folder in folders:
        yield from (str(folder / name) for name in _NAMES if (folder / name).is_file())
    yield from _NAMES  # the system's loader looks for a bare name in its own places
    found = ctypes.util.find_library("CVeskDll")
    if found:
        yield found


@functools.lru_cache(maxsize=None)
def _library():
    tried = []
    for candidate in _candidates():
        try:
            library = ctypes.CDLL(candidate, use_errno=True)
            break
        except OSError as error:
            tried.append(f"{candidate} ({error})")
    else:
        raise OSError("the Vesk library was not found; set VESK_LIBRARY. Tried: " + ", ".join(tried))

    point, number, integer, text = _Point, ctypes.c_double, ctypes.c_int, ctypes.c_char_p
    for name, result, arguments in (
        ("vk_openVesk", integer, [text]),
        ("vk_setHeader", integer, [text, text, integer]),
        ("vk_writePnt", None, [point]),
        ("vk_writeSeg", None, [point] * 2),
        ("vk_writeTri", None, [point] * 3),
        ("vk_writeQua", None, [point] * 4),
        ("vk_writeTxt", None, [point] * 3 + [number] * 2 + [integer] * 2 + [text]),
        ("vk_writeBox", None, [point] * 4),
        ("vk_writeRed", None, [point] * 8),
        ("vk_writeCyl", integer, [point] * 2 + [number]),
        ("vk_writeCon", integer, [point] * 2 + [number] * 2),
        ("vk_writeTor", integer, [point] * 3 + [number]),
        ("vk_writeElb", integer, [point] * 4 + [number]),
    ):
        function = getattr(library, name)
        function.restype = result
        function.argtypes = arguments
    return library


_Point = ctypes.c_double * 3


def _number(value, what):
    if not isinstance(value, numbers.Real):
        raise TypeError(f"{what} must be a number, not {type(value).__name__}")
    value = float(value)
    if not math.isfinite(value):
        raise ValueError(f"{what} must be finite, not {value}")
    return value


def _integer(value, what, least, most):
    try:
        value = operator.index(value)
    except TypeError:
        raise TypeError(f"{what} must be an integer, not {type(value).__name__}") from None
    if not least <= value <= most:
        raise ValueError(f"{what} must be {least} to {most}, not {value}")
    return value


def _point(value, what):
    try:
        xyz = tuple(value)
    except TypeError:
        raise TypeError(f"{what} must be three numbers, not {type(value).__name__}") from None
    if len(xyz) != 3:
        raise ValueError(f"{what} must be three numbers, not {len(xyz)}")
    return _Point(*(_number(part, f"{axis} of {what}") for axis, part in zip("xyz", xyz)))


def _text(value, what):
    if not isinstance(value, str):
        raise TypeError(f"{what} must be a str, not {type(value).__name__}")
    if any(character in value for character in "\0\n\r"):
        raise ValueError(f"{what} must not hold a zero character or a line end")
    return value.encode()


def _file_name(name):
    if not isinstance(name, str):
        raise TypeError(f"name must be a str, not {type(name).__name__}")
    if "\0" in name:
        raise ValueError("name must not hold a zero character")
    return os.fsencode(name)  # UTF-8 on Windows too, which the library knows


def _probe(path):
    """A file can be made beside path, or an OSError that names it."""
    try:
        if os.path.isdir(path):
            raise IsADirectoryError(errno.EISDIR, os.strerror(errno.EISDIR))
        part = f"{path}.{os.getpid()}.part"
        open(part, "wb").close()
        os.remove(part)
    except OSError as error:
        raise OSError(error.errno, error.strerror, path) from None


def _free_name():
    """A name of which no file is in the current folder."""
    for number in range(1 << 30):
        name = f"-{os.getpid()}-{number}"
        if not os.path.lexists(f"vesk{name}.dat"):
            return name


def _move(source, path):
    """Across file systems by a copy beside path: what is there is replaced at once."""
    part = f"{path}.{os.getpid()}.part"
    try:
        try:
            os.replace(source, path)
        except OSError as error:
            if error.errno != errno.EXDEV:
                raise
            shutil.copyfile(source, part)
            os.replace(part, path)
            os.remove(source)
    except OSError as error:
        if os.path.exists(part):
            os.remove(part)
        raise OSError(error.errno, f"{error.strerror}; what was written is {source}", path) from None


class File:
    """A record file, open for writing. Opening another one closes it.

    File(name) writes "vesk" + name + ".dat" in the current folder as it goes; an old
    one is emptied. The name is put between the two as it is, so "a/b" is the file
    "veska/b.dat". File(path=...) writes any file: it appears when it is closed and
    whole, and what was there before stays until then. It grows under a name of its own in
    the current folder, where the library writes.

    Raises OSError, with the path, if it cannot be opened.
    """

    path: str
    _temporary: Optional[str] = None

    def __init__(self, name: Optional[str] = None, *,
                 path: Union[str, os.PathLike, None] = None) -> None:
        global _current
        if (name is None) == (path is None):
            raise TypeError("name must be a str, or path be given")
        with _lock:
            if path is not None:
                path = os.path.abspath(os.fspath(path))
                _probe(path)
                name = _free_name()
            encoded = _file_name(name)
            self.path = f"vesk{name}.dat" if path is None else path
            before, _current = _current, None
            if before is not None and before._temporary is not None:
                before._finish()
            ctypes.set_errno(0)
            if not _library().vk_openVesk(encoded):
                code = ctypes.get_errno()
                raise OSError(code, os.strerror(code) if code else "cannot be opened", self.path)
            if path is not None:
                self._temporary = os.path.abspath(f"vesk{name}.dat")
            _current = self

    def close(self) -> None:
        """Completes the file. Closing again does nothing.

        OSError if the system refused a part of it, or the close: the file is not whole
        then, and one of File(path=...) does not appear.
        """
        global _current
        with _lock:
            if _current is self:
                _current = None
                self._finish()

    def _finish(self, keep=True):
        """keep: false, if a file with a path is not to appear."""
        temporary, self._temporary = self._temporary, None
        ctypes.set_errno(0)
        _library().vk_openVesk(None)
        code = ctypes.get_errno()
        if temporary is not None and (code or not keep):
            os.remove(temporary)
        if code and keep:
            raise OSError(code, os.strerror(code), self.path)
        if temporary is not None and keep:
            _move(temporary, self.path)

    @property
    def closed(self) -> bool:
        return _current is not self

    def __enter__(self) -> File:
        return self

    def __exit__(self, exception, *_) -> None:
        """After an exception a file with a path does not appear."""
        global _current
        if exception is None or self._temporary is None:
            self.close()
            return
        with _lock:
            if _current is self:
                _current = None
                self._finish(keep=False)

    def _call(self, name, *arguments):
        with _lock:
            if _current is not self:
                raise ValueError(f"{self.path} is closed")
            return getattr(_library(), name)(*arguments)

    def _write(self, name, points, *rest):
        """points: the caller's points by their names."""
        arrays = [_point(value, what) for what, value in points.items()]
        return self._call(name, *arrays, *rest)

    def header(self, a: str, b: str, n: int) -> None:
        """Sets the header of the elements that follow: the first 8 characters of
        a, the first 2 of b, the element number n from 0 to 46655."""
        self._call("vk_setHeader", _text(a, "a"), _text(b, "b"),
                   _integer(n, "n", 0, _MAX_ELEMENT))

    def point(self, p: Point) -> None:
        self._write("vk_writePnt", {"p": p})

    def segment(self, p1: Point, p2: Point) -> None:
        self._write("vk_writeSeg", {"p1": p1, "p2": p2})

    def triangle(self, p1: Point, p2: Point, p3: Point) -> None:
        self._write("vk_writeTri", {"p1": p1, "p2": p2, "p3": p3})

    def quadrangle(self, p1: Point, p2: Point, p3: Point, p4: Point) -> None:
        self._write("vk_writeQua", {"p1": p1, "p2": p2, "p3": p3, "p4": p4})

    def text(self, p: Point, direction: Point, up: Point, width: float, height: float,
             text: str, alignment: int = 1, flag: int = 0) -> None:
        """A text at p of at most 512 bytes in UTF-8. width and height: of one
        character; alignment: 1 to 9, from the start of the base line to the end
        of the top row."""
        encoded = _text(text, "text")
        if len(encoded) > _MAX_TEXT:
            raise ValueError(f"text must be at most {_MAX_TEXT} bytes, not {len(encoded)}")
        self._write("vk_writeTxt", {"p": p, "direction": direction, "up": up},
                    _number(width, "width"), _number(height, "height"),
                    _integer(alignment, "alignment", 1, 9), _integer(flag, "flag", 0, 1), encoded)

    def box(self, p0: Point, p1: Point, p2: Point, p3: Point) -> None:
        """A corner and the ends of the three edges that leave it."""
        self._write("vk_writeBox", {"p0": p0, "p1": p1, "p2": p2, "p3": p3})

    def reducer(self, p0: Point, p1: Point, p2: Point, p3: Point, p4: Point, p5: Point,
                p6: Point, p7: Point) -> None:
        """Four corners of the first end, in the order 0, 1, 3, 2 round its face,
        and the four opposite them."""
        self._write("vk_writeRed", {"p0": p0, "p1": p1, "p2": p2, "p3": p3,
                                    "p4": p4, "p5": p5, "p6": p6, "p7": p7})

    def cylinder(self, p1: Point, p2: Point, d: float) -> int:
        """The centres of the faces and the diameter. Returns the lines printed,
        as the three below do."""
        return self._write("vk_writeCyl", {"p1": p1, "p2": p2}, _number(d, "d"))

    def cone(self, p1: Point, p2: Point, d1: float, d2: float) -> int:
        return self._write("vk_writeCon", {"p1": p1, "p2": p2}, _number(d1, "d1"),
                           _number(d2, "d2"))

    def torus(self, p0: Point, p1: Point, p2: Point, d: float) -> int:
        """The centre of the bend, the ends of the centre line, the diameter."""
        return self._write("vk_writeTor", {"p0": p0, "p1": p1, "p2": p2}, _number(d, "d"))

    def elbow(self, p0: Point, p1: Point, p2: Point, p3: Point, d: float) -> int:
        """The ends of the bend axis, the outer points at the start and the end of
        the bend (not at p0), the inner radius."""
        points = {"p0": p0, "p1": p1, "p2": p2, "p3": p3}
        arrays = {what: _point(value, what) for what, value in points.items()}
        for what in ("p2", "p3"):
            if math.dist(arrays["p0"], arrays[what]) < _MIN_RADIUS:
                raise ValueError(f"{what} must not be at p0")
        return self._write("vk_writeElb", arrays, _number(d, "d"))
