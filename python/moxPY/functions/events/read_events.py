"""Events: foot strikes, foot offs and other instants of a trial.

The name of an event is its context followed by its label, with nothing between them and without
underscores: context "Left" and label "Foot Strike" give "LeftFoot Strike". All occurrences of one
name are kept together.
"""

from __future__ import annotations

from typing import Any

import _moxPY

from ...acquisition import Acquisition

__all__ = ["moxGetEventNumber", "moxGetEvents", "moxGetEventsValues"]


def moxGetEvents(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All events.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    times : dict of str to ndarray of float32, shape (occurrences,)
        Seconds on the trial's own clock, where frame 1 is time 0, in the order in which they came.
        An event that occurs once gives a float.
    info : dict
        ``"subject"`` of each event and ``"units"``; events have none: ``{"ALLEVENTS": ""}``.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of events.
    SystemError
        An event lacks its subject; the message names it.

    Examples
    --------
    >>> times, info = moxGetEvents(trial)
    >>> [f"{time:.2f}" for time in times["LeftFoot Strike"]]
    ['0.75', '1.85', '2.95']
    >>> info["subject"]["LeftFoot Strike"], info["units"]
    ('Walker', {'ALLEVENTS': ''})
    """
    return _moxPY.moxGetEvents(acquisition)


def moxGetEventNumber(acquisition: Acquisition) -> float:
    """Number of occurrences of all events.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    occurrences : float
        A whole number.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of events.

    Examples
    --------
    >>> moxGetEventNumber(trial)
    13.0
    """
    return _moxPY.moxGetEventNumber(acquisition)


def moxGetEventsValues(acquisition: Acquisition) -> list[Any]:
    """All occurrences of all events as four columns, event by event.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    times : ndarray of float64, shape (occurrences,)
        Seconds on the trial's own clock, where frame 1 is time 0.
    names : list of str
        Name of the event: context and label.
    descriptions : list of str
        Description of the event.
    ids : ndarray of int32, shape (occurrences,)
        Id of the event: 0 for a general mark, 1 for a foot strike, 2 for a foot off.

    Raises
    ------
    TypeError
        This is no acquisition. One without the group of events gives four empty results.

    Examples
    --------
    >>> times, names, descriptions, ids = moxGetEventsValues(trial)
    >>> float(times[0].round(2)), names[0], descriptions[0], int(ids[0])
    (0.2, 'RightFoot Strike', 'The foot first touches the floor', 1)
    """
    return _moxPY.moxGetEventsValues(acquisition)
