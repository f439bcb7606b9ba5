"""Strides with the places where the feet stood."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import replace
from typing import NamedTuple

import numpy as np

from ..trial.samples import FloatArray
from .belt import is_on_belt, velocity_against_belt
from .feet import Feet
from .stride import OTHER, Stride

_UNKNOWN_SPEED = (
    "the feet come back to where they were, as on a treadmill, and the trial does not tell how "
    "fast its belt ran; say it, as in belt_speed=1.2 (m/s)"
)
_LENGTHS = ("walking_speed", "stride_length", "step_length")


class Placed(NamedTuple):
    """Strides with places."""

    strides: list[Stride]
    treadmill: bool  #: whether the walk is on one
    unknown: dict[str, str]  #: parameters that the places do not tell, and why


def placed(strides: Sequence[Stride], feet: Feet, belt_speed: float | None) -> Placed:
    """The strides of both feet with their places.

    On a treadmill the places are those on the belt. Unless its speed is known, distances along it
    are not; those across it are.

    Raises
    ------
    PlacesUnknown
        Nothing tells which way is forward.
    ValueError
        A speed is given for a walk that is on the ground.
    """
    treadmill = is_on_belt(strides, feet)
    velocity, unknown = np.zeros(2), {}
    if treadmill:
        velocity = velocity_against_belt(strides, feet)
        if belt_speed is None:
            unknown = dict.fromkeys(_LENGTHS, _UNKNOWN_SPEED)
        else:
            velocity *= belt_speed / np.hypot(*velocity)
    elif belt_speed is not None and strides:
        raise ValueError("the feet move on from stride to stride: there is no belt with a speed")
    return Placed([_placed(stride, feet, velocity) for stride in strides], treadmill, unknown)


def _placed(stride: Stride, feet: Feet, velocity: FloatArray) -> Stride:
    own = np.array([stride.start, stride.stop])
    others = np.array([stride.other_strike])
    begin, end = feet.at(stride.side, own) + np.outer(own, velocity)
    (between,) = feet.at(OTHER[stride.side], others) + np.outer(others, velocity)
    return replace(stride, begin=begin, between=between, end=end)
