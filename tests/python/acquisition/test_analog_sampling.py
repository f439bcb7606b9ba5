"""Samples per frame, resolution and interpolation gap."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.read_files import read_trial
from support.store_tree import Type, attribute, scalar, snapshot

HAS_CHANNELS = (
    "Impossible to modify of the number of analog samples per 3D frames when the acquisition"
    " already contains analog channels."
)

COUNT_LINE = (
    "[error] [strata] The number of elements to write is not the same than in the shape of the"
    " attribute"
)
WRITE_LINE = "[error] [strata] Invalid value to write the content of an attribute"


def test_samples_per_frame_decide_the_samples():
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    assert _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 10) is None
    assert _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) == 10.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 1000.0


def test_samples_per_frame_decide_the_rate():
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    _moxPY.moxSetFrequency(acquisition, 50.0)
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 10)
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 500.0


def test_samples_per_frame_of_a_file_without_analog_channels():
    acquisition = read_trial(analogs=())
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 20)
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 2000.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 2000.0
    assert scalar(acquisition, "Format/Data/Analogs", "SampleRate") == 2000.0
    assert scalar(acquisition, "Format/Data/AnalogsExport", "SampleRate") == 2000.0


def test_frames_are_counted_as_the_getter_counts_them_after_a_change_of_rate():
    acquisition = read_trial(analogs=())
    _moxPY.moxSetFrequency(acquisition, 50.0)
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 4)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 50.0
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 200.0
    assert scalar(acquisition, "Format/Data/Analogs", "NumSamples") == 200


def test_a_missing_header_entry_is_made():
    acquisition = _moxPY.moxNewAcquisition()
    name = "NumberAnalogSamplesPerPointSample"
    probe.delete_attribute(acquisition, "Format/Header", name)
    assert _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) == 0.0
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 4)
    assert attribute(acquisition, "Format/Header", name) == (Type.INT32, [], [4])


@pytest.mark.parametrize("ratio", [0, -1, -(2**31)])
@pytest.mark.parametrize("analogs", [0, 1])
def test_a_ratio_below_one_leaves_everything(ratio: int, analogs: int):
    acquisition = _moxPY.moxNewAcquisition(2, 100, analogs, 3)
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetAnalogSampleNumberPerFrame, acquisition, ratio) == (
        RuntimeError,
        "Ratio cannot be lower than 1",
    )
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("ratio", [1, 3, 10])
@pytest.mark.parametrize("make", [lambda: _moxPY.moxNewAcquisition(0, 100, 1, 3), read_trial])
def test_analog_channels_fix_the_ratio(ratio: int, make: Callable[[], Any]):
    acquisition = make()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetAnalogSampleNumberPerFrame, acquisition, ratio) == (
        RuntimeError,
        HAS_CHANNELS,
    )
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("bits", [8, 12, 14, 16])
def test_resolution_is_one_of_four(bits: int):
    acquisition = _moxPY.moxNewAcquisition()
    assert _moxPY.moxSetAnalogResolution(acquisition, bits) is None
    assert _moxPY.moxGetAnalogResolution(acquisition) == float(bits)
    assert attribute(acquisition, "Format/Metadata/ANALOG", "BITS") == (Type.INT32, [], [bits])


@pytest.mark.parametrize("bits", [-16, 0, 1, 10, 13, 15, 24, 32])
def test_another_resolution_leaves_everything(bits: int):
    acquisition = _moxPY.moxNewAcquisition()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetAnalogResolution, acquisition, bits) == (
        RuntimeError,
        "Invalid analog resolution.",
    )
    assert snapshot(acquisition) == before


def test_the_resolution_is_checked_before_its_group():
    assert failure_of(_moxPY.moxSetAnalogResolution, _moxPY.new_data_store(), 10) == (
        RuntimeError,
        "Invalid analog resolution.",
    )


def test_resolution_of_a_file_is_read_and_written_in_its_parameter():
    acquisition = read_trial(bits=16)
    assert _moxPY.moxGetAnalogResolution(acquisition) == 16.0
    _moxPY.moxSetAnalogResolution(acquisition, 14)
    assert _moxPY.moxGetAnalogResolution(acquisition) == 14.0


def test_a_file_without_a_resolution_has_twelve_bits():
    acquisition = read_trial()
    assert "BITS" not in probe.list_attributes(acquisition, "Format/Metadata/ANALOG")
    assert _moxPY.moxGetAnalogResolution(acquisition) == 12.0
    _moxPY.moxSetAnalogResolution(acquisition, 16)
    assert _moxPY.moxGetAnalogResolution(acquisition) == 16.0


@pytest.mark.parametrize(
    ("kind", "values", "line"),
    [
        ("Char", "x", WRITE_LINE),
        ("Char", "14", WRITE_LINE),
        ("Char", ["12", "x"], COUNT_LINE),
        ("Integer", [12, 16], COUNT_LINE),
        ("Real", [0.5, 1.0], COUNT_LINE),
    ],
)
def test_a_resolution_that_is_not_one_number_stays_and_the_log_says_so(
    kind: str, values: Any, line: str, new_log_lines: Callable[[], list[str]]
):
    acquisition = _moxPY.moxNewAcquisition()
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "BITS", {"format": kind, "values": values})
    before = snapshot(acquisition)
    assert _moxPY.moxSetAnalogResolution(acquisition, 16) is None
    assert snapshot(acquisition) == before
    assert new_log_lines() == [line]


def test_a_resolution_without_elements_stays_and_the_log_says_so(
    new_log_lines: Callable[[], list[str]],
):
    acquisition = _moxPY.moxNewAcquisition()
    probe.delete_attribute(acquisition, "Format/Metadata/ANALOG", "BITS")
    probe.create_attribute(acquisition, "Format/Metadata/ANALOG", "BITS", Type.INT16, [0])
    before = snapshot(acquisition)
    _moxPY.moxSetAnalogResolution(acquisition, 16)
    assert snapshot(acquisition) == before
    assert new_log_lines() == [COUNT_LINE]


def test_a_resolution_of_one_number_keeps_its_type():
    acquisition = _moxPY.moxNewAcquisition()
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "BITS", {"format": "Real", "values": [8.0]})
    kind, shape, _ = attribute(acquisition, "Format/Metadata/ANALOG", "BITS")
    _moxPY.moxSetAnalogResolution(acquisition, 16)
    assert attribute(acquisition, "Format/Metadata/ANALOG", "BITS") == (kind, shape, [16.0])


@pytest.mark.parametrize("gap", [0, 10, -1, 2**31 - 1])
def test_the_interpolation_gap_reads_back(gap: int):
    acquisition = _moxPY.moxNewAcquisition()
    assert _moxPY.moxSetMaxInterpolationGap(acquisition, gap) is None
    assert _moxPY.moxGetMaxInterpolationGap(acquisition) == float(gap)
    assert attribute(acquisition, "Format/Header", "PointMaximumInterpolationGap") == (
        Type.INT32,
        [],
        [gap],
    )


GROUPS_NEEDED = [
    (_moxPY.moxGetPointFrequency, (), "Format/Data/Angles"),
    (_moxPY.moxGetPointFrameNumber, (), "Format/Data/Angles"),
    (_moxPY.moxGetFirstFrame, (), "Format/Data/Markers"),
    (_moxPY.moxGetLastFrame, (), "Format/Data/Markers"),
    (_moxPY.moxGetMaxInterpolationGap, (), "Format/Header"),
    (_moxPY.moxSetMaxInterpolationGap, (5,), "Format/Header"),
    (_moxPY.moxGetAnalogFrequency, (), "Format/Data/AnalogsExport"),
    (_moxPY.moxGetAnalogFrameNumber, (), "Format/Data/AnalogsExport"),
    (_moxPY.moxGetAnalogSampleNumberPerFrame, (), "Format/Header"),
    (_moxPY.moxSetAnalogSampleNumberPerFrame, (5,), "Format/Header"),
    (_moxPY.moxSetAnalogSampleNumberPerFrame, (5,), "Format/Data/AnalogsExport"),
    (_moxPY.moxGetAnalogResolution, (), "Format/Metadata/ANALOG"),
    (_moxPY.moxSetAnalogResolution, (16,), "Format/Metadata/ANALOG"),
]


@pytest.mark.parametrize(("function", "arguments", "path"), GROUPS_NEEDED)
def test_a_missing_group_is_named_and_nothing_changed(
    function: Callable[..., Any], arguments: tuple[int, ...], path: str
):
    acquisition = _moxPY.moxNewAcquisition(1, 10)
    probe.delete_group(acquisition, path)
    before = snapshot(acquisition)
    assert failure_of(function, acquisition, *arguments) == (
        RuntimeError,
        f"Impossible to retrieve group with path : '{path}'",
    )
    assert snapshot(acquisition) == before
