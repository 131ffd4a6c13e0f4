# SPDX-License-Identifier: MIT
"""How the work on a cluster grows with a plant: the figures of docs/scale.md.

    PYTHONPATH=build/release/python python3 python/nightly/growth.py [MOST]

Makes plants of 10^5, 10^6 ... MOST pipes in zones of 10^5, a rack of pipes each, and works
through them with one and with two workers: reads and measures each zone, then looks for
clashes in and between zones. Elapsed time, and processor time of the workers.
"""

import os
import pathlib
import sys
import tempfile
import time

import numpy as np
from distributed import Client, LocalCluster

import vesk
import vesk.dask

ZONE = 100_000


def write_zone(path, zone):
    """A rack: ten layers of pipes 300 mm apart, 200 mm from those of the next zone; one in each
    layer is 50 mm from its neighbour, where 114.3 mm are the least."""
    i = np.arange(ZONE)
    start = np.column_stack([i % 100, (i // 100) % 100, i // 10_000]) * [300.0, 300.0, 1000.0]
    start[:, 0] += 29_900.0 * zone
    start[:, 1] += np.where(i % 10_000 == 0, 250.0, 0.0)
    with vesk.Writer(path) as file:
        end = start + [0, 0, 900]
        file.cylinders(start, end, 114.3, header=[f"P-{(each // 100 + 7 * zone) % 97}" for each in i])


def measured(model):
    sums = {name: float(each.sum()) for name, each in model.measures().items()}
    return len(model), sums["length"]


def processor(client):
    """Of the workers so far, seconds."""
    return sum(sum(each[:2]) for each in client.run(os.times).values())


def told(client, what, elements, work):
    begun, used = time.perf_counter(), processor(client)
    result = work()
    elapsed, used = time.perf_counter() - begun, processor(client) - used
    workers = len(client.scheduler_info()["workers"])
    print(f"{elements:>11,} {workers} {what:8} {elapsed:8.1f} s {used:8.1f} s", flush=True)
    return result


def main():
    most = int(float(sys.argv[1])) if len(sys.argv) > 1 else 10**7
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        print("   elements workers        elapsed  processor")
        elements = ZONE
        made = 0
        while elements <= most:
            for zone in range(made, elements // ZONE):
                write_zone(folder / f"zone{zone:04}.dat", zone)
            made = elements // ZONE
            answers = []
            for workers in (1, 2):
                with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                                  protocol="tcp://", dashboard_address=None) as cluster:
                    with Client(cluster) as client:
                        done = told(client, "measure", elements,
                                    lambda: vesk.dask.each(folder, measured, client=client))
                        found = told(client, "clash", elements,
                                     lambda: vesk.dask.clash(folder, clearance=100, client=client))
                answers.append((done, found))
                # Ten in each zone; on each border those of ten layers.
                hard = sum(each.code == "V501" for each in found.clashes)
                across = sum(each.zone_a != each.zone_b for each in found.clashes)
                assert (hard, across) == (10 * made, 1000 * (made - 1)), (hard, across)
                assert sum(each.value[0] for each in done) == elements
            assert answers[0] == answers[1]
            size = sum(each.stat().st_size for each in folder.iterdir())
            print(f"{elements:>11,} {size / 1e6:,.0f} MB of files, {len(found.clashes):,} clashes")
            elements *= 10


if __name__ == "__main__":
    main()
