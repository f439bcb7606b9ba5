"""Files that other programs hold open, files that must not be changed, files that are replaced."""

from __future__ import annotations

import stat
from collections.abc import Callable
from contextlib import AbstractContextManager
from pathlib import Path

import _moxPY
import moxPY as mox
import pytest
from support.failures import failure_of
from support.systems import under_wine, windows
from windows.conftest import CONTENT

pytestmark = windows

Holder = Callable[[Path, int], AbstractContextManager[None]]


@pytest.fixture
def old(tmp_path: Path) -> Path:
    path = tmp_path / "old.c3d"
    path.write_bytes(b"old")
    return path


def refusal(path: Path) -> str:
    return f"Export to c3d failed, could not create file at: {path}"


def assert_old_alone(old: Path) -> None:
    assert old.read_bytes() == b"old"
    assert [path.name for path in old.parent.iterdir()] == [old.name]


@pytest.mark.parametrize("sharing", [0, 1, 3])
def test_a_destination_in_use_stays(
    trial: mox.Trial, old: Path, held: Holder, sharing: int
) -> None:
    with held(old, sharing):
        kind, text = failure_of(_moxPY.moxWriteAcquisition, trial, str(old))
    assert (kind, text) == (RuntimeError, refusal(old))
    assert_old_alone(old)


def test_a_destination_in_use_is_replaced_once_it_is_free(
    trial: mox.Trial, old: Path, held: Holder
) -> None:
    with held(old, 1):
        assert failure_of(_moxPY.moxWriteAcquisition, trial, str(old))[1] == refusal(old)
    _moxPY.moxWriteAcquisition(trial, str(old))
    assert mox.read(old).frames == 2
    assert [path.name for path in old.parent.iterdir()] == [old.name]


def test_a_file_that_others_write_to_is_read(tmp_path: Path, held: Holder) -> None:
    path = tmp_path / "a.c3d"
    path.write_bytes(CONTENT)
    with path.open("r+b"):
        assert mox.read(path).frames == 2


def test_a_file_that_nobody_may_share_is_refused(tmp_path: Path, held: Holder) -> None:
    path = tmp_path / "a.c3d"
    path.write_bytes(CONTENT)
    with held(path, 0):
        text = f"Impossible to open in read mode the file '{path}'"
        assert failure_of(_moxPY.moxReadAcquisition, str(path)) == (RuntimeError, text)


def test_a_file_that_was_read_is_free_again(tmp_path: Path) -> None:
    path = tmp_path / "a.c3d"
    path.write_bytes(CONTENT)
    trial = mox.read(path)
    path.rename(tmp_path / "b.c3d")
    (tmp_path / "b.c3d").unlink()
    assert trial.frames == 2


def test_a_file_marked_read_only_is_not_replaced(trial: mox.Trial, old: Path) -> None:
    old.chmod(stat.S_IREAD)
    try:
        kind, text = failure_of(_moxPY.moxWriteAcquisition, trial, str(old))
        assert kind is RuntimeError
        # Root of the system below Wine may write to it, so that it is known only at the end.
        denied = "Export to c3d failed : The file could not be completed: Permission denied"
        assert text == (denied if under_wine() else refusal(old))
        assert_old_alone(old)
    finally:
        old.chmod(stat.S_IREAD | stat.S_IWRITE)


@pytest.mark.skipif(under_wine(), reason="Wine's ReplaceFileW keeps no attributes")
def test_a_hidden_file_stays_hidden(trial: mox.Trial, old: Path) -> None:
    import ctypes

    system = ctypes.windll.kernel32  # type: ignore[attr-defined]
    assert system.SetFileAttributesW(str(old), stat.FILE_ATTRIBUTE_HIDDEN)
    _moxPY.moxWriteAcquisition(trial, str(old))
    assert mox.read(old).frames == 2
    assert old.stat().st_file_attributes & stat.FILE_ATTRIBUTE_HIDDEN
