"""The example trial: made by its maker, and with force plates as laboratories have them."""

from __future__ import annotations

import subprocess
import sys
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest

EXAMPLES = Path(__file__).resolve().parents[3] / "examples"
TRIAL = EXAMPLES / "gait_trial.c3d"
SIDES = pytest.mark.parametrize(("plate", "side"), [(0, "R"), (1, "L")])


@pytest.fixture(scope="module")
def trial() -> Any:
    with moxPY.moxReadAcquisition(str(TRIAL)) as opened:
        yield opened


def test_the_maker_writes_the_very_file_that_is_here(tmp_path: Path) -> None:
    made = tmp_path / "made.c3d"
    subprocess.run([sys.executable, EXAMPLES / "make_gait_trial.py", made], check=True)
    assert made.read_bytes() == TRIAL.read_bytes()


@SIDES
def test_z_of_a_plate_points_down_and_its_measuring_origin_is_below(
    trial: Any, plate: int, side: str
) -> None:
    platform = moxPY.moxGetForcePlatforms(trial)[0][plate]
    first, second, _, fourth = platform["corners"].T
    assert np.cross(first - second, first - fourth)[2] < 0.0
    assert platform["origin"][2] < -40.0


@SIDES
def test_the_vertical_channel_is_negative_under_load(trial: Any, plate: int, side: str) -> None:
    force, _ = moxPY.moxGetAnalog(trial, f"Fz{plate + 1}")
    assert force.min() < -700.0
    assert force.max() < 3.0  # noise


@SIDES
def test_the_wrench_is_the_force_on_the_foot(trial: Any, plate: int, side: str) -> None:
    measured = moxPY.moxGetGroundReactionWrenches(trial)[plate]["F"][::10]
    on_the_foot, _ = moxPY.moxGetPoint(trial, f"{side}GroundReactionForce")
    standing = ~np.isnan(on_the_foot[:, 0])
    assert standing.sum() == 67
    assert np.abs(measured - on_the_foot)[standing].max() < 3.0  # noise of the channels
    assert measured[standing, 2].max() > 700.0


@SIDES
def test_the_force_acts_under_the_foot(trial: Any, plate: int, side: str) -> None:
    place = moxPY.moxGetGroundReactionWrenches(trial, 100.0)[plate]["P"][::10]
    heel, _ = moxPY.moxGetPoint(trial, f"{side}HEE")
    toe, _ = moxPY.moxGetPoint(trial, f"{side}TOE")
    ahead_of_heel, behind_toe = (place - heel)[:, 0], (toe - place)[:, 0]
    assert np.nanmin(ahead_of_heel) > 0.0
    assert np.nanmin(behind_toe) > 0.0


@pytest.mark.parametrize(("plate", "strike_s", "moment"), [(0, 1.30, -4200.0), (1, 1.85, 4200.0)])
def test_the_free_moment_is_the_one_on_the_foot(
    trial: Any, plate: int, strike_s: float, moment: float
) -> None:
    quarter_of_the_stance = round((strike_s + 0.66 / 4) * 1000)
    around = slice(quarter_of_the_stance - 5, quarter_of_the_stance + 6)
    measured = moxPY.moxGetGroundReactionWrenches(trial)[plate]["M"][around]
    assert measured[:, :2].tolist() == [[0.0, 0.0]] * 11
    assert measured[:, 2].mean() == pytest.approx(moment, abs=200.0)


def test_the_package_has_it_and_the_examples_lead_there() -> None:
    installed = moxPY.example()
    assert installed.parent == Path(moxPY.__file__).parent
    assert installed.is_file()
    assert not installed.is_symlink()
    assert TRIAL.resolve() == installed.resolve()
    assert moxPY.read(installed).frames == 360
