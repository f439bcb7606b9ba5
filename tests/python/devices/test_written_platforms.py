"""Platforms of a file that was written are those of the acquisition that it was written from."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    DIRECTIONS,
    MATRIX,
    Load,
    Plate,
    channel_names,
    first_channels,
    read_plates,
    step_on,
    walking,
)
from support.stored_file import StoredFile
from support.ways import Way, way_of, write_to

SAMPLES = 40
Edit = Callable[[Any], Any]


def nothing(_: Any) -> None:
    pass


def remove_a_channel_before(acquisition: Any) -> None:
    _moxPY.moxRemoveAnalog(acquisition, "first")


def bring_a_channel_back(acquisition: Any) -> None:
    column = _moxPY.moxGetAnalog(acquisition, "Fz_0")[0].reshape(-1, 1)
    _moxPY.moxRemoveAnalog(acquisition, "Fz_0")
    _moxPY.moxAppendAnalog(acquisition, "Fz_0", column)


def rename(acquisition: Any) -> None:
    _moxPY.moxSetAnalogLabel(acquisition, "My_1", "moment")


def append(acquisition: Any) -> None:
    _moxPY.moxAppendAnalog(acquisition, "more", np.ones((SAMPLES, 1)))


def reorder(acquisition: Any) -> None:
    labels = _moxPY.moxGetMetaData(acquisition, "ANALOG", "LABELS")["info"]["values"]
    _moxPY.moxSetMetaDataValue(acquisition, "ANALOG", "LABELS", [*labels[1:], labels[0]])
    numbers = _moxPY.moxGetMetaData(acquisition, "FORCE_PLATFORM", "CHANNEL")["info"]["values"]
    _moxPY.moxSetMetaDataValue(acquisition, "FORCE_PLATFORM", "CHANNEL", numbers.T - 1)


def trial(folder: Path) -> Any:
    """Two plates of type 2, a channel before theirs."""
    plates = [Plate(2, DIRECTIONS["tilted"]), Plate(2, centre=np.array([1200.0, 0.0, 0.0]))]
    names = [
        "first",
        *(f"{name}_{n}" for n in (0, 1) for name in ("Fx", "Fy", "Fz", "Mx", "My", "Mz")),
    ]
    acquisition = read_plates(
        folder, plates, SAMPLES,
        analogs=[(name, np.zeros(SAMPLES)) for name in names],
        platforms=[plates[0].described(2), plates[1].described(8)],
    )  # fmt: skip
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, as_singles(walking(SAMPLES, number)), number)
    return acquisition


def as_singles(load: Load) -> Load:
    return Load(np.round(load.force), np.round(load.place), np.round(load.free_moment))


def written_again(acquisition: Any, folder: Path) -> Any:
    path = folder / "written.c3d"
    write_to(acquisition, path)
    return way_of(acquisition).read(path)


def assert_same_platforms(actual: Any, expected: Any, count: int) -> None:
    """Everything that is told of platforms, in the precision of a file."""
    for read in (_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches):
        assert len(read(expected)) == count
        for ours, theirs in zip(read(expected), read(actual), strict=True):
            for key in "FMP":
                scale = np.nanmax(np.abs(ours[key]))
                np.testing.assert_allclose(theirs[key], ours[key], rtol=0, atol=2e-5 * scale)
    before, after = (_moxPY.moxGetForcePlatforms(each) for each in (expected, actual))
    for ours, theirs in zip(before[0], after[0], strict=True):
        assert list(theirs["channels"]) == list(ours["channels"])
        np.testing.assert_array_equal(theirs["corners"], ours["corners"])
        np.testing.assert_array_equal(theirs["origin"], ours["origin"])
        np.testing.assert_array_equal(theirs["cal_matrix"], ours["cal_matrix"])
        assert theirs["type"] == ours["type"]
    assert after[1] == before[1]


def append_entry(acquisition: Any, entry: str, kind: str, values: Any) -> None:
    info = {"format": kind, "values": values}
    _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)


def used_in(folder: Path) -> Any:
    """FORCE_PLATFORM:USED as the written file has it."""
    return StoredFile((folder / "written.c3d").read_bytes()).count("FORCE_PLATFORM:USED")


@pytest.mark.parametrize(
    "edit", [nothing, remove_a_channel_before, bring_a_channel_back, rename, append, reorder],
    ids=lambda edit: edit.__name__,
)  # fmt: skip
def test_written_and_read_again_they_are_the_same(tmp_path: Path, way: Way, edit: Edit) -> None:
    acquisition = way.of(trial(tmp_path))
    edit(acquisition)
    assert_same_platforms(written_again(acquisition, tmp_path), acquisition, 2)


def remove_used(acquisition: Any) -> None:
    _moxPY.moxRemoveMetaData(acquisition, "FORCE_PLATFORM", "USED")


def empty_used(acquisition: Any) -> None:
    _moxPY.moxSetMetaDataDimensions(acquisition, "FORCE_PLATFORM", "USED", [0])


@pytest.mark.parametrize("edit", [remove_used, empty_used], ids=lambda edit: edit.__name__)
def test_without_used_as_many_are_written_as_there_are_types(
    tmp_path: Path, way: Way, edit: Edit
) -> None:
    acquisition = way.of(trial(tmp_path))
    edit(acquisition)
    assert_same_platforms(written_again(acquisition, tmp_path), acquisition, 2)
    assert used_in(tmp_path) == 2


@pytest.mark.parametrize(
    ("kind", "used", "count"),
    [
        ("Char", "two", 2), ("Char", "1", 2), ("Char", ["1", "1"], 2), ("Real", 1.0, 1),
        ("Real", [1.0, 7.0], 1), ("Real", 9.0, 2), ("Integer", [1, 2], 1),
        ("Byte", [1, 2], 1), ("Integer", 9, 2), ("Real", 1.5, 2), ("Real", float("nan"), 2),
        ("Real", 1e9, 2), ("Real", float("inf"), 2), ("Integer", -1, 0), ("Real", -1e9, 0),
    ],
)  # fmt: skip
def test_of_whatever_type_used_is_the_file_has_the_same_platforms(
    tmp_path: Path, way: Way, kind: str, used: Any, count: int
) -> None:
    acquisition = way.of(trial(tmp_path))
    append_entry(acquisition, "USED", kind, used)
    assert_same_platforms(written_again(acquisition, tmp_path), acquisition, count)
    assert used_in(tmp_path) == count


MADE = {
    "two of type 2": [Plate(2, DIRECTIONS["tilted"]), Plate(2)],
    "one of each type": [Plate(1), Plate(2), Plate(3, DIRECTIONS["tilted"]), Plate(4)],
    "one": [Plate(2)],
}  # fmt: skip


@pytest.mark.parametrize("with_used", [True, False])
@pytest.mark.parametrize("plates", MADE.values(), ids=MADE)
def test_platforms_of_a_script_are_in_its_file(
    tmp_path: Path, way: Way, plates: list[Plate], with_used: bool
) -> None:
    names = channel_names(plates)
    acquisition = way.of(_moxPY.moxNewAcquisition(1, SAMPLES // 4, len(names), 4))
    _moxPY.moxSetFrequency(acquisition, 100.0)
    for index, name in enumerate(names):
        _moxPY.moxSetAnalogLabel(acquisition, index, name)
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, as_singles(walking(SAMPLES, number)), number)
    firsts = first_channels(plates)
    described = [plate.described(first) for plate, first in zip(plates, firsts, strict=True)]
    width = max(len(each.channels) for each in described)
    if with_used:
        append_entry(acquisition, "USED", "Integer", len(plates))
    append_entry(acquisition, "TYPE", "Integer", [plate.type for plate in plates])
    append_entry(acquisition, "CORNERS", "Real", [plate.corners.tolist() for plate in plates])
    append_entry(acquisition, "ORIGIN", "Real", [plate.stored_origin.tolist() for plate in plates])
    rows = [[*each.channels, *[0] * (width - len(each.channels))] for each in described]
    append_entry(acquisition, "CHANNEL", "Integer", rows)
    append_entry(acquisition, "CAL_MATRIX", "Real", [MATRIX.T.tolist() for _ in plates])
    again = written_again(acquisition, tmp_path)
    assert_same_platforms(again, acquisition, len(plates))
    assert_same_platforms(written_again(again, tmp_path), acquisition, len(plates))


def test_a_group_in_other_case_keeps_what_it_says(tmp_path: Path, way: Way) -> None:
    acquisition = way.of(trial(tmp_path))
    _moxPY.moxRemoveMetaData(acquisition, "FORCE_PLATFORM")
    for entry, values in (("USED", 1), ("TYPE", [2])):
        info = {"format": "Integer", "values": values}
        _moxPY.moxAppendMetaData(acquisition, "Force_Platform", entry, info)
    written_again(acquisition, tmp_path)
    assert used_in(tmp_path) == 1
