# SPDX-License-Identifier: MIT
"""Each call many times: what it takes it gives back."""

import gc
import sys
import tracemalloc

import numpy as np
import pytest

import vesk
from conftest import GOLDEN

TIMES = 300
ROUNDS = 4

def resident():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * 4096


def growth(call):
    """What stays behind of so many calls: objects, blocks, bytes of Python's, kilobytes."""
    before = state()
    for _ in range(TIMES):
        call()
    return np.subtract(state(), before)


def state():
    gc.collect()
    return (
        len(gc.get_objects()),
        sys.getallocatedblocks(),
        tracemalloc.get_traced_memory()[0],
        resident() // 1024,
    )


def wrong(call):
    """Runs a call that is to fail."""
    try:
        call()
    except (ValueError, OSError, TypeError):
        return
    raise AssertionError("it did not fail")


def bad_columns(model):
    table = model.table()
    table["cylinders"]["diameter"] = np.zeros((2, 2))
    return vesk._vesk.extents(table)


BYTES = next(each for each in GOLDEN if vesk.read(each).cylinders).read_bytes()
MODEL = vesk.read(BYTES)
PIPES = vesk.read(BYTES).select(kind="cylinder").take(np.arange(len(MODEL.cylinders)) < 2)

CALLS = {
    "read": lambda path: vesk.read(BYTES),
    "read_faults": lambda path: vesk.read(b"no record\n" + BYTES),
    "read_attributes": lambda path: vesk.read(BYTES, attributes=path / "one.csv"),
    "read_refused": lambda path: wrong(lambda: vesk.read(b"no record\n", strict=True)),
    "read_of_no_bytes": lambda path: wrong(lambda: vesk.read(open(__file__, encoding="utf-8"))),
    "write": lambda path: vesk.write(path / "x.dat", PIPES, allow_nan=True),
    "write_refused": lambda path: wrong(lambda: vesk.write(path / "none" / "x.dat", PIPES)),
    "select": lambda path: MODEL.select(kind="pipe", bbox=(0, 0, 0, 1, 1, 1)),
    "select_refused": lambda path: wrong(lambda: MODEL.select(kind="colour")),
    "take": lambda path: MODEL.take(np.ones(len(MODEL), dtype=bool)),
    "move": lambda path: MODEL.move([1, 2, 3]),
    "extents": lambda path: MODEL.extents(),
    "volumes": lambda path: MODEL.volumes(),
    "columns_refused": lambda path: wrong(lambda: bad_columns(MODEL)),
    "measures": lambda path: MODEL.measures(),
    "measure": lambda path: MODEL.measure(by="header,size", schedule="40"),
    "measure_refused": lambda path: wrong(lambda: MODEL.measure(by="item")),
    "check": lambda path: MODEL.check(joints=True),
    "clash": lambda path: MODEL.clash(between="elements", ignore=[("P-*", "S-*")]),
    "diff": lambda path: MODEL.diff(PIPES),
    "mesh": lambda path: PIPES.mesh(quality="draft"),
    "to_glb": lambda path: PIPES.to_glb(path / "x.glb", quality="draft"),
    "to_glb_refused": lambda path: wrong(lambda: PIPES.to_glb(path / "none" / "x.glb")),
    "draw": lambda path: PIPES.draw(pixels=(64, 64)),
}


@pytest.fixture(autouse=True, scope="module")
def traced():
    tracemalloc.start()
    yield
    tracemalloc.stop()


@pytest.mark.filterwarnings("ignore:an element can't be shown")
@pytest.mark.parametrize("name", CALLS)
def test_a_call_gives_back_what_it_takes(name, tmp_path):
    (tmp_path / "one.csv").write_text("f1,f2,first,last,tag\nP-1,,1,9,P-7\n")
    call = CALLS[name]
    grown = [growth(lambda: call(tmp_path)) for _ in range(ROUNDS)]
    # Caches and the allocator's room grow once; a leak grows each time.
    objects, blocks, size, kilobytes = np.min(grown, axis=0)
    assert objects < TIMES and blocks < TIMES and size < 16 * TIMES, grown
    assert kilobytes * 1024 < 64 * TIMES, grown


def test_a_leak_is_seen():
    kept = []
    objects, blocks, size, _ = growth(lambda: kept.append([b"x" * 9]))
    assert min(objects, blocks, size / 16) >= TIMES
