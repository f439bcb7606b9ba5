"""Whatever fails while a file is written: it is the old one or the complete new one."""

from __future__ import annotations

import errno
import itertools
import os
import re
import signal
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from writing.faults import OLD, OLD_FILE_ALONE, Target, needs_faults, several_writes
from writing.written import files_in

pytestmark = needs_faults

source = pytest.fixture(several_writes, scope="module")


@pytest.fixture
def target(tmp_path: Path, source: Path) -> Target:
    path = tmp_path / "folder" / "trial.c3d"
    path.parent.mkdir()
    path.write_bytes(OLD)
    return Target(source, path)


def numbers_in(error: str, reason: int) -> list[int]:
    """Where a write began, of how many bytes, and how many of them were taken."""
    pattern = (
        r"Export to c3d failed : byte (\d+): (\d+) bytes to be written, (\d+) taken: "
        + re.escape(os.strerror(reason))
    )
    found = re.fullmatch(pattern, error)
    assert found, error
    return list(map(int, found.groups()))


def test_without_a_fault_the_new_file_is_there_alone(target: Target):
    answer = target.attempt("write", 0, "kill")
    assert answer["error"] is None
    assert answer["calls"] >= 3
    assert list(answer["files"]) == ["trial.c3d"]
    assert _moxPY.moxGetPointFrameNumber(_moxPY.moxReadAcquisition(str(target.path))) == 5000.0


@pytest.mark.parametrize("reason", [errno.ENOSPC, errno.EACCES, errno.EIO, errno.EDQUOT])
def test_a_write_that_fails_leaves_the_old_file_alone(target: Target, reason: int):
    writes = target.attempt("write", 0, "kill")["calls"]
    assert writes >= 3
    target.path.write_bytes(OLD)
    answers = target.attempts([["write", number, reason] for number in range(1, writes + 1)])
    places = []
    for number, answer in enumerate(answers, start=1):
        assert answer["calls"] == number  # nothing is tried behind a failure
        assert answer["files"] == OLD_FILE_ALONE
        place, count, taken = numbers_in(answer["error"], reason)
        assert taken == 0
        places.append((place, place + count))
    assert places[0][0] == 0
    for (_, end), (start, _) in itertools.pairwise(places):
        assert start == end


def test_a_write_that_takes_nothing_fails(target: Target):
    answer = target.attempt("write", 2, "zero")
    assert numbers_in(answer["error"], errno.EIO)[2] == 0
    assert answer["files"] == OLD_FILE_ALONE


@pytest.mark.parametrize("kind", ["half", errno.EINTR])
def test_a_write_that_takes_less_is_continued(target: Target, kind: Any):
    whole, interrupted = target.attempts([["write", 0, "kill"], ["write", 2, kind]])
    assert interrupted["error"] is None
    assert interrupted["calls"] == whole["calls"] + 1
    assert interrupted["files"] == whole["files"]


@pytest.mark.parametrize("call", ["fsync", "rename"])
@pytest.mark.parametrize("reason", [errno.ENOSPC, errno.EACCES, errno.EIO])
def test_a_file_that_cannot_be_completed_leaves_the_old_one(target: Target, call: str, reason: int):
    answer = target.attempt(call, 1, reason)
    assert answer["error"] == (
        f"Export to c3d failed : The file could not be completed: {os.strerror(reason)}"
    )
    assert answer["files"] == OLD_FILE_ALONE


def test_a_folder_that_vanishes_meanwhile(target: Target):
    answer = target.attempt("write", 2, "vanish")
    assert answer["error"] == (
        f"Export to c3d failed : The file could not be completed: {os.strerror(errno.ENOENT)}"
    )
    assert answer["files"]["trial.c3d"] == OLD_FILE_ALONE["trial.c3d"]


def test_a_file_that_may_not_grow_leaves_the_old_one(target: Target):
    answer = target.attempt("none", 0, "", file_limit=300_000)
    place, _, taken = numbers_in(answer["error"], errno.EFBIG)
    assert place + taken == 300_000
    assert answer["files"] == OLD_FILE_ALONE


def test_after_a_failure_the_same_acquisition_can_be_written(target: Target):
    refused, written = target.attempts([["write", 2, errno.ENOSPC], ["write", 0, "kill"]])
    assert refused["error"] is not None
    assert written["error"] is None
    assert list(written["files"]) == ["trial.c3d"]


@pytest.mark.parametrize(
    "fault", [["write", 1], ["write", 2], ["write", 3], ["fsync", 1], ["rename", 1]], ids=str
)
def test_a_process_that_is_killed_leaves_the_old_file(target: Target, fault: list[Any]):
    finished = target.start([[*fault, "kill"]])
    assert finished.returncode == -signal.SIGKILL
    assert target.path.read_bytes() == OLD


def test_a_process_killed_behind_the_replacement_leaves_the_new_file(target: Target):
    """The folder's entry is brought to the medium after the file has its name."""
    target.start([["fsync", 2, "kill"]])
    acquisition = _moxPY.moxReadAcquisition(str(target.path))
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 5000.0
    assert files_in(target.folder) == ["trial.c3d"]
