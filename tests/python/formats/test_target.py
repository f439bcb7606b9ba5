"""The files of an export appear together or not at all."""

from __future__ import annotations

import os
from pathlib import Path

import pytest
from moxPY.formats import Target


def content_of(folder: Path) -> dict[str, str]:
    return {path.name: path.read_text() for path in folder.iterdir()}


def make(target: Target, *parts: str) -> None:
    for part in parts:
        target.path(part).write_text(f"new {part}")


def test_files_appear_at_the_end(tmp_path: Path) -> None:
    folder = tmp_path / "a" / "b"
    with Target(folder, "walk", ".csv") as target:
        make(target, "x", "")
        assert [path for path in folder.iterdir() if path.suffix] == []
    assert content_of(folder) == {"walk_x.csv": "new x", "walk.csv": "new "}
    assert target.paths == [folder / "walk_x.csv", folder / "walk.csv"]


@pytest.mark.parametrize("failure", [OSError("full"), KeyboardInterrupt()])
def test_a_failure_leaves_what_was_there(failure: BaseException, tmp_path: Path) -> None:
    (tmp_path / "walk_x.csv").write_text("old")

    def fail() -> None:
        with Target(tmp_path, "walk", ".csv", replace=True) as target:
            make(target, "x", "y")
            raise failure

    with pytest.raises(type(failure)):
        fail()
    assert content_of(tmp_path) == {"walk_x.csv": "old"}


def test_folders_that_were_made_go_with_a_failure(tmp_path: Path) -> None:
    def fail() -> None:
        with Target(tmp_path / "a" / "b", "walk", ".csv") as target:
            make(target, "x")
            raise ValueError

    with pytest.raises(ValueError, match=r"^$"):
        fail()
    assert list(tmp_path.iterdir()) == []


@pytest.mark.parametrize("replace", [True, False])
def test_a_file_that_cannot_be_moved_takes_back_those_before(replace: bool, tmp_path: Path) -> None:
    if replace:
        (tmp_path / "walk_x.csv").write_text("old")

    def fail() -> None:
        with Target(tmp_path, "walk", ".csv", replace=replace) as target:
            make(target, "new", "x", "y")
            (tmp_path / "walk_y.csv").mkdir()  # meanwhile

    with pytest.raises(OSError, match=r"walk_y\.csv"):
        fail()
    (tmp_path / "walk_y.csv").rmdir()
    assert content_of(tmp_path) == ({"walk_x.csv": "old"} if replace else {})


def test_files_are_replaced_on_request(tmp_path: Path) -> None:
    (tmp_path / "walk_x.csv").write_text("old")
    with Target(tmp_path, "walk", ".csv", replace=True) as target:
        make(target, "x")
    assert content_of(tmp_path) == {"walk_x.csv": "new x"}
    with Target(tmp_path, "walk", ".csv") as target, pytest.raises(FileExistsError) as caught:
        target.path("x")
    assert caught.value.filename == os.fspath(tmp_path / "walk_x.csv")
    assert content_of(tmp_path) == {"walk_x.csv": "new x"}


def test_a_file_that_another_one_made_meanwhile_stays(tmp_path: Path) -> None:
    def fail() -> None:
        with Target(tmp_path, "walk", ".csv") as target:
            make(target, "a", "x")
            (tmp_path / "walk_x.csv").write_text("theirs")

    with pytest.raises(FileExistsError):
        fail()
    assert content_of(tmp_path) == {"walk_x.csv": "theirs"}


def test_a_file_system_without_links(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    def no_link(*_: object, **__: object) -> None:
        raise PermissionError("no links here")

    monkeypatch.setattr(os, "link", no_link)
    with Target(tmp_path, "walk", ".csv") as target:
        make(target, "x")
    with Target(tmp_path, "walk", ".csv", replace=True) as target:
        make(target, "x", "y")
    assert content_of(tmp_path) == {"walk_x.csv": "new x", "walk_y.csv": "new y"}


def test_a_folder_of_the_name_is_no_file(tmp_path: Path) -> None:
    (tmp_path / "walk.csv").mkdir()
    with (
        Target(tmp_path, "walk", ".csv", replace=True) as target,
        pytest.raises(IsADirectoryError),
    ):
        target.path()


def test_outside_its_block(tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^a target takes files inside its with block$"):
        Target(tmp_path, "walk", ".csv").path()
