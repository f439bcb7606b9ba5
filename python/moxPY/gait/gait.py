"""Spatio-temporal parameters of a trial: `Trial.gait`."""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import TYPE_CHECKING, Literal

import numpy as np

from ..trial.foot_events import Side
from ..trial.numbers import real_number
from ..trial.samples import read_only
from .definitions import DEFINITIONS
from .feet import AXES, SIDES, Feet, PlacesUnknown
from .places import placed
from .reasons import Known, reason
from .result import Gait, GaitSide, LeftOut, Measure
from .stride import Stride
from .strides import EventsUnclear, foot_times, strides_of

if TYPE_CHECKING:
    from ..trial.trial import Trial


def gait(
    trial: Trial,
    *,
    subject: str | None = None,
    up: Literal["x", "y", "z"] | None = None,
    belt_speed: float | None = None,
) -> Gait:
    """The spatio-temporal parameters of walking, by side.

    Walking speed, cadence, stride and step times and lengths, step width, stance and swing, double
    and single support, as mean, deviation and the value of each stride. Units are s, m, m/s,
    steps/min and per cent of the stride time, whatever those of the trial are. What each is, and
    by which literature, the functions of `moxPY.gait.definitions` say.

    A stride goes from a strike of a foot to its next one. The events Foot Strike and Foot Off (or
    heel strike, initial contact, toe off) of the contexts Left and Right tell times. A marker on
    each heel tells places, else on the ankles, else on the toes; `Gait.markers` says which. Its
    place at the strike, seen from above, is where the foot stands, so that neither direction nor
    bends of the path matter: the direction of a stride is that from footprint to footprint. What a
    trial does not tell is left out, and `Gait.left_out` says why.

    Parameters
    ----------
    subject : str, optional
        Whose events and markers are meant, where a trial has several subjects.
    up : {"x", "y", "z"}, optional
        The axis of the laboratory that points upwards; without it the one that force platforms are
        level along, else the one that POINT:Y_SCREEN names.
    belt_speed : float, optional
        The speed of a treadmill in m/s. On a treadmill feet come back to where they were, and
        lengths along the belt and the walking speed are unknown without it; step width is not.

    Returns
    -------
    Gait
        With `left` and `right`, mappings of names to parameters.

    Raises
    ------
    ValueError
        `up` is no axis, `belt_speed` no positive number, or given for a walk on the ground.

    Examples
    --------
    >>> gait = trial.gait()
    >>> gait
    <gait: 2 left and 3 right strides of 1.30 m, 1.18 m/s, 109.1 steps/min>
    >>> gait.left["step_length"]
    <step_length: 0.65 ± 0.00 m, 2 strides>
    >>> gait.markers
    {'Left': 'LHEE', 'Right': 'RHEE'}
    """
    if up is not None and up not in AXES:
        raise ValueError(f"an axis is 'x', 'y' or 'z', not {up!r}")
    speed = None if belt_speed is None else real_number(belt_speed, "the speed of a belt")
    if speed is not None and not (math.isfinite(speed) and speed > 0.0):
        raise ValueError(f"the speed of a belt is a positive number of m/s, not {belt_speed}")
    try:
        times = foot_times(trial, subject)
    except EventsUnclear as error:
        return _result([], Known(events=str(error)))
    found = [strides_of(side, times) for side in SIDES]
    strides = [stride for of_side, _ in found for stride in of_side]
    notes = tuple(note for _, of_side in found for note in of_side)
    try:
        feet = Feet(trial, subject, up)
        there = placed(strides, feet, speed)
    except PlacesUnknown as error:
        return _result(strides, Known(places=str(error)), notes=notes)
    known = Known(markers=tuple(feet.markers.values()), unknown=there.unknown)
    return _result(there.strides, known, notes, feet, there.treadmill)


def _result(
    strides: Sequence[Stride],
    known: Known,
    notes: tuple[str, ...] = (),
    feet: Feet | None = None,
    treadmill: bool = False,
) -> Gait:
    left, right = (
        _side(side, [stride for stride in strides if stride.side == side], known) for side in SIDES
    )
    return Gait(
        left=left,
        right=right,
        markers={} if feet is None else dict(feet.markers),
        place="" if feet is None else feet.place,
        up="" if feet is None else feet.up,
        treadmill=treadmill,
        left_out=tuple(
            LeftOut(side.side, name, text)
            for side in (left, right)
            for name, text in side.reasons.items()
        ),
        notes=notes,
    )


def _side(side: Side, strides: Sequence[Stride], known: Known) -> GaitSide:
    measures, reasons = {}, {}
    for each in DEFINITIONS:
        values = np.array([each.function(stride) for stride in strides], dtype=np.float64)
        if each.name not in known.unknown and np.isfinite(values).any():
            measures[each.name] = Measure(name=each.name, unit=each.unit, values=read_only(values))
        else:
            reasons[each.name] = reason(each, side, strides, known)
    return GaitSide(side, tuple(strides), measures, reasons)
