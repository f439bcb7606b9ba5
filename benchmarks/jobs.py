"""What reading and writing share: the trial, the answer of a process, whose turn it is."""

from __future__ import annotations

import json
import os
import subprocess
import sys
from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path
from typing import Any

HERE = Path(__file__).resolve().parent
PROJECT = HERE.parent

Answers = dict[str, list[dict[str, Any]]]


@dataclass(frozen=True)
class Trial:
    """A file to measure with, and what is known of it."""

    kind: str
    folder: Path

    @property
    def size(self) -> str:
        """Of "big-dec", "big"."""
        return self.kind.partition("-")[0]

    @property
    def path(self) -> Path:
        return self.folder / f"{self.kind}.c3d"

    @property
    def layout(self) -> Path:
        return self.folder / f"{self.kind}.layout"

    @property
    def description(self) -> Path:
        return self.folder / f"{self.kind}.json"

    @property
    def extents(self) -> dict[str, int]:
        extents: dict[str, int] = json.loads(self.description.read_text())["extents"]
        return extents

    def is_current(self) -> bool:
        makers = (HERE / "make_trial.py", HERE / "column_sums.py")
        return self.description.exists() and all(
            maker.stat().st_mtime <= self.description.stat().st_mtime for maker in makers
        )

    def make(self) -> None:
        print(f"making {self.path.name}", file=sys.stderr)
        self.description.unlink(missing_ok=True)
        # What writes the files of the tests knows all forms.
        environment = {**os.environ, "PYTHONPATH": str(PROJECT / "tests" / "python")}
        command: list[str | Path] = [sys.executable, HERE / "make_trial.py", self.kind, self.folder]
        subprocess.run(command, env=environment, check=True)


def answer_of(command: list[str | Path]) -> dict[str, Any]:
    finished = subprocess.run(command, stdout=subprocess.PIPE, check=True)
    answer: dict[str, Any] = json.loads(finished.stdout)
    return answer


def turned(names: Sequence[str], number: int) -> list[str]:
    """Each round starts with another one."""
    return [names[(number + place) % len(names)] for place in range(len(names))]
