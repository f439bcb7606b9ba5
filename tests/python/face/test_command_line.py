"""`python -m moxPY info`: a summary for each file, whatever the others are like."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import moxPY
import pytest
from moxPY.command_line import main
from support.c3d_bytes import c3d_bytes

TRIAL = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"

SUMMARY = f"""\
{TRIAL}
  frames   360 at 100 Hz (3.60 s), 1 to 360
  markers  40 in mm, 7 with gaps
  angles   8 in deg
  forces   8 in N
  moments  6 in Nmm/kg
  powers   6 in W
  analogs  20 in N, Nmm, V; 1000 Hz, 10 per frame
"""


def test_the_summary_names_everything(capsys: pytest.CaptureFixture[str]):
    assert main(["info", str(TRIAL)]) == 0
    assert capsys.readouterr() == (SUMMARY, "")


def test_a_file_that_fails_does_not_stop_the_rest(
    tmp_path: Path, capsys: pytest.CaptureFixture[str]
):
    missing = str(tmp_path / "missing.c3d")
    assert main(["info", missing, str(TRIAL)]) == 1
    out, err = capsys.readouterr()
    assert out == SUMMARY
    assert err == f"{missing}: The filename '{missing}' does not exist\n"


def test_a_foreign_file_fails(tmp_path: Path, capsys: pytest.CaptureFixture[str]):
    foreign = tmp_path / "notes.c3d"
    foreign.write_text("This is no trial.")
    assert main(["info", str(foreign)]) == 1
    out, err = capsys.readouterr()
    assert out == ""
    assert err.startswith(f"{foreign}: ")


def test_memory_that_runs_out_is_named(
    monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
):
    def without_memory(_: str) -> None:
        raise MemoryError

    monkeypatch.setattr("moxPY.command_line.moxReadAcquisition", without_memory)
    assert main(["info", "huge.c3d"]) == 1
    assert capsys.readouterr().err == "huge.c3d: MemoryError\n"


def test_an_empty_trial_has_a_summary(tmp_path: Path, capsys: pytest.CaptureFixture[str]):
    empty = tmp_path / "empty.c3d"
    empty.write_bytes(c3d_bytes())
    assert main(["info", str(empty)]) == 0
    assert capsys.readouterr().out.startswith(f"{empty}\n  frames   0 at 100 Hz\n")


def test_no_command_is_a_usage_error(capsys: pytest.CaptureFixture[str]):
    with pytest.raises(SystemExit) as caught:
        main([])
    assert caught.value.code == 2
    assert capsys.readouterr().err.startswith("usage: python -m moxPY")


def test_the_version_is_shown(capsys: pytest.CaptureFixture[str]):
    with pytest.raises(SystemExit) as caught:
        main(["--version"])
    assert caught.value.code == 0
    assert capsys.readouterr().out == f"{moxPY.__version__}\n"


def test_the_package_runs_as_a_program():
    finished = subprocess.run(
        [sys.executable, "-m", "moxPY", "info", TRIAL, "missing.c3d"],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        capture_output=True,
        text=True,
        check=False,
    )
    assert finished.returncode == 1
    assert finished.stdout == SUMMARY
    assert finished.stderr == "missing.c3d: The filename 'missing.c3d' does not exist\n"


@pytest.mark.skipif(sys.platform == "win32", reason="names are not bytes there")
def test_a_name_that_is_no_text_is_shown_all_the_same(tmp_path: Path):
    name = os.fsencode(tmp_path) + b"/walk\xff.c3d"
    with open(name, "wb") as file:  # noqa: PTH123 a name of bytes
        file.write(TRIAL.read_bytes())
    finished = subprocess.run(
        [sys.executable, "-m", "moxPY", "info", name],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        capture_output=True,
        check=False,
    )
    assert finished.returncode == 0, finished.stderr
    assert b"walk\\udcff.c3d\n  frames   360" in finished.stdout
