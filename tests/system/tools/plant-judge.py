#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The numbers of measure, list, convert, diff, extract, check --joints and export, by arithmetic of its own.

    plant-judge.py VESK [FIRST-SEED [PLANTS]]

Makes plants of cylinders, cones, bends, boxes and segments from seeds, in tokens, and reckons from the
numbers that it has written: volumes, lengths and surfaces by their formulas, distances point to solid,
turned points by matrices, differences from the edits that it made, gaps of joints that it left.
"""
import csv
import io
import json
import math
import pathlib
import random
import struct
import subprocess
import sys
import tempfile

from vectors import add, cross, dot, sub, times, unit

VESK = pathlib.Path(sys.argv[1]).resolve()
FIRST_SEED = int(sys.argv[2]) if len(sys.argv) > 2 else 1
PLANTS = int(sys.argv[3]) if len(sys.argv) > 3 else 3

faults = []
counts = {}


def expect(what, got, wanted, relative=0.0):
    counts[what.split(":")[1].split()[0]] = counts.get(what.split(":")[1].split()[0], 0) + 1
    good = abs(got - wanted) <= relative * abs(wanted) + 1e-9 if relative else got == wanted
    if not good:
        faults.append(f"{what}: {got!r}, not {wanted!r}"[:400])


def text_of(number, decimals):
    text = f"{number:.{decimals}f}".rstrip("0").rstrip(".")
    return "0" if text == "-0" else text


def point(p):
    return " ".join(text_of(x, 4) for x in p)


def vector(v):
    return " ".join(text_of(x, 6) for x in v)


class Element:
    """One record; `at` is its first point, `vectors` and `sizes` as they stand behind it."""

    def __init__(self, kind, f1, counter, at, vectors, sizes):
        self.kind, self.f1, self.counter = kind, f1, counter
        self.at = tuple(round(x, 4) for x in at)
        self.vectors = [tuple(round(x, 6) for x in v) for v in vectors]
        self.sizes = [round(s, 6) for s in sizes]

    def copy(self):
        return Element(self.kind, self.f1, self.counter, self.at, self.vectors, self.sizes)

    def line(self):
        digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
        f3 = digits[self.counter // 1296] + digits[self.counter // 36 % 36] + digits[self.counter % 36]
        head = f"{self.f1:8}01{f3}    00"
        if self.kind == "segment":
            return f"{head}l pt {point(self.at)},pt {vector(self.vectors[0])}\n"
        if self.kind == "box":
            return head + "b " + ",".join([vector(self.vectors[0]), point(self.at), vector(self.vectors[1]),
                                           vector(self.vectors[2])]) + "\n"
        key = {"cylinder": "c ", "cone": "n ", "torus": "t "}[self.kind]
        numbers = [point(self.at)] + [vector(v) for v in self.vectors] + [text_of(s, 6) for s in self.sizes]
        return head + key + ",".join(numbers) + "\n"

    # The formulas.

    def angle(self):
        return math.atan2(math.hypot(*cross(*self.vectors)), dot(*self.vectors))

    def bend_radius(self):
        return (math.hypot(*self.vectors[0]) + math.hypot(*self.vectors[1])) / 2

    def length(self):
        if self.kind == "torus":
            return self.bend_radius() * self.angle()
        return max(math.hypot(*v) for v in self.vectors)

    def volume(self):
        if self.kind == "cylinder":
            return math.pi / 4 * self.sizes[0] ** 2 * self.length()
        if self.kind == "cone":
            a, b = self.sizes
            return math.pi / 12 * (a * a + a * b + b * b) * self.length()
        if self.kind == "torus":
            return math.pi / 4 * self.sizes[0] ** 2 * self.length()
        if self.kind == "box":
            return abs(dot(self.vectors[0], cross(self.vectors[1], self.vectors[2])))
        return 0.0

    def surface(self):
        if self.kind in ("cylinder", "torus"):
            return math.pi * self.sizes[0] * self.length()
        if self.kind == "cone":
            a, b = self.sizes
            return math.pi / 2 * (a + b) * math.hypot(self.length(), (a - b) / 2)
        if self.kind == "box":
            a, b, c = self.vectors
            return 2 * sum(math.hypot(*cross(x, y)) for x, y in ((a, b), (b, c), (c, a)))
        return 0.0

    def corners(self):
        a, b, c = self.vectors
        return [add(add(add(self.at, a, i), b, j), c, k) for i in (0, 1) for j in (0, 1) for k in (0, 1)]

    def arc(self, share):
        """A point of the bend's centre line, and the direction there."""
        u = unit(self.vectors[0])
        normal = unit(cross(*self.vectors))
        v = cross(normal, u)
        turn = self.angle() * share
        out = add(times(u, math.cos(turn)), v, math.sin(turn))
        return add(self.at, out, self.bend_radius()), cross(normal, out)

    def box(self):
        """Smallest and largest x, y, z."""
        def disc(centre, axis, radius):
            reach = [radius * math.sqrt(max(0.0, 1 - n * n)) for n in unit(axis)]
            return [tuple(c - r for c, r in zip(centre, reach)), tuple(c + r for c, r in zip(centre, reach))]
        if self.kind == "segment":
            some = [self.at, add(self.at, self.vectors[0])]
        elif self.kind == "box":
            some = self.corners()
        elif self.kind == "torus":
            # Between two of the discs it reaches no further than by 1e-6 of the radius.
            some = [p for i in range(501) for p in disc(*self.arc(i / 500), self.sizes[0] / 2)]
        else:
            radii = [s / 2 for s in (self.sizes * 2)[:2]]
            some = [p for centre, r in zip((self.at, add(self.at, self.vectors[0])), radii)
                    for p in disc(centre, self.vectors[0], r)]
        return tuple(min(p[i] for p in some) for i in range(3)), tuple(max(p[i] for p in some) for i in range(3))

    def distance(self, p):
        """From the point to the solid; 0 inside."""
        if self.kind == "box":
            # Right-angled: along each edge the way beyond its ends.
            rests = []
            for edge in self.vectors:
                along, length = dot(sub(p, self.at), unit(edge)), math.hypot(*edge)
                rests.append(max(0.0, -along, along - length))
            return math.hypot(*rests)
        if self.kind == "torus":
            def to_disc(share):
                centre, way = self.arc(share)
                along = dot(sub(p, centre), way)
                beside = math.hypot(*add(sub(p, centre), way, -along))
                return math.hypot(along, max(0.0, beside - self.sizes[0] / 2))
            best, step = min(range(41), key=lambda i: to_disc(i / 40)) / 40, 1 / 40
            for _ in range(4):
                step /= 5
                best = min((min(1.0, max(0.0, best + i * step)) for i in range(-5, 6)), key=to_disc)
            return to_disc(best)
        axis = unit(self.vectors[0])
        along = dot(sub(p, self.at), axis)
        beside = math.hypot(*add(sub(p, self.at), axis, -along))
        radii = [s / 2 for s in (self.sizes * 2)[:2]] or [0.0, 0.0]
        return flat_distance((along, beside), self.length(), *radii)


def flat_distance(p, length, r1, r2):
    """From (along, beside) to the trapezium (0,0) (length,0) (length,r2) (0,r1)."""
    x, y = p
    if 0 <= x <= length and y <= r1 + (r2 - r1) * x / length:
        return 0.0
    best = math.inf
    for a, b in (((0, 0), (0, r1)), ((0, r1), (length, r2)), ((length, r2), (length, 0)), ((0, 0), (length, 0))):
        way = (b[0] - a[0], b[1] - a[1])
        size = way[0] ** 2 + way[1] ** 2
        s = 0.0 if size == 0 else min(1.0, max(0.0, ((x - a[0]) * way[0] + (y - a[1]) * way[1]) / size))
        best = min(best, math.hypot(x - a[0] - s * way[0], y - a[1] - s * way[1]))
    return best


KINDS = ("cylinder", "cone", "torus", "box", "segment")


def make_plant(some, size):
    def direction():
        if some.random() < 0.4:
            axis = [0.0, 0.0, 0.0]
            axis[some.randrange(3)] = some.choice((1.0, -1.0))
            return tuple(axis)
        return unit(tuple(some.gauss(0, 1) for _ in range(3)))

    plant = []
    for i in range(size):
        kind = KINDS[i % len(KINDS)]
        at = tuple(some.uniform(-5000, 5000) for _ in range(3))
        way = direction()
        side = unit(cross(way, some.choice(((0.123, 0.456, 0.789), (way[1], way[2], way[0])))))
        length, width = some.uniform(50, 3000), some.uniform(20, 600)
        vectors, sizes = [times(way, length)], []
        if kind == "cylinder":
            sizes = [width]
        elif kind == "cone":
            sizes = [width, some.uniform(10, 600)]
        elif kind == "torus":
            radius, turn = width * some.uniform(0.6, 3), math.radians(some.uniform(5, 175))
            vectors = [times(way, radius), add(times(way, radius * math.cos(turn)), side, radius * math.sin(turn))]
            sizes = [width]
        elif kind == "box":
            vectors += [times(side, width), times(cross(way, side), some.uniform(20, 600))]
        plant.append(Element(kind, f"L-{some.randrange(6)}", i + 1, at, vectors, sizes))
    return plant


def write(name, plant):
    (folder / name).write_text("".join(each.line() for each in plant))


def run(*arguments, code=0):
    done = subprocess.run([VESK, *arguments], cwd=folder, text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if done.returncode != code:
        faults.append(f"{' '.join(arguments)}: exit code {done.returncode}, not {code}: {done.stderr[:300]}")
    return done.stdout


def lines_listed(*selection):
    done = subprocess.run([VESK, "list", "--json", "plant.dat", *selection], cwd=folder, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    lines = sorted(e["line"] for e in json.loads(done.stdout or '{"elements": []}')["elements"])
    expect("list:selection " + done.stderr, done.returncode, 0 if lines else 1)
    return lines


def look_at_measure(seed, plant):
    rows = list(csv.DictReader(io.StringIO(run("measure", "--csv", "--density", "7850", "plant.dat"))))
    for kind in KINDS:
        mine = [e for e in plant if e.kind == kind]
        theirs = [row for row in rows if row["kind"] == {"torus": "bend"}.get(kind, kind) or row["kind"] == kind]
        total = lambda column: sum(float(row[column]) for row in theirs)
        of = f"seed {seed}:measure {kind}"
        expect(of + " count", total("count"), len(mine))
        expect(of + " volume", total("volume_m3"), sum(e.volume() for e in mine) / 1e9, 1e-7)
        expect(of + " weight", total("weight_kg"), sum(e.volume() for e in mine) / 1e9 * 7850, 1e-7)
        expect(of + " surface", total("surface_m2"), sum(e.surface() for e in mine) / 1e6, 1e-7)
        column = "lines_m" if kind == "segment" else "length_m"
        expect(of + " length", total(column), sum(e.length() for e in mine) / 1e3, 1e-7)
    halves = [[float(row["volume_m3"]) for row in csv.DictReader(io.StringIO(run(
        "measure", "--csv", "--unit", unit_mm, "plant.dat")))] for unit_mm in ("1", "25.4")]
    expect(f"seed {seed}:measure in inches", sum(halves[1]), sum(halves[0]) * 25.4 ** 3, 1e-9)


def look_at_info(seed, plant):
    info = json.loads(run("info", "--json", "plant.dat"))["files"][0]
    boxes = [e.box() for e in plant]
    for corner, pick in (("min", min), ("max", max)):
        for i in range(3):
            wanted = pick(b[0 if corner == "min" else 1][i] for b in boxes)
            expect(f"seed {seed}:info {corner} {i}", abs(info["box"][corner][i] - wanted) < 0.01, True)
    expect(f"seed {seed}:info volume", info["volume"], sum(e.volume() for e in plant), 1e-7)


def look_at_places(seed, plant, some):
    for which in some.sample(range(len(plant)), 10):
        p = tuple(round(some.uniform(-5000, 5000), 1) for _ in range(3))
        distances = [e.distance(p) for e in plant]
        # Just reaches one of them, or just not.
        radius = round(distances[which] + some.choice((0.2, -0.2)), 2)
        listed = lines_listed("--near", ",".join(map(str, (*p, radius))))
        for i, distance in enumerate(distances, 1):
            if abs(distance - radius) > 0.1 and radius > 0:
                expect(f"seed {seed}:near {p} {radius} line {i} {plant[i - 1].kind}", i in listed, distance < radius)
    for which in some.sample(range(len(plant)), 10):
        # Behind one of them, along x, y or z: just in it, or just beyond it.
        (smallest, largest), i, beyond = plant[which].box(), some.randrange(3), some.choice((0.2, -0.2))
        low = tuple(round(x - 1, 2) for x in smallest)
        high = [round(x + 1, 2) for x in largest]
        low = low[:i] + (round(largest[i] + beyond, 2),) + low[i + 1:]
        high[i] = round(largest[i] + some.uniform(1, 2000), 2)
        high = tuple(high)
        listed = lines_listed("--bbox", ",".join(map(str, low + high)))
        for i, each in enumerate(plant, 1):
            touches = beyond < 0 if each is plant[which] else touches_box(each, low, high)
            if touches is not None:
                expect(f"seed {seed}:bbox {low} {high} line {i} {each.kind}", i in listed, touches)


def touches_box(each, low, high):
    """Whether the element touches the box; None where points in it and distances from it don't tell."""
    smallest, largest = each.box()
    if any(smallest[i] > high[i] + 0.01 or largest[i] < low[i] - 0.01 for i in range(3)):
        return False
    # The point of the box that is nearest to the solid, by going downhill from many.
    inside = lambda p: all(l <= x <= h for x, l, h in zip(p, low, high))
    middle = [each.arc(i / 50)[0] if each.kind == "torus" else
              add(add(each.at, each.vectors[0], i / 50), times(add(each.vectors[1], each.vectors[2]), 0.5)
                  if each.kind == "box" else (0, 0, 0)) for i in range(51)]
    if any(map(inside, middle)):
        return True
    # The solid lies within this of the points of its middle.
    around = {"box": lambda: math.hypot(*(math.hypot(*v) for v in each.vectors[1:])) / 2,
              "segment": lambda: 0.0}.get(each.kind, lambda: max(each.sizes) / 2)()
    apart = min(math.hypot(*(max(l - x, 0.0, x - h) for x, l, h in zip(p, low, high))) for p in middle)
    if apart > around + each.length() / 100 + 0.01:
        return False
    nearest = min((tuple(min(max(x, l), h) for x, l, h in zip(p, low, high)) for p in middle), key=each.distance)
    return True if each.distance(nearest) < 0.01 and each.kind != "segment" else None


def look_at_convert(seed, plant, some):
    axis, degrees = some.choice("xyz"), round(some.uniform(-360, 360), 2)
    factor, shift = round(some.uniform(0.2, 5), 3), tuple(round(some.uniform(-9999, 9999), 1) for _ in range(3))
    run("convert", "plant.dat", "other.dat", "-f", "--scale", str(factor), "--rotate", f"{axis},{degrees}",
        "--move=" + ",".join(map(str, shift)))
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    matrix = {"x": ((1, 0, 0), (0, c, -s), (0, s, c)), "y": ((c, 0, s), (0, 1, 0), (-s, 0, c)),
              "z": ((c, -s, 0), (s, c, 0), (0, 0, 1))}[axis]
    turned = lambda v: tuple(dot(row, v) * factor for row in matrix)
    listed = json.loads(run("list", "--json", "other.dat"))["elements"]
    expect(f"seed {seed}:convert count", len(listed), len(plant))
    names = {"cylinder": ("origin", ["axis"], ["diameter"]), "cone": ("origin", ["axis"], ["diameter 1", "diameter 2"]),
             "torus": ("centre", ["start", "end"], ["diameter"]), "box": ("origin", ["edge 1", "edge 2", "edge 3"], []),
             "segment": ("vertex 0", [], [])}
    for each, theirs in zip(plant, listed):
        values, (first, vectors, sizes) = theirs["values"], names[each.kind]
        of = f"seed {seed}:convert {axis},{degrees} {each.kind} line {theirs['line']}"
        expect(of + " place", math.dist(values[first], add(turned(each.at), shift)) < 0.001, True)
        for name, v in zip(vectors, each.vectors):
            expect(of + " " + name, math.dist(values[name], turned(v)) < 0.0001, True)
        for name, size in zip(sizes, each.sizes):
            expect(of + " " + name, abs(values[name] - size * factor) < 0.0001, True)
        if each.kind == "segment":
            end = add(turned(add(each.at, each.vectors[0])), shift)
            expect(of + " end", math.dist(values["vertex 1"], end) < 0.001, True)


def look_at_diff(seed, plant, some):
    expect(f"seed {seed}:diff with itself", json.loads(run("diff", "--json", "plant.dat", "plant.dat"))["differences"], [])
    edited = [e.copy() for e in plant]
    chosen = some.sample(range(len(plant)), 9)
    wanted = {}
    for i in chosen[:3]:
        edited[i].at = add(edited[i].at, (0.0, 12.5, 0.0))
        wanted[i + 1] = "moved"
    for i in chosen[3:6]:
        if edited[i].sizes:
            edited[i].sizes[0] = round(edited[i].sizes[0] + 1.5, 6)
            wanted[i + 1] = "changed"
    gone = set(chosen[6:])
    for i in gone:
        wanted[i + 1] = "removed"
    kept = [e for i, e in enumerate(edited) if i not in gone]
    kept.append(Element("cylinder", "NEW", 1, (90000.0, 0.0, 0.0), [(500.0, 0.0, 0.0)], [77.0]))
    write("other.dat", kept)
    found = json.loads(run("diff", "--json", "plant.dat", "other.dat", code=1))["differences"]
    got = {d["lineA"]: d["change"] for d in found if d["lineA"] is not None}
    expect(f"seed {seed}:diff changes", got, wanted)
    expect(f"seed {seed}:diff added", [d["lineB"] for d in found if d["change"] == "added"], [len(kept)])
    for d in found:
        if d["change"] == "moved":
            expect(f"seed {seed}:diff moved by", math.dist(d["movedBy"], (0.0, 12.5, 0.0)) < 0.001, True)


def look_at_extract(seed, plant, some):
    whole = [e.line() for e in plant]
    p = [round(some.uniform(-4000, 4000)) for _ in range(3)] + [round(some.uniform(1000, 5000))]
    for choice in (["--only", ",".join(some.sample(KINDS, 2)).replace("torus", "bend")],
                   ["--header", f"L-{some.randrange(6)}"], ["--lines", f"{some.randint(1, 20)}-{some.randint(30, 80)}"],
                   ["--near", ",".join(map(str, p))]):
        parts = []
        for words in (choice, ["--not"] + choice):
            done = subprocess.run([VESK, "extract", "plant.dat", "-f", "-o", "part.dat", *words], cwd=folder, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            parts += (folder / "part.dat").read_text().splitlines(True) if done.returncode == 0 else []
        expect(f"seed {seed}:extract {choice}", sorted(parts), sorted(whole))


def look_at_joints(seed, some):
    """Pairs of pipes in a row, far from each other: the second begins so far off along, beside or wider."""
    text, wanted = "", {}
    for i in range(40):
        at = (1000.0 * i, 0.0, 500.0 * (i % 7))
        along, beside, wider = some.choice(((0, 0, 0), (0.05, 0, 0), (some.uniform(0.2, 9), 0, 0),
                                            (0, some.uniform(0.2, 5), 0), (0, 0, some.uniform(5, 30))))
        first = Element("cylinder", "J", 2 * i + 1, at, [(0.0, 400.0, 0.0)], [100.0])
        second = Element("cylinder", "J", 2 * i + 2, add(at, (beside, 400.0 + along, 0.0)), [(0.0, 400.0, 0.0)],
                         [100.0 + wider])
        text += first.line() + second.line()
        code = "V201" if along > 0.1 else "V202" if beside > 0.1 else "V203" if wider else None
        if code:
            wanted[2 * i + 1] = code
    (folder / "joints.dat").write_text(text)
    report = json.loads(run("check", "--json", "--joints", "--only", "V201,V202,V203", "joints.dat"))
    got = {}
    for finding in report["files"][0]["findings"]:
        got[(finding["line"] - 1) // 2 * 2 + 1] = finding["code"]
    expect(f"seed {seed}:joints", got, wanted)


def look_at_export(seed, plant):
    run("export", "plant.dat", "-f", "-o", "plant.stl", "--tolerance", "0.2")
    data = (folder / "plant.stl").read_bytes()
    total = 0.0
    for _, _, _, *p, _ in struct.iter_unpack("<12fH", data[84:]):
        total += dot(p[0:3], cross(p[3:6], p[6:9])) / 6
    exact = sum(e.volume() for e in plant)
    # Chords lie 0.2 inside of the surface at most.
    inside = sum(e.surface() for e in plant) * 0.2
    expect(f"seed {seed}:export volume", exact - inside < total < exact + 0.001 * inside, True)


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    for seed in range(FIRST_SEED, FIRST_SEED + PLANTS):
        chance = random.Random(seed)
        plant = make_plant(chance, 100)
        write("plant.dat", plant)
        look_at_measure(seed, plant)
        look_at_info(seed, plant)
        look_at_places(seed, plant, chance)
        look_at_convert(seed, plant, chance)
        look_at_diff(seed, plant, chance)
        look_at_extract(seed, plant, chance)
        look_at_joints(seed, chance)
        look_at_export(seed, plant)

print("\n".join(faults[:40]))
if len(faults) > 40:
    print(f"and so {len(faults) - 40} more")
print(", ".join(f"{count} of {what}" for what, count in counts.items()))
sys.exit(1 if faults else 0)
