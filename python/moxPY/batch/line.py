"""Files that are worked on, each taken in its turn."""

from __future__ import annotations

import os
from collections import deque
from concurrent.futures import BrokenExecutor, Future
from concurrent.futures.process import BrokenProcessPool
from dataclasses import dataclass
from pathlib import Path
from typing import Any

from .staff import Staff
from .work import Outcome, Work, ready


@dataclass
class Job:
    """A file and the promise of its outcome."""

    file: Path
    future: Future[Outcome]

    @property
    def is_lost(self) -> bool:
        """Whether it ended without an outcome, with a process that died."""
        future = self.future
        return not future.done() or future.cancelled() or future.exception() is not None


class Line:
    """Files that are worked on by some staff; the first that was added is the first that is taken.

    Of our own processes, one that dies takes all others with it. They are replaced: the first file
    is done alone, to learn whether it was its fault, and those behind it are done again.
    """

    def __init__(self, work: Work[Any], staff: Staff) -> None:
        self._work = work
        self._staff = staff
        self._jobs: deque[Job] = deque()

    def __len__(self) -> int:
        return len(self._jobs)

    def add(self, file: Path) -> None:
        """Let somebody work on a file."""
        self._jobs.append(Job(file, self._begun(file)))

    def take(self) -> tuple[Path, Outcome]:
        """The first file and its outcome, when it is there."""
        first = self._jobs[0]
        try:
            outcome = first.future.result()
        except BrokenExecutor as error:
            outcome = self._repeated() if self._staff.replaceable else Outcome(None, error)
        except Exception as error:  # the executor's: what it cannot pickle, what was cancelled
            outcome = Outcome(None, error)
        self._jobs.popleft()
        return first.file, outcome

    def close(self) -> None:
        """Cancel what waits, and wait for what runs where it is ours."""
        for job in self._jobs:
            job.future.cancel()
        self._jobs.clear()
        self._staff.end()

    def _begun(self, file: Path) -> Future[Outcome]:
        # Workers may have another working directory.
        path = os.path.abspath(file) if self._staff.elsewhere else os.fspath(file)  # noqa: PTH100
        return self._staff.submit(self._work, path)

    def _repeated(self) -> Outcome:
        """The outcome of the first file, with new processes."""
        self._staff.end()
        self._require_beginning()
        outcome = self._alone(self._jobs[0].file)
        for job in list(self._jobs)[1:]:
            if job.is_lost:
                job.future = self._begun(job.file)
        return outcome

    def _alone(self, file: Path) -> Outcome:
        try:
            return self._begun(file).result()
        except BrokenExecutor:
            self._staff.end()
            return Outcome(
                None, BrokenProcessPool("the process ended while it worked on this file")
            )
        except Exception as error:
            return Outcome(None, error)

    def _require_beginning(self) -> None:
        try:
            self._staff.submit(ready, self._work).result()
        except BrokenExecutor:
            raise RuntimeError(
                "no process can begin: a script that uses processes does so below "
                '`if __name__ == "__main__":`, and the function is one that a module defines'
            ) from None
