"""Points: markers and the angles, forces, moments and powers that a model computed from them.

A point is a trajectory of three values a frame. The key of a point in every dictionary is the name
of its channel: its label, made unique where a file has the label twice.
"""

from __future__ import annotations

from typing import Any

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxGetAngles",
    "moxGetForces",
    "moxGetMarkers",
    "moxGetMoments",
    "moxGetPoint",
    "moxGetPointNumber",
    "moxGetPoints",
    "moxGetPointsUnit",
    "moxGetPowers",
]


def moxGetMarkers(acquisition: Acquisition) -> list[dict[str, Any]]:
    """Trajectories of all markers.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,).
    info : dict
        ``"frequency"`` (Hz) and ``"units"``: ``{"ALLMARKERS": unit}`` when all channels have one
        unit, else the unit of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate or unit; the message names it.

    Examples
    --------
    >>> values, info = moxGetMarkers(trial)
    >>> len(values), values["LASI"].shape, info["units"]
    (40, (360, 3), {'ALLMARKERS': 'mm'})
    """
    return _moxPY.moxGetMarkers(acquisition)


def moxGetAngles(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All angles that a model computed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,).
    info : dict
        ``"frequency"`` (Hz) and ``"units"``: ``{"ALLANGLES": unit}`` when all channels have one
        unit, else the unit of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate or unit; the message names it.

    Examples
    --------
    >>> values, info = moxGetAngles(trial)
    >>> len(values), values["LKneeAngles"].shape, info["units"]
    (8, (360, 3), {'ALLANGLES': 'deg'})
    """
    return _moxPY.moxGetAngles(acquisition)


def moxGetForces(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All forces that a model computed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,).
    info : dict
        ``"frequency"`` (Hz) and ``"units"``: ``{"ALLFORCES": unit}`` when all channels have one
        unit, else the unit of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate or unit; the message names it.

    Examples
    --------
    >>> values, info = moxGetForces(trial)
    >>> len(values), values["LGroundReactionForce"].shape, info["units"]
    (8, (360, 3), {'ALLFORCES': 'N'})
    """
    return _moxPY.moxGetForces(acquisition)


def moxGetMoments(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All moments that a model computed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,).
    info : dict
        ``"frequency"`` (Hz) and ``"units"``: ``{"ALLMOMENTS": unit}`` when all channels have one
        unit, else the unit of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate or unit; the message names it.

    Examples
    --------
    >>> values, info = moxGetMoments(trial)
    >>> len(values), values["LKneeMoment"].shape, info["units"]
    (6, (360, 3), {'ALLMOMENTS': 'Nmm/kg'})
    """
    return _moxPY.moxGetMoments(acquisition)


def moxGetPowers(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All powers that a model computed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,).
    info : dict
        ``"frequency"`` (Hz) and ``"units"``: ``{"ALLPOWERS": unit}`` when all channels have one
        unit, else the unit of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate or unit; the message names it.

    Examples
    --------
    >>> values, info = moxGetPowers(trial)
    >>> len(values), values["LKneePower"].shape, info["units"]
    (6, (360, 3), {'ALLPOWERS': 'W'})
    """
    return _moxPY.moxGetPowers(acquisition)


def moxGetPoints(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All points of all kinds: angles, forces, markers, moments, powers, in this order.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : dict of str to ndarray, shape (frames, 3)
        The values of each channel; NaN where they are not known. An acquisition of one frame gives
        arrays of shape (3,). A channel whose name an earlier kind has already is called
        name + "_2".
    info : dict
        ``"frequency"`` (Hz); ``"firstFrame"``, counted from 1; ``"units"``: ``{"ALL": unit}`` when
        all channels have one unit, else the unit of each channel; ``"label"`` and
        ``"description"`` of each channel. Empty without channels.

    Raises
    ------
    SystemError
        A channel lacks its rate, label or description; the message names it.

    Examples
    --------
    >>> values, info = moxGetPoints(trial)
    >>> values["LASI"].shape, info["units"]["LASI"], info["units"]["LKneeAngles"]
    ((360, 3), 'mm', 'deg')
    >>> info["firstFrame"]
    1.0
    """
    return _moxPY.moxGetPoints(acquisition)


def moxGetPoint(acquisition: Acquisition, point: int | str) -> list[Any]:
    """Trajectory and description of one point.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match counts.

    Returns
    -------
    values : ndarray, shape (frames, 3)
        x, y, z in the unit ``info["units"]``; NaN where they are not known. An acquisition of one
        frame gives the shape (3,).
    info : dict
        ``"frequency"`` (Hz), ``"units"``, ``"label"``, ``"description"``.

    Raises
    ------
    RuntimeError
        No point has this index or label; the message names it.
    SystemError
        The channel lacks its rate, unit, label or description; the message names it.

    Examples
    --------
    >>> values, info = moxGetPoint(trial, "LASI")
    >>> values.shape, info["units"]
    ((360, 3), 'mm')
    >>> moxGetPoint(trial, 0)[1]["label"]
    'LFHD'
    >>> moxGetPoint(trial, "nose")
    Traceback (most recent call last):
    RuntimeError: Unable to find channel with given label :  'nose'
    """
    return _moxPY.moxGetPoint(acquisition, point)


def moxGetPointsUnit(acquisition: Acquisition, group: str) -> str:
    """Unit of the first channel of one kind of points.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    group : str
        "Markers", "Angles", "Forces", "Moments" or "Powers", compared exactly.

    Returns
    -------
    unit : str
        "" for any other text and for a kind without channels.

    Examples
    --------
    >>> moxGetPointsUnit(trial, "Moments"), moxGetPointsUnit(trial, "moments")
    ('Nmm/kg', '')
    """
    return _moxPY.moxGetPointsUnit(acquisition, group)


def moxGetPointNumber(acquisition: Acquisition) -> float:
    """Number of points of all kinds.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    points : float
        A whole number.

    Examples
    --------
    >>> moxGetPointNumber(trial)
    68.0
    """
    return _moxPY.moxGetPointNumber(acquisition)
