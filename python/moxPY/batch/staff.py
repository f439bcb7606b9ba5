"""Who works on files: threads, processes, or an executor that the user has."""

from __future__ import annotations

import multiprocessing
import os
import pickle
import signal
from collections.abc import Callable, Iterator
from concurrent.futures import (
    BrokenExecutor,
    Executor,
    Future,
    ProcessPoolExecutor,
    ThreadPoolExecutor,
)
from contextlib import contextmanager
from typing import Any

# How many files an executor of the user may work on at once, when nothing says how many it can.
UNKNOWN = 64


class Staff:
    """An executor, which is ended with the batch if the batch has made it.

    Parameters
    ----------
    executor : {None, "threads", "processes"} or executor
    jobs : int, optional
        Files that are worked on at once.
    """

    def __init__(self, executor: Any, jobs: int | None) -> None:
        if jobs is not None and jobs < 1:
            raise ValueError(f"jobs is how many files are worked on at once, not {jobs}")
        self._make: Callable[[int], Executor] | None = None
        self._executor = executor
        if executor is None or executor == "threads":
            self._make = _threads
        elif executor == "processes":
            self._make = _processes
        elif isinstance(executor, str):
            raise ValueError(
                f"an executor is 'threads', 'processes' or an object, not {executor!r}"
            )
        elif not callable(getattr(executor, "submit", None)):
            raise TypeError(f"an executor has a method submit, {type(executor).__name__} has none")
        self.jobs = jobs or (processors() if self._make else _size_of(executor))
        if self._make:
            self._executor = None

    @property
    def elsewhere(self) -> bool:
        """Whether what is done goes through pickles."""
        return self._make is not _threads and not isinstance(self._executor, ThreadPoolExecutor)

    @property
    def replaceable(self) -> bool:
        """Whether processes that died can be replaced by others."""
        return self._make is _processes

    def require_portable(self, function: Any) -> None:
        """TypeError for a function that our processes could not find; others have their ways."""
        if not self.replaceable:
            return
        try:
            pickle.dumps(function)
        except Exception as error:
            raise TypeError(
                f"processes call functions that a module defines, not {function!r}: {error}"
            ) from None

    def submit(self, function: Callable[..., Any], *arguments: Any) -> Future[Any]:
        """What the executor promises; broken ones tell it by their promises only."""
        if self._executor is None and self._make:
            self._executor = self._make(self.jobs)
        try:
            with _interrupts_held(self.replaceable):
                future: Future[Any] = self._executor.submit(function, *arguments)
        except BrokenExecutor as error:
            future = Future()
            future.set_exception(error)
        return future

    def end(self) -> None:
        """End what was begun; `submit` begins anew."""
        if self._make and self._executor is not None:
            executor, self._executor = self._executor, None
            executor.shutdown(wait=True, cancel_futures=True)


def processors() -> int:
    """How many processors this process may use."""
    try:
        return len(os.sched_getaffinity(0))
    except AttributeError:  # a system without
        return os.cpu_count() or 1


def _size_of(executor: Any) -> int:
    # Those of the standard library, and others that follow it, know their size by this name.
    size = getattr(executor, "_max_workers", None)
    return size if isinstance(size, int) and size > 0 else UNKNOWN


def _threads(jobs: int) -> Executor:
    return ThreadPoolExecutor(jobs, thread_name_prefix="moxPY")


def _processes(jobs: int) -> Executor:
    # A fork would inherit locks that other threads hold.
    context = multiprocessing.get_context("spawn")
    return ProcessPoolExecutor(jobs, mp_context=context, initializer=_leave_interrupts_alone)


@contextmanager
def _interrupts_held(wanted: bool) -> Iterator[None]:
    """Ctrl-C comes later, if it comes meanwhile; a process that begins has it held back, too."""
    if not wanted or not hasattr(signal, "pthread_sigmask"):
        yield
        return
    before = signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGINT})
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)


def _leave_interrupts_alone() -> None:
    """Ctrl-C reaches all processes of a terminal; the one that waits for the others decides."""
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    if hasattr(signal, "pthread_sigmask"):
        signal.pthread_sigmask(signal.SIG_UNBLOCK, {signal.SIGINT})
