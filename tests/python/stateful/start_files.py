"""The files that random editing starts from."""

from __future__ import annotations

from typing import Any

import numpy as np
from support.c3d_bytes import Analog, C3DFile, Event, byte, integer, real

TYPES = {"LHip": "angle", "LFoot": "force", "LKnee": "moment", "LAnkle": "power"}
UNITS = {"marker": "mm", "angle": "rad", "force": "N", "moment": "Nmm", "power": "W"}


def track(start: float, frames: int = 4) -> Any:
    """A trajectory whose numbers single precision holds."""
    return start + np.arange(3 * frames, dtype=np.float64).reshape(frames, 3) / 4


def file_with_everything() -> C3DFile:
    """All five types, gaps, residuals, equal and missing labels, events, own metadata."""
    gaps = track(70)
    gaps[1:3] = np.nan
    points = [
        ("LASI", track(0)), ("LHip", track(10)), ("LASI", gaps), ("LFoot", track(30)),
        ("", track(40)), ("LKnee", track(50)), ("LAnkle", track(60)), ("A/B", track(80)),
    ]  # fmt: skip
    return C3DFile(
        points,
        rate=100.0,
        first_frame=5,
        residuals={0: [256 * 3 + 5, 0, 7, -1]},
        point_descriptions=["left", "", "again", "", "", "", "", "slash"],
        analogs=[
            Analog("Fz1", np.arange(8), scale=0.5, offset=2, units="N", description="up"),
            Analog("EMG", np.arange(8) * 3, units="V"),
            Analog("EMG", np.arange(8) - 5),
        ],
        samples_per_frame=2,
        bits=16,
        events=[
            Event("Left", "Foot Strike", 0.25, "Ann", "heel", icon=1),
            Event("Right", "Foot_Off", 61.5, "Ann", "", icon=2),
            Event("Left", "Foot Strike", 0.5, "Ann", "toe", icon=1),
        ],
        parameters={
            "POINT:ANGLES": ["LHip"],
            "POINT:FORCES": ["LFoot"],
            "POINT:MOMENTS": ["LKnee"],
            "POINT:POWERS": ["LAnkle"],
            "POINT:ANGLE_UNITS": ["rad"],
            "MINE:NOTE": "by hand",
            "MINE:NUMBERS": real("NUMBERS", np.arange(24).reshape(2, 4, 3) / 8),
            "MINE:BYTES": byte("BYTES", np.array([1, -2, 3], dtype=np.int8)),
            "MINE:BYTE": byte("BYTE", np.array([7], dtype=np.int8)),
            "MINE:ONE": integer("ONE", [7]),
            "ANALYSIS:UNITS": ["m/s", "%"],
        },
    )


def file_without_analogs() -> C3DFile:
    """Markers alone."""
    return C3DFile({"LASI": track(0, 3), "RASI": track(10, 3)}, rate=50.0)


def file_without_points() -> C3DFile:
    """Analog channels alone."""
    channels = [Analog("EMG1", np.arange(6), units="V"), Analog("EMG2", np.arange(6) - 3)]
    return C3DFile(analogs=channels, samples_per_frame=2, rate=50.0)
