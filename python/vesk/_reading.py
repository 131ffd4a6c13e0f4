# SPDX-License-Identifier: MIT
"""Reading record files."""

from __future__ import annotations

import io
import os
import pathlib
import warnings
from collections.abc import Iterable, Iterator
from typing import IO, Any, NamedTuple, Optional, Union

from . import _vesk
from ._model import STYLES, Fault, Model, style_name


class Opened(NamedTuple):
    """A source as the compiled module takes it."""

    name: str
    data: Any  # the path as bytes, or a file object
    # A file and what messages call it; "": the one beside `name`; None: no one.
    sidecar: Union[str, tuple[str, str], None]


Source = Union[str, "os.PathLike[str]", bytes, IO[bytes], Opened]
Attributes_ = Union[bool, str, "os.PathLike[str]"]
_ALL = 2**62


class ReadError(ValueError):
    """What `strict` raises: the first fault, with its place."""

    def __init__(self, fault: Fault) -> None:
        super().__init__(str(fault))
        self.fault = fault


def files_of(folder: pathlib.Path) -> list[str]:
    files = sorted(str(each) for each in folder.rglob("*.dat") if each.is_file())
    if not files:
        raise FileNotFoundError(f"{folder}: no *.dat in this folder or below")
    return files


def _sources(source: Any) -> list[Opened]:
    if isinstance(source, Opened):
        return [source]
    if isinstance(source, (bytes, bytearray, memoryview)):
        return [Opened("<bytes>", io.BytesIO(source), None)]
    if isinstance(source, (str, os.PathLike)):
        path = pathlib.Path(source)
        names = files_of(path) if path.is_dir() else [os.fspath(source)]
        for name in names:
            with open(name, "rb"):  # what can't be opened says so, with its name
                pass
        return [Opened(name, os.fsencode(name), "") for name in names]
    if hasattr(source, "read"):
        known = getattr(source, "name", None)
        return [Opened(known if isinstance(known, str) else "<stream>", source, None)]
    if isinstance(source, Iterable):
        return [each for one in source for each in _sources(one)]
    raise TypeError(f"no record file: {type(source).__name__}")


def _with(sources: list[Opened], attributes: Attributes_) -> list[Opened]:
    if attributes is True:
        return sources
    if attributes is False:
        return [each._replace(sidecar=None) for each in sources]
    if len(sources) != 1:
        raise ValueError(f"attributes {attributes}: they are of one file, not {len(sources)}")
    return [sources[0]._replace(sidecar=os.fspath(attributes))]


def _models(
    source: Union[Source, Iterable[Source]],
    chunk: int,
    strict: bool,
    style: Optional[str],
    take_cut_off: bool,
    attributes: Attributes_,
) -> Iterator[Model]:
    if style is not None and style not in STYLES:
        raise ValueError(f"style {style!r}: it is 'fixed', 'token' or None")
    sources = _with(_sources(source), attributes)
    files = [each.name for each in sources]
    reader = _vesk.Reader(sources, STYLES[style] if style else 0, take_cut_off)
    while (table := reader.next(chunk)) is not None:
        model = Model(table, files, [style_name(each) for each in table["styles"]])
        if strict and model.faults:
            raise ReadError(model.faults[0])
        for note in table["notes"]:
            if strict:
                raise ValueError(note)
            # Behind this function, and what asks for the model.
            warnings.warn(note, stacklevel=3)
        yield model


def read(
    source: Union[Source, Iterable[Source]],
    *,
    strict: bool = False,
    style: Optional[str] = None,
    take_cut_off: bool = False,
    attributes: Attributes_ = True,
) -> Model:
    """Read record files into arrays.

    source        a path, a folder (all *.dat in it and below, by name), bytes, a file
                  object opened with "rb", or several of these
    strict        raise ReadError for the first fault; else faults are in Model.faults and
                  reading goes on behind them
    style         "fixed" or "token" instead of finding out
    take_cut_off  take a last line without an end as if it had one
    attributes    the sidecar of a single file; True: plant.attributes.csv beside plant.dat
                  where it is there; False: none

    A warning says if a sidecar can't be read to its end, or has another order than its
    file; with `strict` it is a ValueError.

    Memory: the arrays, and while they grow one of them a second time. Raises OSError for
    what can't be opened or read to its end.
    """
    return next(_models(source, _ALL, strict, style, take_cut_off, attributes))


def scan(
    source: Union[Source, Iterable[Source]],
    *,
    chunk: int = 100_000,
    strict: bool = False,
    style: Optional[str] = None,
    take_cut_off: bool = False,
    attributes: Attributes_ = True,
) -> Iterator[Model]:
    """Read as `read` does, `chunk` elements at a time, for files larger than memory.

    Each model has its own headers and attributes. Nothing is read before the first one is
    asked for.
    """
    if chunk < 1:
        raise ValueError(f"chunk {chunk}: it is 1 or more")
    return _models(source, chunk, strict, style, take_cut_off, attributes)
