"""Compares reading and writing C3D files with plain C++ programs and with other packages,
appending to an acquisition with reading it, eight threads that read with one, one table of a folder
with the same through other packages, and calls on trials of growing size with each other.

    python run.py --build BUILD [--rounds N] [--trial KIND] [--job JOB] [--page DOCS]

JOB is reading, writing, appending, threads, batch, folder or growth; KIND is one of make_trial.py.

BUILD is a build folder with the module and the plain programs. Its subfolder `benchmarks` keeps the
files that are read, which are made when they are missing, and `results.json`. README.md beside
this program says what is measured and how. The exit code is 1 when a reader or a writer gives other
values than were there.
"""

from __future__ import annotations

import argparse
import json
import os
import sys
from pathlib import Path
from typing import Any

import appending
import batching
import collecting
import growing
import reading
import threads
import writing
from jobs import Trial
from page import write_page
from report import (
    appending_summary,
    appending_table,
    batch_summary,
    batch_table,
    folder_summary,
    folder_table,
    growth_summary,
    growth_table,
    machine,
    summary,
    table,
    threads_summary,
    threads_table,
    writing_summary,
    writing_table,
)

JOBS_OF_A_TRIAL = ("reading", "writing")
# Other forms than the usual one are read only: what is written has that one.
JOBS_OF_KINDS = {
    "big": JOBS_OF_A_TRIAL,
    "big-integer": ("reading",),
    "big-dec": ("reading",),
    "big-mips": ("reading",),
    "typical": JOBS_OF_A_TRIAL,
    "small": JOBS_OF_A_TRIAL,
}
JOBS = (*JOBS_OF_A_TRIAL, "appending", "threads", "batch", "folder", "growth")


def measure_reading(trial: Trial, build: Path, rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = reading.run_rounds(trial, build, rounds)
    cold = reading.COLD_REPETITIONS[trial.size]
    result = summary(trial.extents, trial.path.stat().st_size, answers, cold)
    print("\n".join(table(trial.kind, result)), end="\n\n")
    return result, reading.disagreements(trial, answers)


def measure_writing(trial: Trial, build: Path, rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = writing.run_rounds(trial, build, rounds)
    result = writing_summary(
        trial.path.stat().st_size, answers, writing.COLD_REPETITIONS[trial.size]
    )
    print("\n".join(writing_table(trial.kind, result)), end="\n\n")
    return result, writing.disagreements(trial)


def measure_appending(rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = appending.run_rounds(rounds)
    result = appending_summary(appending.COUNTS, answers)
    print("\n".join(appending_table(result)), end="\n\n")
    return result, appending.disagreements(answers)


def measure_threads(trial: Trial, rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = threads.run_rounds(trial, rounds)
    result = threads_summary(answers, threads.FILES)
    print("\n".join(threads_table(result, len(os.sched_getaffinity(0)))), end="\n\n")
    return result, threads.disagreements(answers)


def measure_folder(trial: Trial, rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = collecting.run_rounds(trial, rounds)
    result = folder_summary(answers, collecting.FILES)
    print("\n".join(folder_table(result)), end="\n\n")
    return result, collecting.disagreements(answers)


def measure_batch(trial: Trial, rounds: int) -> tuple[dict[str, Any], list[str]]:
    answers = batching.run_rounds(trial, rounds)
    result = batch_summary(answers)
    print("\n".join(batch_table(result)), end="\n\n")
    return result, batching.disagreements(answers)


def measure_growth(rounds: int) -> dict[str, Any]:
    result = growth_summary(growing.run_rounds(rounds))
    print("\n".join(growth_table(result)), end="\n\n")
    return result


MEASURES_OF_SMALL_FILES = {
    "threads": measure_threads,
    "batch": measure_batch,
    "folder": measure_folder,
}


def made(kind: str, folder: Path) -> Trial:
    """The trial, its files made where they are missing or old."""
    trial = Trial(kind, folder)
    if not trial.is_current():
        folder.mkdir(exist_ok=True)
        trial.make()
    return trial


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--trial", choices=JOBS_OF_KINDS, action="append")
    parser.add_argument("--job", choices=JOBS, action="append")
    parser.add_argument("--page", type=Path, help="the folder of documents that gets the page")
    options = parser.parse_args()
    folder: Path = options.build.resolve() / "benchmarks"
    results: dict[str, Any] = {"machine": machine()}
    wrong: list[str] = []
    measures = {"reading": measure_reading, "writing": measure_writing}
    jobs = options.job or JOBS
    for kind in options.trial or JOBS_OF_KINDS:
        jobs_of_a_trial = [job for job in JOBS_OF_KINDS[kind] if job in jobs]
        if not jobs_of_a_trial:
            continue
        trial = made(kind, folder)
        trial.path.read_bytes()  # into the page cache
        for job in jobs_of_a_trial:
            result, deviations = measures[job](trial, folder.parent, options.rounds)
            results.setdefault(kind, {})[job] = result
            wrong += deviations
    if "appending" in jobs:
        results["appending"], deviations = measure_appending(options.rounds)
        wrong += deviations
    for job, measure_files in MEASURES_OF_SMALL_FILES.items():
        if job in jobs:
            results[job], deviations = measure_files(made("small", folder), options.rounds)
            wrong += deviations
    if "growth" in jobs:
        results["growth"] = measure_growth(options.rounds)
    folder.mkdir(exist_ok=True)
    (folder / "results.json").write_text(json.dumps(results, indent=2) + "\n")
    if options.page:
        write_page(results, options.page)
    print("\n".join(wrong), file=sys.stderr, end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
