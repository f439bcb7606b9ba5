"""moxRemovePoint and moxClearPoints: what goes, what stays, how the indices close the gap."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.readings import (
    POINT_GROUPS,
    indices_of_points,
    same_reading,
    set_names,
    types_of_points,
)
from support.small_trials import GROUP_OF_TYPE, POINTS, trajectory
from support.store_tree import snapshot

LABELS = list(POINTS)


@pytest.mark.parametrize("index", range(len(LABELS)))
@pytest.mark.parametrize("by", ["index", "label"])
def test_removing_a_point_closes_the_gap_over_all_groups(
    rich_trial: Any, index: int, by: str
) -> None:
    _moxPY.moxRemovePoint(rich_trial, index if by == "index" else LABELS[index])
    left = LABELS[:index] + LABELS[index + 1 :]
    assert list(indices_of_points(rich_trial).items()) == [(x, n) for n, x in enumerate(left)]
    assert types_of_points(rich_trial) == {x: GROUP_OF_TYPE[POINTS[x]] for x in left}


def test_the_first_point_gone_every_other_index_is_one_less(rich_trial: Any) -> None:
    before = indices_of_points(rich_trial)
    _moxPY.moxRemovePoint(rich_trial, 0)
    after = indices_of_points(rich_trial)
    assert after == {label: index - 1 for label, index in before.items() if index != 0}


def test_the_values_of_the_others_stay(rich_trial: Any) -> None:
    _moxPY.moxRemovePoint(rich_trial, "RASI")
    for number, label in enumerate(LABELS):
        if label != "RASI":
            assert _moxPY.moxGetPoint(rich_trial, label)[0].tolist() == trajectory(number).tolist()


def test_the_fresh_reading_of_all_points_is_returned(rich_trial: Any) -> None:
    returned = _moxPY.moxRemovePoint(rich_trial, 3)
    assert type(returned) is list
    assert "LGRF" not in returned[0]
    assert same_reading(returned, _moxPY.moxGetPoints(rich_trial))


def test_the_last_point_gone_both_results_are_empty() -> None:
    acquisition = _moxPY.moxNewAcquisition(1, 3)
    assert _moxPY.moxRemovePoint(acquisition, 0) == [{}, {}]


def test_a_name_can_be_used_again(rich_trial: Any) -> None:
    _moxPY.moxRemovePoint(rich_trial, "LASI")
    _moxPY.moxAppendPoint(rich_trial, "marker", "LASI", trajectory(9))
    assert indices_of_points(rich_trial)["LASI"] == len(LABELS) - 1
    assert _moxPY.moxGetPoint(rich_trial, "LASI")[0].tolist() == trajectory(9).tolist()


def test_of_two_points_with_one_label_the_first_goes(trial: Any) -> None:
    _moxPY.moxSetPointLabel(trial, "RASI", "LGRF")  # forces come before markers
    _moxPY.moxRemovePoint(trial, "LGRF")
    assert set_names(trial, "Format/Data/Forces") == ["RGRF"]
    assert set_names(trial, "Format/Data/Markers") == ["LASI", "RASI"]


@pytest.mark.parametrize(
    ("point", "text"),
    [
        (8, "Unable to find channel with given index :  '8'"),
        (-1, "Unable to find channel with given index :  '-1'"),
        (-(2**31), "Unable to find channel with given index :  '-2147483648'"),
        ("lasi", "Unable to find channel with given label :  'lasi'"),
        ("", "Unable to find channel with given label :  ''"),
    ],
)
def test_an_unknown_point_is_named(rich_trial: Any, point: int | str, text: str) -> None:
    before = snapshot(rich_trial)
    assert failure_of(_moxPY.moxRemovePoint, rich_trial, point) == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_a_point_that_has_no_index_leaves_no_gap(trial: Any) -> None:
    probe.delete_attribute(trial, "Format/Data/Forces/LGRF", "RelativeSetIndex")
    expected = {label: index for index, label in enumerate(LABELS) if label != "LGRF"}
    _moxPY.moxRemovePoint(trial, "LGRF")
    assert indices_of_points(trial) == expected


def test_a_set_without_index_is_left_as_it_is_and_logged(
    trial: Any, new_log_lines: Callable[[], list[str]]
) -> None:
    path = "Format/Data/Moments/LKneeMoment"
    probe.delete_attribute(trial, path, "RelativeSetIndex")
    before = probe.list_attributes(trial, path)
    _moxPY.moxRemovePoint(trial, 0)
    assert probe.list_attributes(trial, path) == before
    lines = [line for line in new_log_lines() if "attribute" in line]
    assert len(lines) == 1
    assert lines[0].endswith("Invalid value to read the content of an attribute")


def test_a_set_that_vanished_before_its_deletion_is_named(trial: Any) -> None:
    text = "Impossible to delete set with path : 'LASI'"
    failure = failure_of(probe.delete_set, trial, "Format/Data/Forces", "Format/Data/Markers/LASI")
    assert failure == (RuntimeError, text)


@pytest.mark.parametrize("group", POINT_GROUPS)
def test_removing_from_an_acquisition_without_a_point_group_is_refused(
    trial: Any, group: str
) -> None:
    probe.delete_group(trial, POINT_GROUPS[group])
    before = snapshot(trial)
    text = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    assert failure_of(_moxPY.moxRemovePoint, trial, "nobody") == (RuntimeError, text)
    assert snapshot(trial) == before


def test_clearing_deletes_every_point_and_returns_nothing(any_trial: Any) -> None:
    assert _moxPY.moxClearPoints(any_trial) is None
    assert _moxPY.moxGetPoints(any_trial) == [{}, {}]
    assert _moxPY.moxGetPointNumber(any_trial) == 0.0


def test_clearing_leaves_the_groups_and_everything_else(rich_trial: Any) -> None:
    before = probe.tree(rich_trial)
    _moxPY.moxClearPoints(rich_trial)
    for group in POINT_GROUPS:
        before["groups"]["Format"]["groups"]["Data"]["groups"][group]["sets"] = {}
    assert repr(probe.tree(rich_trial)) == repr(before)


def test_clearing_stops_at_a_missing_group_and_names_it(trial: Any) -> None:
    probe.delete_group(trial, "Format/Data/Markers")
    text = "Impossible to retrieve group with path : 'Format/Data/Markers'"
    assert failure_of(_moxPY.moxClearPoints, trial) == (RuntimeError, text)
    left = {group: set_names(trial, path) for group, path in POINT_GROUPS.items()
            if group != "Markers"}  # fmt: skip
    assert left == {
        "Angles": [], "Forces": [], "Moments": ["LKneeMoment"],
        "Powers": ["LKneePower", "RKneePower"],
    }  # fmt: skip


def test_an_emptied_acquisition_takes_new_points(rich_trial: Any) -> None:
    _moxPY.moxClearPoints(rich_trial)
    _moxPY.moxAppendPoint(rich_trial, "power", "NEW", trajectory(9))
    assert indices_of_points(rich_trial) == {"NEW": 0}
    assert _moxPY.moxGetPointsValues(rich_trial).tolist() == trajectory(9).tolist()
