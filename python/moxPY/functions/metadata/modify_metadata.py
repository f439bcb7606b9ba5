"""Adding, changing and removing metadata.

Most functions name an entry by group and name, or by one path: "POINT" and "RATE", or "POINT/RATE".
All but `moxClearMetaData` return all metadata after the change, as `moxGetMetaData` gives them. A
call that is refused changes nothing.
"""

from __future__ import annotations

from collections.abc import Sequence
from types import EllipsisType
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ...acquisition import Acquisition

__all__ = [
    "moxAppendMetaData",
    "moxClearMetaData",
    "moxRemoveMetaData",
    "moxSetMetaData",
    "moxSetMetaDataDescription",
    "moxSetMetaDataDimensions",
    "moxSetMetaDataFormat",
    "moxSetMetaDataValue",
]

Dimensions = Sequence[int] | NDArray[np.integer[Any]]


def moxAppendMetaData(
    acquisition: Acquisition, group: str, entry: str, info: dict[str, Any]
) -> dict[str, Any]:
    """Add an entry, or make one that exists anew.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group, which is created when there is none.
    entry : str
        Name of the entry, without "/" and "\\\\".
    info : dict
        ``"format"``: "Byte" (8-bit), "Char" (text), "Integer" (16-bit) or "Real" (single
        precision); ``"values"``: a number, a str, or a list, nested for more dimensions, of either.
        `moxMetaDataInfo` makes it.

    Returns
    -------
    metadata : dict
        The group of all metadata. An array has the dimensions of the lists in reverse.

    Raises
    ------
    RuntimeError
        `info` lacks one of its keys, the format is none of the four, values and format do not fit
        together, or the entry cannot have this name.
    TypeError
        `info` holds something else, such as an array; ``values.tolist()`` makes it a list.
    ValueError
        Nested lists have different lengths.
    OverflowError
        The format has no room for an integer, or it is beyond 32 bits.
    SystemError
        A single value is to be a "Byte"; such an entry could not be read.

    Examples
    --------
    >>> info = moxMetaDataInfo("Integer", [[1, 2, 3], [4, 5, 6]])
    >>> metadata = moxAppendMetaData(trial, "STUDY", "CODES", info)
    >>> codes = metadata["children"]["STUDY"]["children"]["CODES"]["info"]
    >>> codes["values"].tolist(), codes["dims"].tolist()
    ([[1, 4], [2, 5], [3, 6]], [2, 3])
    >>> moxAppendMetaData(trial, "STUDY", "CODES", {"values": [1]})
    Traceback (most recent call last):
    RuntimeError: Given struct has no field "format"
    """
    return _moxPY.moxAppendMetaData(acquisition, group, entry, info)


def moxSetMetaData(
    acquisition: Acquisition, group: str, entry: str, info: dict[str, Any]
) -> dict[str, Any]:
    """Make an entry that exists anew, with another format and shape if need be.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group.
    entry : str
        Name of the entry.
    info : dict
        ``"format"`` and ``"values"`` as `moxAppendMetaData` takes them.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        There is no such entry, or `info` is refused as by `moxAppendMetaData`.
    TypeError, ValueError, OverflowError, SystemError
        `info` is refused as by `moxAppendMetaData`.

    Examples
    --------
    >>> info = moxMetaDataInfo("Char", ["m", "deg"])
    >>> metadata = moxSetMetaData(trial, "POINT", "UNITS", info)
    >>> metadata["children"]["POINT"]["children"]["UNITS"]["info"]["values"]
    ['m', 'deg']
    >>> moxSetMetaData(trial, "POINT", "COLOURS", info)
    Traceback (most recent call last):
    RuntimeError: Unable to set metadata : it doesn't exists in given acquisition
    """
    return _moxPY.moxSetMetaData(acquisition, group, entry, info)


def moxSetMetaDataValue(
    acquisition: Acquisition, group: str, entry: Any, value: Any = ...
) -> dict[str, Any]:
    """Replace the values of an entry, whose format and shape stay.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group; in the form with three arguments the path of the entry.
    entry : str
        Name of the entry; in the form with three arguments the value.
    value : number, str, list or ndarray, optional
        The new values, converted to the format of the entry. Real numbers for one of integers are
        cut to whole ones, or to the nearest in its range, and NaN becomes 0; beyond the range of
        "Real", which is single precision, they become infinite. A list or array has the dimensions
        that ``"dims"`` shows, the reverse of the shape that `moxGetMetaData` gives.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        There is no such entry, the values have another shape, or they are text for numbers or
        numbers for text.
    TypeError
        The value is none of these.
    OverflowError
        The entry has no room for an integer, or one in a list is beyond 32 bits.

    Examples
    --------
    >>> metadata = moxSetMetaDataValue(trial, "POINT", "RATE", 120.0)
    >>> metadata = moxSetMetaDataValue(trial, "POINT/UNITS", "m")
    >>> points = metadata["children"]["POINT"]["children"]
    >>> points["RATE"]["info"]["values"], points["UNITS"]["info"]["values"]
    (120.0, 'm')
    >>> corners = moxGetMetaData(trial, "FORCE_PLATFORM", "CORNERS")["info"]["values"]
    >>> metadata = moxSetMetaDataValue(trial, "FORCE_PLATFORM", "CORNERS", corners.T)
    """
    if value is ...:
        return _moxPY.moxSetMetaDataValue(acquisition, group, entry)
    return _moxPY.moxSetMetaDataValue(acquisition, group, entry, value)


def moxSetMetaDataFormat(
    acquisition: Acquisition, group: str, entry: str, format: str | EllipsisType = ...
) -> dict[str, Any]:
    """Convert an entry to another format.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group; in the form with three arguments the path of the entry.
    entry : str
        Name of the entry; in the form with three arguments the format.
    format : str, optional
        "Byte", "Char", "Integer" or "Real". Numbers out of its range become the nearest one in it,
        infinite in "Real", and NaN becomes 0 in the integers; text becomes the number that it
        starts with, else 0. An entry that was made with a type other than these four stays as it
        is.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        There is no such entry, or no such format.
    SystemError
        A single value is to be a "Byte"; such an entry could not be read.

    Examples
    --------
    >>> metadata = moxSetMetaDataFormat(trial, "PROCESSING", "Bodymass", "Integer")
    >>> metadata["children"]["PROCESSING"]["children"]["Bodymass"]["info"]["values"]
    72
    >>> metadata = moxSetMetaDataFormat(trial, "PROCESSING/Bodymass", "Char")
    >>> metadata["children"]["PROCESSING"]["children"]["Bodymass"]["info"]["values"]
    '72'
    """
    if format is ...:
        return _moxPY.moxSetMetaDataFormat(acquisition, group, entry)
    return _moxPY.moxSetMetaDataFormat(acquisition, group, entry, format)


def moxSetMetaDataDimensions(
    acquisition: Acquisition,
    group: str,
    entry: str | Dimensions,
    dimensions: Dimensions | EllipsisType = ...,
) -> dict[str, Any]:
    """Give an entry as many values, in one dimension, as the product of `dimensions`.

    Values are kept in order; further ones are 0 or "".

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group; in the form with three arguments the path of the entry.
    entry : str
        Name of the entry; in the form with three arguments the dimensions.
    dimensions : sequence of int, optional
        A list, tuple or array; an empty one makes a single value.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        There is no such entry, or it has a type that no format stands for.
    TypeError
        The dimensions are no sequence of integers.
    ValueError
        A dimension is negative, or the product too large.
    SystemError
        A "Byte" is to be a single value; such an entry could not be read.

    Examples
    --------
    >>> metadata = moxSetMetaDataDimensions(trial, "SUBJECTS", "NAMES", [3])
    >>> metadata["children"]["SUBJECTS"]["children"]["NAMES"]["info"]["values"]
    ['Walker', '', '']
    >>> metadata = moxSetMetaDataDimensions(trial, "FORCE_PLATFORM/ORIGIN", [2, 2])
    >>> metadata["children"]["FORCE_PLATFORM"]["children"]["ORIGIN"]["info"]["dims"].tolist()
    [4]
    """
    if dimensions is ...:
        return _moxPY.moxSetMetaDataDimensions(acquisition, group, entry)
    return _moxPY.moxSetMetaDataDimensions(acquisition, group, entry, dimensions)


def moxSetMetaDataDescription(
    acquisition: Acquisition, group: str, entry: str, description: str | EllipsisType = ...
) -> dict[str, Any]:
    """Change nothing: entries carry no description. The entry need not exist.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    group : str
        Not used; name of a group, or in the form with three arguments the path of an entry.
    entry : str
        Not used; name of an entry, or in the form with three arguments the description.
    description : str, optional
        Not used.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        The acquisition lacks metadata altogether.

    Examples
    --------
    >>> metadata = moxSetMetaDataDescription(trial, "POINT", "RATE", "frames per second")
    >>> metadata["children"]["POINT"]["children"]["RATE"]["description"]
    ''
    """
    if description is ...:
        return _moxPY.moxSetMetaDataDescription(acquisition, group, entry)
    return _moxPY.moxSetMetaDataDescription(acquisition, group, entry, description)


def moxRemoveMetaData(acquisition: Acquisition, group: str, entry: str = "") -> dict[str, Any]:
    """Remove an entry, or a group with all its entries.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    group : str
        Name of the group.
    entry : str, optional
        Name of the entry; "" for the whole group.

    Returns
    -------
    metadata : dict
        The group of all metadata.

    Raises
    ------
    RuntimeError
        There is no such group or entry, or the group is "", that of all metadata.

    Examples
    --------
    >>> metadata = moxRemoveMetaData(trial, "POINT", "X_SCREEN")
    >>> "X_SCREEN" in metadata["children"]["POINT"]["children"]
    False
    >>> metadata = moxRemoveMetaData(trial, "POINT")
    >>> "POINT" in metadata["children"]
    False
    """
    return _moxPY.moxRemoveMetaData(acquisition, group, entry)


def moxClearMetaData(acquisition: Acquisition) -> None:
    """Remove all groups with all their entries.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Raises
    ------
    RuntimeError
        The acquisition lacks metadata altogether.

    Notes
    -----
    Entries outside of groups stay: ``"DeviceType"``.

    Examples
    --------
    >>> moxClearMetaData(trial)
    >>> list(moxGetMetaData(trial)["children"])
    ['DeviceType']
    """
    _moxPY.moxClearMetaData(acquisition)
