"""Threads that read, and what they leave to others meanwhile."""

from __future__ import annotations

import subprocess
import sys
import threading
from collections.abc import Iterator
from pathlib import Path

import _moxPY
import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@pytest.fixture
def no_switches() -> Iterator[None]:
    """Threads run only where another one lets them: by waiting, or by releasing the lock."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    yield
    sys.setswitchinterval(before)


@pytest.mark.usefixtures("no_switches")
def test_other_threads_run_while_a_file_is_read():
    gate = threading.Lock()
    gate.acquire()
    ran = []

    def run() -> None:
        gate.acquire()
        ran.append(True)

    thread = threading.Thread(target=run)
    thread.start()
    gate.release()  # never waits, so nothing but the reading lets the other one run
    reads = 0
    while not ran and reads < 5_000:
        _moxPY.moxReadAcquisition(str(EXAMPLE))
        reads += 1
    assert ran
    thread.join()


READING_TO_THE_END = f"""
import threading, time, _moxPY

def read():
    while True:
        _moxPY.moxReadAcquisition({str(EXAMPLE)!r})
        reads.append(1)

reads = []
for _ in range(4):
    threading.Thread(target=read, daemon=True).start()
while len(reads) < 8:
    time.sleep(0.001)
"""


def test_a_process_ends_while_its_threads_read():
    for _ in range(5):
        done = subprocess.run(
            [sys.executable, "-c", READING_TO_THE_END], capture_output=True, timeout=120
        )
        assert (done.returncode, done.stderr) == (0, b"")
