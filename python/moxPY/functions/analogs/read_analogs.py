"""Analog channels: force plates, muscle activity and whatever else was sampled along.

The key of a channel in every dictionary is the name of the channel: its label, made unique where a
file has the label twice.
"""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ...acquisition import Acquisition

__all__ = ["moxGetAnalog", "moxGetAnalogNumber", "moxGetAnalogs", "moxGetAnalogsValues"]


def moxGetAnalogs(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All analog channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (samples,)
        The samples of each channel in its unit: scale and offset are applied. Channels of one
        sample give a float.
    info : dict
        ``"frequency"`` (Hz); ``"units"``: ``{"ALLANALOGS": unit}`` when all channels have one unit,
        else the unit of each channel; and of each channel ``"label"``, ``"description"``,
        ``"scale"``, ``"offset"`` and ``"gain"`` (the range of the converter in mV: 10000.0 for
        ±10 V, 0.0 when unknown). Without channels the dictionaries in it are empty.

    Raises
    ------
    SystemError
        A channel lacks one of these; the message names both.

    Examples
    --------
    >>> values, info = moxGetAnalogs(trial)
    >>> values["Fz1"].shape, info["units"]["Fz1"], info["frequency"]
    ((3600,), 'N', 1000.0)
    """
    return _moxPY.moxGetAnalogs(acquisition)


def moxGetAnalog(acquisition: Acquisition, channel: int | str) -> list[Any]:
    """Samples and description of one analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    channel : int or str
        Index of the channel as stored, from 0, or label; labels are compared exactly and the first
        match counts.

    Returns
    -------
    values : ndarray, shape (samples,)
        In the unit ``info["units"]``: scale and offset are applied. A channel of one sample gives a
        float.
    info : dict
        ``"frequency"`` (Hz), ``"units"``, ``"label"``, ``"description"``, ``"scale"``,
        ``"offset"``, ``"gain"`` (the range of the converter in mV, 0.0 when unknown).

    Raises
    ------
    RuntimeError
        No channel has this index or label; the message names it.
    SystemError
        The channel lacks one of these; the message names both.

    Examples
    --------
    >>> values, info = moxGetAnalog(trial, "Fz1")
    >>> values.shape, info["units"], info["gain"]
    ((3600,), 'N', 10000.0)
    >>> moxGetAnalog(trial, 99)
    Traceback (most recent call last):
    RuntimeError: Unable to find channel with given index :  '99'
    """
    return _moxPY.moxGetAnalog(acquisition, channel)


def moxGetAnalogsValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All analog channels as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (samples, channels)
        A column a channel in the order of channel indices, in its unit. Without channels an array
        without dimensions.

    Examples
    --------
    >>> moxGetAnalogsValues(trial).shape
    (3600, 20)
    """
    return _moxPY.moxGetAnalogsValues(acquisition)


def moxGetAnalogNumber(acquisition: Acquisition) -> float:
    """Number of analog channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    channels : float
        A whole number.

    Examples
    --------
    >>> moxGetAnalogNumber(trial)
    20.0
    """
    return _moxPY.moxGetAnalogNumber(acquisition)
