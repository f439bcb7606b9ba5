"""Which axis of the laboratory is the vertical one."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, TypeGuard

import numpy as np

if TYPE_CHECKING:
    from .trial import Trial

_AXES = "XYZ"


def upwards(trial: Trial) -> int | None:
    """The axis that points upwards, whoever tells it: the force platforms, else the entry Y_SCREEN
    of POINT, which says how the laboratory stands on a screen.

    Returns
    -------
    int or None
        0, 1 or 2 for x, y or z; None without corners of a platform and without +X, +Y or +Z there.
    """
    axis = up_axis(trial)
    if axis is not None:
        return axis
    group = trial.metadata.get("POINT")
    screen = None if group is None else group.get("Y_SCREEN")
    return _AXES.index(screen[1]) if is_axis(screen) and screen[0] == "+" else None


def is_axis(screen: Any) -> TypeGuard[str]:
    """Whether an entry names an axis, as +X or -Z."""
    return isinstance(screen, str) and len(screen) == 2 and screen[0] in "+-" and screen[1] in _AXES


def up_axis(trial: Trial) -> int | None:
    """The axis of the laboratory that points upwards, as the force platforms tell it.

    It is the axis along which the corners of platforms are level: the one that their normals lie
    along, those of all platforms taken together, so that a ramp or a step with a slope does not
    matter beside others. Which way a normal points says nothing, since corners run either way in
    files; upwards is where the axis is positive, as in every usual laboratory.

    Returns
    -------
    int or None
        0, 1 or 2 for x, y or z; None without a platform whose corners span a plane.
    """
    normals = [plate.frame[:3, 2] for plate in trial.platforms]
    known = [normal for normal in normals if np.isfinite(normal).all()]
    if not known:
        return None
    lengths = np.abs(known).sum(axis=0)
    return 2 - int(np.argmax(lengths[::-1]))  # of equal ones the last, which is usually upright
