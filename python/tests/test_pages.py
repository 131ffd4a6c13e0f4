# SPDX-License-Identifier: MIT
import ast
import html
import json
import os
import subprocess
import xml.etree.ElementTree

import pytest

import vesk
from conftest import GOLDEN, PAGE, ROOT, needs_page

TOOL = os.environ.get("VESK_TOOL")
NOTEBOOKS = sorted((ROOT / "python" / "examples").glob("*.ipynb"))
needs_tool = pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")


@needs_tool
@needs_page
@pytest.mark.filterwarnings("ignore:an element can't be shown")
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_a_page_is_that_of_the_tool(path, tmp_path):
    ours, theirs = tmp_path / "ours.html", tmp_path / "theirs.html"
    model = vesk.read(path)
    model.to_html(ours)
    subprocess.run([TOOL, "view", "-q", path, "-o", theirs], check=False, timeout=60)
    assert ours.read_bytes() == theirs.read_bytes()
    assert model.to_html() == theirs.read_bytes()


@needs_page
def test_a_page_knows_the_attributes_and_the_title(small):
    plain = vesk.read(small).to_html(title="Pump <1>")
    (small.parent / "small.attributes.csv").write_text("f1,f2,first,last,tag\nP-1001,01,1,2,P-7\n")
    known = vesk.read(small).to_html(title="Pump <1>")
    assert plain != known and len(vesk.read(small).attributes) == 1


@needs_page
def test_a_page_that_can_not_be_written_names_the_path(small, tmp_path):
    with pytest.raises(FileNotFoundError) as caught:
        vesk.read(small).to_html(tmp_path / "none" / "x.html")
    assert caught.value.filename == str(tmp_path / "none" / "x.html")


def test_a_model_shows_itself(small, monkeypatch):
    model = vesk.read(small)
    bundle = model._repr_mimebundle_()
    assert bundle["text/plain"] == repr(model)
    xml.etree.ElementTree.fromstring(bundle["image/svg+xml"])
    if PAGE.exists():
        frame = model._repr_html_()
        assert frame.startswith('<iframe srcdoc="') and frame.count('"') == frame.count('="') * 2
        text = html.unescape(frame.split('"')[1])
        assert text.encode() == model.to_html(quality="draft")
    # Without the page, the drawing.
    monkeypatch.setattr("vesk._pages.TEMPLATE", small.with_name("none.html"))
    assert model._repr_html_() == bundle["image/svg+xml"]
    with pytest.raises(RuntimeError, match="without the page"):
        model.to_html()


def test_nothing_is_drawn_of_what_would_make_a_notebook_slow(small, monkeypatch):
    monkeypatch.setattr("vesk._pages.MOST_IN_A_DRAWING", 2)
    assert list(vesk.read(small)._repr_mimebundle_()) == ["text/plain"]
    assert list(vesk.read(b"")._repr_mimebundle_()) == ["text/plain"]


def run_cell(source, names):
    """Runs the cell; what a notebook would show, the value of a last expression."""
    tree = ast.parse(source)
    last = tree.body.pop() if isinstance(tree.body[-1], ast.Expr) else None
    exec(compile(tree, "cell", "exec"), names)
    return last and eval(compile(ast.Expression(last.value), "cell", "eval"), names)


@needs_tool
@pytest.mark.parametrize("path", NOTEBOOKS, ids=lambda path: path.name)
def test_a_notebook_runs_as_it_stands(path, monkeypatch, tmp_path):
    pytest.importorskip("pandas")
    monkeypatch.chdir(path.parent)
    monkeypatch.setattr("tempfile.tempdir", str(tmp_path))
    cells = json.loads(path.read_text(encoding="utf-8"))["cells"]
    sources = ["".join(each["source"]) for each in cells if each["cell_type"] == "code"]
    names: dict[str, object] = {}
    shown = [run_cell(each, names) for each in sources]
    assert sum(isinstance(each, vesk.Model) for each in shown) == 1
    folder = names["folder"]
    made = {each.name: each.stat().st_size for each in folder.iterdir()}
    assert {"bill.csv", "clashes.csv", "metres.csv", "pump.glb", "pump.png"} <= made.keys()
    assert min(made.values()) > 0
    # The walls and lengths of the bill are those that an order of the tool has.
    bill = (folder / "bill.csv").read_text().splitlines()
    assert len(bill) > 10 and bill[0] == "group,description,components,length_m,weight_kg"


def test_notebooks_are_kept_without_results():
    assert NOTEBOOKS
    for path in NOTEBOOKS:
        for cell in json.loads(path.read_text(encoding="utf-8"))["cells"]:
            assert not cell.get("outputs") and cell.get("execution_count") is None
