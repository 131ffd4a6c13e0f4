# SPDX-License-Identifier: MIT
"""A scheduler and two workers over TCP on this machine, of which one is killed."""

import os
import pickle
import signal
import threading
import time

import numpy as np
import pytest

import vesk
import vesk.dask
from distributed import Client, LocalCluster

ZONES = 12


@pytest.fixture
def plant(tmp_path):
    random = np.random.default_rng(1)
    for zone in range(ZONES):
        start = random.uniform(0, 1e5, (500, 3))
        with vesk.Writer(tmp_path / f"zone{zone:02}.dat") as file:
            end = start + random.uniform(1, 1e3, (500, 3))
            file.cylinders(start, end, 60.3, header=[f"P-{i % 5}" for i in range(500)])
    return tmp_path


@pytest.fixture
def client():
    with LocalCluster(
        n_workers=2, threads_per_worker=1, processes=True, protocol="tcp://",
        dashboard_address=None, memory_limit="600MB",
    ) as cluster, Client(cluster) as client:
        yield client


def slowly(model):
    time.sleep(0.5)
    return pickle.dumps((model.extents(), model.volumes(), model.cylinders.end))


def too_much(model):
    if model.files[0].endswith("zone03.dat"):
        return len(np.ones(10**9))
    return len(model)


def test_two_workers_give_what_one_process_gives(plant, client):
    alone = [slowly(vesk.read(zone)) for zone in vesk.dask.zones(plant)]
    assert [each.value for each in vesk.dask.each(plant, slowly, client=client)] == alone


def test_a_worker_that_is_killed_loses_nothing(plant, client):
    alone = [slowly(vesk.read(zone)) for zone in vesk.dask.zones(plant)]
    (victim, *_) = client.run(os.getpid).values()

    threading.Timer(1.0, os.kill, (victim, signal.SIGKILL)).start()
    results = vesk.dask.each(plant, slowly, client=client)
    assert [each.error for each in results] == [""] * ZONES
    assert [each.value for each in results] == alone


def test_zones_clash_on_a_cluster_as_on_one_machine(plant, client):
    alone = vesk.dask.clash(plant)
    (victim, *_) = client.run(os.getpid).values()
    threading.Timer(0.3, os.kill, (victim, signal.SIGKILL)).start()
    assert vesk.dask.clash(plant, client=client) == alone
    assert alone.failures == [] and any(each.zone_a != each.zone_b for each in alone.clashes)


def test_zones_are_exported_on_a_cluster(plant, client, tmp_path):
    done = vesk.dask.to_glb(plant, tmp_path, client=client, quality="draft")
    assert [each.error for each in done] == [""] * ZONES
    assert len(list(tmp_path.glob("*.glb"))) == ZONES


def test_a_damaged_zone_is_named_and_the_others_complete(plant, client):
    (plant / "zone05.dat").write_text("no record\n")
    results = vesk.dask.each(plant, len, strict=True, client=client)
    assert [each.zone[-10:] for each in results if each.error] == ["zone05.dat"]
    assert sum(each.value or 0 for each in results) == 500 * (ZONES - 1)


def test_a_zone_too_large_for_a_worker_is_named_and_the_others_complete(plant, client):
    results = vesk.dask.each(plant, too_much, client=client)
    assert [each.zone[-10:] for each in results if each.error] == ["zone03.dat"]
    assert sum(each.value or 0 for each in results) == 500 * (ZONES - 1)
