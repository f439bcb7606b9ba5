"""Which points the setters of point values write, and which they leave."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.readings import POINT_GROUPS, group_node
from support.small_trials import FRAMES, POINTS, labels_of_type, read_trial, trajectory
from support.store_tree import snapshot

GROUP_SETTERS = {
    "moxSetMarkersValues": "marker", "moxSetForcesValues": "force",
    "moxSetMomentsValues": "moment", "moxSetPowersValues": "power",
}  # fmt: skip


def values_of(acquisition: Any) -> dict[str, list[list[float]]]:
    return {label: _moxPY.moxGetPoint(acquisition, label)[0].tolist() for label in POINTS}


@pytest.mark.parametrize(("setter", "word"), GROUP_SETTERS.items())
def test_a_group_setter_writes_its_points_in_index_order_and_no_others(
    rich_trial: Any, setter: str, word: str
) -> None:
    expected = values_of(rich_trial)
    labels = labels_of_type(word)
    blocks = [trajectory(20 + number) for number in range(len(labels))]
    getattr(_moxPY, setter)(rich_trial, np.hstack(blocks))
    expected |= {label: block.tolist() for label, block in zip(labels, blocks, strict=True)}
    assert values_of(rich_trial) == expected


def test_the_setter_of_angles_writes_the_markers_and_leaves_the_angles(rich_trial: Any) -> None:
    expected = values_of(rich_trial)
    left, right = trajectory(20), trajectory(21)
    _moxPY.moxSetAnglesValues(rich_trial, np.hstack([left, right]))
    expected |= {"LASI": left.tolist(), "RASI": right.tolist()}
    assert values_of(rich_trial) == expected


def test_the_setter_of_angles_counts_the_markers(rich_trial: Any) -> None:
    text = (
        "Given matrix should have column number equals to the number of extracted points "
        "multiplied by 3, current has : 3"  # what the one angle would need
    )
    before = snapshot(rich_trial)
    assert failure_of(_moxPY.moxSetAnglesValues, rich_trial, np.zeros((FRAMES, 3))) == (
        RuntimeError, text,
    )  # fmt: skip
    assert snapshot(rich_trial) == before


def test_a_group_is_written_in_index_order_whatever_its_list_order(trial: Any) -> None:
    # LASI, the first of the list, gets the highest index.
    probe.write_attribute(trial, "Format/Data/Markers/LASI", "RelativeSetIndex", "int32", 9)
    _moxPY.moxSetMarkersValues(trial, np.hstack([trajectory(20), trajectory(21)]))
    assert values_of(trial)["RASI"] == trajectory(20).tolist()
    assert values_of(trial)["LASI"] == trajectory(21).tolist()


def test_a_group_with_a_point_without_index_is_refused(trial: Any) -> None:
    probe.delete_attribute(trial, "Format/Data/Markers/RASI", "RelativeSetIndex")
    before = snapshot(trial)
    text = "The channel 'RASI' has no index"
    assert failure_of(_moxPY.moxSetMarkersValues, trial, np.zeros((FRAMES, 6))) == (
        RuntimeError, text,
    )  # fmt: skip
    assert snapshot(trial) == before


def test_all_points_are_written_by_index_over_all_groups(rich_trial: Any) -> None:
    blocks = [trajectory(20 + number) for number in range(len(POINTS))]
    _moxPY.moxSetPointsValues(rich_trial, np.hstack(blocks))
    assert list(values_of(rich_trial).values()) == [block.tolist() for block in blocks]


def test_an_index_outside_of_the_matrix_is_refused(trial: Any) -> None:
    probe.write_attribute(trial, "Format/Data/Forces/RGRF", "RelativeSetIndex", "int32", 8)
    before = snapshot(trial)
    matrix = np.zeros((FRAMES, 3 * len(POINTS)))
    text = "The index of the point 'RGRF' is outside of the given matrix : 8"
    assert failure_of(_moxPY.moxSetPointsValues, trial, matrix) == (RuntimeError, text)
    assert snapshot(trial) == before


@pytest.mark.parametrize(("index", "label"), list(enumerate(POINTS)))
@pytest.mark.parametrize("by", ["index", "label"])
def test_one_point_is_written_and_no_other(
    rich_trial: Any, index: int, label: str, by: str
) -> None:
    expected = values_of(rich_trial)
    point = index if by == "index" else label
    _moxPY.moxSetPointValues(rich_trial, point, trajectory(20))
    assert values_of(rich_trial) == expected | {label: trajectory(20).tolist()}


@pytest.mark.parametrize(
    ("point", "text"),
    [
        (8, "Unable to find channel with given index :  '8'"),
        (-1, "Unable to find channel with given index :  '-1'"),
        ("lasi", "Unable to find channel with given label :  'lasi'"),
        ("", "Unable to find channel with given label :  ''"),
    ],
)
def test_an_unknown_point_is_named_before_its_matrix_is_checked(
    rich_trial: Any, point: int | str, text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetPointValues, rich_trial, point, np.zeros(1))
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_a_point_is_checked_against_the_samples_of_its_own_group(trial: Any) -> None:
    probe.resize_group(trial, "Format/Data/Forces", FRAMES + 1)
    _moxPY.moxSetPointValues(trial, "LGRF", trajectory(20, FRAMES + 1))
    assert _moxPY.moxGetPoint(trial, "LGRF")[0].tolist() == trajectory(20, FRAMES + 1).tolist()
    raised, _ = failure_of(_moxPY.moxSetPointValues, trial, "LASI", trajectory(20, FRAMES + 1))
    assert raised is RuntimeError


@pytest.mark.parametrize(
    "setter", [*GROUP_SETTERS, "moxSetAnglesValues", "moxSetPointsValues"]
)  # fmt: skip
def test_a_matrix_without_columns_fits_an_acquisition_without_points(setter: str) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, FRAMES)
    assert getattr(_moxPY, setter)(acquisition, np.zeros((FRAMES, 0))) is None


@pytest.mark.parametrize("setter", ["moxSetMarkersValues", "moxSetPointsValues"])
def test_a_matrix_without_rows_fits_an_acquisition_without_frames(setter: str) -> None:
    acquisition = _moxPY.moxNewAcquisition(2, 0)
    assert getattr(_moxPY, setter)(acquisition, np.zeros((0, 6))) is None


def test_the_set_that_the_file_came_as_keeps_its_samples(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    before = group_node(acquisition, "Format/Data")["sets"]["Points"]["values"].tobytes()
    _moxPY.moxSetPointsValues(acquisition, np.zeros((FRAMES, 3 * len(POINTS))))
    assert group_node(acquisition, "Format/Data")["sets"]["Points"]["values"].tobytes() == before


@pytest.mark.parametrize(
    ("setter", "group"),
    [("moxSetMarkersValues", "Markers"), ("moxSetForcesValues", "Forces"),
     ("moxSetMomentsValues", "Moments"), ("moxSetPowersValues", "Powers"),
     ("moxSetPointsValues", "Angles")],
)  # fmt: skip
def test_a_missing_group_is_named(trial: Any, setter: str, group: str) -> None:
    probe.delete_group(trial, POINT_GROUPS[group])
    before = snapshot(trial)
    text = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    assert failure_of(getattr(_moxPY, setter), trial, np.zeros((4, 3))) == (RuntimeError, text)
    assert snapshot(trial) == before
