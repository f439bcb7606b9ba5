"""Files of every processor and storage that hold something of everything."""

from __future__ import annotations

from typing import Any

import numpy as np
from support.c3d_bytes import (
    Analog,
    C3DFile,
    Event,
    HeaderEvent,
    Platform,
    byte,
    real,
    text,
)

FRAMES, RATIO = 12, 3
SAMPLES = FRAMES * RATIO
FORMATS = [
    (processor, storage)
    for processor in ("intel", "dec", "mips")
    for storage in ("integer", "real")
]
LABELS = ["LASI", "LKneeAngle", "RASI", "LGRF", "LKneeMoment", "LKneePower", "Ünit"]
CORNERS = np.float32([[[400, 600, 0], [0, 600, 0], [0, 0, 0], [400, 0, 0]]])


def track(number: int) -> Any:
    """Multiples of a quarter, which every format holds; a gap in the middle."""
    positions = 100.0 * number + np.arange(3.0 * FRAMES).reshape(FRAMES, 3) / 4 - 50
    positions[4 + number % 3 : 6 + number % 3] = np.nan
    return positions


def words(number: int) -> Any:
    """Residuals and cameras of `track(number)`."""
    kept = 256 * ((np.arange(FRAMES) + number) % 128) + (number + np.arange(FRAMES)) % 256
    kept[np.isnan(track(number)).any(axis=1)] = -1
    return kept


def records(number: int) -> Any:
    """(frame, 4) as a file holds them: what was not seen is at 0, 0, 0."""
    return np.column_stack([np.nan_to_num(track(number)), words(number)])


def rotations(lost: float) -> Any:
    """Two transforms a frame, one of them lost."""
    angles = np.linspace(0, 1, 2 * FRAMES)
    transforms = np.tile(np.eye(4), (2 * FRAMES, 1, 1))
    transforms[:, 0, 0] = transforms[:, 1, 1] = np.float32(np.cos(angles))
    transforms[:, :3, 3] = np.arange(6.0 * FRAMES).reshape(-1, 3)
    samples = np.column_stack([transforms.transpose(0, 2, 1).reshape(-1, 16), np.zeros(2 * FRAMES)])
    samples[5] = [*[lost] * 16, -1.0]
    return samples


def rich_file(processor: str, storage: str, **changes: Any) -> C3DFile:
    counts = np.arange(SAMPLES) * 7 - 60
    analogs = [
        Analog("Fx1", counts, scale=0.5, offset=3, units="N", description="plate 1"),
        Analog("Fy1", -counts, scale=-0.25, offset=-3, units="N"),
        Analog("Fz1", counts + 100, scale=0.125, offset=0, units="N"),
        *[Analog(name, counts + n, units="Nmm") for n, name in enumerate(("Mx1", "My1", "Mz1"))],
        Analog("EMG", 2 * counts, scale=0.001, units="mV", description="soleus"),
    ]
    parameters = {
        "POINT:ANGLES": ["LKneeAngle"],
        "POINT:FORCES": ["LGRF"],
        "POINT:MOMENTS": ["LKneeMoment"],
        "POINT:POWERS": ["LKneePower"],
        "POINT:ANGLE_UNITS": "deg",
        "POINT:POWER_UNITS": text("POWER_UNITS", ["W/kg"], description="per body mass"),
        "POINT:X_SCREEN": text("X_SCREEN", "+X", locked=True),
        "MANUFACTURER:COMPANY": "Nobody",
        "MANUFACTURER:VERSION": np.array([1, 2, 3], np.int16),
        "PROCESSING:Bodymass": real("Bodymass", 72.5, description="kg"),
        "MINE:CUBE": real("CUBE", np.arange(24.0).reshape(2, 3, 4), locked=True),
        "MINE:BYTES": byte("BYTES", np.array([1, -2, 127], np.int8)),
        "MINE:ONE_BYTE": byte("ONE_BYTE", 7),
        "MINE:SMALL": np.array([-1, 32767, -32768], np.int16),
        "MINE:TABLE": text("TABLE", ["a", "bc", "", "d"], width=5),
        "MINE:NOTHING": text("NOTHING", [], width=6),
    }
    standard: dict[str, Any] = {
        "points": {label: records(number) for number, label in enumerate(LABELS)},
        "point_descriptions": [f"point {number}" for number in range(len(LABELS))],
        "processor": processor,
        "storage": storage,
        "scale": 0.25,
        "rate": 120.0,
        "first_frame": 61,
        "frame_counts": ["integer", "trial"],
        "analogs": analogs,
        "samples_per_frame": RATIO,
        "gen_scale": 0.5,
        "analog_format": "SIGNED",
        "bits": 12,
        "platforms": [Platform(corners=CORNERS[0], origin=(1.0, -2.0, -40.0))],
        "zero": (1, 5),
        "events": [
            Event("Left", "Foot Strike", 0.55, "Ann", "heel", 1, 1),
            Event("Right", "Foot Off", 60.5, "Ann", "", 2),
            Event("Left", "Foot Strike", 0.5625, "Bob", "toe", 1),
        ],
        "header_events": [HeaderEvent("LHS1", 0.025), HeaderEvent("RTO1", 0.0625, 0)],
        "header": {"max_gap": 10},
    }
    if storage == "real":
        lost = 0.0 if processor == "dec" else np.nan  # its reals have no NaN
        segments = {"Pelvis": rotations(lost), "Thorax": rotations(lost)[::-1]}
        standard |= {"rotations": segments, "rotation_ratio": 2}
        parameters["ROTATION:DESCRIPTIONS"] = ["pelvis", "thorax"]
    parameters |= changes.pop("parameters", {})
    return C3DFile(**{**standard, **changes}, parameters=parameters)
