"""Rounds in which every reader reads the same trial."""

from __future__ import annotations

import json
import sys
from pathlib import Path
from typing import Any

from column_sums import agree
from jobs import HERE, Answers, Trial, answer_of, turned
from report import PLAIN

READERS = (PLAIN, "moxPY", "ezc3d", "c3d")
# Times of a job that takes seconds hardly differ from round to round.
ROUNDS_OF_SLOW_READERS = 3
SLOW_READERS: dict[str, tuple[str, ...]] = {
    "big": ("ezc3d", "c3d"), "typical": (), "small": (),
}  # fmt: skip
# It says itself that it does not read them.
STRANGERS: dict[str, tuple[str, ...]] = {"big-mips": ("ezc3d",)}
# Small files are read again and again by each process, and the first times are left out.
REPETITIONS = {"big": 1, "typical": 20, "small": 20}
COLD_REPETITIONS = {"big": 0, "typical": 3, "small": 3}


def run_once(reader: str, trial: Trial, build: Path) -> dict[str, Any]:
    """One process of one reader."""
    repetitions = str(REPETITIONS[trial.size])
    if reader == PLAIN:
        program = build / "benchmarks" / "plain_decoder"
        return answer_of([program, trial.path, trial.layout, repetitions])
    program = HERE / "read_trial.py"
    return answer_of([sys.executable, program, reader, trial.path, repetitions])


def readers_of_round(trial: Trial, number: int) -> list[str]:
    """Who takes part in a round."""
    absent: tuple[str, ...] = STRANGERS.get(trial.kind, ())
    if number >= ROUNDS_OF_SLOW_READERS:
        absent += SLOW_READERS[trial.size]
    return [reader for reader in turned(READERS, number) if reader not in absent]


def run_rounds(trial: Trial, build: Path, rounds: int) -> Answers:
    """Answers of every reader, one a round in which it took part."""
    absent = STRANGERS.get(trial.kind, ())
    answers: Answers = {reader: [] for reader in READERS if reader not in absent}
    for number in range(rounds):
        for reader in readers_of_round(trial, number):
            answers[reader].append(run_once(reader, trial, build))
        print(f"{trial.kind}, reading: round {number + 1} of {rounds}", file=sys.stderr)
    return answers


def disagreements(trial: Trial, answers: Answers) -> list[str]:
    expected = json.loads(trial.description.read_text())["sums"]
    return [
        f"{trial.kind}: {reader} gives other {matrix} than were written"
        for reader, given in answers.items()
        for matrix in ("points", "analogs")
        if not all(agree(answer["sums"][matrix], expected[matrix]) for answer in given)
    ]
