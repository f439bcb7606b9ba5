"""The time base: rates, numbers of frames and samples, first frame."""

from __future__ import annotations

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxGetAnalogFrameNumber",
    "moxGetAnalogFrequency",
    "moxGetAnalogResolution",
    "moxGetAnalogSampleNumberPerFrame",
    "moxGetFirstFrame",
    "moxGetLastFrame",
    "moxGetMaxInterpolationGap",
    "moxGetPointFrameNumber",
    "moxGetPointFrequency",
]


def moxGetPointFrequency(acquisition: Acquisition) -> float:
    """Point frames per second.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    rate : float
        Hz.

    Examples
    --------
    >>> moxGetPointFrequency(trial)
    100.0
    """
    return _moxPY.moxGetPointFrequency(acquisition)


def moxGetAnalogFrequency(acquisition: Acquisition) -> float:
    """Samples of an analog channel per second.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    rate : float
        Hz.

    Examples
    --------
    >>> moxGetAnalogFrequency(trial)
    1000.0
    """
    return _moxPY.moxGetAnalogFrequency(acquisition)


def moxGetPointFrameNumber(acquisition: Acquisition) -> float:
    """Number of point frames.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    frames : float
        A whole number.

    Examples
    --------
    >>> moxGetPointFrameNumber(trial)
    360.0
    """
    return _moxPY.moxGetPointFrameNumber(acquisition)


def moxGetAnalogFrameNumber(acquisition: Acquisition) -> float:
    """Number of samples of each analog channel.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    samples : float
        A whole number.

    Examples
    --------
    >>> moxGetAnalogFrameNumber(trial)
    3600.0
    """
    return _moxPY.moxGetAnalogFrameNumber(acquisition)


def moxGetAnalogSampleNumberPerFrame(acquisition: Acquisition) -> float:
    """Samples of an analog channel per point frame.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    ratio : float
        A whole number.

    Examples
    --------
    >>> moxGetAnalogSampleNumberPerFrame(trial)
    10.0
    """
    return _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition)


def moxGetAnalogResolution(acquisition: Acquisition) -> float:
    """Resolution of the analog-digital converter.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    resolution : float
        Bits; 12 where a file does not tell.

    Raises
    ------
    RuntimeError
        The acquisition has no metadata group ANALOG.

    Examples
    --------
    >>> moxGetAnalogResolution(trial)
    16.0
    """
    return _moxPY.moxGetAnalogResolution(acquisition)


def moxGetMaxInterpolationGap(acquisition: Acquisition) -> float:
    """Longest gap that was filled by interpolation when the points were made.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    gap : float
        Frames.

    Examples
    --------
    >>> moxGetMaxInterpolationGap(trial)
    8.0
    """
    return _moxPY.moxGetMaxInterpolationGap(acquisition)


def moxGetFirstFrame(acquisition: Acquisition) -> float:
    """First frame, counted from 0: start time × rate.

    C3D files count frames from 1. A file whose first frame is 1 gives 0.0 here and 1.0 as
    ``info["firstFrame"]`` of `moxGetPoints`.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    first : float
        Computed in single precision.

    Examples
    --------
    >>> moxGetFirstFrame(trial)
    0.0
    >>> moxGetPoints(trial)[1]["firstFrame"]
    1.0
    """
    return _moxPY.moxGetFirstFrame(acquisition)


def moxGetLastFrame(acquisition: Acquisition) -> float:
    """Last frame, counted from 0: `moxGetFirstFrame` + number of frames − 1.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    last : float
        Computed in single precision.

    Examples
    --------
    >>> moxGetLastFrame(trial)
    359.0
    """
    return _moxPY.moxGetLastFrame(acquisition)
