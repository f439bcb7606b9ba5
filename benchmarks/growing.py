"""Rounds in which trials of growing size are read, asked, edited and written."""

from __future__ import annotations

import sys

from growth_steps import SIZES
from jobs import HERE, Answers, answer_of, turned

# A call is timed several times within a round, too.
ROUNDS = 3


def run_rounds(rounds: int) -> Answers:
    """Answers for every axis, one a round."""
    rounds = min(rounds, ROUNDS)
    answers: Answers = {axis: [] for axis in SIZES}
    for number in range(rounds):
        for axis in turned(list(SIZES), number):
            answers[axis].append(answer_of([sys.executable, HERE / "growth_steps.py", axis]))
        print(f"growth: round {number + 1} of {rounds}", file=sys.stderr)
    return answers
