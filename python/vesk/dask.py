# SPDX-License-Identifier: MIT
"""A plant in zones, one record file each, on several machines: by Dask.

    import vesk.dask

    table = vesk.dask.dataframe("zones/")              # a row for each element of the plant
    done = vesk.dask.each("zones/", vesk.Model.volume, client=client)

Zones are the *.dat files of a folder and below, a list of files, or addresses that fsspec
knows ("s3://bucket/zones/*.dat"), which the workers read themselves: what moves over the
network is the bytes of a zone to its worker and the result back. One task is one zone. A
task can be done again on another worker and gives the same then, so that a worker may die.
"""

from __future__ import annotations

import os
import pathlib
from collections.abc import Callable, Iterable
from typing import Any, NamedTuple, Union

from ._model import Model
from ._reading import ReadError, files_of, read
from ._tables import needed

Zones = Union[str, "os.PathLike[str]", Iterable[Union[str, "os.PathLike[str]"]]]


class Result(NamedTuple):
    """What became of a zone."""

    zone: str
    value: Any  # None where there is an error
    error: str  # empty where there is none


def zones(source: Zones) -> list[str]:
    """The zones of a folder, a pattern of fsspec, or a list, in their order."""
    if not isinstance(source, (str, os.PathLike)):
        return [each for one in source for each in zones(one)]
    address = os.fspath(source)
    if "://" in address:
        fsspec = needed("fsspec", address)
        system, path = fsspec.core.url_to_fs(address)
        found = sorted(system.glob(path)) if "*" in path else [path]
        if not found:
            raise FileNotFoundError(f"{address}: there is no such zone")
        return [str(system.unstrip_protocol(each)) for each in found]
    path_of = pathlib.Path(address)
    return files_of(path_of) if path_of.is_dir() else [address]


def read_zone(zone: str, strict: bool = False) -> Model:
    """One zone, read where this runs."""
    if "://" not in zone:
        return read(zone, strict=strict)
    with needed("fsspec", zone).open(zone, "rb") as file:
        model = read(file, strict=strict)
    model.files = (zone,)
    return model


def _result(zone: str, function: Callable[[Model], Any], strict: bool) -> Result:
    try:
        return Result(zone, function(read_zone(zone, strict)), "")
    except ReadError as error:
        return Result(zone, None, str(error))
    except Exception as error:  # whatever it is, it is this zone's
        return Result(zone, None, f"{type(error).__name__}: {error}")


def each(
    source: Zones,
    function: Callable[[Model], Any],
    *,
    strict: bool = False,
    client: Any = None,
) -> list[Result]:
    """Calls function(model) with each zone, one task a zone; the results in their order.

    A zone that can't be read, for which the function raises, or that its worker does not
    survive, has an error; the others complete. `client` is a distributed.Client; without one
    Dask's own threads on this machine do the work. With `strict` a zone with faults is an
    error.
    """
    dask = needed("dask", "vesk.dask")
    names = zones(source)
    if client is None:
        tasks = [dask.delayed(_result)(zone, function, strict) for zone in names]
        return list(dask.compute(*tasks))
    futures = [client.submit(_result, zone, function, strict, pure=False) for zone in names]
    return [_waited(zone, future) for zone, future in zip(names, futures)]


def _waited(zone: str, future: Any) -> Result:
    error = future.exception()
    if error is None:
        result: Result = future.result()
        return result
    return Result(zone, None, f"{type(error).__name__}: {error}")


def bag(source: Zones, *, strict: bool = False) -> Any:
    """A dask.bag of the zones as models, a partition for each. Nothing is read yet."""
    bags = needed("dask.bag", "bag()")
    names = zones(source)
    return bags.from_sequence(names, npartitions=len(names)).map(read_zone, strict)


def _table(zone: str, strict: bool) -> Any:
    return _plain(read_zone(zone, strict).to_dataframe(attributes=False))


def _plain(table: Any) -> Any:
    """Texts instead of categories, which differ from zone to zone."""
    words = table.select_dtypes("category").columns
    return table.astype({name: object for name in words})


def dataframe(source: Zones, *, strict: bool = False) -> Any:
    """A dask.dataframe of Model.to_dataframe(attributes=False), a partition for each zone. A
    zone that can't be read raises where it is computed; `each` names it instead."""
    dask = needed("dask", "vesk.dask")
    frames = needed("dask.dataframe", "dataframe()")
    parts = [dask.delayed(_table)(zone, strict) for zone in zones(source)]
    return frames.from_delayed(parts, meta=_plain(read(b"").to_dataframe()), verify_meta=False)
