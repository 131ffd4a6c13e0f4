#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Looks at what the page of take-offs has written, by arithmetic of its own.

    takeoff-judge.py VESK       in the folder of pump.pcf, pump.dat, bill.csv, bill.xlsx
"""
import csv
import io
import math
import pathlib
import random
import subprocess
import sys
import time
import xml.etree.ElementTree as ElementTree
import zipfile

VESK = sys.argv[1]
faults = []


def expect(what, got, wanted, relative=0.0):
    if isinstance(wanted, float) or relative:
        good = abs(got - wanted) <= relative * abs(wanted)
    else:
        good = got == wanted
    if not good:
        faults.append(f"{what}: {got!r}, not {wanted!r}")


def measure(*arguments, text=None):
    run = subprocess.run([VESK, "measure", "--csv", *arguments], input=text, text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if run.returncode != 0:
        faults.append(f"measure {arguments}: exit code {run.returncode}\n{run.stderr}")
    return list(csv.DictReader(io.StringIO(run.stdout)))


def close_to_plain(number):
    float(number)
    return " " not in number and "," not in number


# ------------------------------------------------ the piping file, read by itself

OUTSIDE = {0.75: 26.7, 1: 33.4, 2: 60.3, 3: 88.9, 4: 114.3, 6: 168.3}  # mm by inches
SCHEDULE_40 = {0.75: 2.87, 1: 3.38, 2: 3.91, 3: 5.49, 4: 6.02, 6: 7.11}  # mm


def components():
    """Word, item code, ends (x, y, z, bore) of each component."""
    found = []
    for line in pathlib.Path("pump.pcf").read_text().splitlines():
        words = line.split()
        if not words:
            continue
        if not line.startswith(" "):
            found.append({"word": words[0], "item": "", "ends": []})
        elif words[0] == "END-POINT":
            found[-1]["ends"].append(tuple(float(w) for w in words[1:5]))
        elif words[0] == "ITEM-CODE":
            found[-1]["item"] = words[1]
    return found


def look_at_the_bill():
    rows = list(csv.DictReader(open("bill.csv", encoding="utf-8")))
    groups = {row["group"]: row for row in rows if row["level"] == "subtotal"}
    wanted = {}
    lengths = {}
    for each in components():
        if not each["item"]:
            continue
        wanted[each["item"]] = wanted.get(each["item"], 0) + 1
        if each["word"] in ("PIPE", "PIPE-FIXED"):
            (ax, ay, az, _), (bx, by, bz, _) = each["ends"]
            lengths[each["item"]] = (lengths.get(each["item"], 0.0) +
                                     math.dist((ax, ay, az), (bx, by, bz)) / 1000)
    expect("item codes", sorted(k for k in groups if k), sorted(wanted))
    expect("more than one item", len(wanted) > 10, True)
    for item, count in wanted.items():
        if item in groups:
            expect(f"components of {item}", int(groups[item]["components"]), count)
    for item, length in lengths.items():
        expect(f"metres of {item}", float(groups[item]["length_m"]), length, 1e-6)
    for row in rows:
        for name, number in row.items():
            if name not in ("level", "by", "group", "description", "kind"):
                expect(f"{name} is a plain number", close_to_plain(number), True)


def look_at_the_walls():
    steel = 0.0
    content = 0.0
    for each in components():
        if each["word"] == "PIPE":
            (ax, ay, az, bore), (bx, by, bz, _) = each["ends"]
            length = math.dist((ax, ay, az), (bx, by, bz)) / 1000
            outside, wall = OUTSIDE[bore] / 1000, SCHEDULE_40[bore] / 1000
            steel += math.pi * (outside - wall) * wall * length * 7850
            content += math.pi / 4 * (outside - 2 * wall) ** 2 * length
    rows = measure("--by", "component", "--schedule", "40", "pump.dat")
    pipes = next(row for row in rows if row["group"] == "PIPE")
    expect("steel of all pipes", float(pipes["weight_kg"]), steel, 1e-6)
    expect("content of all pipes", float(pipes["content_m3"]), content, 1e-6)
    expect("pipes without a wall", pipes["without_wall"], "0")
    valves = next(row for row in rows if row["group"] == "VALVE")
    expect("steel of valves", float(valves["weight_kg"]), 0.0)
    # But for the lines along their middles.
    kinds = {row["group"]: int(row["count"]) for row in
             measure("--by", "component,kind", "--sums", "pump.dat") if row["level"] == "subtotal"}
    solids = sum(count for group, count in kinds.items()
                 if group.startswith("VALVE, ") and group != "VALVE, segment")
    expect("valves without a wall", int(valves["without_wall"]), solids)
    total = next(row for row in rows if row["level"] == "total")
    for name in ("weight_kg", "content_m3", "count", "volume_m3"):
        expect(f"sum of {name}", float(total[name]),
               sum(float(row[name]) for row in rows if row["level"] == "subtotal"), 1e-9)


# ------------------------------------------------ the workbook, by zip and XML alone

SHEET = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"


def sheets(name):
    """The cells of each sheet by its name: text or number."""
    with zipfile.ZipFile(name) as book:
        expect("damaged part of the workbook", book.testzip(), None)
        strings = []
        if "xl/sharedStrings.xml" in book.namelist():
            strings = ["".join(t.text or "" for t in each.iter(SHEET + "t")) for each in
                       ElementTree.fromstring(book.read("xl/sharedStrings.xml"))]
        names = [each.get("name") for each in
                 ElementTree.fromstring(book.read("xl/workbook.xml")).iter(SHEET + "sheet")]
        found = {}
        for number, title in enumerate(names, 1):
            rows = []
            root = ElementTree.fromstring(book.read(f"xl/worksheets/sheet{number}.xml"))
            for row in root.iter(SHEET + "row"):
                cells = {}
                for cell in row.iter(SHEET + "c"):
                    column = "".join(c for c in cell.get("r") if c.isalpha())
                    expect("formula", cell.find(SHEET + "f"), None)
                    if cell.get("t") == "inlineStr":
                        cells[column] = "".join(t.text or "" for t in cell.iter(SHEET + "t"))
                        continue
                    value = cell.find(SHEET + "v").text
                    cells[column] = strings[int(value)] if cell.get("t") == "s" else float(value)
                rows.append(cells)
            found[title] = rows
        return found


def bold_lines(name, number):
    """The numbers of the lines of a sheet all of whose cells are bold."""
    with zipfile.ZipFile(name) as book:
        styles = ElementTree.fromstring(book.read("xl/styles.xml"))
        bold = [font.find(SHEET + "b") is not None for font in styles.find(SHEET + "fonts")]
        formats = [bold[int(each.get("fontId"))] for each in styles.find(SHEET + "cellXfs")]
        root = ElementTree.fromstring(book.read(f"xl/worksheets/sheet{number}.xml"))
        return [int(row.get("r")) for row in root.iter(SHEET + "row")
                if all(formats[int(cell.get("s", "0"))] for cell in row.iter(SHEET + "c"))]


def look_at_the_workbook():
    if not pathlib.Path("bill.xlsx").exists():
        return
    found = sheets("bill.xlsx")
    expect("sheets", list(found), ["by item", "by header,size"])
    table = measure("--by", "item", "--schedule", "40", "--insulation", "50", "pump.dat")
    letters = [chr(ord("A") + i) for i in range(len(table[0]))]
    rows = found["by item"]
    expect("titles", [rows[0].get(letter) for letter in letters], list(table[0]))
    expect("lines", len(rows), len(table) + 1)
    for row, line in zip(rows[1:], table):
        for letter, (name, text) in zip(letters, line.items()):
            cell = row.get(letter, "")
            if isinstance(cell, float):
                expect(f"{name} of {line['group']}", cell, float(text), 1e-14)
            else:
                expect(f"{name} of {line['group']}", cell, text)
    for letter in letters[5:]:
        expect("numbers are numbers", {type(row[letter]) for row in rows[1:]}, {float})
    # The titles, the sums and the total.
    lines = measure("--by", "header,size", "--schedule", "40", "--insulation", "50", "pump.dat")
    expect("bold lines", bold_lines("bill.xlsx", 2),
           [1] + [i + 2 for i, line in enumerate(lines) if line["level"] != "row"])
    subprocess.run([VESK, "measure", "--units", "imperial", "--xlsx", "feet.xlsx", "pump.dat"],
                   check=True, stderr=subprocess.DEVNULL)
    feet = measure("--units", "imperial", "pump.dat")
    titles = sheets("feet.xlsx")["take-off"][0]
    expect("titles in feet", [titles.get(letter) for letter in letters], list(feet[0]))
    time.sleep(2.1)  # the clock of a zip file goes by two seconds
    arguments = ["--by", "item", "--by", "header,size", "--schedule", "40", "--insulation", "50"]
    subprocess.run([VESK, "measure", *arguments, "--xlsx", "again.xlsx", "pump.dat"], check=True,
                   stderr=subprocess.DEVNULL)
    expect("the same bytes", pathlib.Path("again.xlsx").read_bytes(),
           pathlib.Path("bill.xlsx").read_bytes())
    subprocess.run([VESK, "measure", "--by", "kind", "--sums", "--xlsx", "sums.xlsx", "pump.dat"],
                   check=True, stderr=subprocess.DEVNULL)
    levels = [row["A"] for row in sheets("sums.xlsx")["by kind"]]
    kinds = len({row["kind"] for row in measure("pump.dat") if row["level"] == "row"})
    expect("sums and the total", levels, ["level"] + ["subtotal"] * kinds + ["total"])
    refused = subprocess.run([VESK, "measure", "--xlsx", "again.xlsx", "pump.dat"],
                             stderr=subprocess.DEVNULL).returncode
    expect("code for a workbook that is there", refused, 4)
    half = subprocess.run([VESK, "measure", "--xlsx", "half.xlsx", "pump.dat", "none.dat"],
                          stderr=subprocess.DEVNULL).returncode
    expect("code for a file that is not there", half, 3)
    expect("a workbook of half a plant", pathlib.Path("half.xlsx").exists(), False)


def look_at_odd_workbooks():
    if not pathlib.Path("bill.xlsx").exists():
        return
    pathlib.Path("odd.dat").write_text("=1+1    01001    00c 0 0 0,0 0 1000,100\n")
    column = "a-name-of-a-column-that-is-longer-than-a-sheet's"
    row = f"f1,f2,first,last,{column},text\n=1+1,01,1,1,=2+2,"
    pathlib.Path("odd.attributes.csv").write_text(row + "short\n")
    subprocess.run([VESK, "measure", "--by", "header", "--by", "header", "--by", column, "--by",
                    column, "--xlsx", "odd.xlsx", "odd.dat"], check=True)
    found = sheets("odd.xlsx")
    expect("sheets", list(found), ["by header", "by header 2", ("by " + column)[:31],
                                   ("by " + column)[:29] + " 2"])
    expect("a header like a formula", found["by header"][1]["C"], "=1+1 01")
    expect("a value like a formula", found[("by " + column)[:31]][1]["C"], "=2+2")
    pathlib.Path("odd.attributes.csv").write_text(row + "x" * 32768 + "\n")
    long = subprocess.run([VESK, "measure", "--by", "text", "--xlsx", "long.xlsx", "odd.dat"],
                          stderr=subprocess.PIPE, text=True)
    expect("code for a text that no cell holds", long.returncode, 4)
    expect("what is said of it", "exceeds" in long.stderr, True)
    expect("a workbook without it", pathlib.Path("long.xlsx").exists(), False)


# ------------------------------------------------ twisted reducers and warped faces

def gauss(count):
    """Places and weights between 0 and 1."""
    rule = []
    for i in range(1, count + 1):
        x = math.cos(math.pi * (i - 0.25) / (count + 0.5))
        for _ in range(100):
            p0, p1 = 1.0, x
            for k in range(2, count + 1):
                p0, p1 = p1, ((2 * k - 1) * x * p1 - (k - 1) * p0) / k
            slope = count * (x * p1 - p0) / (x * x - 1)
            step = p1 / slope
            x -= step
            if abs(step) < 1e-16:
                break
        rule.append(((x + 1) / 2, 1 / ((1 - x * x) * slope * slope)))
    return rule


RULE = gauss(12)
CELLS = 4


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def patch(a, b, c, d):
    """Area of the bilinear face, and a third of the flow of (x, y, z) through it."""
    areas, flows = [], []
    for i in range(CELLS):
        for j in range(CELLS):
            for x, wx in RULE:
                u = (i + x) / CELLS
                for y, wy in RULE:
                    v = (j + y) / CELLS
                    at = [(1 - u) * (1 - v) * a[k] + u * (1 - v) * b[k] + u * v * c[k] +
                          (1 - u) * v * d[k] for k in range(3)]
                    n = cross([(1 - v) * (b[k] - a[k]) + v * (c[k] - d[k]) for k in range(3)],
                              [(1 - u) * (d[k] - a[k]) + u * (c[k] - b[k]) for k in range(3)])
                    weight = wx * wy / CELLS / CELLS
                    areas.append(weight * math.sqrt(sum(each * each for each in n)))
                    flows.append(weight * sum(p * q for p, q in zip(at, n)) / 3)
    return math.fsum(areas), math.fsum(flows)


FACES = [(0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (1, 3, 7, 5), (3, 2, 6, 7), (2, 0, 4, 6)]


def text(point):
    return " ".join(f"{each:.3f}" for each in point)


def look_at_twisted_reducers():
    chance = random.Random(7)
    records, wanted = [], {}
    for number in range(12):
        turn, height = chance.uniform(-1.0, 1.0), chance.uniform(200, 900)
        corners = []
        for k in range(8):
            x = chance.uniform(150, 250) * (1 if k & 1 else -1)
            y = chance.uniform(100, 300) * (1 if k & 2 else -1)
            angle = turn if k > 3 else 0.0
            z = (height if k > 3 else 0.0) + chance.uniform(-40, 40)
            corners.append([round(each, 3) for each in (
                x * math.cos(angle) - y * math.sin(angle),
                x * math.sin(angle) + y * math.cos(angle), z)])
        if number % 3 == 2:  # inside out
            corners = corners[4:] + corners[:4]
        name = f"R-{number}"
        vectors = [[p - q for p, q in zip(corner, corners[0])] for corner in corners[1:]]
        tokens = ",".join([text(corners[0])] + [text(vector) for vector in vectors])
        records.append(f"{name:<8}01001    00r {tokens}")
        parts = [patch(*(corners[i] for i in face)) for face in FACES]
        wanted[name + " 01"] = (sum(p[0] for p in parts) * 1e-6,
                                abs(sum(p[1] for p in parts)) * 1e-9)
    rows = measure("--by", "header", "--sums", "-", text="\n".join(records) + "\n")
    groups = {row["group"]: row for row in rows if row["level"] == "subtotal"}
    expect("reducers", sorted(groups), sorted(wanted))
    for name, (surface, volume) in wanted.items():
        if name in groups:
            expect(f"surface of {name}", float(groups[name]["surface_m2"]), surface, 1e-9)
            expect(f"volume of {name}", float(groups[name]["volume_m3"]), volume, 1e-9)


look_at_the_bill()
look_at_the_walls()
look_at_the_workbook()
look_at_odd_workbooks()
look_at_twisted_reducers()
print(*faults, sep="\n")
print(f"{len(faults)} faults")
sys.exit(1 if faults else 0)
