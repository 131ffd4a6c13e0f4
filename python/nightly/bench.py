# SPDX-License-Identifier: MIT
"""How fast a plant is read and written, beside other ways, in one run.

    PYTHONPATH=build/release/python VESK_TOOL=build/release/bin/vesk \\
        python3 python/nightly/bench.py [ELEMENTS]

Processor time of each way, the least of three runs; for a child process its own. The pure
reader is what an analyst would write for the token style in an afternoon: split lines, floats.
"""

import gc
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

import numpy as np

import vesk

RUNS = 3
HEADING = 20  # characters of header and keyword


def spent():
    both = [resource.getrusage(each) for each in (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)]
    return sum(each.ru_utime + each.ru_stime for each in both)


def least(work):
    times = []
    for _ in range(RUNS):
        gc.collect()
        before = spent()
        result = work()
        times.append(spent() - before)
    return min(times), result


def by_tool(path):
    command = [os.environ["VESK_TOOL"], "list", "--json", path]
    return json.loads(subprocess.run(command, capture_output=True, check=True).stdout)


def by_hand(path):
    """Start, axis and diameter of the cylinders of a file in tokens, headers left aside."""
    numbers = []
    with open(path, encoding="utf-8") as file:
        for line in file:
            if line[HEADING - 1] == "c":
                numbers.append([float(each) for each in line[HEADING:].replace(",", " ").split()])
    return np.array(numbers)


def peak(path):
    """The most memory that a process needs which only reads, and its arrays, in megabytes."""
    code = """
import re, sys, vesk
def most():
    return int(re.search("VmHWM:\\s*(\\d+)", open("/proc/self/status").read())[1]) / 1024
before = most()
model = vesk.read(sys.argv[1], attributes=False)
print(most() - before, model.nbytes / 2**20)
"""
    command = [sys.executable, "-c", code, path]
    told = subprocess.run(command, capture_output=True, check=True, text=True).stdout
    return [float(each) for each in told.split()]


def main():
    rows = int(sys.argv[1]) if len(sys.argv) > 1 else 500_000
    random = np.random.default_rng(1)
    start = random.uniform(0, 1e5, (rows, 3)).round(4)
    end = start + random.uniform(-1e3, 1e3, (rows, 3)).round(4)
    diameter = random.choice([60.3, 114.3, 168.3, 219.1], rows)
    headers = [f"P-{i % 200}" for i in range(rows)]
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "plant.dat"

        def write():
            with vesk.Writer(path) as file:
                file.cylinders(start, end, diameter, header=headers)

        def each():
            with vesk.Writer(path.with_name("each.dat")) as file:
                for i in range(rows // 100):
                    file.cylinders(start[i], end[i], diameter[i], header=headers[i])

        print(f"{rows:,} cylinders, processor time")
        print(f"write arrays            {least(write)[0]:8.2f} s")
        print(f"write one by one        {least(each)[0] * 100:8.2f} s  (100 times a hundredth)")
        ours, model = least(lambda: vesk.read(path))
        print(f"read                    {ours:8.2f} s")
        theirs, listed = least(lambda: by_tool(path))
        print(f"list --json and parse   {theirs:8.2f} s  ({theirs / ours:.0f} times)")
        hand, numbers = least(lambda: by_hand(path))
        print(f"pure Python             {hand:8.2f} s  ({hand / ours:.0f} times)")
        print(f"select a header         {least(lambda: model.select(header='P-1'))[0]:8.2f} s")
        print(f"to_dataframe            {least(model.to_dataframe)[0]:8.2f} s")
        again = path.with_name("again.dat")
        print(f"write the model         {least(lambda: vesk.write(again, model))[0]:8.2f} s")
        grown, arrays = peak(path)
        print(f"memory of reading       {grown:8.0f} MB for arrays of {arrays:.0f} MB")
        # All ways have read the same.
        assert len(listed["elements"]) == len(model) == rows
        pipes = model.cylinders
        ours = np.column_stack([pipes.start, pipes.axis, pipes.diameter])
        assert numbers.shape == ours.shape and np.abs(numbers - ours).max() < 1e-9


if __name__ == "__main__":
    main()
