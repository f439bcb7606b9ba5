"""Makes one Parquet file of the markers of many trials in one way, and says what that cost.

    python collect_folder.py WAY FOLDER ALL.parquet         WAY is moxPY, or ezc3d with pandas

The answer is one line of JSON: the seconds, the peak memory beyond what was there before, and the
fingerprint of what the file holds. Starting the interpreter and importing packages is not counted.
"""

from __future__ import annotations

import json
import sys
import time
from collections.abc import Callable, Sequence
from pathlib import Path
from typing import Any

import ezc3d
import moxPY as mox
import numpy as np
import pandas as pd  # type: ignore[import-untyped, unused-ignore]
from column_sums import column_sums
from read_trial import peak_memory, reset_peak_memory

# What packages import or make when they are used first is there after so many files.
WARM = 4


def by_moxpy(files: Sequence[Path], place: Path) -> None:
    mox.collect(lambda trial: trial.markers, files, to=place)


def by_ezc3d(files: Sequence[Path], place: Path) -> None:
    pd.concat([frame_of(file) for file in files], ignore_index=True).to_parquet(place)


def frame_of(file: Path) -> Any:
    """The same table of one file as the other way makes it."""
    trial = ezc3d.c3d(str(file))
    positions = trial["data"]["points"][:3]
    about = trial["parameters"]["POINT"]
    columns = [f"{label}_{axis}" for label in about["LABELS"]["value"] for axis in "xyz"]
    values = positions.transpose(2, 1, 0).reshape(positions.shape[2], -1)
    frame = pd.DataFrame(values, columns=columns)
    frame.insert(0, "time", np.arange(len(frame)) / about["RATE"]["value"][0])
    frame.insert(0, "file", str(file))
    return frame


WAYS: dict[str, Callable[[Sequence[Path], Path], None]] = {
    "moxPY": by_moxpy,
    "ezc3d": by_ezc3d,
}


def measure(way: str, files: Sequence[Path], place: Path) -> dict[str, Any]:
    WAYS[way](files[:WARM], place)
    reset_peak_memory()
    before = peak_memory()
    start = time.perf_counter()
    WAYS[way](files, place)
    seconds = time.perf_counter() - start
    peak = peak_memory() - before
    frame = pd.read_parquet(place)
    names = frame.pop("file").astype(str)
    return {
        "seconds": seconds,
        "peak": peak,
        "bytes": place.stat().st_size,
        "files": list(names.unique()),
        "columns": list(frame.columns),
        "sums": column_sums(frame.to_numpy()),
    }


if __name__ == "__main__":
    way, folder, place = sys.argv[1:]
    print(json.dumps(measure(way, sorted(Path(folder).iterdir()), Path(place))))
