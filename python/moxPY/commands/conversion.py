"""What ``moxpy convert`` does with one file, on this machine or another."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass, replace
from itertools import accumulate
from pathlib import Path

from ..formats import Options, formats
from ..formats.export import write_as
from ..trial import Trial


@dataclass(frozen=True, slots=True)
class Task:
    """How files are converted.

    A scheduler lets another worker do again what one that died may have done, so results that are
    there may be this call's own. `occupied` has the stems that had results before it began; those
    of all others are replaced. None where nothing is done again: results that are there are not
    replaced then.
    """

    format: str
    folder: Path
    options: Options
    replace: bool
    occupied: frozenset[str] | None = None


def convert(trial: Trial, task: Task) -> list[Path]:
    """Write a trial in a format, under the name of its file. The files that were made."""
    assert trial.path is not None
    stem = trial.path.stem
    is_own = task.occupied is not None and stem not in task.occupied
    format = formats()[task.format]
    return write_as(format, trial, task.folder, stem, task.options, replace=task.replace or is_own)


def elsewhere(task: Task, files: Iterable[Path]) -> Task:
    """The task for workers that know no current folder and may do a file twice."""
    stems = {file.stem for file in files}
    suffix = formats()[task.format].suffix
    there = task.folder.iterdir() if task.folder.is_dir() else ()
    names = [each.name.removesuffix(suffix) for each in there if each.name.endswith(suffix)]
    # A result is STEM or STEM_PART, and both may have further "_" in them.
    starts = {start for name in names for start in accumulate(name.split("_"), "{}_{}".format)}
    return replace(task, folder=task.folder.absolute(), occupied=frozenset(stems & starts))
