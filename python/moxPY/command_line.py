"""The command line: ``python -m moxPY``."""

from __future__ import annotations

import argparse
import sys
from collections.abc import Sequence
from typing import TextIO

from .functions.acquisition.files import moxReadAcquisition
from .functions.plugins import moxGetVersion
from .summary import summary_lines


def write_line(text: str, stream: TextIO) -> None:
    """Print text that may hold what the terminal's encoding lacks, such as bytes of a file name."""
    encoding = stream.encoding or "utf-8"
    print(text.encode(encoding, "backslashreplace").decode(encoding), file=stream)


def show(file: str) -> bool:
    """Print the summary of one file, or why there is none. Whether it could be read."""
    try:
        with moxReadAcquisition(file) as acquisition:
            lines = summary_lines(acquisition)
    except Exception as failure:  # whatever is wrong with this file, the next one may be good
        write_line(f"{file}: {str(failure) or type(failure).__name__}", sys.stderr)
        return False
    for line in [file, *(f"  {line}" for line in lines)]:
        write_line(line, sys.stdout)
    return True


def show_all(files: Sequence[str]) -> int:
    """Exit code: 0 when every file could be read, else 1."""
    readable = [show(file) for file in files]
    return 0 if all(readable) else 1


def main(arguments: Sequence[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="python -m moxPY", description="Motion-capture files.")
    parser.add_argument("--version", action="version", version=moxGetVersion())
    commands = parser.add_subparsers(dest="command", required=True)
    info = commands.add_parser("info", help="print what files hold")
    info.add_argument("files", nargs="+", metavar="FILE", help="a file to read, such as walk.c3d")
    options = parser.parse_args(arguments)
    return show_all(options.files)
