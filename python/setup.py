# SPDX-License-Identifier: MIT
"""Builds the compiled module by CMake, from the sources in the folder above.

With the variable VESK_PYTHON_MODULE a module that is built already is taken; CMAKE_ARGS is
passed on.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent.parent

# What the module is made of, and what its makers ask to be said with it.
LICENCES = (
    ROOT / "LICENSE",
    ROOT / "python" / "licence-of-pybind11.txt",
    ROOT / "cmake" / "packages" / "copyright.others",
)

# The page of the viewer, where it was built.
PAGE = ROOT / "viewer" / "dist" / "template.html"


def version() -> str:
    found = re.search(r"^project\(vesk VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text(), re.M)
    assert found is not None
    return found[1]


class BuildByCMake(build_ext):
    def build_extension(self, ext: Extension) -> None:
        module = os.environ.get("VESK_PYTHON_MODULE") or self.built()
        target = pathlib.Path(self.get_ext_fullpath(ext.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(module, target)
        for each in LICENCES:
            shutil.copy(each, target.parent)
        for page in (pathlib.Path(module).with_name("page.html"), PAGE):
            if page.exists():
                shutil.copy(page, target.parent / "page.html")
                break

    def built(self) -> pathlib.Path:
        folder = pathlib.Path(self.build_temp).resolve()
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "VESK_BUILD_PYTHON": "ON",
            "VESK_BUILD_TESTS": "OFF",
            "VESK_BUILD_EXAMPLES": "OFF",
            "VESK_BUILD_VIEWER": "OFF",
            "VESK_PYTHON": sys.executable,
        }
        words = [f"-D{name}={value}" for name, value in options.items()]
        words += os.environ.get("CMAKE_ARGS", "").split()
        subprocess.run(["cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", *words], check=True)
        subprocess.run(["cmake", "--build", folder, "--target", "vesk_python"], check=True)
        (module,) = (folder / "python" / "vesk").glob("_vesk.*.so")
        return module


# Nothing is left between the sources.
folder = tempfile.mkdtemp(prefix="vesk-wheel-")
setup(
    version=version(),
    ext_modules=[Extension("vesk._vesk", [])],
    cmdclass={"build_ext": BuildByCMake},
    options={
        "build": {"build_base": folder, "build_temp": f"{folder}/temp"},
        "egg_info": {"egg_base": folder},
    },
)
shutil.rmtree(folder, ignore_errors=True)
