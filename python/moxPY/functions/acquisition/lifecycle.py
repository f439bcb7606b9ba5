"""Making and letting go of acquisitions."""

from __future__ import annotations

import _moxPY

from ...acquisition import Acquisition, data_store

__all__ = ["moxCloseAcquisition", "moxDeleteAcquisition", "moxNewAcquisition"]


def moxNewAcquisition(
    points: int = 0, frames: int = 0, analogs: int = 0, ratio: int = 1
) -> data_store:
    """Make an acquisition of markers and analog channels that are 0 throughout.

    Parameters
    ----------
    points : int, optional
        Number of markers; they are called "unamed_0", "unamed_1", ...
    frames : int, optional
        Number of point frames.
    analogs : int, optional
        Number of analog channels, named likewise.
    ratio : int, optional
        Samples of an analog channel per point frame, at least 1.

    Returns
    -------
    acquisition : data_store or Trial
        The new acquisition; its rates are 0 Hz until `moxSetFrequency`.

    Raises
    ------
    RuntimeError
        A count is negative, or the ratio below 1.
    MemoryError
        The acquisition would not fit into memory.

    Examples
    --------
    >>> moxNewAcquisition(2, 100, 3, 10)
    <data_store: 100 frames at 0 Hz, 2 points, 3 analog channels>
    """
    acquisition: data_store = _moxPY.moxNewAcquisition(points, frames, analogs, ratio)
    return acquisition


def moxCloseAcquisition(acquisition: Acquisition) -> None:
    """Check that this is an acquisition, and leave it as it is.

    Scripts end with this call. Memory is freed by `data_store.close`, or with the last reference.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Examples
    --------
    >>> moxCloseAcquisition(trial)
    >>> moxGetPointNumber(trial)
    68.0
    """
    _moxPY.moxCloseAcquisition(acquisition)


def moxDeleteAcquisition(acquisition: Acquisition) -> None:
    """Check that this is an acquisition, and leave it as it is, like `moxCloseAcquisition`.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Examples
    --------
    >>> moxDeleteAcquisition(trial)
    >>> moxGetPointNumber(trial)
    68.0
    """
    _moxPY.moxDeleteAcquisition(acquisition)
