"""Files with odd content, and what becomes of it when they are written."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import (
    Analog,
    Group,
    HeaderEvent,
    Parameter,
    byte,
    c3d_bytes,
    integer,
    real,
    text,
)
from support.stored_file import StoredFile
from support.ways import Way
from writing.parameter_comparison import parameter_differences
from writing.store_comparison import store_differences
from writing.written import write

TRACK = np.arange(12.0).reshape(4, 3) + 1


def rewritten(folder: Path, way: Way, points: Any = (), **options: Any) -> StoredFile:
    """The written file; store and parameters came back as they were."""
    content = c3d_bytes(points, **options)
    (folder / "source.c3d").write_bytes(content)
    acquisition = way.read(folder / "source.c3d")
    written = write(acquisition, folder / "written.c3d", content)
    before = way.read(folder / "source.c3d")
    after = way.read(folder / "written.c3d")
    rounded = options.get("storage") == "integer"
    # Windows-1252 becomes UTF-8 where its list is wide enough.
    ignored = ["Format/Header/Parameters@Encoding"]
    assert store_differences(before, after, ignored, as_singles=rounded) == []
    assert parameter_differences(content, written) == []
    return StoredFile(written)


def test_windows_texts_come_back(tmp_path: Path, way: Way):
    file = rewritten(
        tmp_path, way, {b"M\xfcller": TRACK}, point_descriptions=[b"Fu\xdf"],
        parameters={"MINE:TEXT": b"m/s\xb2", "MINE:TEXTS": [b"\xe9", b"abc"]},
    )  # fmt: skip
    assert file.texts("POINT:LABELS") == ["Müller"]
    assert file.texts("POINT:DESCRIPTIONS") == ["Fuß"]
    assert file.texts("MINE:TEXTS") == ["é", "abc"]


def test_windows_names_and_texts_of_full_length_come_back(tmp_path: Path, way: Way):
    name, texts = b"\xe9" * 127, [b"\xe9" * 200, b"abc"]
    group = Group(name, 40, [integer(b"\xfc" * 127, [1]), text("TEXTS", texts)])
    file = rewritten(tmp_path, way, {"A": TRACK}, groups=[group])
    assert name in file.content
    assert texts[0] in file.content


def test_a_single_windows_character_stays_one(tmp_path: Path, way: Way):
    letter = Parameter("LETTER", -1, (), b"\xe9")
    file = rewritten(tmp_path, way, {"A": TRACK}, parameters={"MINE:LETTER": letter})
    assert file.parameters["MINE:LETTER"].dims == ()


def test_long_windows_texts_stay_when_another_one_changes(tmp_path: Path, way: Way):
    points = {b"\xe9" * 200: TRACK, "A": TRACK}
    content = c3d_bytes(points, point_descriptions=["a", "b"])
    (tmp_path / "source.c3d").write_bytes(content)
    acquisition = way.read(tmp_path / "source.c3d")
    _moxPY.moxSetPointLabel(acquisition, "A", "Ü")
    file = StoredFile(write(acquisition, tmp_path / "written.c3d", content))
    assert file.texts("POINT:LABELS") == ["é" * 200, "Ü"]


def test_channels_without_labels_and_frames_stay(tmp_path: Path, way: Way):
    analogs = [Analog("", np.arange(4)), Analog("", np.arange(4))]
    content = c3d_bytes({"": TRACK}, analogs=analogs)
    (tmp_path / "source.c3d").write_bytes(content)
    acquisition = way.read(tmp_path / "source.c3d")
    _moxPY.moxSetFrameNumber(acquisition, 0)
    file = StoredFile(write(acquisition, tmp_path / "written.c3d", content))
    assert file.parameters["POINT:LABELS"].dims == (1, 1)
    assert file.parameters["ANALOG:LABELS"].dims == (1, 2)
    again = way.read(tmp_path / "written.c3d")
    assert _moxPY.moxGetAnalogNumber(again) == 2.0


def test_equal_and_empty_labels_stay(tmp_path: Path, way: Way):
    points = [("A", TRACK), ("A", TRACK + 1), ("", TRACK + 2), ("L/R", TRACK + 3)]
    assert rewritten(tmp_path, way, points).texts("POINT:LABELS") == ["A", "A", "", "L/R"]


def test_equal_and_empty_labels_of_channels_stay(tmp_path: Path, way: Way):
    analogs = [Analog(label, np.arange(4)) for label in ("Fz", "Fz", "", "a\\b")]
    file = rewritten(tmp_path, way, {"A": TRACK}, analogs=analogs)
    assert file.texts("ANALOG:LABELS") == ["Fz", "Fz", "", "a\\b"]


def test_only_rotations(tmp_path: Path, way: Way):
    transforms = np.tile(np.eye(4), (4, 1, 1))
    transforms[:, :3, 3] = TRACK
    file = rewritten(tmp_path, way, rotations={"Pelvis": transforms, "Thorax": transforms * 2})
    assert file.count("ROTATION:USED") == 2
    start = 512 * (file.count("ROTATION:DATA_START") - 1)
    samples = np.frombuffer(file.content[start : start + 8 * 68], "<f4").reshape(4, 2, 17)
    columns = transforms.transpose(0, 2, 1).reshape(4, 16)
    np.testing.assert_array_equal(samples[:, 0, :16], columns)
    assert (samples[..., 16] == 0).all()


def test_only_analogs(tmp_path: Path, way: Way):
    file = rewritten(tmp_path, way, analogs=[Analog("Fz", np.arange(12))], samples_per_frame=3)
    assert (file.word(2), file.word(3), file.word(10)) == (0, 3, 3)


@pytest.mark.parametrize(("format_word", "offset"), [("UNSIGNED", 32768), ("SIGNED", -32768)])
@pytest.mark.parametrize("storage", ["integer", "real"])
def test_offsets_of_both_signs(
    tmp_path: Path, way: Way, format_word: str, offset: int, storage: str
):
    raw = np.array([0, 1, 2, 65535 if offset > 0 else -1])
    analogs = [Analog("Fz", raw, offset=offset, scale=0.5)]
    rewritten(tmp_path, way, {"A": TRACK}, analogs=analogs, analog_format=format_word, bits=16,
              storage=storage)  # fmt: skip


def test_an_offset_as_a_real(tmp_path: Path, way: Way):
    rewritten(
        tmp_path, way, {"A": TRACK}, analogs=[Analog("Fz", np.arange(4))],
        parameters={"ANALOG:OFFSET": np.array([0.5], np.float32)},
    )  # fmt: skip


def test_groups_with_any_id_keep_it(tmp_path: Path, way: Way):
    groups = [Group("LATE", 99, [integer("A", [1, 2])]), Group("mixed_Case", 50, [real("b", 1.5)])]
    file = rewritten(tmp_path, way, {"A": TRACK}, groups=groups)
    assert [file.groups[name].id for name in ("LATE", "MIXED_CASE")] == [-99, -50]
    assert file.groups["MIXED_CASE"].name == "mixed_Case"


def test_locks_and_descriptions_of_groups_stay(tmp_path: Path, way: Way):
    group = Group("MINE", 9, [text("A", "b")], locked=True, description="üben")
    file = rewritten(tmp_path, way, {"A": TRACK}, groups=[group])
    assert file.groups["MINE"].locked
    assert file.groups["MINE"].description == "üben".encode()


def test_reserved_bytes_of_the_header_stay(tmp_path: Path, way: Way):
    patches = {40: b"\x01\x02\x03", 500: b"\x04"}
    file = rewritten(tmp_path, way, {"A": TRACK}, header_patches=patches)
    assert file.content[40:43] == b"\x01\x02\x03"
    assert file.content[500] == 4


def test_header_events_stay(tmp_path: Path, way: Way):
    events = [HeaderEvent("LHS ", 0.25, 1), HeaderEvent("RTO2", 0.5, 0)]
    file = rewritten(tmp_path, way, {"A": TRACK}, header_events=events)
    assert file.word(151) == 2
    assert [file.header_real(153), file.header_real(155)] == [0.25, 0.5]
    assert file.content[376:378] == b"\x01\x00"
    assert file.content[396:404] == b"LHS RTO2"


def test_labels_of_header_events_keep_every_letter(tmp_path: Path, way: Way):
    events = [HeaderEvent(b"RF\xf6T", 0.25), HeaderEvent(b"\xe9\xe9\xe9\xe9", 0.5)]
    file = rewritten(tmp_path, way, {"A": TRACK}, header_events=events)
    assert file.content[396:404] == b"RF\xf6T\xe9\xe9\xe9\xe9"


def test_header_events_are_not_doubled_in_the_group(tmp_path: Path, way: Way):
    file = rewritten(tmp_path, way, {"A": TRACK}, header_events=[HeaderEvent("LHS1", 0.25)])
    assert file.count("EVENT:USED") == 0


@pytest.mark.parametrize("value", [7, -1])
def test_a_single_byte_stays_a_byte(tmp_path: Path, way: Way, value: int):
    file = rewritten(tmp_path, way, {"A": TRACK}, parameters={"MINE:ONE": byte("ONE", value)})
    assert file.parameters["MINE:ONE"].type == 1


@pytest.mark.parametrize("dims", [(), (1,), (1, 1)])
def test_single_values_keep_their_dimensions(tmp_path: Path, way: Way, dims: tuple[int, ...]):
    parameter = real("ONE", 1.5, dims=dims)
    file = rewritten(tmp_path, way, {"A": TRACK}, parameters={"MINE:ONE": parameter})
    assert file.parameters["MINE:ONE"].dims == dims


def test_points_that_are_all_marked_as_not_seen_stay_visible(tmp_path: Path, way: Way):
    records = np.column_stack([TRACK, np.full(4, -1.0)])
    content = c3d_bytes({"A": records})
    (tmp_path / "source.c3d").write_bytes(content)
    acquisition = way.read(tmp_path / "source.c3d")
    write(acquisition, tmp_path / "written.c3d", content)
    after = way.read(tmp_path / "written.c3d")
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(after), TRACK)


@pytest.mark.parametrize("scale", [0.01, 3.0])
def test_the_magnitude_of_the_scale_stays_with_the_residuals(
    tmp_path: Path, way: Way, scale: float
):
    file = rewritten(tmp_path, way, {"A": TRACK}, residuals={"A": [773, 1, 0, 32767]}, scale=scale)
    assert file.scalar("POINT:SCALE") == -float(np.float32(scale))
