#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads a whole tileset that `vesk export` has made of one file with an element on each line.

    tiles-judge.py TILESET.json ELEMENTS TRIANGLES

Members and their types are as 3D Tiles 1.1 has them; boxes lie in their parents'; errors
fall and are 0 at the leaves alone; no tile has more than so many triangles; every element
is in just one leaf, and no coarser tile has one twice. Exit code 1 and a line for each
fault otherwise.
"""
import json
import math
import pathlib
import struct
import sys

MEMBERS = {"boundingVolume", "geometricError", "refine", "transform", "content", "children"}
faults = []


def fail(text):
    faults.append(text)
    if len(faults) > 20:
        print(*faults, sep="\n")
        sys.exit(1)


def numbers(value, count, where):
    if len(value) != count or not all(
            isinstance(n, (int, float)) and math.isfinite(n) for n in value):
        fail(f"{where}: not {count} numbers")
    return value


def read(file):
    """The lines of the elements that a content shows, and its triangles."""
    data = file.read_bytes()
    magic, version, size, text, kind = struct.unpack_from("<4sIII4s", data)
    if (magic, version, size, kind) != (b"glTF", 2, len(data), b"JSON"):
        fail(f"{file}: no binary glTF file")
    gltf = json.loads(data[20:20 + text])
    binary = 20 + text + 8
    table = gltf["nodes"][0]["extras"].get("elements")
    lines, triangles = [], 0
    for node in gltf["nodes"]:
        if "mesh" not in node:
            continue
        accessors = [gltf["accessors"][primitive.get("indices", primitive["attributes"]["POSITION"])]
                     for primitive in gltf["meshes"][node["mesh"]]["primitives"]]
        mode = gltf["meshes"][node["mesh"]]["primitives"][0].get("mode", 4)
        count = sum(accessor["count"] for accessor in accessors)
        own = {0: count, 1: count - 1, 3: count - 1, 4: count // 3}[mode]
        instancing = node.get("extensions", {}).get("EXT_mesh_gpu_instancing")
        if not instancing:
            lines.append(node["extras"]["line"])
            triangles += own
            continue
        ids = gltf["accessors"][instancing["attributes"]["_FEATURE_ID_0"]]
        view = gltf["bufferViews"][ids["bufferView"]]
        at = binary + view.get("byteOffset", 0) + ids.get("byteOffset", 0)
        for feature in struct.unpack_from(f"<{ids['count']}f", data, at):
            lines.append(table["line"][int(feature)])
        triangles += own * ids["count"]
    return lines, triangles


def main():
    file, elements, most = pathlib.Path(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    tileset = json.loads(file.read_text())
    if tileset["asset"] != {"version": "1.1"} or set(tileset) != {
            "asset", "geometricError", "root", "extras"}:
        fail("tileset: other members")
    if tileset["extras"]["elements"] != elements:
        fail(f"{tileset['extras']['elements']} elements are told")
    shown = bytearray(elements + 1)
    tiles = 0
    waiting = [(tileset["root"], None, (0.0, 0.0, 0.0), tileset["geometricError"])]
    while waiting:
        tile, above, origin, error = waiting.pop()
        tiles += 1
        where = f"tile {tiles}"
        if not set(tile) <= MEMBERS or set(tile["boundingVolume"]) != {"box"}:
            fail(f"{where}: other members")
        box = numbers(tile["boundingVolume"]["box"], 12, where)
        place = numbers(tile["transform"], 16, where)
        if place[:12] != [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0] or place[15] != 1:
            fail(f"{where}: not a shift")
        centre = tuple(a + b for a, b in zip(origin, place[12:15]))
        low = [centre[i] + box[i] - box[3 + 4 * i] for i in range(3)]
        high = [centre[i] + box[i] + box[3 + 4 * i] for i in range(3)]
        if above and not all(above[0][i] - 1e-6 <= low[i] and high[i] <= above[1][i] + 1e-6
                             for i in range(3)):
            fail(f"{where}: not in its parent's box")
        is_leaf = "children" not in tile
        if not 0 <= tile["geometricError"] < error or is_leaf != (tile["geometricError"] == 0):
            fail(f"{where}: an error of {tile['geometricError']} below {error}")
        if "content" in tile:
            lines, triangles = read(file.parent / tile["content"]["uri"])
            if triangles > most:
                fail(f"{where}: {triangles} triangles")
            if len(lines) != len(set(lines)):
                fail(f"{where}: an element twice")
            for line in lines if is_leaf else ():
                if shown[line]:
                    fail(f"{where}: line {line} again")
                shown[line] = 1
        for child in tile.get("children", ()):
            waiting.append((child, (low, high), centre, tile["geometricError"]))
    if sum(shown) != elements:
        fail(f"{elements - sum(shown)} elements are in no leaf")
    if tiles != tileset["extras"]["tiles"]:
        fail(f"{tileset['extras']['tiles']} tiles are told")
    print(*faults, sep="\n", end="\n" if faults else "")
    print(f"{tiles} tiles, {elements} elements, {len(faults)} faults")
    return 1 if faults else 0


sys.exit(main())
