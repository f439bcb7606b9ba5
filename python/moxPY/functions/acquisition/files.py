"""Reading and writing files."""

from __future__ import annotations

import _moxPY

from ...acquisition import Acquisition, data_store

__all__ = ["moxReadAcquisition", "moxWriteAcquisition"]


def moxReadAcquisition(path: str) -> data_store:
    """Read a file into a new acquisition.

    The format is recognised by the content, whatever the file is called.

    Parameters
    ----------
    path : str
        The file; ``str(path)`` of a `pathlib.Path`.

    Returns
    -------
    acquisition : data_store or Trial
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


def moxWriteAcquisition(acquisition: Acquisition, path: str) -> None:
    """Write an acquisition to a C3D file.

    The file appears, or takes the place of an older one of that name, in one step and only once it
    is complete: whatever goes wrong, an older file stays as it was. It may be the file that the
    acquisition was read from. Before it is written, force platforms and the order of the analog
    channels are brought in line with the metadata.

    Parameters
    ----------
    acquisition : data_store or Trial
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
