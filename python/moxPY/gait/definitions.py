"""Each parameter: what it is, its unit, and how one stride gives it.

A parameter of a side is taken from the strides of that side's foot, so that a left step is the one
that ends with a strike of the left foot.
"""

from __future__ import annotations

from collections.abc import Callable
from typing import NamedTuple

import numpy as np

from .stride import Stride


class Definition(NamedTuple):
    """A parameter."""

    name: str  #: ``"step_length"``
    unit: str  #: ``"m"``
    decimals: int  #: how many are shown
    function: Callable[[Stride], float]  #: its value for one stride; its docstring defines it
    needs: tuple[str, ...] = ()  #: what of a stride it is made from, but for start and stop

    @property
    def title(self) -> str:
        """The name as people write it: ``"Step length"``."""
        words = self.name.removesuffix("_percent").removesuffix("_share").replace("_", " ")
        return words.capitalize()


def cadence(stride: Stride) -> float:
    """Steps in a minute at the pace of this stride, which has two of them.

    References
    ----------
    .. [1] Whittle MW. Gait Analysis: An Introduction. 4th ed. Butterworth-Heinemann; 2007.
    """
    return 120.0 / stride.duration


def walking_speed(stride: Stride) -> float:
    """Stride length by stride time.

    On a curved path it is the speed along the chord from footprint to footprint.

    References
    ----------
    .. [1] Whittle MW. Gait Analysis: An Introduction. 4th ed. Butterworth-Heinemann; 2007.
    """
    return stride_length(stride) / stride.duration


def stride_length(stride: Stride) -> float:
    """The level distance between two places of the foot that follow each other, at its strikes.

    References
    ----------
    .. [1] Whittle MW. Gait Analysis: An Introduction. 4th ed. Butterworth-Heinemann; 2007.
    .. [2] Huxham F, Gong J, Baker R, Morris M, Iansek R. Defining spatial parameters for
       non-linear walking. Gait Posture. 2006;23(2):159-163.
    """
    return float(np.hypot(*(stride.end - stride.begin)))


def step_length(stride: Stride) -> float:
    """How far ahead of the other foot the foot strikes, along the line from the foot's last place
    to this one.

    The line makes it independent of the direction of walking and of bends in the path: both steps
    between two places of a foot add up to the stride. It is negative where the foot stays behind
    the other one.

    References
    ----------
    .. [1] Huxham F, Gong J, Baker R, Morris M, Iansek R. Defining spatial parameters for
       non-linear walking. Gait Posture. 2006;23(2):159-163.
    """
    return float((stride.end - stride.between) @ stride.along)


def step_width(stride: Stride) -> float:
    """How far beside the line from the foot's last place to its next one the other foot stands.

    It is negative where the feet cross: where the other foot stands on this foot's side of the
    line.

    References
    ----------
    .. [1] Huxham F, Gong J, Baker R, Morris M, Iansek R. Defining spatial parameters for
       non-linear walking. Gait Posture. 2006;23(2):159-163.
    """
    x, y = stride.along
    left_of_line = float((stride.between - stride.begin) @ [-y, x])
    return -left_of_line if stride.side == "Left" else left_of_line


def stride_time(stride: Stride) -> float:
    """From a strike of the foot to its next one: the duration of the gait cycle.

    References
    ----------
    .. [1] Perry J, Burnfield JM. Gait Analysis: Normal and Pathological Function. 2nd ed. SLACK;
       2010.
    """
    return stride.duration


def step_time(stride: Stride) -> float:
    """From the strike of the other foot to the strike of this one that follows.

    References
    ----------
    .. [1] Hollman JH, McDade EM, Petersen RC. Normative spatiotemporal gait parameters in older
       adults. Gait Posture. 2011;34(1):111-118.
    """
    return stride.stop - stride.other_strike


def stance_time(stride: Stride) -> float:
    """From the strike of the foot until it leaves the floor.

    References
    ----------
    .. [1] Perry J, Burnfield JM. Gait Analysis: Normal and Pathological Function. 2nd ed. SLACK;
       2010.
    """
    return stride.off - stride.start


def swing_time(stride: Stride) -> float:
    """While the foot is off the floor, until it strikes again.

    References
    ----------
    .. [1] Perry J, Burnfield JM. Gait Analysis: Normal and Pathological Function. 2nd ed. SLACK;
       2010.
    """
    return stride.stop - stride.off


def double_support_time(stride: Stride) -> float:
    """While both feet are on the floor, both times in the cycle: until the other foot leaves it,
    and from its strike until this foot leaves it.

    References
    ----------
    .. [1] Perry J, Burnfield JM. Gait Analysis: Normal and Pathological Function. 2nd ed. SLACK;
       2010.
    """
    if not stride.is_walked:
        return np.nan
    return (stride.other_off - stride.start) + (stride.off - stride.other_strike)


def single_support_time(stride: Stride) -> float:
    """While this foot alone is on the floor: from the other foot's leaving it to its strike.

    References
    ----------
    .. [1] Perry J, Burnfield JM. Gait Analysis: Normal and Pathological Function. 2nd ed. SLACK;
       2010.
    """
    return stride.other_strike - stride.other_off if stride.is_walked else np.nan


def _share(time: Callable[[Stride], float]) -> Callable[[Stride], float]:
    """The per cent of the stride that a time takes."""

    def share(stride: Stride) -> float:
        return 100.0 * time(stride) / stride.duration

    share.__doc__ = f"`{time.__name__}` in per cent of the stride time."
    return share


_PLACES = ("begin", "end")
_FEET = ("begin", "between", "end")
_WALKED = ("other_off", "other_strike", "off", "is_walked")

#: All parameters, in the order in which they are shown.
DEFINITIONS = (
    Definition("walking_speed", "m/s", 2, walking_speed, _PLACES),
    Definition("cadence", "steps/min", 1, cadence),
    Definition("stride_time", "s", 2, stride_time),
    Definition("stride_length", "m", 2, stride_length, _PLACES),
    Definition("step_time", "s", 2, step_time, ("other_strike",)),
    Definition("step_length", "m", 2, step_length, _FEET),
    Definition("step_width", "m", 3, step_width, _FEET),
    Definition("stance_time", "s", 2, stance_time, ("off",)),
    Definition("stance_percent", "%", 1, _share(stance_time), ("off",)),
    Definition("swing_time", "s", 2, swing_time, ("off",)),
    Definition("swing_percent", "%", 1, _share(swing_time), ("off",)),
    Definition("double_support_time", "s", 2, double_support_time, _WALKED),
    Definition("double_support_percent", "%", 1, _share(double_support_time), _WALKED),
    Definition("single_support_time", "s", 2, single_support_time, _WALKED),
    Definition("single_support_percent", "%", 1, _share(single_support_time), _WALKED),
)
