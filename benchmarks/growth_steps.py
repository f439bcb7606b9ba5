"""Times calls on trials of growing size, alone in its process.

    python growth_steps.py AXIS                              AXIS is one of SIZES

The answer is one line of JSON: the sizes, and for each call its seconds at each of them. A call
that edits is made once for each thing there, and its seconds are those of all of them.
"""

from __future__ import annotations

import gc
import json
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from functools import partial
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np

SIZES = {
    "frames": [500 * 2**step for step in range(7)],
    "markers": [16 * 2**step for step in range(7)],
    "analog channels": [16 * 2**step for step in range(7)],
    "metadata entries": [16 * 2**step for step in range(7)],
    "events": [16 * 2**step for step in range(7)],
    "platforms": [2**step for step in range(6)],
}
# What gives back all that is there at each edit would take minutes with more.
MOST_EDITED = 256
LEAST_SECONDS = 0.02
SEED = 11


def base(frames: int = 60, markers: int = 4, channels: int = 4) -> mox.Trial:
    """A trial with a bit of everything."""
    numbers = np.random.default_rng(SEED)
    trial = mox.Trial.new(frames=frames, rate=100.0, samples_per_frame=4)
    for number in range(markers):
        trial.markers[f"M{number:04}"] = numbers.normal(0.0, 500.0, (frames, 3))
    for number in range(channels):
        trial.analogs[f"EMG{number:04}"] = numbers.normal(0.0, 2.0, 4 * frames)
    return trial


def of_entries(count: int) -> mox.Trial:
    trial = base()
    trial.metadata["NOTES"] = {f"ENTRY{number:05}": [number, 1, 2] for number in range(count)}
    return trial


def of_events(count: int) -> mox.Trial:
    trial = base()
    for number in range(count):
        trial.events.add("Foot Strike", 0.4 * number + 0.1, ("Left", "Right")[number % 2])
    return trial


def of_platforms(count: int) -> mox.Trial:
    trial = base(frames=200, channels=6 * count)
    corners = np.array([[0.0, 0, 0], [400, 0, 0], [400, 600, 0], [0, 600, 0]])
    trial.metadata["FORCE_PLATFORM"] = {
        "USED": count,
        "TYPE": [2] * count,
        "ZERO": [0, 0],
        "CORNERS": corners + [[[500.0 * number, 0, 0]] for number in range(count)],
        "ORIGIN": np.tile([0.0, 0.0, -40.0], (count, 1)),
        "CHANNEL": 1 + np.arange(6 * count).reshape(count, 6),
    }
    # Reading is what makes platforms of parameters.
    with tempfile.TemporaryDirectory() as folder:
        trial.write(Path(folder) / "platforms.c3d")
        return mox.read(Path(folder) / "platforms.c3d")


MAKERS: dict[str, Callable[[int], mox.Trial]] = {
    "frames": lambda count: base(frames=count, markers=20, channels=16),
    "markers": lambda count: base(frames=100, markers=count),
    "analog channels": lambda count: base(frames=100, channels=count),
    "metadata entries": of_entries,
    "events": of_events,
    "platforms": of_platforms,
}

POSITIONS, SAMPLES = np.zeros((100, 3)), np.zeros(400)

# What edits the thing of a number, for the things that an axis counts.
EDITS: dict[str, dict[str, Callable[[mox.Trial, int], Any]]] = {
    "markers": {
        "moxSetPointLabel": lambda trial, k: _moxPY.moxSetPointLabel(trial, k, f"N{k:04}"),
        "moxSetPointValues": lambda trial, k: _moxPY.moxSetPointValues(trial, k, POSITIONS),
        "trial.markers.rename": lambda trial, k: trial.markers.rename({f"M{k:04}": f"N{k:04}"}),
        "trial.markers[old] = values": lambda trial, k: put(trial.markers, f"M{k:04}", POSITIONS),
        "trial.markers[new] = values": lambda trial, k: put(trial.markers, f"N{k:04}", POSITIONS),
        "del trial.markers[label]": lambda trial, k: trial.markers.__delitem__(f"M{k:04}"),
    },
    "analog channels": {
        "moxSetAnalogLabel": lambda trial, k: _moxPY.moxSetAnalogLabel(trial, k, f"N{k:04}"),
        "moxSetAnalogValues": lambda trial, k: _moxPY.moxSetAnalogValues(
            trial, k, SAMPLES[:, None]
        ),
        "trial.analogs.rename": lambda trial, k: trial.analogs.rename({f"EMG{k:04}": f"N{k:04}"}),
        "trial.analogs[old] = values": lambda trial, k: put(trial.analogs, f"EMG{k:04}", SAMPLES),
        "trial.analogs[new] = values": lambda trial, k: put(trial.analogs, f"N{k:04}", SAMPLES),
        "del trial.analogs[label]": lambda trial, k: trial.analogs.__delitem__(f"EMG{k:04}"),
    },
    "metadata entries": {
        "moxSetMetaDataValue": lambda trial, k: _moxPY.moxSetMetaDataValue(
            trial, "NOTES", f"ENTRY{k:05}", [k, 5, 6]
        ),
        "trial.metadata[group][old] = values": lambda trial, k: put(
            trial.metadata["NOTES"], f"ENTRY{k:05}", [k, 5, 6]
        ),
        "trial.metadata[group][new] = values": lambda trial, k: put(
            trial.metadata["NOTES"], f"NEW{k:05}", [k, 5, 6]
        ),
    },
    "events": {
        "moxAppendEvent": lambda trial, k: _moxPY.moxAppendEvent(
            trial, "Other", 0.4 * k + 0.2, "Left"
        ),
        "trial.events.add": lambda trial, k: trial.events.add("Other", 0.4 * k + 0.2, "Left"),
    },
}


def put(mapping: Any, name: str, value: Any) -> None:
    mapping[name] = value


def getters(trial: mox.Trial) -> Iterator[tuple[str, Callable[[], Any]]]:
    """The functions that ask for something with the trial alone."""
    for name in dir(_moxPY):
        if name.startswith("moxGet") and name not in ("moxGetVersion", "moxGetPluginList"):
            call = getattr(_moxPY, name)
            try:
                call(trial)
            except Exception:  # it wants more arguments, or something that this trial has not
                continue
            yield name, partial(call, trial)


def seconds_of(call: Callable[[], Any]) -> float:
    """The least of several times, which take LEAST_SECONDS together."""
    best, spent = float("inf"), 0.0
    while spent < LEAST_SECONDS:
        start = time.perf_counter()
        result = call()
        taken = time.perf_counter() - start
        del result
        best, spent = min(best, taken), spent + taken
    return best


def seconds_of_edits(trial: mox.Trial, edit: Callable[[mox.Trial, int], Any], count: int) -> float:
    start = time.perf_counter()
    for number in range(count):
        edit(trial, number)
    return time.perf_counter() - start


def measure(axis: str) -> dict[str, Any]:
    seconds: dict[str, list[float]] = {}

    def note(name: str, taken: float) -> None:
        seconds.setdefault(name, []).append(taken)

    gc.disable()  # its passes over all objects would fall on any call
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "grown.c3d"
        for count in SIZES[axis]:
            trial = MAKERS[axis](count)
            note("writing", seconds_of(lambda: trial.write(path)))  # noqa: B023
            note("reading", seconds_of(lambda: mox.read(path)))
            for name, call in getters(trial):
                note(name, seconds_of(call))
            for name, edit in EDITS.get(axis, {}).items() if count <= MOST_EDITED else ():
                note(f"{name}, each", seconds_of_edits(MAKERS[axis](count), edit, count))
            gc.collect()
    return {"sizes": SIZES[axis], "seconds": seconds}


if __name__ == "__main__":
    print(json.dumps(measure(sys.argv[1])))
