"""What is not written, and what is said about it."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from support.failures import failure_of
from support.same_readings import reading_differences, readings
from support.small_trials import read_trial
from support.systems import is_superuser, posix, under_wine
from writing.written import files_in

write = _moxPY.moxWriteAcquisition

NO_STR = (
    "Invalid call! The given path is not a str, maybe try to explicitly convert your object to one."
)
WRONG_EXTENSION = (RuntimeError, "The only supported export format is c3d.")
NO_FREQUENCY = (RuntimeError, "Frequency is not set, impossible to export to c3d")


def not_created(path: Path | str) -> tuple[type[Exception], str]:
    return RuntimeError, f"Export to c3d failed, could not create file at: {path}"


@pytest.fixture
def trial(tmp_path_factory: pytest.TempPathFactory) -> Any:
    return read_trial(tmp_path_factory.mktemp("source"))


@pytest.fixture
def folder(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    """An empty folder, which is the current one."""
    monkeypatch.chdir(tmp_path)
    return tmp_path


@pytest.mark.parametrize("path", [b"a.c3d", Path("a.c3d"), None, 3, ["a.c3d"]])
def test_a_path_that_is_no_str_is_refused(trial: Any, folder: Path, path: Any):
    assert failure_of(write, trial, path) == (TypeError, NO_STR)
    assert files_in(folder) == []


@pytest.mark.parametrize("name", ["a.c3d", "a.C3D", "a.C3d", "a.b.c3d", ".c3d", "a b.c3d", "é.c3d"])
def test_names_that_end_in_c3d_are_accepted(trial: Any, folder: Path, name: str):
    assert write(trial, str(folder / name)) is None
    assert files_in(folder) == [name]


@pytest.mark.parametrize(
    "name",
    ["a.c3d.bak", "a", "a.", "a.c3d.", "c3d", "a.c3", "a.c3dd", "a.c3d ", "", ".", "..", "a.c3d/",
     "a.c3d/.", "a.c3d/..", "a.c3d/b", "a.ç3d", "a.c3d\0", "a.ｃ3d"],
)  # fmt: skip
def test_other_names_are_refused(trial: Any, folder: Path, name: str):
    assert failure_of(write, trial, name) == WRONG_EXTENSION
    assert files_in(folder) == []


def test_the_name_is_looked_at_before_the_frequency():
    assert failure_of(write, _moxPY.moxNewAcquisition(1, 2), "a.txt") == WRONG_EXTENSION


def test_without_a_frequency_no_file_is_created(folder: Path):
    assert failure_of(write, _moxPY.moxNewAcquisition(1, 2), "a.c3d") == NO_FREQUENCY
    assert failure_of(write, _moxPY.moxNewAcquisition(), "missing/a.c3d") == NO_FREQUENCY
    assert files_in(folder) == []


def test_without_a_frequency_an_old_file_stays(folder: Path):
    (folder / "a.c3d").write_bytes(b"old")
    assert failure_of(write, _moxPY.moxNewAcquisition(1, 2), "a.c3d") == NO_FREQUENCY
    assert (folder / "a.c3d").read_bytes() == b"old"


def test_a_missing_folder_is_named_from_the_root_on(trial: Any, folder: Path):
    expected = folder / "missing" / "a.c3d"
    assert failure_of(write, trial, "missing/a.c3d") == not_created(expected)
    assert failure_of(write, trial, str(expected)) == not_created(expected)
    assert files_in(folder) == []


def test_a_file_as_a_folder(trial: Any, folder: Path):
    (folder / "file").write_bytes(b"old")
    assert failure_of(write, trial, "file/a.c3d") == not_created(folder / "file" / "a.c3d")
    assert (folder / "file").read_bytes() == b"old"


def test_a_folder_as_the_file(trial: Any, folder: Path):
    (folder / "a.c3d").mkdir()
    assert failure_of(write, trial, "a.c3d") == not_created(folder / "a.c3d")
    assert files_in(folder) == ["a.c3d"]


@posix
def test_a_folder_that_vanished_from_below_the_process(trial: Any, folder: Path):
    (folder / "gone").mkdir()
    os.chdir(folder / "gone")
    (folder / "gone").rmdir()
    raised, text = failure_of(write, trial, "a.c3d")
    assert raised is RuntimeError
    assert text == "Export to c3d failed, could not create file at: a.c3d"


@posix
@pytest.mark.skipif(is_superuser(), reason="nothing is forbidden to root")
def test_a_folder_without_permission(trial: Any, folder: Path):
    closed = folder / "closed"
    closed.mkdir(mode=0o500)
    assert failure_of(write, trial, "closed/a.c3d") == not_created(closed / "a.c3d")


@posix  # Windows: tests/python/windows/test_files_in_use.py
@pytest.mark.skipif(is_superuser(), reason="nothing is forbidden to root")
def test_a_file_that_must_not_be_changed(trial: Any, folder: Path):
    (folder / "a.c3d").write_bytes(b"old")
    (folder / "a.c3d").chmod(0o400)
    assert failure_of(write, trial, "a.c3d") == not_created(folder / "a.c3d")
    assert (folder / "a.c3d").read_bytes() == b"old"


@posix
@pytest.mark.parametrize("device", ["pipe", "/dev/null"])
def test_what_is_no_regular_file_is_not_replaced(trial: Any, folder: Path, device: str):
    target = folder / "a.c3d"
    if device == "pipe":
        os.mkfifo(target)
    else:
        target.symlink_to(device)
    assert failure_of(write, trial, "a.c3d") == not_created(target)
    assert files_in(folder) == ["a.c3d"]


@posix  # Windows: tests/python/windows/test_names.py
def test_a_name_of_bytes_that_are_no_text(trial: Any, folder: Path):
    name = os.fsdecode(b"caf\xe9.c3d")
    write(trial, name)
    assert [os.fsencode(path.name) for path in folder.iterdir()] == [b"caf\xe9.c3d"]
    lost = os.fsdecode(b"caf\xe9/a.c3d")
    assert failure_of(write, trial, lost) == not_created(f"{folder}/{lost}")


@pytest.mark.skipif(under_wine(), reason="Wine refuses such a name at the end only, as not there")
def test_a_name_that_is_too_long(trial: Any, folder: Path):
    name = "a" * 252 + ".c3d"
    assert failure_of(write, trial, name) == not_created(folder / name)


def test_the_longest_name(trial: Any, folder: Path):
    name = "a" * 251 + ".c3d"
    write(trial, name)
    assert files_in(folder) == [name]


def test_a_refused_writing_changes_nothing(trial: Any, folder: Path):
    before = readings(trial)
    for name in ("a.txt", "missing/a.c3d"):
        failure_of(write, trial, name)
        assert reading_differences(before, trial) == []


def test_a_name_does_not_end_at_a_nul(trial: Any, folder: Path):
    assert failure_of(write, trial, "a\0b.c3d") == not_created(folder / "a\0b.c3d")
    assert failure_of(write, trial, "a.c3d\0b.c3d") == not_created(folder / "a.c3d\0b.c3d")
    assert files_in(folder) == []
