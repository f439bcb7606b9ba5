"""Rounds in which a folder of small trials becomes one Parquet file, in two ways."""

from __future__ import annotations

import sys
from pathlib import Path

import moxPY as mox
from column_sums import agree
from jobs import HERE, Answers, Trial, answer_of, turned

FILES = 500
WAYS = ("moxPY", "ezc3d")
# Seconds each: they hardly differ from round to round.
ROUNDS = 3


def folder_of(trial: Trial) -> Path:
    """Trials that differ in every number, so that nothing is found to repeat."""
    folder = trial.folder / "folder"
    folder.mkdir(exist_ok=True)
    paths = [folder / f"{trial.kind}_{number:03}.c3d" for number in range(FILES)]
    made = trial.path.stat().st_mtime
    if not all(path.exists() and path.stat().st_mtime >= made for path in paths):
        print(f"making {FILES} files like {trial.path.name}", file=sys.stderr)
        for number, path in enumerate(paths):
            with mox.read(trial.path) as shifted:
                shifted.markers.values = shifted.markers.values + 0.37 * number
                shifted.write(path)
    for path in paths:
        path.read_bytes()  # into the page cache
    return folder


def run_rounds(trial: Trial, rounds: int) -> Answers:
    """Answers of both ways, one a round."""
    folder = folder_of(trial)
    program, place = HERE / "collect_folder.py", trial.folder / "all.parquet"
    answers: Answers = {way: [] for way in WAYS}
    for number in range(min(rounds, ROUNDS)):
        for way in turned(WAYS, number):
            answers[way].append(answer_of([sys.executable, program, way, folder, place]))
        print(f"folder: round {number + 1} of {min(rounds, ROUNDS)}", file=sys.stderr)
    return answers


def disagreements(answers: Answers) -> list[str]:
    first, *others = [answer for given in answers.values() for answer in given]
    same = all(
        answer["files"] == first["files"]
        and answer["columns"] == first["columns"]
        and agree(answer["sums"], first["sums"])
        for answer in others
    )
    complete = len(first["files"]) == FILES
    return [] if same and complete else ["folder: the tables are not the same"]
