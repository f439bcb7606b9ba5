"""Files cut at every length: what is there is read, or the text says where it ends."""

from __future__ import annotations

import re
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, C3DFile, Event, Platform
from support.read_c3d import analogs_of, points_of, read_bytes, track

# What a text about a broken file names: the place, and what belongs there.
PLACE = re.compile(r"byte \d+")
FRAMES = 12
POINTS = {"LASI": track(FRAMES), "RASI": track(FRAMES, 50)}
ANALOGS = [Analog("Fz", np.arange(2 * FRAMES), scale=0.5), Analog("EMG", np.arange(2 * FRAMES) + 7)]


def small_file(**options: Any) -> C3DFile:
    return C3DFile(POINTS, analogs=ANALOGS, samples_per_frame=2, scale=0.25, **options)


def outcome(folder: Path, content: bytes) -> Any:
    """The acquisition, or the text of the refusal."""
    try:
        return read_bytes(folder, content)
    except RuntimeError as failure:
        return str(failure)


def assert_reads_frames(acquisition: Any, frames: int) -> None:
    assert not isinstance(acquisition, str), acquisition
    assert _moxPY.moxGetPointFrameNumber(acquisition) == float(frames)
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == 2.0 * frames
    for label, values in POINTS.items():
        expected = values[:frames] if frames != 1 else values[0]
        np.testing.assert_array_equal(points_of(acquisition)[label], expected)
    np.testing.assert_array_equal(analogs_of(acquisition)["EMG"], ANALOGS[1].raw[: 2 * frames])


def assert_says_where(text: str, folder: Path) -> None:
    if text != f"No importer accepts the file '{folder / 'trial.c3d'}'":
        assert PLACE.search(text), text


@pytest.mark.parametrize("storage", ["integer", "real"])
def test_every_length_of_the_data_gives_the_frames_that_are_there(
    tmp_path: Path, storage: str
) -> None:
    file = small_file(storage=storage)
    content, layout = file.to_bytes(), file.layout()
    for length in range(layout.data_offset, len(content)):
        frames = min(FRAMES, (length - layout.data_offset) // layout.frame_bytes)
        result = outcome(tmp_path, content[:length])
        if frames == 0:
            assert_says_where(result, tmp_path)
        else:
            assert_reads_frames(result, frames)


@pytest.mark.parametrize("storage", ["integer", "real"])
def test_every_length_before_the_data_is_refused_with_the_place(
    tmp_path: Path, storage: str
) -> None:
    file = small_file(storage=storage)
    content = file.to_bytes()
    for length in range(file.layout().data_offset):
        result = outcome(tmp_path, content[:length])
        assert isinstance(result, str), length
        assert_says_where(result, tmp_path)


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_every_length_of_a_file_with_everything(tmp_path: Path, processor: str) -> None:
    file = small_file(
        processor=processor,
        platforms=[Platform(channels=(1, 2, 1, 2, 1, 2))],
        events=[Event("Left", "Foot Strike", 0.05), Event("Right", "Foot Off", 0.07)],
        rotations={"pelvis": np.tile(np.eye(4), (FRAMES, 1, 1))},
    )
    content = file.to_bytes()
    for length in range(len(content)):
        result = outcome(tmp_path, content[:length])
        if isinstance(result, str):
            assert_says_where(result, tmp_path)
        else:
            assert 0 < _moxPY.moxGetPointFrameNumber(result) <= FRAMES


def test_a_cut_parameter_section_names_no_frames_that_are_not_there(tmp_path: Path) -> None:
    # The announced frames begin behind the end of the file.
    file = small_file()
    content = file.to_bytes()[: file.layout().data_offset]
    result = outcome(tmp_path, content)
    assert isinstance(result, str)
    assert str(len(content)) in result


def test_a_file_that_goes_on_behind_its_data_reads_the_same(tmp_path: Path) -> None:
    content = small_file().to_bytes()
    for extra in (1, 511, 512, 5000):
        assert_reads_frames(outcome(tmp_path, content + b"\xaa" * extra), FRAMES)
