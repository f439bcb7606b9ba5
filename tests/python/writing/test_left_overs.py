"""What a process that is killed while it writes leaves in the folder, and for how long."""

from __future__ import annotations

import errno
import os
import signal
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from writing.faults import OLD, Target, needs_faults, several_writes
from writing.people import BOB, set_list_for_new_files
from writing.written import files_in

pytestmark = needs_faults

source = pytest.fixture(several_writes, scope="module")


@pytest.fixture(params=[False, True], ids=["unnamed", "named"])
def target(tmp_path: Path, source: Path, request: pytest.FixtureRequest) -> Target:
    """On a system with files that have no name until they are complete, and on one without."""
    path = tmp_path / "folder" / "trial.c3d"
    path.parent.mkdir()
    path.write_bytes(OLD)
    return Target(source, path, named=request.param)


unnamed = pytest.mark.parametrize("target", [False], indirect=True)
named = pytest.mark.parametrize("target", [True], indirect=True)


def kill(target: Target, *step: Any) -> list[str]:
    """What the process left that was killed at a step, but for the destination."""
    assert target.start([[*step, "kill"]]).returncode == -signal.SIGKILL
    return [name for name in files_in(target.folder) if name != target.path.name]


@unnamed
def test_what_has_no_name_is_gone_with_its_process(target: Target):
    for step in (["write", 1], ["write", 3], ["fchmod", 1], ["fsync", 1], ["linkat", 1]):
        assert kill(target, *step) == []


@pytest.mark.parametrize("step", [["write", 2], ["rename", 1]], ids=lambda step: step[0])
def test_the_next_save_takes_away_what_was_left(target: Target, step: list[Any]):
    left = kill(target, *step)
    assert len(left) == (target.named or step[0] == "rename")
    assert target.attempt("write", 0, "kill")["error"] is None
    assert files_in(target.folder) == ["trial.c3d"]


def test_a_save_that_fails_takes_away_what_was_left(target: Target):
    kill(target, "write", 2)
    assert target.attempt("write", 2, errno.ENOSPC)["error"] is not None
    assert files_in(target.folder) == ["trial.c3d"]
    assert target.path.read_bytes() == OLD


@named
def test_what_was_left_of_another_file_stays(target: Target):
    left = kill(target, "write", 2)
    other = Target(target.source, target.folder / "other.c3d")
    assert other.attempt("write", 0, "kill")["error"] is None
    assert files_in(target.folder) == sorted([*left, "other.c3d", "trial.c3d"])


@pytest.mark.parametrize("step", [["write", 2], ["fsync", 1], ["rename", 1]], ids=lambda s: s[0])
def test_a_save_that_is_not_done_yet_is_left_alone(target: Target, step: list[Any]):
    with target.begin(*step, "stop") as process:
        os.waitid(os.P_PID, process.pid, os.WSTOPPED)
        before = files_in(target.folder)
        assert target.attempt("write", 0, "kill")["error"] is None
        assert files_in(target.folder) == before
        target.path.write_bytes(OLD)
        process.send_signal(signal.SIGCONT)
        answer, _ = process.communicate(timeout=60)
    assert '"error": null' in answer
    assert files_in(target.folder) == ["trial.c3d"]
    assert _moxPY.moxGetPointFrameNumber(_moxPY.moxReadAcquisition(str(target.path))) == 5000.0


@named
def test_without_locks_nothing_is_taken_away(target: Target):
    left = kill(target, "write", 2)
    assert target.attempt("flock", "every", errno.ENOLCK)["error"] is None
    assert files_in(target.folder) == sorted([*left, "trial.c3d"])


@pytest.mark.parametrize("has_list", [False, True], ids=["umask", "list"])
def test_a_new_file_has_the_rights_of_any_other(target: Target, has_list: bool):
    target.path.unlink()
    if has_list:
        set_list_for_new_files(target.folder, f"u::rwx u:{BOB.user}:rwx g::rx m::rwx o::rx")
    before = os.umask(0o026)
    try:
        assert target.attempt("write", 0, "kill")["error"] is None
        other = target.folder / "other.c3d"
        other.touch()
    finally:
        os.umask(before)
    assert target.path.stat().st_mode == other.stat().st_mode
    lists = [
        {name: os.getxattr(path, name) for name in os.listxattr(path)}
        for path in (target.path, other)
    ]
    assert lists[0] == lists[1]
    assert bool(lists[0]) == has_list
