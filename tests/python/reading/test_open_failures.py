"""What the system says of files that cannot be opened or read, in errors and in the log."""

from __future__ import annotations

import errno
import json
import os
import subprocess
import sys
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import pytest
from support.c3d_bytes import c3d_bytes
from support.read_c3d import track
from support.small_trials import new_trial
from support.systems import posix
from writing.faults import SHIM, needs_faults
from writing.people import OWNER, laboratory_folder, needs_root

pytestmark = posix


def closed(folder: Path) -> Path:
    path = folder / "closed.c3d"
    path.write_bytes(b"old")
    path.chmod(0)
    return path


def in_a_closed_folder(folder: Path) -> Path:
    (folder / "closed").mkdir(mode=0o700)
    (folder / "closed" / "walk.c3d").write_bytes(b"old")
    return folder / "closed" / "walk.c3d"


def in_a_circle(folder: Path) -> Path:
    path = folder / "circle.c3d"
    path.symlink_to(path)
    return path


def a_folder(folder: Path) -> Path:
    path = folder / "folder.c3d"
    path.mkdir()
    return path


def below_a_file(folder: Path) -> Path:
    (folder / "file").write_bytes(b"")
    return folder / "file" / "walk.c3d"


PLACES = [
    pytest.param(closed, errno.EACCES, PermissionError, marks=needs_root),
    pytest.param(in_a_closed_folder, errno.EACCES, PermissionError, marks=needs_root),
    (in_a_circle, errno.ELOOP, OSError),
    (a_folder, errno.EISDIR, IsADirectoryError),
    (below_a_file, errno.ENOTDIR, NotADirectoryError),
    (lambda folder: folder / "missing" / "walk.c3d", errno.ENOENT, FileNotFoundError),
    (lambda folder: folder / f"{'a' * 300}.c3d", errno.ENAMETOOLONG, OSError),
]
NAMES = ["closed", "closed folder", "circle", "folder", "below a file", "missing", "long"]
each_place = pytest.mark.parametrize(("make", "number", "kind"), PLACES, ids=NAMES)
# The log is closed to others, too.
each_open_place = pytest.mark.parametrize(("make", "number", "kind"), PLACES[2:], ids=NAMES[2:])


@pytest.fixture
def place(make: Callable[[Path], Path]) -> Iterator[Path]:
    for folder in laboratory_folder():
        yield make(folder)


def attempt(call: Callable[..., Any], *arguments: Any) -> Exception:
    with pytest.raises(Exception) as raised:  # noqa: PT011
        call(*arguments)
    return raised.value


def write_by_function(path: str) -> None:
    _moxPY.moxWriteAcquisition(new_trial(), path)


def write_by_method(path: str) -> None:
    mox.Trial.of(new_trial()).write(path)


@each_place
@pytest.mark.parametrize("call", [mox.read, write_by_method])
def test_an_error_is_of_the_kind_that_the_reason_has(
    place: Path, number: int, kind: type[OSError], call: Callable[..., Any]
):
    with OWNER.acts():
        error = attempt(call, str(place))
    assert type(error) is kind
    assert isinstance(error, OSError)
    assert (error.errno, error.strerror) == (number, os.strerror(number))
    assert error.filename == str(place)


@each_open_place
def test_the_log_says_why_a_file_is_not_read(
    place: Path, number: int, kind: type[OSError], new_log_lines: Callable[[], list[str]]
):
    error = attempt(_moxPY.moxReadAcquisition, str(place))
    opened = f"Impossible to open in read mode the file '{place}'"
    assert str(error) in (opened, f"The filename '{place}' does not exist")
    assert new_log_lines() == [f"[error] [strata] {error}: {os.strerror(number)}"]


@each_open_place
def test_the_log_says_why_a_file_is_not_written(
    place: Path, number: int, kind: type[OSError], new_log_lines: Callable[[], list[str]]
):
    error = attempt(write_by_function, str(place))
    assert str(error) == f"Export to c3d failed, could not create file at: {place}"
    assert new_log_lines() == [f"[error] [strata] {error}: {os.strerror(number)}"]


def test_the_log_says_that_a_name_has_a_nul(tmp_path: Path, new_log_lines: Callable[[], list[str]]):
    for call in (_moxPY.moxReadAcquisition, write_by_function):
        error = attempt(call, f"{tmp_path}/a\0.c3d")
        assert type(error) is RuntimeError
        shown = str(error).replace("\0", "\\x00")
        assert new_log_lines()[-1] == f"[error] [strata] {shown}: {os.strerror(errno.EINVAL)}"


READ = """
import json, os, sys, _moxPY, moxPY as mox
_moxPY.moxReadAcquisition(sys.argv[1])
os.environ["MOX_FAULT_CALL"] = "pread"
for call in (_moxPY.moxReadAcquisition, mox.read):
    try:
        call(sys.argv[1])
        print(json.dumps(["read"]))
    except Exception as error:
        details = [getattr(error, name, None) for name in ("errno", "filename")]
        print(json.dumps([type(error).__name__, str(error), *details]))
"""


def readings(path: Path, reason: int, number: str) -> list[list[Any]]:
    """What reading a file gives, by function and as a trial, while a call of the system fails."""
    loaded_before = os.environ.get("LD_PRELOAD")
    done = subprocess.run(
        [sys.executable, "-c", READ, path],
        env=os.environ
        | {
            "PYTHONPATH": os.pathsep.join(filter(None, sys.path)),
            "LD_PRELOAD": ":".join(filter(None, [loaded_before, str(SHIM)])),
            "MOX_FAULT_FOLDER": str(path.parent),
            "MOX_FAULT_NUMBER": number,
            "MOX_FAULT_KIND": str(reason),
        },
        capture_output=True,
        text=True,
        check=True,
    )
    return [json.loads(line) for line in done.stdout.splitlines()]


@needs_faults
@pytest.mark.parametrize("name", ["walk.c3d", "walk.trc"])
@pytest.mark.parametrize("reason", [errno.EIO, errno.ESTALE])
def test_a_file_of_which_the_kind_cannot_be_seen_is_not_called_foreign(
    tmp_path: Path, name: str, reason: int
):
    path = tmp_path / name
    path.write_bytes(c3d_bytes({"A": track(3)}))
    by_function, as_trial = readings(path, reason, "every")
    assert by_function[:2] == [
        "RuntimeError",
        f"'{path}': byte 0: reading failed: {os.strerror(reason)}",
    ]
    text = f"[Errno {reason}] {os.strerror(reason)}: '{path}'"
    assert as_trial == ["OSError", text, reason, str(path)]
