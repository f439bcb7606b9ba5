"""After a change of channels or metadata, results are those of an acquisition made that way."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    DIRECTIONS,
    NAMES,
    Load,
    Plate,
    assert_wrench,
    loaded_plate,
    nothing,
    read_plates,
    step_on,
    walking,
)
from support.store_tree import node

SAMPLES = 40
Edit = Callable[[Any], Any]


@pytest.fixture
def load() -> Load:
    return walking(SAMPLES)


@pytest.fixture
def plate() -> Plate:
    return Plate(2, DIRECTIONS["turned about the vertical"])


@pytest.fixture
def trial(tmp_path: Path, plate: Plate, load: Load) -> Any:
    """One plate, with everything computed once."""
    acquisition = loaded_plate(tmp_path, plate, load)
    assert_wrench(applied(acquisition), plate.at_point(load))
    return acquisition


def applied(acquisition: Any) -> dict[str, Any]:
    (wrench,) = _moxPY.moxGetGroundReactionWrenches(acquisition)
    return wrench


def set_entry(acquisition: Any, entry: str, kind: str, values: Any) -> None:
    info = {"format": kind, "values": values}
    _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)


def test_edited_samples(trial: Any, plate: Plate) -> None:
    other = walking(SAMPLES, seed=99)
    step_on(trial, plate, other)
    assert_wrench(applied(trial), plate.at_point(other))


def test_all_samples_edited_as_a_matrix(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxSetAnalogsValues(trial, 2 * _moxPY.moxGetAnalogsValues(trial))
    doubled = Load(2 * load.force, load.place, 2 * load.free_moment)
    assert_wrench(applied(trial), plate.at_point(doubled))


def test_an_edited_label_changes_nothing_but_the_key(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxSetAnalogLabel(trial, "Fz_0", "vertical")
    assert_wrench(applied(trial), plate.at_point(load))
    (platform,), _ = _moxPY.moxGetForcePlatforms(trial)
    assert list(platform["channels"])[2] == "vertical"


def test_exchanged_labels_do_not_exchange_channels(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxSetAnalogLabel(trial, "Fx_0", "other")
    _moxPY.moxSetAnalogLabel(trial, "Fy_0", "Fx_0")
    _moxPY.moxSetAnalogLabel(trial, "other", "Fy_0")
    assert_wrench(applied(trial), plate.at_point(load))


def test_an_edited_unit_is_told(trial: Any) -> None:
    _moxPY.moxSetAnalogUnit(trial, "Mz_0", "Nmm")
    _, (info,) = _moxPY.moxGetForcePlatforms(trial)
    assert info["units"]["Mz_0"] == "Nmm"


def test_a_removed_channel_leaves_no_wrench(trial: Any) -> None:
    _moxPY.moxRemoveAnalog(trial, "My_0")
    assert_equal(applied(trial), nothing(SAMPLES))
    (platform,), (info,) = _moxPY.moxGetForcePlatforms(trial)
    remaining = ["Fx_0", "Fy_0", "Fz_0", "Mx_0", "Mz_0"]
    assert list(platform["channels"]) == list(info["units"]) == remaining
    assert "FP0" not in node(trial, "Devices/ForcePlate")["groups"]


def test_all_channels_cleared(trial: Any) -> None:
    _moxPY.moxClearAnalogs(trial)
    assert_equal(applied(trial), nothing(SAMPLES))
    (platform,), _ = _moxPY.moxGetForcePlatforms(trial)
    assert platform["channels"] == {}


def test_a_channel_that_is_removed_and_appended_again_is_the_new_one(
    trial: Any, plate: Plate, load: Load
) -> None:
    _moxPY.moxRemoveAnalog(trial, "Fz_0")
    load.force[:, 2] *= 3.0
    column = plate.channels(load)[:, 2:3]
    _moxPY.moxAppendAnalog(trial, "Fz_0", column)
    step_on(trial, plate, load)
    assert_wrench(applied(trial), plate.at_point(load))


def test_the_same_without_a_call_between_removal_and_append(
    trial: Any, plate: Plate, load: Load
) -> None:
    column = _moxPY.moxGetAnalog(trial, "Mz_0")[0].reshape(-1, 1)
    _moxPY.moxRemoveAnalog(trial, "Mz_0")
    _moxPY.moxAppendAnalog(trial, "Mz_0", column + 1000.0)
    load.free_moment += 1000.0
    assert_wrench(applied(trial), plate.at_point(load))


def test_removing_a_channel_of_no_plate_changes_nothing(
    trial: Any, plate: Plate, load: Load
) -> None:
    _moxPY.moxRemoveAnalog(trial, "EMG")
    assert_wrench(applied(trial), plate.at_point(load))


def test_appending_a_channel_changes_nothing(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxAppendAnalog(trial, "new", np.ones((SAMPLES, 1)))
    assert_wrench(applied(trial), plate.at_point(load))


def test_a_channel_before_the_plates_may_go(tmp_path: Path, plate: Plate, load: Load) -> None:
    analogs = [*_analogs("EMG"), *_analogs(*(f"{name}_0" for name in NAMES[2]))]
    acquisition = read_plates(tmp_path, [plate], SAMPLES, analogs=analogs,
                              platforms=[plate.described(2)])  # fmt: skip
    step_on(acquisition, plate, load)
    assert_wrench(applied(acquisition), plate.at_point(load))
    _moxPY.moxRemoveAnalog(acquisition, "EMG")
    assert_wrench(applied(acquisition), plate.at_point(load))


def test_the_same_in_a_file_without_labels(tmp_path: Path, plate: Plate, load: Load) -> None:
    analogs = [*_analogs("EMG"), *_analogs(*NAMES[2])]
    acquisition = read_plates(tmp_path, [plate], SAMPLES, analogs=analogs,
                              platforms=[plate.described(2)],
                              parameters={"ANALOG:LABELS": None})  # fmt: skip
    values = np.column_stack([np.zeros(SAMPLES), plate.channels(load)])
    _moxPY.moxSetAnalogsValues(acquisition, values)
    assert_wrench(applied(acquisition), plate.at_point(load))
    _moxPY.moxRemoveAnalog(acquisition, 0)
    assert_wrench(applied(acquisition), plate.at_point(load))


def test_labels_that_are_taken_away_leave_the_columns_of_the_file(
    trial: Any, plate: Plate, load: Load
) -> None:
    _moxPY.moxRemoveMetaData(trial, "ANALOG", "LABELS")
    assert_wrench(applied(trial), plate.at_point(load))


def test_reordered_labels_reorder_the_channels(trial: Any, plate: Plate, load: Load) -> None:
    labels = [f"{name}_0" for name in NAMES[2]]
    swapped = [labels[1], labels[0], *labels[2:], "EMG"]
    _moxPY.moxSetMetaDataValue(trial, "ANALOG", "LABELS", swapped)
    exchanged = plate.channels(load)
    exchanged[:, [0, 1]] = exchanged[:, [1, 0]]
    (platform,), _ = _moxPY.moxGetForcePlatforms(trial)
    np.testing.assert_array_equal(np.column_stack(list(platform["channels"].values())), exchanged)
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(trial)
    np.testing.assert_allclose(wrench["F"], exchanged[:, :3] @ plate.axes.T, rtol=1e-12)


def test_more_frames_lengthen_the_wrenches(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxSetFrameNumber(trial, SAMPLES + 5)
    wrench = applied(trial)
    assert wrench["F"].shape == (SAMPLES + 5, 3)
    np.testing.assert_allclose(wrench["F"][:SAMPLES], plate.at_point(load)["F"], rtol=1e-9)
    assert not wrench["F"][SAMPLES:].any()


def test_changed_corners(trial: Any, load: Load) -> None:
    moved = Plate(2, DIRECTIONS["tilted"], centre=np.array([9.0, 33.0, -6.0]))
    set_entry(trial, "CORNERS", "Real", moved.corners.reshape(1, 4, 3).tolist())
    assert_wrench(applied(trial), moved.at_point(load))
    (platform,), _ = _moxPY.moxGetForcePlatforms(trial)
    np.testing.assert_array_equal(platform["corners"], moved.corners.T)


def test_a_single_changed_value(trial: Any, plate: Plate) -> None:
    deeper = np.array([0.5, -1.25, -60.0])
    _moxPY.moxSetMetaDataValue(trial, "FORCE_PLATFORM", "ORIGIN", deeper.reshape(1, 3))
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(trial)
    expected = plate.centre - plate.axes @ deeper
    np.testing.assert_allclose(wrench["P"], np.tile(expected, (SAMPLES, 1)), rtol=1e-12)


@pytest.mark.parametrize("entry", ["CORNERS", "ORIGIN", "CHANNEL", "TYPE"])
def test_a_parameter_that_is_removed_and_appended(
    trial: Any, plate: Plate, load: Load, entry: str
) -> None:
    values: dict[str, Any] = {
        "CORNERS": ("Real", plate.corners.reshape(1, 4, 3).tolist()),
        "ORIGIN": ("Real", plate.origin.reshape(1, 3).tolist()),
        "CHANNEL": ("Integer", [[1, 2, 3, 4, 5, 6]]),
        "TYPE": ("Integer", [2]),
    }
    _moxPY.moxRemoveMetaData(trial, "FORCE_PLATFORM", entry)
    assert_equal(applied(trial), nothing(SAMPLES))
    assert len(_moxPY.moxGetForcePlatforms(trial)[0]) == 1
    set_entry(trial, entry, *values[entry])
    assert_wrench(applied(trial), plate.at_point(load))


def test_a_group_that_is_removed_and_appended(trial: Any, plate: Plate, load: Load) -> None:
    _moxPY.moxRemoveMetaData(trial, "FORCE_PLATFORM")
    assert _moxPY.moxGetForcePlatforms(trial) == [[], []]
    assert _moxPY.moxGetGroundReactionWrenches(trial) == []
    describe(trial, plate)
    assert_wrench(applied(trial), plate.at_point(load))


def test_another_type(trial: Any, plate: Plate) -> None:
    set_entry(trial, "TYPE", "Integer", [1])
    channels = np.column_stack([_moxPY.moxGetAnalog(trial, i)[0] for i in range(6)])
    place = np.column_stack([channels[:, 3:5], np.zeros(SAMPLES)])
    expected = place @ plate.axes.T + plate.centre
    np.testing.assert_allclose(applied(trial)["P"], expected, rtol=1e-12)


def test_fewer_platforms_than_before(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate(), Plate()], SAMPLES)
    assert len(_moxPY.moxGetGroundReactionWrenches(acquisition)) == 2
    set_entry(acquisition, "USED", "Integer", 1)
    assert len(_moxPY.moxGetGroundReactionWrenches(acquisition)) == 1
    assert len(_moxPY.moxGetForcePlatforms(acquisition)[0]) == 1
    set_entry(acquisition, "USED", "Integer", 2)
    assert len(_moxPY.moxGetForcePlatforms(acquisition)[0]) == 2


def test_a_new_acquisition_gets_a_plate(plate: Plate, load: Load) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, SAMPLES, 0, 1)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    for name in NAMES[2]:
        _moxPY.moxAppendAnalog(acquisition, f"{name}_0", np.zeros((SAMPLES, 1)))
    step_on(acquisition, plate, load)
    describe(acquisition, plate)
    assert_wrench(applied(acquisition), plate.at_point(load))
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == 100.0


def describe(acquisition: Any, plate: Plate) -> None:
    set_entry(acquisition, "USED", "Integer", 1)
    set_entry(acquisition, "TYPE", "Integer", [plate.type])
    set_entry(acquisition, "CORNERS", "Real", plate.corners.reshape(1, 4, 3).tolist())
    set_entry(acquisition, "ORIGIN", "Real", plate.stored_origin.reshape(1, 3).tolist())
    set_entry(acquisition, "CHANNEL", "Integer", [[1, 2, 3, 4, 5, 6]])


def assert_equal(actual: dict[str, Any], expected: dict[str, Any]) -> None:
    for key, values in expected.items():
        np.testing.assert_array_equal(actual[key], values)


def _analogs(*names: str) -> list[tuple[str, Any]]:
    return [(name, np.zeros(SAMPLES)) for name in names]
