# SPDX-License-Identifier: MIT
import numpy as np
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


def test_a_zone_at_an_address_has_the_attributes_beside_it(plant):
    pytest.importorskip("fsspec")
    (plant / "zone2.attributes.csv").write_text("f1,f2,first,last,item-code\nP-2,,0,0,PIPE-20\n")

    def items(model):
        known = model.attributes
        return known["item-code"].tolist() if known.columns else []

    for zones in (plant, f"file://{plant}/*.dat", [f"file://{plant}/zone2.dat"]):
        values = [each.value for each in vesk.dask.each(zones, items)]
        assert ["PIPE-20"] in values and values.count([]) == len(values) - 1, zones


def test_a_damaged_sidecar_at_an_address_is_told_of_its_zone(plant):
    pytest.importorskip("fsspec")
    (plant / "zone2.attributes.csv").write_text("f1,f2,first,last,item-code\nP-2,,0,x,PIPE-20\n")
    results = vesk.dask.each(f"file://{plant}/*.dat", pipes, strict=True)
    assert [each.value for each in results] == [1, None, 3]
    assert f"file://{plant}/zone2.attributes.csv:2:" in results[1].error


def test_each_zone_has_its_result_and_failures_are_named(plant):
    (plant / "zone2.dat").write_text("no record\n")
    names = [*vesk.dask.zones(plant), str(plant / "none.dat")]
    results = vesk.dask.each(names, pipes, strict=True)
    assert [each.value for each in results] == [1, None, 3, None]
    assert [each.zone for each in results] == names
    assert "zone2.dat:1:" in results[1].error and "FileNotFoundError" in results[3].error


def test_each_zone_is_exported_under_its_name(plant):
    (plant / "zone2.dat").write_text("no record\n")
    results = vesk.dask.to_glb(plant, plant, strict=True, quality="draft")
    assert [each.value and each.value[-9:] for each in results] == ["zone1.glb", None, "zone3.glb"]
    assert "zone2.dat:1:" in results[1].error
    vesk.read(plant / "zone3.dat").to_glb(plant / "alone.glb", quality="draft")
    assert (plant / "zone3.glb").read_bytes() == (plant / "alone.glb").read_bytes()
    (plant / "b").mkdir()
    (plant / "b" / "zone1.dat").write_bytes((plant / "zone1.dat").read_bytes())
    with pytest.raises(ValueError, match="another zone is"):
        vesk.dask.to_glb(plant, plant)


@pytest.fixture
def crowd(tmp_path):
    """600 pipes in four zones along x, many of which reach across a border, and an empty zone;
    neighbours have headers in common."""
    random = np.random.default_rng(3)
    for zone in range(4):
        start = random.uniform(0, 1500, (150, 3)) + [1500 * zone, 0, 0]
        with vesk.Writer(tmp_path / f"zone{zone}.dat") as file:
            headers = [(f"P-{i % 7 + zone % 2}", f"{i % 3}") for i in range(150)]
            file.cylinders(start, start + random.uniform(-400, 400, (150, 3)), 60, header=headers)
    (tmp_path / "zone4.dat").write_text("")
    return tmp_path


def row(model, clashes, i):
    a, b = clashes.pairs[i]
    files, lines = model.places()
    return (clashes.code[i], model.files[files[a]], lines[a], model.files[files[b]], lines[b],
            clashes.distance[i], clashes.depth[i], clashes.message[i])


@pytest.mark.parametrize(
    "words",
    [
        {},
        {"clearance": 25},
        {"between": "lines", "strict": True},
        {"between": "files"},
        {"between": "elements", "tolerance": 5, "ignore": [("P-1", "P-*")]},
    ],
)
def test_zones_clash_as_one_model_does(crowd, words):
    model = vesk.read(crowd)
    alone = model.clash(**words)
    expected = sorted(row(model, alone, i) for i in range(len(alone)))
    found = vesk.dask.clash(crowd, **words)
    assert found.failures == []
    ours = sorted((each.code, each.zone_a, each.line_a, each.zone_b, each.line_b, each.distance,
                   each.depth, each.message) for each in found.clashes)
    assert ours == expected and len(ours) > 10
    assert sum(each.zone_a != each.zone_b for each in found.clashes) > 5
    assert len(found.to_dataframe()) == len(ours)


def test_only_neighbours_are_read_together(crowd, monkeypatch):
    pairs = []
    known = vesk.dask._between
    monkeypatch.setattr(
        vesk.dask, "_between",
        lambda pair, *words: pairs.append(tuple(each[-9:-4] for each in pair)) or known(pair, *words)
    )
    vesk.dask.clash(crowd)
    assert set(pairs) == {("zone0", "zone1"), ("zone1", "zone2"), ("zone2", "zone3")}


def test_zones_that_fail_are_named_and_the_others_are_searched(crowd):
    (crowd / "zone1.dat").write_text("no record\n")
    found = vesk.dask.clash(crowd, strict_zones=True)
    assert [each.zone[-9:] for each in found.failures] == ["zone1.dat"]
    assert {each.zone_a[-9:] for each in found.clashes} == {"zone0.dat", "zone2.dat", "zone3.dat"}


def test_a_bag_has_a_partition_for_each_zone(plant):
    bag = vesk.dask.bag(plant)
    assert bag.npartitions == 3
    assert bag.map(pipes).compute(scheduler="threads") == [1, 2, 3]


def test_a_dataframe_is_that_of_all_zones(plant):
    table = vesk.dask.dataframe(plant)
    lengths = table.groupby("header").length.sum().compute(scheduler="threads")
    assert lengths.to_dict() == pytest.approx({"P-1": 100, "P-2": 200, "P-3": 300})
    assert len(table.compute(scheduler="threads")) == 6
