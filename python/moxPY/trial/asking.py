"""The functions of the extension as the view asks them: a closed trial says that it is closed."""

from __future__ import annotations

from collections.abc import Callable
from typing import TYPE_CHECKING, Any, TypeVar

if TYPE_CHECKING:
    from .trial import Trial

CLOSED = "the trial was closed"  #: what `_moxPY.trial` says of one

_Answer = TypeVar("_Answer")


def ask(function: Callable[..., _Answer], trial: Trial, *arguments: Any) -> _Answer:
    """What a ``mox…`` function gives for a trial. Of a closed one they say "invalid null reference"
    and the name of the function, which is for those who called it."""
    try:
        return function(trial, *arguments)
    except ValueError:
        if trial.closed:
            raise ValueError(CLOSED) from None
        raise
