"""Moments and powers are shown over the strides that were on a platform."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path

import moxPY
import numpy as np
import pytest
from devices.plates import CENTRE, DIRECTIONS, Load, Plate, read_plates, step_on
from moxPY.plots.laid_over import laid_over
from numpy.typing import NDArray
from plots.drawn import legend_of, line, xy

RATE, RATIO, FRAMES = 100.0, 10, 400
SAMPLES = FRAMES * RATIO
AXES = DIRECTIONS["z down"]
PLACE, BESIDE = np.array([40.0, 60.0, 0.0]), np.array([-90.0, -500.0, 0.0])
# Strides of the left foot: on the plate from 0.30 s on, and twice beside it.
STRIKES = {"Left": (0.3, 1.4, 2.5, 3.6), "Right": (0.85, 1.95, 3.05)}
ON, OFF = 300, 900  # samples


def first_stride() -> NDArray[np.float64]:
    """A moment at the frames of the first stride of the left foot."""
    return 40.0 * np.sin(np.linspace(0.0, np.pi, 111))


def step(first: int = ON, stop: int = OFF) -> NDArray[np.float64]:
    """The load of one contact."""
    load = np.zeros(SAMPLES)
    load[first:stop] = 700.0
    return load


def walking(
    folder: Path, load: NDArray[np.float64], *, late: float = 0.0, feet: str = "LR"
) -> moxPY.Trial:
    """Strides with a moment and a power that are known in the first one and -3 in all others.

    The first letter of `feet` is the foot at the place that is loaded; events are late by some
    seconds.
    """
    plate = Plate(2, AXES)
    trial = moxPY.Trial.of(
        read_plates(folder, [plate], SAMPLES, frames=FRAMES, samples_per_frame=RATIO, rate=RATE)
    )
    force = np.outer(load, [0.1, -0.05, -1.0])
    step_on(trial, plate, Load(force, np.tile(PLACE, (SAMPLES, 1)), np.zeros(SAMPLES)), 0)
    for foot, place in zip(feet, (PLACE, BESIDE), strict=False):
        trial.markers[f"{foot}HEE"] = np.tile(CENTRE + AXES @ place, (FRAMES, 1))
    known = np.full((FRAMES, 3), -3.0)
    known[30:141, 0] = first_stride()
    for channels, name in (
        (trial.angles, "Angles"),
        (trial.moments, "Moment"),
        (trial.powers, "Power"),
    ):
        for side in "LR":
            channels[f"{side}Knee{name}"] = known
    trial.events.clear()
    for side, times in STRIKES.items():
        for time in times:
            trial.events.add("Foot Strike", time + late, context=side, id=1)
    return trial


def counted(trial: moxPY.Trial, kind: str = "moments") -> list[str]:
    """What the legend says of the cycles."""
    return legend_of(getattr(trial.plot, kind)()[0, 0])[:2]


ALL = ["Left (3 cycles)", "Right (2 cycles)"]
FIRST = ["Left (1 cycle)", "Right (no cycles)"]


@pytest.mark.parametrize("kind", ["moments", "powers"])
def test_the_mean_is_that_of_the_stride_on_the_platform(tmp_path: Path, kind: str) -> None:
    trial = walking(tmp_path, step())
    axes = getattr(trial.plot, kind)()
    _, course = xy(line(axes[0, 0], "Left"))
    expected = np.interp(np.linspace(0, 110, 101), np.arange(111), first_stride())
    assert np.allclose(course, expected, atol=1e-4)
    assert course.max() == pytest.approx(40.0, abs=0.1)
    assert [each for each in axes[0, 0].lines if each.get_label() == "Right"] == []
    assert legend_of(axes[0, 0]) == FIRST


def test_angles_are_shown_over_every_stride(tmp_path: Path) -> None:
    assert counted(walking(tmp_path, step()), "angles") == ALL


def test_trials_that_are_laid_over_each_other_follow_the_same_rule(tmp_path: Path) -> None:
    trial = walking(tmp_path, step())
    axes = laid_over("moments", [("one", trial), ("two", trial)], ["LKneeMoment", "RKneeMoment"])
    (alone,) = trial.plot.moments()[:1, 0]
    assert np.array_equal(xy(line(axes[0, 0], "Left, one")), xy(line(alone, "Left")))
    assert legend_of(axes[0, 0]) == ["Left", "one (1 left, 0 right)", "two (1 left, 0 right)"]
    joints = laid_over("angles", [("one", trial)], ["LKneeAngles"])
    assert legend_of(joints[0, 0])[-1] == "one (3 left, 2 right)"


def test_the_foot_on_the_platform_is_the_one_whose_cycles_count(tmp_path: Path) -> None:
    """The right foot comes down at 0.85 s."""
    trial = walking(tmp_path, step(850, 1450), feet="RL")
    assert counted(trial) == ["Left (no cycles)", "Right (1 cycle)"]


@pytest.mark.parametrize("late", [-0.09, 0.09])
def test_events_may_be_a_tenth_of_a_second_off(tmp_path: Path, late: float) -> None:
    assert counted(walking(tmp_path, step(), late=late)) == FIRST


@pytest.mark.parametrize("late", [-0.12, 0.12])
def test_farther_events_are_of_another_step(tmp_path: Path, late: float) -> None:
    trial = walking(tmp_path, step(), late=late)
    with pytest.raises(ValueError, match="no gait cycle begins with its foot on a force platform, "
                       "which moments need; cycles= takes others"):  # fmt: skip
        trial.plot.moments()
    assert counted(trial, "angles") == ALL


def test_a_step_that_the_recording_begins_with_counts(tmp_path: Path) -> None:
    trial = walking(tmp_path, step()).crop(start=0.3, stop=3.9)
    assert counted(trial) == FIRST


def test_cycles_that_are_given_are_taken(tmp_path: Path) -> None:
    trial = walking(tmp_path, step())
    given = {"Left": trial.cycles("Left")[1:]}
    axes = trial.plot.moments(cycles=given)
    assert legend_of(axes[0, 0])[:2] == ["Left (2 cycles)", "Right (no cycles)"]
    with pytest.raises(ValueError, match="cycles has no gait cycle of 'Left' nor of 'Right'"):
        trial.plot.moments(cycles={"Left": []})


@pytest.mark.parametrize("feet", ["", "L"])
def test_all_count_where_nobody_knows_the_foot(tmp_path: Path, feet: str) -> None:
    assert counted(walking(tmp_path, step(), feet=feet)) == ALL


def test_all_count_where_no_platform_was_stepped_on(tmp_path: Path) -> None:
    assert counted(walking(tmp_path, np.zeros(SAMPLES))) == ALL


def test_all_count_without_platforms(walk: moxPY.Trial) -> None:
    del walk.metadata["FORCE_PLATFORM"]
    assert len(walk.platforms) == 0
    assert counted(walk) == ["Left (2 cycles)", "Right (3 cycles)"]


def test_a_belt_under_both_feet_tells_nothing(tmp_path: Path) -> None:
    assert counted(walking(tmp_path, step(0, SAMPLES))) == ALL
    assert counted(walking(tmp_path, step(ON, SAMPLES))) == ALL


def test_the_example_has_a_stride_of_each_foot_on_a_platform(example: moxPY.Trial) -> None:
    for kind in "moments", "powers":
        assert counted(example, kind) == ["Left (1 cycle)", "Right (1 cycle)"]
    axes = example.plot.moments(["LKneeMoment", "RKneeMoment"])
    for side, start in (("Left", 1.85), ("Right", 1.3)):
        at = start + 1.1 * np.arange(101) / 100.0
        moment = example.moments[f"{side[0]}KneeMoment"].values[:, 0]
        expected = np.interp(at, example.time, moment)
        _, course = xy(line(axes[0, 0], side))
        both = ~np.isnan(expected) & ~np.isnan(course)
        assert both.sum() > 50
        assert np.allclose(course[both], expected[both], atol=1e-3)


def test_a_walk_over_two_platforms(sample: Callable[[str], Path]) -> None:
    trial = moxPY.read(sample("gait-pig.c3d"), odd="ignore")
    (ankle,) = (label for label in trial.moments.labels if label.endswith("LAnkleMoment"))
    axes = trial.plot.moments([ankle])
    assert legend_of(axes[0, 0])[:2] == ["Left (1 cycle)", "Right (1 cycle)"]
    _, course = xy(line(axes[0, 0], "Left"))
    start, stop = trial.events.times("Foot Strike", "Left")[:2]  # the second stride is on no plate
    at = start + (stop - start) * np.arange(101) / 100.0
    assert np.allclose(course, np.interp(at, trial.time, trial.moments[ankle].x), atol=0.01)
    assert course.max() > 1290.0
