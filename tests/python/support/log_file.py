"""The lines of the module's log file."""

from __future__ import annotations

import re
from pathlib import Path
from uuid import uuid4

import _mox_probe as probe

LINE = re.compile(
    r"(?P<time>\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z) "
    r"(?P<shown>\[[a-z]+\] \[\w+\]) \[(?P<process>\d+)\] (?P<text>.*)"
)


def lines_of(path: Path) -> list[str]:
    """The lines of a log file without time and process: "[info] [tidepool] text".

    A backslash, which the file has twice, is there once.
    """
    text = path.read_text(encoding="utf-8", errors="surrogateescape")
    lines = text.replace("\\\\", "\\").splitlines()
    parts = [LINE.fullmatch(line) for line in lines]
    assert all(parts), lines
    return [f"{part['shown']} {part['text']}" for part in parts if part]


class LogReader:
    """What this process logs from now on; the file may be rotated meanwhile."""

    def __init__(self, folder: Path) -> None:
        self._file = folder / "trace.log"
        self._mark = f"[info] [strata] {uuid4()}"
        probe.log_line(self._mark.rpartition(" ")[2])

    def new_lines(self) -> list[str]:
        probe.flush_log()
        lines: list[str] = []
        for path in (self._file.with_name("trace.log.1"), self._file):
            if path.exists():
                lines += lines_of(path)
        return lines[lines.index(self._mark) + 1 :]
