"""Appending, removing, clearing and counting analog channels."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog
from support.failures import failure_of
from support.read_c3d import read_c3d
from support.readings import (
    ANALOG_GROUP,
    analog_info,
    attributes_of,
    group_node,
    indices_of_analogs,
    same_reading,
    set_names,
)
from support.small_trials import ANALOGS, RATE, RATIO, SAMPLES, signal
from support.store_tree import snapshot

LARGEST, SMALLEST = 2**31 - 1, -(2**31)


def samples_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetAnalogFrameNumber(acquisition))


def test_a_new_channel_goes_to_the_end_with_the_former_count_as_its_index(any_trial: Any) -> None:
    names = set_names(any_trial, ANALOG_GROUP)
    _moxPY.moxAppendAnalog(any_trial, "NEW", signal(9, samples_of(any_trial)))
    assert set_names(any_trial, ANALOG_GROUP) == [*names, "NEW"]
    assert indices_of_analogs(any_trial)["NEW"] == len(names)
    assert _moxPY.moxGetAnalogNumber(any_trial) == len(names) + 1


def test_a_new_channel_is_laid_down_like_every_channel(trial: Any) -> None:
    _moxPY.moxSetFirstFrame(trial, 50)
    _moxPY.moxAppendAnalog(trial, "NEW", signal(9))
    created = group_node(trial, ANALOG_GROUP)["sets"]["NEW"]
    kinds = {name: attribute[:2] for name, attribute in created["attributes"].items()}
    assert (created["type"], created["shape"]) == (11, [1, 1, SAMPLES])
    assert created["values"].ravel().tolist() == signal(9).ravel().tolist()
    assert list(kinds.items()) == [
        ("Description", (12, [])), ("RelativeSetIndex", (6, [])), ("Label", (12, [])),
        ("Unit", (12, [])), ("SampleRate", (11, [])), ("StartTime", (11, [])), ("Gain", (6, [])),
        ("Offset", (10, [])), ("Scale", (10, [])), ("MetricType", (12, [])),
    ]  # fmt: skip
    assert attributes_of(created) == {
        "Description": "", "RelativeSetIndex": len(ANALOGS), "Label": "NEW", "Unit": "Unknown",
        "SampleRate": RATE * RATIO, "StartTime": 0.5, "Gain": 0, "Offset": 0.0, "Scale": 1.0,
        "MetricType": "Analog",
    }  # fmt: skip


def test_the_optional_text_is_the_description(rich_trial: Any) -> None:
    _, info = _moxPY.moxAppendAnalog(rich_trial, "NEW", signal(9), "left plate, é")
    assert info["description"]["NEW"] == "left plate, é"


def test_the_rate_of_a_new_channel_is_computed_in_single_precision(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": np.zeros((2, 3))}, rate=59.94)
    _moxPY.moxSetFrequency(acquisition, 59.94)
    _moxPY.moxSetFrameNumber(acquisition, 2, 3)
    _moxPY.moxAppendAnalog(acquisition, "NEW", np.zeros((6, 1)))
    expected = float(np.float32(59.94) * np.float32(3))
    assert analog_info(acquisition, "NEW")["frequency"] == expected


def test_the_fresh_reading_of_all_channels_is_returned(rich_trial: Any) -> None:
    appended = _moxPY.moxAppendAnalog(rich_trial, "NEW", signal(9))
    assert type(appended) is list
    assert appended[0]["NEW"].tolist() == signal(9).ravel().tolist()
    assert same_reading(appended, _moxPY.moxGetAnalogs(rich_trial))
    removed = _moxPY.moxRemoveAnalog(rich_trial, "EMG1")
    assert list(removed[0]) == ["Fx1", "Fz1", "NEW"]
    assert same_reading(removed, _moxPY.moxGetAnalogs(rich_trial))


def test_two_columns_are_one_too_many(rich_trial: Any) -> None:
    before = snapshot(rich_trial)
    text = (
        "Given matrix should have column number equals to the number of extracted points "
        "multiplied by 1, current has : 2"
    )
    failure = failure_of(_moxPY.moxAppendAnalog, rich_trial, "NEW", np.zeros((SAMPLES, 2)))
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize("label", ANALOGS)
def test_a_name_that_there_is_is_refused(rich_trial: Any, label: str) -> None:
    before = snapshot(rich_trial)
    text = (
        f"You are trying to add a channel that already exists : '{label}' "
        "already exists at given location"
    )
    failure = failure_of(_moxPY.moxAppendAnalog, rich_trial, label, signal(9), "text")
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_separators_stay_in_the_label_and_not_in_the_name(rich_trial: Any) -> None:
    values, info = _moxPY.moxAppendAnalog(rich_trial, "Fx/1\\a", signal(9))
    assert values["Fx_1_a"].tolist() == signal(9).ravel().tolist()
    assert info["label"]["Fx_1_a"] == "Fx/1\\a"
    assert group_node(rich_trial, ANALOG_GROUP)["groups"] == {}


def test_a_channel_without_label_is_named_by_its_index(rich_trial: Any) -> None:
    _, info = _moxPY.moxAppendAnalog(rich_trial, "", signal(9))
    assert info["label"]["unamed_3"] == "unamed_3"


@pytest.mark.parametrize("index", range(3))
@pytest.mark.parametrize("by", ["index", "label"])
def test_removing_a_channel_closes_the_gap(rich_trial: Any, index: int, by: str) -> None:
    _moxPY.moxRemoveAnalog(rich_trial, index if by == "index" else ANALOGS[index])
    left = ANALOGS[:index] + ANALOGS[index + 1 :]
    assert indices_of_analogs(rich_trial) == {label: n for n, label in enumerate(left)}
    for label in left:
        expected = signal(ANALOGS.index(label)).ravel().tolist()
        assert _moxPY.moxGetAnalog(rich_trial, label)[0].tolist() == expected


def test_points_keep_their_indices_when_a_channel_goes(rich_trial: Any) -> None:
    points = _moxPY.moxGetPointsValues(rich_trial)
    _moxPY.moxRemoveAnalog(rich_trial, 0)
    assert np.array_equal(_moxPY.moxGetPointsValues(rich_trial), points)


UNKNOWN = [
    (3, "Unable to find channel with given index :  '3'"),
    (-1, "Unable to find channel with given index :  '-1'"),
    ("fx1", "Unable to find channel with given label :  'fx1'"),
    ("LASI", "Unable to find channel with given label :  'LASI'"),
]


@pytest.mark.parametrize(("channel", "text"), UNKNOWN)
def test_an_unknown_channel_cannot_be_removed(
    rich_trial: Any, channel: int | str, text: str
) -> None:
    before = snapshot(rich_trial)
    assert failure_of(_moxPY.moxRemoveAnalog, rich_trial, channel) == (RuntimeError, text)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("channel", "text"), UNKNOWN)
def test_an_unknown_channel_is_named_before_its_matrix_is_checked(
    rich_trial: Any, channel: int | str, text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetAnalogValues, rich_trial, channel, np.zeros(3))
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


def test_a_channel_that_has_no_index_leaves_no_gap(trial: Any) -> None:
    probe.delete_attribute(trial, f"{ANALOG_GROUP}/EMG1", "RelativeSetIndex")
    _moxPY.moxRemoveAnalog(trial, "EMG1")
    assert indices_of_analogs(trial) == {"Fx1": 0, "Fz1": 2}


def test_clearing_deletes_every_channel_and_returns_nothing(any_trial: Any) -> None:
    assert _moxPY.moxClearAnalogs(any_trial) is None
    assert _moxPY.moxGetAnalogNumber(any_trial) == 0.0
    assert _moxPY.moxGetAnalogs(any_trial)[0] == {}


def test_clearing_leaves_the_group_and_everything_else(rich_trial: Any) -> None:
    before = probe.tree(rich_trial)
    _moxPY.moxClearAnalogs(rich_trial)
    before["groups"]["Format"]["groups"]["Data"]["groups"]["AnalogsExport"]["sets"] = {}
    assert repr(probe.tree(rich_trial)) == repr(before)


def test_a_reading_without_channels_has_every_key() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 3, 1, 2)
    _moxPY.moxSetFrequency(acquisition, 50.0)
    _, info = _moxPY.moxRemoveAnalog(acquisition, 0)
    assert info == {
        "units": {}, "label": {}, "offset": {}, "scale": {}, "description": {}, "gain": {},
        "frequency": 100.0,
    }  # fmt: skip


def test_each_channel_is_written_from_its_column(rich_trial: Any) -> None:
    columns = [signal(20 + number) for number in range(3)]
    _moxPY.moxSetAnalogsValues(rich_trial, np.hstack(columns))
    for number, label in enumerate(ANALOGS):
        expected = columns[number].ravel().tolist()
        assert _moxPY.moxGetAnalog(rich_trial, label)[0].tolist() == expected


def test_channels_are_written_in_index_order_whatever_their_list_order(trial: Any) -> None:
    probe.write_attribute(trial, f"{ANALOG_GROUP}/Fx1", "RelativeSetIndex", "int32", 9)
    _moxPY.moxSetAnalogsValues(trial, np.hstack([signal(20), signal(21), signal(22)]))
    assert _moxPY.moxGetAnalog(trial, "Fx1")[0].tolist() == signal(22).ravel().tolist()
    assert _moxPY.moxGetAnalog(trial, "EMG1")[0].tolist() == signal(20).ravel().tolist()


@pytest.mark.parametrize("channel", [1, "EMG1"])
def test_one_channel_is_written_and_no_other(rich_trial: Any, channel: int | str) -> None:
    _moxPY.moxSetAnalogValues(rich_trial, channel, signal(20))
    expected = np.hstack([signal(0), signal(20), signal(2)])
    assert _moxPY.moxGetAnalogsValues(rich_trial).tolist() == expected.tolist()


@pytest.mark.parametrize("wanted", range(4))
def test_fewer_channels_leave_the_difference_of_the_counts(tmp_path: Path, wanted: int) -> None:
    channels = [Analog(f"A{n}", np.zeros(2)) for n in range(4)]
    acquisition = read_c3d(tmp_path, analogs=channels, samples_per_frame=1, frames=2)
    assert _moxPY.moxSetAnalogNumber(acquisition, wanted) is None
    left = {f"A{n}": n for n in range(4 - wanted)}
    assert indices_of_analogs(acquisition) == left


@pytest.mark.parametrize("wanted", [-1, -1000, SMALLEST])
def test_a_negative_number_deletes_and_creates_nothing(any_trial: Any, wanted: int) -> None:
    before = snapshot(any_trial)
    assert _moxPY.moxSetAnalogNumber(any_trial, wanted) is None
    assert snapshot(any_trial) == before


def test_the_number_that_there_is_creates_nothing(any_trial: Any) -> None:
    before = snapshot(any_trial)
    _moxPY.moxSetAnalogNumber(any_trial, int(_moxPY.moxGetAnalogNumber(any_trial)))
    assert snapshot(any_trial) == before


def test_more_channels_are_numbered_behind_all_others(any_trial: Any) -> None:
    before = indices_of_analogs(any_trial)
    count = len(before)
    _moxPY.moxSetAnalogNumber(any_trial, count + 2)
    new = {f"unamed_{n}": n for n in (count, count + 1)}
    assert indices_of_analogs(any_trial) == before | new


def test_a_channel_that_the_number_adds_is_laid_down_like_an_appended_one(trial: Any) -> None:
    _moxPY.moxSetAnalogNumber(trial, 4)
    added = group_node(trial, ANALOG_GROUP)["sets"]["unamed_3"]
    assert (added["type"], added["shape"]) == (11, [1, 1, SAMPLES])
    assert not added["values"].any()
    assert attributes_of(added) == {
        "Description": "", "RelativeSetIndex": 3, "Label": "unamed_3", "Unit": "Unknown",
        "SampleRate": RATE * RATIO, "StartTime": 0.0, "Gain": 0, "Offset": 0.0, "Scale": 1.0,
        "MetricType": "Analog",
    }  # fmt: skip


def test_names_that_are_taken_are_passed_over(rich_trial: Any) -> None:
    _moxPY.moxAppendAnalog(rich_trial, "unamed_4", signal(9))
    _moxPY.moxSetAnalogNumber(rich_trial, 6)
    new = {"unamed_4": 3, "unamed_5": 4, "unamed_6": 5}
    assert indices_of_analogs(rich_trial).items() >= new.items()


def test_more_channels_than_memory_holds_are_refused(any_trial: Any) -> None:
    before = snapshot(any_trial)
    raised, _ = failure_of(_moxPY.moxSetAnalogNumber, any_trial, LARGEST)
    assert raised is MemoryError
    assert snapshot(any_trial) == before


def test_a_number_beyond_32_bits(trial: Any) -> None:
    text = "in method 'moxSetAnalogNumber', argument 2 of type 'int'"
    assert failure_of(_moxPY.moxSetAnalogNumber, trial, 2**40) == (OverflowError, text)


CALLS: dict[str, Callable[[Any], Any]] = {
    "moxAppendAnalog": lambda trial: _moxPY.moxAppendAnalog(trial, "NEW", signal(9)),
    "moxRemoveAnalog": lambda trial: _moxPY.moxRemoveAnalog(trial, 0),
    "moxRemoveAnalog by label": lambda trial: _moxPY.moxRemoveAnalog(trial, "Fx1"),
    "moxClearAnalogs": _moxPY.moxClearAnalogs,
    "moxSetAnalogNumber": lambda trial: _moxPY.moxSetAnalogNumber(trial, 5),
    "moxSetAnalogsValues": lambda trial: _moxPY.moxSetAnalogsValues(trial, signal(9)),
    "moxSetAnalogValues": lambda trial: _moxPY.moxSetAnalogValues(trial, 0, signal(9)),
    "moxSetAnalogLabel": lambda trial: _moxPY.moxSetAnalogLabel(trial, 0, "x"),
    "moxSetAnalogGain": lambda trial: _moxPY.moxSetAnalogGain(trial, 0, 1),
}


@pytest.mark.parametrize("call", CALLS)
def test_a_missing_group_is_named(trial: Any, call: str) -> None:
    probe.delete_group(trial, ANALOG_GROUP)
    before = snapshot(trial)
    text = "Impossible to retrieve group with path : 'Format/Data/AnalogsExport'"
    assert failure_of(CALLS[call], trial) == (RuntimeError, text)
    assert snapshot(trial) == before
