"""What tells two trials apart: each change is told, at its place, and nothing else is."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from moxPY.differences import FAMILIES, Difference, differences
from moxPY.trial import Trial
from support.small_trials import KINDS, example_trial

FILES = ["C3DRotationExample.c3d", "gait-pig.c3d", "2198928.c3d", "short.c3d", "TYPE-3.c3d"]


def example() -> Trial:
    return Trial.of(example_trial())


def the_one(found: list[Difference]) -> Difference:
    assert len(found) == 1, found
    return found[0]


@pytest.mark.parametrize("kind", KINDS)
def test_rich_and_poor_trials_are_as_their_copies(kind: str, tmp_path: Path) -> None:
    trial = Trial.of(KINDS[kind](tmp_path))
    assert trial.differences(trial) == []
    assert trial.differences(trial.copy()) == []


@pytest.mark.parametrize("name", FILES)
def test_files_are_as_they_are_read_again(sample: Any, name: str) -> None:
    path = sample(name)
    trial, again = (moxPY.read(path, odd="ignore") for _ in range(2))
    assert trial.differences(again) == []


@pytest.mark.parametrize(("one", "other"), [("Eb015pi", "Eb015si"), ("Eb015vr", "Eb015sr")])
def test_processors_make_no_difference_to_integers_and_little_to_reals(
    sample: Any, one: str, other: str
) -> None:
    first, second = (moxPY.read(sample(f"{name}.c3d"), odd="ignore") for name in (one, other))
    assert first.differences(second, tolerance=1e-3) == []


# One change each, and what is told of it: family, channel, aspect, largest, frame, time.


def replaced(trial: Trial, family: str, label: str, row: Any, value: float) -> None:
    channel = getattr(trial, family)[label]
    values = channel.values.copy()
    values[row] = value
    channel.values = values


def corners(trial: Trial) -> None:
    values = trial.metadata["FORCE_PLATFORM"]["CORNERS"].copy()
    values[1, 2, 0] += 2.0
    trial.metadata["FORCE_PLATFORM"]["CORNERS"] = values


CHANGES: dict[str, tuple[Callable[[Trial], Any], list[tuple[Any, ...]]]] = {
    "rate": (
        lambda trial: setattr(trial, "rate", 101.0),
        [
            ("clock", "rate", "values", 1.0, None, None),
            ("metadata", "POINT:RATE", "values", 1.0, None, None),
            ("metadata", "ANALOG:RATE", "values", 10.0, None, None),
        ],
    ),
    "label": (
        lambda trial: setattr(trial.angles["LKneeAngles"], "label", "Knee"),
        [
            ("angles", "LKneeAngles", "only first", None, None, None),
            ("angles", "Knee", "only second", None, None, None),
        ],
    ),
    "unit": (
        lambda trial: setattr(trial.analogs["Fz1"], "unit", "kN"),
        [("analogs", "Fz1", "unit", None, None, None)],
    ),
    "description": (
        lambda trial: setattr(trial.markers["C7"], "description", "x"),
        [("markers", "C7", "description", None, None, None)],
    ),
    "analog sample": (
        lambda trial: replaced(trial, "analogs", "RGastroc", 1234, 7.5),
        [("analogs", "RGastroc", "values", None, 124, 1.234)],
    ),
    "platform": (corners, [
        ("platforms", "platform 1", "values", 2.0, None, None),
        ("metadata", "FORCE_PLATFORM:CORNERS", "values", 2.0, None, None),
    ]),
    "event added": (
        lambda trial: trial.events.add("Turn", 1.25, context="Left"),
        [("events", "Left Turn", "only second", None, 126, 1.25)],
    ),
    "event moved": (
        lambda trial: trial.events.replace(trial.events.select("Foot Off")[0], time=0.33),
        [("events", "Left Foot Off", "time", pytest.approx(0.02), 32, 0.31)],
    ),
    "event described": (
        lambda trial: trial.events.replace(trial.events.select("Foot Off")[0], description="x"),
        [("events", "Left Foot Off", "description", None, 32, 0.31)],
    ),
    "metadata": (
        lambda trial: trial.metadata["SUBJECTS"].__setitem__("NAMES", ["Ben"]),
        [("metadata", "SUBJECTS:NAMES", "values", None, None, None)],
    ),
    "metadata added": (
        lambda trial: trial.metadata.__setitem__("LAB", {"ROOM": 3}),
        [("metadata", "LAB", "only second", None, None, None)],
    ),
    "entry removed": (
        lambda trial: trial.metadata["SUBJECTS"].__delitem__("NAMES"),
        [("metadata", "SUBJECTS:NAMES", "only first", None, None, None)],
    ),
}  # fmt: skip


@pytest.mark.parametrize("name", CHANGES)
def test_a_change_is_told_and_nothing_else(name: str) -> None:
    change, expected = CHANGES[name]
    trial, changed = example(), example()
    change(changed)
    found = trial.differences(changed)
    told = [(each.family, each.channel, each.aspect) for each in found]
    assert told == [row[:3] for row in expected]
    for each, (*_, largest, frame, time) in zip(found, expected, strict=True):
        assert largest is None or each.largest == largest
        assert (each.frame, each.time) == (frame, time)


def test_markers_given_anew_are_told_with_their_residuals() -> None:
    trial, changed = example(), example()
    values = changed.markers["LHEE"].values.copy()
    values[99, 2] += 0.25
    changed.markers["LHEE"] = values
    found = trial.differences(changed)
    assert [(each.family, each.aspect) for each in found] == [
        ("markers", "values"),
        ("residuals", "residuals"),
        ("residuals", "cameras"),
    ]
    assert (found[0].largest, found[0].frame, found[0].time) == (0.25, 100, 0.99)
    assert found[0].text == "up to 0.25 mm apart in frame 100; 1 frame differs"


def test_frames_that_only_one_trial_saw_are_told_apart_from_numbers() -> None:
    trial, changed = example(), example()
    replaced(changed, "markers", "LHEE", slice(10, 15), np.nan)
    gap = the_one(trial.differences(changed, only="markers"))
    assert (gap.aspect, gap.largest, gap.frame, gap.time) == ("gaps", None, 11, 0.1)
    assert gap.text == (
        "first in frame 11; 5 frames differ: 0 are missing in the first trial, 5 in the second"
    )
    back = the_one(changed.differences(trial, only="markers"))
    assert back.text.endswith("5 are missing in the first trial, 0 in the second")


def test_another_order_is_told() -> None:
    trial, changed = example(), example()
    first = changed.analogs.labels[0]
    channel, values = changed.analogs[first], changed.analogs[first].values
    texts = channel.unit, channel.description
    del changed.analogs[first]
    changed.analogs[first] = values
    changed.analogs[first].unit, changed.analogs[first].description = texts
    order = the_one(trial.differences(changed, only="analogs"))
    assert (order.channel, order.aspect) == (None, "order")
    assert order.text == "another order: 'Fx1' stands where the second trial has 'Fy1'"


def test_frames_are_compared_by_their_numbers() -> None:
    trial = example()
    part = trial.crop(101, 200)
    found = trial.differences(part, without=["events", "metadata"])
    assert [(each.family, each.channel, each.text) for each in found] == [
        ("clock", "frames", "360 and 100"),
        ("clock", "first_frame", "1 and 101"),
    ]
    replaced(part, "angles", "LKneeAngles", (50, 1), 1e4)
    change = the_one(part.differences(trial, only="angles"))
    assert (change.frame, change.time) == (151, 1.5)
    assert trial.crop(1, 50).differences(trial.crop(60, 70), only=["markers", "analogs"]) == []


def test_analog_channels_with_other_samples_in_a_frame_are_not_compared() -> None:
    one, other = Trial.new(4, 100.0, 2), Trial.new(4, 100.0, 4)
    one.analogs["A"], other.analogs["A"] = np.zeros(8), np.ones(16)
    found = one.differences(other, without="metadata")
    assert [(each.family, each.channel, each.aspect) for each in found] == [
        ("clock", "samples_per_frame", "values"),
        ("analogs", None, "shape"),
    ]


def test_infinities_are_as_themselves() -> None:
    one, other = Trial.new(3, 100.0), Trial.new(3, 100.0)
    one.analogs["A"] = other.analogs["A"] = [np.inf, -np.inf, 1.0]
    assert one.differences(other) == []
    other.analogs["A"] = [np.inf, np.inf, 1.0]
    found = the_one(one.differences(other, tolerance=1e300))
    assert (found.largest, found.frame) == (np.inf, 2)


# Rotations.


def test_rotations_are_compared_by_segment(sample: Any) -> None:
    path = sample("C3DRotationExample.c3d")
    one, other = moxPY.read(path), moxPY.read(path)
    label = one.rotations.labels[3]
    matrices = one.rotations[label].copy()
    matrices[20, 1, 3] += 8.0
    other.rotations[label] = matrices
    found = the_one(one.differences(other, only="rotations"))
    assert (found.channel, found.aspect, found.frame) == (label, "values", 21)
    assert found.largest == pytest.approx(8.0)
    assert found.time == pytest.approx(20 / 85)
    assert one.differences(other, only="rotations", tolerance=8.1) == []


# Tolerances and families.


def test_tolerances_are_of_families() -> None:
    trial, changed = example(), example()
    replaced(changed, "angles", "LKneeAngles", (7, 0), trial.angles["LKneeAngles"].x[7] + 0.5)
    changed.events.replace(changed.events[0], time=changed.events[0].time + 0.005)

    def families(**options: Any) -> list[str]:
        return [each.family for each in differences(trial, changed, **options)]

    assert families(without="residuals") == ["angles", "events"]
    assert families(tolerance={"angles": 0.6}, without="residuals") == ["events"]
    assert families(tolerance={"events": 0.01}, only=["angles", "events"]) == ["angles"]
    assert families(tolerance=0.6, without=("residuals", "metadata")) == []
    assert families(tolerance=0.6, only="clock") == []


def test_events_that_are_nearer_than_the_tolerance_belong_together() -> None:
    one, other = Trial.new(500, 100.0), Trial.new(500, 100.0)
    for time in (1.0, 2.0, 3.0):
        one.events.add("Foot Strike", time, "Left")
    for time in (1.01, 3.01):
        other.events.add("Foot Strike", time, "Left")
    found = the_one(one.differences(other, tolerance=0.02))
    assert (found.aspect, found.time) == ("only first", 2.0)
    assert [each.aspect for each in one.differences(other)] == [
        "only first", "only second", "only first", "only first", "only second",
    ]  # fmt: skip


def test_what_there_is_not_is_refused() -> None:
    trial = example()
    with pytest.raises(ValueError, match="there is no family 'marker'; nearest: markers"):
        trial.differences(trial, only="marker")
    with pytest.raises(ValueError, match="there is no family 'angels'; nearest: angles"):
        trial.differences(trial, tolerance={"angels": 1.0})
    for value in (-1.0, float("nan")):
        with pytest.raises(ValueError, match=f"a tolerance is a number .*, not {value}"):
            trial.differences(trial, tolerance=value)


def test_families_are_named_once() -> None:
    assert len(set(FAMILIES)) == len(FAMILIES) == 12
