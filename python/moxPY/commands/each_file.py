"""One function over all files: results in order, and a line for each file that fails."""

from __future__ import annotations

import sys
from collections.abc import Callable, Iterator, Sequence
from pathlib import Path
from typing import Any, Generic, TypeVar

import click

from ..batch import gather
from ..trial import Trial, read
from .lines import write_line
from .reasons import reason

_Value = TypeVar("_Value")


class EachFile(Generic[_Value]):
    """Calls a function for each trial that is meant.

    Iterating gives files and what the function gave, in order. What fails is told on standard
    error, and counts.
    """

    def __init__(
        self,
        function: Callable[[Trial], _Value],
        files: Sequence[Path],
        *,
        jobs: int | None = None,
        executor: Any = None,
        progress: bool = False,
    ) -> None:
        self._function = function
        self._files = files
        self.failed = 0

    def __iter__(self) -> Iterator[tuple[Path, _Value]]:
        for file in self._files:
            try:
                with read(file) as trial:
                    value = self._function(trial)
            except Exception as error:
                self._tell(file, error)
            else:
                yield file, value

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
