"""Threads that read, and what they leave to others meanwhile."""

from __future__ import annotations

import io
import subprocess
import sys
import threading
from collections.abc import Callable, Iterator
from pathlib import Path

import _moxPY
import moxPY as mox
import numpy as np
import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@pytest.fixture
def no_switches() -> Iterator[None]:
    """Threads run only where another one lets them: by waiting, or by releasing the lock."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(1000)
    yield
    sys.setswitchinterval(before)


def runs_meanwhile(action: Callable[[], object]) -> bool:
    """Whether another thread comes to run while `action` does, within many calls of it."""
    gate = threading.Lock()
    gate.acquire()
    ran = []

    def run() -> None:
        gate.acquire()
        ran.append(True)

    thread = threading.Thread(target=run)
    thread.start()
    gate.release()  # never waits, so nothing but the action lets the other one run
    calls = 0
    while not ran and calls < 5_000:
        action()
        calls += 1
    outcome = bool(ran)
    thread.join()
    return outcome


@pytest.mark.usefixtures("no_switches")
def test_other_threads_run_while_a_file_is_read():
    content = EXAMPLE.read_bytes()
    assert runs_meanwhile(lambda: _moxPY.moxReadAcquisition(str(EXAMPLE)))
    assert runs_meanwhile(lambda: mox.read(EXAMPLE))
    assert runs_meanwhile(lambda: mox.read(content))


@pytest.mark.usefixtures("no_switches")
def test_other_threads_run_while_a_trial_is_written(tmp_path: Path):
    trial = mox.read(EXAMPLE)
    assert runs_meanwhile(lambda: trial.write(tmp_path / "walk.c3d"))
    assert runs_meanwhile(lambda: trial.write(io.BytesIO()))


def test_what_is_written_is_the_trial_as_it_was(tmp_path: Path):
    """One thread writes, one makes all values of the markers the same again and again."""
    trial = mox.read(EXAMPLE)
    shape = trial.markers.values.shape
    trial.markers.values = np.zeros(shape)
    done = threading.Event()

    def change() -> None:
        number = 0
        while not done.is_set():
            number += 1
            trial.markers.values = np.full(shape, float(number))

    thread = threading.Thread(target=change)
    thread.start()
    seen = set()
    try:
        for i in range(40):
            trial.write(tmp_path / f"{i}.c3d")
            seen.add(frozenset(np.unique(mox.read(tmp_path / f"{i}.c3d").markers.values)))
    finally:
        done.set()
        thread.join()
    assert {len(values) for values in seen} == {1}
    assert len(seen) > 1


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
