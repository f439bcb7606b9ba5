"""Force platforms of real files against those that ezc3d computes.

It gives force and moment about the centre of the surface, that centre's place under the load and
the free moment, all in the laboratory, and divides by every Fz.
"""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import ezc3d
import numpy as np
import pytest
from numpy.typing import NDArray
from support.repairs import repaired, with_the_points_of_the_header

Array = NDArray[np.float64]
FindSample = Callable[[str], Path]

# Number of platforms. Eb015si.c3d and Eb015sr.c3d are MIPS files, and of type1.C3D no analog
# channels are found: ezc3d does not read them. The third sort is tested apart, below.
PLATFORMS = {
    "2198928.c3d": 4, "Eb015pi.c3d": 2, "Eb015pr.c3d": 2, "Eb015vi.c3d": 2, "Eb015vr.c3d": 2,
    "TYPE-2.C3D": 1, "TYPE-3.c3d": 4, "TYPE-4.C3D": 1, "gait-pig.c3d": 2, "short.c3d": 2,
}  # fmt: skip


def theirs_of(path: Path) -> list[dict[str, Array]]:
    content = ezc3d.c3d(str(path), extract_forceplat_data=True)
    return [
        {key: value.T for key, value in platform.items() if not np.isscalar(value)
         and not isinstance(value, str)}
        for platform in content["data"]["platform"]
    ]  # fmt: skip


def about_the_centre(wrench: dict[str, Array], corners: Array) -> Array:
    return wrench["M"] + np.cross(wrench["P"] - corners.mean(axis=1), wrench["F"])


@pytest.mark.parametrize("name", PLATFORMS)
def test_wrenches_are_equal(sample: FindSample, name: str) -> None:
    path = sample(name)
    acquisition = _moxPY.moxReadAcquisition(str(path))
    platforms, _ = _moxPY.moxGetForcePlatforms(acquisition)
    measured = _moxPY.moxGetForcePlatformWrenches(acquisition)
    applied = _moxPY.moxGetGroundReactionWrenches(acquisition)
    theirs = theirs_of(path)
    assert len(platforms) == len(theirs) == PLATFORMS[name]
    for platform, here, there, other in zip(platforms, measured, applied, theirs, strict=True):
        np.testing.assert_array_equal(platform["corners"], other["corners"].T)
        close(here["F"], other["force"])
        close(about_the_centre(here, platform["corners"]), other["moment"])
        has_point = ~np.isnan(there["P"][:, 0])
        assert has_point.sum() > 50
        close(there["P"][has_point], other["center_of_pressure"][has_point])
        close(there["M"][has_point], other["Tz"][has_point], np.abs(here["M"]).max())


def close(ours: Array, theirs: Array, scale: float | None = None) -> None:
    largest = np.abs(theirs).max() if scale is None else scale
    np.testing.assert_allclose(ours, theirs, rtol=0.0, atol=1e-12 * largest)


def test_type_3_with_an_origin_above_the_surface(sample: FindSample, tmp_path: Path) -> None:
    """ezc3d negates the whole ORIGIN, with it the distances of the sensors, and so finds the point
    on the other side of the centre: not where the sensors are that carry the load."""
    path = repaired(sample("kyowadengyo.c3d"), tmp_path, with_the_points_of_the_header)
    acquisition = _moxPY.moxReadAcquisition(str(sample("kyowadengyo.c3d")))
    applied = _moxPY.moxGetGroundReactionWrenches(acquisition)
    platforms, _ = _moxPY.moxGetForcePlatforms(acquisition)
    for platform, wrench, other in zip(platforms, applied, theirs_of(path), strict=True):
        close(wrench["F"], other["force"])
        peak = int(np.argmax(np.abs(wrench["F"][:, 2])))
        loads = np.array(list(platform["channels"].values()))[4:, peak]
        # The load's share of each sensor, sensors lying towards the corners of the same number.
        centre = platform["corners"].mean(axis=1)
        towards = (platform["corners"] - centre[:, None]) @ (loads / loads.sum())
        assert np.dot(wrench["P"][peak] - centre, towards) > 0
        assert np.dot(other["center_of_pressure"][peak] - centre, towards) < 0


@pytest.mark.parametrize("name", ["Eb015si.c3d", "Eb015sr.c3d"])
def test_files_of_other_processors_give_the_same_wrenches(sample: FindSample, name: str) -> None:
    intel = _moxPY.moxReadAcquisition(str(sample(name.replace("s", "p"))))
    other = _moxPY.moxReadAcquisition(str(sample(name)))
    for ours, theirs in zip(
        _moxPY.moxGetGroundReactionWrenches(other),
        _moxPY.moxGetGroundReactionWrenches(intel),
        strict=True,
    ):
        for key in "FMP":
            np.testing.assert_allclose(ours[key], theirs[key], rtol=1e-5, atol=1e-2)


def test_type_1_gives_the_point_of_the_file(sample: FindSample) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample("type1.C3D")))
    (platform,), _ = _moxPY.moxGetForcePlatforms(acquisition)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    _, _, fz, px, py, mz = platform["channels"].values()
    over = np.abs(fz) >= 10.0
    assert over.sum() > 20
    np.testing.assert_array_equal(~np.isnan(wrench["P"][:, 0]), over)
    first, second, _, fourth = platform["corners"].T
    x = (first - second) / np.linalg.norm(first - second)
    z = np.cross(x, first - fourth)
    z /= np.linalg.norm(z)
    axes = np.column_stack([x, np.cross(z, x), z])
    place = np.column_stack([px, py, 0 * px]) @ axes.T + platform["corners"].mean(axis=1)
    np.testing.assert_allclose(wrench["P"][over], place[over], rtol=1e-9)
    np.testing.assert_allclose(wrench["M"][over], np.outer(mz, z)[over], rtol=1e-9, atol=1e-9)


@pytest.mark.parametrize("name", [*PLATFORMS, "type1.C3D", "kyowadengyo.c3d"])
def test_a_platform_that_is_stepped_on_pushes_the_person_off(sample: FindSample, name: str) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample(name)))
    platforms, _ = _moxPY.moxGetForcePlatforms(acquisition)
    wrenches = _moxPY.moxGetGroundReactionWrenches(acquisition)
    for platform, wrench in zip(platforms, wrenches, strict=True):
        first, second, _, fourth = platform["corners"].T
        z = np.cross(first - second, first - fourth)
        along_z = wrench["F"] @ z / np.linalg.norm(z)
        # z points into the floor: the largest force of each platform points out of it.
        assert along_z[np.abs(along_z).argmax()] < -200.0


def test_rotations_of_a_real_file(sample: FindSample) -> None:
    path = sample("C3DRotationExample.c3d")
    theirs: Any = ezc3d.c3d(str(path))["data"]["rotations"].transpose(2, 3, 0, 1)
    rotations, nothing = _moxPY.moxGetRotations(_moxPY.moxReadAcquisition(str(path)))
    assert nothing is None
    assert len(rotations) == len(theirs)
    for ours, other in zip(rotations.values(), theirs, strict=True):
        lost = np.isnan(other).any(axis=(1, 2), keepdims=True)
        np.testing.assert_array_equal(ours, np.where(lost, np.nan, other))
