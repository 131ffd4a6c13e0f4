# SPDX-License-Identifier: MIT
"""What the tests share: the golden files and a small plant."""

import pathlib

import pytest
from hypothesis import settings

import vesk

settings.register_profile("here", database=None, deadline=None)
settings.load_profile("here")

ROOT = pathlib.Path(__file__).resolve().parents[2]
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
