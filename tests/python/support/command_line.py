"""Calls of the command line in processes of their own: piped, and on a terminal."""

from __future__ import annotations

import fcntl
import os
import pty
import signal
import struct
import subprocess
import sys
import termios
from pathlib import Path
from typing import Any

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


def on_terminal(*words: str | Path, columns: int = 80, **options: Any) -> tuple[int, str]:
    """Run a command on a terminal: its exit code and all that it shows."""
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    env = environment(PYTHONIOENCODING="utf-8")
    for name in ("COLUMNS", "LINES"):
        env.pop(name, None)
    process = subprocess.Popen(
        [*PROGRAM, *words], env=env, stdin=theirs, stdout=theirs, stderr=theirs, **options
    )
    os.close(theirs)
    shown = b""
    while True:
        try:
            part = os.read(ours, 65536)
        except OSError:  # how Linux says that nobody has the other end any more
            break
        if not part:
            break
        shown += part
    os.close(ours)
    return process.wait(), shown.decode("utf-8").replace("\r\n", "\n")


def started(*words: str | Path, **options: Any) -> subprocess.Popen[str]:
    """A command that runs, and that Ctrl-C reaches, however the tests were started."""
    return subprocess.Popen(
        [*PROGRAM, *words],
        env=environment(PYTHONIOENCODING="utf-8", PYTHONUNBUFFERED="1"),
        encoding="utf-8",
        preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL),
        **options,
    )
