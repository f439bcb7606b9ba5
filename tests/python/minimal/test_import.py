"""The module, its libraries, its plugins and the command line are there."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import _moxPY
import moxPY as mox


def test_the_versions_agree() -> None:
    assert mox.__version__ == _moxPY.moxGetVersion()


def test_every_function_of_the_face_is_in_the_module() -> None:
    assert [name for name in mox.functions.__all__ if not hasattr(_moxPY, name)] == []


def test_the_plugins_lie_beside_the_module() -> None:
    folder = Path(_moxPY.__file__).parent / "plugins"
    assert {"c3d", "classical_mechanics", "data_modifier", "opensim"} <= {
        path.stem for path in folder.iterdir()
    }


def test_the_import_logs_where_plugins_are(tmp_path: Path) -> None:
    environment = {**os.environ, "ORVANE_STATE_DIR": str(tmp_path)}
    subprocess.run([sys.executable, "-c", "import _moxPY"], env=environment, check=True)
    lines = (tmp_path / "trace.log").read_text(encoding="utf-8").splitlines()
    assert len(lines) == 2
    # The log has backslashes twice, so that none of them can be taken for the mark of a character.
    folder = str(Path(_moxPY.__file__).parent / "plugins").replace("\\", r"\\")
    assert lines[1].endswith(f"Plugins path: {folder}")


def test_the_example_trial_is_installed() -> None:
    assert mox.read(mox.example()).frames == 360


def test_the_command_line_tells_about_a_file(walk: Path) -> None:
    told = subprocess.run(
        [sys.executable, "-m", "moxPY", "info", str(walk)],
        capture_output=True, text=True, check=True,
    )  # fmt: skip
    assert told.stderr == ""
    assert "frames   5 at 100 Hz (0.05 s), 1 to 5\n" in told.stdout


def test_plugins_leave_and_come_back(walk: Path) -> None:
    code = """
import sys, _moxPY
_moxPY.unload()
try:
    _moxPY.moxReadAcquisition(sys.argv[1])
except RuntimeError as error:
    print(error)
_moxPY.reload()
print(_moxPY.moxGetPointNumber(_moxPY.moxReadAcquisition(sys.argv[1])))
"""
    told = subprocess.run(
        [sys.executable, "-c", code, str(walk)], capture_output=True, text=True, check=True
    )
    assert told.stdout == (
        f"No importer accepts the file '{walk}': no importer plugin is loaded\n2.0\n"
    )
