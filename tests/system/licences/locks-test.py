#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What npm is asked for is locked: one version of each package and the sum of its bytes; of
what is given to others, the licence.

    locks-test.py PROJECT

Without an address: which registry is asked, the machine says.
"""
import json
import pathlib
import re
import sys

EXACT = re.compile(r"\d+\.\d+\.\d+([-.+][0-9A-Za-z.+-]+)?")
KINDS = ("dependencies", "devDependencies", "optionalDependencies")


def faults_of(asked, lock, is_given):
    """Of a package.json and the lock beside it."""
    if lock is None:
        return ["no lock"] if any(asked.get(kind) for kind in KINDS) else []
    packages = lock["packages"]
    faults = []
    for kind in KINDS:
        if asked.get(kind, {}) != packages[""].get(kind, {}):
            faults.append(f"{kind}: other ones in the lock")
        for name, version in asked.get(kind, {}).items():
            if not EXACT.fullmatch(version):
                faults.append(f"{name} {version}: not one version")
            elif packages.get(f"node_modules/{name}", {}).get("version") != version:
                faults.append(f"{name} {version}: not in the lock")
    for path, entry in packages.items():
        if path == "":
            continue
        if not entry.get("integrity", "").startswith("sha512-"):
            faults.append(f"{path}: no sum")
        if is_given and not entry.get("license"):
            faults.append(f"{path}: no licence")
        if "resolved" in entry:
            faults.append(f"{path}: an address")
    return faults


def notices():
    """A project with each fault, so that this test is one."""
    asked = {"dependencies": {"a": "^1.0.0", "b": "2.0.0"}}
    lock = {"packages": {"": {}, "node_modules/a": {"integrity": "sha1-x", "resolved": "x"},
                         "node_modules/b": {"version": "2.0.1", "integrity": "sha512-x",
                                            "license": "MIT"}}}
    return faults_of(asked, None, True) + faults_of(asked, lock, True)


def main():
    project = pathlib.Path(sys.argv[1])
    if len(notices()) != 7:
        print("the check finds", *notices(), sep="\n")
        return 1
    faults, count = [], 0
    for file in sorted(project.glob("*/**/package.json")):
        inside = file.relative_to(project).parts
        if "node_modules" in inside or inside[0].startswith("build"):
            continue
        count += 1
        beside = file.with_name("package-lock.json")
        lock = json.loads(beside.read_text()) if beside.exists() else None
        where = file.relative_to(project)
        found = faults_of(json.loads(file.read_text()), lock, inside[0] != "tests")
        faults += [f"{where}: {fault}" for fault in found]
    print(*faults, sep="\n")
    print(f"{count} projects, {len(faults)} faults")
    return 1 if faults or count < 4 else 0


sys.exit(main())
