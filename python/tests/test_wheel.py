# SPDX-License-Identifier: MIT
import os
import pathlib
import re
import subprocess
import sys
import zipfile

import pytest

import vesk._vesk
from conftest import GOLDEN, ROOT

MODULE = vesk._vesk.__file__
FREE = {"PIP_NO_INDEX": "1", "PIP_DISABLE_PIP_VERSION_CHECK": "1", "VESK_PYTHON_MODULE": MODULE}


def run(*words, **more):
    """Without the module of the build folder on the path."""
    own = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    return subprocess.run(
        words, check=True, capture_output=True, text=True, timeout=120, env=own | FREE, **more
    ).stdout


@pytest.fixture(scope="module")
def wheel(tmp_path_factory):
    pytest.importorskip("pip")
    pytest.importorskip("wheel")
    folder = tmp_path_factory.mktemp("wheel")
    run(sys.executable, "-m", "pip", "wheel", "--no-build-isolation", "--no-deps", "-w", folder,
        ROOT / "python")
    (made,) = folder.glob("vesk-*.whl")
    return made


def test_the_wheel_works_in_a_fresh_environment(wheel, tmp_path):
    run(sys.executable, "-m", "venv", "--system-site-packages", "--without-pip", tmp_path / "env")
    python = tmp_path / "env" / "bin" / "python"
    run(sys.executable, "-m", "pip", "--python", python, "install", "--no-index", wheel)
    code = "import sys, vesk; print(vesk.__file__, len(vesk.read(sys.argv[1], strict=True)))"
    file, count = run(python, "-c", code, GOLDEN[0], cwd=tmp_path).split()
    assert pathlib.Path(file).is_relative_to(tmp_path)
    assert int(count) == len(vesk.read(GOLDEN[0]))


def test_the_wheel_has_the_licences(wheel):
    with zipfile.ZipFile(wheel) as files:
        text = "".join(files.read(each).decode() for each in files.namelist() if "licence-of" in each
                       or each.endswith(("vesk/LICENSE", "copyright.others")))
    assert "MIT License" in text and "Wenzel Jakob" in text and "nlohmann" in text


def test_building_a_wheel_leaves_nothing_between_the_sources(wheel):
    assert not (ROOT / "python" / "build").exists()
    assert not list((ROOT / "python").glob("*.egg-info"))


def test_the_module_needs_what_every_system_has():
    dynamic = run("readelf", "-d", MODULE)
    needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic))
    assert needed <= {"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1", "libc.so.6"}


def test_the_module_shows_nothing_but_its_entry():
    symbols = run("nm", "-D", "--defined-only", "--format=posix", MODULE).split("\n")
    names = {line.split()[0] for line in symbols if line.split()[1:2] == ["T"]}
    assert names == {"PyInit__vesk"}
