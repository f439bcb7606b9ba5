"""Platforms of a file that was written are those of the acquisition that it was written from."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import DIRECTIONS, Load, Plate, read_plates, step_on, walking

SAMPLES = 40
Edit = Callable[[Any], Any]


def nothing(_: Any) -> None:
    pass


def remove_a_channel_before(acquisition: Any) -> None:
    _moxPY.moxRemoveAnalog(acquisition, "first")


def bring_a_channel_back(acquisition: Any) -> None:
    column = _moxPY.moxGetAnalog(acquisition, "Fz_0")[0].reshape(-1, 1)
    _moxPY.moxRemoveAnalog(acquisition, "Fz_0")
    _moxPY.moxAppendAnalog(acquisition, "Fz_0", column)


def rename(acquisition: Any) -> None:
    _moxPY.moxSetAnalogLabel(acquisition, "My_1", "moment")


def append(acquisition: Any) -> None:
    _moxPY.moxAppendAnalog(acquisition, "more", np.ones((SAMPLES, 1)))


def reorder(acquisition: Any) -> None:
    labels = _moxPY.moxGetMetaData(acquisition, "ANALOG", "LABELS")["info"]["values"]
    _moxPY.moxSetMetaDataValue(acquisition, "ANALOG", "LABELS", [*labels[1:], labels[0]])
    numbers = _moxPY.moxGetMetaData(acquisition, "FORCE_PLATFORM", "CHANNEL")["info"]["values"]
    _moxPY.moxSetMetaDataValue(acquisition, "FORCE_PLATFORM", "CHANNEL", numbers.T - 1)


def trial(folder: Path) -> Any:
    """Two plates of type 2, a channel before theirs."""
    plates = [Plate(2, DIRECTIONS["tilted"]), Plate(2, centre=np.array([1200.0, 0.0, 0.0]))]
    names = [
        "first",
        *(f"{name}_{n}" for n in (0, 1) for name in ("Fx", "Fy", "Fz", "Mx", "My", "Mz")),
    ]
    acquisition = read_plates(
        folder, plates, SAMPLES,
        analogs=[(name, np.zeros(SAMPLES)) for name in names],
        platforms=[plates[0].described(2), plates[1].described(8)],
    )  # fmt: skip
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, as_singles(walking(SAMPLES, number)), number)
    return acquisition


def as_singles(load: Load) -> Load:
    return Load(np.round(load.force), np.round(load.place), np.round(load.free_moment))


@pytest.mark.parametrize(
    "edit", [nothing, remove_a_channel_before, bring_a_channel_back, rename, append, reorder],
    ids=lambda edit: edit.__name__,
)  # fmt: skip
def test_written_and_read_again_they_are_the_same(tmp_path: Path, edit: Edit) -> None:
    acquisition = trial(tmp_path)
    edit(acquisition)
    path = tmp_path / "written.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(path))
    again = _moxPY.moxReadAcquisition(str(path))
    for read in (_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches):
        for ours, theirs in zip(read(acquisition), read(again), strict=True):
            for key in "FMP":
                scale = np.nanmax(np.abs(ours[key]))
                np.testing.assert_allclose(theirs[key], ours[key], rtol=0, atol=2e-5 * scale)
    (before, _), (after, _) = (_moxPY.moxGetForcePlatforms(each) for each in (acquisition, again))
    for ours, theirs in zip(before, after, strict=True):
        assert list(theirs["channels"]) == list(ours["channels"])
        np.testing.assert_array_equal(theirs["corners"], ours["corners"])
        np.testing.assert_array_equal(theirs["origin"], ours["origin"])
