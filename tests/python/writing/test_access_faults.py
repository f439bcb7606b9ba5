"""Access to a file while its successor takes over the old one's rights, and when it cannot."""

from __future__ import annotations

import errno
import os
import signal
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from writing.faults import OLD, OLD_FILE_ALONE, Target, needs_faults, several_writes
from writing.people import (
    ALICE,
    BOB,
    CAROL,
    LABORATORY,
    OWNER,
    STRANGER,
    attributes_of,
    laboratory_folder,
    needs_root,
    old_file,
    set_access_list,
    set_attribute,
    set_list_for_new_files,
    state_of,
)

pytestmark = needs_faults

source = pytest.fixture(several_writes, scope="module")


# Systems with files that have no name until they are complete, and those without.
both_systems = pytest.fixture(params=[False, True], ids=["unnamed", "named"])


@both_systems
def target(source: Path, request: pytest.FixtureRequest) -> Iterator[Target]:
    """The old file is one's own and has nothing but permissions."""
    for folder in laboratory_folder():
        old = old_file(folder, OWNER, mode=0o640, content=OLD)
        yield Target(source, old, named=request.param)


@both_systems
def guarded(source: Path, request: pytest.FixtureRequest) -> Iterator[Target]:
    """Of the old file everything has to be set: attribute, group, owner, list and permissions.

    In this order: the folder gives new files another list.
    """
    for folder in laboratory_folder():
        path = old_file(folder, ALICE, LABORATORY, content=OLD)
        set_attribute(path, "user.session", b"2024-05-17")
        set_access_list(path, f"u::rw u:{BOB.user}:r g::- m::rw o::-")
        set_list_for_new_files(folder, f"u::rwx u:{STRANGER.user}:rwx g::rwx m::rwx o::rwx")
        yield Target(source, path, named=request.param)


STEPS = [
    *(["write", number] for number in (1, 2, 3)),
    *(["fchmod", number] for number in (1, 2)),
    *(["fsetxattr", number] for number in (1, 2)),
    *(["fchown", number] for number in (1, 2)),
    ["fsync", 1],
    ["rename", 1],
]


@needs_root
@pytest.mark.parametrize("step", STEPS, ids=lambda step: f"{step[0]}-{step[1]}")
def test_at_no_step_anybody_has_more_than_in_the_end(guarded: Target, step: list[Any]):
    people = (ALICE, BOB, CAROL, STRANGER)
    old = [set(person.may(guarded.path)) for person in people]
    assert old == [{"r", "w"}, {"r"}, set(), set()]
    assert guarded.start([[*step, "kill"]]).returncode == -signal.SIGKILL
    left = list(guarded.folder.glob(".*.part"))
    assert len(left) == (guarded.named or step[0] == "rename")
    for unfinished in left:
        new = [set(person.may(unfinished)) for person in people]
        assert all(after <= before for before, after in zip(old, new, strict=True)), new


@pytest.mark.parametrize("has_old", [True, False])
def test_what_is_not_finished_is_its_writers_alone(target: Target, has_old: bool):
    target.named = True
    if not has_old:
        target.path.unlink()
    assert target.start([["write", 2, "kill"]]).returncode == -signal.SIGKILL
    (unfinished,) = target.folder.glob(".*.part")
    assert unfinished.stat().st_mode & 0o7777 == 0o600


@needs_root
@pytest.mark.parametrize(
    ("call", "number", "part"),
    [
        ("flistxattr", 1, "extended attributes"),
        ("fgetxattr", 1, "extended attributes"),
        ("fsetxattr", 1, "extended attributes"),
        ("fchown", 1, "group"),
        ("fchown", 2, "owner"),
        ("flistxattr", 2, "access list"),
        ("fsetxattr", 2, "access list"),
    ],
)
@pytest.mark.parametrize("reason", [errno.EIO, errno.ENOSPC, errno.EACCES])
def test_what_cannot_be_kept_is_named(
    guarded: Target, call: str, number: int, part: str, reason: int
):
    before = state_of(guarded.path)
    answer = guarded.attempt(call, number, reason)
    assert answer["error"] == (
        f"Export to c3d failed : The file could not be completed: the {part} of the old file "
        f"cannot be kept: {os.strerror(reason)}"
    )
    assert answer["files"] == OLD_FILE_ALONE
    assert state_of(guarded.path) == before


def test_a_list_of_the_folder_that_cannot_be_taken_away_is_a_reason_to_refuse(target: Target):
    set_list_for_new_files(target.folder, f"u::rw u:{STRANGER.user}:rw g::- m::rw o::-")
    answer = target.attempt("fremovexattr", 1, errno.EPERM)
    assert answer["error"] == (
        "Export to c3d failed : The file could not be completed: the access list of the old file "
        "cannot be kept: Operation not permitted"
    )
    assert answer["files"] == OLD_FILE_ALONE


@pytest.mark.parametrize("call", ["flistxattr", "fgetxattr"])
def test_a_file_system_without_attributes_is_none(target: Target, call: str):
    answer = target.attempt(call, "every", errno.ENOTSUP)
    assert answer["error"] is None
    assert answer["calls"] > 0
    assert target.path.stat().st_mode & 0o7777 == 0o640
    assert _moxPY.moxGetPointFrameNumber(_moxPY.moxReadAcquisition(str(target.path))) == 5000.0


def test_a_list_stays_where_lists_are_not_listed(target: Target):
    set_access_list(target.path, f"u::rw u:{BOB.user}:rw g::- m::rw o::-")
    before = attributes_of(target.path)
    answer = target.attempt("flistxattr", "every", errno.ENOTSUP)
    assert answer["error"] is None
    assert attributes_of(target.path) == before


@pytest.mark.parametrize("kind", [errno.EPERM, "zero"])
def test_permissions_that_are_right_need_not_be_set(target: Target, kind: Any):
    """A file system whose files all have the same permissions may refuse every change."""
    target.path.chmod(0o600)
    answer = target.attempt("fchmod", "every", kind)
    assert answer["error"] is None
    assert target.path.stat().st_mode & 0o7777 == 0o600


@pytest.mark.parametrize("kind", [errno.EPERM, "zero"])
def test_a_new_file_that_does_not_get_its_permissions_is_no_file(target: Target, kind: Any):
    target.path.unlink()
    answer = target.attempt("fchmod", "every", kind)
    assert answer["error"] == (
        "Export to c3d failed : The file could not be completed: Operation not permitted"
    )
    assert answer["files"] == {}


@pytest.mark.parametrize("kind", [errno.EPERM, "zero"])
def test_permissions_that_are_not_set_are_a_reason_to_refuse(target: Target, kind: Any):
    answer = target.attempt("fchmod", "every", kind)
    assert answer["error"] == (
        "Export to c3d failed : The file could not be completed: the permissions of the old file "
        "cannot be kept: Operation not permitted"
    )
    assert answer["files"] == OLD_FILE_ALONE
