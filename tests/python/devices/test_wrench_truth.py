"""Known forces at known points of plates of every type come back."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    DIRECTIONS,
    ORIGINS,
    SAMPLES,
    Load,
    Plate,
    assert_wrench,
    loaded_plate,
    read_plates,
    step_on,
    walking,
)

types = pytest.mark.parametrize("kind", [1, 2, 3, 4])
directions = pytest.mark.parametrize("direction", DIRECTIONS)
origins = pytest.mark.parametrize("origin", ORIGINS)


@types
@directions
@origins
def test_wrench_at_the_measuring_origin(
    tmp_path: Path, kind: int, direction: str, origin: str
) -> None:
    plate, load = Plate(kind, DIRECTIONS[direction], ORIGINS[origin]), walking()
    acquisition = loaded_plate(tmp_path, plate, load)
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    assert_wrench(wrench, plate.at_origin(load))


@types
@directions
@origins
def test_wrench_at_the_point_of_application(
    tmp_path: Path, kind: int, direction: str, origin: str
) -> None:
    plate, load = Plate(kind, DIRECTIONS[direction], ORIGINS[origin]), walking()
    acquisition = loaded_plate(tmp_path, plate, load)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert_wrench(wrench, plate.at_point(load))


@types
def test_loads_that_push_the_other_way(tmp_path: Path, kind: int) -> None:
    plate, load = Plate(kind), walking()
    pulled = Load(-load.force, load.place, load.free_moment)
    acquisition = loaded_plate(tmp_path, plate, pulled)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert_wrench(wrench, plate.at_point(pulled))


def test_plates_of_all_types_side_by_side(tmp_path: Path) -> None:
    axes = list(DIRECTIONS.values())
    plates = [Plate(kind, axes[kind]) for kind in (1, 2, 3, 4)]
    loads = [walking(seed=number) for number in range(4)]
    acquisition = read_plates(tmp_path, plates)
    for number, (plate, load) in enumerate(zip(plates, loads, strict=True)):
        step_on(acquisition, plate, load, number)
    wrenches = _moxPY.moxGetGroundReactionWrenches(acquisition)
    for wrench, plate, load in zip(wrenches, plates, loads, strict=True):
        assert_wrench(wrench, plate.at_point(load))


@pytest.mark.parametrize("kind", [1, 2, 4])
def test_an_origin_above_the_surface_is_read_with_the_opposite_sign(
    tmp_path: Path, kind: int
) -> None:
    plate, load = Plate(kind), walking()
    described = plate.described(origin=-plate.stored_origin)
    acquisition = read_plates(tmp_path, [plate], platforms=[described])
    step_on(acquisition, plate, load)
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    assert_wrench(wrench, plate.at_origin(load))


@pytest.mark.parametrize("signs", [(1, 1, 1), (-1, 1, 1), (1, -1, -1), (-1, -1, 1)])
def test_sensor_distances_are_positive_whatever_their_signs(
    tmp_path: Path, signs: tuple[int, int, int]
) -> None:
    plate, load = Plate(3), walking()
    described = plate.described(origin=plate.stored_origin * signs)
    acquisition = read_plates(tmp_path, [plate], platforms=[described])
    step_on(acquisition, plate, load)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert_wrench(wrench, plate.at_point(load))


def test_a_matrix_that_is_there_does_not_touch_a_plate_of_type_2(tmp_path: Path) -> None:
    plate, load = Plate(2), walking()
    described = plate.described(cal_matrix=np.full((6, 6), 3.0))
    acquisition = read_plates(tmp_path, [plate], platforms=[described])
    step_on(acquisition, plate, load)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert_wrench(wrench, plate.at_point(load))


@pytest.mark.parametrize(
    ("kind", "channels", "origin", "force", "moment", "point", "free"),
    [
        (2, [30, -12, 700, 14000, -35000, 2500], (0.6, -1.2, -41.3), (30, -12, 700),
         (15335.6, -33341.0, 2471.2), (47.63, 21.908), 3700.0),
        (3, [10, 14, -6, 2, 200, 150, 250, 100], (120, 200, -54), (24, -4, 700),
         (216, 13296, -160), (-18.994286, 0.308571), -228.571429),
        (1, [30, -12, 700, 50, 20, 1500], (0, 0, 0), (30, -12, 700),
         (14000, -35000, 300), (50, 20), 1500.0),
    ],
)  # fmt: skip
def test_worked_numbers(
    tmp_path: Path, kind: int, channels: list[float], origin: tuple[float, float, float],
    force: tuple[float, ...], moment: tuple[float, ...], point: tuple[float, float], free: float,
) -> None:  # fmt: skip
    plate = Plate(kind, np.eye(3), np.asarray(origin, float), np.zeros(3))
    described = plate.described(origin=origin)
    acquisition = read_plates(tmp_path, [plate], 2, platforms=[described])
    _moxPY.moxSetAnalogsValues(acquisition, np.tile([*channels, 0.0], (2, 1)))
    (applied,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    np.testing.assert_allclose(applied["F"][1], force, rtol=1e-12)
    np.testing.assert_allclose(applied["P"][1], (*point, 0.0), atol=1e-4)
    np.testing.assert_allclose(applied["M"][1], (0, 0, free), atol=1e-2)
    (measured,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    at_centre = measured["M"][1] + np.cross(measured["P"][1], force)
    np.testing.assert_allclose(at_centre, moment, atol=1e-2)


@pytest.mark.parametrize("dimensions", [(12,), (2, 6), (6, 2)])
def test_the_point_of_eight_forces_is_corrected_by_the_polynomial(
    tmp_path: Path, dimensions: tuple[int, ...]
) -> None:
    plate, load = Plate(3, np.eye(3), centre=np.zeros(3)), walking()
    p = np.array([3, -5, 2, 7, 11, -640, 1, 4, -2, 9, -3, 320]) * 2.0**-20
    p[[0, 3, 6, 9]] *= 2.0**-24
    p[[1, 4, 7, 10]] *= 2.0**-8
    polynomial = p.astype(np.float32).astype(float)
    # Of the first platform, which has six channels, the coefficients mean nothing.
    stored = np.stack([np.ones(12), p]).reshape(2, *dimensions).astype("f4")
    acquisition = read_plates(
        tmp_path, [Plate(2), plate], parameters={"FORCE_PLATFORM:FPCOPPOLY": stored}
    )
    step_on(acquisition, plate, load, 1)
    _, wrench = _moxPY.moxGetGroundReactionWrenches(acquisition)
    x, y = load.place[:, 0], load.place[:, 1]
    x_factors, y_factors = polynomial[:6].reshape(2, 3), polynomial[6:].reshape(2, 3)
    in_y = [np.polyval(row, y**2) for row in x_factors]
    in_x = [np.polyval(row, x**2) for row in y_factors]
    place = np.column_stack(
        [x - (in_y[0] * x**3 + in_y[1] * x), y - (in_x[0] * y**3 + in_x[1] * y)]
    )
    assert np.abs(place - load.place[:, :2]).max() > 0.1
    np.testing.assert_allclose(wrench["P"][:, :2], place, rtol=1e-9, atol=1e-9)
    about_centre = load.free_moment + np.cross(load.place, load.force)[:, 2]
    shifted = place[:, 0] * load.force[:, 1] - place[:, 1] * load.force[:, 0]
    np.testing.assert_allclose(wrench["M"][:, 2], about_centre - shifted, rtol=1e-9, atol=1e-6)


def test_a_matrix_in_a_wider_table_is_its_upper_left_part(tmp_path: Path) -> None:
    plates = [Plate(3), Plate(4, DIRECTIONS["tilted"])]
    loads = [walking(seed=1), walking(seed=2)]
    acquisition = read_plates(tmp_path, plates)
    for number in (0, 1):
        step_on(acquisition, plates[number], loads[number], number)
    platforms, _ = _moxPY.moxGetForcePlatforms(acquisition)
    assert [platform["cal_matrix"].shape for platform in platforms] == [(8, 8), (6, 6)]
    wrenches = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert_wrench(wrenches[1], plates[1].at_point(loads[1]))


def test_outputs_without_a_matrix_are_taken_as_they_are(tmp_path: Path) -> None:
    plate, load = Plate(2), walking()
    described = plate.described(type=4)
    acquisition = read_plates(tmp_path, [plate], platforms=[described])
    step_on(acquisition, plate, load)
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    assert_wrench(wrench, plate.at_origin(load))


def test_skew_corners_give_orthonormal_axes(tmp_path: Path) -> None:
    plate, load = Plate(2, np.eye(3)), walking()
    described = plate.described(
        corners=np.add(plate.corners, [[0, 0, 0], [0, 0, 0], [5, 3, 2], [4, -6, 1]])
    )
    acquisition = read_plates(tmp_path, [plate], platforms=[described])
    step_on(acquisition, plate, load)
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    turn = np.linalg.lstsq(load.force, wrench["F"], rcond=None)[0]
    np.testing.assert_allclose(turn.T @ turn, np.eye(3), atol=1e-12)
    assert np.linalg.det(turn) == pytest.approx(1.0)
    np.testing.assert_allclose(turn[0], [1.0, 0.0, 0.0], atol=1e-12)  # along corners 2 and 1


@pytest.mark.parametrize("samples", [0, 1, 2, 255, 256, 257, SAMPLES])
def test_every_number_of_samples(tmp_path: Path, samples: int) -> None:
    plate, load = Plate(2), walking(samples)
    acquisition = loaded_plate(tmp_path, plate, load)
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    for values in wrench.values():
        assert values.shape == (samples, 3)
    if samples:
        assert_wrench(wrench, plate.at_point(load))
