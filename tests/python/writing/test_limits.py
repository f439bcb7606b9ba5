"""What a C3D file cannot hold is refused, and said."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.same_readings import reading_differences, readings
from writing.test_new_acquisitions import filled, new
from writing.written import files_in


def with_point(label: str) -> Any:
    acquisition = new(0, 2)
    _moxPY.moxAppendPoint(acquisition, "marker", label, np.zeros((2, 3)))
    return acquisition


def with_channel(description: str) -> Any:
    acquisition = new(0, 2)
    _moxPY.moxAppendAnalog(acquisition, "Fz1", np.zeros((2, 1)), description)
    return acquisition


def with_event(label: str) -> Any:
    acquisition = new(1, 2)
    _moxPY.moxAppendEvent(acquisition, label, 0.5, "Left")
    return acquisition


def with_gap(frames: int) -> Any:
    acquisition = new(1, 2)
    _moxPY.moxSetMaxInterpolationGap(acquisition, frames)
    return acquisition


def with_entries(*entries: tuple[str, str], values: Any = (1, 2), kind: str = "Integer") -> Any:
    acquisition = new(1, 2)
    for group, entry in entries:
        info = {"format": kind, "values": list(values)}
        _moxPY.moxAppendMetaData(acquisition, group, entry, info)
    return acquisition


def with_much_text() -> Any:
    entries = [("MINE", f"TEXT{number}") for number in range(3)]
    return with_entries(*entries, values=["x" * 250] * 200, kind="Char")


def with_coordinate(value: float) -> Any:
    acquisition = new(0, 300)
    positions = np.full((300, 3), np.inf)
    positions[299, 1] = value
    _moxPY.moxAppendPoint(acquisition, "marker", "LASI", positions)
    return acquisition


LIMITS: dict[str, tuple[Callable[[], Any], str]] = {
    "label": (
        lambda: with_point("x" * 256),
        "the parameter POINT:LABELS has a text of 256 bytes; a C3D file holds 255:"
        f" '{'x' * 256}'",
    ),
    "bytes of a label": (
        lambda: with_point("ą" * 128),
        "the parameter POINT:LABELS has a text of 256 bytes; a C3D file holds 255:"
        f" '{'ą' * 128}'",
    ),
    "description": (
        lambda: with_channel("x" * 300),
        "the parameter ANALOG:DESCRIPTIONS has a text of 300 bytes; a C3D file holds 255:"
        f" '{'x' * 300}'",
    ),
    "event": (
        lambda: with_event("x" * 256),
        "the parameter EVENT:LABELS has a text of 256 bytes; a C3D file holds 255:"
        f" '{'x' * 256}'",
    ),
    "coordinate": (
        lambda: with_coordinate(-4e38),
        "the point 'LASI' has a coordinate in frame 300 that is too large for a C3D file, which"
        " holds numbers up to 3.4e38",
    ),
    "gap": (
        lambda: with_gap(65536),
        "the maximum interpolation gap is 65536 frames; a C3D file holds 0 to 65535",
    ),
    "negative gap": (
        lambda: with_gap(-1),
        "the maximum interpolation gap is -1 frames; a C3D file holds 0 to 65535",
    ),
    "points": (
        lambda: new(65536, 0), "there are 65536 points; a C3D file holds 65535",
    ),
    "analog values": (
        lambda: filled(0, 1, 7, 9363),
        "7 analog channels with 9363 samples a frame are 65541 values a frame; a C3D file holds"
        " 65535",
    ),
    "section": (
        with_much_text, "the parameters take 294 blocks of 512 bytes; a C3D file holds 255",
    ),
    "groups": (
        lambda: with_entries(*[(f"GROUP{number}", "A") for number in range(128)]),
        "the group 'GROUP124' is one too many: a C3D file has at most 127 groups",
    ),
    "elements": (
        lambda: with_entries(("MINE", "A"), values=range(256)),
        "the parameter MINE:A has 256 elements along a dimension; a C3D file holds 255",
    ),
    "name of a parameter": (
        lambda: with_entries(("MINE", "N" * 128)),
        f"the name of the parameter MINE:{'N' * 128} has 128 bytes; a C3D file holds 127",
    ),
    "name of a group": (
        lambda: with_entries(("M" * 128, "A")),
        f"the name of the group {'M' * 128} has 128 bytes; a C3D file holds 127",
    ),
    "names that differ in case": (
        lambda: with_entries(("mine", "A"), ("MINE", "A")),
        "the metadata groups 'mine' and 'MINE' would be one in a C3D file, which does not tell"
        " upper from lower case",
    ),
}  # fmt: skip


def refusal(acquisition: Any, folder: Path) -> str:
    """The text behind the common beginning; an old file is still there, alone."""
    path = folder / "old.c3d"
    path.write_bytes(b"old")
    kind, text = failure_of(_moxPY.moxWriteAcquisition, acquisition, str(path))
    assert kind is RuntimeError
    assert files_in(folder) == ["old.c3d"]
    assert path.read_bytes() == b"old"
    beginning = "Export to c3d failed : "
    assert text.startswith(beginning)
    return text.removeprefix(beginning)


@pytest.mark.parametrize("limit", LIMITS)
def test_a_limit_is_named(tmp_path: Path, limit: str):
    make, expected = LIMITS[limit]
    assert refusal(make(), tmp_path) == expected


# Readings of the many points take their time.
@pytest.mark.parametrize("limit", [limit for limit in LIMITS if limit != "points"])
def test_a_refused_acquisition_is_as_before(tmp_path: Path, limit: str):
    acquisition = LIMITS[limit][0]()
    expected = readings(acquisition)
    refusal(acquisition, tmp_path)
    assert reading_differences(expected, acquisition) == []


@pytest.mark.parametrize("rate", [1e39, 1e-50])
def test_a_rate_that_no_single_can_hold_is_refused(tmp_path: Path, rate: float):
    acquisition = new(1, 2)
    _moxPY.moxSetFrequency(acquisition, rate)
    assert "POINT:RATE" in refusal(acquisition, tmp_path)
