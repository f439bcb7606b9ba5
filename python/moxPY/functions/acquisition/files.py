"""Reading, making, writing and letting go of acquisitions."""

from __future__ import annotations

import _moxPY

from ...acquisition import data_store

__all__ = [
    "moxCloseAcquisition",
    "moxDeleteAcquisition",
    "moxNewAcquisition",
    "moxReadAcquisition",
    "moxWriteAcquisition",
]


def moxReadAcquisition(path: str) -> data_store:
    """Read a file into a new acquisition.

    The format is recognised by the content, whatever the file is called.

    Parameters
    ----------
    path : str
        The file; ``str(path)`` of a `pathlib.Path`.

    Returns
    -------
    acquisition : data_store
        Everything in the file. The file itself is closed again.

    Raises
    ------
    TypeError
        `path` is not a str.
    RuntimeError
        There is no such file, it cannot be opened, no plugin knows its format, or its content
        cannot be read; the message says where in the file and what was expected.
    MemoryError
        The acquisition does not fit into memory.

    Examples
    --------
    >>> moxReadAcquisition(path)
    <data_store: 360 frames at 100 Hz, 68 points, 20 analog channels>
    >>> moxReadAcquisition("nowhere.c3d")
    Traceback (most recent call last):
    RuntimeError: The filename 'nowhere.c3d' does not exist
    """
    acquisition: data_store = _moxPY.moxReadAcquisition(path)
    return acquisition


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
    acquisition : data_store
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


def moxWriteAcquisition(acquisition: data_store, path: str) -> None:
    """Write an acquisition to a C3D file.

    The file appears, or takes the place of an older one of that name, in one step and only once it
    is complete: whatever goes wrong, an older file stays as it was. It may be the file that the
    acquisition was read from. Before it is written, force platforms and the order of the analog
    channels are brought in line with the metadata.

    Parameters
    ----------
    acquisition : data_store
        An open acquisition; its frequency has to be set.
    path : str
        The file, with the extension ".c3d"; ``str(path)`` of a `pathlib.Path`.

    Raises
    ------
    TypeError
        `path` is not a str.
    RuntimeError
        The extension is another one, the point frequency is 0, the analog channels have other
        samples than belong to the frames of the points, the file cannot be created or completed, or
        the acquisition holds something that a C3D file cannot; the message says what.

    Examples
    --------
    >>> moxWriteAcquisition(trial, path)
    >>> moxReadAcquisition(path)
    <data_store: 360 frames at 100 Hz, 68 points, 20 analog channels>
    >>> moxWriteAcquisition(trial, "walk.txt")
    Traceback (most recent call last):
    RuntimeError: The only supported export format is c3d.
    """
    _moxPY.moxWriteAcquisition(acquisition, path)


def moxCloseAcquisition(acquisition: data_store) -> None:
    """Check that this is an acquisition, and leave it as it is.

    Scripts end with this call. Memory is freed by `data_store.close`, or with the last reference.

    Parameters
    ----------
    acquisition : data_store
        An open acquisition.

    Examples
    --------
    >>> moxCloseAcquisition(trial)
    >>> moxGetPointNumber(trial)
    68.0
    """
    _moxPY.moxCloseAcquisition(acquisition)


def moxDeleteAcquisition(acquisition: data_store) -> None:
    """Check that this is an acquisition, and leave it as it is, like `moxCloseAcquisition`.

    Parameters
    ----------
    acquisition : data_store
        An open acquisition.

    Examples
    --------
    >>> moxDeleteAcquisition(trial)
    >>> moxGetPointNumber(trial)
    68.0
    """
    _moxPY.moxDeleteAcquisition(acquisition)
