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

from ...acquisition import Acquisition

__all__ = ["moxGetForcePlatforms"]


def moxGetForcePlatforms(acquisition: Acquisition) -> list[list[dict[str, Any]]]:
    """Geometry, calibration and channels of all force platforms.

    Parameters
    ----------
    acquisition : data_store or Trial
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
