"""Recordings that do not begin with their first frame."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.read_c3d import read_c3d, track


def first_frames(acquisition: Any) -> tuple[float, float]:
    first = _moxPY.moxGetFirstFrame(acquisition)
    return first, _moxPY.moxGetPoints(acquisition)[1]["firstFrame"]


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
@pytest.mark.parametrize("first", [1, 2, 101, 40_000])
def test_the_number_of_the_first_frame(tmp_path: Path, first: int, processor: str) -> None:
    # At 128 Hz the start time is exact, so that single precision gives whole numbers.
    acquisition = read_c3d(
        tmp_path, {"A": track(5)}, first_frame=first, rate=128.0, processor=processor
    )  # fmt: skip
    assert first_frames(acquisition) == (first - 1.0, float(first))
    assert _moxPY.moxGetLastFrame(acquisition) == first - 1.0 + 5 - 1


def test_the_first_frame_is_computed_in_single_precision(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(5)}, first_frame=233, rate=59.94006)
    rate = np.float32(59.94006)
    start = np.float32(232.0 / np.float64(rate))
    expected = float(np.float32(start * rate) + np.float32(1.0))
    assert _moxPY.moxGetPoints(acquisition)[1]["firstFrame"] == expected
    assert round(expected) == 233


def test_a_writer_that_counts_from_0(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(5)}, header={"first_frame": 0, "last_frame": 4}
    )  # fmt: skip
    assert first_frames(acquisition) == (0.0, 1.0)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 5.0


def test_a_first_frame_beyond_16_bits_comes_from_the_trial(tmp_path: Path) -> None:
    def low_and_high(number: int) -> list[int]:
        return [number & 0xFFFF, number >> 16]

    acquisition = read_c3d(
        tmp_path, {"A": track(64)}, rate=128.0,
        header={"first_frame": 65535, "last_frame": 65535},
        parameters={
            "TRIAL:ACTUAL_START_FIELD": low_and_high(70_001),
            "TRIAL:ACTUAL_END_FIELD": low_and_high(70_064),
        },
    )  # fmt: skip
    assert first_frames(acquisition) == (70_000.0, 70_001.0)


def test_every_point_starts_at_the_same_time(tmp_path: Path) -> None:
    points = {"A": track(5), "B": track(5), "C": track(5)}
    acquisition = read_c3d(
        tmp_path, points, first_frame=33, rate=128.0, parameters={"POINT:ANGLES": ["C"]}
    )  # fmt: skip
    # The first set of all is now an angle.
    assert _moxPY.moxGetPoints(acquisition)[1]["firstFrame"] == 33.0
    assert _moxPY.moxGetFirstFrame(acquisition) == 32.0
