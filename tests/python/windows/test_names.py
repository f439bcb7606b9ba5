"""Names as Windows knows them: drives, the prefix for long ones, any 16-bit characters."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import moxPY as mox
import pytest
from support.failures import failure_of
from support.systems import windows
from windows.conftest import CONTENT

pytestmark = windows


def test_forward_and_backward_slashes(trial: mox.Trial, tmp_path: Path) -> None:
    name = str(tmp_path / "a.c3d").replace("\\", "/")
    _moxPY.moxWriteAcquisition(trial, name)
    assert mox.read(name.replace("/", "\\")).frames == 2


def test_a_name_relative_to_the_drive(
    trial: mox.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    drive = tmp_path.drive
    _moxPY.moxWriteAcquisition(trial, f"{drive}a.c3d")
    assert [path.name for path in tmp_path.iterdir()] == ["a.c3d"]
    assert mox.read(f"{drive}a.c3d").frames == 2


def test_a_name_from_the_root_of_the_drive(
    trial: mox.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    name = str(tmp_path / "a.c3d").removeprefix(tmp_path.drive)
    _moxPY.moxWriteAcquisition(trial, name)
    assert mox.read(tmp_path / "a.c3d").frames == 2


def test_the_prefix_for_long_names(trial: mox.Trial, tmp_path: Path) -> None:
    name = "\\\\?\\" + str(tmp_path / "a.c3d").replace("/", "\\")
    _moxPY.moxWriteAcquisition(trial, name)
    assert [path.name for path in tmp_path.iterdir()] == ["a.c3d"]
    assert mox.read(name).frames == 2


def test_a_name_beyond_260_characters(trial: mox.Trial, tmp_path: Path) -> None:
    prefixed = "\\\\?\\" + str(tmp_path).replace("/", "\\")
    for _ in range(4):
        prefixed += "\\" + "d" * 80
        Path(prefixed).mkdir()
    name = prefixed + "\\a.c3d"
    assert len(name) > 300
    _moxPY.moxWriteAcquisition(trial, name)
    assert [path.name for path in Path(prefixed).iterdir()] == ["a.c3d"]
    assert mox.read(name).frames == 2


def test_a_share_that_is_not_there_is_named() -> None:
    name = "\\\\no-such-server\\share\\a.c3d"
    text = f"The filename '{name}' does not exist"
    assert failure_of(_moxPY.moxReadAcquisition, name) == (RuntimeError, text)


@pytest.mark.parametrize("name", ["Läufer.c3d", "La\u0308ufer.c3d", "🚶 歩行.c3d"])
def test_any_name_that_the_system_takes(trial: mox.Trial, tmp_path: Path, name: str) -> None:
    path = str(tmp_path / name)
    Path(path).write_bytes(CONTENT)
    assert _moxPY.moxGetPointNumber(_moxPY.moxReadAcquisition(path)) == 1.0
    _moxPY.moxWriteAcquisition(trial, path)
    assert [entry.name for entry in tmp_path.iterdir()] == [name]


@pytest.mark.parametrize("name", ["\ud83d.c3d", "a\udc00b.c3d"])
def test_a_name_that_is_no_text(tmp_path: Path, name: str) -> None:
    path = tmp_path / name
    assert failure_of(_moxPY.moxReadAcquisition, str(path))[0] is RuntimeError
    try:
        path.write_bytes(CONTENT)
    except OSError:
        pytest.skip("the file system below takes text alone")
    assert _moxPY.moxGetPointNumber(_moxPY.moxReadAcquisition(str(path))) == 1.0


def test_capital_letters_do_not_count(trial: mox.Trial, tmp_path: Path) -> None:
    _moxPY.moxWriteAcquisition(trial, str(tmp_path / "Walk.c3d"))
    assert mox.read(tmp_path / "wALK.C3D").frames == 2
