"""Points as matrices: a row a frame, three columns a point."""

from __future__ import annotations

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ...acquisition import Acquisition

__all__ = [
    "moxGetAnglesValues",
    "moxGetForcesValues",
    "moxGetMarkersValues",
    "moxGetMomentsValues",
    "moxGetPointsValues",
    "moxGetPowersValues",
]


def moxGetMarkersValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All markers as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × markers)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th marker in the order of channel indices;
        NaN where they are not known. Without markers an array without dimensions.

    Examples
    --------
    >>> moxGetMarkersValues(trial).shape
    (360, 120)
    """
    return _moxPY.moxGetMarkersValues(acquisition)


def moxGetAnglesValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All angles as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × angles)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th angle in the order of channel indices;
        NaN where they are not known. Without angles an array without dimensions.

    Examples
    --------
    >>> moxGetAnglesValues(trial).shape
    (360, 24)
    """
    return _moxPY.moxGetAnglesValues(acquisition)


def moxGetForcesValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All forces as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × forces)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th force in the order of channel indices;
        NaN where they are not known. Without forces an array without dimensions.

    Examples
    --------
    >>> moxGetForcesValues(trial).shape
    (360, 24)
    """
    return _moxPY.moxGetForcesValues(acquisition)


def moxGetMomentsValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All moments as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × moments)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th moment in the order of channel indices;
        NaN where they are not known. Without moments an array without dimensions.

    Examples
    --------
    >>> moxGetMomentsValues(trial).shape
    (360, 18)
    """
    return _moxPY.moxGetMomentsValues(acquisition)


def moxGetPowersValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All powers as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × powers)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th power in the order of channel indices;
        NaN where they are not known. Without powers an array without dimensions.

    Examples
    --------
    >>> moxGetPowersValues(trial).shape
    (360, 18)
    """
    return _moxPY.moxGetPowersValues(acquisition)


def moxGetPointsValues(acquisition: Acquisition) -> NDArray[np.float64]:
    """All points of all kinds as one matrix.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    values : ndarray of float64, shape (frames, 3 × points)
        Columns 3k, 3k + 1, 3k + 2 hold x, y, z of the k-th point in the order of channel indices;
        NaN where they are not known. Without points an array without dimensions.

    Examples
    --------
    >>> moxGetPointsValues(trial).shape
    (360, 204)
    """
    return _moxPY.moxGetPointsValues(acquisition)
