# SPDX-License-Identifier: MIT
import json
import os
import subprocess

import numpy as np
import pytest

import vesk
from conftest import GOLDEN, ROOT

TOOL = os.environ.get("VESK_TOOL")
needs_tool = pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")


def told(*words):
    done = subprocess.run([TOOL, *words], capture_output=True, timeout=60)
    return json.loads(done.stdout)


@pytest.fixture
def crossing(tmp_path):
    """Two pipes of 20 mm whose axes pass 5 mm from each other, a third far above."""
    path = tmp_path / "crossing.dat"
    with vesk.Writer(path) as file:
        file.cylinders(
            [[0, 0, 0], [50, -50, 5], [0, 0, 5000]],
            [[100, 0, 0], [50, 50, 5], [100, 0, 5000]],
            20,
            header=["P-1", "P-2", "P-3"],
        )
    return path


@needs_tool
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
@pytest.mark.parametrize("joints", [False, True])
def test_a_check_finds_what_the_tool_finds(path, joints):
    (file,) = told("check", "--json", *(["--joints"] if joints else []), path)["files"]
    theirs = [(each["code"], each["severity"], each["line"], each["message"])
              for each in file["findings"]]
    ours = vesk.read(path).check(joints=joints)
    assert [(each.code, each.severity, each.line, each.message) for each in ours] == theirs


def test_a_finding_has_its_file_line_and_element(tmp_path):
    path = tmp_path / "wrong.dat"
    with vesk.Writer(path) as file:
        file.cylinders([0, 0, 0], [[0, 0, 100], [0, 0, 0]], 10)  # the second has no length
    model = vesk.read([path, path])
    found = [each for each in model.check() if each.code == "V103"]
    assert [(each.file, each.line, each.element) for each in found] == [
        (str(path), 2, 1),
        (str(path), 2, 3),
    ]


def test_joints_are_the_findings_about_ends(tmp_path):
    with vesk.Writer(tmp_path / "gap.dat") as file:
        # 1000 mm of pipe, a gap of 2 mm, 1000 mm of pipe; the outer ends are open.
        file.cylinders([[0, 0, 0], [1002, 0, 0]], [[1000, 0, 0], [2002, 0, 0]], 100)
    codes = [each.code for each in vesk.read(tmp_path / "gap.dat").joints(reach=10)]
    assert codes.count("V201") == 1 and set(codes) <= {"V201", "V205"}


def test_pipes_that_cross_clash(crossing):
    clashes = vesk.read(crossing).clash()
    assert clashes.code == ["V501"] and clashes.pairs.tolist() == [[0, 1]]
    assert clashes.distance.tolist() == [0]
    # 10 + 10 - 5: no shorter shift takes the axes of crossing pipes 20 apart.
    assert 0 < clashes.depth[0] <= 15 + 1e-9
    assert np.linalg.norm(clashes.place[0] - [50, 0, 2.5]) <= 20


@pytest.mark.parametrize(
    "words, codes",
    [
        ({}, ["V501"]),
        ({"ignore": [("P-1", "P-2")]}, []),
        ({"between": "lines"}, ["V501"]),
        ({"between": "files"}, []),
        ({"tolerance": 16}, []),
        ({"clearance": 4990}, ["V501", "V502", "V502"]),  # 5000 - 20 and 4995 - 20 are less
    ],
)
def test_a_clash_is_what_its_words_say(crossing, words, codes):
    assert sorted(vesk.read(crossing).clash(**words).code) == codes


def test_a_scope_that_means_nothing_is_refused(crossing):
    with pytest.raises(ValueError, match="elements, headers, lines or files"):
        vesk.read(crossing).clash(between="colours")


@needs_tool
def test_a_search_finds_what_the_tool_finds(tmp_path):
    random = np.random.default_rng(7)
    start = random.uniform(0, 3000, (200, 3))
    with vesk.Writer(tmp_path / "many.dat") as file:
        end = start + random.uniform(-800, 800, (200, 3))
        headers = [f"P-{i % 9}" for i in range(200)]
        file.cylinders(start, end, random.uniform(20, 100, 200), header=headers)
    theirs = told("clash", "--json", "--clearance", "5", tmp_path / "many.dat")["clashes"]
    model = vesk.read(tmp_path / "many.dat")
    clashes = model.clash(clearance=5)
    lines = model.cylinders.line[clashes.pairs]
    assert len(clashes) == len(theirs) > 10
    assert lines.tolist() == [[each["a"]["line"], each["b"]["line"]] for each in theirs]
    assert clashes.code == [each["code"] for each in theirs]


@needs_tool
@pytest.mark.parametrize("between", ["elements", "headers"])
def test_what_was_drawn_for_one_component_does_not_clash(between, tmp_path):
    plant = tmp_path / "pump.dat"
    pcf = ROOT / "examples" / "piping" / "pump.pcf"
    subprocess.run([TOOL, "import", "-q", pcf, "-o", plant], check=True, timeout=60)
    theirs = told("clash", "--json", "--between", between, plant)["clashes"]
    known = vesk.read(plant).clash(between=between)
    assert [known.code, len(known)] == [[each["code"] for each in theirs], len(theirs)]
    unknown = vesk.read(plant, attributes=False).clash(between=between)
    assert between == "headers" or len(unknown) > len(known)


def test_a_difference_tells_pairs_and_what_is_alone(crossing):
    before = vesk.read(crossing)
    after = vesk.read(crossing)
    assert not before.diff(after) and before.diff(after).same.tolist() == [[0, 0], [1, 1], [2, 2]]
    after.cylinders.diameter[1] = 30
    part = after.take(np.array([True, True, False]))
    difference = before.diff(part)
    assert difference.same.tolist() == [[0, 0]]
    assert difference.changed.tolist() == [[1, 1]]
    assert difference.removed.tolist() == [2] and len(difference.added) == 0
    assert part.diff(before).added.tolist() == [2]


def test_findings_and_clashes_are_tables_too(crossing):
    pytest.importorskip("pandas")
    model = vesk.read(crossing)
    assert model.clash().to_dataframe().b.tolist() == [1]
    assert list(model.check().to_dataframe().columns) == list(vesk.Finding._fields)
