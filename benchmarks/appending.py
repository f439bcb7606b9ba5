"""Rounds in which things are appended one by one."""

from __future__ import annotations

import sys
from typing import Any

from jobs import HERE, Answers, answer_of, turned

# Name of the kind, as append_things.py has it -> how many are appended.
COUNTS = {
    "events of one set": 8000,
    "events of many sets": 1000,
    "points": 1000,
    "analog channels": 1000,
    "metadata entries": 1500,
}


def run_once(kind: str) -> dict[str, Any]:
    return answer_of([sys.executable, HERE / "append_things.py", kind, str(COUNTS[kind])])


def run_rounds(rounds: int) -> Answers:
    """Answers for every kind, one a round."""
    answers: Answers = {kind: [] for kind in COUNTS}
    for number in range(rounds):
        for kind in turned(list(COUNTS), number):
            answers[kind].append(run_once(kind))
        print(f"appending: round {number + 1} of {rounds}", file=sys.stderr)
    return answers


def disagreements(answers: Answers) -> list[str]:
    return [
        f"appending: not all {kind} are there"
        for kind, given in answers.items()
        if not all(answer["complete"] for answer in given)
    ]
