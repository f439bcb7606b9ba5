"""What a new acquisition holds."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.memory import address_space
from support.store_tree import Type, attribute, node, scalar

Entry = tuple[str, str, Type, list[int], Any]


def entries(path: str, group: dict[str, Any]) -> list[Entry | str]:
    """Every group below one, in order, each with its attributes behind it."""
    found: list[Entry | str] = [path]
    for name, (type_number, shape, values) in group["attributes"].items():
        (value,) = np.ravel(values).tolist()
        found.append((path, name, Type(type_number), shape, value))
    for name, child in group["groups"].items():
        found += entries(f"{path}/{name}".lstrip("/"), child)
    return found


def device_group(name: str, device_type: str) -> list[Entry | str]:
    path = f"Format/Data/{name}"
    return [
        path,
        (path, "DeviceType", Type.STRING, [], device_type),
        (path, "NumSamples", Type.INT64, [], 0),
        (path, "SampleRate", Type.FLOAT64, [], 0.0),
        (path, "StartTime", Type.FLOAT64, [], 0.0),
    ]


LAYOUT = [
    "",
    "Format",
    "Format/Data",
    *device_group("Angles", "Mocap"),
    *device_group("Forces", "Mocap"),
    *device_group("Markers", "Mocap"),
    *device_group("Moments", "Mocap"),
    *device_group("Powers", "Mocap"),
    *device_group("AnalogsExport", "EMG"),
    "Format/Metadata",
    ("Format/Metadata", "DeviceType", Type.STRING, [], "Metadata"),
    "Format/Metadata/ANALOG",
    ("Format/Metadata/ANALOG", "BITS", Type.INT32, [], 12),
    "Format/Header",
    ("Format/Header", "NumberAnalogSamplesPerPointSample", Type.INT32, [], 1),
    ("Format/Header", "PointMaximumInterpolationGap", Type.INT32, [], 0),
    ("Format/Header", "TotalAnalogSamplesPer3dSample", Type.INT32, [], 0),
    "Format/Events",
    ("Format/Events", "DeviceType", Type.STRING, [], "EventToExport"),
]


def test_groups_and_attributes_in_order_of_creation():
    assert entries("", probe.tree(_moxPY.moxNewAcquisition())) == LAYOUT


def test_a_new_acquisition_holds_nothing():
    acquisition = _moxPY.moxNewAcquisition()
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 0.0
    assert _moxPY.moxGetPointFrequency(acquisition) == 0.0
    assert _moxPY.moxGetPointNumber(acquisition) == 0.0
    assert _moxPY.moxGetAnalogNumber(acquisition) == 0.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 0.0
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 0.0
    assert _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) == 1.0
    assert _moxPY.moxGetAnalogResolution(acquisition) == 12.0
    assert _moxPY.moxGetMaxInterpolationGap(acquisition) == 0.0


@pytest.mark.parametrize(
    ("arguments", "counts"),
    [
        ((), (0.0, 0.0, 0.0, 1.0)),
        ((2,), (2.0, 0.0, 0.0, 1.0)),
        ((2, 100), (2.0, 100.0, 0.0, 1.0)),
        ((2, 100, 3), (2.0, 100.0, 3.0, 1.0)),
        ((2, 100, 3, 10), (2.0, 100.0, 3.0, 10.0)),
        ((True, 5, False, True), (1.0, 5.0, 0.0, 1.0)),
    ],
)
def test_counts_left_out_are_zero_and_the_ratio_one(
    arguments: tuple[int, ...], counts: tuple[float, ...]
):
    acquisition = _moxPY.moxNewAcquisition(*arguments)
    assert counts == (
        _moxPY.moxGetPointNumber(acquisition),
        _moxPY.moxGetPointFrameNumber(acquisition),
        _moxPY.moxGetAnalogNumber(acquisition),
        _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition),
    )


def test_channels_are_numbered_from_zero():
    acquisition = _moxPY.moxNewAcquisition(2, 100, 3, 10)
    assert probe.list_sets(acquisition, "Format/Data/Markers") == ["unamed_0", "unamed_1"]
    assert probe.list_sets(acquisition, "Format/Data/AnalogsExport") == [
        "unamed_0",
        "unamed_1",
        "unamed_2",
    ]
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 1000.0


def test_every_point_group_gets_the_frames():
    acquisition = _moxPY.moxNewAcquisition(0, 100)
    for name in ("Angles", "Forces", "Markers", "Moments", "Powers"):
        assert scalar(acquisition, f"Format/Data/{name}", "NumSamples") == 100


def channel_attributes(index: int) -> list[Entry]:
    return [
        ("Description", Type.STRING, [], ""),
        ("RelativeSetIndex", Type.INT32, [], index),
        ("Label", Type.STRING, [], f"unamed_{index}"),
        ("Unit", Type.STRING, [], "Unknown"),
        ("SampleRate", Type.FLOAT64, [], 0.0),
        ("StartTime", Type.FLOAT64, [], 0.0),
    ]


def attributes_of(acquisition: Any, path: str) -> list[Any]:
    names = probe.list_attributes(acquisition, path)
    found = [(name, *attribute(acquisition, path, name)) for name in names]
    return [(name, element_type, shape, *values) for name, element_type, shape, values in found]


def test_attributes_of_a_point():
    acquisition = _moxPY.moxNewAcquisition(2, 5)
    assert attributes_of(acquisition, "Format/Data/Markers/unamed_1") == [
        *channel_attributes(1),
        ("MetricType", Type.STRING, [], "marker"),
    ]


def test_attributes_of_an_analog_channel():
    acquisition = _moxPY.moxNewAcquisition(0, 5, 3)
    assert attributes_of(acquisition, "Format/Data/AnalogsExport/unamed_2") == [
        *channel_attributes(2),
        ("Gain", Type.INT32, [], 0),
        ("Offset", Type.FLOAT32, [], 0.0),
        ("Scale", Type.FLOAT32, [], 1.0),
        ("MetricType", Type.STRING, [], "Analog"),
    ]


@pytest.mark.parametrize(
    ("path", "shape"),
    [
        ("Format/Data/Markers/unamed_0", [3, 1, 10]),
        ("Format/Data/AnalogsExport/unamed_0", [1, 1, 40]),
    ],
)
def test_channels_hold_zeros(path: str, shape: list[int]):
    channel = node(_moxPY.moxNewAcquisition(1, 10, 1, 4), path)
    assert (channel["type"], channel["shape"]) == (Type.FLOAT64, shape)
    assert not channel["values"].any()


def test_acquisitions_are_independent():
    first, second = _moxPY.moxNewAcquisition(), _moxPY.moxNewAcquisition()
    _moxPY.moxSetFrameNumber(first, 10)
    assert _moxPY.moxGetPointFrameNumber(second) == 0.0


@pytest.mark.parametrize(
    ("arguments", "text"),
    [
        ((-1,), "The number of points cannot be negative, current is : -1"),
        ((0, -1), "The number of frames cannot be negative, current is : -1"),
        ((0, 0, -7), "The number of analog channels cannot be negative, current is : -7"),
        ((-1, -2, -3, 0), "The number of points cannot be negative, current is : -1"),
        ((0, 0, 0, 0), "Ratio cannot be lower than 1"),
        ((1, 1, 1, -5), "Ratio cannot be lower than 1"),
    ],
)
def test_counts_that_cannot_be_are_refused(arguments: tuple[int, ...], text: str):
    assert failure_of(_moxPY.moxNewAcquisition, *arguments) == (RuntimeError, text)


LARGEST = 2**31 - 1


@pytest.mark.parametrize(
    "arguments",
    [
        (LARGEST,),
        (LARGEST, 1),
        (LARGEST, LARGEST),
        (10_000, LARGEST),
        (0, 0, LARGEST),
        (0, LARGEST, 1000),
        (0, LARGEST, 1, LARGEST),
        (LARGEST, LARGEST, LARGEST, LARGEST),
    ],
)
def test_absurd_counts_are_refused_before_memory_is_taken(arguments: tuple[int, ...]):
    with address_space(4 << 30):
        raised, _ = failure_of(_moxPY.moxNewAcquisition, *arguments)
    assert raised is MemoryError


def test_frames_without_channels_take_no_memory():
    acquisition = _moxPY.moxNewAcquisition(0, LARGEST, 0, LARGEST)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == float(LARGEST)
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == float(LARGEST * LARGEST)


def test_as_many_channels_as_a_file_can_name():
    assert _moxPY.moxGetPointNumber(_moxPY.moxNewAcquisition(65_535, 1)) == 65_535.0


@pytest.mark.parametrize("argument", ["1", 1.0, None, 2**31])
def test_what_is_no_count_is_refused(argument: Any):
    raised, text = failure_of(_moxPY.moxNewAcquisition, argument)
    assert raised is TypeError
    assert text.startswith(
        "Wrong number or type of arguments for overloaded function 'moxNewAcquisition'.\n"
    )
