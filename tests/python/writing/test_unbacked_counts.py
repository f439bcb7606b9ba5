"""What no bytes of a file back is not made true: by reading it, or by writing what was read."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import C3DFile, c3d_bytes
from support.read_c3d import read_bytes, read_c3d

FRAMES = 40
SEGMENTS = [f"S{n}" for n in range(8)]  # a row of them is longer than a block's padding
ROW_BYTES = len(SEGMENTS) * 17 * 4


def rotations(rows: int) -> dict[str, Any]:
    transforms = np.tile(np.eye(4), (rows, 1, 1))
    transforms[:, :3, 3] = np.arange(3.0 * rows).reshape(rows, 3)
    return {label: transforms + n for n, label in enumerate(SEGMENTS)}


def written(acquisition: Any, folder: Path) -> tuple[Any, int]:
    """The acquisition in the file that is written, and the file's length."""
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(path))
    return _moxPY.moxReadAcquisition(str(path)), path.stat().st_size


def rows_of(acquisition: Any) -> Any:
    return np.stack(list(_moxPY.moxGetRotations(acquisition)[0].values()))


def assert_same_rotations(actual: Any, expected: Any) -> None:
    np.testing.assert_array_equal(rows_of(actual), rows_of(expected))


@pytest.mark.parametrize("frames", [1e6, 4e9, 1e15])
def test_frames_of_one_row_of_rotations(tmp_path: Path, frames: float) -> None:
    content = c3d_bytes(rotations=rotations(1), parameters={"POINT:LONG_FRAMES": frames})
    acquisition = read_bytes(tmp_path, content)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 1
    assert rows_of(acquisition).shape == (len(SEGMENTS), 1, 4, 4)
    again, length = written(acquisition, tmp_path)
    assert length <= len(content) + 2048
    assert _moxPY.moxGetPointFrameNumber(again) == 1
    assert_same_rotations(again, acquisition)


def test_a_frame_of_which_not_all_rotations_are_there_counts(tmp_path: Path) -> None:
    content = c3d_bytes(rotations=rotations(7), parameters={
        "POINT:LONG_FRAMES": 1e6, "ROTATION:RATIO": 2})  # fmt: skip
    # The file ends behind the seventh row: the last frame has one of two.
    acquisition = read_bytes(tmp_path, content[: len(content) - (-7 * ROW_BYTES) % 512])
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 4
    again, _ = written(acquisition, tmp_path)
    assert _moxPY.moxGetPointFrameNumber(again) == 4
    assert_same_rotations(again, acquisition)


def entry(acquisition: Any, name: str) -> Any:
    return _moxPY.moxGetMetaData(acquisition, "ROTATION", name)["info"]["values"]


@pytest.mark.parametrize("rows", [1, 2, 3, 7])
def test_rotations_that_end_in_a_frame_keep_their_rate(tmp_path: Path, rows: int) -> None:
    file = C3DFile(
        {"A": np.ones((4, 3))}, rate=100.0, rotations=rotations(12), rotation_ratio=3,
        parameters={"ROTATION:RATIO": 3, "ROTATION:RATE": 300.0, "NOTES:TEXT": ["x" * 100] * 100},
    )  # fmt: skip
    content = file.to_bytes()[: file.layout().rotation_offset + rows * ROW_BYTES]
    again, _ = written(read_bytes(tmp_path, content), tmp_path)
    assert rows_of(again).shape == (len(SEGMENTS), rows, 4, 4)
    assert (entry(again, "RATIO"), entry(again, "RATE")) == (3, 300.0)
    assert _moxPY.moxGetPointFrameNumber(again) == 4


def cut(rows: int, **options: Any) -> bytes:
    """A file of one channel and rotations in each of its frames, of which it holds the first."""
    file = C3DFile(analogs={"A": np.arange(FRAMES)}, rotations=rotations(FRAMES), **options)
    return file.to_bytes()[: file.layout().rotation_offset + rows * ROW_BYTES]


@pytest.mark.parametrize("rows", [1, 10, FRAMES - 1])
@pytest.mark.parametrize("ratio", [1, 65535])
def test_rotations_that_a_file_lacks_are_not_made_up(tmp_path: Path, rows: int, ratio: int) -> None:
    content = cut(rows, parameters={"ROTATION:RATIO": ratio})
    acquisition = read_bytes(tmp_path, content)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == FRAMES
    assert rows_of(acquisition).shape == (len(SEGMENTS), rows, 4, 4)
    again, length = written(acquisition, tmp_path)
    assert length <= len(content) + 2048
    assert _moxPY.moxGetPointFrameNumber(again) == FRAMES
    assert_same_rotations(again, acquisition)
    assert written(again, tmp_path)[1] == length


def test_a_frame_more_gets_no_more_rotations_than_the_file_has(tmp_path: Path) -> None:
    acquisition = read_bytes(tmp_path, cut(3, parameters={"ROTATION:RATIO": 65535}))
    _moxPY.moxSetFrameNumber(acquisition, FRAMES + 1)
    assert rows_of(acquisition).shape == (len(SEGMENTS), 3 * (FRAMES + 1), 4, 4)


def test_frames_that_a_script_sets_have_all_their_rotations(tmp_path: Path) -> None:
    acquisition = read_bytes(tmp_path, cut(10))
    _moxPY.moxSetFrameNumber(acquisition, FRAMES)
    assert rows_of(acquisition).shape == (len(SEGMENTS), FRAMES, 4, 4)
    again, _ = written(acquisition, tmp_path)
    assert_same_rotations(again, acquisition)


CLAIMS: dict[str, dict[str, Any]] = {
    "frames": {"parameters": {"POINT:LONG_FRAMES": 4e9}},
    "samples of no channel": {
        "parameters": {"POINT:LONG_FRAMES": 4e9, "ANALOG:RATE": 6e6},
        "header": {"samples_per_frame": 65535},
    },
    "rotations": {"parameters": {"POINT:LONG_FRAMES": 4e9, "ROTATION:USED": 65535,
                                 "ROTATION:DATA_START": 4, "ROTATION:RATIO": 65535}},
}  # fmt: skip


@pytest.mark.parametrize("claims", CLAIMS.values(), ids=CLAIMS)
def test_claims_without_anything_stay_claims(tmp_path: Path, claims: dict[str, Any]) -> None:
    acquisition = read_c3d(tmp_path, **claims)
    again, length = written(acquisition, tmp_path)
    assert length <= 8 * 512
    for each in (acquisition, again):
        assert _moxPY.moxGetPointFrameNumber(each) == 4e9
        assert _moxPY.moxGetRotations(each) == [{}, None]
        assert _moxPY.moxGetPoints(each)[0] == {}
        assert _moxPY.moxGetAnalogs(each)[0] == {}
        assert np.size(_moxPY.moxGetPointsValues(each)) <= 1
        assert np.size(_moxPY.moxGetAnalogsValues(each)) <= 1
