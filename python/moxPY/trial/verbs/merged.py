"""A trial with the channels of another recording of the same frames."""

from __future__ import annotations

from typing import TYPE_CHECKING

from _moxPY import trial as calls

from ..display import abridged

if TYPE_CHECKING:
    from ..trial import Trial

_CLOCK = {
    "rate": "rate",
    "frames": "number of frames",
    "first_frame": "first frame",
}


def merged(trial: Trial, other: Trial, *, suffix: str | None = None) -> Trial:
    """A trial with the channels and events of two that recorded the same frames.

    Channels of the other trial stand behind those of this one, with unit, description, residuals,
    camera masks and the scaling of analog channels. Events that both have are there once. Metadata
    are those of this trial; force platforms and rotations of the other are left out. Where only a
    part of either file was read, the trial is part of both (`Trial.unread`).

    Parameters
    ----------
    other : Trial
        A trial of the same rate, frames and first frame, and of the same analog samples in each
        frame unless one of both has no analog channels.
    suffix : str, optional
        What the labels of the other trial get where both trials have them. Without one such labels
        are refused. Points of all kinds share their labels, analog channels have their own.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        The trials differ in their frames, or two channels would have one label; the message names
        them.
    TypeError
        `other` is no `Trial`; `Trial.of` makes one of an acquisition.

    Examples
    --------
    >>> both = trial.merged(trial, suffix="_copy")
    """
    both = trial.copy()
    if not hasattr(other, "points"):  # an acquisition of the functions, say
        raise TypeError(f"expected a Trial, got {type(other).__name__}")
    for name, what in _CLOCK.items():
        _require_equal(what, getattr(trial, name), getattr(other, name))
    if trial.analogs and other.analogs:
        what = "number of analog samples in each frame"
        _require_equal(what, trial.samples_per_frame, other.samples_per_frame)
    points = _new_labels(trial.points.labels, other.points.labels, suffix)
    analogs = _new_labels(trial.analogs.labels, other.analogs.labels, suffix)
    if other.analogs and both.samples_per_frame != other.samples_per_frame:
        calls.set_time_base(both, both.rate, other.samples_per_frame, both.frames)
    for label, channel in other.points.items():
        getattr(both, channel.kind)[points[label]] = channel
    for label, channel in other.analogs.items():
        both.analogs[analogs[label]] = channel
    _join_events(both, other)
    calls.carry_unread(both, other)
    return both


def _require_equal(what: str, mine: float, theirs: float) -> None:
    if mine != theirs:
        raise ValueError(f"the trials differ in their {what}: {mine:g} and {theirs:g}")


def _new_labels(mine: list[str], theirs: list[str], suffix: str | None) -> dict[str, str]:
    """What channels of the other trial are to be called, by what they are called there."""
    taken = set(mine)
    labels = {label: label if label not in taken else label + (suffix or "") for label in theirs}
    met = set(mine)
    equal = []
    for label in labels.values():
        if label in met:
            equal.append(label)
        met.add(label)
    if equal:
        hint = "give a suffix for those of the other" if suffix is None else "give another suffix"
        raise ValueError(f"both trials would have the labels {abridged(equal)}; {hint}")
    return labels


def _join_events(both: Trial, other: Trial) -> None:
    there = set(both.events)
    for event in other.events:
        if event in there:
            continue
        there.add(event)
        calls.append_event(
            both,
            (
                event.time,
                event.label,
                event.context,
                event.subject,
                event.description,
                event.id,
            ),
        )
