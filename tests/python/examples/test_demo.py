"""The demo: a summary in text and a picture."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import pytest
from support.c3d_bytes import c3d_bytes

EXAMPLES = Path(__file__).resolve().parents[3] / "examples"


def run_demo(trial: Path, picture: Path) -> str:
    pytest.importorskip("matplotlib")
    finished = subprocess.run(
        [sys.executable, EXAMPLES / "demo.py", trial, picture],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        capture_output=True,
        text=True,
        check=False,
    )
    assert finished.returncode == 0, finished.stderr
    return finished.stdout


def test_the_summary_tells_rates_channels_units_and_gaps(tmp_path: Path):
    lines = run_demo(EXAMPLES / "gait_trial.c3d", tmp_path / "plot.png").splitlines()
    assert "  points   360 frames at 100 Hz, from 1 to 360" in lines
    assert "  analogs  3600 samples at 1000 Hz, 10 per frame" in lines
    assert "     40 markers  mm         LFHD, LBHD, RFHD, RBHD, ..." in lines
    assert "     20 analogs  N, Nmm, V  Fx1, Fy1, Fz1, Mx1, ..." in lines
    assert "      type 2   (114, 30, 755) N at (346, -88, 0)" in lines  # upwards, on the foot
    assert "      RWRB   11 of 360 frames: 119 to 123, 232 to 237" in lines


def test_the_summary_fits_into_80_columns(tmp_path: Path):
    trial = tmp_path / "long.c3d"
    seen, lost = [1.0, 2.0, 3.0], [float("nan")] * 3
    labels = [f"Subject:A marker of the upper body, number {n}" for n in range(3)]
    trial.write_bytes(c3d_bytes({label: [seen, lost] * 20 for label in labels}))
    printed = run_demo(trial, tmp_path / "plot.png")
    summary = printed[: printed.index("\nPlot: ")].splitlines()
    assert max(map(len, summary)) <= 80
    gaps = " ".join(summary).split("frames:")[1]
    assert all(f"{frame} to {frame}" in gaps for frame in range(2, 41, 2))


def test_the_plot_is_a_picture(tmp_path: Path):
    picture = tmp_path / "plot.png"
    printed = run_demo(EXAMPLES / "gait_trial.c3d", picture)
    assert printed.endswith(f"\nPlot: {picture}\n")
    assert picture.read_bytes().startswith(b"\x89PNG\r\n\x1a\n")


def test_frames_are_numbered_as_in_the_file(tmp_path: Path):
    cut = tmp_path / "cut.c3d"
    positions = [[1.0, 2.0, 3.0], [float("nan")] * 3, [4.0, 5.0, 6.0]]
    cut.write_bytes(c3d_bytes({"LASI": positions}, first_frame=33))
    lines = run_demo(cut, tmp_path / "plot.png").splitlines()
    assert "  points   3 frames at 100 Hz, from 33 to 35" in lines
    assert "      LASI    1 of 3 frames: 34 to 34" in lines


def test_a_trial_without_channels_is_no_failure(tmp_path: Path):
    empty = tmp_path / "empty.c3d"
    empty.write_bytes(c3d_bytes())
    lines = run_demo(empty, tmp_path / "plot.png").splitlines()
    assert "  no gaps" in lines
    assert lines[-1] == "Nothing to plot"
    assert not (tmp_path / "plot.png").exists()
