"""What a file may be called, and what is said when it cannot be opened."""

from __future__ import annotations

import os
import sys
import tempfile
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from reading.fresh_process import run_python
from support.c3d_bytes import c3d_bytes
from support.read_c3d import points_of, read_bytes, track
from support.systems import make_link, posix

CONTENT = c3d_bytes({"A": track(3)})
NO_STR = (
    "Invalid call! The given path is not a str, maybe try to explicitly convert your object to one."
)


def assert_reads(name: str) -> None:
    np.testing.assert_array_equal(points_of(_moxPY.moxReadAcquisition(name))["A"], track(3))


def refusal(name: str) -> str:
    with pytest.raises(RuntimeError) as failure:
        _moxPY.moxReadAcquisition(name)
    return str(failure.value)


@pytest.mark.parametrize(
    "path", [b"trial.c3d", Path("trial.c3d"), None, 7, ["trial.c3d"]], ids=repr
)
def test_a_path_that_is_no_str_is_refused(path: Any) -> None:
    with pytest.raises(TypeError) as failure:
        _moxPY.moxReadAcquisition(path)
    assert str(failure.value) == NO_STR


def test_a_path_object_is_refused_although_the_file_is_there(tmp_path: Path) -> None:
    (tmp_path / "trial.c3d").write_bytes(CONTENT)
    with pytest.raises(TypeError) as failure:
        _moxPY.moxReadAcquisition(tmp_path / "trial.c3d")
    assert str(failure.value) == NO_STR


def test_a_subclass_of_str_is_a_str(tmp_path: Path) -> None:
    class Name(str):
        __slots__ = ()

    (tmp_path / "trial.c3d").write_bytes(CONTENT)
    assert_reads(Name(tmp_path / "trial.c3d"))


def test_a_relative_name_counts_from_the_current_directory(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    folder = tmp_path / "trials"
    folder.mkdir()
    (folder / "trial.c3d").write_bytes(CONTENT)
    monkeypatch.chdir(tmp_path)
    assert_reads("trials/trial.c3d")
    assert_reads("./trials/../trials/trial.c3d")
    monkeypatch.chdir(folder)
    assert_reads("trial.c3d")


def test_a_missing_file_is_named_as_it_was_given(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    assert refusal("none.c3d") == "The filename 'none.c3d' does not exist"
    assert refusal("./a/../none.c3d") == "The filename './a/../none.c3d' does not exist"


@pytest.mark.parametrize("name", ["", "no\0ne.c3d", "no\nne.c3d", "näm{}e %s.c3d", "n" * 5000])
def test_names_of_no_file(tmp_path: Path, monkeypatch: pytest.MonkeyPatch, name: str) -> None:
    monkeypatch.chdir(tmp_path)
    assert refusal(name) == f"The filename '{name}' does not exist"


def test_a_name_never_ends_at_a_nul(tmp_path: Path) -> None:
    (tmp_path / "trial.c3d").write_bytes(CONTENT)
    name = f"{tmp_path / 'trial.c3d'}\0.txt"
    assert refusal(name) == f"The filename '{name}' does not exist"


def test_a_file_as_a_folder(tmp_path: Path) -> None:
    (tmp_path / "trial.c3d").write_bytes(CONTENT)
    name = str(tmp_path / "trial.c3d" / "x.c3d")
    assert refusal(name) == f"The filename '{name}' does not exist"


def test_a_directory_cannot_be_opened(tmp_path: Path) -> None:
    assert refusal(str(tmp_path)) == f"Impossible to open in read mode the file '{tmp_path}'"


@posix
def test_a_file_without_permission_cannot_be_opened() -> None:
    # Nobody may enter the folders of the test run.
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "trial.c3d"
        path.write_bytes(CONTENT)
        path.chmod(0)
        Path(folder).chmod(0o755)
        assert outcome_in_fresh_process(path) == (
            f"RuntimeError: Impossible to open in read mode the file '{path}'"
        )


@pytest.mark.parametrize(
    "name",
    ["my trial.c3d", "Läufer ÄÖÜ ß.c3d", "歩行.c3d", "🚶.c3d", "'quoted'.c3d", "{}.c3d", "a.b"],
)
def test_names_beyond_plain_letters(tmp_path: Path, name: str) -> None:
    (tmp_path / name).write_bytes(CONTENT)
    assert_reads(str(tmp_path / name))


@pytest.mark.skipif(sys.platform != "linux", reason="file names are bytes on Linux alone")
def test_a_name_of_bytes_that_are_no_text(tmp_path: Path) -> None:
    name = os.fsdecode(os.fsencode(tmp_path) + b"/l\xe4ufer \xff.c3d")
    assert refusal(name) == f"The filename '{name}' does not exist"
    Path(name).write_bytes(CONTENT)
    assert_reads(name)


def test_symbolic_links_are_followed(tmp_path: Path) -> None:
    (tmp_path / "trial.c3d").write_bytes(CONTENT)
    (tmp_path / "folder").mkdir()
    make_link(tmp_path / "one", "trial.c3d")
    make_link(tmp_path / "folder" / "two", "../one")
    assert_reads(str(tmp_path / "folder" / "two"))


def test_links_that_lead_nowhere(tmp_path: Path) -> None:
    make_link(tmp_path / "dangling", "none.c3d")
    make_link(tmp_path / "loop", "loop")
    for link in ("dangling", "loop"):
        name = str(tmp_path / link)
        assert refusal(name) == f"The filename '{name}' does not exist"


@posix
def test_a_pipe_is_refused_without_waiting_for_a_writer() -> None:
    with tempfile.TemporaryDirectory() as folder:
        Path(folder).chmod(0o755)
        pipe = Path(folder) / "pipe"
        os.mkfifo(pipe)
        pipe.chmod(0o644)
        assert outcome_in_fresh_process(pipe) == (
            f"RuntimeError: Impossible to open in read mode the file '{pipe}'"
        )


@posix
@pytest.mark.parametrize("device", ["/dev/null", "/dev/zero"])
def test_a_device_is_refused(device: str) -> None:
    assert outcome_in_fresh_process(Path(device)) == (
        f"RuntimeError: Impossible to open in read mode the file '{device}'"
    )


def outcome_in_fresh_process(path: Path) -> str:
    """A process of its own can be stopped when it waits for ever, and give up being root."""
    script = """
import os, sys, _moxPY
if os.geteuid() == 0:
    os.seteuid(65534)
try:
    _moxPY.moxReadAcquisition(sys.argv[1])
    print("read")
except RuntimeError as error:
    print("RuntimeError:", error)
"""
    return run_python("-c", script, str(path))


@pytest.mark.parametrize("name", ["trial.txt", "trial", "trial.c3d.gz", "TRIAL.C3D"])
def test_the_content_decides_and_not_the_ending(tmp_path: Path, name: str) -> None:
    np.testing.assert_array_equal(points_of(read_bytes(tmp_path, CONTENT, name))["A"], track(3))
