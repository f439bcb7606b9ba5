"""Where the content of a file lies in the store."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.attributes import attributes_of
from support.c3d_bytes import Analog
from support.read_c3d import read_c3d, track
from support.store_tree import Type, node

GROUPS = ["Angles", "Forces", "Markers", "Moments", "Powers"]
KINDS = {"A": "angle", "F": "force", "O": "moment", "P": "power"}


@pytest.fixture
def acquisition(tmp_path: Path) -> Any:
    """Two markers and an angle, three frames from frame 33 on; two channels."""
    return read_c3d(
        tmp_path, {"LASI": track(3), "LHip": track(3, 40), "RASI": track(3, 80)},
        rate=128.0, first_frame=33, residuals={"LASI": [773, -1, 0]},
        point_descriptions=["left", "hip", "right"],
        analogs=[Analog("Fz1", np.arange(6), 0.5, 2, "N", "up"), Analog("EMG", np.arange(6))],
        samples_per_frame=2, gen_scale=4.0, bits=16, parameters={"POINT:ANGLES": ["LHip"]},
        header={"max_gap": 10},
    )  # fmt: skip


def test_the_groups_of_an_acquisition(acquisition: Any) -> None:
    assert list(node(acquisition, "")["groups"]) == ["Format"]
    assert set(node(acquisition, "Format")["groups"]) >= {
        "Data", "Metadata", "Header", "Events",
    }  # fmt: skip
    data = node(acquisition, "Format/Data")
    assert set(data["groups"]) == {*GROUPS, "AnalogsExport", "Skeleton"}
    assert set(data["sets"]) == {"Points", "Analogs"}
    assert node(acquisition, "Format/Data/Skeleton/Segments")["groups"] == {}


@pytest.mark.parametrize("group", GROUPS)
def test_the_attributes_of_a_point_group(acquisition: Any, group: str) -> None:
    assert attributes_of(node(acquisition, f"Format/Data/{group}")) == {
        "DeviceType": (Type.STRING, [], "Mocap"),
        "NumSamples": (Type.INT64, [], 3),
        "SampleRate": (Type.FLOAT64, [], 128.0),
        "StartTime": (Type.FLOAT64, [], 0.25),
    }


def test_the_attributes_of_the_analog_group(acquisition: Any) -> None:
    assert attributes_of(node(acquisition, "Format/Data/AnalogsExport")) == {
        "DeviceType": (Type.STRING, [], "ADC"),
        "NumSamples": (Type.INT64, [], 6),
        "SampleRate": (Type.FLOAT64, [], 256.0),
        "StartTime": (Type.FLOAT64, [], 0.25),
    }


def test_a_type_without_points_has_its_group(acquisition: Any) -> None:
    powers = node(acquisition, "Format/Data/Powers")
    assert powers["sets"] == {}
    assert attributes_of(powers)["NumSamples"] == (Type.INT64, [], 3)


def test_device_types_of_events_and_metadata(acquisition: Any) -> None:
    assert attributes_of(node(acquisition, "Format/Events")) == {
        "DeviceType": (Type.STRING, [], "EventToExport")
    }
    assert attributes_of(node(acquisition, "Format/Metadata")) == {
        "DeviceType": (Type.STRING, [], "Metadata")
    }


def test_the_set_of_a_point(acquisition: Any) -> None:
    point = node(acquisition, "Format/Data/Markers/LASI")
    assert (point["type"], point["shape"]) == (Type.FLOAT64, [3, 1, 3])
    np.testing.assert_array_equal(
        point["values"][:, 0], [[0, np.nan, 2], [0.25, np.nan, 2.25], [0.5, np.nan, 2.5]]
    )
    assert attributes_of(point) == {
        "Description": (Type.STRING, [], "left"),
        "RelativeSetIndex": (Type.INT32, [], 0),
        "Label": (Type.STRING, [], "LASI"),
        "Unit": (Type.STRING, [], "mm"),
        "SampleRate": (Type.FLOAT64, [], 128.0),
        "StartTime": (Type.FLOAT64, [], 0.25),
        "MetricType": (Type.STRING, [], "marker"),
        "Residuals": (Type.FLOAT32, [3], [773.0, -1.0, 0.0]),
    }


def test_the_set_of_an_analog_channel(acquisition: Any) -> None:
    channel = node(acquisition, "Format/Data/AnalogsExport/Fz1")
    assert (channel["type"], channel["shape"]) == (Type.FLOAT64, [1, 1, 6])
    np.testing.assert_array_equal(channel["values"].ravel(), (np.arange(6) - 2) * 2.0)
    assert attributes_of(channel) == {
        "Description": (Type.STRING, [], "up"),
        "RelativeSetIndex": (Type.INT32, [], 0),
        "Label": (Type.STRING, [], "Fz1"),
        "Unit": (Type.STRING, [], "N"),
        "SampleRate": (Type.FLOAT64, [], 256.0),
        "StartTime": (Type.FLOAT64, [], 0.25),
        "Gain": (Type.INT32, [], 0),
        "Offset": (Type.FLOAT32, [], 2.0),
        "Scale": (Type.FLOAT32, [], 0.5),
        "MetricType": (Type.STRING, [], "Analog"),
    }


def test_the_raw_set_of_the_points(acquisition: Any) -> None:
    raw = node(acquisition, "Format/Data/Points")
    attributes = attributes_of(raw)
    assert (raw["type"], raw["shape"]) == (Type.FLOAT64, [3, 3, 3])
    assert attributes["Labels"] == (Type.STRING, [3], ["LASI", "LHip", "RASI"])
    assert attributes["Types"] == (Type.STRING, [3], ["marker", "angle", "marker"])
    assert attributes["Units"] == (Type.STRING, [3], ["mm", "deg", "mm"])
    assert attributes["Descriptions"] == (Type.STRING, [3], ["left", "hip", "right"])
    assert attributes["NumSamples"] == (Type.INT64, [], 3)
    assert attributes["SampleRate"] == (Type.FLOAT64, [], 128.0)
    assert attributes["StartTime"] == (Type.FLOAT64, [], 0.25)
    np.testing.assert_array_equal(raw["values"][:, 1], track(3, 40).T)


def test_the_raw_set_of_the_analogs(acquisition: Any) -> None:
    raw = node(acquisition, "Format/Data/Analogs")
    attributes = attributes_of(raw)
    assert (raw["type"], raw["shape"]) == (Type.FLOAT64, [1, 2, 6])
    assert attributes["Labels"] == (Type.STRING, [2], ["Fz1", "EMG"])
    assert attributes["Units"] == (Type.STRING, [2], ["N", "V"])
    assert attributes["Gain"][::2] == (Type.INT32, [0, 0])
    assert attributes["Scales"][1:] == ([2], [0.5, 1.0])
    assert attributes["Offsets"][1:] == ([2], [2.0, 0.0])
    assert attributes["Descriptions"] == (Type.STRING, [2], ["up", ""])
    assert attributes["Types"] == (Type.STRING, [2], ["Analog", "Analog"])
    assert attributes["SampleRate"] == (Type.FLOAT64, [], 256.0)


def test_the_header(acquisition: Any) -> None:
    header = attributes_of(node(acquisition, "Format/Header"))
    assert header["NumberAnalogSamplesPerPointSample"] == (Type.INT32, [], 2)
    assert header["PointMaximumInterpolationGap"] == (Type.INT32, [], 10)
    assert header["TotalAnalogSamplesPer3dSample"] == (Type.INT32, [], 4)
    assert _moxPY.moxGetMaxInterpolationGap(acquisition) == 10.0


def test_every_type_goes_to_its_group(tmp_path: Path) -> None:
    points = {name: track(2) for name in ["M", *KINDS]}
    lists = {f"POINT:{kind.upper()}S": [name] for name, kind in KINDS.items()}
    acquisition = read_c3d(tmp_path, points, parameters=lists)
    for index, (name, kind) in enumerate(KINDS.items(), start=1):
        sets = node(acquisition, f"Format/Data/{kind.capitalize()}s")["sets"]
        assert list(sets) == [name]
        attributes = attributes_of(sets[name])
        assert attributes["MetricType"] == (Type.STRING, [], kind)
        assert attributes["RelativeSetIndex"] == (Type.INT32, [], index)


def test_raw_sets_are_there_without_channels(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, frames=4)
    assert node(acquisition, "Format/Data/Points")["shape"] == [3, 0, 4]
    assert node(acquisition, "Format/Data/Analogs")["shape"][:2] == [1, 0]
    assert node(acquisition, "Format/Data/AnalogsExport")["sets"] == {}
    assert node(acquisition, "Format/Events")["sets"] == {}


def test_the_resolution_of_a_file_that_does_not_tell_is_12(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(2)})
    assert _moxPY.moxGetAnalogResolution(acquisition) == 12.0


@pytest.mark.parametrize("bits", [8, 12, 14, 16])
def test_the_resolution_of_a_file(tmp_path: Path, bits: int) -> None:
    acquisition = read_c3d(tmp_path, analogs={"A": [1, 2]}, samples_per_frame=1, bits=bits)
    assert _moxPY.moxGetAnalogResolution(acquisition) == float(bits)


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
@pytest.mark.parametrize("storage", ["integer", "real"])
def test_fourth_words_are_kept_for_each_point(tmp_path: Path, processor: str, storage: str) -> None:
    words = {"A": [0, 773, -1, 32767], "B": [255, -2, 1, 5388]}
    acquisition = read_c3d(
        tmp_path, {"A": track(4), "B": track(4)}, residuals=words, scale=0.25,
        processor=processor, storage=storage,
    )  # fmt: skip
    for label, expected in words.items():
        residuals = attributes_of(node(acquisition, f"Format/Data/Markers/{label}"))["Residuals"]
        read = residuals[2]
        assert [word for word in read if word >= 0] == [word for word in expected if word >= 0]
        assert [word < 0 for word in read] == [word < 0 for word in expected]


@pytest.mark.parametrize(
    ("code", "kept", "gain"),
    [(0, 0, 0.0), (1, 1, 10000.0), (5, 5, 1000.0), (6, 0, 0.0), (-1, 0, 0.0), (32767, 0, 0.0)],
)
def test_gain_codes_of_a_file(tmp_path: Path, code: int, kept: int, gain: float) -> None:
    acquisition = read_c3d(
        tmp_path, analogs={"A": [1, 2]}, samples_per_frame=1, parameters={"ANALOG:GAIN": [code]}
    )  # fmt: skip
    channel = node(acquisition, "Format/Data/AnalogsExport/A")
    assert attributes_of(channel)["Gain"] == (Type.INT32, [], kept)
    assert _moxPY.moxGetAnalog(acquisition, "A")[1]["gain"] == gain
    # The metadata keep what the file says.
    metadata = attributes_of(node(acquisition, "Format/Metadata/ANALOG"))
    assert metadata["GAIN"][2] == [code]
