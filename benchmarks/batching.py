"""Rounds in which 1,000 small files are read, in a loop and by `map_files`."""

from __future__ import annotations

import sys

from batch_files import WAYS
from collecting import folder_of
from jobs import HERE, Answers, Trial, answer_of, turned

# Seconds each.
ROUNDS = 5


def run_rounds(trial: Trial, rounds: int) -> Answers:
    """Answers of each way, one a round."""
    folder = folder_of(trial)
    answers: Answers = {way: [] for way in WAYS}
    for number in range(min(rounds, ROUNDS)):
        for way in turned(list(WAYS), number):
            answers[way].append(answer_of([sys.executable, HERE / "batch_files.py", way, folder]))
        print(f"batch: round {number + 1} of {min(rounds, ROUNDS)}", file=sys.stderr)
    return answers


def disagreements(answers: Answers) -> list[str]:
    counts = {
        (answer["points"], answer["samples"]) for given in answers.values() for answer in given
    }
    return [] if len(counts) == 1 else ["batch: the ways read other numbers"]
