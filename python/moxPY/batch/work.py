"""What is done with one file, in whichever thread, process or machine that happens."""

from __future__ import annotations

import os
import pickle
import traceback
from collections.abc import Callable
from dataclasses import dataclass
from typing import Any, Generic, NamedTuple, TypeVar

from ..trial import Trial, read
from ..trial.partial import Kind

T = TypeVar("T")


class Outcome(NamedTuple):
    """What a function gave, or the error that it, or reading, ended with."""

    value: Any
    error: Exception | None


@dataclass(frozen=True)
class Work(Generic[T]):
    """Reading a file and calling a function with the trial.

    `elsewhere` says that the outcome goes through a pickle. `run` is another one for each batch:
    executors that remember what they computed must not give what a file held some time ago. `only`
    is as of `read`.
    """

    function: Callable[[Trial], T]
    elsewhere: bool
    run: str
    only: tuple[Kind, ...] | None = None

    def __call__(self, path: str) -> Outcome:
        try:
            return Outcome(self._value_of(path), None)
        except Exception as error:
            return Outcome(None, _portable(error) if self.elsewhere else error)

    def _value_of(self, path: str) -> T:
        trial = read(path, odd="ignore", only=self.only)
        value = None
        try:
            value = self.function(trial)
        finally:
            if value is not trial:
                trial.close()
        return value


def ready(work: Work[Any]) -> int:
    """That a process can begin and knows the function: its number."""
    return os.getpid()


def _portable(error: Exception) -> Exception:
    """The error as it can travel, with the lines of code that it came from as a note."""
    lines = "".join(traceback.format_exception(error)).rstrip()
    try:
        if type(pickle.loads(pickle.dumps(error))) is not type(error):
            raise TypeError("another type comes out")
    except Exception:  # whatever their own pickling does
        text = _text_of(error)
        error = RuntimeError(
            f"{type(error).__qualname__}: {text}" if text else type(error).__name__
        )
    error.add_note(f"Where it was raised:\n{lines}")
    return error


def _text_of(error: Exception) -> str:
    try:
        return str(error)
    except Exception:
        return ""
