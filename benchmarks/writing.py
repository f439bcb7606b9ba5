"""Rounds in which every writer writes the same trial."""

from __future__ import annotations

import json
import sys
from pathlib import Path
from typing import Any

from column_sums import agree
from jobs import HERE, Answers, Trial, answer_of, turned
from report import PLAIN, SYNCED

WRITERS = (PLAIN, SYNCED, "moxPY", "moxPY, edited", "ezc3d", "c3d")
# Times of a job that takes seconds hardly differ from round to round.
ROUNDS_OF_SLOW_WRITERS = 3
SLOW_WRITERS: dict[str, tuple[str, ...]] = {
    "big": ("ezc3d", "c3d"), "typical": (), "small": (),
}  # fmt: skip
# The first times of a process do not count: they grow what later ones have.
REPETITIONS = {"big": 2, "typical": 20, "small": 20}
COLD_REPETITIONS = {"big": 1, "typical": 3, "small": 3}


def destination_of(writer: str, trial: Trial) -> Path:
    return trial.folder / f"{trial.kind}-{writer.replace(' ', '-').replace(',', '')}.c3d"


def run_once(writer: str, trial: Trial, build: Path) -> dict[str, Any]:
    """One process of one writer."""
    slow = writer in SLOW_WRITERS[trial.size]
    repetitions = "1" if slow else str(REPETITIONS[trial.size])
    destination = destination_of(writer, trial)
    if writer in (PLAIN, SYNCED):
        program = build / "benchmarks" / "plain_writer"
        sync = ["sync"] if writer == SYNCED else []
        return answer_of([program, trial.path, trial.layout, destination, repetitions, *sync])
    program = HERE / "write_trial.py"
    return answer_of([sys.executable, program, writer, trial.path, destination, repetitions])


def run_rounds(trial: Trial, build: Path, rounds: int) -> Answers:
    """Answers of every writer, one a round in which it took part."""
    answers: Answers = {writer: [] for writer in WRITERS}
    for number in range(rounds):
        slow = SLOW_WRITERS[trial.size] if number >= ROUNDS_OF_SLOW_WRITERS else ()
        for writer in turned(WRITERS, number):
            if writer not in slow:
                answers[writer].append(run_once(writer, trial, build))
        print(f"{trial.kind}, writing: round {number + 1} of {rounds}", file=sys.stderr)
    return answers


def disagreements(trial: Trial) -> list[str]:
    """Reads what the writers left behind, which is removed then."""
    expected = json.loads(trial.description.read_text())["sums"]
    wrong = []
    for writer in WRITERS:
        path = destination_of(writer, trial)
        sums = answer_of([sys.executable, HERE / "read_trial.py", "moxPY", path, "1"])["sums"]
        wrong += [
            f"{trial.kind}: {writer} writes other {matrix} than it read"
            for matrix in ("points", "analogs")
            if not agree(sums[matrix], expected[matrix])
        ]
        path.unlink()
    return wrong
