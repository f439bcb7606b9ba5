"""moxGetAnalogs and moxGetAnalog."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from analogs.analog_channels import Channel, with_analogs
from support.store_tree import snapshot

GAINS = {0: 0.0, 1: 10000.0, 2: 5000.0, 3: 2500.0, 4: 1250.0, 5: 1000.0}
NO_SUCH_GAIN = (
    "invalid map<K, T> key. Exception thrown while it should not. "
    "Please contact the support and report this problem."
)


def refusal(call: Any, kind: type[Exception] = RuntimeError) -> str:
    with pytest.raises(kind) as failure:
        call()
    return str(failure.value)


def test_values_and_information_of_all_channels() -> None:
    acquisition = with_analogs(
        Channel("Fz1", (1, 2, 3), 0, unit="N", gain=2, offset=7.0, scale=0.1),
        Channel("EMG", (4, 5, 6), 1, label="E/MG", description="left"),
    )
    result = _moxPY.moxGetAnalogs(acquisition)
    assert type(result) is list
    values, info = result
    assert {name: array.tolist() for name, array in values.items()} == {
        "Fz1": [1.0, 2.0, 3.0],
        "EMG": [4.0, 5.0, 6.0],
    }
    assert info == {
        "units": {"Fz1": "N", "EMG": "V"},
        "label": {"Fz1": "Fz1", "EMG": "E/MG"},
        "offset": {"Fz1": 7.0, "EMG": 0.0},
        "scale": {"Fz1": float(np.float32(0.1)), "EMG": 1.0},
        "description": {"Fz1": "described", "EMG": "left"},
        "gain": {"Fz1": 5000.0, "EMG": 0.0},
        "frequency": 1000.0,
    }


def test_the_information_of_all_channels_comes_in_this_order() -> None:
    info = _moxPY.moxGetAnalogs(with_analogs(Channel("A")))[1]
    assert list(info) == ["units", "label", "offset", "scale", "description", "gain", "frequency"]


def test_samples_are_an_array_of_one_dimension() -> None:
    samples = _moxPY.moxGetAnalogs(with_analogs(Channel("A")))[0]["A"]
    assert samples.shape == (3,)
    assert samples.dtype == np.float64


def test_channels_come_in_the_order_of_creation() -> None:
    acquisition = with_analogs(Channel("Z", index=1), Channel("A", index=0))
    assert list(_moxPY.moxGetAnalogs(acquisition)[0]) == ["Z", "A"]


def test_one_unit_has_one_key() -> None:
    acquisition = with_analogs(Channel("A", unit="mV"), Channel("B", unit="mV"))
    assert _moxPY.moxGetAnalogs(acquisition)[1]["units"] == {"ALLANALOGS": "mV"}


def test_the_frequency_is_that_of_the_first_channel() -> None:
    acquisition = with_analogs(Channel("A", rate=500.0), Channel("B", rate=None))
    assert _moxPY.moxGetAnalogs(acquisition)[1]["frequency"] == 500.0


def test_no_channels_give_every_key() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    assert _moxPY.moxGetAnalogs(acquisition) == [
        {},
        {
            "units": {}, "label": {}, "offset": {}, "scale": {}, "description": {}, "gain": {},
            "frequency": 0.0,
        },
    ]  # fmt: skip


def test_the_frequency_without_channels_is_that_of_the_group() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 10, 0, 5)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    assert _moxPY.moxGetAnalogs(acquisition)[1]["frequency"] == 500.0


def test_one_channel_and_its_information() -> None:
    acquisition = with_analogs(
        Channel("Fz1", (1, 2, 3), 4, "Fz 1", "N", "vertical", 3, -2.0, 0.1, 960.0)
    )
    expected = {
        "label": "Fz 1", "units": "N", "scale": float(np.float32(0.1)), "offset": -2.0,
        "description": "vertical", "gain": 2500.0, "frequency": 960.0,
    }  # fmt: skip
    for channel in (4, "Fz 1"):
        result = _moxPY.moxGetAnalog(acquisition, channel)
        assert type(result) is list
        samples, info = result
        np.testing.assert_array_equal(samples, [1.0, 2.0, 3.0])
        assert info == expected


@pytest.mark.parametrize(("code", "value"), GAINS.items())
def test_gain_codes_have_values(code: int, value: float) -> None:
    acquisition = with_analogs(Channel("A", gain=code))
    gain = _moxPY.moxGetAnalog(acquisition, 0)[1]["gain"]
    assert type(gain) is float
    assert gain == value
    assert _moxPY.moxGetAnalogs(acquisition)[1]["gain"] == {"A": value}


@pytest.mark.parametrize("code", [-1, 6, 2147483647, -2147483648])
def test_a_gain_code_outside_the_table_is_refused(code: int) -> None:
    acquisition = with_analogs(Channel("A", gain=code))
    assert refusal(lambda: _moxPY.moxGetAnalog(acquisition, 0)) == NO_SUCH_GAIN
    assert refusal(lambda: _moxPY.moxGetAnalogs(acquisition)) == NO_SUCH_GAIN


def test_the_index_is_the_stored_one() -> None:
    acquisition = with_analogs(Channel("A", index=5), Channel("B", index=-1))
    assert _moxPY.moxGetAnalog(acquisition, -1)[1]["label"] == "B"
    assert _moxPY.moxGetAnalog(acquisition, 5)[1]["label"] == "A"


@pytest.mark.parametrize("index", [1, -1, 2147483647])
def test_an_index_that_no_channel_has_is_quoted(index: int) -> None:
    acquisition = with_analogs(Channel("A"))
    assert refusal(lambda: _moxPY.moxGetAnalog(acquisition, index)) == (
        f"Unable to find channel with given index :  '{index}'"
    )


@pytest.mark.parametrize("label", ["B", "a", "A ", ""])
def test_a_label_that_no_channel_has_is_quoted(label: str) -> None:
    acquisition = with_analogs(Channel("A"))
    assert refusal(lambda: _moxPY.moxGetAnalog(acquisition, label)) == (
        f"Unable to find channel with given label :  '{label}'"
    )


def test_a_label_that_two_channels_have_is_found_at_the_first() -> None:
    acquisition = with_analogs(
        Channel("Z", label="A", description="first"), Channel("A", description="second", index=1)
    )
    assert _moxPY.moxGetAnalog(acquisition, "A")[1]["description"] == "first"


@pytest.mark.parametrize(
    ("missing", "attribute"),
    [
        ("unit", "Unit"), ("label", "Label"), ("scale", "Scale"), ("offset", "Offset"),
        ("description", "Description"), ("rate", "SampleRate"),
    ],
)  # fmt: skip
def test_a_missing_attribute_is_named(missing: str, attribute: str) -> None:
    acquisition = with_analogs(Channel("Fz1", **{missing: None}))
    expected = (
        f"Unexpected error when extracting attribute value : set is Fz1, attribute is {attribute}"
    )
    assert refusal(lambda: _moxPY.moxGetAnalog(acquisition, 0), SystemError) == expected


@pytest.mark.parametrize(
    ("missing", "attribute"),
    [
        ("label", "Label"), ("scale", "Scale"), ("offset", "Offset"),
        ("description", "Description"), ("rate", "SampleRate"),
    ],
)  # fmt: skip
def test_a_missing_attribute_is_named_when_all_are_read(missing: str, attribute: str) -> None:
    acquisition = with_analogs(Channel("Fz1", **{missing: None}))
    expected = (
        f"Unexpected error when extracting attribute value : set is Fz1, attribute is {attribute}"
    )
    assert refusal(lambda: _moxPY.moxGetAnalogs(acquisition), SystemError) == expected


def test_a_missing_group_is_named() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    probe.delete_group(acquisition, "Format/Data/AnalogsExport")
    calls = [
        lambda: _moxPY.moxGetAnalogs(acquisition),
        lambda: _moxPY.moxGetAnalog(acquisition, 0),
        lambda: _moxPY.moxGetAnalog(acquisition, "A"),
        lambda: _moxPY.moxGetAnalogsValues(acquisition),
        lambda: _moxPY.moxGetAnalogNumber(acquisition),
    ]
    expected = "Impossible to retrieve group with path : 'Format/Data/AnalogsExport'"
    assert [refusal(call) for call in calls] == [expected] * 5


def test_reading_changes_nothing() -> None:
    acquisition = with_analogs(Channel("A"), Channel("B", index=1))
    before = snapshot(acquisition)
    _moxPY.moxGetAnalogs(acquisition)
    _moxPY.moxGetAnalog(acquisition, "B")
    _moxPY.moxGetAnalogsValues(acquisition)
    assert snapshot(acquisition) == before
