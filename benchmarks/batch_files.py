"""Asks each file of a folder for both matrices, in one way, and says how long that took.

    python batch_files.py WAY FOLDER                         WAY is one of WAYS

Each file is read twice. The answer is one line of JSON: the seconds, and the numbers of points and
of samples that were there.
"""

from __future__ import annotations

import json
import sys
import time
from collections.abc import Callable
from pathlib import Path

import moxPY as mox

Sizes = list[tuple[int, int]]


def sizes_of(trial: mox.Trial) -> tuple[int, int]:
    return mox.moxGetPointsValues(trial).size, mox.moxGetAnalogsValues(trial).size


def in_a_loop(paths: list[Path]) -> Sizes:
    found = []
    for path in paths:
        with mox.read(path) as trial:
            found.append(sizes_of(trial))
    return found


def mapped(jobs: int) -> Callable[[list[Path]], Sizes]:
    def by_map_files(paths: list[Path]) -> Sizes:
        results = mox.map_files(sizes_of, paths, jobs=jobs, progress=False, on_error="raise")
        return [result.value for result in results if result.value is not None]

    return by_map_files


WAYS = {
    "a loop over `read`": in_a_loop,
    "`map_files`, one job": mapped(1),
    "`map_files`, two jobs": mapped(2),
}


def main() -> None:
    way, folder = sys.argv[1:]
    paths = 2 * sorted(Path(folder).iterdir())
    WAYS[way](paths[:3])
    start = time.perf_counter()
    found = WAYS[way](paths)
    seconds = time.perf_counter() - start
    points, samples = (sum(sizes) for sizes in zip(*found, strict=True))
    print(json.dumps({"seconds": seconds, "points": points, "samples": samples}))


if __name__ == "__main__":
    main()
