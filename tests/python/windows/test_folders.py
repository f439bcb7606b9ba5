"""Where the log lies, and plugins, whose files the system keeps while they are loaded."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

from support.c3d_bytes import c3d_bytes
from support.log_file import lines_of
from support.package_copy import PackageCopy
from support.systems import windows

pytestmark = windows


def test_the_log_lies_in_the_local_application_data(package: PackageCopy) -> None:
    local = package.folder / "Läufer local"
    package.output_of("import _moxPY", ORVANE_STATE_DIR=None, LOCALAPPDATA=str(local))
    assert lines_of(local / "Tarvex" / "Orvane" / "trace.log") == package.start_lines


def test_without_the_variable_the_system_says_where(package: PackageCopy) -> None:
    import winreg

    folders = r"Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders"
    with winreg.OpenKey(winreg.HKEY_CURRENT_USER, folders) as key:
        local = Path(winreg.QueryValueEx(key, "Local AppData")[0])
    code = "import os, _moxPY; print(os.getpid())"
    process = package.output_of(code, ORVANE_STATE_DIR=None, LOCALAPPDATA=None).strip()
    # The user's own log may hold lines of others.
    log = (local / "Tarvex" / "Orvane" / "trace.log").read_text(encoding="utf-8")
    written = [line for line in log.splitlines() if f" [{process}] " in line]
    assert [line.partition(f" [{process}] ")[2] for line in written[-2:]] == [
        line.split(" ", 2)[2] for line in package.start_lines
    ]


def test_processes_share_the_log(package: PackageCopy) -> None:
    code = "import _moxPY\nfor _ in range(50): _moxPY.unload()"
    package.output_of("import _moxPY")
    environment = {
        **os.environ,
        "PYTHONPATH": os.pathsep.join([str(package.folder / "site"), os.environ["PYTHONPATH"]]),
        "ORVANE_STATE_DIR": str(package.state),
    }
    started = [subprocess.Popen([sys.executable, "-c", code], env=environment) for _ in range(3)]
    assert [process.wait(120) for process in started] == [0, 0, 0]
    assert package.log().count("[info] [tidepool] Plugins unloaded.") == 150


def test_a_plugin_s_file_is_free_once_it_is_unloaded(package: PackageCopy, tmp_path: Path) -> None:
    package.add_own_plugins()
    trial = tmp_path / "trial.c3d"
    trial.write_bytes(c3d_bytes({"LASI": [[1, 2, 3]]}))
    code = """
import pathlib, sys, _moxPY
plugin = pathlib.Path(sys.argv[2])
read = lambda: _moxPY.moxGetPointNumber(_moxPY.moxReadAcquisition(sys.argv[1]))
print(read())
_moxPY.unload()
content = plugin.read_bytes()
plugin.unlink()
plugin.write_bytes(content)
_moxPY.reload()
print(read())
"""
    assert package.output_of(code, trial, package.plugins / "c3d.dll") == "1.0\n1.0\n"


def test_a_package_in_a_folder_with_any_name(tmp_path: Path) -> None:
    copy = PackageCopy(tmp_path / "Läufer 歩行 🚶")
    copy.add_own_plugins()
    trial = tmp_path / "trial.c3d"
    trial.write_bytes(c3d_bytes({"LASI": [[1, 2, 3]]}))
    code = "import sys, _moxPY; print(type(_moxPY.moxReadAcquisition(sys.argv[1])).__name__)"
    assert copy.output_of(code, trial).strip()
    assert copy.log() == copy.start_lines
