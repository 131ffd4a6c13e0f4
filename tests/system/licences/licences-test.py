#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every library of others that the tool links, includes or bundles is listed, and has its
version and licence in the bill of materials.

    licences-test.py VESK PROJECT [READELF]
"""
import json
import pathlib
import re
import shutil
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
    "libmeshoptimizer": "meshoptimizer",
}
# The system's own, and the compiler's runtime, and Debian's packages of them.
SYSTEM = {
    "libc": "libc6",
    "libm": "libc6",
    "libpthread": "libc6",
    "ld-linux-x86-64": "libc6",
    "libgcc_s": "libgcc-s1",
    "libstdc++": "libstdc++6",
}
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
    "meshoptimizer.h": "meshoptimizer",
}
# A package that the page imports -> name in the list.
BUNDLED = {"three": "three.js", "3d-tiles-renderer": "3d-tiles-renderer"}


def faults_of_the_bill(project, tool, listed, linked):
    """What scripts/sbom leaves out of a build, or tells otherwise than the tool does."""
    command = [sys.executable, project / "scripts" / "sbom", pathlib.Path(tool).parent.parent]
    bill = subprocess.check_output(command)
    faults = [] if subprocess.check_output(command) == bill else ["the bill is another each time"]
    parts = {row["name"]: row for row in json.loads(bill)["components"]}
    for name, row in listed.items():
        if name not in parts:
            faults += [f"{name}: not in the bill"] if row["in"] else []
        elif {"license": {"id": row["licence"]}} not in parts[name]["licenses"]:
            faults.append(f"{name}: the bill has the licences {parts[name]['licenses']}")
    faults += [f"{library}: linked, not in the bill" for library in linked
               if SYSTEM.get(library, LINKED.get(library, library)) not in parts]
    faults += [f"{name}: no version in the bill" for name, row in parts.items()
               if not row["version"] or row["version"] not in row["purl"].replace("%2B", "+")
               .replace("%3A", ":")]
    return faults


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
    needed = re.findall(r"\(NEEDED\).*\[(.*?)\.so", dynamic)
    if shutil.which("dpkg-query"):
        faults += faults_of_the_bill(project, tool, listed, needed)
    for library in needed:
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
