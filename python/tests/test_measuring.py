# SPDX-License-Identifier: MIT
import csv
import io
import os
import pickle
import subprocess

import numpy as np
import pytest

import vesk
from conftest import ROOT

TOOL = os.environ.get("VESK_TOOL")
needs_tool = pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")

SIDECAR = """\
f1,f2,first,last,component,kind,item-code,description
P-1,,1,1,PIPE,pipe,A106-4,"PIPE, 4"
P-1,,2,2,PIPE,pipe,A106-4,"PIPE, 4"
P-1,,3,4,VALVE,valve,GV-4,GATE VALVE
"""


@pytest.fixture
def line(tmp_path):
    """1 m and 2 m of pipe of 100 mm, a valve of two cones, and a pipe of no component."""
    path = tmp_path / "line.dat"
    with vesk.Writer(path) as file:
        start, end = [[0, 0, 0], [1000, 0, 0]], [[1000, 0, 0], [3000, 0, 0]]
        file.cylinders(start, end, 100, header="P-1", number=[1, 2])
        start, end = [[3000, 0, 0], [3200, 0, 0]], [[3200, 0, 0], [3400, 0, 0]]
        file.cones(start, end, [100, 20], [20, 100], header="P-1", number=[3, 4])
        file.cylinders([0, 500, 0], [700, 500, 0], 100, header="P-2", number=1)
    (tmp_path / "line.attributes.csv").write_text(SIDECAR)
    return path


def test_a_sidecar_beside_a_file_is_read_with_it(line):
    model = vesk.read(line, strict=True)
    assert model.attributes.columns == ("component", "kind", "item-code", "description")
    assert model.attributes["item-code"].tolist() == ["A106-4", "A106-4", "GV-4"]
    assert model.component.tolist() == [0, 1, 2, 2, -1]
    assert model.attributes.first.tolist() == [1, 2, 3]
    assert model.attributes.last.tolist() == [1, 2, 4]
    with pytest.raises(KeyError, match="no column 'spec'; columns: component, kind"):
        model.attributes["spec"]


def test_a_sidecar_may_be_named_or_left_out(line, tmp_path):
    assert len(vesk.read(line, attributes=False).attributes) == 0
    (tmp_path / "line.attributes.csv").rename(tmp_path / "other.csv")
    assert len(vesk.read(line).attributes) == 0
    named = {"attributes": tmp_path / "other.csv"}
    assert len(vesk.read(line, **named).attributes) == 3
    assert len(vesk.read(line.read_bytes(), **named).attributes) == 3
    with pytest.raises(ValueError, match="of one file, not 2"):
        vesk.read([line, line], **named)
    with pytest.raises(FileNotFoundError) as caught:
        vesk.read(line, attributes=tmp_path / "none.csv")
    assert caught.value.filename == str(tmp_path / "none.csv")


def test_sidecars_of_several_files_have_their_columns_together(line, tmp_path):
    with vesk.Writer(tmp_path / "a.dat") as file:  # the first by name, without a sidecar
        file.cylinders([0, 0, 0], [1, 0, 0], 1, header="P-1", number=1)
    with vesk.Writer(tmp_path / "z.dat") as file:
        file.cylinders([0, 0, 0], [1, 0, 0], 1, header="P-1", number=3)
    (tmp_path / "z.attributes.csv").write_text("f1,f2,first,last,spec,kind\nP-1,,3,3,C1,pipe\n")
    model = vesk.read(tmp_path)
    assert model.component.tolist() == [-1, 0, 1, 2, 2, -1, 3]
    assert model.attributes["spec"].tolist() == ["", "", "", "C1"]
    assert model.attributes["kind"].tolist() == ["pipe", "pipe", "valve", "pipe"]


def test_attributes_go_with_a_part_a_copy_and_a_pickle(line):
    model = vesk.read(line)
    assert model.select(kind="cone").component.tolist() == [2, 2]
    assert model.take(np.array([False, True, False, False, True])).component.tolist() == [1, -1]
    assert model.move([1, 2, 3]).component.tolist() == [0, 1, 2, 2, -1]
    again = pickle.loads(pickle.dumps(model))
    assert again.attributes["description"].tolist() == ["PIPE, 4", "PIPE, 4", "GATE VALVE"]
    assert again.component.tolist() == model.component.tolist()


def test_a_scan_has_the_attributes_of_each_chunk(line):
    codes = []
    for part in vesk.scan(line, chunk=3):
        code = np.append(part.attributes["item-code"], "none")
        codes.append(code[part.component].tolist())
    assert codes == [["A106-4", "A106-4", "GV-4"], ["GV-4", "none"]]


def test_a_sidecar_that_is_cut_off_is_a_warning_or_an_error(line, tmp_path):
    (tmp_path / "line.attributes.csv").write_text(SIDECAR[:-15] + '"\n')
    with pytest.warns(UserWarning, match="line.attributes.csv:") as caught:
        model = vesk.read(line)
    assert caught[0].filename == __file__
    assert model.component.tolist()[:2] == [0, 1]
    with pytest.raises(ValueError, match="line.attributes.csv:"):
        vesk.read(line, strict=True)


def test_a_dataframe_has_the_columns_of_the_sidecar(line):
    pytest.importorskip("pandas")
    table = vesk.read(line).to_dataframe()
    assert table["item-code"].tolist()[:4] == ["A106-4", "A106-4", "GV-4", "GV-4"]
    assert table["item-code"].isna().tolist() == [False] * 4 + [True]
    assert table["attribute kind"].tolist()[:3] == ["pipe", "pipe", "valve"]
    lengths = table.groupby("item-code", observed=True).length.sum()
    assert lengths.to_dict() == {"A106-4": 3000, "GV-4": 400}
    assert "item-code" not in vesk.read(line).to_dataframe(attributes=False)
    assert list(vesk.read(line).attributes.to_dataframe().columns[:4]) == ["f1", "f2", "first", "last"]


def test_a_bill_of_materials_counts_components(line):
    bill = vesk.read(line).measure(by="item")
    assert bill["group"].tolist() == ["", "A106-4", "GV-4", ""]
    assert bill["level"].tolist() == ["subtotal"] * 3 + ["total"]
    assert bill["components"].tolist() == [0, 2, 1, 3]
    assert bill["length_m"].tolist() == pytest.approx([0.7, 3, 0.4, 4.1])
    assert bill["description"].tolist() == ["", "PIPE, 4", "GATE VALVE", ""]


def test_walls_make_weights_of_steel(line):
    total = vesk.read(line).select(kind="cylinder").measure(density=1000)["weight_kg"][-1]
    assert total == pytest.approx(np.pi * 0.05**2 * 3.7 * 1000)
    # 100 mm is no outside diameter of the standard, which has 101.6.
    walled = vesk.read(line).scale(1.143).select(kind="cylinder", header="P-1")
    assert walled.measure(schedule="40")["weight_kg"][-1] == pytest.approx(
        # DN 100: 114.3 x 6.02
        np.pi * (0.1143 - 0.00602) * 0.00602 * 3 * 1.143 * 7850
    )


def test_what_has_no_wall_is_said(line):
    off = vesk.read(line).measure(schedule="40")
    assert {each.text.split(":")[0] for each in off.remarks} == {"no wall"}
    assert sum(each.times for each in off.remarks) == 5 and off.faults == 0
    assert off.remarks[0].places[0].startswith(str(line))


@needs_tool
@pytest.mark.parametrize(
    "words, options",
    [
        ({}, []),
        ({"by": "header"}, ["--by", "header"]),
        ({"by": ["header,size", "kind"]}, ["--by", "header,size", "--by", "kind"]),
        ({"by": "item"}, ["--by", "item"]),
        ({"by": "spec", "sums": True}, ["--by", "spec", "--sums"]),
        ({"by": "size", "units": "imperial", "schedule": "40", "insulation": 50},
         ["--by", "size", "--units", "imperial", "--schedule", "40", "--insulation", "50"]),
        ({"by": "group", "density": 2700, "unit": 25.4},
         ["--by", "group", "--density", "2700", "--unit", "25.4"]),
    ],
)
def test_a_take_off_is_that_of_the_tool(words, options, tmp_path):
    plant = tmp_path / "pump.dat"
    pcf = ROOT / "examples" / "piping" / "pump.pcf"
    subprocess.run([TOOL, "import", "-q", pcf, "-o", plant], check=True, timeout=60)
    files = [plant]
    if "item" not in options and "spec" not in options:
        with vesk.Writer(tmp_path / "more.dat") as file:
            file.cylinders([0, 0, 0], [1 / 3, 0, 0], 60.3, header=("P-9", "02"))
        files.append(tmp_path / "more.dat")
    done = subprocess.run([TOOL, "measure", "--csv", *options, *files], capture_output=True,
                          text=True, timeout=60)
    titles, *rows = csv.reader(io.StringIO(done.stdout))
    ours = vesk.read(files).measure(**words)
    assert list(ours.columns) == titles and len(ours) == len(rows) > 1
    for name, theirs in zip(titles, zip(*rows)):
        column = ours[name]
        theirs = list(theirs) if column.dtype == object else [float(each) for each in theirs]
        assert column.tolist() == theirs, name


@pytest.mark.parametrize(
    "words, text",
    [
        ({"by": "colour"}, "no column \"colour\"; columns: component, kind"),
        ({"by": ""}, "by"),
        ({"units": "feet"}, "metric or imperial"),
        ({"schedule": "41"}, "schedule '41': one of 5S"),
        ({"unit": 0}, "no length above 0"),
        ({"density": float("nan")}, "density nan"),
        ({"schedule": "40", "walls": "w.csv"}, "not of both"),
    ],
)
def test_words_that_mean_nothing_are_refused(line, words, text):
    with pytest.raises(ValueError, match=text):
        vesk.read(line).measure(**words)


def test_a_model_without_attributes_is_no_bill(line):
    with pytest.raises(ValueError, match="by 'item': the model has no attributes"):
        vesk.read(line, attributes=False).measure(by="item")


def test_attributes_that_do_not_fit_are_refused(line):
    model = vesk.read(line)
    model.component = np.full(5, 3)
    with pytest.raises(ValueError, match="do not fit"):
        model.measure(by="item")
