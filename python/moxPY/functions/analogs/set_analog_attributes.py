"""What describes an analog channel: label, description, unit, gain, offset, scale.

Samples are in their unit already; no function here computes them anew.
"""

from __future__ import annotations

from typing import Any

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxSetAnalogDescription",
    "moxSetAnalogGain",
    "moxSetAnalogLabel",
    "moxSetAnalogOffset",
    "moxSetAnalogScale",
    "moxSetAnalogUnit",
]


def moxSetAnalogLabel(
    acquisition: Acquisition, channel: int | str, label: str
) -> list[dict[str, Any]]:
    """Rename one analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    label : str
        The new label. The key of the channel in dictionaries stays.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.

    Examples
    --------
    >>> values, info = moxSetAnalogLabel(trial, "Fz1", "Vertical")
    >>> "Fz1" in values, info["label"]["Fz1"]
    (True, 'Vertical')
    >>> moxGetAnalog(trial, "Vertical")[1]["label"]
    'Vertical'
    """
    return _moxPY.moxSetAnalogLabel(acquisition, channel, label)


def moxSetAnalogDescription(
    acquisition: Acquisition, channel: int | str, description: str
) -> list[dict[str, Any]]:
    """Set the description of one analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    description : str
        Any text.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.

    Examples
    --------
    >>> values, info = moxSetAnalogDescription(trial, "Fz1", "left plate")
    >>> info["description"]["Fz1"]
    'left plate'
    """
    return _moxPY.moxSetAnalogDescription(acquisition, channel, description)


def moxSetAnalogUnit(
    acquisition: Acquisition, channel: int | str, unit: str
) -> list[dict[str, Any]]:
    """Set the unit of one analog channel. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    unit : str
        Any text.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.

    Examples
    --------
    >>> values, info = moxSetAnalogUnit(trial, "Fz1", "kN")
    >>> info["units"]["Fz1"]
    'kN'
    """
    return _moxPY.moxSetAnalogUnit(acquisition, channel, unit)


def moxSetAnalogGain(
    acquisition: Acquisition, channel: int | str, code: int
) -> list[dict[str, Any]]:
    """Set the gain of one analog channel. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    code : int
        0 for unknown, 1 for ±10 V, 2 for ±5 V, 3 for ±2.5 V, 4 for ±1.25 V, 5 for ±1 V. The
        ``"gain"`` of `moxGetAnalog` is the range in mV: 0.0, 10000.0, 5000.0, 2500.0, 1250.0,
        1000.0.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        The code is none of these, or no channel has this index or label; nothing has changed.

    Examples
    --------
    >>> values, info = moxSetAnalogGain(trial, "Fz1", 5)
    >>> info["gain"]["Fz1"]
    1000.0
    """
    return _moxPY.moxSetAnalogGain(acquisition, channel, code)


def moxSetAnalogOffset(
    acquisition: Acquisition, channel: int | str, offset: int
) -> list[dict[str, Any]]:
    """Set the offset of one analog channel. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    offset : int
        Converter counts at zero; a float is refused.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.
    TypeError
        The offset is no int; the message lists the forms of the call.

    Examples
    --------
    >>> values, info = moxSetAnalogOffset(trial, "Fz1", 12)
    >>> info["offset"]["Fz1"]
    12.0
    """
    return _moxPY.moxSetAnalogOffset(acquisition, channel, offset)


def moxSetAnalogScale(
    acquisition: Acquisition, channel: int | str, scale: float
) -> list[dict[str, Any]]:
    """Set the scale of one analog channel. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    scale : float
        Units per converter count; kept in single precision.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.

    Examples
    --------
    >>> values, info = moxSetAnalogScale(trial, "Fz1", 0.5)
    >>> info["scale"]["Fz1"]
    0.5
    """
    return _moxPY.moxSetAnalogScale(acquisition, channel, scale)
