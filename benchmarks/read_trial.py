"""Reads a file with one reader, alone in its process, and says what that cost.

    python read_trial.py READER FILE.c3d REPETITIONS         READER is moxPY, ezc3d or c3d

The answer is one line of JSON: the seconds of each repetition, from the path to both matrices; the
peak memory after the first reading and with both matrices; the fingerprints of the last ones.
Starting the interpreter and importing the reader is not counted.
"""

from __future__ import annotations

import importlib
import json
import re
import sys
import time
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path
from typing import Any

import numpy as np
from column_sums import Array, column_sums
from numpy.typing import NDArray

Matrices = tuple[NDArray[Any], NDArray[Any]]


@dataclass(frozen=True)
class Reader:
    """Two steps, as a user of the reader would write them, and what the check needs afterwards."""

    module: str
    read: Callable[[Any, str], Any]
    matrices: Callable[[Any, Any], Matrices]
    as_rows: Callable[[NDArray[Any], NDArray[Any]], Matrices]


def matrices_of_c3d(_: Any, reader: Any) -> Matrices:
    """Points (frames, points, 5) and analogs (samples, channels), filled frame by frame."""
    # Its counts are 16-bit numbers, which overflow when multiplied.
    frames, ratio = int(reader.frame_count), int(reader.analog_per_frame)
    points = np.empty((frames, reader.point_used, 5), dtype=np.float32)
    analogs = np.empty((frames * ratio, reader.analog_used))
    for row, (_number, frame, samples) in enumerate(reader.read_frames(copy=False)):
        points[row] = frame
        analogs[row * ratio : (row + 1) * ratio] = samples.T
    return points, analogs


def rows_of_c3d(points: NDArray[Any], analogs: NDArray[Any]) -> Matrices:
    positions = np.where(points[..., 3:4] < 0, np.nan, points[..., :3])
    return positions.reshape(len(points), -1), analogs


def rows_of_ezc3d(points: NDArray[Any], analogs: NDArray[Any]) -> Matrices:
    """From (4, points, frames) and (1, channels, samples)."""
    return points[:3].transpose(2, 1, 0).reshape(points.shape[2], -1), analogs[0].T


READERS = {
    "moxPY": Reader(
        "_moxPY",
        lambda module, path: module.moxReadAcquisition(path),
        lambda module, read: (module.moxGetPointsValues(read), module.moxGetAnalogsValues(read)),
        lambda points, analogs: (points, analogs),
    ),
    "ezc3d": Reader(
        "ezc3d",
        lambda module, path: module.c3d(path),
        lambda _, read: (read["data"]["points"], read["data"]["analogs"]),
        rows_of_ezc3d,
    ),
    "c3d": Reader(
        "c3d",
        lambda module, path: module.Reader(Path(path).open("rb")),  # noqa: SIM115 read later
        matrices_of_c3d,
        rows_of_c3d,
    ),
}


def peak_memory() -> int:
    """Highest memory use of the process so far, in bytes."""
    found = re.search(r"VmHWM:\s+(\d+) kB", Path("/proc/self/status").read_text())
    assert found
    return 1024 * int(found[1])


def reset_peak_memory() -> None:
    """Lets the peak start again from what is in use now."""
    Path("/proc/self/clear_refs").write_text("5")


def sums_of(points: Array, analogs: Array) -> dict[str, Any]:
    return {"points": column_sums(points), "analogs": column_sums(analogs)}


def measure(reader: Reader, path: str, repetitions: int) -> dict[str, Any]:
    module = importlib.import_module(reader.module)
    seconds: list[float] = []
    peaks: dict[str, int] = {}
    read = points = analogs = None
    reset_peak_memory()
    before = peak_memory()
    for repetition in range(repetitions):
        del read, points, analogs
        start = time.perf_counter()
        read = reader.read(module, path)
        if repetition == 0:
            peaks["peak_read"] = peak_memory() - before
        points, analogs = reader.matrices(module, read)
        seconds.append(time.perf_counter() - start)
        if repetition == 0:
            peaks["peak"] = peak_memory() - before
    assert points is not None
    assert analogs is not None
    sums = sums_of(*reader.as_rows(points, analogs))
    return {"seconds": seconds, **peaks, "sums": sums}


if __name__ == "__main__":
    name, path, repetitions = sys.argv[1:]
    print(json.dumps(measure(READERS[name], path, int(repetitions))))
