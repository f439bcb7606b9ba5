"""Python programs in a process of their own, for what may hang or what memory must show."""

from __future__ import annotations

import os
import subprocess
import sys


def run_python(*arguments: str, seconds: float = 300) -> str:
    """Standard output of a new interpreter that finds the same modules; it must succeed in time."""
    finished = subprocess.run(
        [sys.executable, *arguments],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        stdin=subprocess.DEVNULL,
        capture_output=True,
        text=True,
        timeout=seconds,
        check=False,
    )
    assert finished.returncode == 0, finished.stdout + finished.stderr
    return finished.stdout.strip()
