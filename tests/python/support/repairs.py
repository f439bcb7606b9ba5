"""Copies of samples that other readers accept; the module reads the originals."""

from __future__ import annotations

from pathlib import Path

from support.number_formats import NUMBER_FORMATS
from support.parameter_section import section_bytes
from support.parameters import Group, integer, real, text


def as_it_is(content: bytes) -> bytes:
    return content


def with_the_points_of_the_header(content: bytes) -> bytes:
    """POINT:USED says 12, the header and the length of the file say 11."""
    used = b"\x04\x03USED\x07\x00\x02\x00"
    assert content.count(used + b"\x0c\x00") == 1
    return content.replace(used + b"\x0c\x00", used + b"\x0b\x00")


def without_the_broken_record(content: bytes) -> bytes:
    """The section ends before EVENT:LABELS, which reaches into the data."""
    record = content.index(b"\x06\x05LABELS\xc7\x00\xff\x02 \x06Foot Strike")
    data = (content[16] + 256 * content[17] - 1) * 512
    return content[:record] + bytes(data - record) + content[data:]


def with_parameters_from_the_header(content: bytes) -> bytes:
    """The parameter section, which is empty, gets what the header says: 40 points, 701 frames."""
    groups = [
        Group("POINT", 1, [
            integer("USED", 40), real("SCALE", -1.0), real("RATE", 30.0), integer("DATA_START", 3),
            integer("FRAMES", 701), text("LABELS", [f"{n:02}" for n in range(40)]),
            text("DESCRIPTIONS", [], width=1), text("UNITS", "mm"),
        ]),
        Group("ANALOG", 2, [
            integer("USED", 0), text("LABELS", [], width=4), text("DESCRIPTIONS", [], width=4),
            real("GEN_SCALE", 1.0), real("SCALE", []), integer("OFFSET", []),
            text("UNITS", [], width=4), real("RATE", 0.0),
        ]),
        Group("FORCE_PLATFORM", 3, [integer("USED", 0)]),
    ]  # fmt: skip
    section = section_bytes(groups, NUMBER_FORMATS["intel"])
    assert len(section) == 512
    return content[:512] + section + content[1024:]


def repaired(path: Path, folder: Path, repair: object) -> Path:
    """The file itself where nothing is to be repaired, else a copy in `folder`."""
    if repair is as_it_is:
        return path
    copy = folder / path.name
    copy.write_bytes(repair(path.read_bytes()))  # type: ignore[operator]
    return copy
