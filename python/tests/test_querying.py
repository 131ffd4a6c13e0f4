# SPDX-License-Identifier: MIT
import json
import os
import subprocess
import sys

import numpy as np
import pytest

import vesk
from conftest import GOLDEN

TOOL = os.environ.get("VESK_TOOL")
pandas = pytest.importorskip("pandas")


@pytest.fixture
def pipes(tmp_path):
    """A pipe of 100 mm of 10 mm, one of 200 mm of 20 mm beside it, a box of 1 x 2 x 3, a text."""
    path = tmp_path / "pipes.dat"
    with vesk.Writer(path) as file:
        file.cylinders(
            [[0, 0, 0], [1000, 0, 0]],
            [[100, 0, 0], [1000, 200, 0]],
            [10, 20],
            header=["P-1", ("P-2", "01")],
        )
        file.boxes([5000, 0, 0], [5001, 0, 0], [5000, 2, 0], [5000, 0, 3], header="S-1")
        file.texts([0, 0, 50], "P-1", header="P-1")
    return vesk.read(path, strict=True)


# What is meant, and how many cylinders, boxes and texts that is.
@pytest.mark.parametrize(
    "words, cylinders, boxes, texts",
    [
        ({"header": "P-1"}, 1, 0, 1),
        ({"header": ["P-1", "S-*"]}, 1, 1, 1),
        ({"header": "* 01"}, 1, 0, 0),
        ({"kind": "pipe"}, 2, 0, 0),
        ({"kind": "pipe,box", "size": "..10"}, 1, 1, 0),
        ({"size": "20"}, 1, 0, 0),
        ({"bbox": (4000, -1, -1, 6000, 10, 10)}, 0, 1, 0),
        ({"near": [1000, 0, 0, 1]}, 1, 0, 0),
        ({"near": [(1000, 0, 0, 1), (5000, 0, 0, 1)]}, 1, 1, 0),
        ({"exclude": {"kind": "pipe"}}, 0, 1, 1),
        ({"touching": "P-1", "tolerance": 45.1}, 1, 0, 1),  # the text is 50 - 5 from the pipe
        ({}, 2, 1, 1),
    ],
)
def test_a_selection_is_that_of_the_tool(pipes, words, cylinders, boxes, texts):
    part = pipes.select(**words)
    assert (len(part.cylinders), len(part.boxes), len(part.texts)) == (cylinders, boxes, texts)
    assert len(part) == cylinders + boxes + texts


@pytest.mark.parametrize(
    "words, text",
    [
        ({"kind": "pump"}, "kind|only"),
        ({"bbox": (1, 2)}, "bbox"),
        ({"exclude": {"colour": "red"}}, "there is no colour"),
    ],
)
def test_a_selection_that_means_nothing_is_refused(pipes, words, text):
    with pytest.raises(ValueError, match=text):
        pipes.select(**words)


@pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
@pytest.mark.parametrize(
    "words, make",
    [
        (["--only", "cylinder,torus"], lambda m: m.select(kind="cylinder,torus")),
        (["--header", "P*"], lambda m: m.select(header="P*")),
        (["--move", "1000,-2.5,0"], lambda m: m.move([1000, -2.5, 0])),
        (["--rotate", "z,90"], lambda m: m.rotate("z", 90)),
        (["--rotate", "x,-90"], lambda m: m.rotate("x", -90)),
        (["--rotate", "y,37.5"], lambda m: m.rotate("y", 37.5)),
        (["--scale", "25.4"], lambda m: m.scale(25.4)),
    ],
    ids=lambda value: " ".join(value) if isinstance(value, list) else "",
)
def test_what_the_tool_writes_is_what_the_model_writes(path, words, make, tmp_path):
    theirs = tmp_path / "theirs.dat"
    done = subprocess.run([TOOL, "convert", "-q", *words, path, theirs], timeout=60)
    if not theirs.exists():
        assert done.returncode != 0 and len(make(vesk.read(path))) == 0
        return
    vesk.write(tmp_path / "ours.dat", make(vesk.read(path)), allow_nan=True)
    assert (tmp_path / "ours.dat").read_bytes() == theirs.read_bytes()


def test_extents_enclose_all(pipes):
    # The pipe of 20 mm reaches 10 to its sides, that of 10 mm reaches 5, the text stands at
    # z = 50 with characters of 1 x 1.
    part = pipes.select(kind="pipe")
    assert part.extents().tolist() == [[0, -5, -10], [1010, 200, 10]]


def test_no_element_has_no_extents():
    assert np.isnan(vesk.read(b"").extents()).all()


def test_volumes_are_those_of_solids(pipes):
    quarter = np.pi / 4
    wanted = [quarter * 10**2 * 100, quarter * 20**2 * 200, 6.0, 0.0]
    assert np.allclose(pipes.volumes(), wanted, rtol=1e-12)
    assert pipes.volume() == pytest.approx(sum(wanted), rel=1e-12)


def test_lengths_of_bends_are_those_of_their_centre_lines(tmp_path):
    with vesk.Writer(tmp_path / "bend.dat") as file:
        file.tori([0, 0, 0], [300, 0, 0], [0, 300, 0], 100)  # a quarter of a circle
        file.cylinders([0, 300, 0], [-500, 300, 0], 100)
        file.polylines([[0, 0, 0], [30, 40, 0], [30, 40, 5]], [0, 3])
    measures = vesk.read(tmp_path / "bend.dat").measures()
    lengths = [np.pi / 2 * 300, 500]
    assert np.allclose(measures["length"], [*lengths, 0], rtol=1e-12)
    assert np.allclose(measures["lines"], [0, 0, 50 + 5], rtol=1e-12)
    assert np.allclose(measures["surface"][:2], np.pi * 100 * np.array(lengths), rtol=1e-12)
    assert np.allclose(measures["volume"][:2], np.pi * 50**2 * np.array(lengths), rtol=1e-12)


@pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_the_sum_of_the_measures_is_that_of_the_tool(path):
    done = subprocess.run([TOOL, "measure", "--json", path], capture_output=True, timeout=60)
    rows = json.loads(done.stdout)["rows"]
    measures = vesk.read(path).measures()
    for name, unit in (("length", 1e-3), ("surface", 1e-6), ("volume", 1e-9)):
        ours = measures[name].sum() * unit
        assert ours == pytest.approx(sum(row[name] for row in rows), rel=1e-12), name


def test_what_moves_is_a_copy(pipes):
    moved = pipes.move([1, 2, 3])
    assert moved.cylinders.start[0].tolist() == [1, 2, 3]
    assert moved.texts.position.tolist() == [[1, 2, 53]]
    assert pipes.cylinders.start[0].tolist() == [0, 0, 0]
    assert moved.files == pipes.files and moved.headers == pipes.headers


@pytest.mark.parametrize(
    "change",
    [
        lambda m: m.scale(0),
        lambda m: m.scale(float("nan")),
        lambda m: m.rotate("w", 1),
        lambda m: m.move([1, 2]),
        lambda m: m.move([1, 2, float("inf")]),
        lambda m: m.take([True]),
    ],
)
def test_what_can_not_be_done_is_refused(pipes, change):
    with pytest.raises(ValueError):
        change(pipes)


def test_a_mask_takes_rows_in_the_order_of_the_file(pipes):
    part = pipes.take(pipes.order == vesk.Boxes.code)
    assert len(part) == 1 and part.boxes.origin.tolist() == [[5000, 0, 0]]


def test_a_dataframe_has_a_row_for_each_element(pipes):
    table = pipes.to_dataframe()
    assert table.kind.tolist() == ["cylinder", "cylinder", "box", "text"]
    assert table.header.tolist() == ["P-1", "P-2 01", "S-1", "P-1"]
    assert table.diameter1.tolist()[:2] == [10, 20] and table.diameter1.isna().sum() == 2
    assert table.groupby("header", observed=True).length.sum()["P-2 01"] == 200
    assert table[["x1", "y1", "z1"]].values[1].tolist() == [1000, 200, 0]
    assert table.line.tolist() == sorted(table.line)


def test_faults_are_a_table_too():
    table = vesk.read(b"no record\n").faults.to_dataframe()
    assert list(table.columns) == ["file", "line", "column", "code", "message", "expected"]
    assert len(table) == 1


def test_without_pandas_an_error_names_it(pipes, monkeypatch):
    monkeypatch.setitem(sys.modules, "pandas", None)
    with pytest.raises(ImportError, match="pandas"):
        pipes.to_dataframe()
