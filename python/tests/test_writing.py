# SPDX-License-Identifier: MIT
import ctypes
import os
import subprocess
import sys

import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from hypothesis.extra import numpy as arrays

import vesk
from conftest import GOLDEN, ROOT

TOOL = os.environ.get("VESK_TOOL")
LIBRARY = os.environ.get("VESK_LIBRARY")


@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_what_was_read_is_written_with_the_same_bytes(path, tmp_path):
    model = vesk.read(path, strict=True)
    vesk.write(tmp_path / "again.dat", model, allow_nan=True)
    assert (tmp_path / "again.dat").read_bytes() == path.read_bytes()


@pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")
@pytest.mark.parametrize("style", ["fixed", "token"])
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_the_other_style_is_what_the_tool_converts_to(path, style, tmp_path):
    vesk.write(tmp_path / "ours.dat", vesk.read(path), style=style, allow_nan=True)
    theirs = tmp_path / "theirs.dat"
    subprocess.run(
        [TOOL, "convert", "-q", "--style", style, path, theirs], check=False, timeout=60
    )
    assert (tmp_path / "ours.dat").read_bytes() == theirs.read_bytes()


A, B, C, D = [0.0, 0.0, 0.0], [0.0, 0.0, 500.0], [0.0, 300.5, 500.25], [1000.125, -2.0, 0.0]
CORNERS = [A, B, C, D, D, C, B, A]


def point(values):
    return (ctypes.c_double * 3)(*values)


# Each way to write an element, and the exported function with the same arguments.
CALLS = {
    "vk_writeCyl": (lambda w, h: w.cylinders(A, B, 219.1, **h), [A, B, 219.1]),
    "vk_writeCon": (lambda w, h: w.cones(A, B, 219.1, 168.3, **h), [A, B, 219.1, 168.3]),
    "vk_writeTor": (lambda w, h: w.tori(A, B, C, 60.3, **h), [A, B, C, 60.3]),
    "vk_writeElb": (lambda w, h: w.elbows(A, D, B, C, 100.0, **h), [A, D, B, C, 100.0]),
    "vk_writeBox": (lambda w, h: w.boxes(A, B, C, D, **h), [A, B, C, D]),
    "vk_writeRed": (lambda w, h: w.reducers(CORNERS, **h), CORNERS),
    "vk_writePnt": (lambda w, h: w.polylines([A], [0, 1], **h), [A]),
    "vk_writeSeg": (lambda w, h: w.polylines([A, B], [0, 2], **h), [A, B]),
    "vk_writeTri": (lambda w, h: w.polygons([A, B, C], [0, 3], **h), [A, B, C]),
    "vk_writeQua": (lambda w, h: w.polygons([A, B, C, D], [0, 4], **h), [A, B, C, D]),
    "vk_writeTxt": (
        lambda w, h: w.texts(A, "pump ü", char_width=2.5, height=3.0, alignment=4, **h),
        [A, [1, 0, 0], [0, 1, 0], 2.5, 3.0, 4, 0, "pump ü".encode()],
    ),
}


@pytest.mark.skipif(not LIBRARY, reason="VESK_LIBRARY names no library")
@pytest.mark.parametrize("name", CALLS)
def test_the_bytes_are_those_of_the_exports(name, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    ours, theirs = CALLS[name]
    with vesk.Writer("ours.dat") as file:
        ours(file, {"header": ("P-1001", "01"), "number": 1})
    library = ctypes.CDLL(LIBRARY)
    library.vk_openVesk(b"theirs")
    library.vk_setHeader(b"P-1001", b"01", 1)
    words = [
        ctypes.c_double(each) if isinstance(each, float) else point(each)
        if isinstance(each, list)
        else each
        for each in theirs
    ]
    getattr(library, name)(*words)
    library.vk_openVesk(None)
    assert (tmp_path / "ours.dat").read_bytes() == (tmp_path / "vesktheirs.dat").read_bytes()


NAN = float("nan")


@pytest.mark.parametrize(
    "write, text",
    [
        (lambda w: w.cylinders([A, B], [B, C], [1, NAN]), "diameter: row 1: nan is not finite"),
        (lambda w: w.cylinders([A, [1, 2]], B, 1), "start: row 1: no 3 numbers"),
        (lambda w: w.cylinders(A, B, ["1", "x"]), "diameter: row 1: no numbers"),
        (lambda w: w.cylinders(A, B, [1, 1j]), "diameter: row 1"),
        (lambda w: w.cylinders([A, B], B, [1, 2, 3]), "diameter has 3 rows, and others have 2"),
        (lambda w: w.cylinders(A, B, 1, header="P" * 9), "has more than 8 bytes"),
        (lambda w: w.cylinders([A, B], C, 1, header=["P-1", "P\n"]), "row 1: header"),
        (lambda w: w.cylinders([A, B], C, 1, header=["P-1"]), "1 headers for 2 rows"),
        (lambda w: w.cylinders([A, B], C, 1, number=[1, 46656]), "row 1: number 46656"),
        (lambda w: w.elbows([A, B], D, [B, B], C, 1), "row 1: Direction"),
        (lambda w: w.reducers([A, B]), "no 8 x 3 numbers"),
        (lambda w: w.polygons([A, B], [0, 2]), "row 0: 2 points, not 3 or more"),
        (lambda w: w.polylines([A, B], [0, 3]), "the shape is"),
        (lambda w: w.polylines([A, [NAN, 0, 0]], [0, 1, 2]), "row 1: .* is not finite"),
        (lambda w: w.texts(A, ["a", "b\n"]), "row 1: a line feed"),
        (lambda w: w.texts(A, ["a", "b" * 513]), "row 1: more than 512 bytes"),
    ],
)
def test_a_wrong_row_is_named_and_no_file_is_left(write, text, tmp_path):
    with pytest.raises(ValueError, match=text):
        with vesk.Writer(tmp_path / "new.dat") as file:
            file.cylinders(A, B, 1.0)
            write(file)
    assert list(tmp_path.iterdir()) == []


def test_one_row_stands_for_all(tmp_path):
    with vesk.Writer(tmp_path / "new.dat") as file:
        file.cylinders(A, [B, C, D], 60.3, header=["P-1", ("P-2", "01"), "P-1"])
    model = vesk.read(tmp_path / "new.dat")
    assert model.cylinders.end.tolist() == [B, C, D]
    assert model.headers.names[model.cylinders.header].tolist() == ["P-1", "P-2 01", "P-1"]


def test_a_file_that_was_there_stays_when_the_block_fails(small):
    before = small.read_bytes()
    with pytest.raises(RuntimeError):
        with vesk.Writer(small) as file:
            file.cylinders(A, B, 1.0)
            raise RuntimeError
    assert small.read_bytes() == before and list(small.parent.iterdir()) == [small]


@pytest.mark.skipif(not os.path.exists("/dev/full"), reason="no /dev/full")
def test_a_full_disk_raises(small):
    with pytest.raises(OSError) as caught:
        vesk.write("/dev/full", vesk.read(small))
    assert caught.value.errno == 28 and caught.value.filename == "/dev/full"


def test_no_folder_raises(tmp_path):
    with pytest.raises(FileNotFoundError) as caught:
        vesk.Writer(tmp_path / "none" / "new.dat")
    assert caught.value.filename == str(tmp_path / "none" / "new.dat")


@pytest.mark.parametrize(
    "change, text",
    [
        (lambda m: setattr(m.cylinders, "diameter", np.array([1.0])), "1 rows, not 2"),
        (lambda m: setattr(m.cylinders, "start", np.zeros((2, 2))), r"the shape is \(2, 2\)"),
        (lambda m: m.cylinders.header.__setitem__(1, 9), "row 1: there is no header 9"),
        (lambda m: m.cylinders.counter.__setitem__(1, 46656), "row 1: the counter is 46656"),
        (lambda m: m.cylinders.diameter.__setitem__(1, NAN), "row 1: nan is not finite"),
        (lambda m: m.polylines.offsets.__setitem__(1, 99), "2 rows, and 99 are wanted"),
        (lambda m: m.polylines.offsets.__setitem__(0, -1), "offsets that do not fall"),
        (lambda m: m.order.__setitem__(0, 12), "12 is no kind"),
        (lambda m: m.order.__setitem__(0, 2), "it has 1 cylinders, and there are 2"),
    ],
)
def test_arrays_that_do_not_fit_are_refused(change, text, small, tmp_path):
    model = vesk.read(small)
    change(model)
    with pytest.raises(ValueError, match=text):
        vesk.write(tmp_path / "new.dat", model)
    assert not (tmp_path / "new.dat").exists()


# Points keep four decimals, vectors and sizes six: half of the last one is the most that a
# number can be off, and a double's own rounding at a million. An end is a point and a vector.
numbers = st.floats(-1e6, 1e6, allow_nan=False)


@settings(max_examples=50, deadline=None)
@given(st.data())
def test_arrays_come_back_within_the_digits_of_the_style(tmp_path_factory, data):
    rows = data.draw(st.integers(1, 20))
    points = arrays.arrays(np.float64, (rows, 3), elements=numbers)
    start, end = data.draw(points), data.draw(points)
    diameter = data.draw(arrays.arrays(np.float64, rows, elements=st.floats(0, 1e4)))
    path = tmp_path_factory.mktemp("digits") / "new.dat"
    with vesk.Writer(path) as file:
        file.cylinders(start, end, diameter)
    back = vesk.read(path, strict=True).cylinders
    assert np.abs(back.start - start).max() <= 0.5e-4 + 1e-9
    assert np.abs(back.axis - (end - start)).max() <= 0.5e-6 + 1e-9
    assert np.abs(back.diameter - diameter).max() <= 0.5e-6 + 1e-9


@pytest.mark.skipif(not LIBRARY, reason="VESK_LIBRARY names no library")
def test_the_module_for_hosts_stands_beside_the_package_under_another_name(tmp_path):
    module = ROOT / "examples" / "hosts" / "python" / "vesk.py"
    (tmp_path / "vesk_host.py").write_bytes(module.read_bytes())
    code = """
import vesk, vesk_host
with vesk_host.File(path="host.dat") as file:
    file.header("P-1001", "01", 1)
    file.cylinder((0, 0, 0), (0, 0, 500), 219.1)
assert vesk.read("host.dat", strict=True).cylinders.diameter.tolist() == [219.1]
"""
    path = os.pathsep.join(filter(None, [str(tmp_path), os.environ.get("PYTHONPATH")]))
    own = os.environ | {"PYTHONPATH": path}
    subprocess.run([sys.executable, "-B", "-c", code], check=True, timeout=60, cwd=tmp_path, env=own)
