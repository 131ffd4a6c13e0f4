# SPDX-License-Identifier: MIT
"""A plant in zones, one record file each, on several machines: by Dask.

    import vesk.dask

    table = vesk.dask.dataframe("zones/")              # a row for each element of the plant
    done = vesk.dask.each("zones/", vesk.Model.volume, client=client)

Zones are the *.dat files of a folder and below, a list of files, or addresses that fsspec
knows ("s3://bucket/zones/*.dat"), which the workers read themselves, with the sidecars beside
them: what moves over the network is the bytes of a zone to its worker and the result back. One task is one zone. A
task can be done again on another worker and gives the same then, so that a worker may die.
"""

from __future__ import annotations

import contextlib
import os
import pathlib
import tempfile
from collections.abc import Callable, Iterable, Sequence
from typing import Any, NamedTuple, Union, cast

import numpy as np
import numpy.typing as npt

from . import _vesk
from ._model import Model
from ._reading import Opened, ReadError, Source, files_of, read
from ._tables import needed

# What boxes may be off by rounding.
_SLACK = 1e-6

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


def read_zones(names: Sequence[str], strict: bool = False) -> Model:
    """Zones as one model, read where this runs."""
    with contextlib.ExitStack() as files:
        sources: list[Source] = [
            _fetched(zone, files) if "://" in zone else zone for zone in names
        ]
        model = read(sources, strict=strict)
    return model


def _fetched(zone: str, files: contextlib.ExitStack) -> Opened:
    """A zone at an address; its sidecar, which is small, is copied to this machine."""
    system, path = needed("fsspec", zone).core.url_to_fs(zone)
    beside = _vesk.sidecar_name(path)
    sidecar = None
    if system.exists(beside):
        folder = files.enter_context(tempfile.TemporaryDirectory(prefix="vesk-"))
        copy = os.path.join(folder, "attributes.csv")
        system.get_file(beside, copy)
        sidecar = (copy, str(system.unstrip_protocol(beside)))
    return Opened(zone, files.enter_context(system.open(path, "rb")), sidecar)


def read_zone(zone: str, strict: bool = False) -> Model:
    """One zone, read where this runs."""
    return read_zones([zone], strict)


def _result(zone: str, function: Callable[[Model], Any], strict: bool) -> Result:
    return _tried(zone, lambda: function(read_zone(zone, strict)))


def _tried(zone: str, work: Callable[[], Any]) -> Result:
    try:
        return Result(zone, work(), "")
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
    return _run([(zone, _result, (zone, function, strict)) for zone in zones(source)], client)


# What a task is about, the function that gives its Result, and the arguments.
_Task = tuple[str, Callable[..., Result], tuple[Any, ...]]


def _run(tasks: Sequence[_Task], client: Any) -> list[Result]:
    """The results in the order of the tasks."""
    dask = needed("dask", "vesk.dask")
    if client is None:
        delayed = [dask.delayed(function)(*words) for _, function, words in tasks]
        return list(dask.compute(*delayed))
    futures = [client.submit(function, *words, pure=False) for _, function, words in tasks]
    return [_waited(name, future) for (name, _, _), future in zip(tasks, futures)]


def _waited(zone: str, future: Any) -> Result:
    error = future.exception()
    if error is None:
        result: Result = future.result()
        return result
    return Result(zone, None, f"{type(error).__name__}: {error}")


class _ToGlb:
    """Exports a zone under its name in another folder; goes over the network."""

    def __init__(self, targets: dict[str, str], words: dict[str, Any]) -> None:
        self.targets = targets
        self.words = words

    def __call__(self, model: Model) -> str:
        target = self.targets[model.files[0]]
        model.to_glb(target, **self.words)
        return target


def to_glb(
    source: Zones,
    folder: Union[str, "os.PathLike[str]"],
    *,
    strict: bool = False,
    client: Any = None,
    **words: Any,
) -> list[Result]:
    """Exports each zone to a .glb of its name in `folder`, which the workers reach by this
    name: Model.to_glb with the same words. The values are the names of the files.

    ValueError for two zones of one name.
    """
    targets: dict[str, str] = {}
    for zone in zones(source):
        target = str(pathlib.Path(folder) / (pathlib.PurePosixPath(zone).stem + ".glb"))
        if target in targets.values():
            raise ValueError(f"{zone}: another zone is {target} already")
        targets[zone] = target
    return each(list(targets), _ToGlb(targets, words), strict=strict, client=client)


class ZoneClash(NamedTuple):
    """Two elements of a plant that are in each other's way; see Clashes."""

    code: str
    zone_a: str
    line_a: int
    header_a: str
    zone_b: str
    line_b: int
    header_b: str
    distance: float
    depth: float
    place: tuple[float, float, float]
    message: str


class PlantClashes(NamedTuple):
    """What clashes in a plant, and which zones or pairs of them could not be looked at."""

    clashes: list[ZoneClash]  # in the order of the zones and lines
    failures: list[Result]

    def to_dataframe(self) -> Any:
        """A row for each clash. Needs pandas."""
        return needed("pandas", "to_dataframe()").DataFrame(self.clashes, columns=ZoneClash._fields)


def _headers(model: Model) -> npt.NDArray[np.int64]:
    """The header of each element."""
    codes = np.zeros(len(model), dtype=np.int64)
    for kind in model.kinds():
        codes[model.order == kind.code] = kind.header
    return codes


def _found(model: Model, words: dict[str, Any]) -> list[ZoneClash]:
    clashes = model.clash(**words)
    files, lines = model.places()
    headers = model.headers.names[_headers(model)].tolist() if len(clashes) else []
    rows = []
    for i, (a, b) in enumerate(clashes.pairs.tolist()):
        rows.append(
            ZoneClash(
                clashes.code[i],
                model.files[files[a]],
                int(lines[a]),
                headers[a],
                model.files[files[b]],
                int(lines[b]),
                headers[b],
                float(clashes.distance[i]),
                float(clashes.depth[i]),
                cast(tuple[float, float, float], tuple(clashes.place[i].tolist())),
                clashes.message[i],
            )
        )
    return rows


def _within(zone: str, words: dict[str, Any], strict: bool) -> Result:
    """The box of a zone, and what clashes in it."""

    def work() -> tuple[Any, list[ZoneClash]]:
        model = read_zone(zone, strict)
        return model.extents(), _found(model, words)

    return _tried(zone, work)


def _between(pair: tuple[str, str], box: list[float], words: dict[str, Any]) -> Result:
    """What clashes of one zone with the other, where their boxes meet."""

    def work() -> list[ZoneClash]:
        model = read_zones(pair).select(bbox=box)
        rows = _found(model, {**words, "between": "files"})
        scope = words.get("between", "headers")
        # What belongs together may be in two zones.
        same = {each.name: each.f1 if scope == "lines" else each.name for each in model.headers}
        if scope in ("headers", "lines"):
            rows = [each for each in rows if same[each.header_a] != same[each.header_b]]
        return rows

    return _tried(" and ".join(pair), work)


def _neighbours(boxes: dict[str, Any], reach: float) -> list[tuple[tuple[str, str], list[float]]]:
    """Pairs of zones whose boxes are no further apart than this, and where they meet."""
    # By their least x: of those that begin before this one ends. nan, an empty zone, meets none.
    names = sorted((each for each in boxes if boxes[each][0, 0] == boxes[each][0, 0]),
                   key=lambda each: float(boxes[each][0, 0]))
    place = {name: i for i, name in enumerate(boxes)}
    pairs = []
    for i, one in enumerate(names):
        for other in names[i + 1 :]:
            if boxes[other][0, 0] > boxes[one][1, 0] + reach:
                break
            low = np.maximum(boxes[one][0], boxes[other][0]) - reach
            high = np.minimum(boxes[one][1], boxes[other][1]) + reach
            if (low <= high).all():
                pair = (one, other) if place[one] < place[other] else (other, one)
                pairs.append((pair, [*low.tolist(), *high.tolist()]))
    return sorted(pairs, key=lambda each: (place[each[0][0]], place[each[0][1]]))


def clash(
    source: Zones, *, strict_zones: bool = False, client: Any = None, **words: Any
) -> PlantClashes:
    """What Model.clash, with the same words, finds in all zones as one model.

    One task looks through a zone and tells its box. Then, of zones whose boxes are no
    further apart than the clearance, one task reads two and looks through what they have
    where the boxes meet. Over the network go boxes and clashes. With `strict_zones` a zone
    with faults is a failure.
    """
    names = zones(source)
    alone = _run([(zone, _within, (zone, words, strict_zones)) for zone in names], client)
    boxes = {each.zone: each.value[0] for each in alone if not each.error}
    reach = float(words.get("clearance", 0.0)) + _SLACK
    pairs = [
        (" and ".join(pair), _between, (pair, box, words))
        for pair, box in (_neighbours(boxes, reach) if len(names) > 1 else [])
    ]
    together = _run(pairs, client)
    rows = [row for each in alone if not each.error for row in each.value[1]]
    rows += [row for each in together if not each.error for row in each.value]
    place = {name: i for i, name in enumerate(names)}
    rows.sort(key=lambda row: (place[row.zone_a], row.line_a, place[row.zone_b], row.line_b))
    return PlantClashes(rows, [each for each in (*alone, *together) if each.error])


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
