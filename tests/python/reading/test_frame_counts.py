"""How many frames a file holds, by every way of saying so."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import byte, c3d_bytes
from support.read_c3d import points_of, read_c3d, track

# A point in integers takes 8 bytes a frame: a multiple of 64 frames fills the last block exactly.
LONG = 70_016


def long_track(frames: int) -> Any:
    """Counts up and starts anew, so that a misplaced frame shows."""
    frame = np.arange(frames) % 30_000
    return {"A": np.column_stack([frame, -frame, frame // 2]).astype(np.float64)}


def read_frames(folder: Path, frames: int, **options: Any) -> Any:
    points = long_track(frames)
    options = {"storage": "integer", "scale": 1.0, **options}
    return read_c3d(folder, points, **options), points["A"]


@pytest.mark.parametrize(
    "counts",
    [
        ("real",),
        ("long_frames", "integer"),
        ("long_frames",),
        ("integer", "trial"),
        ("wrapped", "trial"),
        ("integer",),  # saturated at 65535: the file's length decides
        ("wrapped",),
        (),
    ],
)
def test_more_frames_than_16_bits_count(tmp_path: Path, counts: tuple[str, ...]) -> None:
    acquisition, expected = read_frames(tmp_path, LONG, frame_counts=counts)
    np.testing.assert_array_equal(points_of(acquisition)["A"], expected)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == float(LONG)


@pytest.mark.parametrize("frames", [65_534, 65_535, 65_536, 65_537])
@pytest.mark.parametrize("counts", [("real",), ("long_frames",), ("integer", "trial")])
def test_the_edge_of_16_bits(tmp_path: Path, frames: int, counts: tuple[str, ...]) -> None:
    acquisition, expected = read_frames(tmp_path, frames, frame_counts=counts)
    np.testing.assert_array_equal(points_of(acquisition)["A"], expected)


def test_65535_frames_are_that_many_when_the_file_ends_there(tmp_path: Path) -> None:
    acquisition, expected = read_frames(tmp_path, 65_535, frame_counts=("integer",))
    # 65,535 frames leave room for one more in the last block, and nothing tells whether it is one.
    assert _moxPY.moxGetPointFrameNumber(acquisition) in (65_535.0, 65_536.0)
    np.testing.assert_array_equal(points_of(acquisition)["A"][:65_535], expected)


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_long_frames_in_every_byte_order(tmp_path: Path, processor: str) -> None:
    acquisition, expected = read_frames(
        tmp_path, LONG, frame_counts=("integer", "trial"), processor=processor
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["A"], expected)


def test_analog_samples_of_a_long_recording(tmp_path: Path) -> None:
    samples = np.arange(LONG * 2) % 1000
    acquisition = read_c3d(
        tmp_path, analogs={"A": samples}, samples_per_frame=2, storage="integer",
        frame_counts=("long_frames",),
    )  # fmt: skip
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition)[:, 0], samples)


@pytest.mark.parametrize("value", [50, 50.0, np.int8(50)])
def test_frames_of_any_type(tmp_path: Path, value: Any) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(50)}, parameters={"POINT:FRAMES": value})
    np.testing.assert_array_equal(points_of(acquisition)["A"], track(50))


def test_a_byte_count_is_unsigned(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(200)}, parameters={"POINT:FRAMES": byte("FRAMES", 200)}
    )  # fmt: skip
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 200.0


def test_an_integer_count_is_unsigned(tmp_path: Path) -> None:
    acquisition, expected = read_frames(tmp_path, 40_000)
    np.testing.assert_array_equal(points_of(acquisition)["A"], expected)


def test_long_frames_win_over_frames(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(64)}, parameters={"POINT:FRAMES": 3, "POINT:LONG_FRAMES": 64.0}
    )  # fmt: skip
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 64.0


def test_a_stale_trial_does_not_count_beside_a_good_frames(tmp_path: Path) -> None:
    stale = {"TRIAL:ACTUAL_START_FIELD": [1, 0], "TRIAL:ACTUAL_END_FIELD": [9000, 0]}
    acquisition = read_c3d(tmp_path, {"A": track(64)}, parameters=stale)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 64.0


def test_the_header_range_counts_when_there_is_no_frames(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(50)}, parameters={"POINT:FRAMES": None})
    np.testing.assert_array_equal(points_of(acquisition)["A"], track(50))


def test_the_length_counts_when_nothing_else_does(tmp_path: Path) -> None:
    # 32 frames of 16 bytes fill a block.
    acquisition = read_c3d(
        tmp_path, {"A": track(96)}, parameters={"POINT:FRAMES": None},
        header={"first_frame": 0, "last_frame": 0},
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["A"], track(96))


def test_frames_that_are_not_there_are_not_read(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(32)}, parameters={"POINT:FRAMES": 1149})
    np.testing.assert_array_equal(points_of(acquisition)["A"], track(32))


def test_the_padding_of_the_last_block_holds_no_frames(tmp_path: Path) -> None:
    content = c3d_bytes({"A": track(3)})
    assert len(content) % 512 == 0
    assert _moxPY.moxGetPointFrameNumber(read_c3d(tmp_path, {"A": track(3)})) == 3.0
