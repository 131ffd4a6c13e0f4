# SPDX-License-Identifier: MIT
"""What the tests share: the golden files and a small plant."""

import os
import pathlib
import signal
import threading

import pytest
from hypothesis import settings

import vesk

settings.register_profile("here", database=None, deadline=None)
settings.load_profile("here")

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = pathlib.Path(vesk.__file__).with_name("page.html")
needs_page = pytest.mark.skipif(not PAGE.exists(), reason="built without the page of the viewer")
GOLDEN = sorted((ROOT / "tests" / "golden").glob("*.dat"))


@pytest.fixture
def small(tmp_path):
    """Two pipes of one header and a segment of another, as a file."""
    path = tmp_path / "small.dat"
    with vesk.Writer(path) as file:
        file.cylinders(
            [[0, 0, 0], [0, 0, 500]],
            [[0, 0, 500], [0, 300, 500]],
            [219.1, 168.3],
            header=("P-1001", "01"),
            number=[1, 2],
        )
        file.polylines([[0, 0, 0], [0, 0, 500]], [0, 2], header="AXIS", number=7)
    return path


def ends_by_interrupt(call):
    """Whether a SIGINT a little later ends the call, in a process of its own."""
    child = os.fork()
    if child == 0:
        # What runs in the background of a shell begins with the signal ignored.
        signal.signal(signal.SIGINT, signal.default_int_handler)
        signal.alarm(300)
        threading.Timer(0.3, os.kill, (os.getpid(), signal.SIGINT)).start()
        try:
            call()
        except KeyboardInterrupt:
            os._exit(0)
        os._exit(1)
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
