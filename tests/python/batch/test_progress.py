"""The bar of a batch: on a terminal only, and never among what a script prints."""

from __future__ import annotations

import os
import subprocess
import sys
import threading
from pathlib import Path

import pytest

pty = pytest.importorskip("pty")
pytest.importorskip("rich")

SCRIPT = """
import sys, time
import moxPY as mox

def slow(trial):
    time.sleep(0.05)
    return trial.frames

for result in mox.map_files(slow, sys.argv[1], jobs=2, progress=sys.argv[2] == "yes"):
    print(result.value)
"""
NUMBERS = "".join(f"{number}\n" for number in range(1, 13))


def on_terminal(folder: Path, progress: str) -> tuple[str, str]:
    """What the script prints, and what a terminal of 80 columns shows of its errors."""
    reader, terminal = pty.openpty()
    environment = {
        **os.environ,
        "PYTHONPATH": os.pathsep.join(filter(None, sys.path)),
        "TERM": "xterm",
        "COLUMNS": "80",
    }
    shown: list[bytes] = []

    def read() -> None:
        try:
            while part := os.read(reader, 4096):
                shown.append(part)
        except OSError:  # the end of a terminal
            pass

    thread = threading.Thread(target=read)
    thread.start()
    done = subprocess.run(
        [sys.executable, "-c", SCRIPT, folder, progress],
        env=environment,
        stdout=subprocess.PIPE,
        stderr=terminal,
        text=True,
        check=True,
    )
    os.close(terminal)
    thread.join()
    os.close(reader)
    return done.stdout, b"".join(shown).decode()


def test_a_terminal_shows_how_far_it_is(folder: Path):
    printed, shown = on_terminal(folder, "yes")
    assert printed == NUMBERS
    assert "/12" in shown


def test_no_bar_is_shown_on_request(folder: Path):
    assert on_terminal(folder, "no") == (NUMBERS, "")


def test_what_is_no_terminal_gets_no_bar(folder: Path):
    done = subprocess.run(
        [sys.executable, "-c", SCRIPT, folder, "yes"],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        capture_output=True,
        text=True,
        check=True,
    )
    assert (done.stdout, done.stderr) == (NUMBERS, "")
