"""Print by how many bytes the memory of this process peaks while it reads a file.

Usage: peak_memory.py ANY-GOOD-FILE FILE
The good file is read before, so that what the module needs once does not count. The kernel's peak
of this very program is taken: the one of `getrusage` begins with the memory of the parent.
"""

from __future__ import annotations

import sys
from pathlib import Path

import _moxPY


def kilobytes(field: str) -> int:
    for line in Path("/proc/self/status").read_text().splitlines():
        if line.startswith(f"{field}:"):
            return int(line.split()[1])
    raise SystemExit(f"/proc/self/status has no {field}")


def main() -> None:
    _moxPY.moxReadAcquisition(sys.argv[1])
    before = kilobytes("VmRSS")
    try:
        acquisition = _moxPY.moxReadAcquisition(sys.argv[2])
    except RuntimeError:
        acquisition = None
    print((kilobytes("VmHWM") - before) * 1024)
    del acquisition


if __name__ == "__main__":
    main()
