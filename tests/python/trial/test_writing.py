"""Trials as files: the bytes, the errors, and what is left when one is raised."""

from __future__ import annotations

import io
import os
import re
import signal
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.leaks import assert_nothing_lost
from support.sample_table import SAMPLES
from support.small_trials import KINDS, example_trial, new_trial
from support.store_tree import snapshot
from support.systems import NO_FOLDER, posix
from writing.people import ALICE, Person


@pytest.fixture
def trial() -> mox.Trial:
    return mox.Trial.of(new_trial())


def bytes_of(acquisition: Any, folder: Path) -> bytes:
    """What the function writes."""
    path = folder / "by_function.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(path))
    return path.read_bytes()


def contents(folder: Path) -> dict[str, bytes]:
    return {path.name: path.read_bytes() for path in folder.iterdir()}


def in_memory(trial: mox.Trial, **form: Any) -> bytes:
    file = io.BytesIO()
    trial.write(file, **form)
    return file.getvalue()


@pytest.mark.parametrize("kind", [kind for kind in KINDS if kind != "new and empty"])
def test_a_file_is_the_one_that_the_function_writes(kind: str, tmp_path: Path):
    (tmp_path / "source").mkdir()
    trial = mox.Trial.of(KINDS[kind](tmp_path / "source"))
    trial.rate = trial.rate or 100.0
    same = trial.copy()
    trial.write(tmp_path / "by_method.c3d")
    assert (tmp_path / "by_method.c3d").read_bytes() == bytes_of(same, tmp_path)
    assert in_memory(trial) == bytes_of(same, tmp_path)
    assert snapshot(trial) == snapshot(same)


@pytest.mark.parametrize("name", [sample.name for sample in SAMPLES])
def test_a_sample_is_written_as_the_function_writes_it(name: str, sample: Any, tmp_path: Path):
    trial = mox.read(sample(name), odd="ignore")
    expected = bytes_of(_moxPY.moxReadAcquisition(str(sample(name))), tmp_path)
    trial.write(tmp_path / "by_method.c3d")
    assert (tmp_path / "by_method.c3d").read_bytes() == expected
    assert in_memory(trial) == expected


class FsPath:
    def __init__(self, path: Any) -> None:
        self._path = path

    def __fspath__(self) -> Any:
        return self._path


@pytest.mark.parametrize(
    "kind",
    [str, Path, lambda path: FsPath(str(path)), lambda path: FsPath(os.fsencode(path))],
    ids=["str", "Path", "PathLike of str", "PathLike of bytes"],
)
def test_every_kind_of_path_is_taken(trial: mox.Trial, tmp_path: Path, kind: Any):
    path = tmp_path / "walk.c3d"
    trial.write(kind(path))
    assert path.read_bytes() == in_memory(trial)


def test_a_path_is_relative_to_the_current_folder(
    trial: mox.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.chdir(tmp_path)
    trial.write("walk.C3D")
    assert [*contents(tmp_path)] == ["walk.C3D"]


def test_an_old_file_is_replaced(trial: mox.Trial, tmp_path: Path):
    path = tmp_path / "walk.c3d"
    path.write_bytes(b"old")
    trial.write(path)
    assert contents(tmp_path) == {"walk.c3d": in_memory(trial)}


def test_a_file_can_be_written_over_its_own_source(tmp_path: Path):
    path = tmp_path / "walk.c3d"
    mox.Trial.of(example_trial()).write(path)
    trial = mox.read(path)
    expected = trial.markers["LASI"].values
    trial.write(trial.path)
    np.testing.assert_array_equal(mox.read(path).markers["LASI"].values, expected)


# File objects.


class Slow(io.RawIOBase):
    """Takes a hundred bytes at a time, as a raw file may."""

    def __init__(self) -> None:
        self.content = b""

    def write(self, content: Any) -> int:
        taken = bytes(content[:100])
        self.content += taken
        return len(taken)


class Silent:
    """Takes everything and does not say so."""

    def __init__(self) -> None:
        self.content = b""

    def write(self, content: Any) -> None:
        self.content += bytes(content)


@pytest.mark.parametrize("kind", [Slow, Silent])
def test_every_kind_of_file_object_gets_all(trial: mox.Trial, kind: Any):
    file = kind()
    trial.write(file)
    assert file.content == in_memory(trial)


def test_a_file_object_is_written_from_where_it_is(trial: mox.Trial, tmp_path: Path):
    with (tmp_path / "many.bin").open("wb") as file:
        file.write(b"before")
        trial.write(file)
        file.write(b"after")
    assert (tmp_path / "many.bin").read_bytes() == b"before" + in_memory(trial) + b"after"


def test_a_text_file_is_refused(trial: mox.Trial):
    with pytest.raises(TypeError, match=r"binary file object, not to a text file$"):
        trial.write(io.StringIO())


@pytest.mark.parametrize("path", [None, 3, b"walk.c3d", ["walk.c3d"]])
def test_what_is_neither_path_nor_file_is_refused(trial: mox.Trial, path: Any):
    kind = type(path).__name__
    with pytest.raises(TypeError, match=f"^a trial is written to a path or .*, not to {kind}$"):
        trial.write(path)


def test_an_error_of_the_file_object_is_passed_on(trial: mox.Trial):
    class Full:
        def write(self, content: Any) -> int:
            raise OSError(28, "No space left on device")

    with pytest.raises(OSError, match="No space left"):
        trial.write(Full())


# What the system refuses.


def assert_refused(trial: mox.Trial, path: Path, failure: type[OSError], folder: Path) -> OSError:
    before, held = contents_below(folder), snapshot(trial)
    with pytest.raises(failure) as raised:
        trial.write(path)
    assert type(raised.value) is failure
    assert raised.value.filename == str(path)
    assert contents_below(folder) == before
    assert snapshot(trial) == held
    return raised.value


def contents_below(folder: Path) -> dict[str, bytes | None]:
    return {str(path): path.read_bytes() if path.is_file() else None for path in folder.rglob("*")}


def test_a_missing_folder_is_named(trial: mox.Trial, tmp_path: Path):
    path = tmp_path / "missing" / "walk.c3d"
    failure = assert_refused(trial, path, FileNotFoundError, tmp_path)
    assert str(failure) == f"[Errno 2] No such file or directory: {str(path)!r}"


def test_a_folder_is_not_replaced(trial: mox.Trial, tmp_path: Path):
    (tmp_path / "walk.c3d").mkdir()
    assert_refused(trial, tmp_path / "walk.c3d", IsADirectoryError, tmp_path)
    failure = assert_refused(trial, tmp_path, IsADirectoryError, tmp_path)
    assert str(failure) == f"[Errno 21] Is a directory: {str(tmp_path)!r}"


def test_a_file_in_the_way_is_no_folder(trial: mox.Trial, tmp_path: Path):
    (tmp_path / "file").write_bytes(b"")
    assert_refused(trial, tmp_path / "file" / "walk.c3d", NO_FOLDER, tmp_path)


@posix
def test_a_closed_folder_is_not_written_to(trial: mox.Trial, tmp_path: Path):
    closed = tmp_path / "closed"
    closed.mkdir(mode=0o755)
    for folder in (tmp_path, *tmp_path.parents[:2]):
        folder.chmod(0o755)
    person = ALICE if os.getuid() == 0 else Person(os.getuid(), ())
    if person is not ALICE:
        closed.chmod(0o555)
    with person.acts():
        assert_refused(trial, closed / "walk.c3d", PermissionError, tmp_path)


@contextmanager
def file_size(limit: int) -> Iterator[None]:
    """No file of this process gets longer, as on a full disk."""
    import resource

    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    handler = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (limit, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
        signal.signal(signal.SIGXFSZ, handler)


@pytest.mark.skipif(os.name != "posix", reason="no limits of file sizes")
@pytest.mark.parametrize("old", [None, b"old"])
def test_a_full_disk_leaves_what_was_there(trial: mox.Trial, tmp_path: Path, old: bytes | None):
    path = tmp_path / "walk.c3d"
    if old is not None:
        path.write_bytes(old)
    held = snapshot(trial)
    with file_size(700), pytest.raises(OSError, match="File too large") as raised:
        trial.write(path)
    assert raised.value.filename == str(path)
    assert contents(tmp_path) == ({} if old is None else {"walk.c3d": old})
    assert snapshot(trial) == held


# What no file can hold.


def assert_no_file(trial: mox.Trial, folder: Path, text: str) -> None:
    held = snapshot(trial)
    for target in (folder / "walk.c3d", io.BytesIO()):
        with pytest.raises(ValueError, match=f"^{re.escape(text)}"):
            trial.write(target)
        assert not isinstance(target, io.BytesIO) or target.getvalue() == b""
    assert contents(folder) == {}
    assert snapshot(trial) == held


def test_a_trial_without_a_rate_is_not_written(tmp_path: Path):
    trial = mox.Trial.of(_moxPY.moxNewAcquisition(1, 2))
    assert_no_file(trial, tmp_path, "Frequency is not set, impossible to export to c3d")


def test_a_rate_that_no_file_holds_is_not_written(trial: mox.Trial, tmp_path: Path):
    trial.write(io.BytesIO())
    trial.rate = 1e300
    assert_no_file(trial, tmp_path, "the trial cannot be written: POINT:RATE is 1e+300 Hz")


@pytest.mark.parametrize("name", ["walk.csv", "walk", "walk.c3d.bak", "c3d"])
def test_other_names_are_refused(trial: mox.Trial, tmp_path: Path, name: str):
    path = f"{tmp_path}/{name}"
    with pytest.raises(
        ValueError, match=f"^'{re.escape(path)}': the name of a C3D file ends in .c3d$"
    ):
        trial.write(path)
    assert contents(tmp_path) == {}


@pytest.mark.parametrize("value", ["float", "Real", "int16"])
def test_other_storage_is_refused(trial: mox.Trial, tmp_path: Path, value: Any):
    text = f"^the storage of samples is 'real', 'integer' or 'source', not '{value}'$"
    with pytest.raises(ValueError, match=text):
        trial.write(tmp_path / "walk.c3d", storage=value)
    with pytest.raises(ValueError, match=text):
        in_memory(trial, storage=value)
    assert contents(tmp_path) == {}


@pytest.mark.parametrize("value", ["Intel", "sgi", "84"])
def test_another_processor_is_refused(trial: mox.Trial, tmp_path: Path, value: Any):
    text = f"^the processor is 'intel', 'dec', 'mips' or 'source', not '{value}'$"
    with pytest.raises(ValueError, match=text):
        trial.write(tmp_path / "walk.c3d", processor=value)
    assert contents(tmp_path) == {}


def test_the_form_that_is_asked_for_is_not_kept(trial: mox.Trial):
    before = snapshot(trial)
    in_memory(trial, storage="real", processor="source")
    assert snapshot(trial) == before


def test_reals_of_intel_are_what_is_written_unasked(trial: mox.Trial):
    assert in_memory(trial, storage="real", processor="intel") == in_memory(trial)
    # A trial that was not read has no other form.
    assert in_memory(trial, storage="source", processor="source") == in_memory(trial)


def test_a_closed_trial_is_not_written(trial: mox.Trial, tmp_path: Path):
    trial.close()
    for target in (tmp_path / "walk.c3d", io.BytesIO()):
        with pytest.raises(ValueError, match=r"^the trial was closed$"):
            trial.write(target)
    assert contents(tmp_path) == {}


def test_writing_loses_no_memory(trial: mox.Trial, tmp_path: Path):
    def refused(path: Path) -> None:
        with pytest.raises(OSError, match="No such file"):
            trial.write(path)

    assert_nothing_lost(lambda: trial.write(tmp_path / "walk.c3d"), trial)
    assert_nothing_lost(lambda: in_memory(trial), trial)
    assert_nothing_lost(lambda: refused(tmp_path / "missing" / "walk.c3d"), trial)
