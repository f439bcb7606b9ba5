"""Device groups and the channels in them."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type, attribute, node, scalar, snapshot


@pytest.fixture
def store() -> Any:
    """A store with the device group "Data/G" of ten samples."""
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "Data")
    probe.create_device_group(handle, "Data", "G", "Mocap")
    probe.resize_group(handle, "Data/G", 10)
    return handle


def test_a_device_group_gets_its_attributes_in_order():
    store = _moxPY.new_data_store()
    probe.create_device_group(store, "", "G", "ADC")
    names = probe.list_attributes(store, "G")
    assert [(name, *attribute(store, "G", name)) for name in names] == [
        ("DeviceType", Type.STRING, [], ["ADC"]),
        ("NumSamples", Type.INT64, [], [0]),
        ("SampleRate", Type.FLOAT64, [], [0.0]),
        ("StartTime", Type.FLOAT64, [], [0.0]),
    ]


def test_a_channel_takes_rate_and_start_from_its_group(store: Any):
    probe.write_attribute(store, "Data/G", "SampleRate", "double", 100.5)
    probe.write_attribute(store, "Data/G", "StartTime", "double", 0.25)
    probe.create_channel(store, "Data/G", "LASI", 4, "left front")
    assert scalar(store, "Data/G/LASI", "SampleRate") == 100.5
    assert scalar(store, "Data/G/LASI", "StartTime") == 0.25
    assert scalar(store, "Data/G/LASI", "RelativeSetIndex") == 4
    assert scalar(store, "Data/G/LASI", "Description") == "left front"


@pytest.mark.parametrize(
    ("device_type", "components"),
    [("Mocap", 3), ("mocap", 1), ("MOCAP", 1), ("Mocap ", 1), ("EMG", 1), ("ADC", 1), ("", 1)],
)
def test_the_device_type_decides_the_components(device_type: str, components: int):
    store = _moxPY.new_data_store()
    probe.create_device_group(store, "", "G", device_type)
    probe.resize_group(store, "G", 10)
    probe.create_channel(store, "G", "X", 0, "")
    assert node(store, "G/X")["shape"] == [components, 1, 10]


def test_a_channel_that_exists_is_not_added(store: Any):
    probe.create_channel(store, "Data/G", "LASI", 0, "")
    before = snapshot(store)
    assert failure_of(probe.create_channel, store, "Data/G", "LASI", 1, "other") == (
        RuntimeError,
        "You are trying to add a channel that already exists : 'LASI' already exists at given "
        "location",
    )
    assert snapshot(store) == before


@pytest.mark.parametrize(("label", "name"), [("L/R", "L_R"), ("a\\b", "a_b"), ("/", "_")])
def test_separators_in_a_label_make_no_groups(store: Any, label: str, name: str):
    probe.create_channel(store, "Data/G", label, 0, "")
    assert probe.list_sets(store, "Data/G") == [name]
    assert probe.list_groups(store, "Data/G") == []
    assert scalar(store, f"Data/G/{name}", "Label") == label


@pytest.mark.parametrize("label", ["膝", " LASI ", "a.b:c", "x" * 300])
def test_other_characters_of_a_label_are_kept(store: Any, label: str):
    probe.create_channel(store, "Data/G", label, 0, "")
    assert probe.list_sets(store, "Data/G") == [label]


def test_analog_channels_are_added_up_to_the_last(store: Any):
    probe.create_device_group(store, "Data", "A", "EMG")
    probe.add_analog_channels(store, "Data/A", 2, 5)
    assert probe.list_sets(store, "Data/A") == ["unamed_2", "unamed_3", "unamed_4"]
    assert scalar(store, "Data/A/unamed_3", "RelativeSetIndex") == 3
    assert scalar(store, "Data/A/unamed_3", "MetricType") == "Analog"


@pytest.mark.parametrize(("first", "last"), [(0, 0), (3, 3), (5, 2), (0, -1)])
def test_no_analog_channels_are_added_where_there_is_no_range(store: Any, first: int, last: int):
    before = snapshot(store)
    probe.add_analog_channels(store, "Data/G", first, last)
    assert snapshot(store) == before


def test_a_group_that_grows_misses_the_new_frames_of_points(store: Any):
    probe.create_channel(store, "Data/G", "LASI", 0, "")
    probe.fill_set(store, "Data/G/LASI", "double", list(range(30)))
    probe.resize_group(store, "Data/G", 12)
    values = node(store, "Data/G/LASI")["values"]
    assert values.shape == (3, 1, 12)
    np.testing.assert_array_equal(values[:, 0, :10], np.arange(30.0).reshape(3, 10))
    assert np.isnan(values[:, 0, 10:]).all()
    assert attribute(store, "Data/G", "NumSamples") == (Type.INT64, [], [12])


def test_a_group_that_grows_holds_zeros_for_other_devices():
    store = _moxPY.new_data_store()
    probe.create_device_group(store, "", "G", "EMG")
    probe.resize_group(store, "G", 2)
    probe.create_channel(store, "G", "EMG1", 0, "")
    probe.fill_set(store, "G/EMG1", "double", [1, 2])
    probe.resize_group(store, "G", 4)
    assert node(store, "G/EMG1")["values"].ravel().tolist() == [1.0, 2.0, 0.0, 0.0]


def test_a_group_that_shrinks_keeps_its_first_samples(store: Any):
    probe.create_channel(store, "Data/G", "LASI", 0, "")
    probe.fill_set(store, "Data/G/LASI", "double", list(range(30)))
    probe.resize_group(store, "Data/G", 2)
    assert node(store, "Data/G/LASI")["values"][:, 0].tolist() == [[0, 1], [10, 11], [20, 21]]


def test_residuals_follow_their_channel(store: Any):
    probe.create_channel(store, "Data/G", "LASI", 0, "")
    probe.create_attribute(store, "Data/G/LASI", "Residuals", Type.FLOAT32, [10])
    probe.write_attribute_vector(store, "Data/G/LASI", "Residuals", "float", [0.5] * 10)
    probe.resize_group(store, "Data/G", 12)
    assert attribute(store, "Data/G/LASI", "Residuals") == (
        Type.FLOAT32,
        [12],
        [0.5] * 10 + [-1.0] * 2,
    )
    probe.resize_group(store, "Data/G", 1)
    assert attribute(store, "Data/G/LASI", "Residuals") == (Type.FLOAT32, [1], [0.5])


@pytest.mark.parametrize(
    ("word", "group"),
    [
        ("angle", "Angles"),
        ("force", "Forces"),
        ("marker", "Markers"),
        ("moment", "Moments"),
        ("power", "Powers"),
    ],
)
def test_group_of_each_point_type(word: str, group: str):
    assert probe.group_of_point_type(word) == group


@pytest.mark.parametrize("word", ["", "Marker", "markers", "scalar", 'a"b'])
def test_another_point_type_is_named(word: str):
    assert failure_of(probe.group_of_point_type, word) == (
        RuntimeError,
        f'Unsupported point type : "{word}"',
    )
