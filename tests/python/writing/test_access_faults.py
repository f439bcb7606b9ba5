"""Access to a file while its successor takes over the old one's rights, and when it cannot."""

from __future__ import annotations

import errno
import signal
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import pytest
from writing.faults import OLD, OLD_FILE_ALONE, Target, needs_faults, several_writes
from writing.people import (
    OWNER,
    laboratory_folder,
    old_file,
)

pytestmark = needs_faults

source = pytest.fixture(several_writes, scope="module")


@pytest.fixture
def target(source: Path) -> Iterator[Target]:
    """The old file is one's own and has nothing but permissions."""
    for folder in laboratory_folder():
        yield Target(source, old_file(folder, OWNER, mode=0o640, content=OLD))


def test_what_is_not_finished_is_its_writers_alone(target: Target):
    assert target.start([["write", 2, "kill"]]).returncode == -signal.SIGKILL
    (unfinished,) = target.folder.glob(".*.part")
    assert unfinished.stat().st_mode & 0o7777 == 0o600


@pytest.mark.parametrize("kind", [errno.EPERM, "zero"])
def test_permissions_that_are_right_need_not_be_set(target: Target, kind: Any):
    """A file system whose files all have the same permissions may refuse every change."""
    target.path.chmod(0o600)
    answer = target.attempt("fchmod", "every", kind)
    assert answer["error"] is None
    assert target.path.stat().st_mode & 0o7777 == 0o600


@pytest.mark.parametrize("kind", [errno.EPERM, "zero"])
def test_permissions_that_are_not_set_are_a_reason_to_refuse(target: Target, kind: Any):
    answer = target.attempt("fchmod", "every", kind)
    assert answer["error"] == (
        "Export to c3d failed : The file could not be completed: the permissions of the old file "
        "cannot be kept: Operation not permitted"
    )
    assert answer["files"] == OLD_FILE_ALONE
