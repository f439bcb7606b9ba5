"""Force platforms and the wrenches that they measured.

All platforms of a file, in its order; list entries that stand at the same place belong to the same
platform. A platform that cannot be used (a type that nobody has described, corners that span no
plane, a channel that is not there) keeps its place: it is described as far as the file goes, its
wrenches are NaN, and the log says why.

Forces and moments have the signs and units of the channels. In nearly every file z of a platform
points into the floor and its vertical force is negative under load: in the laboratory the force
points upwards and is the one on the person. No file says so; where the force points into the floor,
it is the one on the platform. `docs/force_platforms.md` has more on signs, the formulas and a
drawing.
"""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ...acquisition import data_store

__all__ = ["moxGetForcePlatformWrenches", "moxGetForcePlatforms", "moxGetGroundReactionWrenches"]


def moxGetForcePlatforms(acquisition: data_store) -> list[list[dict[str, Any]]]:
    """Geometry, calibration and channels of all force platforms.

    Parameters
    ----------
    acquisition : data_store
        An open acquisition. Its analog channels are put in the order of ANALOG:LABELS; nothing
        else of what other functions tell changes.

    Returns
    -------
    platforms : list of dict
        One a platform: ``"type"`` (int); ``"corners"`` (ndarray, shape (3, 4): a column a corner,
        in the laboratory and the unit of the points, in the quadrants ++, -+, --, +- of the
        platform's axes); ``"origin"`` (ndarray, shape (3,): from the measuring origin to the
        centre of the surface, as the file has it); ``"cal_matrix"`` (ndarray, shape (6, 6) or
        (8, 8), row times channel; shape (0,) where the file has none); ``"channels"`` (dict of
        str to ndarray, shape (samples,): the samples by analog label, in the order that the type
        asks for). Numbers that the file lacks are NaN. Two platforms may have channels of one
        label, so to change a channel take its index from FORCE_PLATFORM:CHANNEL.
    infos : list of dict
        One a platform: ``"frequency"`` (Hz, of the channels: ANALOG:RATE where it is one positive
        number, else as `moxGetAnalogFrequency`) and ``"units"`` (the unit of each channel, by the
        same keys). Without platforms both lists are empty.

    Examples
    --------
    >>> platforms, infos = moxGetForcePlatforms(trial)
    >>> platforms[0]["type"], list(platforms[0]["channels"])
    (2, ['Fx1', 'Fy1', 'Fz1', 'Mx1', 'My1', 'Mz1'])
    >>> platforms[0]["corners"][:, 0].tolist()
    [600.0, -200.0, 0.0]
    >>> infos[0]["frequency"], infos[0]["units"]["Mz1"]
    (1000.0, 'Nmm')
    """
    return _moxPY.moxGetForcePlatforms(acquisition)


def moxGetForcePlatformWrenches(
    acquisition: data_store, inglobalframe: int = 1
) -> list[dict[str, NDArray[np.float64]]]:
    """The wrench of each force platform at its measuring origin, in the laboratory.

    Parameters
    ----------
    acquisition : data_store
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
    acquisition: data_store, threshold: float = 10.0
) -> list[dict[str, NDArray[np.float64]]]:
    """The wrench of each force platform at the point of application, in the laboratory.

    Parameters
    ----------
    acquisition : data_store
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
