"""moxAppendPoint: what a new point carries, where it goes, what is refused."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.read_c3d import read_c3d
from support.readings import (
    POINT_GROUPS,
    attributes_of,
    group_node,
    indices_of_points,
    same_reading,
    set_names,
)
from support.small_trials import FRAMES, GROUP_OF_TYPE, POINTS, RATE, trajectory
from support.store_tree import snapshot

types = pytest.mark.parametrize(("word", "group"), GROUP_OF_TYPE.items())


@types
def test_a_new_point_goes_to_the_end_of_its_type_s_group(
    any_trial: Any, word: str, group: str
) -> None:
    frames = int(_moxPY.moxGetPointFrameNumber(any_trial))
    names = set_names(any_trial, POINT_GROUPS[group])
    _moxPY.moxAppendPoint(any_trial, word, "NEW", trajectory(9, frames))
    assert set_names(any_trial, POINT_GROUPS[group]) == [*names, "NEW"]


@types
def test_a_new_point_has_the_former_count_as_its_index(
    any_trial: Any, word: str, group: str
) -> None:
    count = int(_moxPY.moxGetPointNumber(any_trial))
    frames = int(_moxPY.moxGetPointFrameNumber(any_trial))
    _moxPY.moxAppendPoint(any_trial, word, "NEW", trajectory(9, frames))
    assert indices_of_points(any_trial)["NEW"] == count
    assert _moxPY.moxGetPointNumber(any_trial) == count + 1


@types
def test_a_new_point_is_laid_down_like_every_channel(trial: Any, word: str, group: str) -> None:
    _moxPY.moxSetFirstFrame(trial, 50)
    _moxPY.moxAppendPoint(trial, word, "NEW", trajectory(9))
    created = group_node(trial, POINT_GROUPS[group])["sets"]["NEW"]
    kinds = {name: attribute[:2] for name, attribute in created["attributes"].items()}
    assert (created["type"], created["shape"]) == (11, [3, 1, FRAMES])
    assert created["values"].reshape(3, FRAMES).T.tolist() == trajectory(9).tolist()
    assert list(kinds.items()) == [
        ("Description", (12, [])), ("RelativeSetIndex", (6, [])), ("Label", (12, [])),
        ("Unit", (12, [])), ("SampleRate", (11, [])), ("StartTime", (11, [])),
        ("MetricType", (12, [])),
    ]  # fmt: skip
    assert attributes_of(created) == {
        "Description": "", "RelativeSetIndex": len(POINTS), "Label": "NEW", "Unit": "Unknown",
        "SampleRate": RATE, "StartTime": 0.5, "MetricType": word,
    }  # fmt: skip


def test_the_fresh_reading_of_all_points_is_returned(rich_trial: Any) -> None:
    returned = _moxPY.moxAppendPoint(rich_trial, "marker", "NEW", trajectory(9))
    assert type(returned) is list
    assert returned[1]["label"]["NEW"] == "NEW"
    assert returned[0]["NEW"].tolist() == trajectory(9).tolist()
    assert same_reading(returned, _moxPY.moxGetPoints(rich_trial))


@pytest.mark.parametrize("word", ["Marker", "MARKER", "markers", "Markers", "", " marker", "é"])
def test_an_unknown_type_word_is_quoted(any_trial: Any, word: str) -> None:
    before = snapshot(any_trial)
    failure = failure_of(_moxPY.moxAppendPoint, any_trial, word, "NEW", None)
    assert failure == (RuntimeError, f'Unsupported point type : "{word}"')
    assert snapshot(any_trial) == before


@pytest.mark.parametrize(("label", "word"), POINTS.items())
def test_a_name_that_the_group_has_is_refused(rich_trial: Any, label: str, word: str) -> None:
    before = snapshot(rich_trial)
    text = (
        f"You are trying to add a channel that already exists : '{label}' "
        "already exists at given location"
    )
    failure = failure_of(_moxPY.moxAppendPoint, rich_trial, word, label, trajectory(9))
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_the_matrix_is_checked_before_the_name(rich_trial: Any) -> None:
    text = "Given matrix should have 2 dimensions, current has : 1"
    failure = failure_of(_moxPY.moxAppendPoint, rich_trial, "marker", "LASI", np.zeros(3))
    assert failure == (RuntimeError, text)


def test_two_groups_may_share_a_name_and_the_later_one_is_keyed_apart(rich_trial: Any) -> None:
    values, info = _moxPY.moxAppendPoint(rich_trial, "power", "LASI", trajectory(9))
    assert values["LASI"].tolist() == trajectory(0).tolist()
    assert values["LASI_2"].tolist() == trajectory(9).tolist()
    assert info["label"]["LASI"] == info["label"]["LASI_2"] == "LASI"
    assert list(info["label"]) == list(info["description"]) == list(values)


def test_separators_stay_in_the_label_and_not_in_the_name(rich_trial: Any) -> None:
    values, info = _moxPY.moxAppendPoint(rich_trial, "marker", "L/R\\C", trajectory(9))
    assert values["L_R_C"].tolist() == trajectory(9).tolist()
    assert info["label"]["L_R_C"] == "L/R\\C"
    assert group_node(rich_trial, "Format/Data/Markers")["groups"] == {}
    assert _moxPY.moxGetPoint(rich_trial, "L/R\\C")[0].tolist() == trajectory(9).tolist()


@pytest.mark.parametrize("label", [".", "..", " ", "a b", "é", "x" * 1000, "{}", "%s", "a\nb"])
def test_any_text_can_be_a_label(trial: Any, label: str) -> None:
    values, info = _moxPY.moxAppendPoint(trial, "marker", label, trajectory(9))
    assert values[label].tolist() == trajectory(9).tolist()
    assert info["label"][label] == label


def test_a_point_without_label_is_named_by_its_index(rich_trial: Any) -> None:
    values, info = _moxPY.moxAppendPoint(rich_trial, "marker", "", trajectory(9))
    assert values["unamed_8"].tolist() == trajectory(9).tolist()
    assert info["label"]["unamed_8"] == "unamed_8"


def test_the_first_point_of_an_acquisition() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 2)
    _moxPY.moxAppendPoint(acquisition, "angle", "A", [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]])
    assert _moxPY.moxGetPointsValues(acquisition).tolist() == [[1, 2, 3], [4, 5, 6]]


def test_a_point_without_frames() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    values, _ = _moxPY.moxAppendPoint(acquisition, "force", "A", np.zeros((0, 3)))
    assert values["A"].shape == (0, 3)


def test_rate_and_start_of_a_file_are_those_of_the_new_point(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": trajectory(0)}, rate=50.0, first_frame=26)
    _moxPY.moxAppendPoint(acquisition, "moment", "NEW", trajectory(9))
    created = attributes_of(group_node(acquisition, "Format/Data/Moments")["sets"]["NEW"])
    assert (created["SampleRate"], created["StartTime"]) == (50.0, 0.5)


@pytest.mark.parametrize("group", POINT_GROUPS)
def test_a_missing_group_is_named(trial: Any, group: str) -> None:
    probe.delete_group(trial, POINT_GROUPS[group])
    before = snapshot(trial)
    text = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    failure = failure_of(_moxPY.moxAppendPoint, trial, "marker", "NEW", trajectory(9))
    assert failure == (RuntimeError, text)
    assert snapshot(trial) == before
