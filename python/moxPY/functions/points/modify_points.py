"""Adding, removing and describing points.

A point is one of five types: "marker", "angle", "force", "moment", "power", written exactly so.
Indices run over all types without gaps.
"""

from __future__ import annotations

from typing import Any

import _moxPY
from numpy.typing import ArrayLike

from ...acquisition import Acquisition

__all__ = [
    "moxAppendPoint",
    "moxClearPoints",
    "moxRemovePoint",
    "moxSetPointDescription",
    "moxSetPointLabel",
    "moxSetPointNumber",
    "moxSetPointType",
    "moxSetPointsUnit",
]


def moxAppendPoint(
    acquisition: Acquisition, type: str, label: str, values: ArrayLike
) -> list[dict[str, Any]]:
    """Add a point.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    type : str
        "marker", "angle", "force", "moment" or "power".
    label : str
        Label of the point, and its key in dictionaries; "/" becomes "_" in the key.
    values : array_like of float64 or float32, shape (frames, 3)
        x, y, z of each frame; NaN where they are not known.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        There is no such type, it has a point of this name, the matrix has another shape, or it does
        not hold float64 or float32; nothing has changed.

    Notes
    -----
    The index of the new point is the former number of points. Its unit is "Unknown" until
    `moxSetPointsUnit`.

    Examples
    --------
    >>> values, info = moxGetPoint(trial, "LASI")
    >>> points, info = moxAppendPoint(trial, "marker", "LASI moved", values + 10)
    >>> points["LASI moved"].shape, moxGetPointNumber(trial)
    ((360, 3), 69.0)
    >>> moxAppendPoint(trial, "Marker", "other", values)
    Traceback (most recent call last):
    RuntimeError: Unsupported point type : "Marker"
    """
    return _moxPY.moxAppendPoint(acquisition, type, label, values)


def moxRemovePoint(acquisition: Acquisition, point: int | str) -> list[dict[str, Any]]:
    """Remove one point. Every greater index becomes one less, in all types.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match is removed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No point has this index or label; the message names it.

    Examples
    --------
    >>> made = moxNewAcquisition(3, 10)
    >>> points, info = moxRemovePoint(made, 0)
    >>> list(points), moxGetPoint(made, 0)[1]["label"]
    (['unamed_1', 'unamed_2'], 'unamed_1')
    """
    return _moxPY.moxRemovePoint(acquisition, point)


def moxClearPoints(acquisition: Acquisition) -> None:
    """Remove all points of all types.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of a type; types before it were cleared.

    Examples
    --------
    >>> moxClearPoints(trial)
    >>> moxGetPointNumber(trial)
    0.0
    """
    _moxPY.moxClearPoints(acquisition)


def moxSetPointNumber(acquisition: Acquisition, number: int) -> list[dict[str, Any]]:
    """Add markers until there are `number` points, or remove points from the end.

    With fewer wanted than there are, the points that stay are the difference between the present
    number and `number`, not `number` itself: of 10 points set to 8, those with the indices 0 and 1
    stay. `moxRemovePoint` removes single points.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    number : int
        New markers are 0 throughout and are called ``"unamed_"`` and their index, or the next
        number that is free. With 0 or a negative number nothing changes.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        The acquisition lacks the group of a type.
    MemoryError
        The points would not fit into memory; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(8, 5)
    >>> points, info = moxSetPointNumber(made, 10)
    >>> len(points)
    10
    >>> points, info = moxSetPointNumber(made, 8)
    >>> list(points)
    ['unamed_0', 'unamed_1']
    """
    return _moxPY.moxSetPointNumber(acquisition, number)


def moxSetPointsUnit(acquisition: Acquisition, type: str, unit: str) -> None:
    """Set the unit of all points of one type. Values stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    type : str
        "marker", "angle", "force", "moment" or "power"; `moxGetPointsUnit` takes other words.
    unit : str
        Any text.

    Raises
    ------
    RuntimeError
        There is no such type; nothing has changed.

    Examples
    --------
    >>> moxSetPointsUnit(trial, "marker", "m")
    >>> moxGetPointsUnit(trial, "Markers")
    'm'
    """
    _moxPY.moxSetPointsUnit(acquisition, type, unit)


def moxSetPointType(acquisition: Acquisition, point: int | str, type: str) -> list[dict[str, Any]]:
    """Make one point a point of another type. Its name, index and values stay.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match counts.
    type : str
        "marker", "angle", "force", "moment" or "power".

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        There is no such type, no point has this index or label, or the type has another point of
        this name; nothing has changed.

    Examples
    --------
    >>> points, info = moxSetPointType(trial, "LASI", "force")
    >>> "LASI" in moxGetMarkers(trial)[0], "LASI" in moxGetForces(trial)[0]
    (False, True)
    """
    return _moxPY.moxSetPointType(acquisition, point, type)


def moxSetPointLabel(
    acquisition: Acquisition, point: int | str, label: str
) -> list[dict[str, Any]]:
    """Rename one point.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match counts.
    label : str
        The new label. The key of the point in dictionaries stays.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No point has this index or label; the message names it.

    Examples
    --------
    >>> points, info = moxSetPointLabel(trial, "LASI", "L.ASIS")
    >>> "LASI" in points, info["label"]["LASI"]
    (True, 'L.ASIS')
    >>> moxGetPoint(trial, "L.ASIS")[1]["label"]
    'L.ASIS'
    """
    return _moxPY.moxSetPointLabel(acquisition, point, label)


def moxSetPointDescription(
    acquisition: Acquisition, point: int | str, description: str
) -> list[dict[str, Any]]:
    """Set the description of one point.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match counts.
    description : str
        Any text.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        All points after the change, as `moxGetPoints` gives them.
    info : dict
        What describes them, likewise.

    Raises
    ------
    RuntimeError
        No point has this index or label; the message names it.

    Examples
    --------
    >>> points, info = moxSetPointDescription(trial, "LASI", "pelvis, left")
    >>> info["description"]["LASI"]
    'pelvis, left'
    """
    return _moxPY.moxSetPointDescription(acquisition, point, description)
