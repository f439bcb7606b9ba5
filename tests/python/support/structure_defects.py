"""A file that keeps the rules of the format, and the same with one defect after the other."""

from __future__ import annotations

import struct
from collections.abc import Callable
from typing import Any

import numpy as np

from support.c3d_bytes import (
    Analog,
    C3DFile,
    Event,
    Group,
    HeaderEvent,
    Parameter,
    Platform,
    integer,
    real,
    text,
)
from support.stored_file import StoredFile

FRAMES = 10
TRACK = np.arange(3.0 * FRAMES).reshape(FRAMES, 3) + 1
LABELS = ["LASI", "RASI", "LKneeAngle"]
# Descriptions of some length, since texts of no length are a defect themselves.
GOOD: dict[str, Any] = {
    "points": dict.fromkeys(LABELS, TRACK),
    "frames": FRAMES,
    "point_descriptions": ["pelvis", "pelvis", "knee"],
    "analogs": [Analog(f"Fz{n}", np.arange(20), description="plate") for n in range(6)],
    "analog_format": "SIGNED",
    "bits": 16,
    "platforms": [Platform()],
    "events": [Event("Left", "Foot Strike", 0.05), Event("Left", "Foot Off", 0.08)],
    "header_events": [HeaderEvent("LHS1", 0.05)],
    "frame_counts": ["integer", "trial"],
    "rotations": {"Pelvis": np.tile(np.eye(4), (FRAMES, 1, 1))},
}
STANDARD = {"POINT:ANGLES": ["LKneeAngle"], "ROTATION:DESCRIPTIONS": ["pelvis"]}


def good(**changes: Any) -> C3DFile:
    parameters = STANDARD | dict(changes.pop("parameters", {}))
    return C3DFile(**{**GOOD, **changes}, parameters=parameters)


def patched(content: bytes, offset: int, replacement: bytes) -> bytes:
    return content[:offset] + replacement + content[offset + len(replacement) :]


def header_word(number: int, value: int) -> bytes:
    return patched(good().to_bytes(), 2 * number - 2, struct.pack("<H", value))


def in_frame(frame: int, real_number: int, value: float) -> bytes:
    layout = good().layout()
    offset = layout.data_offset + frame * layout.frame_bytes + 4 * real_number
    return patched(good().to_bytes(), offset, struct.pack("<f", value))


def behind_data() -> bytes:
    return patched(good().to_bytes(), good().layout().data_end, b"\x01")


def behind_parameters() -> bytes:
    content = good().to_bytes()
    return patched(content, StoredFile(content).records[-1].end + 5, b"\x01")


def lost_rotation() -> bytes:
    offset = good().layout().rotation_offset
    return patched(good().to_bytes(), offset, struct.pack("<f", np.nan))


def with_parameters(**changes: Any) -> bytes:
    """GROUP__NAME=value for GROUP:NAME."""
    return good(
        parameters={name.replace("__", ":"): value for name, value in changes.items()}
    ).to_bytes()


def with_last_record_pointing_on() -> bytes:
    return good(end_mark="zero_name").to_bytes()


def with_group_twice(groups: list[Group]) -> list[Group]:
    return [*groups, Group("point", len(groups) + 1)]


# What makes a file with the defect, and what is to be said about it.
DEFECTS: dict[str, tuple[Callable[[], bytes], list[str]]] = {
    "key": (lambda: header_word(1, 0x5102), ["header word 1: 02 51, not 02 50"]),
    "header points": (
        lambda: header_word(2, 4), ["header word 2: 4, the parameters say 3"],
    ),
    "header analogs": (
        lambda: header_word(3, 11), ["header word 3: 11, the parameters say 12"],
    ),
    "first frame 0": (lambda: header_word(4, 0), [
        "header word 4: 0, frames count from 1",
        "TRIAL:ACTUAL_START_FIELD: 1, header word 4 is 0",
    ]),
    "last frame": (
        lambda: header_word(5, 9), ["header word 5: 9, not 10: 10 frames from 1 on"],
    ),
    "header scale": (
        lambda: good(header={"scale": -0.5}).to_bytes(),
        ["header words 7 and 8: -0.5, POINT:SCALE is -0.10000000149011612"],
    ),
    "header data start": (
        lambda: header_word(9, 6), ["header word 9: 6, the parameters say 5"],
    ),
    "header rate": (
        lambda: good(header={"rate": 50.0}).to_bytes(),
        ["header words 11 and 12: 50.0, POINT:RATE is 100.0"],
    ),
    "label range": (
        lambda: header_word(148, 12345),
        ["header words 148 and 149: a section of labels and ranges that is not there"],
    ),
    "event key": (lambda: header_word(150, 0), ["header word 150: 0, not 12345"]),
    "too many header events": (
        lambda: header_word(151, 19), ["header word 151: 19 events"],
    ),
    "header event behind the last": (lambda: header_word(151, 0), [
        "header events: a time behind the last of 0 events",
        "header events: a status behind the last of 0 events",
        "header events: a label behind the last of 0 events",
    ]),
    "header event time": (
        lambda: good(header_events=[HeaderEvent("LHS1", np.nan)]).to_bytes(),
        ["header events: times [nan]"],
    ),
    "header event label": (
        lambda: good(header_events=[HeaderEvent(b"\xe9   ", 0.5)]).to_bytes(),
        ["header events: labels b'\\xe9   '"],
    ),
    "word 152": (lambda: header_word(152, 1), ["header word 152: not 0"]),
    "reserved word": (lambda: header_word(20, 1), ["header words 13 to 147: not 0"]),
    "processor": (
        lambda: good(parameter_section={"processor": 83}).to_bytes(),
        ["parameter section: processor 83, not 84"],
    ),
    "marks": (
        lambda: good(parameter_section={"head": (0, 0)}).to_bytes(),
        ["parameter section: begins with 00 00, not 01 50"],
    ),
    "block count": (lambda: good(parameter_section={"block_count": 2}).to_bytes(), [
        "parameter section: counts 2 blocks, its records need 3",
        "POINT:DATA_START: 5, the parameters end before block 4",
    ]),
    "gap between records": (
        lambda: with_parameters(POINT__RATE=real("RATE", 100.0, locked=True, gap=2)),
        ["record RATE at 0x22B: the next record is 9 bytes on, not 11"],
    ),
    "last record": (
        with_last_record_pointing_on,
        ["record DESCRIPTIONS at 0x730: the last record points 13 bytes on, not 0"],
    ),
    "behind the records": (
        behind_parameters, ["parameter section: the bytes behind the last record are not 0"],
    ),
    "group id": (
        lambda: good(group_ids={"EVENT": 9}).to_bytes(),
        ["parameter section: group ids [1, 2, 3, 4, 9, 6], not 1 to 6"],
    ),
    "order of groups": (
        lambda: good(edit_groups=lambda groups: [
            Group(group.name, place, group.parameters)
            for place, group in enumerate([*groups[3:4], *groups[:3], *groups[4:]], start=1)
        ]).to_bytes(),
        ["parameter section: begins with the groups ['TRIAL', 'POINT', 'ANALOG']"],
    ),
    "a group twice": (
        lambda: good(edit_groups=with_group_twice).to_bytes(),
        ["POINT: 2 times the name of a group"],
    ),
    "a parameter twice": (
        lambda: good(groups=[Group("MINE", 7, [integer("A", 1), integer("a", 2)])]).to_bytes(),
        ["A: 2 times the name of a parameter of group 7"],
    ),
    "parameter of no group": (
        lambda: good(groups=[Group("MINE", 9, [integer("A", 1)], write_record=False)]).to_bytes(),
        ["record A at 0x74B: stands before the record of its group 9"],
    ),
    "type": (
        lambda: with_parameters(MINE__A=Parameter("A", 3, (), b"\0\0\0")), ["MINE:A: type 3"],
    ),
    "dimensions": (
        lambda: with_parameters(MINE__A=integer("A", 1, dims=(1,) * 8)),
        ["MINE:A: 8 dimensions"],
    ),
    "texts without width": (
        lambda: with_parameters(MINE__A=text("A", ["", ""], width=0)),
        ["MINE:A: texts of 0 characters"],
    ),
    "padding": (lambda: with_parameters(MINE__A=text("A", "a\0")), ["MINE:A: padded with NUL"]),
    "Latin-1": (
        lambda: with_parameters(MINE__A=text("A", b"\xe9t")), ["MINE:A: no UTF-8: b'\\xe9t'"],
    ),
    "a parameter is missing": (
        lambda: with_parameters(POINT__UNITS=None), ["POINT:UNITS: missing"],
    ),
    "type of a parameter": (
        lambda: with_parameters(POINT__USED=real("USED", 3.0, locked=True)),
        ["POINT:USED: type 4, not 2"],
    ),
    "too few labels": (
        lambda: with_parameters(POINT__LABELS=["LASI", "LKneeAngle"]),
        ["POINT:LABELS: 2 entries, not 3"],
    ),
    "too many descriptions": (
        lambda: with_parameters(POINT__DESCRIPTIONS=["a", "b", "c", "d"]),
        ["POINT:DESCRIPTIONS: 4 entries, not 3"],
    ),
    "continuation of a short list": (
        lambda: with_parameters(POINT__LABELS=LABELS[1:], POINT__LABELS2=LABELS[:1]),
        ["POINT:LABELS: 2 entries although more follow, not 255"],
    ),
    "empty continuation": (
        lambda: with_parameters(POINT__LABELS2=text("LABELS2", [], width=4)), [
            "POINT:LABELS: 3 entries although more follow, not 255",
            "POINT:LABELS2: empty",
        ],
    ),
    "lost continuation": (
        lambda: with_parameters(POINT__LABELS3=["LASI"]),
        ["POINT:LABELS3: the part before it is missing"],
    ),
    "positive scale": (
        lambda: good(header={"scale": 0.5}, parameters={
            "POINT:SCALE": real("SCALE", 0.5, locked=True)}).to_bytes(),
        ["POINT:SCALE: 0.5; reals have a negative scale"],
    ),
    "rate": (
        lambda: good(header={"rate": 0.0}, parameters={
            "POINT:RATE": real("RATE", 0.0, locked=True),
            "ANALOG:RATE": real("RATE", 0.0, locked=True),
            "ROTATION:RATE": 0.0}).to_bytes(),
        ["POINT:RATE: 0.0"],
    ),
    "analog rate": (
        lambda: with_parameters(ANALOG__RATE=real("RATE", 100.0, locked=True)),
        ["ANALOG:RATE: 100.0, not 200.0"],
    ),
    "long frames": (
        lambda: with_parameters(POINT__FRAMES=integer("FRAMES", 9, locked=True),
                                POINT__LONG_FRAMES=10.0),
        ["POINT:FRAMES: 9, POINT:LONG_FRAMES is 10"],
    ),
    "trial range": (
        lambda: with_parameters(TRIAL__ACTUAL_END_FIELD=[9, 0]),
        ["TRIAL:ACTUAL_END_FIELD: a range of 9 frames, the file has 10"],
    ),
    "trial start": (
        lambda: with_parameters(TRIAL__ACTUAL_START_FIELD=[2, 0], TRIAL__ACTUAL_END_FIELD=[11, 0]),
        ["TRIAL:ACTUAL_START_FIELD: 2, header word 4 is 1"],
    ),
    "kind of no point": (
        lambda: with_parameters(POINT__POWERS=["LKneePower"]),
        ["POINT:POWERS: no point is called 'LKneePower'"],
    ),
    "two kinds of a point": (
        lambda: with_parameters(POINT__POWERS=["LKneeAngle"]),
        ["POINT:POWERS: 'LKneeAngle' is listed twice"],
    ),
    "analog lists out of step": (
        lambda: with_parameters(ANALOG__SCALE=np.ones(5, np.float32)),
        ["ANALOG:SCALE: 5 entries, not 6"],
    ),
    "analog scale": (
        lambda: with_parameters(ANALOG__GEN_SCALE=np.inf), ["ANALOG:GEN_SCALE: not finite"],
    ),
    "analog format": (
        lambda: with_parameters(ANALOG__FORMAT=text("FORMAT", "signed", locked=True)),
        ["ANALOG:FORMAT: 'signed'"],
    ),
    "no platform group": (
        lambda: good(platforms=(), parameters={"FORCE_PLATFORM:USED": None}).to_bytes(),
        ["FORCE_PLATFORM:USED: missing"],
    ),
    "platform without corners": (
        lambda: with_parameters(FORCE_PLATFORM__CORNERS=None), ["FORCE_PLATFORM:CORNERS: missing"],
    ),
    "shape of corners": (
        lambda: with_parameters(FORCE_PLATFORM__CORNERS=np.zeros((1, 3, 4), np.float32)),
        ["FORCE_PLATFORM:CORNERS: dimensions [4, 3, 1] for 1 platforms"],
    ),
    "too few types": (
        lambda: with_parameters(FORCE_PLATFORM__TYPE=integer("TYPE", [])),
        ["FORCE_PLATFORM:TYPE: dimensions [0] for 1 platforms"],
    ),
    "channel number": (
        lambda: with_parameters(FORCE_PLATFORM__CHANNEL=[[1, 2, 3, 4, 5, 7]]),
        ["FORCE_PLATFORM:CHANNEL: 7, there are 6 channels"],
    ),
    "event lists out of step": (
        lambda: with_parameters(EVENT__LABELS=["Foot Strike"]), ["EVENT:LABELS: 1 entries, not 2"],
    ),
    "event times": (
        lambda: with_parameters(EVENT__TIMES=np.zeros(2, np.float32)),
        ["EVENT:TIMES: dimensions [2], not minutes and seconds"],
    ),
    "event time": (
        lambda: with_parameters(EVENT__TIMES=np.float32([[0, np.nan], [0, 1]])),
        ["EVENT:TIMES: not finite"],
    ),
    "lock": (lambda: with_parameters(POINT__RATE=100.0), ["POINT:RATE: not locked"]),
    "data start": (
        lambda: good(data_block=7).to_bytes(),
        ["POINT:DATA_START: 7, the parameters end before block 5"],
    ),
    "file too short": (
        lambda: good(rotations=()).to_bytes()[:-512],
        ["file: 2560 bytes, its sections end at 3072"],
    ),
    "file too long": (
        lambda: good().to_bytes() + bytes(512), ["file: 4608 bytes, its sections end at 4096"],
    ),
    "behind the samples": (
        behind_data, ["samples: the bytes behind the last frame are not 0"],
    ),
    "behind the file's last section": (
        lambda: good().to_bytes()[:-1] + b"\x01",
        ["file: the bytes behind the last section are not 0"],
    ),
    "NaN": (
        lambda: in_frame(1, 2, np.nan), ["frame 1, point 0: a coordinate is not finite (1 in all)"],
    ),
    "fourth word": (
        lambda: in_frame(2, 7, 0.5),
        ["frame 2, point 1: the fourth word is neither -1 nor a mask with a residual (1 in all)"],
    ),
    "not seen somewhere": (
        lambda: in_frame(3, 11, -1.0),
        ["frame 3, point 2: not seen, but not at 0, 0, 0 (1 in all)"],
    ),
    "rotation start": (
        lambda: with_parameters(ROTATION__DATA_START=3), ["ROTATION:DATA_START: 3, not 7"],
    ),
    "rotation labels": (
        lambda: with_parameters(ROTATION__LABELS=["a", "b"]), ["ROTATION:LABELS: 2 entries, not 1"],
    ),
    "rotation rate": (
        lambda: with_parameters(ROTATION__RATE=50.0), ["ROTATION:RATE: 50.0, not 100.0"],
    ),
    "lost rotation": (
        lost_rotation, ["rotations: NaN in a transform that is marked as known"],
    ),
}  # fmt: skip
