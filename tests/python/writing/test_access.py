"""Who may do what with a file that was replaced: nobody more than before."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from editing.trials import read_trial
from writing.people import (
    ALICE,
    BOB,
    CAROL,
    LABORATORY,
    OTHER_GROUP,
    ROOT,
    STRANGER,
    Person,
    laboratory_folder,
    needs_root,
    old_file,
    state_of,
)
from writing.written import files_in

folder = pytest.fixture(laboratory_folder)


@pytest.fixture(scope="module")
def trial(tmp_path_factory: pytest.TempPathFactory) -> Any:
    return read_trial(tmp_path_factory.mktemp("source"))


def save(trial: Any, person: Person, path: Path) -> None:
    with person.acts():
        _moxPY.moxWriteAcquisition(trial, str(path))


def assert_replaced(path: Path) -> None:
    assert path.read_bytes()[1:2] == b"\x50"  # the mark of the format
    assert files_in(path.parent) == [path.name]


def assert_refused(trial: Any, person: Person, path: Path, reason: str) -> None:
    """The save fails with the reason, and the old file is as it was, alone in its folder."""
    before = state_of(path)
    with pytest.raises(RuntimeError) as raised:
        save(trial, person, path)
    expected = f"Export to c3d failed : The file could not be completed: {reason}"
    assert str(raised.value) == expected
    assert path.read_bytes() == b"old"
    assert files_in(path.parent) == [path.name]
    assert state_of(path) == before


@needs_root
@pytest.mark.parametrize("mode", [0o660, 0o664, 0o666, 0o2664])
def test_the_file_of_a_colleague_keeps_its_group(trial: Any, folder: Path, mode: int):
    path = old_file(folder, ALICE, LABORATORY, mode)
    people = (ALICE, BOB, CAROL, STRANGER)
    before = [person.may(path) for person in people]
    save(trial, BOB, path)
    assert_replaced(path)
    about = path.stat()
    assert (about.st_uid, about.st_gid, about.st_mode & 0o7777) == (BOB.user, LABORATORY, mode)
    assert [person.may(path) for person in people] == before


@needs_root
def test_the_administrator_leaves_owner_and_group(trial: Any, folder: Path):
    path = old_file(folder, ALICE, LABORATORY, 0o4750)
    save(trial, ROOT, path)
    assert_replaced(path)
    about = path.stat()
    assert (about.st_uid, about.st_gid, about.st_mode & 0o7777) == (ALICE.user, LABORATORY, 0o4750)


@needs_root
def test_the_mark_to_run_as_the_owner_does_not_pass_to_another_one(trial: Any, folder: Path):
    path = old_file(folder, ALICE, LABORATORY, 0o4775)
    save(trial, BOB, path)
    assert path.stat().st_mode & 0o7777 == 0o775


@needs_root
@pytest.mark.parametrize("mode", [0o606, 0o646, 0o666])
def test_a_group_that_cannot_be_kept_is_a_reason_to_refuse(trial: Any, folder: Path, mode: int):
    path = old_file(folder, ALICE, OTHER_GROUP, mode)
    assert_refused(
        trial, BOB, path, "the group of the old file cannot be kept: Operation not permitted"
    )


@needs_root
def test_a_group_that_was_left_is_a_reason_to_refuse(trial: Any, folder: Path):
    path = old_file(folder, ALICE, OTHER_GROUP, 0o640)
    assert_refused(
        trial, ALICE, path, "the group of the old file cannot be kept: Operation not permitted"
    )


@needs_root
def test_a_folder_that_passes_its_group_on_is_enough(trial: Any, folder: Path):
    """Who is not in the group of a file makes one in it, where the folder says so."""
    path = old_file(folder, ALICE, OTHER_GROUP, 0o666)
    os.chown(folder, 0, OTHER_GROUP)
    folder.chmod(0o2777)
    save(trial, BOB, path)
    assert_replaced(path)
    about = path.stat()
    assert (about.st_uid, about.st_gid, about.st_mode & 0o7777) == (BOB.user, OTHER_GROUP, 0o666)


@needs_root
@pytest.mark.parametrize("mode", [0o060, 0o460, 0o066, 0o462, 0o671])
def test_an_owner_who_had_less_than_others_is_a_reason_to_refuse(
    trial: Any, folder: Path, mode: int
):
    """As one of the group, or as anybody, she would get what was kept from her."""
    path = old_file(folder, ALICE, LABORATORY, mode)
    assert_refused(
        trial, BOB, path, "the owner of the old file cannot be kept: Operation not permitted"
    )


@needs_root
def test_a_file_that_must_not_be_changed_is_not_replaced(trial: Any, folder: Path):
    path = old_file(folder, ALICE, LABORATORY, 0o644)
    with pytest.raises(RuntimeError) as raised:
        save(trial, BOB, path)
    assert str(raised.value) == f"Export to c3d failed, could not create file at: {path}"
    assert path.read_bytes() == b"old"
    assert files_in(folder) == ["trial.c3d"]
