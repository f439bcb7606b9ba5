"""Make the outputs in a document by running its commands.

A fenced block marked "console" has commands behind "$ ", each followed by what a terminal of 80
columns shows. They run in order, in a folder with the example trial.

Usage: console_blocks.py DOCUMENT...
"""

from __future__ import annotations

import fcntl
import os
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
from collections.abc import Mapping, Sequence
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
EXAMPLE = PROJECT / "examples" / "gait_trial.c3d"

# What stands in for the installed program.
MOXPY = f'#!/bin/sh\nexec "{sys.executable}" -c "{{}}" "$@"\n'.format(
    "import sys; sys.argv[0] = 'moxpy'; from moxPY.commands import main; sys.exit(main())"
)


def shown(
    command: Sequence[str | Path], folder: Path, env: Mapping[str, str], columns: int = 80
) -> tuple[int, str]:
    """Run a command on a terminal: its exit code and all that it shows."""
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    env = {name: text for name, text in env.items() if name not in {"COLUMNS", "LINES"}}
    process = subprocess.Popen(
        command, env=env, cwd=folder, stdin=theirs, stdout=theirs, stderr=theirs
    )
    os.close(theirs)
    parts = []
    while True:
        try:
            part = os.read(ours, 65536)
        except OSError:  # how Linux says that nobody has the other end any more
            break
        if not part:
            break
        parts.append(part)
    os.close(ours)
    return process.wait(), b"".join(parts).decode("utf-8").replace("\r\n", "\n")


def rerun(document: str, folder: Path) -> str:
    """The text of a document with the outputs that its commands have in a folder."""
    programs = folder / ".bin"
    programs.mkdir()
    (programs / "moxpy").write_text(MOXPY)
    (programs / "moxpy").chmod(0o755)
    shutil.copy(EXAMPLE, folder / "walk.c3d")
    env = {
        **os.environ,
        "PATH": f"{programs}{os.pathsep}{os.environ['PATH']}",
        "PYTHONPATH": os.pathsep.join(filter(None, sys.path)),
        "PYTHONIOENCODING": "utf-8",
        "TERM": "dumb",
    }

    def made(block: re.Match[str]) -> str:
        commands = re.findall(r"^\$ (.*)\n", block[1], re.MULTILINE)
        outputs = [f"$ {each}\n{shown(['sh', '-c', each], folder, env)[1]}" for each in commands]
        return f"```console\n{''.join(outputs)}```\n"

    return re.sub(r"^```console\n(.*?)^```\n", made, document, flags=re.DOTALL | re.MULTILINE)


def main() -> int:
    for name in sys.argv[1:]:
        document = Path(name)
        with tempfile.TemporaryDirectory() as folder:
            document.write_text(rerun(document.read_text("utf-8"), Path(folder)), "utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
