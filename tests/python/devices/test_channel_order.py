"""Asking for platforms puts the analog channels in the order of the parameters."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import NAMES, Plate, read_plates
from support.store_tree import node, snapshot

SAMPLES = 4
GROUP = "Format/Data/AnalogsExport"
LABELS = [f"{name}_0" for name in NAMES[2]]


@pytest.fixture
def trial(tmp_path: Path) -> Any:
    """Six channels of a plate and one more."""
    return read_plates(tmp_path, [Plate()], SAMPLES)


def indices(acquisition: Any) -> dict[str, int]:
    return attributes(acquisition, "RelativeSetIndex")


def attributes(acquisition: Any, name: str) -> dict[str, Any]:
    return {
        key: np.ravel(content["attributes"][name][2])[0]
        for key, content in node(acquisition, GROUP)["sets"].items()
        if name in content["attributes"]
    }


def by_index(acquisition: Any) -> list[str]:
    found = indices(acquisition)
    assert sorted(found.values()) == list(range(len(found)))  # dense
    return sorted(found, key=found.__getitem__)


def test_channels_of_a_file_keep_their_order(trial: Any) -> None:
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == [*LABELS, "EMG"]


def test_a_channel_that_comes_back_takes_its_place(trial: Any) -> None:
    _moxPY.moxRemoveAnalog(trial, "Fy_0")
    _moxPY.moxAppendAnalog(trial, "Fy_0", np.zeros((SAMPLES, 1)))
    assert by_index(trial)[-1] == "Fy_0"
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == [*LABELS, "EMG"]


def test_channels_that_are_not_named_follow_in_their_order(trial: Any) -> None:
    for name in ("z", "b", "y"):
        _moxPY.moxAppendAnalog(trial, name, np.zeros((SAMPLES, 1)))
    _moxPY.moxRemoveAnalog(trial, "b")
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == [*LABELS, "EMG", "z", "y"]


def test_gaps_are_closed(trial: Any) -> None:
    _moxPY.moxRemoveAnalog(trial, "Fz_0")
    _moxPY.moxRemoveAnalog(trial, "Fx_0")
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == ["Fy_0", "Mx_0", "My_0", "Mz_0", "EMG"]


def test_reordered_labels_are_followed(trial: Any) -> None:
    order = ["EMG", *reversed(LABELS)]
    _moxPY.moxSetMetaDataValue(trial, "ANALOG", "LABELS", order)
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == order


def test_repeated_entries_take_one_channel_each(trial: Any) -> None:
    labels = ["EMG", "EMG", *LABELS[:5]]
    _moxPY.moxSetMetaDataValue(trial, "ANALOG", "LABELS", labels)
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == ["EMG", *LABELS]


def test_without_labels_the_order_stays(trial: Any) -> None:
    _moxPY.moxRemoveMetaData(trial, "ANALOG", "LABELS")
    _moxPY.moxGetForcePlatforms(trial)
    assert by_index(trial) == [*LABELS, "EMG"]


def test_channels_tell_which_platform_uses_them(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate(2), Plate(3)], SAMPLES)
    _moxPY.moxGetForcePlatforms(acquisition)
    users = attributes(acquisition, "DevicesIndex")
    assert users == {f"{name}_0": 0 for name in NAMES[2]} | {f"{name}_1": 1 for name in NAMES[3]}


def test_channels_that_no_platform_uses_any_more_do_not_say_so(trial: Any) -> None:
    _moxPY.moxGetForcePlatforms(trial)
    info = {"format": "Integer", "values": [[1, 2, 3, 4, 5, 7]]}
    _moxPY.moxAppendMetaData(trial, "FORCE_PLATFORM", "CHANNEL", info)
    _moxPY.moxGetForcePlatforms(trial)
    assert list(attributes(trial, "DevicesIndex")) == [*LABELS[:5], "EMG"]


def test_again_is_the_same(trial: Any) -> None:
    _moxPY.moxAppendAnalog(trial, "b", np.zeros((SAMPLES, 1)))
    _moxPY.moxGetForcePlatforms(trial)
    once = snapshot(trial)
    for read in ("moxGetForcePlatforms", "moxGetForcePlatformWrenches",
                 "moxGetGroundReactionWrenches"):  # fmt: skip
        getattr(_moxPY, read)(trial)
        assert snapshot(trial) == once


def test_without_force_platforms_nothing_is_touched(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate()], SAMPLES)
    _moxPY.moxRemoveMetaData(acquisition, "FORCE_PLATFORM")
    _moxPY.moxRemoveAnalog(acquisition, "Fy_0")
    _moxPY.moxAppendAnalog(acquisition, "Fy_0", np.zeros((SAMPLES, 1)))
    before = snapshot(acquisition)
    _moxPY.moxGetForcePlatforms(acquisition)
    assert snapshot(acquisition) == before


def test_values_keep_to_their_channels(trial: Any) -> None:
    for number, label in enumerate([*LABELS, "EMG"]):
        _moxPY.moxSetAnalogValues(trial, label, np.full((SAMPLES, 1), float(number)))
    _moxPY.moxSetMetaDataValue(trial, "ANALOG", "LABELS", ["EMG", *LABELS])
    _moxPY.moxGetForcePlatforms(trial)
    assert _moxPY.moxGetAnalogsValues(trial)[0].tolist() == [6, 0, 1, 2, 3, 4, 5]
    assert _moxPY.moxGetAnalog(trial, 0)[1]["label"] == "EMG"


def test_what_was_there_for_platforms_goes_with_them(trial: Any) -> None:
    _moxPY.moxGetForcePlatforms(trial)
    _moxPY.moxRemoveMetaData(trial, "FORCE_PLATFORM")
    _moxPY.moxGetForcePlatforms(trial)
    assert attributes(trial, "DevicesIndex") == {}
    assert node(trial, "Devices")["groups"] == {}
