"""The wrenches that force platforms measured; `force_platforms` says how to read them."""

from __future__ import annotations

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ...acquisition import Acquisition

__all__ = ["moxGetForcePlatformWrenches", "moxGetGroundReactionWrenches"]


def moxGetForcePlatformWrenches(
    acquisition: Acquisition, inglobalframe: int = 1
) -> list[dict[str, NDArray[np.float64]]]:
    """The wrench of each force platform at its measuring origin, in the laboratory.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. Its analog channels are put in the order of ANALOG:LABELS; nothing
        else of what other functions tell changes.
    inglobalframe : int, optional
        1, the axes of the laboratory. 0, those of the platform, is not supported yet.

    Returns
    -------
    wrenches : list of dict
        One a platform: ``"F"``, the force, ``"M"``, the moment about the measuring origin, and
        ``"P"``, where that origin is. Each is an ndarray of shape (samples, 3) at the rate of the
        analog channels, in the units of the force channels, the moment channels and the points;
        NaN throughout where a platform cannot be used.

    Raises
    ------
    RuntimeError
        `inglobalframe` is not 1.

    Examples
    --------
    >>> wrench = moxGetForcePlatformWrenches(trial)[0]
    >>> wrench["F"].shape, wrench["P"][0].round(1).tolist()
    ((3600, 3), [299.4, -1.2, -41.3])
    """
    return _moxPY.moxGetForcePlatformWrenches(acquisition, inglobalframe)


def moxGetGroundReactionWrenches(
    acquisition: Acquisition, threshold: float = 10.0
) -> list[dict[str, NDArray[np.float64]]]:
    """The wrench of each force platform at the point of application, in the laboratory.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. Its analog channels are put in the order of ANALOG:LABELS; nothing
        else of what other functions tell changes.
    threshold : float, optional
        Least absolute force along the platform's z axis that has a point of application, in the
        unit of the force channels.

    Returns
    -------
    wrenches : list of dict
        One a platform: ``"F"``, the force, ``"M"``, the free moment, which is parallel to the
        normal of the platform, and ``"P"``, the point of application on its surface, all in the
        axes of the laboratory. Each is an ndarray of shape (samples, 3) at the rate of the analog
        channels. In samples under the threshold P is NaN, F is what was measured, and M is the
        moment about the measuring origin. All are NaN where a platform cannot be used.

    Raises
    ------
    RuntimeError
        The threshold is negative or NaN.

    Examples
    --------
    >>> wrench = moxGetGroundReactionWrenches(trial)[0]
    >>> loaded = ~np.isnan(wrench["P"][:, 0])
    >>> wrench["F"].shape, int(loaded.sum())
    ((3600, 3), 657)
    >>> float(wrench["F"][:, 2].max().round())  # upwards, on the person
    755.0
    >>> strict = moxGetGroundReactionWrenches(trial, 500.0)[0]
    >>> int((~np.isnan(strict["P"][:, 0])).sum())
    513
    """
    return _moxPY.moxGetGroundReactionWrenches(acquisition, threshold)
