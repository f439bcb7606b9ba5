"""A trial in other axes of the laboratory."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import _moxPY
import numpy as np
from _moxPY import trial as calls
from numpy.typing import ArrayLike, NDArray

from ..plate_entries import change_entry
from ..samples import FloatArray, samples_of
from ..up_axis import is_axis, upwards

if TYPE_CHECKING:
    from ..trial import Trial

# What has a direction in the laboratory; angles and powers are the body's own.
_TURNED = ("markers", "forces", "moments")
_AXES = "XYZ"
_SCREEN = ("X_SCREEN", "Y_SCREEN")


def rotated(trial: Trial, matrix: ArrayLike) -> Trial:
    """A trial in axes that are turned: each place p becomes ``matrix @ p``.

    Markers, forces, moments, force platforms and the rotations of segments turn; angles and powers
    do not, nor do analog channels, which measure in the axes of their platform. Residuals, camera
    masks and gaps stay. The entries X_SCREEN and Y_SCREEN of POINT, which say how the laboratory
    lies on a screen, follow where the turned axis is one of the laboratory again.

    Parameters
    ----------
    matrix : array_like
        Shape (3, 3), a rotation.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        The matrix has another shape, or is no rotation within a millionth: it stretches or
        mirrors.

    Examples
    --------
    >>> quarter = trial.rotated([[0, -1, 0], [1, 0, 0], [0, 0, 1]])
    """
    turned = trial.copy()
    turn = samples_of(matrix, (3, 3), ("3", "3"), "the rotation")
    if not (np.allclose(turn @ turn.T, np.eye(3), rtol=0.0, atol=1e-6) and np.linalg.det(turn) > 0):
        raise ValueError("the matrix is no rotation: it stretches or mirrors")
    for kind in _TURNED:
        for label, original in getattr(trial, kind).items():
            channel = getattr(turned, kind)[label]
            channel.values = _turned(original.values, turn)
            calls.carry_residuals(turned, channel._handle, trial, original._handle)
    for label, matrices in trial.rotations.items():
        turned.rotations[label] = np.concatenate([turn @ matrices[:, :3], matrices[:, 3:]], axis=1)
    _turn_corners(turned, turn)
    _turn_screen(turned, turn)
    return turned


def z_up(trial: Trial) -> Trial:
    """A trial in axes of which z points upwards, turned by a right angle about a level axis.

    Which axis points upwards now the force platforms tell (`moxPY.trial.up_axis`), else the entry
    Y_SCREEN of POINT. A trial with z upwards is copied.

    Raises
    ------
    ValueError
        Nothing tells which axis points upwards.

    Examples
    --------
    >>> upright = trial.z_up()
    """
    return rotated(trial, _right_angle(_up(trial), 2))


def y_up(trial: Trial) -> Trial:
    """A trial in axes of which y points upwards, turned by a right angle about a level axis.

    As `z_up`.

    Raises
    ------
    ValueError
        Nothing tells which axis points upwards.

    Examples
    --------
    >>> upright = trial.y_up()
    """
    return rotated(trial, _right_angle(_up(trial), 1))


def x_up(trial: Trial) -> Trial:
    """A trial in axes of which x points upwards, turned by a right angle about a level axis.

    As `z_up`.

    Raises
    ------
    ValueError
        Nothing tells which axis points upwards.

    Examples
    --------
    >>> upright = trial.x_up()
    """
    return rotated(trial, _right_angle(_up(trial), 0))


def _up(trial: Trial) -> int:
    axis = upwards(trial)
    if axis is None:
        raise ValueError(
            "nothing tells which axis points upwards: no force platform has corners, and POINT "
            "has no Y_SCREEN of +X, +Y or +Z; rotated takes any rotation"
        )
    return axis


def _right_angle(source: int, target: int) -> FloatArray:
    """The rotation that takes one axis to another, and that one to the opposite of the first."""
    turn = np.eye(3)
    if source != target:
        turn[:, [source, target]] = 0.0
        turn[target, source], turn[source, target] = 1.0, -1.0
    return turn


def _turned(values: FloatArray, turn: FloatArray) -> FloatArray:
    if np.array_equal(turn, np.eye(3)):
        return values
    result: FloatArray = values @ turn.T
    return result


def _turn_corners(trial: Trial, turn: FloatArray) -> None:
    """Turn the corners, which lie one behind the other in whatever dimensions a file gives them."""
    if not np.array_equal(turn, np.eye(3)):
        change_entry(trial, "CORNERS", lambda corners: _turned_places(corners, turn))


def _turned_places(numbers: FloatArray, turn: FloatArray) -> FloatArray:
    """The places that three numbers each are; numbers that are no places stay."""
    return numbers if numbers.size % 3 else _turned(numbers.reshape(-1, 3), turn)


def _turn_screen(trial: Trial, turn: FloatArray) -> None:
    for entry in _SCREEN:
        screen = _parameter(trial, "POINT", entry)
        if not is_axis(screen):
            continue
        direction = np.zeros(3)
        direction[_AXES.index(screen[1])] = 1.0 if screen[0] == "+" else -1.0
        direction = turn @ direction
        axis = int(np.argmax(np.abs(direction)))
        if abs(abs(direction[axis]) - 1.0) < 1e-6:
            sign = "+" if direction[axis] > 0.0 else "-"
            _moxPY.moxSetMetaDataValue(trial, "POINT", entry, sign + _AXES[axis])


def _parameter(trial: Trial, group: str, entry: str) -> str | NDArray[Any] | Any:
    """What the metadata have; None without such an entry."""
    try:
        return _moxPY.moxGetMetaData(trial, group, entry)["info"]["values"]
    except RuntimeError:
        return None
