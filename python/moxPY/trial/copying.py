"""A trial like another one, in this process or in another."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from _moxPY import trial as calls

if TYPE_CHECKING:
    from .trial import Trial


def copy(trial: Trial) -> Trial:
    """A trial of its own that holds the same: what changes in one does not change in the other.

    Samples are in memory once until one of both trials changes them, so copying is cheap.
    `copy.copy` and `copy.deepcopy` do the same.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        The trial was closed.

    Examples
    --------
    >>> changed = trial.copy()
    >>> del changed.markers["LFHD"]
    >>> "LFHD" in trial.markers
    True
    """
    return type(trial).of(calls.copy(trial))


def deep_copy(trial: Trial, memo: dict[int, Any]) -> Trial:
    """The same for `copy.deepcopy`."""
    return copy(trial)


def reduce(trial: Trial) -> tuple[Any, ...]:
    """For `pickle`: the trial with every bit of its numbers, the path that it was read from and its
    warnings. A pickle is for other processes, and for other times of the same version."""
    return _restored, (type(trial), calls.dump(trial))


def _restored(kind: type[Trial], image: bytes) -> Trial:
    return kind.of(calls.load(image))
