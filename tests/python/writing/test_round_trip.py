"""What was read and written comes back as it was."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from support.c3d_bytes import C3DFile
from support.independent_readers import Recording, read_with_c3d, read_with_ezc3d
from support.stored_file import StoredFile
from support.ways import Way
from writing.parameter_comparison import parameter_differences
from writing.store_comparison import store_differences
from writing.trials import FORMATS, LABELS, RATIO, rich_file, track, words
from writing.written import write

every_format = pytest.mark.parametrize(("processor", "storage"), FORMATS)
every_reader = pytest.mark.parametrize("reader", [read_with_ezc3d, read_with_c3d])


def read(content: bytes, path: Path, way: Way) -> Any:
    path.write_bytes(content)
    return way.read(path)


def rewritten(file: C3DFile, folder: Path, way: Way) -> bytes:
    """A file of this content after it was read and written."""
    content = file.to_bytes()
    return write(read(content, folder / "source.c3d", way), folder / "written.c3d", content)


@every_format
def test_the_store_comes_back(tmp_path: Path, way: Way, processor: str, storage: str):
    content = rich_file(processor, storage).to_bytes()
    before = read(content, tmp_path / "source.c3d", way)
    write(before, tmp_path / "written.c3d", content)
    after = way.read(tmp_path / "written.c3d")
    before = way.read(tmp_path / "source.c3d")
    assert store_differences(before, after) == []


@every_format
def test_groups_and_parameters_come_back(tmp_path: Path, way: Way, processor: str, storage: str):
    file = rich_file(processor, storage)
    assert parameter_differences(file.to_bytes(), rewritten(file, tmp_path, way)) == []


@every_format
def test_coordinates_are_written_as_reals(tmp_path: Path, way: Way, processor: str, storage: str):
    content = rewritten(rich_file(processor, storage), tmp_path, way)
    layout = rich_file("intel", "real").layout()
    stored = samples_of(content, layout.frame_bytes)
    for number in range(len(LABELS)):
        expected = np.nan_to_num(track(number)).astype(np.float32)
        np.testing.assert_array_equal(stored[:, 4 * number : 4 * number + 3], expected)


@every_format
def test_fourth_words_are_kept(tmp_path: Path, way: Way, processor: str, storage: str):
    content = rewritten(rich_file(processor, storage), tmp_path, way)
    stored = samples_of(content, rich_file("intel", "real").layout().frame_bytes)
    for number in range(len(LABELS)):
        np.testing.assert_array_equal(stored[:, 4 * number + 3], words(number))


@every_format
def test_analog_counts_are_kept(tmp_path: Path, way: Way, processor: str, storage: str):
    file = rich_file(processor, storage)
    content = rewritten(file, tmp_path, way)
    stored = samples_of(content, rich_file("intel", "real").layout().frame_bytes)
    channels = len(file.analog_list)
    samples = stored[:, 4 * len(LABELS) :].reshape(-1, channels)
    for number, channel in enumerate(file.analog_list):
        np.testing.assert_array_equal(samples[:, number], channel.raw)


def samples_of(content: bytes, frame_bytes: int) -> Any:
    """(frame, real) of a file in Intel order, found with its header alone."""
    header = StoredFile(content)
    frames = header.word(5) - header.word(4) + 1
    start = 512 * (header.word(9) - 1)
    reals = np.frombuffer(content[start : start + frames * frame_bytes], "<f4")
    return reals.reshape(frames, -1)


@every_format
def test_a_second_writing_gives_the_same_bytes(
    tmp_path: Path, way: Way, processor: str, storage: str
):
    first = rewritten(rich_file(processor, storage), tmp_path, way)
    again = read(first, tmp_path / "first.c3d", way)
    assert write(again, tmp_path / "second.c3d", first) == first


def test_an_acquisition_can_be_written_twice(tmp_path: Path, way: Way):
    content = rich_file("mips", "integer").to_bytes()
    acquisition = read(content, tmp_path / "source.c3d", way)
    first = write(acquisition, tmp_path / "first.c3d", content)
    assert write(acquisition, tmp_path / "second.c3d", content) == first


def test_intel_files_with_reals_keep_every_byte(tmp_path: Path, way: Way):
    content = rich_file("intel", "real", point_descriptions=LABELS).to_bytes()
    acquisition = read(content, tmp_path / "source.c3d", way)
    assert write(acquisition, tmp_path / "written.c3d", content) == content


@every_reader
@every_format
def test_other_readers_see_the_same(
    tmp_path: Path, way: Way, processor: str, storage: str, reader: Callable[[Path], Recording]
):
    file = rich_file(processor, storage, rotations=(), parameters={"ROTATION": None})
    content = rewritten(file, tmp_path, way)
    assert len(content) % 512 == 0
    recording = reader(tmp_path / "written.c3d")
    expected = np.stack([track(number) for number in range(len(LABELS))], axis=1)
    np.testing.assert_array_equal(recording.points, expected)
    for number, channel in enumerate(file.analog_list):
        values = (np.asarray(channel.raw) - channel.offset) * np.float32(channel.scale) * 0.5
        # The readers calculate with singles, and one takes offsets without their sign.
        if channel.offset >= 0 or reader is read_with_c3d:
            np.testing.assert_allclose(recording.analogs[:, number], values, rtol=1e-5, atol=1e-6)
    assert recording.labels("POINT") == LABELS
    assert recording.labels("ANALOG") == [channel.label for channel in file.analog_list]
    assert (recording.rate, recording.analog_rate) == (120.0, 120.0 * RATIO)
    assert recording.first_frame == 61


def test_another_reader_sees_the_same_rotations(tmp_path: Path, way: Way):
    rewritten(rich_file("intel", "real"), tmp_path, way)
    source = read_with_ezc3d(tmp_path / "source.c3d")
    written = read_with_ezc3d(tmp_path / "written.c3d")
    assert written.rotations is not None
    assert written.rotations.shape[1] == 2
    np.testing.assert_array_equal(written.rotations, source.rotations)


def test_another_reader_sees_the_same_events(tmp_path: Path, way: Way):
    rewritten(rich_file("intel", "real"), tmp_path, way)
    recording = read_with_ezc3d(tmp_path / "written.c3d")
    assert recording.texts("EVENT", "LABELS") == ["Foot Strike", "Foot Off", "Foot Strike"]
    np.testing.assert_allclose(recording.event_times, [0.55, 60.5, 0.5625], rtol=1e-6)
