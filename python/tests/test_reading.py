# SPDX-License-Identifier: MIT
import io
import pickle
import threading

import numpy as np
import pytest

import vesk
from conftest import GOLDEN, ends_by_interrupt


def test_a_file_gives_arrays(small):
    model = vesk.read(small)
    assert model.cylinders.start.tolist() == [[0, 0, 0], [0, 0, 500]]
    assert model.cylinders.end.tolist() == [[0, 0, 500], [0, 300, 500]]
    assert model.cylinders.diameter.tolist() == [219.1, 168.3]
    assert model.cylinders.length.tolist() == [500, 300]
    assert model.headers.names[model.cylinders.header].tolist() == ["P-1001 01"] * 2
    assert model.cylinders.counter.tolist() == [1, 2]
    assert model.polylines.offsets.tolist() == [0, 2]
    assert model.polylines.points.tolist() == [[0, 0, 0], [0, 0, 500]]
    assert model.order.tolist() == [1, 1, 7]
    assert model.style == "token" and not model.faults


def test_lines_are_those_of_the_file(small):
    model = vesk.read(small)
    lines = small.read_text().splitlines()
    for row, line in enumerate(model.cylinders.line):
        assert lines[line - 1].startswith("P-1001"), row


@pytest.mark.parametrize(
    "source",
    [
        lambda path: path,
        lambda path: str(path),
        lambda path: path.read_bytes(),
        lambda path: io.BytesIO(path.read_bytes()),
        lambda path: path.parent,
        lambda path: [path],
    ],
    ids=["path", "text", "bytes", "file object", "folder", "several"],
)
def test_wherever_it_comes_from_it_is_the_same(small, source):
    model = vesk.read(source(small))
    assert len(model) == 3 and model.cylinders.diameter.tolist() == [219.1, 168.3]


def test_several_files_are_told_apart(small):
    model = vesk.read([small, small])
    assert model.files == (str(small), str(small))
    assert model.cylinders.file.tolist() == [0, 0, 1, 1]


def test_a_folder_is_its_files_and_those_below_by_name(small):
    below = small.parent / "a"
    below.mkdir()
    (below / "z.dat").write_bytes(small.read_bytes())
    (small.parent / "notes.txt").write_text("no records")
    assert vesk.read(small.parent).files == (str(below / "z.dat"), str(small))


def test_faults_stand_beside_the_data(small):
    text = small.read_text().replace("219.1", "219,1x")
    small.write_text(text)
    model = vesk.read(small)
    assert len(model) == 2
    (fault,) = model.faults
    assert fault.file == str(small) and fault.line == 1 and fault.code.startswith("V")


def test_strict_raises_the_first_fault(small):
    small.write_text(small.read_text().replace("219.1", "219,1x"))
    with pytest.raises(vesk.ReadError, match="small.dat:1:") as caught:
        vesk.read(small, strict=True)
    assert caught.value.fault.line == 1


@pytest.mark.parametrize(
    "make, error",
    [
        (lambda folder: folder / "none.dat", FileNotFoundError),
        (lambda folder: folder, FileNotFoundError),  # a folder without files
        (lambda folder: 5, TypeError),
        (lambda folder: io.StringIO("text"), TypeError),
    ],
    ids=["no file", "no file in the folder", "a number", "a text file"],
)
def test_what_is_no_input_says_so(tmp_path, make, error):
    with pytest.raises(error):
        vesk.read(make(tmp_path))


def test_an_empty_input_is_a_model_without_elements():
    model = vesk.read(b"")
    assert len(model) == 0 and model.cylinders.start.shape == (0, 3)


@pytest.mark.parametrize("chunk", [1, 2, 3, 100])
def test_scan_gives_all_of_it_in_order(small, chunk):
    models = list(vesk.scan([small, small], chunk=chunk))
    assert all(len(each) <= chunk for each in models)
    order = np.concatenate([each.order for each in models])
    assert order.tolist() == [1, 1, 7, 1, 1, 7]


@pytest.mark.parametrize("path", GOLDEN, ids=lambda path: path.name)
def test_a_model_pickles(path):
    model = vesk.read(path)
    again = pickle.loads(pickle.dumps(model))
    assert again.headers == model.headers and again.files == model.files
    for one, other in zip(model.kinds(), again.kinds()):
        for name, column in one.columns().items():
            assert np.array_equal(column, other.columns()[name], equal_nan=column.dtype.kind == "f")


def test_ctrl_c_ends_a_long_read():
    class Endless(io.RawIOBase):
        def read(self, size=-1):
            return b"P-1     01001    000ft 1,\n" * (size // 26)

    def reads():
        for _ in vesk.scan(Endless(), chunk=10**6):
            pass

    assert ends_by_interrupt(reads)


def test_two_threads_read_at_a_time(small):
    counts = []
    threads = [threading.Thread(target=lambda: counts.append(len(vesk.read(small)))) for _ in "ab"]
    for each in threads:
        each.start()
    for each in threads:
        each.join()
    assert counts == [3, 3]
