"""Label, description, unit, gain, offset and scale of analog channels."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.readings import ANALOG_GROUP, analog_info, group_node, same_reading
from support.small_trials import ANALOGS, read_trial, signal
from support.store_tree import snapshot

TEXT_SETTERS = {
    "moxSetAnalogLabel": "label", "moxSetAnalogDescription": "description",
    "moxSetAnalogUnit": "units",
}  # fmt: skip
texts = pytest.mark.parametrize(("setter", "key"), TEXT_SETTERS.items())

GAINS = {0: 0.0, 1: 10000.0, 2: 5000.0, 3: 2500.0, 4: 1250.0, 5: 1000.0}

# Setter -> a value that is accepted.
SETTERS: dict[str, Any] = dict.fromkeys(TEXT_SETTERS, "new") | {
    "moxSetAnalogGain": 2, "moxSetAnalogOffset": 7, "moxSetAnalogScale": 0.25,
}  # fmt: skip


def stored(acquisition: Any, channel: str, name: str) -> tuple[int, Any]:
    """Element type and value of an attribute."""
    kind, _, value = group_node(acquisition, ANALOG_GROUP)["sets"][channel]["attributes"][name]
    return kind, value.item()


@texts
@pytest.mark.parametrize(("index", "label"), list(enumerate(ANALOGS)))
@pytest.mark.parametrize("by", ["index", "label"])
def test_a_text_of_one_channel_is_overwritten(
    rich_trial: Any, setter: str, key: str, index: int, label: str, by: str
) -> None:
    expected = {name: analog_info(rich_trial, number)[key] for number, name in enumerate(ANALOGS)}
    getattr(_moxPY, setter)(rich_trial, index if by == "index" else label, "µV/m")
    found = {name: analog_info(rich_trial, number)[key] for number, name in enumerate(ANALOGS)}
    assert found == expected | {label: "µV/m"}


@pytest.mark.parametrize(("setter", "value"), SETTERS.items())
def test_the_fresh_reading_of_all_channels_is_returned(
    rich_trial: Any, setter: str, value: Any
) -> None:
    before = _moxPY.moxGetAnalogs(rich_trial)
    returned = getattr(_moxPY, setter)(rich_trial, 1, value)
    assert type(returned) is list
    assert same_reading(returned, _moxPY.moxGetAnalogs(rich_trial))
    assert not same_reading(returned, before)


@pytest.mark.parametrize(("setter", "value"), SETTERS.items())
@pytest.mark.parametrize(
    ("channel", "text"),
    [
        (3, "Unable to find channel with given index :  '3'"),
        (-1, "Unable to find channel with given index :  '-1'"),
        ("fx1", "Unable to find channel with given label :  'fx1'"),
    ],
)
def test_an_unknown_channel_is_named(
    rich_trial: Any, setter: str, value: Any, channel: int | str, text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(getattr(_moxPY, setter), rich_trial, channel, value)
    assert failure == (RuntimeError, text)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("setter", "value"), SETTERS.items())
def test_samples_stay_as_they_are(rich_trial: Any, setter: str, value: Any) -> None:
    getattr(_moxPY, setter)(rich_trial, 0, value)
    expected = np.hstack([signal(0), signal(1), signal(2)])
    assert _moxPY.moxGetAnalogsValues(rich_trial).tolist() == expected.tolist()


@pytest.mark.parametrize(("code", "value"), GAINS.items())
@pytest.mark.parametrize("channel", [2, "Fz1"])
def test_a_gain_code_is_stored_and_read_as_its_value(
    rich_trial: Any, code: int, value: float, channel: int | str
) -> None:
    _, info = _moxPY.moxSetAnalogGain(rich_trial, channel, code)
    assert stored(rich_trial, "Fz1", "Gain") == (6, code)
    assert analog_info(rich_trial, "Fz1")["gain"] == info["gain"]["Fz1"] == value


@pytest.mark.parametrize("code", [6, 7, 1000, 2**31 - 1, -1, -(2**31)])
@pytest.mark.parametrize("channel", [0, "Fx1", 99, "nobody"])
def test_an_unknown_gain_code_is_refused_before_the_channel_is_looked_for(
    any_trial: Any, code: int, channel: int | str
) -> None:
    before = snapshot(any_trial)
    text = "Unknown gain. Read the documentation of this fuction to know the possible values"
    failure = failure_of(_moxPY.moxSetAnalogGain, any_trial, channel, code)
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before


@pytest.mark.parametrize(
    ("offset", "kept"),
    [(0, 0.0), (7, 7.0), (-2048, -2048.0), (True, 1.0), (16777217, 16777216.0),
     (2**31 - 1, 2147483648.0), (-(2**31), -2147483648.0)],
)  # fmt: skip
@pytest.mark.parametrize("channel", [1, "EMG1"])
def test_an_offset_is_an_integer_kept_in_single_precision(
    rich_trial: Any, offset: int, kept: float, channel: int | str
) -> None:
    _moxPY.moxSetAnalogOffset(rich_trial, channel, offset)
    assert stored(rich_trial, "EMG1", "Offset") == (10, kept)
    assert analog_info(rich_trial, "EMG1")["offset"] == kept


@pytest.mark.parametrize("scale", [0.0, -0.0, 1, 0.1, -2.5e-7, 1e30, float("inf"), float("nan")])
@pytest.mark.parametrize("channel", [1, "EMG1"])
def test_a_scale_is_kept_in_single_precision(
    rich_trial: Any, scale: float, channel: int | str
) -> None:
    _moxPY.moxSetAnalogScale(rich_trial, channel, scale)
    kind, value = stored(rich_trial, "EMG1", "Scale")
    assert (kind, np.float32(value).tobytes()) == (10, np.float32(scale).tobytes())


@pytest.mark.parametrize("channel", [0, "Fx1"])
@pytest.mark.parametrize(
    ("setter", "value"),
    [("moxSetAnalogScale", 1e39), ("moxSetAnalogScale", "1.0"), ("moxSetAnalogOffset", 1.0),
     ("moxSetAnalogOffset", 2**31), ("moxSetAnalogGain", 2**31), ("moxSetAnalogGain", 1.0),
     ("moxSetAnalogUnit", b"V"), ("moxSetAnalogUnit", None), ("moxSetAnalogLabel", 1)],
)  # fmt: skip
def test_a_value_of_another_type_fits_no_overload(
    rich_trial: Any, setter: str, value: Any, channel: int | str
) -> None:
    declared = {"Scale": "float", "Offset": "int", "Gain": "int"}
    kind = declared.get(setter.removeprefix("moxSetAnalog"), "std::string const &")
    outputs = f"    {setter}(PyObject *&,PyObject *&,strata::data_store,"
    before = snapshot(rich_trial)
    assert failure_of(getattr(_moxPY, setter), rich_trial, channel, value) == (
        TypeError,
        f"Wrong number or type of arguments for overloaded function '{setter}'.\n"
        f"  Possible C/C++ prototypes are:\n{outputs}int,{kind})\n"
        f"{outputs}std::string const &,{kind})\n",
    )
    assert snapshot(rich_trial) == before


def test_a_channel_is_found_under_its_new_label_only(rich_trial: Any) -> None:
    values, info = _moxPY.moxSetAnalogLabel(rich_trial, "EMG1", "EMG/2")
    assert "EMG1" in values
    assert info["label"]["EMG1"] == "EMG/2"
    assert _moxPY.moxGetAnalog(rich_trial, "EMG/2")[0].tolist() == signal(1).ravel().tolist()
    text = "Unable to find channel with given label :  'EMG1'"
    assert failure_of(_moxPY.moxGetAnalog, rich_trial, "EMG1") == (RuntimeError, text)


def test_one_other_unit_lists_every_unit(trial: Any) -> None:
    assert _moxPY.moxGetAnalogs(trial)[1]["units"] == {"ALLANALOGS": "Unknown"}
    _, info = _moxPY.moxSetAnalogUnit(trial, 1, "V")
    assert info["units"] == {"Fx1": "Unknown", "EMG1": "V", "Fz1": "Unknown"}


def test_a_resolution_that_a_file_lacks_is_12_and_can_be_set(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    assert "BITS" not in _moxPY.moxGetMetaData(acquisition, "ANALOG")["children"]
    assert _moxPY.moxGetAnalogResolution(acquisition) == 12.0
    _moxPY.moxSetAnalogResolution(acquisition, 16)
    assert _moxPY.moxGetAnalogResolution(acquisition) == 16.0
    assert _moxPY.moxGetMetaData(acquisition, "ANALOG", "BITS")["info"]["values"] == 16
