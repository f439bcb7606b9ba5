"""Label, description, type and unit of points."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.readings import (
    POINT_GROUPS,
    attributes_of,
    group_node,
    indices_of_points,
    point_info,
    same_reading,
    set_names,
)
from support.small_trials import GROUP_OF_TYPE, POINTS, labels_of_type, read_trial, trajectory
from support.store_tree import snapshot

TEXT_SETTERS = {"moxSetPointLabel": "label", "moxSetPointDescription": "description"}
texts = pytest.mark.parametrize(("setter", "key"), TEXT_SETTERS.items())

UNKNOWN = [
    (8, "Unable to find channel with given index :  '8'"),
    (-1, "Unable to find channel with given index :  '-1'"),
    ("lasi", "Unable to find channel with given label :  'lasi'"),
]


def set_of(acquisition: Any, group: str, name: str) -> dict[str, Any]:
    return group_node(acquisition, POINT_GROUPS[group])["sets"][name]


@texts
@pytest.mark.parametrize(("index", "label"), list(enumerate(POINTS)))
@pytest.mark.parametrize("by", ["index", "label"])
def test_a_text_of_one_point_is_overwritten(
    rich_trial: Any, setter: str, key: str, index: int, label: str, by: str
) -> None:
    expected = _moxPY.moxGetPoints(rich_trial)[1][key] | {label: "ünder/way"}
    getattr(_moxPY, setter)(rich_trial, index if by == "index" else label, "ünder/way")
    assert _moxPY.moxGetPoints(rich_trial)[1][key] == expected
    assert point_info(rich_trial, index)[key] == "ünder/way"


@texts
def test_a_text_setter_returns_the_fresh_reading(rich_trial: Any, setter: str, key: str) -> None:
    returned = getattr(_moxPY, setter)(rich_trial, 2, "new")
    assert returned[1][key]["RASI"] == "new"
    assert same_reading(returned, _moxPY.moxGetPoints(rich_trial))


@texts
@pytest.mark.parametrize("text", ["", " ", "x" * 10_000, "%s {}", "a\nb", "日本"])
def test_every_text_is_kept(trial: Any, setter: str, key: str, text: str) -> None:
    getattr(_moxPY, setter)(trial, 2, text)
    assert point_info(trial, 2)[key] == text


@texts
@pytest.mark.parametrize(("point", "text"), UNKNOWN)
def test_an_unknown_point_is_named(
    rich_trial: Any, setter: str, key: str, point: int | str, text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(getattr(_moxPY, setter), rich_trial, point, "new")
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_a_new_label_leaves_the_key_and_the_name_of_the_set(trial: Any) -> None:
    values, info = _moxPY.moxSetPointLabel(trial, "RASI", "RPSI")
    assert "RASI" in values
    assert "RPSI" not in values
    assert info["label"]["RASI"] == "RPSI"
    assert set_names(trial, "Format/Data/Markers") == ["LASI", "RASI"]


def test_a_point_is_found_under_its_new_label_only(rich_trial: Any) -> None:
    _moxPY.moxSetPointLabel(rich_trial, "RASI", "RPSI")
    assert _moxPY.moxGetPoint(rich_trial, "RPSI")[0].tolist() == trajectory(2).tolist()
    text = "Unable to find channel with given label :  'RASI'"
    assert failure_of(_moxPY.moxGetPoint, rich_trial, "RASI") == (RuntimeError, text)


def test_two_points_may_bear_one_label(rich_trial: Any) -> None:
    _moxPY.moxSetPointLabel(rich_trial, 4, "LASI")
    assert point_info(rich_trial, 4)["label"] == point_info(rich_trial, 0)["label"] == "LASI"


@pytest.mark.parametrize(("word", "group"), GROUP_OF_TYPE.items())
@pytest.mark.parametrize("by", ["index", "label"])
def test_a_new_type_moves_the_point_with_all_it_carries(
    rich_trial: Any, word: str, group: str, by: str
) -> None:
    former = set_of(rich_trial, "Angles", "LKneeAngle")
    _moxPY.moxSetPointType(rich_trial, 1 if by == "index" else "LKneeAngle", word)
    moved = set_of(rich_trial, group, "LKneeAngle")
    assert attributes_of(moved) == attributes_of(former) | {"MetricType": word}
    assert moved["values"].tobytes() == former["values"].tobytes()
    holders = [name for name, path in POINT_GROUPS.items()
               if "LKneeAngle" in set_names(rich_trial, path)]  # fmt: skip
    assert holders == [group]


def test_a_new_type_leaves_every_index(rich_trial: Any) -> None:
    before = indices_of_points(rich_trial)
    _moxPY.moxSetPointType(rich_trial, "LASI", "power")
    assert indices_of_points(rich_trial) == before


def test_a_moved_point_is_the_last_of_its_new_group(rich_trial: Any) -> None:
    _moxPY.moxSetPointType(rich_trial, "LASI", "force")
    assert list(_moxPY.moxGetForces(rich_trial)[0]) == ["LGRF", "RGRF", "LASI"]


def test_residuals_move_with_their_point(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    former = set_of(acquisition, "Markers", "RASI")["attributes"]["Residuals"]
    _moxPY.moxSetPointType(acquisition, "RASI", "force")
    moved = set_of(acquisition, "Forces", "RASI")["attributes"]["Residuals"]
    assert (moved[1], moved[2].tolist()) == (former[1], former[2].tolist())


def test_the_type_that_it_has_changes_nothing(rich_trial: Any) -> None:
    before = snapshot(rich_trial)
    _moxPY.moxSetPointType(rich_trial, "LGRF", "force")
    assert snapshot(rich_trial) == before


def test_the_type_setter_returns_the_fresh_reading(rich_trial: Any) -> None:
    returned = _moxPY.moxSetPointType(rich_trial, 0, "angle")
    assert list(returned[0])[:2] == ["LKneeAngle", "LASI"]
    assert same_reading(returned, _moxPY.moxGetPoints(rich_trial))


@pytest.mark.parametrize("word", ["Marker", "markers", "", "MARKER", "\n"])
@pytest.mark.parametrize("point", [0, "LASI", 99, "nobody"])
def test_an_unknown_type_word_is_quoted_first(rich_trial: Any, point: int | str, word: str) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetPointType, rich_trial, point, word)
    assert failure == (RuntimeError, f'Unsupported point type : "{word}"')
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("point", "text"), UNKNOWN)
def test_the_type_of_an_unknown_point(rich_trial: Any, point: int | str, text: str) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetPointType, rich_trial, point, "force")
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_a_name_that_the_target_group_has_is_refused(rich_trial: Any) -> None:
    _moxPY.moxAppendPoint(rich_trial, "force", "LASI", trajectory(9))
    before = snapshot(rich_trial)
    text = (
        "You are trying to add a channel that already exists : 'LASI' "
        "already exists at given location"
    )
    assert failure_of(_moxPY.moxSetPointType, rich_trial, 0, "force") == (RuntimeError, text)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("word", "group"), GROUP_OF_TYPE.items())
def test_a_unit_is_written_to_every_point_of_a_type_and_to_no_other(
    rich_trial: Any, word: str, group: str
) -> None:
    labels = labels_of_type(word)
    expected = {label: point_info(rich_trial, label)["units"] for label in POINTS}
    assert _moxPY.moxSetPointsUnit(rich_trial, word, "furlong/s²") is None
    found = {label: point_info(rich_trial, label)["units"] for label in POINTS}
    assert found == expected | dict.fromkeys(labels, "furlong/s²")
    assert _moxPY.moxGetPointsUnit(rich_trial, group) == "furlong/s²"


@pytest.mark.parametrize("word", ["Marker", "Markers", "", "ALL"])
def test_the_unit_of_an_unknown_type_is_refused(any_trial: Any, word: str) -> None:
    before = snapshot(any_trial)
    failure = failure_of(_moxPY.moxSetPointsUnit, any_trial, word, "mm")
    assert failure == (RuntimeError, f'Unsupported point type : "{word}"')
    assert snapshot(any_trial) == before


def test_the_unit_of_a_type_without_points_changes_nothing() -> None:
    acquisition = _moxPY.moxNewAcquisition(1, 2)
    before = snapshot(acquisition)
    _moxPY.moxSetPointsUnit(acquisition, "force", "kN")
    assert snapshot(acquisition) == before


def test_the_unit_of_a_missing_group(trial: Any) -> None:
    probe.delete_group(trial, "Format/Data/Powers")
    text = "Impossible to retrieve group with path : 'Format/Data/Powers'"
    assert failure_of(_moxPY.moxSetPointsUnit, trial, "power", "W") == (RuntimeError, text)
