"""Segments of a body as rotations and positions, in the few files that have them."""

from __future__ import annotations

from typing import Any

import _moxPY

from ...acquisition import Acquisition

__all__ = ["moxGetRotation", "moxGetRotations"]


def moxGetRotations(acquisition: Acquisition) -> list[Any]:
    """The position and orientation of all segments.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    rotations : dict of str to ndarray, shape (samples, 4, 4)
        For each segment and sample the homogeneous matrix that takes points of the segment to the
        laboratory: ``a[s] @ [x, y, z, 1]``. Its last column is the position, in the unit of the
        points. Samples that the file marks as invalid are NaN throughout. Empty for a file without
        rotations.
    nothing : None
        Always None.

    Raises
    ------
    RuntimeError
        The acquisition was made by `moxNewAcquisition`, which has no place for segments.

    Examples
    --------
    >>> moxGetRotations(trial)
    [{}, None]
    """
    return _moxPY.moxGetRotations(acquisition)


def moxGetRotation(acquisition: Acquisition, label: str) -> list[Any]:
    """The position and orientation of one segment.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    label : str
        The segment's label, compared exactly.

    Returns
    -------
    rotation : ndarray, shape (samples, 4, 4)
        As in `moxGetRotations`.
    nothing : None
        Always None.

    Raises
    ------
    RuntimeError
        There is no such segment, or no place for segments; the message names it.

    Examples
    --------
    >>> moxGetRotation(trial, "Pelvis")
    Traceback (most recent call last):
    RuntimeError: Unable to rotation with given label :  'Pelvis'
    """
    return _moxPY.moxGetRotation(acquisition, label)
