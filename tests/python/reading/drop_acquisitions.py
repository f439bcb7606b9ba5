"""Print by how many bytes memory grows while a file is read and dropped many times.

Usage: drop_acquisitions.py FILE TIMES
"""

from __future__ import annotations

import contextlib
import sys
from pathlib import Path

import _moxPY


def resident_bytes() -> int:
    for line in Path("/proc/self/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) * 1024
    raise SystemExit("/proc/self/status has no VmRSS")


def read_and_drop(path: str, times: int) -> None:
    for _ in range(times):
        with contextlib.suppress(RuntimeError):
            acquisition = _moxPY.moxReadAcquisition(path)
            _moxPY.moxGetPointsValues(acquisition)
            _moxPY.moxGetPoints(acquisition)
            _moxPY.moxGetAnalogs(acquisition)


def main() -> None:
    path, times = sys.argv[1], int(sys.argv[2])
    read_and_drop(path, 100)  # until the allocator has what it keeps
    before = resident_bytes()
    read_and_drop(path, times)
    print(resident_bytes() - before)


if __name__ == "__main__":
    main()
