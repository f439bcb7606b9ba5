"""Whether the memory of one process stays level over many files.

    python bulk_memory.py [--files N]

Calls a function for each of N files, and makes one Parquet file of their markers. Prints the most
memory that is in use in each tenth of the files. The exit code is 1 where the last three tenths
need more than the three before them.
"""

from __future__ import annotations

import argparse
import os
import re
import sys
from collections.abc import Callable
from pathlib import Path
from tempfile import TemporaryDirectory

import moxPY as mox
import numpy as np
from numpy.typing import NDArray

FILES = 10_000
POINTS, FRAMES = 40, 200
TENTHS = 10
# What allocators need for themselves changes by some of it. A trial in memory is 0.2 MB, so that
# keeping every tenth shows even with a thousand files.
ALLOWANCE = 5 << 20


def make_files(folder: Path, count: int) -> None:
    """Names of one file, so that they take the room of one."""
    trial = mox.Trial.new(frames=FRAMES)
    samples: NDArray[np.float64] = np.random.default_rng(1).normal(size=(FRAMES, 3))
    for point in range(POINTS):
        trial.markers[f"M{point:02}"] = samples + point
    first = folder / "00000.c3d"
    trial.write(first)
    for number in range(1, count):
        os.link(first, folder / f"{number:05}.c3d")


def memory_in_use() -> int:
    found = re.search(r"VmRSS:\s+(\d+) kB", Path("/proc/self/status").read_text())
    assert found
    return 1024 * int(found[1])


class Peaks:
    """The most memory in use in each tenth of the files; called for each of them."""

    def __init__(self, files: int) -> None:
        self._files = files
        self._seen = 0
        self.tenths = [0] * TENTHS

    def __call__(self) -> None:
        tenth = min(self._seen * TENTHS // self._files, TENTHS - 1)
        self.tenths[tenth] = max(self.tenths[tenth], memory_in_use())
        self._seen += 1

    @property
    def are_level(self) -> bool:
        return max(self.tenths[-3:]) <= max(self.tenths[-6:-3]) + ALLOWANCE


def mapped(folder: Path, look: Callable[[], None]) -> None:
    for result in mox.map_files(lambda trial: trial.markers.values.mean(), folder):
        assert result.error is None
        look()


def collected(folder: Path, look: Callable[[], None]) -> None:
    def markers(trial: mox.Trial) -> object:
        look()
        return trial.markers

    with TemporaryDirectory() as other:
        mox.collect(markers, folder, to=Path(other) / "all.parquet")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--files", type=int, default=FILES)
    files: int = parser.parse_args().files
    level = True
    with TemporaryDirectory() as name:
        make_files(Path(name), files)
        for job in (mapped, collected):
            peaks = Peaks(files)
            job(Path(name), peaks)
            figures = " ".join(f"{tenth / 1e6:6.1f}" for tenth in peaks.tenths)
            print(f"{job.__name__:9}  MB in each tenth of {files:,} files: {figures}")
            level = level and peaks.are_level
    return 0 if level else 1


if __name__ == "__main__":
    sys.exit(main())
