#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Takes a plant apart and together again with the tool, and compares it with what is
done here from the lines of the file alone.

  read-parts.py VESK PIPING.pcf
"""
import csv
import os
import subprocess
import sys
import tempfile

vesk, piping = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
os.chdir(tempfile.mkdtemp())


def run(*words, code=0):
    done = subprocess.run([vesk, *words], capture_output=True, check=False)
    assert done.returncode == code, (words, done)
    return done.stdout.decode()


def elements(name):
    """Of a file in tokens: lists of lines, a new one where the line number is 00."""
    found = []
    with open(name, "rb") as file:
        for line in file.read().splitlines(keepends=True):
            if line[17:19] == b"00":
                found.append([])
            found[-1].append(line)
    return found


def header(element):
    return element[0][:10]


def shown(name):
    """As --header takes it."""
    return (name[:8].decode().strip() + " " + name[8:].decode()).strip()


def counter(element):
    return int(element[0][10:13], 36)


def joined(some):
    return b"".join(line for element in some for line in element)


def content(name):
    with open(name, "rb") as file:
        return file.read()


def rows(name):
    with open(name, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def owners(name, sidecar):
    """For each element what its row says beside the key, or None."""
    known = {}
    for row in rows(sidecar):
        key = row["f1"].ljust(8) + row["f2"].ljust(2)
        values = tuple(v for k, v in row.items() if k not in ("f1", "f2", "first", "last"))
        for number in range(int(row["first"]), int(row["last"]) + 1):
            assert (key, number) not in known, (sidecar, key, number)
            known[key, number] = values
    return [known.get((header(e).decode(), counter(e))) for e in elements(name)]


# Two plants of the same piping: all headers clash.
run("import", piping, "-o", "plant.dat")
whole = elements("plant.dat")
said = owners("plant.dat", "plant.attributes.csv")
assert len(whole) > 100 and None not in said
names = sorted({header(e) for e in whole})
assert len(names) > 1

# Extract: the lines of the elements of one header, and the rows of these.
for name in names:
    run("extract", "plant.dat", "-f", "-o", "line.dat", "--header", shown(name))
    chosen = [i for i, e in enumerate(whole) if header(e) == name]
    assert content("line.dat") == joined(whole[i] for i in chosen)
    assert owners("line.dat", "line.attributes.csv") == [said[i] for i in chosen]

# Split: each element in one part, in its order; together they are the plant again.
for by in ("header", "group", "kind", "size", "grid"):
    run("split", "plant.dat", "--by", by, "-o", by, *(["--grid", "1500"] if by == "grid" else []))
    parts = [os.path.join(by, name) for name in sorted(os.listdir(by)) if name.endswith(".dat")]
    assert len(parts) > 1, by
    left = {}
    for i, element in enumerate(whole):
        left.setdefault(joined([element]), []).append(i)
    for part in parts:
        places = [left[joined([e])].pop(0) for e in elements(part)]
        assert places == sorted(places), part
        assert owners(part, part[:-4] + ".attributes.csv") == [said[i] for i in places]
    assert not any(left.values()), by
    assert sum(os.path.getsize(part) for part in parts) == os.path.getsize("plant.dat")
    run("merge", *parts, "-o", by + ".dat", "--clash", "keep")
    run("diff", by + ".dat", "plant.dat")
    assert sorted(joined([e]) for e in elements(by + ".dat")) == sorted(joined([e]) for e in whole)
    assert len(rows(by + ".attributes.csv")) == len(rows("plant.attributes.csv")), by
    assert None not in owners(by + ".dat", by + ".attributes.csv")

# By header each part has lines of one header only.
for name in os.listdir("header"):
    if name.endswith(".dat"):
        assert len({header(e) for e in elements(os.path.join("header", name))}) == 1

# Merge: twice the same, the second behind the largest counter of the first.
run("merge", "plant.dat", "plant.dat", "-o", "twice.dat")
twice = elements("twice.dat")
assert joined(twice[: len(whole)]) == joined(whole)
for name in names:
    ranges = [(int(r["first"]), int(r["last"])) for r in rows("plant.attributes.csv")
              if (r["f1"].ljust(8) + r["f2"].ljust(2)).encode() == name]
    numbers = [counter(e) for e in whole if header(e) == name]
    shift = max(numbers + [b for _, b in ranges]) + 1 - min(numbers + [a for a, _ in ranges])
    again = [counter(e) for e in twice[len(whole):] if header(e) == name]
    assert again == [number + shift for number in numbers]
assert owners("twice.dat", "twice.attributes.csv") == said + said

# Edit: only the headers change, in their columns.
def without(element, begin, end):
    return [line[:begin] + line[end:] for line in element]


first = shown(names[0])
run("edit", "plant.dat", "-o", "renamed.dat", "--rename", first, "NEW-1 77")
renamed = elements("renamed.dat")
assert [without(e, 0, 10) for e in renamed] == [without(e, 0, 10) for e in whole]
assert [header(e) for e in renamed] == [
    b"NEW-1   77" if header(e) == names[0] else header(e) for e in whole]
assert owners("renamed.dat", "renamed.attributes.csv") == said

run("edit", "plant.dat", "-o", "numbers.dat", "--renumber", "components", "--start", "100")
numbers = elements("numbers.dat")
assert [without(e, 10, 13) for e in numbers] == [without(e, 10, 13) for e in whole]
last = {}
for old, new in zip(whole, numbers):
    before, now = last.get(header(old), (None, 99))
    now += counter(old) != before
    assert counter(new) == now
    last[header(old)] = (counter(old), now)
assert owners("numbers.dat", "numbers.attributes.csv") == said

run("edit", "twice.dat", "-o", "once.dat", "--drop-duplicates", "--sort", "header")
once = elements("once.dat")
assert once == sorted(once, key=header)
assert "[V204]" in run("check", "twice.dat") and "[V204]" not in run("check", "once.dat")

# 200,000 elements in one go, and their counters run out.
with open("many.dat", "wb") as file:
    for i in range(200000):
        file.write(b"H-%05d 01%03d    00c %d 0 0,0 0 10,5\n" % (i // 500, i % 500, i))
run("split", "many.dat", "--by", "header", "-o", "many")
assert len(os.listdir("many")) == 400
run("merge", "many", "-o", "again.dat", "--clash", "refuse")
assert content("again.dat") == content("many.dat")
run("edit", "many.dat", "-o", "one.dat", "--rename", "*", "ONE", "--renumber", "elements", code=4)
assert not os.path.exists("one.dat")
print("taken apart and put together:", len(whole), "elements")
