"""Values of points from matrices: a row a frame, three columns a point.

All checks come first: a call that is refused changes nothing.
"""

from __future__ import annotations

import _moxPY
from numpy.typing import ArrayLike

from ...acquisition import Acquisition

__all__ = [
    "moxSetAnglesValues",
    "moxSetForcesValues",
    "moxSetMarkersValues",
    "moxSetMomentsValues",
    "moxSetPointValues",
    "moxSetPointsValues",
    "moxSetPowersValues",
]


def moxSetMarkersValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all markers.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × markers)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th marker in the order of channel
        indices; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(2, 1)
    >>> moxSetMarkersValues(made, [[1.0, 2.0, 3.0, 4.0, 5.0, 6.0]])
    >>> moxGetMarkers(made)[0]["unamed_1"].tolist()
    [4.0, 5.0, 6.0]
    >>> moxSetMarkersValues(made, [1.0, 2.0, 3.0])
    Traceback (most recent call last):
    RuntimeError: Given matrix should have 2 dimensions, current has : 1
    """
    _moxPY.moxSetMarkersValues(acquisition, values)


def moxSetAnglesValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all markers, as `moxSetMarkersValues` does: angles stay as they are.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × markers)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th marker in the order of channel
        indices; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Notes
    -----
    `moxSetPointValues` and `moxSetPointsValues` set the values of angles.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 1)
    >>> _ = moxAppendPoint(made, "angle", "Knee", [[10.0, 20.0, 30.0]])
    >>> moxSetAnglesValues(made, [[1.0, 2.0, 3.0]])
    >>> moxGetMarkersValues(made).tolist(), moxGetAnglesValues(made).tolist()
    ([[1.0, 2.0, 3.0]], [[10.0, 20.0, 30.0]])
    """
    _moxPY.moxSetAnglesValues(acquisition, values)


def moxSetForcesValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all forces.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × forces)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th force in the order of channel
        indices; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(0, 1)
    >>> _ = moxAppendPoint(made, "force", "Knee", [[0.0, 0.0, 0.0]])
    >>> moxSetForcesValues(made, [[1.0, 2.0, 3.0]])
    >>> moxGetForcesValues(made).tolist()
    [[1.0, 2.0, 3.0]]
    """
    _moxPY.moxSetForcesValues(acquisition, values)


def moxSetMomentsValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all moments.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × moments)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th moment in the order of channel
        indices; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(0, 1)
    >>> _ = moxAppendPoint(made, "moment", "Knee", [[0.0, 0.0, 0.0]])
    >>> moxSetMomentsValues(made, [[1.0, 2.0, 3.0]])
    >>> moxGetMomentsValues(made).tolist()
    [[1.0, 2.0, 3.0]]
    """
    _moxPY.moxSetMomentsValues(acquisition, values)


def moxSetPowersValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all powers.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × powers)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th power in the order of channel
        indices; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(0, 1)
    >>> _ = moxAppendPoint(made, "power", "Knee", [[0.0, 0.0, 0.0]])
    >>> moxSetPowersValues(made, [[1.0, 2.0, 3.0]])
    >>> moxGetPowersValues(made).tolist()
    [[1.0, 2.0, 3.0]]
    """
    _moxPY.moxSetPowersValues(acquisition, values)


def moxSetPointsValues(acquisition: Acquisition, values: ArrayLike) -> None:
    """Set the values of all points of all kinds.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    values : array_like of float64 or float32, shape (frames, 3 × points)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the point with index k, as `moxGetPointsValues`
        gives them; NaN where they are not known.

    Raises
    ------
    RuntimeError
        The matrix does not have two dimensions, has other rows or columns than these, or does not
        hold float64 or float32; nothing has changed.

    Notes
    -----
    After `moxSetFrequency` on an acquisition that was read, the frames are those that
    `moxGetPointFrameNumber` counts. All points, and with them the rotations, get so many; analog
    channels keep their samples until `moxSetAnalogsValues`.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 1)
    >>> _ = moxAppendPoint(made, "angle", "Knee", [[0.0, 0.0, 0.0]])
    >>> moxSetPointsValues(made, [[1.0, 2.0, 3.0, 4.0, 5.0, 6.0]])
    >>> moxGetMarkersValues(made).tolist(), moxGetAnglesValues(made).tolist()
    ([[1.0, 2.0, 3.0]], [[4.0, 5.0, 6.0]])
    """
    _moxPY.moxSetPointsValues(acquisition, values)


def moxSetPointValues(acquisition: Acquisition, point: int | str, values: ArrayLike) -> None:
    """Set the values of one point of any kind.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition.
    point : int or str
        Index of the channel as stored (from 0, over all kinds), or label; labels are compared
        exactly and the first match counts.
    values : array_like of float64 or float32, shape (frames, 3)
        x, y, z of each frame; NaN where they are not known.

    Raises
    ------
    RuntimeError
        No point has this index or label (the message names it), the matrix has another shape, or
        it does not hold float64 or float32; nothing has changed.

    Examples
    --------
    >>> made = moxNewAcquisition(1, 2)
    >>> moxSetPointValues(made, "unamed_0", [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]])
    >>> moxGetPoint(made, 0)[0].tolist()
    [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]]
    >>> moxSetPointValues(made, 7, [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]])
    Traceback (most recent call last):
    RuntimeError: Unable to find channel with given index :  '7'
    """
    _moxPY.moxSetPointValues(acquisition, point, values)
