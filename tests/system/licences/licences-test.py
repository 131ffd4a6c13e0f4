#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every library of others that the tool links, includes or bundles is listed.

    licences-test.py VESK PROJECT [READELF]
"""
import json
import pathlib
import re
import subprocess
import sys

# What a program is linked with, as `readelf -d` names it -> name in the list.
LINKED = {
    "libz": "zlib",
    "libzstd": "zstd",
    "libfcl": "FCL",
    "libccd": "FCL",
    "liboctomap": "FCL",
    "libsqlite3": "SQLite",
    "libxlsxwriter": "libxlsxwriter",
}
# The system's own, and the compiler's runtime.
SYSTEM = {"libc", "libm", "libgcc_s", "libstdc++", "libpthread", "ld-linux-x86-64"}
# The first part of an include -> name in the list.
INCLUDED = {
    "CLI": "CLI11",
    "nlohmann": "nlohmann-json",
    "stb": "stb",
    "zlib.h": "zlib",
    "zstd.h": "zstd",
    "fcl": "FCL",
    "Eigen": "Eigen",
    "sqlite3.h": "SQLite",
    "xlsxwriter.h": "libxlsxwriter",
}
# A package that the page imports -> name in the list.
BUNDLED = {"three": "three.js"}


def main():
    tool, project = sys.argv[1], pathlib.Path(sys.argv[2])
    listed = {row["name"]: row for row in
              json.loads(subprocess.check_output([tool, "version", "--json"]))["libraries"]}
    faults = [f"{name}: no licence" for name, row in listed.items() if not row["licence"]]

    others = (project / "cmake" / "packages" / "copyright.others").read_text()
    faults += [f"{name}: not in cmake/packages/copyright.others" for name in listed
               if f"Files: {name}\n" not in others]

    def want(name, where):
        if name not in listed:
            faults.append(f"{where}: {name} is not listed by `vesk version`")

    dynamic = subprocess.check_output([sys.argv[3] if len(sys.argv) > 3 else "readelf", "-d", tool],
                                      text=True)
    for library in re.findall(r"\(NEEDED\).*\[(.*?)\.so", dynamic):
        if library not in SYSTEM:
            want(LINKED.get(library, library), "linked")

    for source in sorted((project / "tools").rglob("*")):
        if source.suffix not in (".h", ".cpp"):
            continue
        for header in re.findall(r'^\s*#\s*include\s+[<"]([^">]+)[">]', source.read_text(), re.M):
            first = header.split("/")[0]
            if first in INCLUDED:
                want(INCLUDED[first], source.relative_to(project))

    if "three.js" in listed:  # the page is in this build
        for source in sorted((project / "viewer" / "src").rglob("*.js")):
            for package in re.findall(r"""from\s+['"]([^.'"][^'"]*)['"]""", source.read_text()):
                want(BUNDLED.get(package.split("/")[0], package), source.relative_to(project))

    print(*faults, sep="\n")
    print(f"{len(listed)} libraries listed, {len(faults)} faults")
    return 1 if faults else 0


sys.exit(main())
