"""Metadata of a file, changed metadata and new ones."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes
from support.same_readings import same_values
from support.small_trials import ENTRIES, RICH
from support.stored_file import StoredFile
from support.ways import Way, way_of
from writing.trials import rich_file
from writing.written import source_in, write, written_again

NEW_ENTRIES: dict[str, tuple[str, Any]] = {
    "A_TEXT": ("Char", "walk"),
    "TEXTS": ("Char", ["a", "bc", ""]),
    "UMLAUTS": ("Char", ["Füße", "m/s²"]),
    "INTEGER": ("Integer", -5),
    "INTEGERS": ("Integer", [1, -2, 32767]),
    "BYTES": ("Byte", [1, 127, -128]),
    "REAL": ("Real", 0.25),
    "REALS": ("Real", [0.1, 1e30, -2.5]),
    "MATRIX": ("Real", [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]]),
}


@pytest.fixture(params=RICH)
def trial(request: pytest.FixtureRequest, tmp_path: Path, way: Way) -> Any:
    return way.of(RICH[request.param](tmp_path))


def reread(acquisition: Any, folder: Path) -> Any:
    return written_again(acquisition, folder, source_in(folder))


def stored(acquisition: Any, folder: Path) -> StoredFile:
    return StoredFile(write(acquisition, folder / "written.c3d", source_in(folder)))


@pytest.mark.parametrize("entry", NEW_ENTRIES)
def test_an_appended_entry_is_read_back(trial: Any, tmp_path: Path, entry: str):
    kind, values = NEW_ENTRIES[entry]
    _moxPY.moxAppendMetaData(trial, "MINE", entry, {"format": kind, "values": values})
    expected = _moxPY.moxGetMetaData(trial, "MINE", entry)
    assert same_values(expected, _moxPY.moxGetMetaData(reread(trial, tmp_path), "MINE", entry))


@pytest.mark.parametrize("entry", ENTRIES)
def test_an_entry_that_was_there_is_read_back(trial: Any, tmp_path: Path, entry: str):
    expected = _moxPY.moxGetMetaData(trial, "TRIAL", entry)
    assert same_values(expected, _moxPY.moxGetMetaData(reread(trial, tmp_path), "TRIAL", entry))


@pytest.mark.parametrize(
    ("entry", "value"), [("COUNT", 12), ("WEIGHT", 80.25), ("NAME", "a rather long name")]
)
def test_a_value_that_was_set_is_read_back(trial: Any, tmp_path: Path, entry: str, value: Any):
    _moxPY.moxSetMetaDataValue(trial, "TRIAL", entry, value)
    expected = _moxPY.moxGetMetaData(trial, "TRIAL", entry)
    assert same_values(expected, _moxPY.moxGetMetaData(reread(trial, tmp_path), "TRIAL", entry))


def test_a_removed_entry_is_gone(trial: Any, tmp_path: Path):
    _moxPY.moxRemoveMetaData(trial, "TRIAL", "COUNTS")
    file = stored(trial, tmp_path)
    assert "TRIAL:COUNTS" not in file.parameters
    assert "TRIAL:NAMES" in file.parameters


def test_a_removed_group_is_gone(trial: Any, tmp_path: Path):
    _moxPY.moxRemoveMetaData(trial, "TRIAL")
    assert not {f"TRIAL:{entry}" for entry in ENTRIES} & set(stored(trial, tmp_path).parameters)


def test_without_metadata_the_file_still_describes_its_samples(trial: Any, tmp_path: Path):
    _moxPY.moxClearMetaData(trial)
    expected = _moxPY.moxGetPointsValues(trial)
    file = stored(trial, tmp_path)
    assert file.texts("POINT:LABELS") == [
        "LASI", "LKneeAngle", "RASI", "LGRF", "RGRF", "LKneeMoment", "LKneePower", "RKneePower",
    ]  # fmt: skip
    after = way_of(trial).read(tmp_path / "written.c3d")
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(after), expected)


def test_what_follows_from_the_samples_cannot_be_contradicted(trial: Any, tmp_path: Path):
    for entry, value in (("USED", 99), ("FRAMES", 1), ("RATE", 1.0)):
        info = {"format": "Real" if entry == "RATE" else "Integer", "values": value}
        _moxPY.moxAppendMetaData(trial, "POINT", entry, info)
    file = stored(trial, tmp_path)
    assert [file.scalar(f"POINT:{entry}") for entry in ("USED", "FRAMES", "RATE")] == [8, 4, 100]


def test_new_letters_in_an_ascii_list_are_utf_8(tmp_path: Path):
    content = c3d_bytes({"A": np.ones((2, 3))}, parameters={"MINE:SIDES": ["hip", "toe"]})
    (tmp_path / "trial.c3d").write_bytes(content)
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    info = {"format": "Char", "values": ["hüf", "toe"]}
    _moxPY.moxAppendMetaData(acquisition, "MINE", "SIDES", info)
    file = stored(acquisition, tmp_path)
    assert file.rows("MINE:SIDES") == ["hüf".encode(), b"toe "]


@pytest.mark.parametrize(
    "entry", ["POINT:LABELS", "POINT:DESCRIPTIONS", "ANALOG:LABELS", "ANALOG:UNITS"]
)
def test_what_follows_from_the_samples_may_be_too_large(trial: Any, tmp_path: Path, entry: str):
    expected = stored(trial, tmp_path).texts(entry)
    info = {"format": "Char", "values": ["x" * 300, "y"]}
    _moxPY.moxAppendMetaData(trial, *entry.split(":"), info)
    assert stored(trial, tmp_path).texts(entry) == expected


def test_what_is_in_no_group_is_logged(
    trial: Any, tmp_path: Path, new_log_lines: Callable[[], list[str]]
):
    _moxPY.moxAppendMetaData(trial, "", "VERSION", {"format": "Integer", "values": 3})
    stored(trial, tmp_path)
    text = "the metadata 'VERSION' are in no group; a C3D file has no place for them"
    assert [line for line in new_log_lines() if text in line] != []


def test_the_mark_of_the_metadata_is_no_parameter(trial: Any, tmp_path: Path):
    paths = {**(file := stored(trial, tmp_path)).parameters, **file.groups}
    assert not any("DEVICETYPE" in path for path in paths)


def test_descriptions_locks_and_spelling_stay_when_values_change(tmp_path: Path):
    (tmp_path / "trial.c3d").write_bytes(rich_file("intel", "real").to_bytes())
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    _moxPY.moxSetMetaDataValue(acquisition, "PROCESSING", "Bodymass", 80.0)
    record = stored(acquisition, tmp_path).parameters["PROCESSING:BODYMASS"]
    assert (record.name, record.description, record.dims) == ("Bodymass", b"kg", ())
    assert np.frombuffer(record.data, "<f4").tolist() == [80.0]
