"""The test files themselves: bytes known in advance, and what independent readers see."""

from __future__ import annotations

import dataclasses
import io
import struct
import warnings
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from support.c3d_bytes import (
    Analog,
    C3DFile,
    Event,
    Group,
    HeaderEvent,
    Parameter,
    Platform,
    c3d_bytes,
    integer,
    parameters_first,
)
from support.number_formats import NUMBER_FORMATS

SMALLEST_HEADER = "02 50 01 00 02 00 01 00 02 00 0A 00 CD CC CC BD 03 00 02 00 00 00 C8 42"

SMALLEST_PARAMETERS = """
    01 50 01 54
    05 FF 50 4F 49 4E 54 03 00 00
    FC 01 55 53 45 44 07 00 02 00 01 00 00
    FB 01 53 43 41 4C 45 09 00 04 00 CD CC CC BD 00
    FC 01 52 41 54 45 09 00 04 00 00 00 C8 42 00
    F6 01 44 41 54 41 5F 53 54 41 52 54 07 00 02 00 03 00 00
    FA 01 46 52 41 4D 45 53 07 00 02 00 02 00 00
    06 01 4C 41 42 45 4C 53 0B 00 FF 02 04 01 4C 41 53 49 00
    05 01 55 4E 49 54 53 0A 00 FF 01 04 6D 6D 20 20 00
    06 FE 41 4E 41 4C 4F 47 03 00 00
    FC 02 55 53 45 44 07 00 02 00 01 00 00
    06 02 4C 41 42 45 4C 53 0B 00 FF 02 04 01 45 4D 30 31 00
    09 02 47 45 4E 5F 53 43 41 4C 45 09 00 04 00 00 00 80 3F 00
    05 02 53 43 41 4C 45 0A 00 04 01 01 0A D7 A3 3B 00
    06 02 4F 46 46 53 45 54 08 00 02 01 01 00 08 00
    05 02 55 4E 49 54 53 0B 00 FF 02 04 01 56 20 20 20 00
    FC 02 52 41 54 45 09 00 04 00 00 00 48 43 00
    0E FD 46 4F 52 43 45 5F 50 4C 41 54 46 4F 52 4D 03 00 00
    04 03 55 53 45 44 00 00 02 00 00 00 00
"""

SMALLEST_DATA = """
    00 00 C9 42 00 00 A2 C1 00 80 6D 44 00 40 41 44
    00 00 00 45 00 40 06 45
    00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 BF
    00 00 00 45 00 00 E7 44
"""

SMALLEST = C3DFile(
    {"LASI": [[100.5, -20.25, 950.0, 773], [0, 0, 0, -1]]},
    analogs=[Analog("EM01", [2048, 2148, 2048, 1848], scale=0.005, offset=2048)],
    header={"max_gap": 10},
    parameters={"POINT:DESCRIPTIONS": None, "ANALOG:DESCRIPTIONS": None},
)

VAX_BYTES = {
    0.0: "00 00 00 00",
    1.0: "80 40 00 00",
    -1.0: "80 C0 00 00",
    60.0: "70 43 00 00",
    100.0: "C8 43 00 00",
    0.1: "CC 3E CD CC",
    -0.083333336: "AA BE AB AA",
    3.14159274: "49 41 DB 0F",
}


def blocks(*sections: str) -> bytes:
    return b"".join(bytes.fromhex(section).ljust(512, b"\0") for section in sections)


def test_smallest_file_has_the_bytes_written_out_by_hand() -> None:
    expected = bytearray(blocks(SMALLEST_HEADER, SMALLEST_PARAMETERS, SMALLEST_DATA))
    expected[298:300] = bytes.fromhex("39 30")
    assert SMALLEST.to_bytes() == bytes(expected)


def test_layout_tells_where_the_sections_lie() -> None:
    layout = SMALLEST.layout()
    assert (layout.parameter_offset, layout.data_block, layout.data_offset) == (0x200, 3, 0x400)
    assert (layout.frame_bytes, layout.data_end) == (24, 0x430)


@pytest.mark.parametrize(("value", "expected"), VAX_BYTES.items())
def test_vax_reals_have_the_known_bytes(value: float, expected: str) -> None:
    assert NUMBER_FORMATS["dec"].reals(value) == bytes.fromhex(expected)


def test_vax_mantissa_that_rounds_up_carries_into_the_exponent() -> None:
    assert NUMBER_FORMATS["dec"].reals(1 - 2.0**-30) == NUMBER_FORMATS["dec"].reals(1.0)


def test_vax_reals_end_at_zero_and_at_two_to_the_127() -> None:
    dec = NUMBER_FORMATS["dec"]
    assert dec.reals(2.0**-128) == bytes.fromhex("80 00 00 00")
    assert dec.reals(2.0**-129) == bytes(4)
    with pytest.raises(ValueError, match=r"^F_floating ends below 2\*\*127$"):
        dec.reals(2.0**127)


def test_integer_storage_has_the_known_point_bytes() -> None:
    content = c3d_bytes({"LASI": [[100.5, -20.2, 950.0, 773]]}, storage="integer")
    assert content[0x400:0x408] == bytes.fromhex("ED 03 36 FF 1C 25 05 03")


@pytest.mark.parametrize(
    ("processor", "storage", "expected"),
    [
        ("intel", "integer", "05 03"),
        ("dec", "integer", "05 03"),
        ("mips", "integer", "03 05"),
        ("intel", "real", "00 40 41 44"),
        ("dec", "real", "41 45 00 40"),
        ("mips", "real", "44 41 40 00"),
    ],
)
def test_fourth_word_has_the_known_bytes(processor: str, storage: str, expected: str) -> None:
    file = C3DFile({"A": np.zeros((1, 3))}, residuals={"A": [773]}, processor=processor)
    file = dataclasses.replace(file, storage=storage)
    end = file.layout().data_end
    assert file.to_bytes()[:end].endswith(bytes.fromhex(expected))


def test_nan_becomes_an_invalid_sample() -> None:
    content = c3d_bytes({"A": [[1.0, np.nan, 3.0]]})
    assert content[0x400:0x410] == struct.pack("<4f", 0, 0, 0, -1)


def test_records_have_the_known_bytes_of_locks_and_descriptions() -> None:
    group = Group("POINT", 1, [integer("USED", 26, locked=True, description="n")])
    group.description = "3D"
    content = c3d_bytes(edit_groups=lambda groups: [group], end_mark="zero_name")
    expected = "05 FF 50 4F 49 4E 54 05 00 02 33 44 FC 01 55 53 45 44 08 00 02 00 1A 00 01 6E 00"
    assert content[0x204:].startswith(bytes.fromhex(expected))


def test_seven_dimensions_and_gaps_are_written_as_told() -> None:
    cube = Parameter("C", 1, (1, 1, 2, 1, 1, 1, 1), b"\x07\x08", gap=3)
    content = c3d_bytes(edit_groups=lambda groups: [Group("G", 5, [cube])], end_mark="zero_name")
    expected = "01 FB 47 03 00 00  01 05 43 11 00 01 07 01 01 02 01 01 01 01 07 08 00 EE EE EE 00"
    assert content[0x204:].startswith(bytes.fromhex(expected))


def test_lists_beyond_255_entries_go_on_in_numbered_parameters() -> None:
    labels = [f"P{n:03}" for n in range(511)]
    file = C3DFile({label: np.zeros((1, 3)) for label in labels})
    held = {parameter.name: parameter for parameter in file.all_groups()[0].parameters}
    assert [held[f"LABELS{part}"].dims for part in ("", "2", "3")] == [(4, 255), (4, 255), (4, 1)]
    assert held["LABELS2"].data.startswith(b"P255P256")
    assert held["LABELS3"].data == b"P510"


def test_frame_counts_tell_a_long_file_in_every_form() -> None:
    file = C3DFile(
        {"A": np.zeros((79_357, 3))},
        first_frame=233,
        frame_counts=("integer", "long_frames", "trial"),
    )
    groups = {group.name: group for group in file.all_groups()}
    held = {p.name: p.data.tolist() for g in groups.values() for p in g.parameters if p.type > 1}
    assert (held["FRAMES"], held["LONG_FRAMES"]) == ([65535], [79357.0])
    assert held["ACTUAL_START_FIELD"] == [233, 0]
    assert held["ACTUAL_END_FIELD"] == [14053, 1]
    assert len(file.to_bytes()) - file.layout().data_offset == -(-79_357 * 16 // 512) * 512


def test_sections_lie_where_they_are_put() -> None:
    content = c3d_bytes({"A": [[1, 2, 3]]}, parameter_block=11, data_block=20, filler=0xAA)
    assert content[0] == 11
    assert content[512:5120] == b"\xaa" * 4608
    assert content[5120:5124] == bytes.fromhex("01 50 01 54")
    assert content[19 * 512 :].startswith(struct.pack("<3f", 1, 2, 3))


def test_header_and_parameters_contradict_each_other_where_told() -> None:
    points = {"A": np.zeros((2, 3))}
    plain = c3d_bytes(points)
    content = c3d_bytes(points, header={"point_count": 7}, parameters={"POINT:FRAMES": 3})
    assert (plain[2:4], content[2:4]) == (b"\x01\x00", b"\x07\x00")
    assert b"USED\x07\x00\x02\x00\x01\x00\x00" in content
    assert b"FRAMES\x07\x00\x02\x00\x03\x00\x00" in content


def test_header_events_have_the_known_bytes() -> None:
    events = [HeaderEvent("LFS1", 1.0), HeaderEvent("RFO", 60.0, flag=0)]
    content = c3d_bytes(header_events=events, processor="mips")
    assert content[298:304] == bytes.fromhex("30 39 00 02 00 00")
    assert content[304:316] == bytes.fromhex("3F 80 00 00 42 70 00 00 00 00 00 00")
    assert content[376:379] == bytes.fromhex("01 00 00")
    assert content[396:408] == b"LFS1RFO \0\0\0\0"


def test_parameters_come_before_every_group() -> None:
    content = c3d_bytes({"A": np.zeros((1, 3))}, record_order=parameters_first)
    ids = []
    at = 0x204
    while True:
        length, group_id = struct.unpack_from("bb", content, at)
        ids.append(group_id)
        (step,) = struct.unpack_from("<H", content, at + 2 + abs(length))
        if step == 0:
            break
        at += 2 + abs(length) + step
    assert ids == sorted(ids, key=lambda group_id: group_id < 0)
    assert {-1, -2, -3} < set(ids)


def test_rotations_are_17_reals_a_sample_column_by_column() -> None:
    transforms = np.arange(32.0).reshape(2, 4, 4)
    transforms[1, 0, 0] = np.nan
    file = C3DFile(rotations={"PELVIS": transforms}, rotation_ratio=2)
    layout = file.layout()
    samples = np.frombuffer(file.to_bytes(), "<f4", 34, layout.rotation_offset).reshape(2, 17)
    assert file.frame_count == 1
    assert samples[0].tolist() == [*transforms[0].T.ravel(), 0.0]
    assert samples[1, -1] == -1.0


# ---- what other people's readers find in a typical file


@pytest.fixture
def typical() -> C3DFile:
    """Multiples of the scale, so that integer and real storage hold the same numbers."""
    frames = np.arange(30.0)[:, None]
    knee = frames * [1.5, -2.0, 0.5] + [10.0, 20.0, 900.0]
    knee[7] = np.nan
    counts = np.arange(120) % 50 + 2048
    return C3DFile(
        {"LKNE": knee, "RKNE": frames * [1.0, 2.0, 3.0]},
        scale=0.5,
        rate=50.0,
        first_frame=5,
        analogs=[
            Analog("Fz1", counts, scale=0.25, offset=2048, units="N"),
            Analog("EMG", counts - 2048, scale=0.5),
        ],
        gen_scale=2.0,
        analog_format="SIGNED",
        bits=16,
        platforms=[Platform(corners=np.arange(12.0).reshape(4, 3), origin=(1, 2, -3))],
        events=[Event("Left", "Foot Strike", 61.5, icon=1), Event("Right", "Foot Off", 0.25)],
        parameters={"POINT:ANGLES": ["RKNE"], "MINE:NUMBERS": [1.0, 2.0]},
    )


FORMATS = [(processor, storage) for processor in NUMBER_FORMATS for storage in ("real", "integer")]


# This reader refuses MIPS files.
@pytest.mark.parametrize(("processor", "storage"), [row for row in FORMATS if row[0] != "mips"])
def test_ezc3d_reads_the_values_that_were_written(
    typical: C3DFile, tmp_path: Path, processor: str, storage: str
) -> None:
    ezc3d = pytest.importorskip("ezc3d", reason="compares with a reader that is not installed")
    path = tmp_path / "typical.c3d"
    path.write_bytes(dataclasses.replace(typical, processor=processor, storage=storage).to_bytes())
    found = ezc3d.c3d(str(path))
    points = np.stack([values[:, :3] for _, values in typical.point_list])
    points[0, 7] = np.nan
    assert np.array_equal(found["data"]["points"][:3].transpose(1, 2, 0), points, equal_nan=True)
    counts = np.arange(120) % 50
    assert np.array_equal(found["data"]["analogs"][0], [counts * 0.5, counts * 1.0])
    point = found["parameters"]["POINT"]
    assert point["LABELS"]["value"] == ["LKNE", "RKNE"]
    assert point["ANGLES"]["value"] == ["RKNE"]
    assert found["parameters"]["EVENT"]["TIMES"]["value"].tolist() == [[1.0, 0.0], [1.5, 0.25]]
    corners = found["parameters"]["FORCE_PLATFORM"]["CORNERS"]["value"]
    assert corners[:, :, 0].T.tolist() == np.arange(12.0).reshape(4, 3).tolist()


@pytest.mark.parametrize(("processor", "storage"), FORMATS)
def test_c3d_reads_the_values_that_were_written(
    typical: C3DFile, processor: str, storage: str
) -> None:
    c3d: Any = pytest.importorskip("c3d", reason="compares with a reader that is not installed")
    content = dataclasses.replace(typical, processor=processor, storage=storage).to_bytes()
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        reader = c3d.Reader(io.BytesIO(content))
        frames = list(reader.read_frames())
    assert [number for number, _, _ in frames] == list(range(5, 35))
    points = np.stack([rows for _, rows, _ in frames], axis=1)
    expected = np.stack([values for _, values in typical.point_list])
    assert np.array_equal(points[:, :, :3], expected[:, :, :3])
    assert np.flatnonzero(points[0, :, 3] < 0).tolist() == [7]
    counts = np.arange(120) % 50
    analogs = np.concatenate([values for _, _, values in frames], axis=1)
    assert np.array_equal(analogs, [counts * 0.5, counts * 1.0])
    assert [label.strip() for label in reader.point_labels] == ["LKNE", "RKNE"]
    assert (reader.point_rate, reader.analog_rate) == (50.0, 200.0)
