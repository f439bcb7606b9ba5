"""moxSetPointNumber: its count arithmetic, new markers, absurd numbers."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.readings import (
    attributes_of,
    group_node,
    indices_of_points,
    same_reading,
    set_names,
)
from support.small_trials import FRAMES, POINTS, RATE, trajectory
from support.store_tree import snapshot

LABELS = list(POINTS)
LARGEST, SMALLEST = 2**31 - 1, -(2**31)


def test_ten_points_set_to_eight_keep_the_indices_0_and_1() -> None:
    acquisition = _moxPY.moxNewAcquisition(10, 5)
    _moxPY.moxSetPointNumber(acquisition, 8)
    assert indices_of_points(acquisition) == {"unamed_0": 0, "unamed_1": 1}


@pytest.mark.parametrize("wanted", range(len(LABELS)))
def test_fewer_points_leave_the_difference_of_the_counts_over_all_groups(
    rich_trial: Any, wanted: int
) -> None:
    _moxPY.moxSetPointNumber(rich_trial, wanted)
    left = LABELS[: len(LABELS) - wanted]
    assert list(indices_of_points(rich_trial)) == left


@pytest.mark.parametrize("wanted", [-1, -2, -1000, SMALLEST])
def test_a_negative_number_deletes_and_creates_nothing(any_trial: Any, wanted: int) -> None:
    before = snapshot(any_trial)
    returned = _moxPY.moxSetPointNumber(any_trial, wanted)
    assert same_reading(returned, _moxPY.moxGetPoints(any_trial))
    assert snapshot(any_trial) == before


def test_the_number_that_there_is_creates_nothing(any_trial: Any) -> None:
    before = snapshot(any_trial)
    _moxPY.moxSetPointNumber(any_trial, int(_moxPY.moxGetPointNumber(any_trial)))
    assert snapshot(any_trial) == before


def test_more_points_are_markers_behind_all_others(any_trial: Any) -> None:
    count = int(_moxPY.moxGetPointNumber(any_trial))
    before = indices_of_points(any_trial)
    _moxPY.moxSetPointNumber(any_trial, count + 2)
    created = [f"unamed_{count}", f"unamed_{count + 1}"]
    assert indices_of_points(any_trial) == before | dict(
        zip(created, [count, count + 1], strict=True)
    )
    assert set_names(any_trial, "Format/Data/Markers")[-2:] == created


def test_a_new_marker_is_laid_down_like_every_point(trial: Any) -> None:
    _moxPY.moxSetPointNumber(trial, len(LABELS) + 1)
    created = group_node(trial, "Format/Data/Markers")["sets"]["unamed_8"]
    assert (created["type"], created["shape"]) == (11, [3, 1, FRAMES])
    assert not created["values"].any()
    assert list(attributes_of(created).items()) == [
        ("Description", ""), ("RelativeSetIndex", 8), ("Label", "unamed_8"), ("Unit", "Unknown"),
        ("SampleRate", RATE), ("StartTime", 0.0), ("MetricType", "marker"),
    ]  # fmt: skip


def test_a_new_marker_holds_zeros_until_it_is_filled(rich_trial: Any) -> None:
    values, _ = _moxPY.moxSetPointNumber(rich_trial, len(LABELS) + 1)
    assert values["unamed_8"].tolist() == np.zeros((FRAMES, 3)).tolist()


def test_names_that_are_taken_are_passed_over(rich_trial: Any) -> None:
    _moxPY.moxAppendPoint(rich_trial, "marker", "unamed_9", trajectory(9))
    _moxPY.moxSetPointNumber(rich_trial, len(LABELS) + 3)
    assert list(indices_of_points(rich_trial).items())[-3:] == [
        ("unamed_9", 8), ("unamed_10", 9), ("unamed_11", 10),
    ]  # fmt: skip


def test_free_names_between_taken_ones_are_used(rich_trial: Any) -> None:
    for number in (9, 12):
        _moxPY.moxAppendPoint(rich_trial, "marker", f"unamed_{number}", trajectory(9))
    _moxPY.moxSetPointNumber(rich_trial, len(LABELS) + 6)
    names = ["unamed_9", "unamed_12", "unamed_10", "unamed_11", "unamed_13", "unamed_14"]
    assert list(indices_of_points(rich_trial))[-6:] == names


def test_the_fresh_reading_of_all_points_is_returned(rich_trial: Any) -> None:
    for number in (len(LABELS) + 1, len(LABELS) + 1, 4, 0):
        returned = _moxPY.moxSetPointNumber(rich_trial, number)
        assert same_reading(returned, _moxPY.moxGetPoints(rich_trial))


def test_more_points_than_memory_holds_are_refused(any_trial: Any) -> None:
    before = snapshot(any_trial)
    raised, _ = failure_of(_moxPY.moxSetPointNumber, any_trial, LARGEST)
    assert raised is MemoryError
    assert snapshot(any_trial) == before


@pytest.mark.parametrize("number", [2**31, 2**40, SMALLEST - 1])
def test_a_number_beyond_32_bits(trial: Any, number: int) -> None:
    text = "in method 'moxSetPointNumber', argument 4 of type 'int'"
    assert failure_of(_moxPY.moxSetPointNumber, trial, number) == (OverflowError, text)


@pytest.mark.parametrize("group", ["Angles", "Forces", "Markers", "Moments", "Powers"])
@pytest.mark.parametrize("number", [0, 4, 20])
def test_a_missing_group_is_named(trial: Any, group: str, number: int) -> None:
    probe.delete_group(trial, f"Format/Data/{group}")
    before = snapshot(trial)
    text = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    assert failure_of(_moxPY.moxSetPointNumber, trial, number) == (RuntimeError, text)
    assert snapshot(trial) == before
