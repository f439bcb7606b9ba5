"""What the numbers of FORCE_PLATFORM:CHANNEL mean while channels and labels are edited."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import NAMES, Load, Plate, assert_wrench, loaded_plate, nothing, walking
from support.failures import failure_of
from support.read_c3d import read_bytes
from support.store_tree import snapshot

SAMPLES = 30
LABELS = [f"{name}_0" for name in NAMES[2]]


@pytest.fixture
def load() -> Load:
    return walking(SAMPLES)


def set_entry(acquisition: Any, entry: str, kind: str, values: Any) -> None:
    info = {"format": kind, "values": values}
    _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)


def describe(acquisition: Any, plates: list[Plate], channels: list[list[int]]) -> None:
    set_entry(acquisition, "USED", "Integer", len(plates))
    set_entry(acquisition, "TYPE", "Integer", [plate.type for plate in plates])
    set_entry(acquisition, "CORNERS", "Real", [plate.corners.tolist() for plate in plates])
    set_entry(acquisition, "ORIGIN", "Real", [plate.stored_origin.tolist() for plate in plates])
    set_entry(acquisition, "CHANNEL", "Integer", channels)


def channel_numbers(acquisition: Any) -> list[int]:
    values = _moxPY.moxGetMetaData(acquisition, "FORCE_PLATFORM", "CHANNEL")["info"]["values"]
    return np.ravel(values, "F").astype(int).tolist()


def new_trial(plate: Plate, load: Load) -> Any:
    """Made without a file: the EMG channel, the plate's six and another channel, no labels."""
    acquisition = _moxPY.moxNewAcquisition(0, SAMPLES, 0, 1)
    _moxPY.moxSetFrequency(acquisition, 100.0)
    columns = np.column_stack([np.zeros(SAMPLES), plate.channels(load), np.ones(SAMPLES)])
    for name, column in zip(["EMG", *LABELS, "other"], columns.T, strict=True):
        _moxPY.moxAppendAnalog(acquisition, name, column.reshape(-1, 1))
    describe(acquisition, [plate], [[2, 3, 4, 5, 6, 7]])
    return acquisition


def applied(acquisition: Any) -> list[Any]:
    wrenches: list[Any] = _moxPY.moxGetGroundReactionWrenches(acquisition)
    return wrenches


def written(acquisition: Any, folder: Path) -> Any:
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(path))
    return read_bytes(folder, path.read_bytes())


def test_an_edited_label_entry_keeps_its_channel(tmp_path: Path, load: Load) -> None:
    acquisition = loaded_plate(tmp_path, Plate(2), load)
    expected = applied(acquisition)[0]
    labels = [*LABELS[:2], "vertical force", *LABELS[3:], "EMG"]
    _moxPY.moxSetMetaDataValue(acquisition, "ANALOG", "LABELS", labels)
    np.testing.assert_equal(applied(acquisition)[0], expected)
    again = written(acquisition, tmp_path)
    assert channel_numbers(again) == [1, 2, 3, 4, 5, 6]
    np.testing.assert_allclose(applied(again)[0]["F"], expected["F"], rtol=1e-5, atol=1e-3)


@pytest.mark.parametrize("labels", [["Fx_0"], [name.upper() for name in [*LABELS, "EMG"]]])
def test_other_labels_leave_the_columns_of_the_file(
    tmp_path: Path, load: Load, labels: list[str]
) -> None:
    plate = Plate(2)
    acquisition = loaded_plate(tmp_path, plate, load)
    info = {"format": "Char", "values": labels}
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "LABELS", info)
    assert_wrench(applied(acquisition)[0], plate.at_point(load))


def test_a_plate_added_to_a_file_has_its_wrench_at_once(tmp_path: Path, load: Load) -> None:
    plates = [Plate(2), Plate(2, centre=np.array([900.0, 5.0, 0.0]))]
    acquisition = loaded_plate(tmp_path, plates[0], load)  # seven channels
    other = walking(SAMPLES, seed=3)
    for name, column in zip(NAMES[2], plates[1].channels(other).T, strict=True):
        _moxPY.moxAppendAnalog(acquisition, f"{name}_1", column.reshape(-1, 1))
    describe(acquisition, plates, [[1, 2, 3, 4, 5, 6], [8, 9, 10, 11, 12, 13]])
    assert_wrench(applied(acquisition)[0], plates[0].at_point(load))
    assert_wrench(applied(acquisition)[1], plates[1].at_point(other))
    again = written(acquisition, tmp_path)
    assert channel_numbers(again) == [1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13]
    for wrench, expected in zip(applied(again), applied(acquisition), strict=True):
        np.testing.assert_allclose(wrench["F"], expected["F"], rtol=1e-5, atol=1e-3)


def test_an_appended_channel_that_goes_does_not_give_its_number_away(
    tmp_path: Path, load: Load
) -> None:
    acquisition = loaded_plate(tmp_path, Plate(2), load)
    for name in ("a", "b", "c"):
        _moxPY.moxAppendAnalog(acquisition, name, np.zeros((SAMPLES, 1)))
    set_entry(acquisition, "CHANNEL", "Integer", [[1, 2, 8, 9, 10, 6]])
    _moxPY.moxRemoveAnalog(acquisition, "b")
    assert channel_numbers(acquisition) == [1, 2, 8, 0, 9, 6]


@pytest.mark.parametrize(
    "remove",
    [
        lambda trial: _moxPY.moxRemoveAnalog(trial, "EMG"),
        lambda trial: _moxPY.moxRemoveAnalog(trial, 0),
    ],
)
def test_a_channel_before_those_of_a_new_trial_may_go(
    load: Load, remove: Callable[[Any], Any]
) -> None:
    plate = Plate(2)
    acquisition = new_trial(plate, load)
    remove(acquisition)
    assert channel_numbers(acquisition) == [1, 2, 3, 4, 5, 6]
    assert_wrench(applied(acquisition)[0], plate.at_point(load))


def test_a_channel_of_a_new_trial_that_goes_leaves_no_wrench(tmp_path: Path, load: Load) -> None:
    acquisition = new_trial(Plate(2), load)
    _moxPY.moxRemoveAnalog(acquisition, "Fz_0")
    assert channel_numbers(acquisition) == [2, 3, 0, 4, 5, 6]
    for trial in (acquisition, written(acquisition, tmp_path)):
        np.testing.assert_equal(applied(trial)[0], nothing(SAMPLES))


def test_fewer_channels_of_a_new_trial_keep_those_that_stay(load: Load) -> None:
    acquisition = new_trial(Plate(2), load)
    _moxPY.moxSetAnalogNumber(acquisition, 3)  # of 8 leaves 5
    assert channel_numbers(acquisition) == [2, 3, 4, 5, 0, 0]
    _moxPY.moxClearAnalogs(acquisition)
    assert channel_numbers(acquisition) == [0] * 6


def test_a_refused_removal_leaves_the_numbers(load: Load) -> None:
    acquisition = new_trial(Plate(2), load)
    before = snapshot(acquisition)
    for channel in ("missing", 99):
        failure_of(_moxPY.moxRemoveAnalog, acquisition, channel)
    assert snapshot(acquisition) == before


def test_numbers_in_bytes_have_no_sign(load: Load) -> None:
    plate = Plate(2)
    acquisition = new_trial(plate, load)
    _moxPY.moxSetAnalogNumber(acquisition, 200)
    for number, column in enumerate(plate.channels(load).T, start=150):
        _moxPY.moxSetAnalogValues(acquisition, number, column.reshape(-1, 1))
    as_signed = [number - 256 for number in range(151, 157)]  # what reading such bytes shows
    set_entry(acquisition, "CHANNEL", "Byte", [as_signed])
    assert_wrench(applied(acquisition)[0], plate.at_point(load))
    _moxPY.moxRemoveAnalog(acquisition, 0)
    assert_wrench(applied(acquisition)[0], plate.at_point(load))
