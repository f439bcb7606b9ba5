"""Lengths, width and speed, of walks in closed form: any direction, bends, treadmills, units."""

from __future__ import annotations

import numpy as np
import pytest
from gait.made_walks import STEP_S, on_belt, straight, walk
from moxPY.gait import Gait

LEFT, RIGHT, WIDTH = 0.70, 0.50, 0.12
STRIDE_S = 2 * STEP_S


def mean(gait: Gait, name: str) -> tuple[float, float]:
    return gait.left[name].mean, gait.right[name].mean


def assert_is_the_walk(gait: Gait) -> None:
    assert mean(gait, "step_length") == pytest.approx((LEFT, RIGHT), abs=1e-6)
    assert mean(gait, "stride_length") == pytest.approx((LEFT + RIGHT,) * 2, abs=1e-6)
    assert mean(gait, "step_width") == pytest.approx((WIDTH, WIDTH), abs=1e-6)
    speed = (LEFT + RIGHT) / STRIDE_S
    assert mean(gait, "walking_speed") == pytest.approx((speed, speed), abs=1e-6)


@pytest.mark.parametrize("degrees", [0, 30, 90, 135, 180, 250, 315])
def test_a_straight_walk_in_any_direction(degrees: int) -> None:
    trial = walk(straight(9, LEFT, RIGHT, WIDTH, np.radians(degrees)))
    gait = trial.gait(up="z")
    assert_is_the_walk(gait)
    assert [len(side.strides) for side in gait.sides] == [4, 3]
    assert not gait.treadmill
    assert gait.left_out == gait.notes == ()


def test_each_stride_has_its_values() -> None:
    along = np.cumsum([0.0, 0.5, 0.6, 0.5, 0.8, 0.5, 0.7])
    beside = np.array([0.1, 0.0] * 3 + [0.1])
    gait = walk(np.column_stack([along, beside])).gait(up="z")
    length = gait.left["step_length"]
    assert length.values == pytest.approx([0.6, 0.8, 0.7], abs=1e-6)
    assert length.mean == pytest.approx(0.7, abs=1e-6)
    assert length.deviation == pytest.approx(0.1, abs=1e-6)
    assert gait.left["stride_length"].values == pytest.approx([1.1, 1.3, 1.2], abs=1e-6)


@pytest.mark.parametrize("sense", [1.0, -1.0])
def test_a_curved_path(sense: float) -> None:
    """Feet on two circles: the stride is a chord, the other foot beside its middle."""
    radius, half, angle = 3.0, 0.08, 0.2
    inner_is_left = sense > 0
    radii = radius + half * np.array([-1.0, 1.0] if inner_is_left else [1.0, -1.0])
    steps = np.arange(9)
    around = np.column_stack([np.cos(sense * steps * angle), np.sin(sense * steps * angle)])
    gait = walk(around * radii[steps % 2][:, None]).gait(up="z")
    for side, own, other in ((gait.left, 0, 1), (gait.right, 1, 0)):
        chord = 2 * radii[own] * np.sin(angle)
        assert side["stride_length"].values == pytest.approx(chord, abs=1e-6)
        assert side["step_length"].values == pytest.approx(chord / 2, abs=1e-6)
        beside = abs(radii[other] - radii[own] * np.cos(angle))
        assert side["step_width"].values == pytest.approx(beside, abs=1e-6)
        assert side["walking_speed"].values == pytest.approx(chord / STRIDE_S, abs=1e-6)


def test_feet_that_cross_have_a_negative_width() -> None:
    gait = walk(straight(7, LEFT, RIGHT, -0.05)).gait(up="z")
    assert mean(gait, "step_width") == pytest.approx((-0.05, -0.05), abs=1e-6)


def test_a_foot_that_only_catches_up_makes_steps_of_no_length() -> None:
    gait = walk(straight(9, 0.0, 0.6, WIDTH)).gait(up="z")
    assert mean(gait, "step_length") == pytest.approx((0.0, 0.6), abs=1e-6)


def test_another_axis_and_another_unit_change_nothing() -> None:
    trial = walk(straight(9, LEFT, RIGHT, WIDTH, 0.4))
    for axis, order in (("y", [1, 2, 0]), ("x", [2, 0, 1])):
        turned = trial.copy()
        for label in list(turned.markers):
            turned.markers[label] = trial.markers[label].values[:, order]
        assert_is_the_walk(turned.gait(up=axis))
        turned.metadata["POINT"] = {"Y_SCREEN": "+" + axis.upper()}
        assert turned.gait().up == axis
        assert_is_the_walk(turned.gait())
    assert_is_the_walk(trial.in_units(length="m").gait(up="z"))


@pytest.mark.parametrize("degrees", [0, 200])
def test_a_treadmill_with_a_known_speed(degrees: int) -> None:
    turn = np.radians(degrees)
    speed = (LEFT + RIGHT) / STRIDE_S
    trial = on_belt(straight(9, LEFT, RIGHT, WIDTH, turn), speed, turn)
    gait = trial.gait(up="z", belt_speed=speed)
    assert gait.treadmill
    assert_is_the_walk(gait)


def test_a_treadmill_of_which_nothing_tells_the_speed() -> None:
    turn, speed = 0.7, (LEFT + RIGHT) / STRIDE_S
    gait = on_belt(straight(9, LEFT, RIGHT, WIDTH, turn), speed, turn).gait(up="z")
    assert gait.treadmill
    assert mean(gait, "step_width") == pytest.approx((WIDTH, WIDTH), abs=1e-6)
    assert mean(gait, "cadence") == pytest.approx((120.0, 120.0))
    assert {each.name for each in gait.left_out} == {
        "walking_speed",
        "stride_length",
        "step_length",
    }
    with pytest.raises(KeyError, match="does not tell how fast its belt ran"):
        gait.left["walking_speed"]


def test_a_treadmill_without_offs_tells_no_lengths() -> None:
    trial = on_belt(straight(9, LEFT, RIGHT, WIDTH), 1.2)
    for event in trial.events.select("Foot Off"):
        trial.events.remove(event)
    for gait in (trial.gait(up="z"), trial.gait(up="z", belt_speed=1.2)):
        assert "step_width" not in gait.left
        assert "without Foot Off events nothing tells which way" in gait.left.reasons["step_width"]
        assert gait.left["stride_time"].mean == pytest.approx(1.0)


def test_a_speed_of_a_belt_is_refused_on_the_ground() -> None:
    trial = walk(straight(9, LEFT, RIGHT, WIDTH))
    with pytest.raises(ValueError, match=r"^the feet move on from stride to stride"):
        trial.gait(up="z", belt_speed=1.0)


@pytest.mark.parametrize("speed", [0.0, -1.0, np.nan, np.inf])
def test_speeds_that_no_belt_has(speed: float) -> None:
    with pytest.raises(ValueError, match=r"^the speed of a belt is a positive number of m/s, not"):
        walk(straight(3, LEFT, RIGHT, WIDTH)).gait(belt_speed=speed)


@pytest.mark.parametrize("axis", ["", "xy", "Z", "w"])
def test_what_is_no_axis(axis: str) -> None:
    with pytest.raises(ValueError, match=r"^an axis is 'x', 'y' or 'z', not '"):
        walk(straight(3, LEFT, RIGHT, WIDTH)).gait(up=axis)  # type: ignore[arg-type]
