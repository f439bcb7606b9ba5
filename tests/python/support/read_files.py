"""Acquisitions that were read from files."""

from __future__ import annotations

import tempfile
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np

from .c3d_bytes import Analog, c3d_bytes


def read_bytes(content: bytes) -> Any:
    """The acquisition of a file with this content."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "trial.c3d"
        path.write_bytes(content)
        return _moxPY.moxReadAcquisition(str(path))


def read_trial(**options: Any) -> Any:
    """Two markers, LASI and RASI, and the angle LHip of 100 frames at 100 Hz from frame 1 on, and
    two analog channels of 3 samples a frame; `options` as for c3d_bytes."""
    frames = np.arange(100.0)
    points = {
        name: np.column_stack([frames + place, 2 * frames, frames - place])
        for place, name in enumerate(("LASI", "RASI", "LHip"))
    }
    samples = np.arange(300.0)
    analogs = [Analog("Fz1", samples, scale=1.0), Analog("EMG1", -samples, scale=1.0)]
    described = {"points": points, "analogs": analogs, "rate": 100.0}
    parameters = {"POINT:ANGLES": ["LHip"], **options.pop("parameters", {})}
    return read_bytes(c3d_bytes(**{**described, **options}, parameters=parameters))
