"""Metadata: the named parameters of an acquisition, in groups such as POINT and ANALOG.

A group is a dictionary with ``"unlocked"`` (1.0), ``"description"`` (""), ``"info"`` (0.0) and
``"children"``: its entries and groups by name, or 0.0 when there are none. An entry is a dictionary
with ``"unlocked"`` (1.0), ``"children"`` (0.0), ``"description"`` ("") and ``"info"``:

- ``"values"``: a number, a str, a list of str or an ndarray. The shape of an array has the
  dimensions in the order of the file: the corners of two platforms give (3, 4, 2);
- ``"format"``: "Byte", "Char", "Integer", "Real" (16-bit numbers without sign: "integer");
- ``"dims"``: the dimensions as they are kept, the shape of an array reversed: (2, 4, 3). An ndarray
  of int64, empty for a single value. New values are given in this order.
"""

from __future__ import annotations

from typing import Any

import _moxPY

from ...acquisition import Acquisition

__all__ = ["moxFindMetaData", "moxGetMetaData"]


def moxGetMetaData(acquisition: Acquisition, group: str = "", entry: str = "") -> dict[str, Any]:
    """All metadata, those of one group, or one entry.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    group : str, optional
        Name of a group, such as "POINT"; "" for all.
    entry : str, optional
        Name of an entry in it, such as "RATE"; "" for the group itself.

    Returns
    -------
    metadata : dict
        A group, or an entry where one is named, with the keys that the module describes.

    Raises
    ------
    RuntimeError
        There is no such group or entry; the message names it.

    Examples
    --------
    >>> moxGetMetaData(trial, "POINT", "RATE")["info"]["values"]
    100.0
    >>> platforms = moxGetMetaData(trial)["children"]["FORCE_PLATFORM"]["children"]
    >>> corners = platforms["CORNERS"]["info"]
    >>> corners["format"], corners["values"].shape, corners["dims"].tolist()
    ('Real', (3, 4, 2), [2, 4, 3])
    >>> moxGetMetaData(trial, "CAMERA")
    Traceback (most recent call last):
    RuntimeError: Impossible to retrieve group with path : 'Metadata/CAMERA' does not exist
    """
    return _moxPY.moxGetMetaData(acquisition, group, entry)


def moxFindMetaData(acquisition: Acquisition, group: str, entry: str = "") -> dict[str, Any]:
    """The metadata of one group, or one entry, as `moxGetMetaData` gives them.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    group : str
        Name of a group, such as "POINT".
    entry : str, optional
        Name of an entry in it, such as "RATE"; "" for the group itself.

    Returns
    -------
    metadata : dict
        A group, or an entry where one is named, with the keys that the module describes.

    Raises
    ------
    RuntimeError
        There is no such group or entry; the message names it.

    Examples
    --------
    >>> moxFindMetaData(trial, "ANALOG", "BITS")["info"]["values"]
    16
    >>> moxFindMetaData(trial, "ANALOG", "COLOUR")
    Traceback (most recent call last):
    RuntimeError: Unable to find the metadata entry 'COLOUR' in the group 'Metadata/ANALOG'
    """
    return _moxPY.moxFindMetaData(acquisition, group, entry)
