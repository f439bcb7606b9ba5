"""STO files: any channels."""

from __future__ import annotations

from pathlib import Path

import moxPY as mox
import numpy as np
import pytest
from formats.expected import expected_table
from formats.opensim_files import read_storage
from moxPY.trial import Trial

KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")


@pytest.mark.parametrize("kind", KINDS)
def test_every_number_comes_back(any_trial: Trial, kind: str, tmp_path: Path) -> None:
    if not len(getattr(any_trial, kind)):
        pytest.skip("the trial has none")
    (path,) = any_trial.export(tmp_path / "walk.sto", parts=[kind])
    name, _, table = read_storage(path)
    assert name == f"walk_{kind}"
    np.testing.assert_array_equal(table.to_numpy(np.float64), expected_table(any_trial, kind))


def test_columns_are_label_and_axis(odd: Trial, tmp_path: Path) -> None:
    odd.export(tmp_path / "odd.sto")
    head = (tmp_path / "odd_markers.sto").read_text("utf-8").splitlines()
    names = head[head.index("endheader") + 1].split("\t")
    assert names[:2] == ["time", 'a,"b"_x']
    assert names[4::3] == ["Gürtel_x", "L/R Ζ µ_x", "=1+1_x", "time_x", "time_2_x"]
    analogs = (tmp_path / "odd_analogs.sto").read_text("utf-8").splitlines()
    assert "time\ttime_2" in analogs


def test_the_head_says_units_and_axes(walk: Trial, tmp_path: Path) -> None:
    walk.export(tmp_path / "walk.sto", up="y", side="plate", threshold=15.0)
    heads = {path.stem: read_storage(path).head for path in tmp_path.glob("*.sto")}
    assert heads["walk_markers"].items() >= {"up": "y", "unit": "mm", "inDegrees": "no"}.items()
    assert heads["walk_angles"].items() >= {"unit": "deg", "inDegrees": "yes"}.items()
    assert heads["walk_analogs"]["unit_Mz1"] == "Nmm"
    plates = heads["walk_platforms"]
    assert plates.items() >= {"up": "y", "side": "plate", "threshold": "15.0"}.items()
    units = {"force": "N", "point": "mm", "free_moment": "Nmm"}
    assert plates.items() >= {f"unit_platform_2_{part}": u for part, u in units.items()}.items()


def test_events_are_no_numbers(walk: Trial, tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^STO holds markers, .* and force platforms, not 'eve"):
        walk.export(tmp_path / "walk.sto", parts=["events"])


@pytest.mark.parametrize("rate", [25.000001907348633, 59.94, 1.0 / 3.0])
@pytest.mark.parametrize("frames", [1, 3])
def test_rate_and_first_frame_come_back(rate: float, frames: int, tmp_path: Path) -> None:
    trial = Trial.new(frames=frames, rate=rate)
    trial.markers["A"] = np.ones((frames, 3))
    trial.first_frame = 34
    (path,) = trial.export(tmp_path / "walk.sto")
    again = mox.read(path)
    assert (again.frames, again.rate, again.first_frame) == (frames, rate, 34)
