"""Adding and removing analog channels, and their samples.

Indices have no gaps. A call that is refused changes nothing.
"""

from __future__ import annotations

from typing import Any

import _moxPY
from numpy.typing import ArrayLike

from ...acquisition import Acquisition

__all__ = [
    "moxAppendAnalog",
    "moxClearAnalogs",
    "moxRemoveAnalog",
    "moxSetAnalogNumber",
    "moxSetAnalogValues",
    "moxSetAnalogsValues",
]


def moxAppendAnalog(
    acquisition: Acquisition, label: str, values: ArrayLike, description: str = ""
) -> list[dict[str, Any]]:
    """Add an analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    label : str
        Label of the channel, and its key in dictionaries; "/" becomes "_" in the key.
    values : array_like of float64 or float32, shape (samples, 1)
        The samples in their unit.
    description : str, optional
        Any text.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        All analog channels after the change, as `moxGetAnalogs` gives them.
    info : dict
        What describes them, likewise. The new channel has gain 0, offset 0 and scale 1.

    Raises
    ------
    RuntimeError
        There is a channel of this name, the matrix has another shape, or it does not hold float64
        or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(0, 1, 0, 2)
    >>> values, info = moxAppendAnalog(made, "EMG", [[0.25], [0.5]], "left calf")
    >>> values["EMG"].tolist(), info["description"]
    ([0.25, 0.5], {'EMG': 'left calf'})
    >>> moxAppendAnalog(made, "other", [0.25, 0.5])
    Traceback (most recent call last):
    RuntimeError: Given matrix should have 2 dimensions, current has : 1
    """
    return _moxPY.moxAppendAnalog(acquisition, label, values, description)


def moxRemoveAnalog(acquisition: Acquisition, channel: int | str) -> list[dict[str, Any]]:
    """Remove one analog channel. Every greater index becomes one less.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match is removed.

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
    >>> made = moxNewAcquisition(0, 10, 3)
    >>> values, info = moxRemoveAnalog(made, 0)
    >>> list(values), moxGetAnalog(made, 0)[1]["label"]
    (['unamed_1', 'unamed_2'], 'unamed_1')
    """
    return _moxPY.moxRemoveAnalog(acquisition, channel)


def moxClearAnalogs(acquisition: Acquisition) -> None:
    """Remove all analog channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of analog channels.

    Examples
    --------
    >>> moxClearAnalogs(trial)
    >>> moxGetAnalogNumber(trial)
    0.0
    """
    _moxPY.moxClearAnalogs(acquisition)


def moxSetAnalogNumber(acquisition: Acquisition, number: int) -> None:
    """Add analog channels until there are `number`, or remove channels from the end.

    With fewer wanted than there are, the channels that stay are the difference between the present
    number and `number`, not `number` itself: of 10 channels set to 8, those with the indices 0 and
    1 stay. `moxRemoveAnalog` removes single channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    number : int
        New channels are 0 throughout and are called ``"unamed_"`` and their index, or the next
        number that is free. With 0 or a negative number nothing changes.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of analog channels.
    MemoryError
        The channels would not fit into memory; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(0, 10, 8)
    >>> moxSetAnalogNumber(made, 10)
    >>> moxGetAnalogNumber(made)
    10.0
    >>> moxSetAnalogNumber(made, 8)
    >>> moxGetAnalogNumber(made)
    2.0
    """
    _moxPY.moxSetAnalogNumber(acquisition, number)


def moxSetAnalogsValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the samples of all analog channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (samples, channels)
        A column a channel in the order of channel indices, in its unit.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Notes
    -----
    After `moxSetFrequency` on an acquisition that was read, the matrix may also have the samples
    that belong to the new number of frames, `moxGetPointFrameNumber` times
    `moxGetAnalogSampleNumberPerFrame`. All channels have so many then.

    Examples
    --------
    >>> doubled = 2 * moxGetAnalogsValues(trial)
    >>> moxSetAnalogsValues(trial, doubled)
    >>> bool((moxGetAnalogsValues(trial) == doubled).all())
    True
    """
    _moxPY.moxSetAnalogsValues(acquisition, values)


def moxSetAnalogValues(acquisition: Acquisition, channel: int | str, values: ArrayLike) -> None:
    """Set the samples of one analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.
    values : array_like of float64 or float32, shape (samples, 1)
        The samples in their unit.

    Raises
    ------
    RuntimeError
        No channel has this index or label (the message names it), the matrix has another shape, or
        it does not hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> values, info = moxGetAnalog(trial, "Fz1")
    >>> moxSetAnalogValues(trial, "Fz1", -values.reshape(-1, 1))
    >>> bool((moxGetAnalog(trial, "Fz1")[0] == -values).all())
    True
    """
    _moxPY.moxSetAnalogValues(acquisition, channel, values)
