"""moxRemoveMetaData and moxClearMetaData."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.metadata_entries import append, names_of, values_of
from support.readings import same_reading
from support.small_trials import ENTRIES, RICH
from support.store_tree import snapshot


@pytest.mark.parametrize("entry", ENTRIES)
def test_an_entry_goes_and_the_others_stay(rich_trial: Any, entry: str) -> None:
    _moxPY.moxRemoveMetaData(rich_trial, "TRIAL", entry)
    assert names_of(rich_trial, "TRIAL") == [name for name in ENTRIES if name != entry]


def test_a_group_goes_with_all_its_entries(rich_trial: Any) -> None:
    groups = names_of(rich_trial)
    _moxPY.moxRemoveMetaData(rich_trial, "TRIAL")
    assert names_of(rich_trial) == [name for name in groups if name != "TRIAL"]


def test_the_points_group_of_a_file_goes(tmp_path: Any) -> None:
    acquisition = RICH["read"](tmp_path)
    _moxPY.moxRemoveMetaData(acquisition, "POINT")
    text = "Impossible to retrieve group with path : 'Metadata/POINT' does not exist"
    assert failure_of(_moxPY.moxGetMetaData, acquisition, "POINT") == (RuntimeError, text)


def test_an_empty_entry_name_removes_the_group(rich_trial: Any) -> None:
    _moxPY.moxRemoveMetaData(rich_trial, "TRIAL", "")
    assert "TRIAL" not in names_of(rich_trial)


def test_a_group_in_a_group_goes_and_the_outer_one_stays(rich_trial: Any) -> None:
    append(rich_trial, "OUTER/INNER", "E", "Integer", 3)
    _moxPY.moxRemoveMetaData(rich_trial, "OUTER/INNER")
    assert names_of(rich_trial, "OUTER") == []


@pytest.mark.parametrize("arguments", [("TRIAL",), ("TRIAL", "COUNTS"), ("ANALOG", "")])
def test_all_metadata_are_returned(rich_trial: Any, arguments: tuple[str, ...]) -> None:
    before = _moxPY.moxGetMetaData(rich_trial)
    returned = _moxPY.moxRemoveMetaData(rich_trial, *arguments)
    assert same_reading(returned, _moxPY.moxGetMetaData(rich_trial))
    assert not same_reading(returned, before)


def test_a_removed_entry_can_be_appended_again(rich_trial: Any) -> None:
    _moxPY.moxRemoveMetaData(rich_trial, "TRIAL", "COUNT")
    append(rich_trial, "TRIAL", "COUNT", "Integer", 8)
    assert values_of(rich_trial, "TRIAL", "COUNT") == 8


@pytest.mark.parametrize(
    ("arguments", "text"),
    [
        (("NOPE",), "Impossible to retrieve group with path : 'Metadata/NOPE' does not exist"),
        (("NOPE", "E"), "Impossible to retrieve group with path : 'Metadata/NOPE' does not exist"),
        (("..",), "Impossible to retrieve group with path : 'Metadata/..' does not exist"),
        (("A/B",), "Impossible to retrieve group with path : 'Metadata/A/B' does not exist"),
        (("",), "The group of all metadata cannot be removed"),
        (("", "NOPE"), "Unable to find the metadata entry 'NOPE' in the group 'Metadata/'"),
        (("ANALOG", "x/"), "Unable to find the metadata entry '' in the group 'Metadata/ANALOG'"),
        (("ANALOG", "NO"), "Unable to find the metadata entry 'NO' in the group 'Metadata/ANALOG'"),
    ],
)
def test_what_is_not_there_is_named(any_trial: Any, arguments: tuple[str, ...], text: str) -> None:
    before = snapshot(any_trial)
    assert failure_of(_moxPY.moxRemoveMetaData, any_trial, *arguments) == (RuntimeError, text)
    assert snapshot(any_trial) == before


def test_clearing_deletes_every_group_and_returns_nothing(any_trial: Any) -> None:
    expected = probe.tree(any_trial)
    assert _moxPY.moxClearMetaData(any_trial) is None
    expected["groups"]["Format"]["groups"]["Metadata"]["groups"] = {}
    assert repr(probe.tree(any_trial)) == repr(expected)


def test_what_stands_outside_of_groups_outlives_the_clearing(any_trial: Any) -> None:
    append(any_trial, "", "OWN", "Integer", 3)
    _moxPY.moxClearMetaData(any_trial)
    assert list(_moxPY.moxGetMetaData(any_trial)["children"]) == ["DeviceType", "OWN"]


def test_the_resolution_is_gone_with_its_group(any_trial: Any) -> None:
    _moxPY.moxClearMetaData(any_trial)
    text = "Impossible to retrieve group with path : 'Format/Metadata/ANALOG'"
    for call in (
        lambda: _moxPY.moxGetAnalogResolution(any_trial),
        lambda: _moxPY.moxSetAnalogResolution(any_trial, 14),
    ):
        assert failure_of(call) == (RuntimeError, text)
