"""What comes back from a batch, file by file."""

from __future__ import annotations

from collections.abc import Generator, Iterator, Mapping
from contextlib import closing
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any, Generic, NamedTuple, Self, TypeVar

from ..trial.extras import require
from .line import Line
from .progress import progress_bar
from .staff import Staff
from .work import Outcome, Work

if TYPE_CHECKING:
    import pandas  # type: ignore[import-untyped, import-not-found, unused-ignore]

T = TypeVar("T")

# Files that are begun for each that is worked on: nobody waits while the first one takes long, and
# what was done before its turn takes little memory.
AHEAD = 4


class Result(NamedTuple, Generic[T]):
    """What became of one file."""

    file: Path  #: as it was given, or as it was found
    value: T | None  #: what the function returned; None where there is an error
    error: Exception | None  #: why the file could not be read, or what the function raised


class Results(Iterator[Result[T]]):
    """The results of a batch, in the order of the files, each as soon as it is there.

    Nothing is begun before the first one is asked for, and only some files are begun ahead of the
    one whose turn it is. What was taken is not kept, except what is in `errors`.

    Leaving a ``with`` block, or `close`, cancels what was not begun, and waits for what was.
    """

    def __init__(
        self, files: list[Path], work: Work[T], staff: Staff, *, progress: bool, stops: bool
    ) -> None:
        self.errors: list[Result[T]] = []  #: the results with errors, of those that were taken
        self._stops = stops
        self._steps = _steps(files, Line(work, staff), AHEAD * staff.jobs, progress)

    def __next__(self) -> Result[T]:
        file, outcome = next(self._steps)
        result: Result[T] = Result(file, *outcome)
        if result.error is not None:
            self.errors.append(result)
            if self._stops:
                self.close()
                result.error.add_note(f"The file is '{file}'.")
                raise result.error
        return result

    def to_pandas(self) -> pandas.DataFrame:
        """The results that were not yet taken as a data frame, a row a file.

        Returns
        -------
        pandas.DataFrame
            Columns ``file``, what the function returned, and ``error``, the text of the error or
            None. A dictionary gives a column for each of its keys, anything else is in ``value``.

        Raises
        ------
        ImportError
            pandas is not installed.
        ValueError
            A dictionary has a key ``file`` or ``error``.
        """
        packaged = require("pandas")
        with self:
            rows = [_row_of(result) for result in self]
        columns = dict.fromkeys(key for row in rows for key in row if key != "error")
        frame: pandas.DataFrame = packaged.DataFrame(
            rows, columns=[*(columns or ["file"]), "error"]
        )
        return frame

    def close(self) -> None:
        """Begin no other file, and wait for those that were begun."""
        self._steps.close()

    def __enter__(self) -> Self:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()


def _steps(
    files: list[Path], line: Line, ahead: int, progress: bool
) -> Generator[tuple[Path, Outcome], None, None]:
    with progress_bar(len(files), progress) as advance, closing(line):
        for file in files:
            line.add(file)
            if len(line) >= ahead:
                yield line.take()
                advance()
        while line:
            yield line.take()
            advance()


def _row_of(result: Result[Any]) -> dict[str, Any]:
    value, error = result.value, result.error
    if error is not None:
        return {"file": str(result.file), "error": str(error) or type(error).__name__}
    columns = value if isinstance(value, Mapping) else {"value": value}
    if taken := {"file", "error"} & columns.keys():
        raise ValueError(f"'{result.file}': the table has a column '{taken.pop()}' of its own")
    return {"file": str(result.file), **columns, "error": None}
