"""Headers that contradict the parameters, and parameters that are missing or of another type."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, byte, integer, real
from support.read_c3d import analogs_of, points_of, read_c3d, track

POINTS = {"A": track(64), "B": track(64, 100)}
ANALOGS = [Analog("F", np.arange(128)), Analog("G", np.arange(128) + 500)]


def assert_whole(acquisition: Any, rate: float = 100.0) -> None:
    points = list(points_of(acquisition).values())
    np.testing.assert_array_equal(points, list(POINTS.values()))
    channels = list(analogs_of(acquisition).values())
    np.testing.assert_array_equal(channels, [channel.raw for channel in ANALOGS])
    assert _moxPY.moxGetPointFrequency(acquisition) == rate
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 2 * rate


def read_whole(folder: Path, **options: Any) -> None:
    assert_whole(read_c3d(folder, POINTS, analogs=ANALOGS, samples_per_frame=2, **options))


@pytest.mark.parametrize(
    "header",
    [
        {"point_count": 7},
        {"point_count": 0},
        {"point_count": 65535},
        {"analog_values": 0},
        {"analog_values": 65535},
        {"analog_values": 3},
        {"samples_per_frame": 0},
        {"samples_per_frame": 4},
        {"rate": 0.0},
        {"rate": 77.0},
        {"scale": 0.1},
        {"scale": 0.0},
        {"data_start": 0},
        {"data_start": 2},
        {"data_start": 65535},
        {"last_frame": 9},
        {"last_frame": 0},
        {"max_gap": 65535},
        {
            "point_count": 0,
            "analog_values": 0,
            "samples_per_frame": 0,
            "rate": 0.0,
            "data_start": 0,
        },
    ],
    ids=str,
)
def test_the_parameters_are_believed_before_the_header(
    tmp_path: Path, header: dict[str, float]
) -> None:
    read_whole(tmp_path, header=header)


@pytest.mark.parametrize(
    "path",
    [
        "POINT:USED", "POINT:SCALE", "POINT:RATE", "POINT:DATA_START", "POINT:FRAMES",
        "POINT:LABELS", "POINT:UNITS", "POINT:DESCRIPTIONS", "ANALOG:USED", "ANALOG:RATE",
        "ANALOG:LABELS", "ANALOG:UNITS", "ANALOG:SCALE", "ANALOG:OFFSET", "ANALOG:GEN_SCALE",
        "ANALOG:DESCRIPTIONS", "POINT", "ANALOG", "FORCE_PLATFORM",
    ],
)  # fmt: skip
def test_the_header_serves_where_parameters_are_missing(tmp_path: Path, path: str) -> None:
    read_whole(tmp_path, parameters={path: None})


def test_the_header_alone_is_enough(tmp_path: Path) -> None:
    gone = {"POINT": None, "ANALOG": None, "FORCE_PLATFORM": None}
    read_whole(tmp_path, parameters={**gone, "MINE:ONE": 1})


@pytest.mark.parametrize(
    "parameters",
    [
        {"POINT:USED": 2.0},
        {"POINT:USED": byte("USED", 2)},
        {"POINT:USED": integer("USED", [2])},
        {"POINT:RATE": 100},
        {"POINT:RATE": integer("RATE", [100])},
        {"POINT:RATE": real("RATE", [100.0])},
        {"POINT:FRAMES": real("FRAMES", [64.0])},
        {"POINT:SCALE": real("SCALE", [-0.1])},
        {"POINT:DATA_START": real("DATA_START", 0.0)},
        {"ANALOG:USED": 2.0},
        {"ANALOG:USED": byte("USED", 2)},
        {"ANALOG:RATE": 200},
        {"ANALOG:GEN_SCALE": 1},
        {"ANALOG:SCALE": [1, 1]},
        {"ANALOG:SCALE": [1.0, 1.0, 9.0, 9.0]},
        {"ANALOG:OFFSET": [0.0, 0.0]},
        {"ANALOG:OFFSET": byte("OFFSET", [0, 0])},
    ],
    ids=str,
)
def test_numbers_are_taken_from_any_type(tmp_path: Path, parameters: dict[str, Any]) -> None:
    read_whole(tmp_path, parameters=parameters)


@pytest.mark.parametrize(
    "parameters",
    [
        {"POINT:USED": 0},
        {"POINT:USED": 3},
        {"POINT:USED": 65535},
        {"POINT:RATE": 0.0},
        {"POINT:RATE": float("nan")},
        {"POINT:RATE": -100.0},
        {"POINT:SCALE": 0.0},
        {"POINT:SCALE": 0.1},
        {"POINT:FRAMES": 0},
        {"POINT:FRAMES": -5.0},
        {"POINT:FRAMES": float("nan")},
        {"POINT:LONG_FRAMES": float("inf")},
        {"POINT:LONG_FRAMES": -1.0},
        {"POINT:USED": float("nan")},
        {"POINT:USED": -1},
        {"POINT:USED": "two"},
        {"POINT:RATE": "fast"},
        {"POINT:SCALE": float("nan")},
        {"POINT:DATA_START": 0},
        {"POINT:DATA_START": 1},
        {"POINT:DATA_START": 65535},
        {"ANALOG:USED": 65535},
        {"ANALOG:USED": -1},
        {"ANALOG:RATE": 0.0},
        {"ANALOG:RATE": float("nan")},
        {"ANALOG:RATE": -200.0},
        {"ANALOG:RATE": 1e30},
        {"ANALOG:RATE": 1000.0},
    ],
    ids=str,
)
def test_the_file_length_decides_against_a_wrong_parameter(
    tmp_path: Path, parameters: dict[str, Any]
) -> None:
    read_whole(tmp_path, parameters=parameters)


def test_an_odd_rate_ratio_is_rounded(tmp_path: Path) -> None:
    rates = {"POINT:RATE": 59.94006, "ANALOG:RATE": 119.88}
    acquisition = read_c3d(
        tmp_path, POINTS, analogs=ANALOGS, samples_per_frame=2, parameters=rates
    )  # fmt: skip
    np.testing.assert_array_equal(analogs_of(acquisition)["F"], ANALOGS[0].raw)


def test_a_file_without_any_rate_reads_at_rate_0(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, parameters={"POINT:RATE": 0.0}, header={"rate": 0.0}
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["B"], POINTS["B"])
    assert _moxPY.moxGetPointFrequency(acquisition) == 0.0
    assert _moxPY.moxGetPoints(acquisition)[1]["firstFrame"] == 1.0


def test_headers_in_integer_storage_are_overruled_too(tmp_path: Path) -> None:
    read_whole(tmp_path, storage="integer", scale=0.25, header={"scale": -0.25})


def test_all_events_of_the_header_may_be_garbage(tmp_path: Path) -> None:
    read_whole(tmp_path, header={"event_count": 65535}, header_patches={304: b"\xff" * 164})
