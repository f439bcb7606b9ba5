"""Adding, describing and removing events.

The name of an event is its context followed by its label, with nothing between them and without
underscores: context "Left" and label "Foot_Strike" give "LeftFootStrike". Names with underscores
find the event too.
"""

from __future__ import annotations

from typing import Any, NoReturn

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxAppendEvent",
    "moxClearEvents",
    "moxSetEventDescription",
    "moxSetEventId",
    "moxSetEventLabel",
    "moxSetEventSubject",
    "moxSetEventTime",
]


def moxAppendEvent(
    acquisition: Acquisition,
    label: str,
    time: float,
    context: str,
    subject: str = "",
    description: str = "",
    id: int = -1,
) -> list[dict[str, Any]]:
    """Add an occurrence of an event, which is created when there is none of this name.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    label : str
        What happens, such as "Foot Strike" or "Foot Off".
    time : float
        Seconds on the trial's own clock, where frame 1 is time 0; kept in single precision.
    context : str
        Whom it concerns, such as "Left", "Right" or "General".
    subject : str, optional
        Name of the subject. An event that exists keeps the one it has; what is given here stands
        in the file for this occurrence, else what the event has. The same goes for `description`
        and `id`.
    description : str, optional
        Any text. An event that exists keeps the one it has, unless that is empty.
    id : int, optional
        0 for a general mark, 1 for a foot strike, 2 for a foot off; -1 leaves it to the label. An
        event that exists keeps the one it has.

    Returns
    -------
    times : dict of str to ndarray of float32, shape (occurrences,)
        All events after the change, as `moxGetEvents` gives them.
    info : dict
        ``"subject"`` of each event and ``"units"``, likewise.

    Raises
    ------
    RuntimeError
        The time is infinite or NaN, context and label are both empty or hold "/" or "\\\\", or the
        acquisition lacks the group of events; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 100)
    >>> times, info = moxAppendEvent(made, "Foot_Strike", 0.5, "Left", "Walker")
    >>> times, info["subject"]
    ({'LeftFootStrike': 0.5}, {'LeftFootStrike': 'Walker'})
    >>> times, info = moxAppendEvent(made, "Foot_Strike", 1.5, "Left")
    >>> times["LeftFootStrike"].tolist()
    [0.5, 1.5]
    """
    return _moxPY.moxAppendEvent(acquisition, label, time, context, subject, description, id)


def moxSetEventDescription(
    acquisition: Acquisition, event: str, description: str
) -> list[dict[str, Any]]:
    """Set the description of an event, for all its occurrences.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    event : str
        Name of the event: context and label.
    description : str
        Any text.

    Returns
    -------
    times : dict of str to ndarray of float32, shape (occurrences,)
        All events, as `moxGetEvents` gives them.
    info : dict
        ``"subject"`` of each event and ``"units"``, likewise.

    Raises
    ------
    RuntimeError
        There is no such event; the message names it.

    Examples
    --------
    >>> times, info = moxSetEventDescription(trial, "LeftFoot Strike", "heel contact")
    >>> moxGetEventsValues(trial)[2].count("heel contact")
    3
    >>> moxSetEventDescription(trial, "Left_Heel", "heel contact")
    Traceback (most recent call last):
    RuntimeError: Event label 'LeftHeel' doesn't exist
    """
    return _moxPY.moxSetEventDescription(acquisition, event, description)


def moxSetEventId(acquisition: Acquisition, event: str, id: int) -> list[dict[str, Any]]:
    """Set the id of an event, for all its occurrences.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    event : str
        Name of the event: context and label.
    id : int
        0 for a general mark, 1 for a foot strike, 2 for a foot off, or any other number.

    Returns
    -------
    times : dict of str to ndarray of float32, shape (occurrences,)
        All events, as `moxGetEvents` gives them.
    info : dict
        ``"subject"`` of each event and ``"units"``, likewise.

    Raises
    ------
    RuntimeError
        There is no such event; the message names it.

    Examples
    --------
    >>> times, info = moxSetEventId(trial, "LeftFoot Strike", 7)
    >>> moxGetEventsValues(trial)[3].tolist().count(7)
    3
    """
    return _moxPY.moxSetEventId(acquisition, event, id)


def moxClearEvents(acquisition: Acquisition) -> None:
    """Remove all events.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of events.

    Examples
    --------
    >>> moxClearEvents(trial)
    >>> moxGetEventNumber(trial)
    0.0
    """
    _moxPY.moxClearEvents(acquisition)


def moxSetEventLabel(acquisition: Acquisition, index: int, label: str) -> NoReturn:
    """Refuse: events are kept by name, not by index, so that no label can be changed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    index : int
        Not used.
    label : str
        Not used.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> moxSetEventLabel(trial, 0, "Heel")  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: This function was not implemented because of a change in backend data storage. ...
    """
    _moxPY.moxSetEventLabel(acquisition, index, label)


def moxSetEventTime(acquisition: Acquisition, index: int, time: float) -> NoReturn:
    """Refuse: events are kept by name, not by index, so that no time can be changed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    index : int
        Not used.
    time : float
        Not used.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> moxSetEventTime(trial, 0, 0.5)  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: This function was not implemented because of a change in backend data storage. ...
    """
    _moxPY.moxSetEventTime(acquisition, index, time)


def moxSetEventSubject(acquisition: Acquisition, index: int, subject: str) -> NoReturn:
    """Refuse: events are kept by name, not by index, so that no subject can be changed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    index : int
        Not used.
    subject : str
        Not used.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> moxSetEventSubject(trial, 0, "Walker")  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: This function was not implemented because of a change in backend data storage. ...
    """
    _moxPY.moxSetEventSubject(acquisition, index, subject)
