"""Files that are replaced: the one that was read, links, permissions, neighbours."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.small_trials import read_trial
from support.systems import make_link, posix
from writing.written import files_in

write = _moxPY.moxWriteAcquisition


@pytest.fixture
def trial(tmp_path_factory: pytest.TempPathFactory) -> Any:
    return read_trial(tmp_path_factory.mktemp("source"))


def points_in(path: Path) -> Any:
    return _moxPY.moxGetPointsValues(_moxPY.moxReadAcquisition(str(path)))


def test_the_file_that_was_read_can_be_written(tmp_path: Path):
    acquisition = read_trial(tmp_path)
    expected = _moxPY.moxGetPointsValues(acquisition)
    expected[0] += 1
    _moxPY.moxSetPointsValues(acquisition, expected)
    write(acquisition, str(tmp_path / "trial.c3d"))
    assert files_in(tmp_path) == ["trial.c3d"]
    np.testing.assert_array_equal(points_in(tmp_path / "trial.c3d"), expected)
    np.testing.assert_array_equal(_moxPY.moxGetPointsValues(acquisition), expected)


def test_a_longer_file_is_replaced_as_a_whole(trial: Any, tmp_path: Path):
    write(trial, str(tmp_path / "new.c3d"))
    (tmp_path / "old.c3d").write_bytes(b"\xff" * 1_000_000)
    write(trial, str(tmp_path / "old.c3d"))
    assert (tmp_path / "old.c3d").read_bytes() == (tmp_path / "new.c3d").read_bytes()


def test_a_link_is_followed_and_stays(trial: Any, tmp_path: Path):
    (tmp_path / "inner").mkdir()
    (tmp_path / "inner" / "real.c3d").write_bytes(b"old")
    link = tmp_path / "link.c3d"
    make_link(link, Path("inner") / "real.c3d")
    write(trial, str(link))
    assert link.readlink() == Path("inner") / "real.c3d"
    assert files_in(tmp_path) == ["inner", "link.c3d"]
    assert files_in(tmp_path / "inner") == ["real.c3d"]
    assert points_in(tmp_path / "inner" / "real.c3d").shape == (4, 24)


def test_a_link_to_a_link_is_followed(trial: Any, tmp_path: Path):
    make_link(tmp_path / "a.c3d", "b.c3d")
    make_link(tmp_path / "b.c3d", tmp_path / "c.c3d")
    (tmp_path / "c.c3d").write_bytes(b"old")
    write(trial, str(tmp_path / "a.c3d"))
    assert [path.name for path in sorted(tmp_path.iterdir()) if path.is_symlink()] == [
        "a.c3d", "b.c3d",
    ]  # fmt: skip
    assert points_in(tmp_path / "c.c3d").shape == (4, 24)


def test_a_link_to_nothing_makes_the_file(trial: Any, tmp_path: Path):
    make_link(tmp_path / "a.c3d", "b.c3d")
    write(trial, str(tmp_path / "a.c3d"))
    assert (tmp_path / "a.c3d").is_symlink()
    assert points_in(tmp_path / "b.c3d").shape == (4, 24)


def test_links_in_a_circle_are_refused(trial: Any, tmp_path: Path):
    make_link(tmp_path / "a.c3d", "a.c3d")
    with pytest.raises(RuntimeError) as raised:
        write(trial, str(tmp_path / "a.c3d"))
    expected = f"Export to c3d failed, could not create file at: {tmp_path / 'a.c3d'}"
    assert str(raised.value) == expected
    assert files_in(tmp_path) == ["a.c3d"]


@posix
@pytest.mark.parametrize("mode", [0o600, 0o644, 0o664, 0o640])
def test_permissions_of_the_old_file_stay(trial: Any, tmp_path: Path, mode: int):
    path = tmp_path / "trial.c3d"
    path.write_bytes(b"old")
    path.chmod(mode)
    write(trial, str(path))
    assert path.stat().st_mode & 0o777 == mode


@posix
def test_a_new_file_has_the_permissions_of_any_other(trial: Any, tmp_path: Path):
    before = os.umask(0o027)
    try:
        write(trial, str(tmp_path / "trial.c3d"))
    finally:
        os.umask(before)
    assert (tmp_path / "trial.c3d").stat().st_mode & 0o777 == 0o640


def test_other_files_of_the_folder_stay(trial: Any, tmp_path: Path):
    names = ["trial.c3d.bak", "trial.c3d~", ".trial.c3d", "other.c3d"]
    for name in names:
        (tmp_path / name).write_bytes(name.encode())
    write(trial, str(tmp_path / "trial.c3d"))
    assert files_in(tmp_path) == sorted([*names, "trial.c3d"])
    for name in names:
        assert (tmp_path / name).read_bytes() == name.encode()


def test_a_relative_name_counts_from_the_current_directory(
    trial: Any, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "inner").mkdir()
    for name in ("a.c3d", "./b.c3d", "inner/c.c3d", "inner/../d.c3d"):
        write(trial, name)
        assert (tmp_path / name).exists()


@posix  # Windows: tests/python/windows/test_files_in_use.py
def test_a_file_open_elsewhere_keeps_the_old_content(trial: Any, tmp_path: Path):
    path = tmp_path / "trial.c3d"
    path.write_bytes(b"old")
    with path.open("rb") as reader:
        write(trial, str(path))
        assert reader.read() == b"old"
