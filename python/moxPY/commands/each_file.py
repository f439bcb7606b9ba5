"""One function over all files: results in order, and a line for each file that fails."""

from __future__ import annotations

import sys
from collections.abc import Callable, Iterator, Sequence
from pathlib import Path
from typing import Any, Generic, TypeVar, cast

import click

from ..batch import gather, map_files
from ..trial import Trial
from ..trial.partial import Only
from .lines import write_line
from .reasons import reason

_Value = TypeVar("_Value")


# From so many files on it is worth while to begin processes for what Python computes.
_MANY = 16


class EachFile(Generic[_Value]):
    """Calls a function for each trial that is meant.

    Iterating gives files and what the function gave, in order. What fails is told on standard
    error, and counts.

    Parameters
    ----------
    function : callable
        Defined by a module, so that other processes find it.
    files : sequence of Path
    jobs : int, optional
        How many files are worked on at once.
    computes : bool
        Whether the function does more than to read: many files then go to processes.
    executor : executor, optional
        Who works instead.
    progress : bool
        Whether a terminal shows a bar.
    only : kind or iterable of kinds, optional
        The channels that are read, as of `read`.
    """

    def __init__(
        self,
        function: Callable[[Trial], _Value],
        files: Sequence[Path],
        *,
        jobs: int | None = None,
        computes: bool = False,
        executor: Any = None,
        progress: bool = False,
        only: Only | None = None,
    ) -> None:
        self._function = function
        self._files = files
        self._jobs = jobs
        self._executor = executor
        if executor is None and computes and len(files) >= _MANY and jobs != 1:
            self._executor = "processes"
        self._progress = progress
        self._only = only
        self.failed = 0

    def __iter__(self) -> Iterator[tuple[Path, _Value]]:
        with map_files(
            self._function,
            self._files,
            executor=self._executor,
            jobs=self._jobs,
            progress=self._progress,
            only=self._only,
        ) as results:
            for file, value, error in results:
                if error is None:
                    yield file, cast(_Value, value)
                else:
                    self._tell(file, error)

    def _tell(self, file: Path, error: BaseException) -> None:
        if isinstance(error, ImportError):  # it is missing for every other file, too
            raise click.ClickException(str(error))
        tell(file, error)
        self.failed += 1


def meant(named: Sequence[str]) -> tuple[list[Path], int]:
    """The files that arguments mean, and how many mean none, which are told."""
    found: dict[Path, None] = {}
    failed = 0
    for each in named:
        try:
            found.update(dict.fromkeys(gather(each)))
        except OSError as error:
            tell(Path(each), error)
            failed += 1
    return list(found), failed


def tell(file: Path, error: BaseException) -> None:
    """Say why a file failed."""
    sys.stdout.flush()  # so that both streams stay in order on a terminal
    write_line(f"{file}: {reason(error, file)}", sys.stderr)
