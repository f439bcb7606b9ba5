"""Compares reading C3D files with a plain C++ program and with other readers.

    python run.py --build BUILD [--rounds N] [--trial big|small]

BUILD is a build folder with the module and plain_decoder. Its subfolder `benchmarks` keeps the
files that are read, which are made when they are missing, and `results.json`. README.md beside
this program says what is measured and how. The exit code is 1 when a reader gives other values than
were written.
"""

from __future__ import annotations

import argparse
import json
import os
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Any

from column_sums import agree
from report import PLAIN, machine, summary, table

HERE = Path(__file__).resolve().parent
PROJECT = HERE.parent
READERS = (PLAIN, "moxPY", "ezc3d", "c3d")
# Times of a job that takes seconds hardly differ from round to round.
ROUNDS_OF_SLOW_READERS = 3
SLOW_READERS = {"big": ("ezc3d", "c3d"), "small": ()}
# The small file is read again and again by each process, and the first times are left out.
REPETITIONS = {"big": 1, "small": 20}
COLD_REPETITIONS = {"big": 0, "small": 3}


@dataclass(frozen=True)
class Trial:
    """A file to read, and what is known of it."""

    kind: str
    folder: Path

    @property
    def path(self) -> Path:
        return self.folder / f"{self.kind}.c3d"

    @property
    def layout(self) -> Path:
        return self.folder / f"{self.kind}.layout"

    @property
    def description(self) -> Path:
        return self.folder / f"{self.kind}.json"

    def is_current(self) -> bool:
        makers = [HERE / "make_trial.py", HERE / "column_sums.py"]
        return self.description.exists() and all(
            maker.stat().st_mtime <= self.description.stat().st_mtime for maker in makers
        )

    def make(self) -> None:
        print(f"making {self.path.name}", file=sys.stderr)
        self.description.unlink(missing_ok=True)
        # The example trial's writer knows the bytes of parameters.
        environment = {**os.environ, "PYTHONPATH": str(PROJECT / "examples")}
        command: list[str | Path] = [sys.executable, HERE / "make_trial.py", self.kind, self.folder]
        subprocess.run(command, env=environment, check=True)


def answer_of(command: list[str | Path]) -> dict[str, Any]:
    finished = subprocess.run(command, stdout=subprocess.PIPE, check=True)
    answer: dict[str, Any] = json.loads(finished.stdout)
    return answer


def run_once(reader: str, trial: Trial, build: Path) -> dict[str, Any]:
    """One process of one reader."""
    repetitions = str(REPETITIONS[trial.kind])
    if reader == PLAIN:
        program = build / "benchmarks" / "plain_decoder"
        return answer_of([program, trial.path, trial.layout, repetitions])
    program = HERE / "read_trial.py"
    return answer_of([sys.executable, program, reader, trial.path, repetitions])


def readers_of_round(trial: Trial, number: int) -> list[str]:
    """Who takes part in a round; each round starts with another reader."""
    slow = SLOW_READERS[trial.kind] if number >= ROUNDS_OF_SLOW_READERS else ()
    turned = [READERS[(number + place) % len(READERS)] for place in range(len(READERS))]
    return [reader for reader in turned if reader not in slow]


def run_rounds(trial: Trial, build: Path, rounds: int) -> dict[str, list[dict[str, Any]]]:
    """Answers of every reader, one a round in which it took part."""
    answers: dict[str, list[dict[str, Any]]] = {reader: [] for reader in READERS}
    trial.path.read_bytes()  # into the page cache
    for number in range(rounds):
        for reader in readers_of_round(trial, number):
            answers[reader].append(run_once(reader, trial, build))
        print(f"{trial.kind}: round {number + 1} of {rounds}", file=sys.stderr)
    return answers


def disagreements(trial: Trial, answers: dict[str, list[dict[str, Any]]]) -> list[str]:
    expected = json.loads(trial.description.read_text())["sums"]
    return [
        f"{trial.kind}: {reader} gives other {matrix} than were written"
        for reader, given in answers.items()
        for matrix in ("points", "analogs")
        if not all(agree(answer["sums"][matrix], expected[matrix]) for answer in given)
    ]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--trial", choices=REPETITIONS, action="append")
    options = parser.parse_args()
    folder: Path = options.build.resolve() / "benchmarks"
    results: dict[str, Any] = {"machine": machine()}
    wrong = []
    for kind in options.trial or list(REPETITIONS):
        trial = Trial(kind, folder)
        if not trial.is_current():
            trial.make()
        answers = run_rounds(trial, folder.parent, options.rounds)
        wrong += disagreements(trial, answers)
        extents = json.loads(trial.description.read_text())["extents"]
        size = trial.path.stat().st_size
        results[kind] = summary(extents, size, answers, COLD_REPETITIONS[kind])
        print("\n".join(table(kind, results[kind])), end="\n\n")
    (folder / "results.json").write_text(json.dumps(results, indent=2) + "\n")
    print("\n".join(wrong), file=sys.stderr, end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
