"""Walks from footprint to footprint, whose parameters are known in closed form."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np
from moxPY.trial import Trial
from numpy.typing import NDArray

Array = NDArray[np.float64]

RATE = 100.0
STEP_S = 0.5  # a foot strikes every half second, left first, at 0.2 s
FIRST_S = 0.2
DOUBLE_S = 0.1  # after each strike the other foot leaves the floor
FORWARD_X, LEFT_Y = np.array([1.0, 0.0]), np.array([0.0, 1.0])


def strike_time(step: int) -> float:
    return FIRST_S + step * STEP_S


def foot(prints: Array, parity: int, times: Array) -> Array:
    """Places (m) of one foot: it rests at its footprints and goes straight to the next one."""
    strikes = [strike_time(step) for step in range(parity, len(prints), 2)]
    leaves = [strike + STEP_S + DOUBLE_S for strike in strikes]
    instants = np.ravel(np.column_stack([strikes, leaves]))
    places = np.repeat(prints[parity::2], 2, axis=0)
    return np.column_stack([np.interp(times, instants, places[:, axis]) for axis in (0, 1)])


def trial_with(places: dict[str, Array], labels: Callable[[str], str] = "{}HEE".format) -> Trial:
    """A trial with markers in mm, z upwards; `places` by L and R."""
    trial = Trial.new(frames=len(next(iter(places.values()))), rate=RATE)
    for side, level in places.items():
        height = np.full(len(level), 0.04)
        trial.markers[labels(side)] = 1000.0 * np.column_stack([level, height])
        trial.markers[labels(side)].unit = "mm"
    return trial


def add_events(trial: Trial, steps: int) -> None:
    for step in range(steps):
        side, other = ("Left", "Right") if step % 2 == 0 else ("Right", "Left")
        trial.events.add("Foot Strike", strike_time(step), context=side)
        trial.events.add("Foot Off", strike_time(step) + DOUBLE_S, context=other)


def walk(prints: Any, **options: Any) -> Trial:
    """A trial from footprints (m, seen from above), the left foot's first and then in turns."""
    prints = np.asarray(prints, dtype=np.float64)
    duration = strike_time(len(prints)) + 0.2
    times = np.arange(round(duration * RATE)) / RATE
    trial = trial_with({side: foot(prints, n, times) for n, side in enumerate("LR")}, **options)
    add_events(trial, len(prints))
    return trial


def straight(steps: int, left: float, right: float, width: float, turn: float = 0.0) -> Array:
    """Footprints of left and right steps of two lengths, along a direction `turn` from x."""
    along = np.cumsum([0.0, *([right, left] * steps)])[:steps]
    beside = np.where(np.arange(steps) % 2 == 0, width / 2, -width / 2)
    cos, sin = np.cos(turn), np.sin(turn)
    turned: Array = np.column_stack([along, beside]) @ np.array([[cos, sin], [-sin, cos]])
    return turned


def on_belt(trial_prints: Array, speed: float, turn: float = 0.0) -> Trial:
    """The same walk on a treadmill, which carries everything against the direction of walking."""
    trial = walk(trial_prints)
    drift = np.outer(trial.time, [np.cos(turn), np.sin(turn), 0.0]) * speed * 1000.0
    for label in list(trial.markers):
        trial.markers[label] = trial.markers[label].values - drift
    return trial
