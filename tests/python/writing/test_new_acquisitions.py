"""Acquisitions that never were a file."""

from __future__ import annotations

import itertools
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.same_readings import reading_differences, readings
from support.stored_file import StoredFile
from support.ways import Way
from writing.written import write, written_again

RATE = 100.0


def new(points: int = 0, frames: int = 0, analogs: int = 0, ratio: int = 1) -> Any:
    acquisition = _moxPY.moxNewAcquisition(points, frames, analogs, ratio)
    _moxPY.moxSetFrequency(acquisition, RATE)
    return acquisition


def stored(acquisition: Any, folder: Path) -> StoredFile:
    return StoredFile(write(acquisition, folder / "written.c3d"))


def filled(points: int, frames: int, analogs: int, ratio: int) -> Any:
    """Every value differs, and all are exact as singles."""
    acquisition = new(points, frames, analogs, ratio)
    if points:
        values = np.arange(3.0 * points * frames).reshape(frames, 3 * points) / 4 % 4096
        _moxPY.moxSetPointsValues(acquisition, values)
    if analogs:
        values = np.arange(float(analogs * frames * ratio)).reshape(-1, analogs) / 4 % 4096
        _moxPY.moxSetAnalogsValues(acquisition, values - 1000)
    return acquisition


SHAPES = {
    "nothing": (0, 0, 0, 1),
    "only frames": (0, 20, 0, 1),
    "points without frames": (3, 0, 0, 1),
    "channels without frames": (0, 0, 3, 2),
    "one sample": (1, 1, 1, 1),
    "only points": (5, 20, 0, 1),
    "a ratio without channels": (5, 20, 0, 7),
    "only analogs": (0, 20, 4, 3),
    "both": (4, 20, 3, 10),
    "255 points": (255, 2, 0, 1),
    "256 points": (256, 2, 0, 1),
    "600 points": (600, 2, 0, 1),
    "255 channels": (0, 2, 255, 1),
    "300 channels": (1, 2, 300, 2),
    "511 channels": (0, 2, 511, 1),
}
every_shape = pytest.mark.parametrize("shape", SHAPES)


@every_shape
def test_what_is_new_is_read_back(tmp_path: Path, way: Way, shape: str):
    acquisition = way.of(filled(*SHAPES[shape]))
    expected = readings(acquisition)
    assert reading_differences(expected, written_again(acquisition, tmp_path)) == []


@every_shape
def test_a_second_writing_gives_the_same_bytes(tmp_path: Path, way: Way, shape: str):
    again = written_again(way.of(filled(*SHAPES[shape])), tmp_path)
    first = (tmp_path / "written.c3d").read_bytes()
    assert write(again, tmp_path / "second.c3d") == first


@every_shape
def test_the_standard_groups_come_first(tmp_path: Path, shape: str):
    groups = stored(filled(*SHAPES[shape]), tmp_path).groups
    assert list(groups)[:3] == ["POINT", "ANALOG", "FORCE_PLATFORM"]


@pytest.mark.parametrize(
    ("shape", "reader"),
    [
        *itertools.product(
            ["one sample", "only points", "both", "600 points"], [read_with_ezc3d, read_with_c3d]
        ),
        ("300 channels", read_with_ezc3d),  # c3d knows no ANALOG:SCALE2
    ],
)
def test_other_readers_see_the_same(tmp_path: Path, shape: str, reader: Callable[[Path], Any]):
    points, frames, analogs, _ = SHAPES[shape]
    acquisition = filled(*SHAPES[shape])
    write(acquisition, tmp_path / "written.c3d")
    recording = reader(tmp_path / "written.c3d")
    expected = _moxPY.moxGetPointsValues(acquisition).reshape(frames, points, 3)
    np.testing.assert_array_equal(recording.points, expected)
    assert (recording.rate, recording.first_frame) == (RATE, 1)
    if analogs:
        expected = _moxPY.moxGetAnalogsValues(acquisition)
        np.testing.assert_allclose(recording.analogs, expected, rtol=1e-6)
    assert len(set(recording.labels("POINT"))) == points


@pytest.mark.parametrize("rate", [29.97, 59.94, 119.88, 239.76])
@pytest.mark.parametrize("ratio", [5, 10, 20])
def test_rates_that_are_not_whole_divide_for_others(tmp_path: Path, rate: float, ratio: int):
    acquisition = _moxPY.moxNewAcquisition(1, 2, 1, ratio)
    _moxPY.moxSetFrequency(acquisition, rate)
    write(acquisition, tmp_path / "written.c3d")
    recording = read_with_c3d(tmp_path / "written.c3d")  # refuses others
    assert len(recording.analogs) == 2 * ratio


@pytest.mark.parametrize("frames", [65534, 65535, 65536, 70000])
@pytest.mark.parametrize("first", [0, 999])
def test_many_frames_are_counted(tmp_path: Path, frames: int, first: int):
    acquisition = filled(1, frames, 0, 1)
    _moxPY.moxSetFirstFrame(acquisition, first)
    file = stored(acquisition, tmp_path)
    after = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert _moxPY.moxGetPointFrameNumber(after) == float(frames)
    assert _moxPY.moxGetFirstFrame(after) == float(first)
    np.testing.assert_array_equal(
        _moxPY.moxGetPointsValues(after), _moxPY.moxGetPointsValues(acquisition)
    )
    if frames == 65534:
        assert file.count("POINT:FRAMES") == 65534
        assert "POINT:LONG_FRAMES" not in file.parameters


def test_another_reader_counts_many_frames(tmp_path: Path):
    # A number whose frames fill the last block: it takes what is behind them for frames, too.
    write(filled(1, 70016, 0, 1), tmp_path / "written.c3d")
    assert len(read_with_ezc3d(tmp_path / "written.c3d").points) == 70016


def test_gaps_are_written_as_the_format_wants_them(tmp_path: Path):
    acquisition = new(1, 4)
    values = np.arange(12.0).reshape(4, 3) + 1
    values[1] = np.nan
    values[2, 1] = np.nan
    values[3, 2] = np.inf
    _moxPY.moxSetPointValues(acquisition, 0, values)
    file = stored(acquisition, tmp_path)
    start = 512 * (file.word(9) - 1)
    records = np.frombuffer(file.content[start : start + 64], "<f4").reshape(4, 4)
    assert records[0, :3].tolist() == [1, 2, 3]
    assert records[0, 3] >= 0
    assert records[1:].tolist() == [[0, 0, 0, -1]] * 3


def test_a_scale_fits_the_coordinates(tmp_path: Path):
    acquisition = new(1, 2)
    _moxPY.moxSetPointValues(acquisition, 0, np.array([[1.0, -64000.0, 3.0], [np.nan] * 3]))
    assert stored(acquisition, tmp_path).scalar("POINT:SCALE") == -2.0


@pytest.mark.parametrize("value", [0.0, np.nan])
def test_a_scale_is_never_zero(tmp_path: Path, value: float):
    acquisition = new(1, 2)
    _moxPY.moxSetPointValues(acquisition, 0, np.full((2, 3), value))
    assert stored(acquisition, tmp_path).scalar("POINT:SCALE") < 0


@pytest.mark.parametrize(
    "label", ["x" * 255, "ü" * 127, "名" * 85, "🦿" * 63, "a b", "L/R", "a\\b"]
)
def test_labels_are_written_whole(tmp_path: Path, label: str):
    acquisition = new(0, 2)
    _moxPY.moxAppendPoint(acquisition, "marker", label, np.zeros((2, 3)))
    _moxPY.moxAppendAnalog(acquisition, label, np.zeros((2, 1)), label)
    file = stored(acquisition, tmp_path)
    assert file.texts("POINT:LABELS") == [label]
    assert file.texts("ANALOG:LABELS") == [label]
    assert file.texts("ANALOG:DESCRIPTIONS") == [label]


@pytest.mark.parametrize("values", [[1e9, -1e9], [1e-9, 2e-9], [0.1, 0.2], [0.0, 0.0]])
def test_values_of_any_size_are_read_back(tmp_path: Path, values: list[float]):
    acquisition = new(0, 2)
    _moxPY.moxAppendAnalog(acquisition, "Fz1", np.reshape(values, (2, 1)))
    after = written_again(acquisition, tmp_path)
    np.testing.assert_allclose(_moxPY.moxGetAnalogsValues(after).ravel(), values, rtol=1.2e-7)


@pytest.mark.parametrize("scale", [0.5, -0.25, 1e-6, 1e6])
@pytest.mark.parametrize("offset", [0, 7, -7, 32767, -32768, 40000])
def test_scale_and_offset_of_a_channel_are_kept(tmp_path: Path, scale: float, offset: int):
    acquisition = new(0, 3)
    _moxPY.moxAppendAnalog(acquisition, "Fz1", np.array([[1.0], [-2.5], [1000.0]]))
    _moxPY.moxSetAnalogScale(acquisition, 0, scale)
    _moxPY.moxSetAnalogOffset(acquisition, 0, offset)
    after = written_again(acquisition, tmp_path)
    info = _moxPY.moxGetAnalog(after, 0)[1]
    values = _moxPY.moxGetAnalogsValues(after).ravel()
    np.testing.assert_allclose(values, [1.0, -2.5, 1000.0], rtol=0, atol=1000 * 2.0**-22)
    assert info["scale"] == float(np.float32(scale))
    # -32768 and 40000 are no signed words that every reader takes for what they are.
    takes_digits = abs(offset * scale) > 3000
    assert info["offset"] == offset or (
        info["offset"] == 0.0 and (takes_digits or offset in (-32768, 40000))
    )


@pytest.mark.parametrize("scale", [0.0, float("nan"), float("inf")])
def test_a_scale_that_no_value_has_is_replaced_by_1(tmp_path: Path, scale: float):
    acquisition = new(0, 2)
    _moxPY.moxAppendAnalog(acquisition, "Fz1", np.array([[3.0], [4.0]]))
    _moxPY.moxSetAnalogScale(acquisition, 0, scale)
    after = written_again(acquisition, tmp_path)
    assert _moxPY.moxGetAnalogsValues(after).ravel().tolist() == [3.0, 4.0]
    assert _moxPY.moxGetAnalog(after, 0)[1]["scale"] == 1.0


def test_channel_255_and_256_are_in_two_lists(tmp_path: Path):
    file = stored(filled(300, 1, 300, 1), tmp_path)
    for group in ("POINT", "ANALOG"):
        assert len(file.texts(f"{group}:LABELS")) == 255
        assert len(file.texts(f"{group}:LABELS2")) == 45
    assert len(file.values("ANALOG:SCALE")) == 255
    assert len(file.values("ANALOG:SCALE2")) == 45


def test_kinds_of_more_than_255_points_go_on(tmp_path: Path):
    acquisition = new(0, 1)
    for number in range(260):
        _moxPY.moxAppendPoint(acquisition, "angle", f"A{number}", np.ones((1, 3)))
    file = stored(acquisition, tmp_path)
    assert (len(file.texts("POINT:ANGLES")), len(file.texts("POINT:ANGLES2"))) == (255, 5)
    after = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert len(_moxPY.moxGetAngles(after)[0]) == 260


def test_events_of_more_than_255_go_on(tmp_path: Path):
    acquisition = new(1, 2)
    for number in range(300):
        _moxPY.moxAppendEvent(acquisition, "Foot Strike", number / 8, "Left")
    file = stored(acquisition, tmp_path)
    assert (file.count("EVENT:USED"), len(file.texts("EVENT:LABELS2"))) == (300, 45)
    after = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert _moxPY.moxGetEventsValues(after)[0].tolist() == [n / 8 for n in range(300)]


def test_as_many_analog_values_as_a_frame_can_hold(tmp_path: Path):
    assert stored(filled(0, 1, 7, 9362), tmp_path).word(3) == 65534


def test_the_longest_gap(tmp_path: Path):
    acquisition = new(1, 2)
    _moxPY.moxSetMaxInterpolationGap(acquisition, 65535)
    assert stored(acquisition, tmp_path).word(6) == 65535


def test_a_first_frame_beyond_16_bits_comes_back(tmp_path: Path):
    acquisition = new(1, 2)
    _moxPY.moxSetFirstFrame(acquisition, 70000)
    after = written_again(acquisition, tmp_path)
    assert _moxPY.moxGetFirstFrame(after) == 70000.0
