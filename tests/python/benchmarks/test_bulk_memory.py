"""Memory stays level over many files, and a batch that keeps them is noticed."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import pytest

BENCHMARKS = Path(__file__).resolve().parents[3] / "benchmarks"
KEEPING = """
import os
from bulk_memory import Peaks

kept = []
peaks = Peaks(1000)
for _ in range(1000):
    kept.append(os.urandom(1 << 15))
    peaks()
print(peaks.are_level)
"""


@pytest.mark.skipif(sys.platform != "linux", reason="looks into /proc")
def test_memory_stays_level():
    if "libasan" in Path("/proc/self/maps").read_text():
        pytest.skip("the sanitizer keeps what was freed")
    done = subprocess.run(
        [sys.executable, BENCHMARKS / "bulk_memory.py", "--files", "1000"],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        stdout=subprocess.PIPE,
        text=True,
    )
    assert done.returncode == 0, done.stdout


@pytest.mark.skipif(sys.platform != "linux", reason="looks into /proc")
def test_what_is_kept_shows():
    """In a process of its own, which has no memory that others have freed."""
    done = subprocess.run(
        [sys.executable, "-c", KEEPING],
        env={
            **os.environ,
            "PYTHONPATH": os.pathsep.join([str(BENCHMARKS), *filter(None, sys.path)]),
        },
        stdout=subprocess.PIPE,
    )
    assert done.stdout == b"False\n"
