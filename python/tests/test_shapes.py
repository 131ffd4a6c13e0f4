# SPDX-License-Identifier: MIT
import os
import struct
import subprocess

import numpy as np
import pytest

import vesk
from conftest import GOLDEN, ends_by_interrupt

TOOL = os.environ.get("VESK_TOOL")
needs_tool = pytest.mark.skipif(not TOOL, reason="VESK_TOOL names no tool")


@pytest.fixture
def plant(tmp_path):
    """A box of 1 x 2 x 3, a line, a pipe of radius 10 and length 50, a triangle."""
    with vesk.Writer(tmp_path / "plant.dat") as file:
        file.boxes([0, 0, 0], [1, 0, 0], [0, 2, 0], [0, 0, 3])
        file.polylines([[0, 0, 0], [1, 0, 0]], [0, 2])
        file.cylinders([10, 0, 0], [10, 0, 50], 20)
        file.polygons([[0, 0, 9], [4, 0, 9], [0, 4, 9]], [0, 3])
    return vesk.read(tmp_path / "plant.dat", strict=True)


def volume_of(mesh, element):
    # The sum of the tetrahedra from the origin to each triangle.
    corners = mesh.vertices[mesh.triangles[mesh.elements == element]]
    return np.linalg.det(corners).sum() / 6


def test_a_mesh_tells_its_elements(plant):
    mesh = plant.mesh()
    assert np.unique(mesh.elements).tolist() == [0, 2, 3]  # all but the line
    assert (mesh.elements == 3).sum() == 1
    assert mesh.triangles.min() == 0 and mesh.triangles.max() == len(mesh.vertices) - 1
    assert mesh.missing == ()


def test_a_box_is_twelve_triangles_of_its_volume(plant):
    mesh = plant.mesh()
    (box,) = np.flatnonzero(plant.order == vesk.Boxes.code)
    assert (mesh.elements == box).sum() == 12
    assert volume_of(mesh, box) == pytest.approx(6, rel=1e-12)


@pytest.mark.parametrize("quality, pieces", [("draft", 16), ("normal", 32), ("fine", 64)])
def test_a_cylinder_is_a_prism_of_so_many_sides(plant, quality, pieces):
    (pipe,) = np.flatnonzero(plant.order == vesk.Cylinders.code)
    area = pieces / 2 * 10**2 * np.sin(2 * np.pi / pieces)  # of a regular polygon
    assert volume_of(plant.mesh(quality=quality), pipe) == pytest.approx(area * 50, rel=1e-9)


def test_a_tolerance_bounds_what_is_cut_off(plant):
    (pipe,) = np.flatnonzero(plant.order == vesk.Cylinders.code)
    volume = volume_of(plant.mesh(tolerance=0.01), pipe)
    # Inside the true solid, and around one that is 0.01 thinner.
    assert np.pi * 9.99**2 * 50 <= volume <= np.pi * 10**2 * 50


def test_what_has_no_surface_is_named(tmp_path):
    with vesk.Writer(tmp_path / "flat.dat") as file:
        file.cylinders([0, 0, 0], [[0, 0, 50], [0, 0, 0]], 20)  # the second has no length
    model = vesk.read(tmp_path / "flat.dat")
    assert [each.element for each in model.mesh().missing] == [1]
    with pytest.warns(UserWarning, match="flat.dat:2: ") as caught:
        model.draw(tmp_path / "flat.png", pixels=(64, 64))
    assert caught[0].filename == __file__
    assert (tmp_path / "flat.png").exists()


@needs_tool
@pytest.mark.filterwarnings("ignore:an element can't be shown")
@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_a_glb_is_that_of_the_tool(path, tmp_path):
    ours, theirs = tmp_path / "ours.glb", tmp_path / "theirs.glb"
    vesk.read(path).to_glb(ours)
    subprocess.run([TOOL, "export", "-q", path, "-o", theirs], check=False, timeout=60)
    assert ours.read_bytes() == theirs.read_bytes()


@needs_tool
@pytest.mark.parametrize(
    "words, options",
    [
        ({"tolerance": 0.1}, ["--tolerance", "0.1"]),
        ({"quality": "draft", "unit": 25.4}, ["--quality", "draft", "--unit", "25.4"]),
        ({"grouping": "instances"}, ["--instances"]),
        ({"grouping": "merged"}, ["--merge"]),
    ],
)
def test_a_glb_has_the_options_of_the_tool(plant, words, options, tmp_path):
    plant.to_glb(tmp_path / "ours.glb", **words)
    command = [TOOL, "export", *options, *plant.files, "-o", tmp_path / "theirs.glb"]
    subprocess.run(command, check=True, timeout=60)
    assert (tmp_path / "ours.glb").read_bytes() == (tmp_path / "theirs.glb").read_bytes()


@needs_tool
@pytest.mark.parametrize("ending", ["svg", "png"])
@pytest.mark.parametrize(
    "words, options",
    [
        ({}, []),
        ({"view": "top", "plain": True}, ["--from", "top", "--plain"]),
        ({"background": "#102030", "faces": False}, ["--background", "#102030", "--no-faces"]),
    ],
)
def test_a_drawing_is_that_of_the_tool(plant, ending, words, options, tmp_path):
    theirs = tmp_path / f"theirs.{ending}"
    command = [TOOL, "view", *plant.files, "--pixels", "320x200", *options, "-o", theirs]
    subprocess.run(command, check=True, timeout=60)
    plant.draw(tmp_path / f"ours.{ending}", pixels=(320, 200), **words)
    assert (tmp_path / f"ours.{ending}").read_bytes() == theirs.read_bytes()
    assert plant.draw(format=ending, pixels=(320, 200), **words) == theirs.read_bytes()


def test_a_picture_has_its_pixels(plant):
    png = plant.draw(format="png", pixels=(64, 48))
    assert png[:8] == b"\x89PNG\r\n\x1a\n" and struct.unpack(">II", png[16:24]) == (64, 48)


@pytest.mark.parametrize(
    "call, text",
    [
        (lambda m, p: m.mesh(quality="best"), "draft, normal or fine"),
        (lambda m, p: m.mesh(tolerance=0), "no length above 0"),
        (lambda m, p: m.mesh(tolerance=float("nan")), "no length above 0"),
        (lambda m, p: m.to_glb(p / "x.glb", grouping="all"), "elements, instances or merged"),
        (lambda m, p: m.to_glb(p / "x.glb", unit=-1), "no length above 0"),
        (lambda m, p: m.draw(p / "x.gif"), "x.gif: a drawing is svg or png"),
        (lambda m, p: m.draw(p / "x.svg", view="below"), "iso, top, bottom"),
        (lambda m, p: m.draw(p / "x.svg", pixels=(8, 100)), "8 x 100"),
        (lambda m, p: m.draw(p / "x.svg", background="reddish"), "red, green and blue"),
    ],
)
def test_words_that_mean_nothing_are_refused(plant, call, text, tmp_path):
    with pytest.raises(ValueError, match=text):
        call(plant, tmp_path)
    assert [each.name for each in tmp_path.iterdir()] == ["plant.dat"]


@pytest.mark.parametrize("call", ["to_glb", "draw"])
def test_what_the_system_refuses_names_the_path(plant, call, tmp_path):
    path = str(tmp_path / "none" / "x.svg")
    with pytest.raises(FileNotFoundError) as caught:
        getattr(plant, call)(path)
    assert caught.value.filename == path
    with pytest.raises(IsADirectoryError):
        getattr(plant, call)(tmp_path, **({"format": "svg"} if call == "draw" else {}))


@pytest.mark.skipif(not os.path.exists("/dev/full"), reason="no /dev/full")
def test_a_full_disk_raises(plant):
    with pytest.raises(OSError) as caught:
        plant.to_glb("/dev/full")
    assert caught.value.errno == 28 and caught.value.filename == "/dev/full"


@pytest.mark.parametrize(
    "call", [lambda m, p: m.mesh(tolerance=0.01), lambda m, p: m.to_glb(p, tolerance=0.01)]
)
def test_an_interrupt_ends_a_long_call_and_leaves_no_file(call, tmp_path):
    with vesk.Writer(tmp_path / "long.dat") as file:
        # No two alike, so that no mesh is shared.
        file.tori([0, 0, 0], [100, 0, 0], [0, 100, 0], 1 + np.arange(20000) / 1000)
    model = vesk.read(tmp_path / "long.dat")
    assert ends_by_interrupt(lambda: call(model, tmp_path / "x.glb"))
    assert [each.name for each in tmp_path.iterdir()] == ["long.dat"]
