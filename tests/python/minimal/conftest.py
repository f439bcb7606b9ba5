"""Files for the tests that show that a system is fit: they need the installed packages alone."""

from __future__ import annotations

from pathlib import Path

import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import Analog, Event, c3d_bytes

FRAMES, RATIO = 5, 4


@pytest.fixture
def points() -> dict[str, np.ndarray]:
    """Two trajectories, exact as singles; the second has a gap."""
    whole = np.arange(3.0 * FRAMES).reshape(FRAMES, 3) / 4
    gappy = whole + 100
    gappy[2] = np.nan
    return {"LASI": whole, "RASI": gappy}


@pytest.fixture
def walk(tmp_path: Path, points: dict[str, np.ndarray]) -> Path:
    """A small file with points, an analog channel and an event."""
    path = tmp_path / "walk.c3d"
    path.write_bytes(
        c3d_bytes(
            points,
            analogs=[Analog("Fz1", np.arange(float(FRAMES * RATIO)), scale=0.5, units="N")],
            samples_per_frame=RATIO,
            events=[Event("Left", "Foot Strike", 0.02)],
        )
    )
    return path


@pytest.fixture
def trial(walk: Path) -> mox.Trial:
    return mox.read(walk)
