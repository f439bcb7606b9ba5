"""Folders of trials."""

from __future__ import annotations

from pathlib import Path

import pytest
from support.c3d_bytes import c3d_bytes
from support.read_c3d import track

COUNT = 12


@pytest.fixture
def folder(tmp_path: Path) -> Path:
    """Twelve files; the number in the name is that of the frames."""
    trials = tmp_path / "trials"
    trials.mkdir()
    for number in range(1, COUNT + 1):
        content = c3d_bytes({"LASI": track(number, number)})
        (trials / f"walk_{number:02}.c3d").write_bytes(content)
    return trials
