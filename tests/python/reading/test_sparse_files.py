"""Files without points, without analog channels, without both, with one frame or with none."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog
from support.read_c3d import read_bytes, read_c3d, track

EMPTY_ANALOG_INFO = {
    "units": {}, "label": {}, "offset": {}, "scale": {}, "description": {}, "gain": {},
}  # fmt: skip


def assert_no_points(acquisition: Any) -> None:
    assert _moxPY.moxGetPoints(acquisition) == [{}, {}]
    for reader in ("Markers", "Angles", "Forces", "Moments", "Powers"):
        assert getattr(_moxPY, f"moxGet{reader}")(acquisition) == [{}, {}]
        assert getattr(_moxPY, f"moxGet{reader}Values")(acquisition).shape == ()
    assert _moxPY.moxGetPointsValues(acquisition).shape == ()
    assert _moxPY.moxGetPointNumber(acquisition) == 0.0
    assert _moxPY.moxGetPointsUnit(acquisition, "Markers") == ""


def assert_no_analogs(acquisition: Any) -> None:
    values, info = _moxPY.moxGetAnalogs(acquisition)
    assert values == {}
    assert {key: info[key] for key in EMPTY_ANALOG_INFO} == EMPTY_ANALOG_INFO
    assert _moxPY.moxGetAnalogsValues(acquisition).shape == ()
    assert _moxPY.moxGetAnalogNumber(acquisition) == 0.0


def test_a_file_without_points(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, analogs={"A": [1, 2, 3, 4]}, samples_per_frame=2)
    assert_no_points(acquisition)
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition)[:, 0], [1, 2, 3, 4])
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 2.0
    assert _moxPY.moxGetPointFrequency(acquisition) == 100.0


def test_a_file_without_points_that_counts_no_frames(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, analogs={"A": [1, 2, 3, 4]}, samples_per_frame=2, parameters={"POINT:FRAMES": 0}
    )  # fmt: skip
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition)[:, 0], [1, 2, 3, 4])


def test_a_file_without_analogs(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(3)})
    assert_no_analogs(acquisition)
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(acquisition), track(3))
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 3.0 * (
        _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition) or 1.0
    )


@pytest.mark.parametrize("frames", [0, 5])
def test_a_file_with_neither(tmp_path: Path, frames: int) -> None:
    acquisition = read_c3d(tmp_path, frames=frames)
    assert_no_points(acquisition)
    assert_no_analogs(acquisition)


def test_a_file_with_rotations_only(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, rotations={"pelvis": np.tile(np.eye(4), (6, 1, 1))}, rate=85.0)
    assert_no_points(acquisition)
    assert_no_analogs(acquisition)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 6.0
    assert _moxPY.moxGetPointFrequency(acquisition) == 85.0


def test_rotations_behind_the_samples_are_no_samples(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(40)}, analogs={"B": np.arange(80)}, samples_per_frame=2,
        rotations={"pelvis": np.tile(np.eye(4), (40, 1, 1))},
    )  # fmt: skip
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(acquisition), track(40))
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition)[:, 0], np.arange(80))


def test_one_frame_gives_arrays_of_three_and_a_matrix_of_one_row(tmp_path: Path) -> None:
    points = {"A": [[1, 2, 3]], "B": [[4, 5, 6]]}
    acquisition = read_c3d(tmp_path, points)
    values = _moxPY.moxGetPoints(acquisition)[0]
    assert values["A"].shape == (3,)
    assert values["B"].tolist() == [4.0, 5.0, 6.0]
    assert _moxPY.moxGetPoint(acquisition, "B")[0].tolist() == [4.0, 5.0, 6.0]
    assert _moxPY.moxGetPointsValues(acquisition).tolist() == [[1, 2, 3, 4, 5, 6]]


def test_one_analog_sample_is_a_number_and_a_matrix_of_one_row(tmp_path: Path) -> None:
    channels = [Analog("A", [1.5]), Analog("B", [2.5])]
    acquisition = read_c3d(tmp_path, {"P": [[1, 2, 3]]}, analogs=channels)
    assert _moxPY.moxGetAnalogs(acquisition)[0] == {"A": 1.5, "B": 2.5}
    assert type(_moxPY.moxGetAnalog(acquisition, "B")[0]) is float
    assert _moxPY.moxGetAnalogsValues(acquisition).tolist() == [[1.5, 2.5]]


def test_several_analog_samples_of_one_frame_are_an_array(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"P": [[1, 2, 3]]}, analogs={"A": [1, 2, 3]}, samples_per_frame=3
    )  # fmt: skip
    np.testing.assert_array_equal(_moxPY.moxGetAnalogs(acquisition)[0]["A"], [1.0, 2.0, 3.0])


def test_no_frames_keep_the_channels(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": np.empty((0, 3)), "B": np.empty((0, 3))}, analogs={"C": []},
        samples_per_frame=2, header={"first_frame": 0, "last_frame": 0},
    )  # fmt: skip
    values, info = _moxPY.moxGetPoints(acquisition)
    assert {name: array.shape for name, array in values.items()} == {"A": (0, 3), "B": (0, 3)}
    assert info["label"] == {"A": "A", "B": "B"}
    assert _moxPY.moxGetPointsValues(acquisition).shape == (0, 6)
    assert _moxPY.moxGetAnalogsValues(acquisition).shape == (0, 1)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 0.0


def test_the_smallest_file_of_all(tmp_path: Path) -> None:
    # A header and one block of parameters that holds no record.
    header = bytearray(512)
    header[:2] = b"\x02\x50"
    acquisition = read_bytes(tmp_path, bytes(header) + b"\x01\x50\x01\x54" + bytes(508))
    assert_no_points(acquisition)
    assert_no_analogs(acquisition)
