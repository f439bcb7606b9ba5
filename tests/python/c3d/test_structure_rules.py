"""The rules for written files: a good file keeps all of them, each defect breaks its own one."""

from __future__ import annotations

from typing import Any

import numpy as np
import pytest
from support.c3d_bytes import Analog, c3d_bytes, parameters_first, text
from support.c3d_structure import deviations
from support.structure_defects import DEFECTS, FRAMES, LABELS, TRACK, good

# One marker, one channel with two samples a frame, two frames; written down byte by byte.
HEADER = "02 50 01 00 02 00 01 00 02 00 0A 00 CD CC CC BD 03 00 02 00 00 00 C8 42"
PARAMETERS = """
    01 50 01 54
    05 FF 50 4F 49 4E 54 03 00 00
    FC 01 55 53 45 44 07 00 02 00 01 00 00
    FB 01 53 43 41 4C 45 09 00 04 00 CD CC CC BD 00
    FC 01 52 41 54 45 09 00 04 00 00 00 C8 42 00
    F6 01 44 41 54 41 5F 53 54 41 52 54 07 00 02 00 03 00 00
    FA 01 46 52 41 4D 45 53 07 00 02 00 02 00 00
    06 01 4C 41 42 45 4C 53 0B 00 FF 02 04 01 4C 41 53 49 00
    0C 01 44 45 53 43 52 49 50 54 49 4F 4E 53 09 00 FF 02 02 01 6C 20 00
    05 01 55 4E 49 54 53 0A 00 FF 01 04 6D 6D 20 20 00
    06 FE 41 4E 41 4C 4F 47 03 00 00
    FC 02 55 53 45 44 07 00 02 00 01 00 00
    06 02 4C 41 42 45 4C 53 0B 00 FF 02 04 01 45 4D 30 31 00
    0C 02 44 45 53 43 52 49 50 54 49 4F 4E 53 09 00 FF 02 02 01 65 20 00
    09 02 47 45 4E 5F 53 43 41 4C 45 09 00 04 00 00 00 80 3F 00
    05 02 53 43 41 4C 45 0A 00 04 01 01 0A D7 A3 3B 00
    06 02 4F 46 46 53 45 54 08 00 02 01 01 00 08 00
    05 02 55 4E 49 54 53 0B 00 FF 02 04 01 56 20 20 20 00
    FC 02 52 41 54 45 09 00 04 00 00 00 48 43 00
    0E FD 46 4F 52 43 45 5F 50 4C 41 54 46 4F 52 4D 03 00 00
    04 03 55 53 45 44 00 00 02 00 00 00 00
"""
DATA = """
    00 00 C9 42 00 00 A2 C1 00 80 6D 44 00 40 41 44
    00 00 00 45 00 40 06 45
    00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 BF
    00 00 00 45 00 00 E7 44
"""


def blocks(*sections: str) -> bytes:
    return b"".join(bytes.fromhex(section).ljust(512, b"\0") for section in sections)


def test_a_file_written_byte_by_byte_keeps_the_rules():
    content = bytearray(blocks(HEADER, PARAMETERS, DATA))
    content[298:300] = b"\x39\x30"
    assert deviations(bytes(content)) == []


@pytest.mark.parametrize(
    "changes",
    [
        {},
        {"rotations": ()},
        {"points": (), "point_descriptions": None, "parameters": {"POINT:ANGLES": None}},
        {"analogs": (), "platforms": ()},
        {"first_frame": 60, "frame_counts": ["real"]},
        {"events": [], "header_events": ()},
        {"rotation_ratio": 2, "frames": 5, "frame_counts": ["integer"], "analogs": (),
         "platforms": (), "points": dict.fromkeys(LABELS, TRACK[:5])},
    ],
    ids=["all", "no rotations", "no points", "no analogs", "real count", "no events", "ratio 2"],
)  # fmt: skip
def test_good_files_keep_the_rules(changes: dict[str, Any]):
    assert deviations(good(**changes).to_bytes()) == []


def test_a_file_without_anything_keeps_the_rules():
    assert deviations(c3d_bytes()) == []


def test_files_of_many_channels_keep_the_rules():
    analogs = [Analog(f"A{n}", np.arange(FRAMES), description="d") for n in range(300)]
    points = {f"P{n}": TRACK for n in range(600)}
    content = c3d_bytes(
        points, point_descriptions=["d"] * 600, analogs=analogs, analog_format="SIGNED", bits=16
    )
    assert deviations(content) == []


@pytest.mark.parametrize("counts", [["integer", "long_frames"], ["integer", "trial"], ["real"]])
def test_files_of_many_frames_keep_the_rules(counts: list[str]):
    content = c3d_bytes(
        {"LASI": np.zeros((70000, 3))}, point_descriptions=["pelvis"], frame_counts=counts
    )
    assert deviations(content) == []


@pytest.mark.parametrize("defect", DEFECTS)
def test_a_defect_is_named_with_its_place(defect: str):
    make, expected = DEFECTS[defect]
    assert deviations(make()) == expected


def test_parameters_before_their_groups_are_named():
    content = good(record_order=parameters_first).to_bytes()
    assert deviations(content)[0].endswith("USED at 0x204: stands before the record of its group 1")


def test_a_source_excuses_its_own_deviations():
    source = good(parameters={"POINT:UNITS": None, "MINE:A": text("A", "a\0")}).to_bytes()
    assert deviations(source, source) == []
    assert deviations(good(parameters={"POINT:LABELS": ["a"]}).to_bytes(), source) == [
        "POINT:LABELS: 1 entries, not 3",
        "POINT:ANGLES: no point is called 'LKneeAngle'",
    ]


def test_a_rewritten_file_may_keep_locks_ids_and_reserved_bytes():
    content = good(
        group_ids={"EVENT": 9},
        parameter_section={"head": (0, 0)},
        header_patches={40: b"\x01"},
        parameters={"POINT:RATE": 100.0},
    ).to_bytes()
    assert deviations(content, good().to_bytes()) == []
    assert len(deviations(content)) == 4
