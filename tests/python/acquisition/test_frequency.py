"""Rates of points and analog channels."""

from __future__ import annotations

import math
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.read_files import read_trial
from support.store_tree import Type, attribute, scalar, snapshot

POINT_GROUPS = ("Angles", "Forces", "Markers", "Moments", "Powers")
HEADER = "Format/Header"


def rates_of(acquisition: Any, group: str) -> set[float]:
    """The rates of a device group and of each of its channels."""
    path = f"Format/Data/{group}"
    paths = [path, *(f"{path}/{name}" for name in probe.list_sets(acquisition, path))]
    return {scalar(acquisition, path, "SampleRate") for path in paths}


@pytest.mark.parametrize("rate", [100.0, 59.94, 1, 0.1])
def test_a_new_acquisition_gets_its_rates(rate: float):
    acquisition = _moxPY.moxNewAcquisition(2, 100, 2, 3)
    assert _moxPY.moxSetFrequency(acquisition, rate) is None
    assert _moxPY.moxGetPointFrequency(acquisition) == rate
    assert _moxPY.moxGetAnalogFrequency(acquisition) == rate * 3
    for group in POINT_GROUPS:
        assert rates_of(acquisition, group) == {rate}
    assert rates_of(acquisition, "AnalogsExport") == {rate * 3}


def test_the_first_rate_of_a_new_acquisition_leaves_its_frames():
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    _moxPY.moxSetFrequency(acquisition, 50.0)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 100.0


def test_doubling_the_rate_of_a_file_doubles_its_point_count():
    acquisition = read_trial()
    before = _moxPY.moxGetPointsValues(acquisition)
    _moxPY.moxSetFrequency(acquisition, 200.0)
    assert scalar(acquisition, "Format/Data/Points", "NumSamples") == 200
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 200.0
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(acquisition), before)


@pytest.mark.parametrize("rate", [50.0, 200.0, 59.94])
def test_a_rate_that_was_stored_wrongly_is_corrected(tmp_path: Path, rate: float):
    rotations = np.arange(200 * 17.0).reshape(200, 17)
    rotations[:, 16] = 0.5  # reliability
    acquisition = read_trial(
        first_frame=26, rotations={"S": rotations}, rotation_ratio=2,
        residuals={"LASI": np.arange(100) % 7}, bits=16,
    )  # fmt: skip
    before = values_of(acquisition)
    _moxPY.moxSetFrequency(acquisition, rate)
    _moxPY.moxSetFrameNumber(acquisition, 100)
    _moxPY.moxSetFirstFrame(acquisition, 25)
    assert values_of(acquisition) == before
    path = str(tmp_path / "written.c3d")
    _moxPY.moxWriteAcquisition(acquisition, path)
    written = _moxPY.moxReadAcquisition(path)
    assert values_of(written) == before
    assert _moxPY.moxGetPointFrequency(written) == np.float32(rate)
    assert _moxPY.moxGetAnalogFrameNumber(written) == 300
    assert _moxPY.moxGetFirstFrame(written) == pytest.approx(25)


def values_of(acquisition: Any) -> list[Any]:
    """Bytes of all samples, residuals and rotations."""
    markers = [f"Format/Data/Markers/{label}" for label in ("LASI", "RASI")]
    return [
        _moxPY.moxGetPointsValues(acquisition).tobytes(),
        _moxPY.moxGetAnalogsValues(acquisition).tobytes(),
        _moxPY.moxGetRotation(acquisition, "S")[0].tobytes(),
        [attribute(acquisition, marker, "Residuals") for marker in markers],
        _moxPY.moxGetEventsValues(acquisition)[0].tolist(),
    ]


@pytest.mark.parametrize(("rate", "count"), [(33.0, 33), (0.5, 0), (101.0, 101), (66.66, 66)])
def test_the_point_count_of_a_file_is_cut_to_a_whole_number(rate: float, count: int):
    acquisition = read_trial()
    _moxPY.moxSetFrequency(acquisition, rate)
    assert attribute(acquisition, "Format/Data/Points", "NumSamples")[2] == [count]


def test_groups_of_a_file_keep_their_counts():
    acquisition = read_trial()
    _moxPY.moxSetFrequency(acquisition, 200.0)
    assert scalar(acquisition, "Format/Data/Markers", "NumSamples") == 100
    assert scalar(acquisition, "Format/Data/AnalogsExport", "NumSamples") == 300


def test_rates_of_a_file_follow_everywhere():
    acquisition = read_trial()
    _moxPY.moxSetFrequency(acquisition, 200.0)
    assert _moxPY.moxGetPointFrequency(acquisition) == 200.0
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 600.0
    for group in POINT_GROUPS:
        assert rates_of(acquisition, group) == {200.0}
    assert rates_of(acquisition, "AnalogsExport") == {600.0}
    assert scalar(acquisition, "Format/Data/Points", "SampleRate") == 200.0
    assert scalar(acquisition, "Format/Data/Analogs", "SampleRate") == 600.0
    assert scalar(acquisition, "Format/Metadata/POINT", "RATE") == 200.0
    assert scalar(acquisition, "Format/Metadata/ANALOG", "RATE") == 600.0


# A trial of 100 Hz with three analog samples in a frame; what RATE of both groups is before.
@pytest.mark.parametrize(
    ("kind", "values", "rate", "element_type", "extents"),
    [
        ("Integer", 100, 200.0, Type.INT16, []),
        ("Integer", [100], 200.0, Type.INT16, [1]),
        ("Integer", 100, 33.25, Type.FLOAT32, []),
        ("Integer", [100], 33.25, Type.FLOAT32, [1]),
        ("Integer", 100, 40000.0, Type.FLOAT32, []),
        ("Integer", [100, 100], 200.0, Type.FLOAT32, []),
        ("Real", [100.0], 200.0, Type.FLOAT32, [1]),
        ("Real", [100.0, 1.0], 200.0, Type.FLOAT32, []),
        ("Char", "100 Hz", 200.0, Type.FLOAT32, []),
    ],
)
def test_parameters_follow_whatever_they_held(
    kind: str, values: Any, rate: float, element_type: Type, extents: list[int]
):
    acquisition = read_trial()
    for group in ("POINT", "ANALOG"):
        entry = {"format": kind, "values": values}
        _moxPY.moxAppendMetaData(acquisition, group, "RATE", entry)
    _moxPY.moxSetFrequency(acquisition, rate)
    for group, told in (("POINT", rate), ("ANALOG", 3.0 * rate)):
        entry = attribute(acquisition, f"Format/Metadata/{group}", "RATE")
        assert entry == (element_type, extents, [told])


@pytest.mark.parametrize(
    ("kind", "values"), [("Integer", 300), ("Real", [300.0, 1.0]), ("Char", "fast")]
)
def test_the_analog_parameter_follows_the_samples_of_a_frame(kind: str, values: Any):
    acquisition = read_trial()
    _moxPY.moxClearAnalogs(acquisition)
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "RATE", {"format": kind, "values": values})
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 400)
    entry = attribute(acquisition, "Format/Metadata/ANALOG", "RATE")
    assert entry == (Type.FLOAT32, [], [40000.0])


def test_parameters_that_a_file_lacks_are_not_made():
    acquisition = read_trial(parameters={"POINT:RATE": None, "ANALOG:RATE": None})
    _moxPY.moxSetFrequency(acquisition, 200.0)
    assert "RATE" not in probe.list_attributes(acquisition, "Format/Metadata/POINT")
    assert "RATE" not in probe.list_attributes(acquisition, "Format/Metadata/ANALOG")


def test_a_rate_of_zero_can_be_left_again():
    acquisition = read_trial()
    _moxPY.moxSetFrequency(acquisition, 0.0)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 0.0
    _moxPY.moxSetFrequency(acquisition, 100.0)
    assert _moxPY.moxGetPointFrequency(acquisition) == 100.0


def test_new_channels_get_the_rate():
    acquisition = _moxPY.moxNewAcquisition(0, 10)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    probe.create_channel(acquisition, "Format/Data/Markers", "LASI", 0, "")
    assert attribute(acquisition, "Format/Data/Markers/LASI", "SampleRate") == (
        Type.FLOAT64,
        [],
        [100.0],
    )


@pytest.mark.parametrize(
    ("rate", "shown"), [(-1.0, "-1"), (-1e-300, "-1e-300"), (math.inf, "inf"), (-math.inf, "-inf")]
)
@pytest.mark.parametrize("make", [lambda: _moxPY.moxNewAcquisition(2, 10, 1), read_trial])
def test_a_rate_that_cannot_be_leaves_everything(rate: float, shown: str, make: Any):
    acquisition = make()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrequency, acquisition, rate) == (
        RuntimeError,
        f"The frequency must be a positive number or 0, current is : {shown}",
    )
    assert snapshot(acquisition) == before


def test_a_rate_that_is_no_number_leaves_everything():
    acquisition = read_trial()
    before = snapshot(acquisition)
    raised, text = failure_of(_moxPY.moxSetFrequency, acquisition, math.nan)
    assert raised is RuntimeError
    assert text.startswith("The frequency must be a positive number or 0, current is : ")
    assert snapshot(acquisition) == before


def test_a_rate_whose_frames_cannot_be_counted_leaves_everything():
    acquisition = read_trial()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrequency, acquisition, 1e300) == (
        RuntimeError,
        "The frequency is too high, current is : 1e+300",
    )
    assert snapshot(acquisition) == before


def test_a_rate_that_is_too_high_for_the_analogs_leaves_everything():
    acquisition = _moxPY.moxNewAcquisition(1, 10, 1, 5)
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrequency, acquisition, 1.5e308) == (
        RuntimeError,
        "The frequency is too high, current is : 1.5e+308",
    )
    assert snapshot(acquisition) == before


def test_a_new_acquisition_takes_any_rate_after_a_low_one():
    acquisition = _moxPY.moxNewAcquisition(1, 10, 1, 5)
    _moxPY.moxSetFrequency(acquisition, 1e-300)
    _moxPY.moxSetFrequency(acquisition, 1000.0)
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 5000.0


@pytest.mark.parametrize("path", [*(f"Format/Data/{name}" for name in POINT_GROUPS), HEADER])
def test_a_missing_group_is_named_and_nothing_changed(path: str):
    acquisition = _moxPY.moxNewAcquisition(2, 100)
    probe.delete_group(acquisition, path)
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxSetFrequency, acquisition, 10.0) == (
        RuntimeError,
        f"Impossible to retrieve group with path : '{path}'",
    )
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("make", [lambda: _moxPY.moxNewAcquisition(2, 100, 1, 3), read_trial])
def test_points_get_their_rate_where_analog_channels_were_not_split(make: Any):
    acquisition = make()
    probe.delete_group(acquisition, "Format/Data/AnalogsExport")
    assert _moxPY.moxSetFrequency(acquisition, 50.0) is None
    assert _moxPY.moxGetPointFrequency(acquisition) == 50.0
    for group in POINT_GROUPS:
        assert rates_of(acquisition, group) == {50.0}


def test_the_analog_rate_of_the_file_follows_where_its_channels_were_not_split():
    acquisition = read_trial()
    probe.delete_group(acquisition, "Format/Data/AnalogsExport")
    _moxPY.moxSetFrequency(acquisition, 50.0)
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 150.0
    assert scalar(acquisition, "Format/Metadata/ANALOG", "RATE") == 150.0
