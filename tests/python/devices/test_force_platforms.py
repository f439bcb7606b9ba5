"""What the functions for force platforms return, and what they refuse."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import MATRIX, NAMES, Plate, loaded_plate, read_plates, walking
from support.c3d_bytes import Analog
from support.failures import failure_of
from support.read_c3d import read_c3d
from support.small_trials import example_trial, new_trial, read_trial
from support.store_tree import node, scalar, snapshot

TRACK = np.zeros((3, 3))
NO_LOCAL_FRAME = (
    "The option to retrieve wrenches in local frame is not yet supported in this version. If you"
    " expected this feature for your current uses, please contact Tarvex for further discussion."
)
NO_SUCH_FRAME = "Only an integer with value of 0 and 1 is admissible for inglobalframe argument."


@pytest.mark.parametrize(
    "make",
    [
        lambda _: _moxPY.moxNewAcquisition(),
        lambda _: new_trial(),
        lambda folder: read_c3d(folder, {"A": TRACK}, parameters={"FORCE_PLATFORM": None}),
        lambda folder: read_c3d(folder, {"A": TRACK}),
        read_trial,
    ],
    ids=["new", "new with channels", "read without the group", "read, USED 0", "read"],
)  # fmt: skip
def test_without_platforms_all_lists_are_empty(make: Callable[[Path], Any], tmp_path: Path) -> None:
    acquisition = make(tmp_path)
    assert _moxPY.moxGetForcePlatforms(acquisition) == [[], []]
    assert _moxPY.moxGetForcePlatformWrenches(acquisition) == []
    assert _moxPY.moxGetForcePlatformWrenches(acquisition, 1) == []
    assert _moxPY.moxGetGroundReactionWrenches(acquisition) == []
    assert _moxPY.moxGetGroundReactionWrenches(acquisition, 5.0) == []


@pytest.mark.parametrize("kind", [1, 2, 3, 4])
def test_a_platform_is_described(tmp_path: Path, kind: int) -> None:
    plate, load = Plate(kind), walking(6)
    acquisition = loaded_plate(tmp_path, plate, load)
    (platform,), (info,) = _moxPY.moxGetForcePlatforms(acquisition)
    assert list(platform) == ["channels", "corners", "origin", "type", "cal_matrix"]
    assert (platform["type"], type(platform["type"])) == (kind, int)
    np.testing.assert_array_equal(platform["corners"], plate.corners.T)
    np.testing.assert_array_equal(platform["origin"], plate.stored_origin)
    matrix = MATRIX if kind == 4 else np.zeros(0)
    np.testing.assert_array_equal(platform["cal_matrix"], matrix)
    assert list(platform["channels"]) == [f"{name}_0" for name in NAMES[kind]]
    np.testing.assert_array_equal(np.column_stack(list(platform["channels"].values())),
                                  plate.channels(load))  # fmt: skip
    assert info == {"frequency": 100.0, "units": dict.fromkeys(platform["channels"], "N")}


def test_the_frequency_is_that_of_the_analog_channels(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 60, frames=6, samples_per_frame=10)
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == 1000.0


def set_rate(acquisition: Any, rate: Any) -> None:
    kind = {str: "Char", int: "Integer"}.get(type(rate), "Real")
    info = {"format": kind, "values": rate}
    _moxPY.moxSetMetaData(acquisition, "ANALOG", "RATE", info)


@pytest.mark.parametrize(
    ("rate", "frequency"),
    [(250.0, 250.0), ([500.0], 500.0), ([500.0, 1.0], 1000.0), (0.0, 1000.0),
     (-50.0, 1000.0), (float("nan"), 1000.0), (float("inf"), 1000.0), ("fast", 1000.0),
     (None, 1000.0)],
)  # fmt: skip
def test_the_frequency_is_the_parameter_where_it_is_one_positive_number_else_that_of_the_sets(
    tmp_path: Path, rate: Any, frequency: float
) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 60, frames=6, samples_per_frame=10)
    if rate is None:
        _moxPY.moxRemoveMetaData(acquisition, "ANALOG", "RATE")
    else:
        set_rate(acquisition, rate)
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == frequency
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 1000.0


def test_the_frequency_without_analog_parameters_is_that_of_the_sets(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 60, frames=6, samples_per_frame=10)
    _moxPY.moxRemoveMetaData(acquisition, "ANALOG")
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == 1000.0


def test_the_frequency_follows_another_number_of_samples_per_frame(tmp_path: Path) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 60, frames=6, samples_per_frame=10)
    _moxPY.moxClearAnalogs(acquisition)
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 5)
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == 500.0


@pytest.mark.parametrize("entry", [1000, [1000.0, 1000.0], "fast"], ids=type)
def test_the_frequency_follows_the_rate_whatever_the_parameter_was(
    tmp_path: Path, entry: Any
) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 60, frames=6, samples_per_frame=10)
    set_rate(acquisition, entry)
    _moxPY.moxSetFrequency(acquisition, 4000.0)
    assert _moxPY.moxGetForcePlatforms(acquisition)[1][0]["frequency"] == 40000.0
    assert _moxPY.moxGetAnalogFrequency(acquisition) == 40000.0


def test_channels_come_in_the_order_of_the_table(tmp_path: Path) -> None:
    plate, load = Plate(2), walking(6)
    order = [4, 1, 6, 2, 5, 3]  # the column of each channel of the type
    columns = dict(zip(order, plate.channels(load).T, strict=True))
    analogs = [Analog(f"C{number}", columns[number]) for number in sorted(columns)]
    acquisition = read_c3d(tmp_path, analogs=analogs, platforms=[plate.described(channels=order)])
    (platform,), _ = _moxPY.moxGetForcePlatforms(acquisition)
    assert list(platform["channels"]) == ["C4", "C1", "C6", "C2", "C5", "C3"]
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    np.testing.assert_allclose(wrench["F"], plate.at_origin(load)["F"], rtol=1e-5)


def test_channels_of_one_label_are_told_apart(tmp_path: Path) -> None:
    analogs = [Analog("F", np.full(4, float(number))) for number in range(6)]
    acquisition = read_c3d(tmp_path, analogs=analogs, platforms=[Plate().described()])
    (platform,), (info,) = _moxPY.moxGetForcePlatforms(acquisition)
    assert list(platform["channels"]) == ["F", "F_2", "F_3", "F_4", "F_5", "F_6"]
    assert list(info["units"]) == list(platform["channels"])
    assert [values[0] for values in platform["channels"].values()] == [0, 1, 2, 3, 4, 5]


def test_a_channel_may_serve_twice(tmp_path: Path, new_log_lines: Callable[[], list[str]]) -> None:
    described = Plate().described(channels=(1, 1, 3, 4, 5, 6))
    acquisition = read_plates(tmp_path, [Plate(2, np.eye(3))], 4, platforms=[described])
    _moxPY.moxSetAnalogValues(acquisition, "Fx_0", np.full((4, 1), 7.0))
    (wrench,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    assert np.abs(wrench["F"][0]).tolist() == [7.0, 7.0, 0.0]
    assert any("names the analog channel 1 repeatedly" in line for line in new_log_lines())


def test_arrays_belong_to_the_caller(tmp_path: Path) -> None:
    acquisition = loaded_plate(tmp_path, Plate(), walking(5))
    before = snapshot(acquisition)
    (platform,), _ = _moxPY.moxGetForcePlatforms(acquisition)
    for array in [*platform["channels"].values(), platform["corners"], platform["origin"]]:
        array[...] = 99.0
    for wrench in _moxPY.moxGetForcePlatformWrenches(acquisition):
        for array in wrench.values():
            array[...] = 99.0
    _moxPY.moxGetForcePlatforms(acquisition)
    after = snapshot(acquisition)
    _moxPY.moxGetForcePlatforms(acquisition)
    assert snapshot(acquisition) == after != before


def test_the_global_frame_may_be_asked_for(tmp_path: Path) -> None:
    acquisition = loaded_plate(tmp_path, Plate(), walking(5))
    (asked,) = _moxPY.moxGetForcePlatformWrenches(acquisition, 1)
    (default,) = _moxPY.moxGetForcePlatformWrenches(acquisition)
    for key in "FMP":
        np.testing.assert_array_equal(asked[key], default[key])


@pytest.mark.parametrize("make", [example_trial, new_trial], ids=["plates", "no plates"])
@pytest.mark.parametrize(
    ("frame", "text"),
    [(0, NO_LOCAL_FRAME), (2, NO_SUCH_FRAME), (-1, NO_SUCH_FRAME), (2**31 - 1, NO_SUCH_FRAME)],
)
def test_other_frames_are_refused(make: Callable[[], Any], frame: int, text: str) -> None:
    acquisition = make()
    before = snapshot(acquisition)
    assert failure_of(_moxPY.moxGetForcePlatformWrenches, acquisition, frame) == (
        RuntimeError, text,
    )  # fmt: skip
    assert snapshot(acquisition) == before


@pytest.mark.parametrize(("threshold", "shown"), [(-0.5, "-0.5"), (float("nan"), "nan"),
                                                  (float("-inf"), "-inf")])  # fmt: skip
@pytest.mark.parametrize("make", [example_trial, new_trial], ids=["plates", "no plates"])
def test_thresholds_that_are_none_are_refused(
    make: Callable[[], Any], threshold: float, shown: str
) -> None:
    acquisition = make()
    before = snapshot(acquisition)
    text = f"The Fz threshold must be a number that is not negative, not {shown}"
    assert failure_of(_moxPY.moxGetGroundReactionWrenches, acquisition, threshold) == (
        RuntimeError, text,
    )  # fmt: skip
    assert snapshot(acquisition) == before


def test_a_platform_has_its_group_in_the_store(tmp_path: Path) -> None:
    acquisition = loaded_plate(tmp_path, Plate(4), walking(5))
    _moxPY.moxGetForcePlatforms(acquisition)
    assert scalar(acquisition, "Devices/ForcePlate/FP0", "DevicesIndex") == 0


@pytest.mark.parametrize(
    "read", [_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches]
)
def test_wrenches_do_not_stay_in_the_store(tmp_path: Path, read: Callable[[Any], Any]) -> None:
    acquisition = loaded_plate(tmp_path, Plate(4), walking(5))
    read(acquisition)
    assert not node(acquisition, "Devices/ForcePlate/FP0")["sets"]


def test_calling_twice_does_not_detect_twice(
    tmp_path: Path, new_log_lines: Callable[[], list[str]]
) -> None:
    described = Plate().described(origin=(0.0, 0.0, 41.5))  # is repaired, which is logged
    acquisition = read_plates(tmp_path, [Plate()], platforms=[described])
    results = [_moxPY.moxGetForcePlatforms(acquisition), _moxPY.moxGetForcePlatforms(acquisition)]
    _moxPY.moxGetForcePlatformWrenches(acquisition)
    _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert len(results[0][0]) == len(results[1][0]) == 1
    repairs = [line for line in new_log_lines() if "ORIGIN has a positive z" in line]
    assert len(repairs) == 1


def test_a_reason_for_no_group_is_logged_once(
    tmp_path: Path, new_log_lines: Callable[[], list[str]]
) -> None:
    acquisition = read_plates(tmp_path, [Plate()], 4, platforms=[Plate().described(type=21)])
    for _ in range(3):
        _moxPY.moxGetForcePlatforms(acquisition)
    reasons = [line for line in new_log_lines() if "Force platform 1 has no wrench" in line]
    assert len(reasons) == 1
    assert reasons[0].endswith("the channels of type 21 are not known")
