# SPDX-License-Identifier: MIT
import pathlib
import re

from conftest import ROOT


def test_the_recipes_run_as_they_stand(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    text = (ROOT / "docs" / "python.md").read_text(encoding="utf-8")
    blocks = re.findall(r"^```python\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    assert len(blocks) >= 10
    names: dict[str, object] = {}
    for block in blocks:
        exec(compile(block, "docs/python.md", "exec"), names)


def test_the_stubs_and_sources_stand_in_the_package():
    import vesk

    folder = pathlib.Path(vesk.__file__).parent
    assert {"py.typed", "_vesk.pyi"} <= {each.name for each in folder.iterdir()}
