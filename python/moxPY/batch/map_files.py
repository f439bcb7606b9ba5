"""A function over many files: `moxPY.map_files`."""

from __future__ import annotations

import secrets
from collections.abc import Callable
from concurrent.futures import Executor
from typing import Any, Literal, TypeVar

from ..trial import Trial
from ..trial.partial import Only, chosen
from .gather import Files, gather
from .results import Results
from .staff import Staff
from .work import Work

T = TypeVar("T")

ON_ERROR = ("collect", "raise")


def map_files(
    function: Callable[[Trial], T],
    files: Files,
    *,
    executor: Executor | Literal["threads", "processes"] | Any = None,
    jobs: int | None = None,
    progress: bool = True,
    on_error: Literal["collect", "raise"] = "collect",
    only: Only | None = None,
) -> Results[T]:
    """Call a function with the trial of each file, several at once.

    Parameters
    ----------
    function : callable
        It gets an open `Trial`, which is closed when it returns, unless it returns the trial
        itself. What is odd about a file is in `Trial.warnings`.
    files : path or iterable of paths
        Files, folders, patterns with ``*``, ``?``, ``[…]`` or ``**``.
    executor : {"threads", "processes"} or executor, optional
        Who calls the function. Threads, the default, read files in parallel, and share the time
        where the function is Python; processes do that in parallel, too, and then a module must
        define the function. An object with the interface of `concurrent.futures.Executor` is used
        and left open, such as ``client.get_executor()`` of Dask, of MPI or of loky.
    jobs : int, optional
        How many files are worked on at once: as many as there are processors, or as the executor
        has workers, if it says so.
    progress : bool
        Whether a terminal shows a bar, if rich is installed.
    on_error : {"collect", "raise"}
        What happens with a file that cannot be read, or for which the function raises: the result
        has the error, and the other files are done; or it is raised, and what waits is cancelled.
    only : kind or iterable of kinds, optional
        The channels that are read, as of `read`; with ``()`` a file costs little more than its
        parameters.

    Returns
    -------
    Results
        Gives a `Result` for each file, in their order: ``file``, ``value``, ``error``. The results
        that were taken are not kept, but those with errors are in ``errors``.

    Raises
    ------
    FileNotFoundError
        A folder or a pattern has no trial. A file that is missing is a result with an error.
    ValueError
        Another `on_error`, `executor` or kind, or less than one of `jobs`.
    TypeError
        `executor` is none, or no module defines the function for processes.

    Examples
    --------
    >>> import moxPY as mox
    >>> for file, count, error in mox.map_files(lambda trial: len(trial.markers), [path]):
    ...     print(file.name, count, error)
    gait_trial.c3d 40 None
    """
    if on_error not in ON_ERROR:
        raise ValueError(f"on_error is 'collect' or 'raise', not {on_error!r}")
    kinds = chosen(only)
    staff = Staff(executor, jobs)
    staff.require_portable(function)
    work = Work(function, staff.elsewhere, secrets.token_hex(8), kinds)
    stops = on_error == "raise"
    return Results(gather(files), work, staff, progress=progress, stops=stops)
