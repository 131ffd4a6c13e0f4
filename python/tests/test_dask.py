# SPDX-License-Identifier: MIT
import pytest

import vesk

pytest.importorskip("dask.dataframe")
import vesk.dask  # noqa: E402


@pytest.fixture
def plant(tmp_path):
    """Three zones: one pipe of 100 mm, two, three."""
    for count in (1, 2, 3):
        with vesk.Writer(tmp_path / f"zone{count}.dat") as file:
            rows = [[0, 0, 1000.0 * i] for i in range(count)]
            ends = [[100, 0, z] for _, _, z in rows]
            file.cylinders(rows, ends, 10.0 * count, header=f"P-{count}")
    return tmp_path


def pipes(model):
    return len(model.cylinders)


def test_zones_are_those_of_the_folder_by_name(plant):
    assert [each[-9:] for each in vesk.dask.zones(plant)] == [f"zone{i}.dat" for i in (1, 2, 3)]


def test_an_address_of_fsspec_is_a_zone_too(plant):
    pytest.importorskip("fsspec")
    results = vesk.dask.each(f"file://{plant}/*.dat", pipes)
    assert [each.value for each in results] == [1, 2, 3]
    assert all(each.zone.startswith("file://") for each in results)


def test_each_zone_has_its_result_and_failures_are_named(plant):
    (plant / "zone2.dat").write_text("no record\n")
    names = [*vesk.dask.zones(plant), str(plant / "none.dat")]
    results = vesk.dask.each(names, pipes, strict=True)
    assert [each.value for each in results] == [1, None, 3, None]
    assert [each.zone for each in results] == names
    assert "zone2.dat:1:" in results[1].error and "FileNotFoundError" in results[3].error


def test_a_bag_has_a_partition_for_each_zone(plant):
    bag = vesk.dask.bag(plant)
    assert bag.npartitions == 3
    assert bag.map(pipes).compute(scheduler="threads") == [1, 2, 3]


def test_a_dataframe_is_that_of_all_zones(plant):
    table = vesk.dask.dataframe(plant)
    lengths = table.groupby("header").length.sum().compute(scheduler="threads")
    assert lengths.to_dict() == pytest.approx({"P-1": 100, "P-2": 200, "P-3": 300})
    assert len(table.compute(scheduler="threads")) == 6
