"""Who may do what with a file that was replaced: nobody more than before."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from support.small_trials import read_trial
from support.systems import posix
from writing.people import (
    ALICE,
    BOB,
    CAROL,
    LABORATORY,
    MYSELF,
    OTHER_GROUP,
    OWNER,
    ROOT,
    STRANGER,
    Person,
    attributes_of,
    laboratory_folder,
    needs_root,
    old_file,
    set_access_list,
    set_attribute,
    set_list_for_new_files,
    state_of,
)
from writing.written import files_in

pytestmark = posix

folder = pytest.fixture(laboratory_folder)

# Alice and Bob read and write, nobody else does anything.
TWO_PEOPLE = f"u::rw u:{BOB.user}:rw g::- m::rw o::-"


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


def test_an_access_list_stays(trial: Any, folder: Path):
    path = old_file(folder, OWNER)
    set_access_list(path, TWO_PEOPLE)
    before = attributes_of(path)
    save(trial, OWNER, path)
    assert_replaced(path)
    assert attributes_of(path) == before
    assert path.stat().st_mode & 0o7777 == 0o660


@needs_root
def test_who_is_not_on_the_list_gets_nothing_by_the_group(trial: Any, folder: Path):
    path = old_file(folder, ALICE, LABORATORY)
    set_access_list(path, TWO_PEOPLE)
    people = (ALICE, BOB, CAROL, STRANGER)
    before = [person.may(path) for person in people]
    assert before == ["rw", "rw", "", ""]
    save(trial, ALICE, path)
    assert [person.may(path) for person in people] == before


@needs_root
def test_a_list_stays_when_somebody_on_it_saves(trial: Any, folder: Path):
    path = old_file(folder, ALICE, LABORATORY)
    set_access_list(path, f"u::rw u:{ALICE.user}:rw u:{BOB.user}:rw g::- m::rw o::-")
    before = attributes_of(path)
    save(trial, BOB, path)
    assert_replaced(path)
    assert attributes_of(path) == before
    assert (path.stat().st_uid, path.stat().st_gid) == (BOB.user, LABORATORY)
    assert [person.may(path) for person in (ALICE, BOB, CAROL, STRANGER)] == ["rw", "rw", "", ""]


@pytest.mark.parametrize("mode", [0o600, 0o640, 0o664])
def test_the_list_for_new_files_of_the_folder_does_not_count(trial: Any, folder: Path, mode: int):
    path = old_file(folder, OWNER, mode=mode)
    set_list_for_new_files(folder, f"u::rwx u:{STRANGER.user}:rwx g::rwx m::rwx o::rwx")
    save(trial, OWNER, path)
    assert_replaced(path)
    assert attributes_of(path) == {}
    assert path.stat().st_mode & 0o7777 == mode


def test_a_new_file_has_the_list_that_its_folder_gives(trial: Any, folder: Path):
    set_list_for_new_files(folder, f"u::rw u:{BOB.user}:rw g::r m::rw o::-")
    (folder / "other.c3d").write_bytes(b"")
    save(trial, MYSELF, folder / "trial.c3d")
    assert attributes_of(folder / "trial.c3d") == attributes_of(folder / "other.c3d") != {}
    assert (folder / "trial.c3d").stat().st_mode == (folder / "other.c3d").stat().st_mode


def test_extended_attributes_stay(trial: Any, folder: Path):
    path = old_file(folder, OWNER)
    for name, value in {"session": b"2024-05-17", "empty": b"", "bytes": bytes(range(256))}.items():
        set_attribute(path, f"user.laboratory.{name}", value)
    before = attributes_of(path)
    assert len(before) == 3
    save(trial, OWNER, path)
    assert_replaced(path)
    assert attributes_of(path) == before


@needs_root
@pytest.mark.parametrize("name", ["security.label", "trusted.archive"])
def test_attributes_of_the_administrator_stay_when_he_saves(trial: Any, folder: Path, name: str):
    path = old_file(folder, ALICE)
    set_attribute(path, name, b"kept")
    save(trial, ROOT, path)
    assert_replaced(path)
    assert attributes_of(path) == {name: b"kept"}


@needs_root
def test_a_label_that_cannot_be_given_is_a_reason_to_refuse(trial: Any, folder: Path):
    path = old_file(folder, ALICE)
    set_attribute(path, "security.label", b"kept")
    assert_refused(
        trial, ALICE, path,
        "the extended attributes of the old file cannot be kept: Operation not permitted",
    )  # fmt: skip


@needs_root
def test_rights_of_a_program_do_not_pass_to_the_new_content(trial: Any, folder: Path):
    path = old_file(folder, ALICE, mode=0o755)
    # Revision 2 of the format, "effective", CAP_CHOWN.
    set_attribute(path, "security.capability", bytes([1, 0, 0, 2, 1] + [0] * 15))
    assert list(attributes_of(path)) == ["security.capability"]
    for person in (ALICE, ROOT):
        save(trial, person, path)
        assert attributes_of(path) == {}


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
