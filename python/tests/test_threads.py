# SPDX-License-Identifier: MIT
"""Others go on while a long call runs: it has let go of the interpreter's lock."""

import functools
import sys
import threading
import time

import numpy as np
import pytest

import vesk
from conftest import needs_page
from vesk import _vesk


@pytest.fixture(scope="module")
def long(tmp_path_factory):
    path = tmp_path_factory.mktemp("threads") / "long.dat"
    with vesk.Writer(path) as file:
        # 20 mm apart in rows of 100, 150 mm long: each meets those of its row.
        places = np.arange(20000)
        start = np.stack([places % 100 * 20, places // 100 * 200, places * 0], axis=1)
        file.cylinders(start, start + [150, 0, 0], 10 + places / 1000, header="P-1")
    return path


class Beside:
    """A thread that counts whenever it gets the lock, which nobody is made to give away."""

    def __enter__(self):
        self.count = 0
        self.runs = True
        self.interval = sys.getswitchinterval()
        self.thread = threading.Thread(target=self.counts)
        self.thread.start()
        sys.setswitchinterval(1000)
        return self

    def __exit__(self, *_):
        sys.setswitchinterval(self.interval)
        self.runs = False
        self.thread.join()

    def counts(self):
        while self.runs:
            self.count += 1
            time.sleep(0)

    def watched(self, call, seen):
        """The call, that puts into `seen` what was counted meanwhile."""

        @functools.wraps(call)
        def watching(*arguments):
            before = self.count
            result = call(*arguments)
            seen.append(self.count - before)
            return result

        return watching


CALLS = {
    "volumes": lambda model, path: model.volume(),
    "extents": lambda model, path: model.extents(),
    "select": lambda model, path: model.select(near=(0, 0, 0, 1e6)),
    "take": lambda model, path: model.select(near=(0, 0, 0, 1e6)),
    "move": lambda model, path: model.rotate("z", 30),
    "measures": lambda model, path: model.measures(),
    "check": lambda model, path: model.check(joints=True),
    "clash": lambda model, path: model.clash(between="elements"),
    "diff": lambda model, path: model.diff(model),
    "mesh": lambda model, path: model.mesh(tolerance=0.1),
    "to_glb": lambda model, path: model.to_glb(path / "x.glb"),
    "draw": lambda model, path: model.draw(path / "x.png"),
    "measure": lambda model, path: model.measure(by="size"),
    "page": lambda model, path: model.to_html(path / "x.html"),
}


def needed(name):
    marks = [needs_page] if name == "page" else []
    return pytest.param(name, marks=marks)


@pytest.mark.parametrize("name", [needed(name) for name in CALLS])
def test_others_go_on_meanwhile(name, long, tmp_path, monkeypatch):
    model = vesk.read(long)
    seen = []
    with Beside() as beside:
        monkeypatch.setattr(_vesk, name, beside.watched(getattr(_vesk, name), seen))
        # Short calls may be over before a busy machine wakes the thread.
        for again in range(50):
            folder = tmp_path / str(again)
            folder.mkdir()
            CALLS[name](model, folder)
            if any(seen):
                break
    assert any(seen), seen


@pytest.mark.parametrize("name, method", [("Reader", "next"), ("Writer", "plant")])
def test_others_go_on_while_files_are_read_and_written(name, method, long, tmp_path, monkeypatch):
    model = vesk.read(long)
    seen = []

    class Watched(getattr(_vesk, name)):
        pass

    with Beside() as beside:
        original = getattr(Watched, method)
        setattr(Watched, method, beside.watched(original, seen))
        monkeypatch.setattr(_vesk, name, Watched)
        for _ in range(50):
            vesk.write(tmp_path / "again.dat", vesk.read(long) if name == "Reader" else model)
            if any(seen):
                break
    assert any(seen), seen
