#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Where the components of piping files stand, by a reader and arithmetic of its own.

    piping-judge.py VESK SAMPLE [FIRST-SEED [FILES]]

Reads the sample plant and files that it makes from seeds: bores in each unit, flanges without marks, ends
in either order, olets, Y-pieces, eccentric reducers with either flat, bends in degrees and hundredths,
co-ordinates in four units. Every end, diameter, arc and face of a flange is compared with the elements
that `vesk import` and `vesk list --json` give for the line of the component.
"""
import json
import math
import pathlib
import random
import re
import subprocess
import sys
import tempfile

from vectors import add, cross, dot, sub, times, unit

VESK, SAMPLE = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
FIRST_SEED = int(sys.argv[3]) if len(sys.argv) > 3 else 1
FILES = int(sys.argv[4]) if len(sys.argv) > 4 else 40

# Outside diameters of ASME B36.10 in mm, by inches; DN beside them.
OUTSIDE = {0.5: 21.3, 0.75: 26.7, 1: 33.4, 1.5: 48.3, 2: 60.3, 2.5: 73.0, 3: 88.9, 4: 114.3, 6: 168.3,
           8: 219.1, 10: 273.0, 12: 323.8, 14: 355.6, 16: 406.4}
NOMINAL = {0.5: 15, 0.75: 20, 1: 25, 1.5: 40, 2: 50, 2.5: 65, 3: 80, 4: 100, 6: 150, 8: 200, 10: 250,
           12: 300, 14: 350, 16: 400}
NEAR = 0.01  # mm; points keep four decimals, vectors six

faults = []
checked = {}


# ---------------------------------------------------------------- vectors

def near(a, b, limit=NEAR):
    return math.dist(a, b) <= limit


# ---------------------------------------------------------------- reading a piping file

def fraction(text):
    """12, 1.5, 3/4, 1.1/2, 1-1/2 as a number."""
    found = re.fullmatch(r"(?:(\d+)[.\- ])?(\d+)/(\d+)", text)
    if found:
        return float(found[1] or 0) + float(found[2]) / float(found[3])
    return float(text)


def coordinate(text, unit_word):
    """In millimetres."""
    feet = re.fullmatch(r"(-?)(\d+)'-?(.*?)\"?", text)
    if feet:
        inches = 12 * float(feet[2]) + (fraction(feet[3]) if feet[3] else 0.0)
        return (-25.4 if feet[1] else 25.4) * inches
    return float(text) * {"MM": 1.0, "INCH": 25.4, "FEET": 304.8, "MM-HUNDREDTHS": 0.01}[unit_word]


def bore_inches(text, meaning):
    """The size in inches; meaning is INCH or one of dn, times, outside."""
    number = fraction(text.rstrip('"'))
    if meaning == "INCH":
        return number
    table = {"dn": NOMINAL, "times": {k: 25.4 * k for k in OUTSIDE}, "outside": OUTSIDE}[meaning]
    return min(table, key=lambda k: abs(table[k] - number))


class Component:
    def __init__(self, word, line):
        self.word, self.line = word, line
        self.ends, self.branches, self.centre, self.place = [], [], None, None
        self.skey = ""

    def points(self):
        return self.ends + self.branches


def read_piping(text, meaning):
    """Components with their points: (place in mm, size in inches or None, end code)."""
    units = {"UNITS-CO-ORDS": "MM", "UNITS-BORE": "MM"}
    components = []
    for number, line in enumerate(text.splitlines(), 1):
        words = line.split()
        if not words:
            continue
        word = words[0].upper()
        if word in units:
            units[word] = words[1].upper()
        elif not line[0].isspace():
            components.append(Component(word, number))
        elif re.fullmatch(r"END-POINT|BRANCH\d-POINT|CENTRE-POINT|CO-ORDS", word):
            place = tuple(coordinate(w, units["UNITS-CO-ORDS"]) for w in words[1:4])
            size = code = None
            if len(words) > 4:
                kept = "INCH" if units["UNITS-BORE"] == "INCH" else meaning
                number, code = re.fullmatch(r"(.*?)([A-Z]*)", words[4].upper()).groups()
                size = bore_inches(number, kept)
                code = words[5].upper() if len(words) > 5 else code
            each = components[-1]
            if word == "END-POINT":
                each.ends.append((place, size, code))
            elif word == "CENTRE-POINT":
                each.centre = place
            elif word == "CO-ORDS":
                each.place = place
            else:
                each.branches.append((place, size, code))
        elif word == "SKEY":
            components[-1].skey = words[1].upper()
    return components


PIPES = ("PIPE", "PIPE-FIXED")
WELDED = PIPES + ("ELBOW", "BEND", "TEE", "CROSS", "REDUCER-CONCENTRIC", "REDUCER-ECCENTRIC", "OLET", "CAP",
                  "WELD", "Y-PIECE-FITTING")
FACED = ("GASKET", "FLANGE", "FLANGE-BLIND", "BOLT", "END-CONNECTION-EQUIPMENT")


def face_of(flange, components):
    """Which end of the flange is its face: 0 or 1."""
    codes = [end[2] for end in flange.ends]
    for i, code in enumerate(codes):
        if code == "FL":
            return i
    for i, code in enumerate(codes):
        if code in ("BW", "SW", "SC", "PL"):
            return 1 - i
    for family, answer in ((FACED, 0), (WELDED, 1), (("VALVE", "INSTRUMENT", "FILTER"), 0)):
        for i, end in enumerate(flange.ends):
            for each in components:
                places = [p[0] for p in each.points()] + ([each.place] if each.place else [])
                if each is not flange and each.word in family and any(near(end[0], p) for p in places):
                    return i if answer == 0 else 1 - i
    return 0


# ---------------------------------------------------------------- what was drawn

class Body:
    """A cylinder or cone: two ends with their diameters."""

    def __init__(self, values):
        self.a = tuple(values["origin"])
        self.b = add(self.a, values["axis"])
        self.da = values.get("diameter", values.get("diameter 1"))
        self.db = values.get("diameter", values.get("diameter 2"))

    def joins(self, p, dp, q, dq):
        return any(near(a, p) and near(b, q) and abs(da - dp) < NEAR and abs(db - dq) < NEAR
                   for a, da, b, db in ((self.a, self.da, self.b, self.db), (self.b, self.db, self.a, self.da)))


class Drawn:
    def __init__(self, elements):
        of = lambda *kinds: [e["values"] for e in elements if e["kind"] in kinds]
        self.bodies = [Body(v) for v in of("cylinder", "cone")]
        self.bends = of("torus")
        self.wedges = of("reducer")
        self.points = [tuple(v["vertex 0"]) for v in of("point")]
        self.lines = [(tuple(v["vertex 0"]), tuple(v["vertex 1"])) for v in of("segment")]
        self.volume = sum(e["volume"] for e in elements)

    def along(self, p, q):
        """Coaxial bodies as (start, its diameter, end, its diameter) along the way from p to q, sorted."""
        axis = unit(sub(q, p))
        found = []
        for each in self.bodies:
            s, t = (dot(sub(x, p), axis) for x in (each.a, each.b))
            if not (near(add(p, axis, s), each.a) and near(add(p, axis, t), each.b)):
                continue
            found.append((s, each.da, t, each.db) if s < t else (t, each.db, s, each.da))
        return sorted(found)


# ---------------------------------------------------------------- comparing

class Judge:
    def __init__(self, name, text, meaning):
        self.name, self.text = name, text
        self.components = read_piping(text, meaning)

    def fault(self, each, what):
        faults.append(f"{self.name}:{each.line}: {each.word}: {what}")

    def run(self, folder):
        source = folder / "x.pcf"
        source.write_text(self.text)
        run = subprocess.run([VESK, "import", "-q", "-f", source.name, "-o", "x.dat"], cwd=folder, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if run.returncode != 0:
            faults.append(f"{self.name}: import gives {run.returncode}: {run.stdout}")
            return
        listed = subprocess.run([VESK, "list", "--json", "x.dat"], cwd=folder, text=True, check=True,
                                stdout=subprocess.PIPE).stdout
        by_line = {}
        for element in json.loads(listed)["elements"]:
            by_line.setdefault(int(element["attributes"]["line"]), []).append(element)
        for each in self.components:
            look = CHECKS.get(each.word)
            if look is None:
                continue
            checked[each.word] = checked.get(each.word, 0) + 1
            look(self, each, Drawn(by_line.get(each.line, [])))

    # One for each family of components.

    def straight(self, each, drawn):
        (p, size, _), (q, _, _) = each.ends
        outside = OUTSIDE[size]
        if len(drawn.bodies) != 1 or not drawn.bodies[0].joins(p, outside, q, outside):
            self.fault(each, f"no cylinder {outside} wide from {p} to {q}")
        self.centre_line(each, drawn, [(p, q)])

    def centre_line(self, each, drawn, pieces):
        for p, q in pieces:
            if not any((near(a, p) and near(b, q)) or (near(a, q) and near(b, p)) for a, b in drawn.lines):
                self.fault(each, f"no centre line from {p} to {q}")

    def bend(self, each, drawn):
        (p, size, _), (q, _, _) = each.ends
        outside, tangent = OUTSIDE[size], each.centre
        u, v = unit(sub(p, tangent)), unit(sub(q, tangent))
        if dot(u, v) < -0.9999:
            return self.half_turn(each, drawn, p, q, outside)
        leg = min(math.dist(p, tangent), math.dist(q, tangent))
        centre = add(tangent, add(u, v), leg / (1.0 + dot(u, v)))
        starts = [add(tangent, u, leg), add(tangent, v, leg)]
        bends = [t for t in drawn.bends
                 if near(t["centre"], centre) and abs(t["diameter"] - outside) < NEAR]
        ends = [{0: add(t["centre"], t["start"]), 1: add(t["centre"], t["end"])} for t in bends]
        if len(drawn.bends) != 1 or not any(
                near(e[i], starts[0]) and near(e[1 - i], starts[1]) for e in ends for i in (0, 1)):
            self.fault(each, f"no arc about {centre} from {starts[0]} to {starts[1]}, {outside} wide")
        for place, start in ((p, starts[0]), (q, starts[1])):
            if math.dist(place, start) > NEAR and not any(
                    b.joins(place, outside, start, outside) for b in drawn.bodies):
                self.fault(each, f"the straight rest from {start} to {place} is missing")

    def half_turn(self, each, drawn, p, q, outside):
        """In quarters about the middle, on the side that the pipes come from not."""
        axis, side = unit(sub(q, p)), self.axis_at(each)
        pipe = next(c for c in self.components if c.word in PIPES and any(near(e[0], p) for e in c.ends))
        far = max((e[0] for e in pipe.ends), key=lambda x: math.dist(x, p))
        out = unit(sub(p, far))
        top = add(each.centre, out, math.dist(p, q) / 2)
        ends = [add(t["centre"], t[k]) for t in drawn.bends for k in ("start", "end")]
        good = len(drawn.bends) == 2 and all(
            near(t["centre"], each.centre) and abs(t["diameter"] - outside) < NEAR for t in drawn.bends)
        if not good or abs(dot(axis, side)) > 1e-6 or any(
                sum(near(x, y) for x in ends) != n for y, n in ((p, 1), (q, 1), (top, 2))):
            self.fault(each, f"no half turn from {p} by {top} to {q}")

    def tee(self, each, drawn):
        (p, size, _), (q, other, _) = each.ends
        wanted = [(p, size, q, other)] + [(each.centre, b[1], b[0], b[1]) for b in each.branches]
        self.legs(each, drawn, wanted)

    def legs(self, each, drawn, wanted):
        for a, da, b, db in wanted:
            if not any(body.joins(a, OUTSIDE[da], b, OUTSIDE[db]) for body in drawn.bodies):
                self.fault(each, f"no leg from {a} to {b}, {OUTSIDE[da]} and {OUTSIDE[db]} wide")
        if len(drawn.bodies) != len(wanted):
            self.fault(each, f"{len(drawn.bodies)} bodies for {len(wanted)} legs")

    def y_piece(self, each, drawn):
        self.legs(each, drawn, [(each.centre, p[1], p[0], p[1]) for p in each.points()])

    def olet(self, each, drawn):
        start = each.ends[0][0] if len(each.ends) == 1 else each.centre
        (branch, size, _), = each.branches
        wanted = [(start, size, branch, size)]
        if len(each.ends) == 2 and not self.is_covered(each.ends[0][0], each.ends[1][0]):
            wanted.append((*each.ends[0][:2], *each.ends[1][:2]))
        self.legs(each, drawn, wanted)

    def is_covered(self, p, q):
        for pipe in self.components:
            if pipe.word in PIPES:
                a, b = pipe.ends[0][0], pipe.ends[1][0]
                length, axis = math.dist(a, b), unit(sub(b, a))
                on = [dot(sub(x, a), axis) for x in (p, q)]
                if all(-NEAR <= s <= length + NEAR and near(add(a, axis, s), x) for s, x in zip(on, (p, q))):
                    return True
        return False

    def cone(self, each, drawn):
        (p, size, _), (q, other, _) = each.ends
        if len(drawn.bodies) != 1 or not drawn.bodies[0].joins(p, OUTSIDE[size], q, OUTSIDE[other]):
            self.fault(each, f"no cone from {p}, {OUTSIDE[size]} wide, to {q}, {OUTSIDE[other]}")

    def eccentric(self, each, drawn):
        """Ruled between two circles that stand square to the pipes of the neighbours."""
        (p, size, _), (q, other, _) = each.ends
        axis = self.axis_at(each)
        radii = {0: OUTSIDE[size] / 2, 1: OUTSIDE[other] / 2}
        if axis is None or not drawn.wedges:
            return self.fault(each, "no neighbour, or no wedges")
        height = dot(sub(q, p), axis)
        shift = sub(sub(q, p), times(axis, height))
        corners = {0: set(), 1: set()}
        for wedge in drawn.wedges:
            first = tuple(wedge["corner 0"])
            for i in range(8):
                corner = first if i == 0 else add(first, wedge[f"corner {i}"])
                level = dot(sub(corner, p), axis)
                side = 0 if abs(level) < abs(level - height) else 1
                if min(abs(level), abs(level - height)) > NEAR:
                    return self.fault(each, f"corner {corner} on neither end")
                corners[side].add(tuple(round(x, 3) for x in corner))
        for side, middle in ((0, p), (1, q)):
            far = max(math.dist(c, middle) for c in corners[side])
            # The tolerance is a millimetre.
            if abs(far - radii[side]) > 1.0:
                self.fault(each, f"an end {2 * far:.2f} wide, not {2 * radii[side]:.2f}")
        # Flat on one side: both circles reach equally far against the shift.
        if abs(math.hypot(*shift) - abs(radii[0] - radii[1])) > NEAR:
            self.fault(each, "ends are not half of the difference apart")
        down = times(unit(shift), 1.0 if radii[0] > radii[1] else -1.0)
        reach = [max(dot(sub(c, p), down) for c in corners[side]) for side in (0, 1)]
        if abs(reach[0] - reach[1]) > 1.0:
            self.fault(each, f"its flat side rises from {reach[0]} to {reach[1]}")
        # Each section is a circle, its radius linear: pi h (r1^2 + r1 r2 + r2^2) / 3.
        exact = math.pi * abs(height) * (radii[0] ** 2 + radii[0] * radii[1] + radii[1] ** 2) / 3
        # One millimetre all around.
        slack = math.pi * abs(height) * (radii[0] + radii[1]) * 1.0
        if abs(drawn.volume - exact) > slack:
            self.fault(each, f"volume {drawn.volume}, not {exact}")

    def axis_at(self, each):
        for pipe in self.components:
            if pipe.word in PIPES:
                for end, _, _ in each.ends:
                    if near(pipe.ends[0][0], end) or near(pipe.ends[1][0], end):
                        return unit(sub(pipe.ends[1][0], pipe.ends[0][0]))
        return None

    def flange(self, each, drawn):
        face = face_of(each, self.components)
        p, q, outside = each.ends[face][0], each.ends[1 - face][0], OUTSIDE[each.ends[0][1]]
        length = math.dist(p, q)
        pieces = drawn.along(p, q)
        if not pieces:
            return self.fault(each, "nothing along its axis")
        widest = max(max(x[1], x[3]) for x in pieces)
        if widest < 1.2 * outside or abs(max(x[1] for x in pieces if abs(x[0]) < NEAR) - widest) > NEAR:
            self.fault(each, f"its disc is not at {p}")
        hub = [x[3] for x in pieces if abs(x[2] - length) < NEAR]
        if not hub or (each.skey in ("FLWN", "") and abs(hub[0] - outside) > NEAR):
            self.fault(each, f"its hub is not {outside} wide at {q}")
        self.reaches(each, drawn, p, q)

    def reaches(self, each, drawn, p, q):
        """Bodies along p to q cover all of it and nothing beyond."""
        length, covered = math.dist(p, q), 0.0
        pieces = drawn.along(p, q)
        for s, _, t, _ in pieces:
            if s > covered + NEAR:
                break
            covered = max(covered, t)
        if not pieces or pieces[0][0] < -NEAR or max(x[2] for x in pieces) > length + NEAR:
            self.fault(each, f"it passes its ends {p} and {q}")
        elif covered < length - NEAR:
            self.fault(each, f"it ends {length - covered} before {q}")

    def gasket(self, each, drawn):
        p, q = each.ends[0][0], each.ends[1][0]
        pieces = drawn.along(p, q)
        if len(pieces) != 1 or pieces[0][1] <= OUTSIDE[each.ends[0][1]]:
            self.fault(each, f"no disc wider than the pipe from {p} to {q}")
        self.reaches(each, drawn, p, q)

    def valve(self, each, drawn):
        (p, size, code), (q, _, _) = each.ends
        ends = [x for x in drawn.along(p, q) if abs(x[0]) < NEAR]
        is_flanged = code == "FL" or (not code and each.skey[2:4] == "FL")
        outside = OUTSIDE[size]
        if not ends:
            self.fault(each, f"nothing at its end {p}")
        elif is_flanged and max(x[1] for x in ends) < 1.2 * outside:
            self.fault(each, f"no flange at {p}")
        elif code == "BW" and abs(max(x[1] for x in ends) - outside) > NEAR:
            self.fault(each, f"{max(x[1] for x in ends)} wide at {p}, not {outside}")
        legs = [(each.centre, end[0]) for end in each.ends] if each.centre else [(p, q)]
        pieces = drawn.along(p, q)
        if pieces and (pieces[0][0] < -NEAR or max(x[2] for x in pieces) > math.dist(p, q) + NEAR):
            self.fault(each, "it passes its ends")
        if each.centre:
            self.centre_line(each, drawn, legs)

    def cap(self, each, drawn):
        (p, size, _), (q, _, _) = each.ends
        outside = OUTSIDE[size]
        if not any(self.is_met(each, end[0]) for end in each.ends[:1]):
            p, q = q, p
        at = [x[1] for x in drawn.along(p, q) if abs(x[0]) < NEAR]
        if not at or abs(at[0] - outside) > NEAR:
            self.fault(each, f"not {outside} wide at {p}")
        self.reaches(each, drawn, p, q)

    def is_met(self, each, place):
        return any(near(place, point[0]) for other in self.components
                   if other is not each and other.word != "WELD" for point in other.points())

    def weld(self, each, drawn):
        place = each.place or each.ends[0][0]
        if not any(near(point, place) for point in drawn.points):
            self.fault(each, f"no point at {place}")


CHECKS = {"PIPE": Judge.straight, "PIPE-FIXED": Judge.straight, "MISC-COMPONENT": Judge.straight,
          "ELBOW": Judge.bend, "BEND": Judge.bend, "TEE": Judge.tee, "CROSS": Judge.tee,
          "Y-PIECE-FITTING": Judge.y_piece, "OLET": Judge.olet, "REDUCER-CONCENTRIC": Judge.cone,
          "REDUCER-ECCENTRIC": Judge.eccentric, "FLANGE": Judge.flange, "GASKET": Judge.gasket,
          "VALVE": Judge.valve, "CAP": Judge.cap, "WELD": Judge.weld}


# ---------------------------------------------------------------- making piping files

class Maker:
    """A line that goes on from component to component."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        choose = self.random.choice
        self.meaning = choose(("INCH", "dn", "times", "outside"))
        self.coordinates = choose(("MM", "MM", "INCH", "FEET", "MM-HUNDREDTHS", "feet-inches"))
        self.on_sixteenths = self.coordinates == "feet-inches"
        self.marks = choose((True, False))
        self.hundredths = choose((True, False))
        self.glue = choose(("", " "))
        self.size = 6  # says which unit bores have
        self.place = tuple(self.rounded(self.random.uniform(-2e4, 2e5)) for _ in range(3))
        self.way, self.up = self.frame()
        self.text = [f"UNITS-BORE {'INCH' if self.meaning == 'INCH' else 'MM'}",
                     "UNITS-CO-ORDS " + {"feet-inches": "INCH"}.get(self.coordinates, self.coordinates),
                     f"PIPELINE-REFERENCE L-{seed}"]

    def frame(self):
        """A direction and one square to it; along the axes where co-ordinates are coarse."""
        if self.on_sixteenths or self.random.random() < 0.3:
            axes = [(1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, 1.0)]
            a, b = self.random.sample(axes, 2)
            return times(a, self.random.choice((1, -1))), b
        way = unit(tuple(self.random.gauss(0, 1) for _ in range(3)))
        other = tuple(self.random.gauss(0, 1) for _ in range(3))
        return way, unit(cross(way, other))

    def rounded(self, length):
        return round(length / 1.5875) * 1.5875 if self.on_sixteenths else round(length, 3)

    def number(self, value):
        if self.coordinates == "feet-inches":
            sixteenths = round(abs(value) / 1.5875)
            feet, rest = divmod(sixteenths, 192)
            inches, part = divmod(rest, 16)
            text = f"{feet}'{inches}" + (f".{part}/16" if part else "") + '"'
            return ("-" if value < 0 else "") + text
        scale = {"MM": 1.0, "INCH": 25.4, "FEET": 304.8, "MM-HUNDREDTHS": 0.01}[self.coordinates]
        return f"{value / scale:.8f}".rstrip("0").rstrip(".")

    def bore(self, size):
        if self.meaning == "INCH":
            forms = {0.75: ["3/4", "0.75"], 1.5: ["1.1/2", "1-1/2", "1.5"]}.get(size, [f"{size}", f'{size}"'])
            return self.random.choice(forms)
        value = {"dn": NOMINAL[size], "times": 25.4 * size, "outside": OUTSIDE[size]}[self.meaning]
        return f"{value:.4f}".rstrip("0").rstrip(".")

    def point(self, word, place, size=None, code=""):
        text = f"    {word} " + " ".join(self.number(x) for x in place)
        if size is not None:
            text += " " + self.bore(size)
        return text + (self.glue + code if code else "")

    def component(self, word, ends, *more):
        """ends: (place, size, code); in either order."""
        lines = [self.point("END-POINT", *end) for end in ends]
        if self.random.random() < 0.5:
            lines.reverse()
        self.text += [word] + lines + list(more)

    def go(self, length):
        self.place = add(self.place, self.way, length)
        return self.place

    def straight(self, word, length, codes=("", ""), *more, size=None):
        start = self.place
        self.component(word, [(start, size or self.size, codes[0]), (self.go(length), size or self.size, codes[1])],
                       *more)
        return start, self.place

    def pipe(self):
        self.straight("PIPE", self.rounded(self.random.uniform(600, 3000)), ("BW", "BW") if self.marks else ("", ""))

    def elbow(self):
        turn = 90.0 if self.on_sixteenths else self.random.choice((90.0, 45.0, 30.0, 60.0, 22.5))
        radius = self.rounded(38.1 * self.size)
        leg = radius * math.tan(math.radians(turn) / 2)
        longer = self.rounded(self.random.choice((0.0, 0.0, 120.65)))
        start = self.place
        tangent = self.go(leg + longer)
        self.turn(turn)
        angle = turn if self.random.random() < 0.8 else 180.0 - turn
        self.component(self.random.choice(("ELBOW", "BEND")), [(start, self.size), (self.go(leg), self.size)],
                       self.point("CENTRE-POINT", tangent),
                       f"    ANGLE {angle * 100:.0f}" if self.hundredths else f"    ANGLE {angle:g}")

    def half_turn(self):
        start, radius = self.place, self.rounded(38.1 * self.size)
        centre = add(start, self.up, radius)
        self.place = add(centre, self.up, radius)
        self.way = times(self.way, -1)
        self.component("BEND", [(start, self.size), (self.place, self.size)], self.point("CENTRE-POINT", centre),
                       *self.random.choice(([], ["    ANGLE 180"], ["    ANGLE 18000"])))

    def turn(self, degrees):
        """In the plane of way and up."""
        c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
        way, up = self.way, self.up
        self.way = add(times(way, c), up, s)
        self.up = add(times(up, c), way, -s)
        if self.on_sixteenths:
            self.way, self.up = (tuple(float(round(x)) for x in v) for v in (self.way, self.up))
        if self.random.random() < 0.5:
            self.up = cross(self.way, self.up)

    def sideways(self):
        return self.random.choice((self.up, times(self.up, -1), cross(self.way, self.up)))

    def smaller(self):
        sizes = [k for k in OUTSIDE if k < self.size and k >= 0.75 and k != 2.5 and k != 3]
        return self.random.choice(sizes) if sizes else self.size

    def tee(self):
        half = self.rounded(28.6 * self.size)
        start, side, size = self.place, self.sideways(), self.random.choice((self.size, self.smaller()))
        centre = self.go(half)
        branch = self.point("BRANCH1-POINT", add(centre, side, half), size)
        more = [self.point("CENTRE-POINT", centre), branch]
        word = self.random.choice(("TEE", "CROSS"))
        if word == "CROSS":
            more.append(self.point("BRANCH2-POINT", add(centre, side, -half), size))
        self.component(word, [(start, self.size), (self.go(half), self.size)], *more)

    def olet(self):
        start, _ = self.straight("PIPE", self.rounded(1200.15))
        size, side = self.smaller(), self.sideways()
        centre = add(start, self.way, self.rounded(500.0625))
        branch = add(centre, side, self.rounded(OUTSIDE[self.size] / 2 + 60))
        form = self.random.choice((0, 1, 2))
        ends = {0: [], 1: [(centre, self.size)], 2: [(add(centre, self.way, -self.rounded(63.5)), self.size),
                                                    (add(centre, self.way, self.rounded(63.5)), self.size)]}[form]
        more = [] if form == 1 else [self.point("CENTRE-POINT", centre)]
        self.component("OLET", ends, *more, self.point("BRANCH1-POINT", branch, size))

    def reducer(self):
        size = self.smaller()
        if size == self.size:
            return
        start, before = self.place, self.size
        flat = not self.on_sixteenths and self.random.random() < 0.7
        self.go(self.rounded(25.4 * (before + 1)))
        if flat:
            side = self.sideways()
            self.place = add(self.place, side, (OUTSIDE[before] - OUTSIDE[size]) / 2)
        self.component("REDUCER-ECCENTRIC" if flat else "REDUCER-CONCENTRIC",
                       [(start, before), (self.place, size)])
        self.size = size
        self.pipe()

    def valve(self):
        thick, length = self.rounded(3.175), self.rounded(25.4 * self.size / 2 + 12.7)
        fl, bw = ("FL", "BW") if self.marks else ("", "")
        self.straight("FLANGE", length, (bw, fl), "    SKEY FLWN")
        self.straight("GASKET", thick)
        start = self.place
        middle = self.go(self.rounded(101.6 + 19.05 * self.size))
        self.component("VALVE", [(start, self.size, fl), (self.go(math.dist(start, middle)), self.size, fl)],
                       self.point("CENTRE-POINT", middle),
                       "    SKEY " + self.random.choice(("VT", "VG", "VB", "VP", "VC")) + "FL")
        self.straight("GASKET", thick)
        self.straight("FLANGE", length, (fl, bw), "    SKEY FLWN")
        self.pipe()

    def flanges(self):
        """Two that meet, with a gasket or without; where they don't say so, both may be reversed."""
        length = self.rounded(25.4 * self.size / 2 + 12.7)
        fl, bw = ("FL", "BW") if self.marks else ("", "")
        kinds = ["    SKEY " + self.random.choice(("FLWN", "FLSO", "FLSW")) for _ in range(2)]
        self.straight("FLANGE", length, (bw, fl), kinds[0])
        if self.random.random() < 0.5:
            self.straight("GASKET", self.rounded(3.175))
        self.straight("FLANGE", length, (fl, bw), kinds[1])
        self.pipe()

    def fork(self):
        """The last one: both branches end in pipe and cap."""
        leg = self.rounded(38.1 * self.size)
        start = self.place
        centre = self.go(leg)
        if self.on_sixteenths:
            ways = [self.up, cross(self.way, self.up)]
        else:
            ways = [add(times(self.way, math.sqrt(0.5)), times(self.up, s * math.sqrt(0.5))) for s in (1, -1)]
        tips = [add(centre, way, leg) for way in ways]
        self.component("Y-PIECE-FITTING", [(start, self.size)], self.point("CENTRE-POINT", centre),
                       self.point("BRANCH1-POINT", tips[0], self.size),
                       self.point("BRANCH2-POINT", tips[1], self.size))
        for tip, way in zip(tips, ways):
            self.place, self.way = tip, way
            self.pipe()
            self.straight("WELD", 0.0)
            self.straight("CAP", self.rounded(19.05 * self.size))

    def file(self):
        self.pipe()
        for _ in range(self.random.randint(6, 14)):
            self.random.choice((self.elbow, self.tee, self.olet, self.reducer, self.valve, self.flanges,
                                self.half_turn))()
            self.pipe()
        self.fork()
        return "\n".join(self.text) + "\n"


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    Judge("sample", pathlib.Path(SAMPLE).read_text(), "INCH").run(folder)
    if sum(checked.values()) < 120 or set(CHECKS) - set(checked) - {"BEND", "CROSS"}:
        faults.append(f"of the sample only {checked} were compared")
    for seed in range(FIRST_SEED, FIRST_SEED + FILES):
        maker = Maker(seed)
        text = maker.file()
        judge = Judge(f"seed {seed} ({maker.meaning}, {maker.coordinates})", text, maker.meaning)
        known = len(faults)
        judge.run(folder)
        if len(faults) > known:
            pathlib.Path(f"piping-judge-{seed}.pcf").write_text(text)

print("\n".join(faults[:40]))
if len(faults) > 40:
    print(f"and so {len(faults) - 40} more")
print(", ".join(f"{count} {word}" for word, count in sorted(checked.items())))
sys.exit(1 if faults else 0)
