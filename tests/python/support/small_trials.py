"""Small acquisitions to edit: new ones and read ones that hold the same channels, and poor ones."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from support.c3d_bytes import Analog, Event
from support.read_c3d import read_c3d

Array = NDArray[np.float64]

REPOSITORY = Path(__file__).resolve().parents[3]

FRAMES, RATIO, RATE = 4, 2, 100.0
SAMPLES = FRAMES * RATIO

# Label -> type word, in the order of the indices.
POINTS = {
    "LASI": "marker",
    "LKneeAngle": "angle",
    "RASI": "marker",
    "LGRF": "force",
    "RGRF": "force",
    "LKneeMoment": "moment",
    "LKneePower": "power",
    "RKneePower": "power",
}
ANALOGS = ("Fx1", "EMG1", "Fz1")
GROUP_OF_TYPE = {
    "angle": "Angles", "force": "Forces", "marker": "Markers", "moment": "Moments",
    "power": "Powers",
}  # fmt: skip


def trajectory(number: int, frames: int = FRAMES) -> Array:
    """frames × 3 values that no other channel number has; exact as singles."""
    return 100.0 * (number + 1) + np.arange(3.0 * frames).reshape(frames, 3) / 4


def signal(number: int, samples: int = SAMPLES) -> Array:
    """samples × 1 values that no other channel number has; exact as singles."""
    return 1000.0 * (number + 1) + np.arange(float(samples)).reshape(samples, 1) / 4


def labels_of_type(word: str) -> list[str]:
    return [label for label, type_word in POINTS.items() if type_word == word]


def new_trial() -> Any:
    """A new acquisition with points of all types, analog channels, events and metadata."""
    acquisition = _moxPY.moxNewAcquisition(0, FRAMES, 0, RATIO)
    _moxPY.moxSetFrequency(acquisition, RATE)
    for number, (label, word) in enumerate(POINTS.items()):
        _moxPY.moxAppendPoint(acquisition, word, label, trajectory(number))
    for number, label in enumerate(ANALOGS):
        _moxPY.moxAppendAnalog(acquisition, label, signal(number))
    add_events_and_metadata(acquisition)
    return acquisition


def add_events_and_metadata(acquisition: Any) -> None:
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.5, "Left", "Ann", "heel", 1)
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 1.5, "Left")
    _moxPY.moxAppendEvent(acquisition, "Foot Off", 1.0, "Right")
    for entry, (kind, values) in ENTRIES.items():
        info = {"format": kind, "values": values}
        _moxPY.moxAppendMetaData(acquisition, "TRIAL", entry, info)


# Entries of the metadata group "TRIAL" that every trial but the poor ones has.
ENTRIES: dict[str, tuple[str, Any]] = {
    "COUNTS": ("Integer", [1, 2, 3]),
    "COUNT": ("Integer", 7),
    "BYTES": ("Byte", [4, 5]),
    "WEIGHTS": ("Real", [0.5, 1.5, 2.5, 3.5]),
    "WEIGHT": ("Real", 72.5),
    "NAMES": ("Char", ["hip", "knee"]),
    "NAME": ("Char", "gait"),
    "GRID": ("Real", [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]]),
}


def read_trial(folder: Path) -> Any:
    """The same from a file, whose raw sets and metadata are there too."""
    points = {label: trajectory(number) for number, label in enumerate(POINTS)}
    parameters = {
        f"POINT:{group.upper()}": labels_of_type(word)
        for word, group in GROUP_OF_TYPE.items()
        if word != "marker"
    }
    parameters |= {f"TRIAL:{entry}": _parameter(*content) for entry, content in ENTRIES.items()}
    parameters |= {"ANALYSIS:UNITS": ["m", "s"], "ANALYSIS:VALUES": np.array([1.25, 0.5])}
    return read_c3d(
        folder,
        points,
        rate=RATE,
        analogs=[
            Analog(label, signal(number).ravel(), units="V") for number, label in enumerate(ANALOGS)
        ],
        samples_per_frame=RATIO,
        events=[
            Event("Left", "Foot Strike", 0.5, "Ann", "heel", 1),
            Event("Left", "Foot Strike", 1.5, "Ann", "", 1),
            Event("Right", "Foot Off", 1.0, "Ann", "", 2),
        ],
        parameters=parameters,
    )


def _parameter(kind: str, values: Any) -> Any:
    if kind == "Char" or np.isscalar(values):
        return values
    return np.array(values, {"Integer": np.int16, "Byte": np.int8, "Real": np.float32}[kind])


def example_trial() -> Any:
    """The gait trial that comes with the project."""
    return _moxPY.moxReadAcquisition(str(REPOSITORY / "examples" / "gait_trial.c3d"))


def read_without_analogs(folder: Path) -> Any:
    return read_c3d(folder, {"LASI": trajectory(0), "RASI": trajectory(1)}, rate=RATE)


def read_without_points(folder: Path) -> Any:
    analogs = [Analog("Fx1", signal(0).ravel())]
    return read_c3d(folder, analogs=analogs, samples_per_frame=RATIO, frames=FRAMES, rate=RATE)


def new_without_analogs(_: Path) -> Any:
    acquisition = _moxPY.moxNewAcquisition(2, FRAMES)
    _moxPY.moxSetFrequency(acquisition, RATE)
    return acquisition


def new_without_points(_: Path) -> Any:
    acquisition = _moxPY.moxNewAcquisition(0, FRAMES, 2, RATIO)
    _moxPY.moxSetFrequency(acquisition, RATE)
    return acquisition


def new_without_frames(_: Path) -> Any:
    return _moxPY.moxNewAcquisition(2, 0, 2, RATIO)


def new_and_empty(_: Path) -> Any:
    return _moxPY.moxNewAcquisition()


RICH: dict[str, Callable[[Path], Any]] = {"new": lambda _: new_trial(), "read": read_trial}
KINDS: dict[str, Callable[[Path], Any]] = RICH | {
    "example": lambda _: example_trial(),
    "new without analogs": new_without_analogs,
    "read without analogs": read_without_analogs,
    "new without points": new_without_points,
    "read without points": read_without_points,
    "new without frames": new_without_frames,
    "new and empty": new_and_empty,
}
