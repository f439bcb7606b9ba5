"""The module itself: its version and its plugins."""

from __future__ import annotations

import _moxPY

__all__ = ["moxGetVersion", "reload", "unload"]


def moxGetVersion() -> str:
    """Version of the module.

    Returns
    -------
    version : str
        Year, month and number.

    Examples
    --------
    >>> moxGetVersion() == __version__
    True
    """
    return _moxPY.moxGetVersion()


def unload() -> None:
    """Take all plugins out of the process, so that their files can be replaced.

    Until `reload`, no file can be read. Acquisitions that are there stay as they are.

    Examples
    --------
    >>> unload()
    >>> moxReadAcquisition(path)  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: ...
    >>> reload()
    """
    _moxPY.unload()


def reload() -> None:
    """Load the plugins anew from the folder ``plugins`` beside the extension module.

    A plugin that cannot be loaded is left out; the log file says why.

    Examples
    --------
    >>> reload()
    >>> moxReadAcquisition(path)
    <data_store: 360 frames at 100 Hz, 68 points, 20 analog channels>
    """
    _moxPY.reload()
