"""What holds for every wrench, whatever the plate measured."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    DIRECTIONS,
    SAMPLES,
    Array,
    Plate,
    read_plates,
)
from support.small_trials import example_trial


def noisy(folder: Path, plate: Plate) -> Any:
    """A trial with channels that no physics has made, many of them near the threshold."""
    acquisition = read_plates(folder, [plate])
    count = int(_moxPY.moxGetAnalogNumber(acquisition))
    channels = np.random.default_rng(3).normal(0.0, 40.0, (SAMPLES, count))
    _moxPY.moxSetAnalogsValues(acquisition, channels)
    return acquisition


@pytest.fixture(params=["gait trial", *DIRECTIONS])
def trial(request: pytest.FixtureRequest, tmp_path: Path) -> Any:
    if request.param == "gait trial":
        return example_trial()
    return noisy(tmp_path, Plate(2, DIRECTIONS[request.param]))


def normals(acquisition: Any) -> list[Array]:
    normals = []
    for platform in _moxPY.moxGetForcePlatforms(acquisition)[0]:
        first, second, _, fourth = platform["corners"].T
        normal = np.cross(first - second, first - fourth)
        normals.append(normal / np.linalg.norm(normal))
    return normals


def loaded(wrench: dict[str, Array]) -> Any:
    return ~np.isnan(wrench["P"][:, 0])


def test_the_free_moment_is_parallel_to_the_normal(trial: Any) -> None:
    for wrench, normal in zip(
        _moxPY.moxGetGroundReactionWrenches(trial), normals(trial), strict=True
    ):
        moments = wrench["M"][loaded(wrench)]
        across = moments - np.outer(moments @ normal, normal)
        assert len(moments) > 100
        assert np.abs(across).max() < 1e-9 * np.abs(moments).max()


def test_the_point_of_application_lies_on_the_surface(trial: Any) -> None:
    platforms, _ = _moxPY.moxGetForcePlatforms(trial)
    wrenches = _moxPY.moxGetGroundReactionWrenches(trial)
    for wrench, platform, normal in zip(wrenches, platforms, normals(trial), strict=True):
        heights = (wrench["P"][loaded(wrench)] - platform["corners"].mean(axis=1)) @ normal
        assert np.abs(heights).max() < 1e-9


def test_moved_to_the_measuring_origin_it_is_the_wrench_there(trial: Any) -> None:
    there = _moxPY.moxGetForcePlatformWrenches(trial)
    here = _moxPY.moxGetGroundReactionWrenches(trial)
    for applied, measured in zip(here, there, strict=True):
        rows = loaded(applied)
        arm = applied["P"] - measured["P"]
        moved = applied["M"] + np.cross(arm, applied["F"])
        scale = np.abs(measured["M"][rows]).max()
        np.testing.assert_allclose(moved[rows], measured["M"][rows], rtol=0, atol=1e-9 * scale)
        np.testing.assert_array_equal(applied["F"], measured["F"])


def test_the_force_is_as_great_in_the_laboratory_as_in_the_channels(trial: Any) -> None:
    platforms, _ = _moxPY.moxGetForcePlatforms(trial)
    for wrench, platform in zip(_moxPY.moxGetForcePlatformWrenches(trial), platforms, strict=True):
        assert platform["type"] == 2
        channels = np.column_stack(list(platform["channels"].values()))
        for key, local in {"F": channels[:, :3], "M": channels[:, 3:]}.items():
            np.testing.assert_allclose(
                np.linalg.norm(wrench[key], axis=1), np.linalg.norm(local, axis=1), rtol=1e-12
            )


def test_under_the_threshold_there_is_no_point_but_the_measured_wrench(tmp_path: Path) -> None:
    acquisition = noisy(tmp_path, Plate(2))
    (applied,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    (measured,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    light = np.abs(_moxPY.moxGetAnalog(acquisition, "Fz_0")[0]) < 10.0
    assert 20 < light.sum() < SAMPLES - 20
    np.testing.assert_array_equal(np.isnan(applied["P"]), np.tile(light[:, None], 3))
    np.testing.assert_array_equal(applied["M"][light], measured["M"][light])
    np.testing.assert_array_equal(applied["F"], measured["F"])


def test_a_load_as_great_as_the_threshold_has_a_point(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate(2)], 4)
    _moxPY.moxSetAnalogValues(acquisition, "Fz_0", [[10.0], [-10.0], [9.999], [0.0]])
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert loaded(wrench).tolist() == [True, True, False, False]


def test_without_any_load_there_is_no_point_even_at_threshold_0(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate(2)], 3)
    _moxPY.moxSetAnalogValues(acquisition, "Fz_0", [[0.0], [1e-3], [np.nan]])
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition, 0.0)
    assert loaded(wrench).tolist() == [False, True, False]


@pytest.mark.parametrize("threshold", [0.0, 5.0, 40.0, 1e9, float("inf")])
def test_another_threshold_counts_at_once(tmp_path: Path, threshold: float) -> None:
    acquisition = noisy(tmp_path, Plate(2))
    _moxPY.moxGetGroundReactionWrenches(acquisition)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition, threshold)
    load = np.abs(_moxPY.moxGetAnalog(acquisition, "Fz_0")[0])
    np.testing.assert_array_equal(loaded(wrench), load >= threshold)
    (again,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    np.testing.assert_array_equal(loaded(again), load >= 10.0)


def test_samples_that_are_no_numbers_stay_so_alone(tmp_path: Path) -> None:
    acquisition = noisy(tmp_path, Plate(2, np.eye(3)))
    (before,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    values = _moxPY.moxGetAnalog(acquisition, "Mx_0")[0]
    values[5] = np.nan
    _moxPY.moxSetAnalogValues(acquisition, "Mx_0", values.reshape(-1, 1))
    (after,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    np.testing.assert_array_equal(np.flatnonzero(np.isnan(after["M"][:, 0])), [5])
    np.testing.assert_array_equal(after["F"], before["F"])
