"""Rounds in which one thread and several read the same files."""

from __future__ import annotations

import shutil
import sys
from pathlib import Path
from typing import Any

from jobs import HERE, Answers, Trial, answer_of, turned

FILES = 64
REPETITIONS = 5
THREADS = {"one thread": 1, "two threads": 2, "eight threads": 8}


def files_of(trial: Trial) -> list[Path]:
    """Copies of the trial's file, so that every thread has files of its own."""
    folder = trial.folder / "threads"
    folder.mkdir(exist_ok=True)
    paths = [folder / f"{trial.kind}_{number}.c3d" for number in range(FILES)]
    for path in paths:
        if not path.exists() or path.stat().st_mtime < trial.path.stat().st_mtime:
            shutil.copyfile(trial.path, path)
        path.read_bytes()  # into the page cache
    return paths


def run_once(kind: str, paths: list[Path]) -> dict[str, Any]:
    program = HERE / "read_in_threads.py"
    return answer_of([sys.executable, program, str(THREADS[kind]), str(REPETITIONS), *paths])


def run_rounds(trial: Trial, rounds: int) -> Answers:
    """Answers for each number of threads, one a round."""
    paths = files_of(trial)
    answers: Answers = {kind: [] for kind in THREADS}
    for number in range(rounds):
        for kind in turned(list(THREADS), number):
            answers[kind].append(run_once(kind, paths))
        print(f"threads: round {number + 1} of {rounds}", file=sys.stderr)
    return answers


def disagreements(answers: Answers) -> list[str]:
    return [
        f"threads: {kind} read other trials"
        for kind, given in answers.items()
        if not all(answer["complete"] for answer in given)
    ]
