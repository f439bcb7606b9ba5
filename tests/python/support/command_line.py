"""Calls of the command line in processes of their own: piped, and on a terminal."""

from __future__ import annotations

import os
import signal
import subprocess
import sys
from pathlib import Path
from typing import Any

import pytest

PROGRAM = [sys.executable, "-m", "moxPY"]


def environment(**more: str) -> dict[str, str]:
    """What a process needs to find this package, without what changes its output."""
    kept = {name: text for name, text in os.environ.items() if not name.startswith("PYTHONIO")}
    found = os.pathsep.join(filter(None, sys.path))
    return {**kept, "PYTHONPATH": found, "TERM": "xterm-256color", **more}


def piped(*words: str | bytes | Path, **options: Any) -> subprocess.CompletedProcess[str]:
    """Run a command with pipes; what it prints is read as UTF-8."""
    env = environment(PYTHONIOENCODING="utf-8") | options.pop("env", {})
    return subprocess.run(
        [*PROGRAM, *words], env=env, capture_output=True, encoding="utf-8", check=False, **options
    )


def on_terminal(*words: str | Path, folder: Path | None = None) -> tuple[int, str]:
    """Run a command on a terminal of 80 columns: its exit code and all that it shows."""
    pytest.importorskip("pty", reason="terminals are made for tests on POSIX alone")
    from console_blocks import shown

    env = environment(PYTHONIOENCODING="utf-8")
    return shown([*PROGRAM, *words], folder or Path.cwd(), env)


def started(*words: str | Path, **options: Any) -> subprocess.Popen[str]:
    """A command that runs, and that Ctrl-C reaches, however the tests were started."""
    if os.name != "posix":
        pytest.skip("Ctrl-C reaches a process by itself on POSIX alone")
    return subprocess.Popen(
        [*PROGRAM, *words],
        env=environment(PYTHONIOENCODING="utf-8", PYTHONUNBUFFERED="1"),
        encoding="utf-8",
        preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL),
        **options,
    )
