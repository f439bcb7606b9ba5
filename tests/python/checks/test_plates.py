"""Forces outside the corners, baselines that are not zero."""

from __future__ import annotations

import re
from pathlib import Path

import numpy as np
import pytest
from checks.made_trials import clean_trial, standing, steps, the_one
from devices.plates import DIRECTIONS, Load, Plate

SAMPLES = 2000
BASELINE = [6.5, 0.0, -8.0]


def moved(load: Load, first: int, last: int, x: float) -> Load:
    load.place[first : last + 1, 0] = x
    return load


@pytest.mark.parametrize("axes", ["z up", "z down", "turned about the vertical", "tilted"])
@pytest.mark.parametrize("type", [1, 2, 3, 4])
def test_who_stands_in_the_middle_is_well(tmp_path: Path, axes: str, type: int) -> None:
    plate = Plate(type, DIRECTIONS[axes])
    assert standing(tmp_path, steps(SAMPLES), plate).check(without="dead") == []


@pytest.mark.parametrize("side", [-1.0, 1.0])
def test_a_force_outside_the_corners_is_found_where_it_is_farthest(
    tmp_path: Path, side: float
) -> None:
    # The edge is 150 mm from the centre.
    load = moved(steps(SAMPLES), 1200, 1299, side * 180.0)
    moved(load, 1500, 1599, side * 195.0)
    trial = standing(tmp_path, load)
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel) == ("off_plate", None)
    assert (finding.frames, finding.time) == ((1501, 1600), 1.5)
    assert finding.text == (
        "platform 0: the force acts up to 45 mm outside the corners, for 0.2 s of 0.998 s with load"
    )
    assert trial.check(corner_margin=50.0) == []
    assert trial.check(corner_time=0.15) == []


def test_on_the_edge_or_for_an_instant_or_lightly_is_well(tmp_path: Path) -> None:
    for first, last, x in ((1200, 1800, 165.0), (1200, 1230, 400.0), (0, 900, 4000.0)):
        assert standing(tmp_path, moved(steps(SAMPLES), first, last, x)).check() == []


def test_an_origin_far_beside_the_centre_is_found() -> None:
    trial = clean_trial()
    origin = trial.metadata["FORCE_PLATFORM"]["ORIGIN"].copy()
    origin[0] += [400.0, 0.0, 0.0]
    trial.metadata["FORCE_PLATFORM"]["ORIGIN"] = origin
    finding = the_one(trial.check())
    assert finding.rule == "off_plate"
    assert finding.text.startswith("platform 0: ")


@pytest.mark.parametrize(("unit", "newton"), [("N", 1.0), ("kN", 1e-3), ("lbf", 1 / 4.4482216)])
def test_a_baseline_that_is_not_zero_is_found(tmp_path: Path, unit: str, newton: float) -> None:
    load = steps(SAMPLES)
    load.force += BASELINE
    trial = standing(tmp_path, load)
    for channel in trial.platforms[0].channels:
        channel.values = channel.values * newton
        channel.unit = unit
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity) == ("baselines", "warning")
    found = re.fullmatch(
        r"platform 0: (\S+), (\S+), (\S+) N along its x, y, z axes with nobody on it", finding.text
    )
    assert found
    np.testing.assert_allclose([float(number) for number in found.groups()], BASELINE, atol=0.2)
    assert trial.check(baseline_force=10.0) == []
    trial.platforms[0].zero(0.0, 0.9)
    assert trial.check() == []


@pytest.mark.parametrize("level", [-0.02, 0.02])
def test_a_baseline_has_no_zero_with_a_sign(tmp_path: Path, level: float) -> None:
    load = steps(SAMPLES)
    load.force += [6.5, 0.0, 0.0]
    trial = standing(tmp_path, load)
    for channel in trial.platforms[0].channels[1:3]:
        channel.values = np.where(np.abs(channel.values) < 1.0, level, channel.values)
    assert "-0.0" not in the_one(trial.check()).text


@pytest.mark.parametrize("offset", [-120.0, 90.0])
def test_a_baseline_higher_than_a_light_load_is_found(tmp_path: Path, offset: float) -> None:
    load = steps(4000)
    load.force[:, 2] = load.force[:, 2] * np.sign(offset) + offset
    finding = the_one(standing(tmp_path, load).check(without="off_plate"))
    assert finding.rule == "baselines"
    assert f", {offset:.1f} N along" in finding.text


def test_who_stands_on_it_throughout_is_no_baseline(tmp_path: Path) -> None:
    time = np.arange(4000) / 1000.0
    load = steps(4000)
    for weight in (250.0, 800.0):
        # Standing quietly, and rising from the knees in between.
        squat = 0.4 * weight * np.exp(-(((time - 2.0) / 0.2) ** 2))
        load.force[:, 2] = weight + np.sin(2 * np.pi * 1.1 * time) - squat
        assert standing(tmp_path, load).check() == []


def test_a_force_that_was_set_to_zero_under_a_threshold_is_a_note(tmp_path: Path) -> None:
    load = steps(SAMPLES)
    load.force[load.force[:, 2] < 20.0] = 0.0
    finding = the_one(standing(tmp_path, load).check())
    assert (finding.rule, finding.severity) == ("clipped_baselines", "note")
    assert finding.text == "platform 0: exactly 0 N in 100 % of the samples with nobody on it"


def test_a_baseline_of_an_integer_file_is_well(tmp_path: Path) -> None:
    load = steps(SAMPLES)
    load.force = np.round(load.force / 1.5) * 1.5
    assert standing(tmp_path, load).check() == []


def test_platforms_without_wrench_are_left_alone(tmp_path: Path) -> None:
    trial = standing(tmp_path, steps(SAMPLES))
    trial.metadata["FORCE_PLATFORM"]["TYPE"] = [9]
    assert trial.check() == []


def test_corners_that_fall_together_are_one(tmp_path: Path) -> None:
    trial = standing(tmp_path, steps(SAMPLES))
    corners = trial.metadata["FORCE_PLATFORM"]["CORNERS"].copy()
    corners[..., 2, :] = corners[..., 3, :]
    trial.metadata["FORCE_PLATFORM"]["CORNERS"] = corners
    assert {finding.rule for finding in trial.check()} <= {"off_plate"}
