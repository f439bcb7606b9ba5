"""One table of many files: `moxPY.collect`."""

from __future__ import annotations

import os
import warnings
from collections.abc import Callable
from concurrent.futures import Executor
from contextlib import closing
from pathlib import Path
from typing import TYPE_CHECKING, Any, Literal

from ..trial import Trial, TrialWarning
from ..trial.extras import require
from ..trial.partial import Only
from .blocks import Block, with_files
from .gather import Files
from .map_files import map_files
from .schema import Misfit
from .sinks import sink_for
from .stacking import OwnColumn, Stacking
from .tables import Tabled

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]

# Files that the warning names.
NAMED = 3


def collect(
    function: Callable[[Trial], Any],
    files: Files,
    *,
    to: Literal["pandas", "polars", "arrow"] | str | os.PathLike[str] | None = None,
    executor: Executor | Literal["threads", "processes"] | Any = None,
    jobs: int | None = None,
    progress: bool = True,
    on_error: Literal["collect", "raise"] = "collect",
    only: Only | None = None,
) -> Any:
    """One table of what a function gives for each of many files.

    Parameters
    ----------
    function : callable
        It gets an open `Trial`, and gives the rows of this file: a data frame of pandas or polars,
        a table of Arrow, a dictionary of columns (an array (n, 3) is three of them, a single value
        is that of every row), a dictionary of values for one row, a list of such dictionaries,
        channels such as ``trial.markers``, or None for no rows.
    files : path or iterable of paths
        Files, folders, patterns with ``*``, ``?``, ``[…]`` or ``**``.
    to : {"pandas", "polars", "arrow"} or path, optional
        The package whose table is made, of which pandas is the default; or the file, with a name
        like ``all.parquet``. It is written as the rows come, so that any number of trials needs the
        memory of some, and takes the place of another one once it is complete.
    executor, jobs, progress
        As of `map_files`.
    on_error : {"collect", "raise"}
        Whether files that cannot be read, or for which the function fails, are left out with a
        warning, or whether the first error ends it all.
    only : kind or iterable of kinds, optional
        The channels that are read, as of `read`; with ``()`` a file costs little more than its
        parameters.

    Returns
    -------
    pandas.DataFrame, polars.DataFrame, pyarrow.Table or pathlib.Path
        The rows of the files in their order, with the column ``file`` before those of the function;
        of a file its path. A column that some files lack is null there; integers and floats make
        floats. Of frames of pandas an index with a name is columns, and names of several parts are
        joined: ``LASI_x``. A frame of pandas has the texts of errors by file in
        ``attrs["errors"]``.

    Warns
    -----
    TrialWarning
        Files are not in the table.

    Raises
    ------
    ImportError
        pyarrow, or the package that is asked for, is not installed.
    ValueError, TypeError, FileNotFoundError
        As of `map_files`; or another `to`.
    Exception
        All files fail: the error of the first one, for there is no table then.

    Examples
    --------
    >>> import moxPY as mox
    >>> mox.collect(lambda trial: trial.angles, [path]).columns.to_list()[:3]
    ['file', 'time', 'LPelvisAngles_x']
    """
    results = map_files(
        Tabled(function),
        files,
        executor=executor,
        jobs=jobs,
        progress=progress,
        on_error=on_error,
        only=only,
    )
    failed: dict[str, Exception] = {}
    with closing(sink_for(to)) as sink, results:
        stacking = Stacking(sink)
        for file, rows, error in results:
            if rows is not None:
                error = _added(stacking, file, rows)
            if error is not None:
                if on_error == "raise":
                    raise error
                failed[str(file)] = error
        stacking.flush()
        if sink.is_empty:
            _require_success(failed)
            sink.add(with_files(require("pyarrow").table({}), [], []))
        whole = sink.finished()
    if failed:
        _warn(failed)
        if to in (None, "pandas"):
            whole.attrs["errors"] = {file: _text_of(error) for file, error in failed.items()}
    return whole


def _added(stacking: Stacking, file: Path, rows: pyarrow.Table | Block) -> Exception | None:
    """Add the rows of a file; the error if they do not fit."""
    try:
        stacking.add(file, rows)
    except Misfit as misfit:
        return TypeError(f"'{file}': {misfit}")
    except OwnColumn as error:
        return ValueError(f"'{file}': {error}")
    return None


def _require_success(failed: dict[str, Exception]) -> None:
    for file, error in failed.items():
        error.add_note(f"The file is '{file}'; all files fail.")
        raise error


def _warn(failed: dict[str, Exception]) -> None:
    some = [f"\n  {file}: {_text_of(error)}" for file, error in list(failed.items())[:NAMED]]
    others = len(failed) - len(some)
    rest = f"\n  and {others} more" if others else ""
    what = "file is" if len(failed) == 1 else "files are"
    text = f"{len(failed)} {what} not in the table:{''.join(some)}{rest}"
    warnings.warn(text, TrialWarning, stacklevel=3)


def _text_of(error: Exception) -> str:
    return f"{type(error).__name__}: {error}"
