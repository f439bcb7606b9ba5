"""Changes of the time base. A call that is refused changes nothing."""

from __future__ import annotations

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxSetAnalogResolution",
    "moxSetAnalogSampleNumberPerFrame",
    "moxSetFirstFrame",
    "moxSetFrameNumber",
    "moxSetFrequency",
    "moxSetMaxInterpolationGap",
]


def moxSetFrequency(acquisition: Acquisition, rate: float) -> None:
    """Set the rates of points and analog channels. Samples are not computed anew.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    rate : float
        Point frames per second, Hz. The analog rate becomes `rate` times the samples per frame.

    Raises
    ------
    RuntimeError
        The rate is negative, infinite or NaN; nothing has changed.

    Notes
    -----
    The metadata POINT:RATE and ANALOG:RATE follow where they exist. An entry that cannot hold the
    rate, being a text, a list or of integers, becomes one "Real".

    In an acquisition that was read, `moxGetPointFrameNumber` follows the rate, so that the duration
    stays; the arrays keep their length until `moxSetPointsValues` and `moxSetAnalogsValues` give
    points and analog channels the values of so many frames. `moxWriteAcquisition` refuses an
    acquisition that has both and in which only one of them was called. Without points, the frames
    follow `moxSetAnalogsValues`; without analog channels, their samples follow
    `moxSetPointsValues`.

    To correct a rate that was stored wrongly, call `moxSetFrameNumber` with the former number of
    frames right afterwards: every value stays as it is. Then `moxSetFirstFrame` with the former
    first frame keeps the numbers of the frames; event times, which are seconds, are not changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 50, 1, 10)
    >>> moxSetFrequency(made, 200)
    >>> moxGetPointFrequency(made), moxGetAnalogFrequency(made)
    (200.0, 2000.0)

    The file says 100 Hz, but was recorded at 200:

    >>> trial = moxReadAcquisition("examples/gait_trial.c3d")
    >>> frames = int(moxGetPointFrameNumber(trial))
    >>> moxSetFrequency(trial, 200)
    >>> moxSetFrameNumber(trial, frames)
    >>> trial
    <data_store: 360 frames at 200 Hz, 68 points, 20 analog channels>
    """
    _moxPY.moxSetFrequency(acquisition, rate)


def moxSetFrameNumber(acquisition: Acquisition, frames: int, ratio: int | None = None) -> None:
    """Set the number of point frames, by cutting or lengthening every channel at its end.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    frames : int
        Number of frames. New ones are NaN for points and 0 for analog channels.
    ratio : int, optional
        Samples of an analog channel per frame, set first as `moxSetAnalogSampleNumberPerFrame`
        does. Stays as it is when not given.

    Raises
    ------
    RuntimeError
        The number is negative, or the ratio cannot be set; nothing has changed.
    MemoryError
        The frames would not fit into memory; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 50, 1, 10)
    >>> moxSetFrameNumber(made, 80)
    >>> moxGetPointFrameNumber(made), moxGetAnalogFrameNumber(made)
    (80.0, 800.0)
    """
    if ratio is None:
        _moxPY.moxSetFrameNumber(acquisition, frames)
    else:
        _moxPY.moxSetFrameNumber(acquisition, frames, ratio)


def moxSetFirstFrame(acquisition: Acquisition, first: int, shift_events: int = 0) -> None:
    """Set the first frame by moving the start time of all channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    first : int
        First frame, counted from 0 as in `moxGetFirstFrame`.
    shift_events : int, optional
        Anything but 0 moves the events along.

    Raises
    ------
    RuntimeError
        The frame is negative, or not 0 although no rate is set; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 50)
    >>> moxSetFrequency(made, 100)
    >>> moxSetFirstFrame(made, 20)
    >>> moxGetFirstFrame(made), moxGetLastFrame(made)
    (20.0, 69.0)
    """
    _moxPY.moxSetFirstFrame(acquisition, first, shift_events)


def moxSetAnalogSampleNumberPerFrame(acquisition: Acquisition, ratio: int) -> None:
    """Set the samples of an analog channel per point frame, while there are no such channels.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition without analog channels.
    ratio : int
        At least 1.

    Raises
    ------
    RuntimeError
        The ratio is below 1, or there are analog channels; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 50)
    >>> moxSetAnalogSampleNumberPerFrame(made, 20)
    >>> moxGetAnalogFrameNumber(made)
    1000.0
    """
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, ratio)


def moxSetAnalogResolution(acquisition: Acquisition, bits: int) -> None:
    """Set the resolution of the analog-digital converter. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    bits : int
        8, 12, 14 or 16.

    Raises
    ------
    RuntimeError
        Any other number, or the acquisition has no metadata group ANALOG; nothing has changed.

    Notes
    -----
    The number goes into the metadata entry BITS of ANALOG, which keeps its type. An entry that a
    script has made a text or a list stays as it is; the log says so.

    Examples
    --------
    >>> made = moxNewAcquisition()
    >>> moxSetAnalogResolution(made, 14)
    >>> moxGetAnalogResolution(made)
    14.0
    """
    _moxPY.moxSetAnalogResolution(acquisition, bits)


def moxSetMaxInterpolationGap(acquisition: Acquisition, gap: int) -> None:
    """Set the longest gap that was filled by interpolation. Samples stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    gap : int
        Frames.

    Examples
    --------
    >>> made = moxNewAcquisition()
    >>> moxSetMaxInterpolationGap(made, 10)
    >>> moxGetMaxInterpolationGap(made)
    10.0
    """
    _moxPY.moxSetMaxInterpolationGap(acquisition, gap)
