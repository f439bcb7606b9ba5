"""Whatever is wrong with FORCE_PLATFORM: lists stay aligned with the platforms, nothing crashes."""

from __future__ import annotations

from collections.abc import Callable
from contextlib import suppress
from itertools import product
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    DIRECTIONS,
    MATRIX,
    NAMES,
    Plate,
    assert_wrench,
    read_plates,
    step_on,
    walking,
)
from support.c3d_bytes import real
from support.read_c3d import read_c3d

SAMPLES = 30
Lines = Callable[[], list[str]]


def trial(folder: Path, parameters: dict[str, Any], plates: int = 2) -> Any:
    """Two plates, loaded, and changes of the file."""
    described = [Plate(2, axes) for axes in list(DIRECTIONS.values())[1 : plates + 1]]
    acquisition = read_plates(folder, described, SAMPLES, parameters=parameters)
    for number, plate in enumerate(described):
        step_on(acquisition, plate, walking(SAMPLES, number), number)
    return acquisition


def results(acquisition: Any) -> tuple[list[Any], list[Any], list[Any], list[Any]]:
    """Everything that is told of platforms, all of one length."""
    platforms, infos = _moxPY.moxGetForcePlatforms(acquisition)
    measured = _moxPY.moxGetForcePlatformWrenches(acquisition)
    applied = _moxPY.moxGetGroundReactionWrenches(acquisition)
    assert len(platforms) == len(infos) == len(measured) == len(applied)
    for platform, info in zip(platforms, infos, strict=True):
        assert list(platform["channels"]) == list(info["units"])
        assert platform["corners"].shape == (3, 4)
        assert platform["origin"].shape == (3,)
    for wrench in [*measured, *applied]:
        assert {values.shape for values in wrench.values()} == {(SAMPLES, 3)}
    return platforms, infos, measured, applied


def has_wrench(acquisition: Any) -> list[bool]:
    _, _, measured, applied = results(acquisition)
    shown = [[not np.isnan(wrench["F"]).any() for wrench in each] for each in (measured, applied)]
    assert shown[0] == shown[1]
    return shown[0]


@pytest.mark.parametrize(
    ("changes", "expected"),
    [
        ({}, [True, True]),
        ({"USED": 1}, [True]),
        ({"USED": 0}, []),
        ({"USED": -2}, []),
        ({"USED": 5}, [True, True]),
        ({"USED": 32767}, [True, True]),
        ({"USED": 1.0}, [True]),
        ({"USED": float("nan")}, [True, True]),
        ({"USED": 1.5}, [True, True]),
        ({"USED": -0.5}, [True, True]),
        ({"USED": 1e9}, [True, True]),
        ({"USED": 3e38}, [True, True]),
        ({"USED": float("inf")}, [True, True]),
        ({"USED": -float("inf")}, []),
        ({"USED": "two"}, [True, True]),
        ({"USED": None}, [True, True]),
        ({"TYPE": None}, [False, False]),
        ({"TYPE": None, "USED": 32767}, [False, False]),
        ({"TYPE": None, "USED": None}, []),
        ({"TYPE": None, "USED": 1.5}, []),
        ({"TYPE": "22"}, [False, False]),
        ({"TYPE": np.array([2], np.int16)}, [True]),
        ({"TYPE": np.array([2, 21], np.int16)}, [True, False]),
        ({"TYPE": np.array([-2, 2], np.int16)}, [False, True]),
        ({"TYPE": np.array([2.0, 2.0], np.float32)}, [True, True]),
        ({"TYPE": np.array([2.5, np.nan], np.float32)}, [False, False]),
        ({"TYPE": np.array([5, 6, 7, 11, 12, 21], np.int16), "USED": 6}, [False] * 6),
        ({"CORNERS": None}, [False, False]),
        ({"CORNERS": "text"}, [False, False]),
        ({"CORNERS": np.zeros((2, 4, 3), np.float32)}, [False, False]),
        ({"CORNERS": np.full((2, 4, 3), np.nan, np.float32)}, [False, False]),
        ({"CORNERS": np.full((2, 4, 3), np.inf, np.float32)}, [False, False]),
        ({"CORNERS": np.zeros((1, 1, 1, 1, 7), np.float32)}, [False, False]),
        ({"CORNERS": np.zeros((0, 4, 3), np.float32)}, [False, False]),
        ({"ORIGIN": None}, [False, False]),
        ({"ORIGIN": "below"}, [False, False]),
        ({"ORIGIN": np.array([[0, 0, -40], [0, np.nan, -40]], np.float32)}, [True, False]),
        ({"ORIGIN": np.array([[0, 0, -40]], np.float32)}, [True, False]),
        ({"CHANNEL": None}, [False, False]),
        ({"CHANNEL": "123456"}, [False, False]),
        ({"CHANNEL": np.array([[0] * 6, [7, 8, 9, 10, 11, 12]], np.int16)}, [False, True]),
        ({"CHANNEL": np.array([[1, 2, 3, 4, 5, 99], [7, 8, 9, 10, 11, 12]], np.int16)},
         [False, True]),
        ({"CHANNEL": np.array([[1, 2, 3, 4, 5, -6], [7, 8, 9, 10, 11, 12]], np.int16)},
         [False, True]),
        ({"CHANNEL": np.array([[1, 2, 3], [4, 5, 6]], np.int16)}, [False, False]),
        ({"CHANNEL": np.array([[1, 2, 3, 4, 5, 6, 0, 0]] * 2, np.int16)}, [True, True]),
        ({"CHANNEL": np.array([[1, 2, 3, 4, 5, 6]], np.int16)}, [True, False]),
        ({"CHANNEL": np.array([[1e30, 2, 3, 4, 5, np.nan]] * 2, np.float32)}, [False, False]),
        ({"CAL_MATRIX": "text"}, [True, True]),
        ({"FPCOPPOLY": np.zeros(5, np.float32)}, [True, True]),
    ],
)  # fmt: skip
def test_platforms_that_cannot_be_detected_keep_their_places(
    tmp_path: Path, changes: dict[str, Any], expected: list[bool]
) -> None:
    acquisition = trial(
        tmp_path, {f"FORCE_PLATFORM:{name}": value for name, value in changes.items()}
    )
    assert has_wrench(acquisition) == expected


@pytest.mark.parametrize(
    ("entry", "extents"),
    [
        ("CORNERS", [24]), ("CORNERS", [2, 12]), ("CORNERS", [8, 3]), ("CORNERS", [1, 1, 24]),
        ("ORIGIN", [6]), ("CHANNEL", [12]), ("TYPE", [2, 1]), ("TYPE", [1, 2]),
    ],
)  # fmt: skip
def test_flattened_tables_are_understood(tmp_path: Path, entry: str, extents: list[int]) -> None:
    acquisition = trial(tmp_path, {})
    before = results(acquisition)
    _moxPY.moxSetMetaDataDimensions(acquisition, "FORCE_PLATFORM", entry, extents)
    after = results(acquisition)
    np.testing.assert_equal(after, before)
    assert has_wrench(acquisition) == [True, True]


@pytest.mark.parametrize("extents", [[72], [2, 36], [12, 6]])
def test_flattened_matrices_are_understood(tmp_path: Path, extents: list[int]) -> None:
    plates = [Plate(4), Plate(4, DIRECTIONS["tilted"])]
    acquisition = read_plates(tmp_path, plates, SAMPLES)
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, walking(SAMPLES, number), number)
    _moxPY.moxSetMetaDataDimensions(acquisition, "FORCE_PLATFORM", "CAL_MATRIX", extents)
    wrenches = _moxPY.moxGetGroundReactionWrenches(acquisition)
    for number, plate in enumerate(plates):
        assert_wrench(wrenches[number], plate.at_point(walking(SAMPLES, number)))


def test_flattened_channels_beside_a_platform_of_eight(tmp_path: Path) -> None:
    plates = [Plate(2), Plate(3)]
    acquisition = read_plates(tmp_path, plates, SAMPLES)
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, walking(SAMPLES, number), number)
    _moxPY.moxSetMetaDataDimensions(acquisition, "FORCE_PLATFORM", "CHANNEL", [16])
    wrenches = _moxPY.moxGetGroundReactionWrenches(acquisition)
    for number, plate in enumerate(plates):
        assert_wrench(wrenches[number], plate.at_point(walking(SAMPLES, number)))


def test_what_the_file_lacks_is_nan(tmp_path: Path) -> None:
    removed = dict.fromkeys([f"FORCE_PLATFORM:{name}" for name in ("CORNERS", "ORIGIN")])
    (platform, _), _, _, _ = results(trial(tmp_path, removed))
    assert np.isnan(platform["corners"]).all()
    assert np.isnan(platform["origin"]).all()
    assert list(platform["channels"]) == [f"{name}_0" for name in NAMES[2]]


def test_an_unknown_type_is_described_with_all_its_channels(tmp_path: Path) -> None:
    changes = {
        "FORCE_PLATFORM:TYPE": np.array([21, 2], np.int16),
        "FORCE_PLATFORM:CHANNEL": np.array(
            [[3, 1, 0, 77, 8, 0, 2, 0, 12], [7, 8, 9, 10, 11, 12, 0, 0, 0]], np.int16
        ),
        "FORCE_PLATFORM:CAL_MATRIX": real(
            "CAL_MATRIX", np.arange(162, dtype=np.float32).reshape(2, 9, 9)
        ),
    }
    platforms, _, _, _ = results(trial(tmp_path, changes))
    assert platforms[0]["type"] == 21
    assert list(platforms[0]["channels"]) == ["Fz_0", "Fx_0", "Fy_1", "Fy_0", "Mz_1"]
    np.testing.assert_array_equal(platforms[0]["cal_matrix"], np.arange(81.0).reshape(9, 9).T)
    np.testing.assert_array_equal(
        platforms[1]["cal_matrix"], np.arange(81.0, 162.0).reshape(9, 9).T[:6, :6]
    )


def test_the_others_go_on(tmp_path: Path, new_log_lines: Lines) -> None:
    changes = {"FORCE_PLATFORM:TYPE": np.array([11, 2], np.int16)}
    acquisition = trial(tmp_path, changes)
    wrench = _moxPY.moxGetGroundReactionWrenches(acquisition)[1]
    plate = Plate(2, list(DIRECTIONS.values())[2])
    assert_wrench(wrench, plate.at_point(walking(SAMPLES, 1)))
    line = "Force platform 1 has no wrench : the channels of type 11 are not known"
    assert [each for each in new_log_lines() if line in each]


def test_a_missing_channel_is_named_in_the_log(tmp_path: Path, new_log_lines: Lines) -> None:
    rows = np.array([[1, 2, 3, 4, 99, 6], [7, 8, 9, 10, 11, 12]], np.int16)
    _moxPY.moxGetForcePlatforms(trial(tmp_path, {"FORCE_PLATFORM:CHANNEL": rows}))
    line = (
        "Force platform 1 has no wrench : FORCE_PLATFORM:CHANNEL names the analog channel 99 as"
        " its My, which is not there"
    )
    assert [each for each in new_log_lines() if line in each]


def test_platforms_of_a_file_without_analog_channels(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": np.zeros((4, 3))}, platforms=[Plate().described()])
    (platform,), (info,) = _moxPY.moxGetForcePlatforms(acquisition)
    assert (platform["channels"], info["units"]) == ({}, {})
    for wrenches in (_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches):
        (wrench,) = wrenches(acquisition)
        assert all(np.isnan(values).all() for values in wrench.values())


def test_a_platform_without_plugins_is_described(tmp_path: Path) -> None:
    acquisition = trial(tmp_path, {})
    expected, *_ = results(acquisition)
    _moxPY.unload()
    try:
        other = _moxPY.moxGetForcePlatforms(acquisition)[0]
        wrenches = _moxPY.moxGetForcePlatformWrenches(acquisition)
    finally:
        _moxPY.reload()
    np.testing.assert_equal(other, expected)
    assert all(np.isnan(wrench["F"]).all() for wrench in wrenches)
    assert has_wrench(acquisition) == [True, True]


VALUES = [
    ("Integer", 0), ("Integer", -1), ("Integer", 32767), ("Integer", []), ("Real", 1e38),
    ("Real", float("nan")), ("Real", [[1.0, 2.0], [3.0, 4.0]]), ("Char", "text"),
    ("Char", ["a", "b"]), ("Byte", [1, 2, 3]), ("Integer", [[[[1]]], [[[2]]]]),
    ("Real", np.zeros((3, 2, 2, 2)).tolist()),
]  # fmt: skip
ENTRIES = ["USED", "TYPE", "CORNERS", "ORIGIN", "CHANNEL", "CAL_MATRIX", "FPCOPPOLY", "ZERO"]


@pytest.mark.parametrize(("entry", "value"), list(product(ENTRIES, VALUES)))
def test_no_value_of_any_parameter_breaks_anything(
    tmp_path: Path, entry: str, value: tuple[str, Any]
) -> None:
    acquisition = trial(tmp_path, {})
    _moxPY.moxGetForcePlatforms(acquisition)
    info = {"format": value[0], "values": value[1]}
    with suppress(RuntimeError, SystemError, TypeError, ValueError):  # what no entry can have
        _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)
    results(acquisition)


@pytest.mark.parametrize("value", [("Integer", 3), ("Real", [1.0]), ("Char", ["x"] * 300)])
def test_no_value_of_the_labels_breaks_anything(tmp_path: Path, value: tuple[str, Any]) -> None:
    acquisition = trial(tmp_path, {})
    info = {"format": value[0], "values": value[1]}
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "LABELS", info)
    results(acquisition)


@pytest.mark.parametrize(("entry", "kind"), [("CORNERS", "Real"), ("ORIGIN", "Real"),
                                             ("CHANNEL", "Integer")])  # fmt: skip
def test_tables_as_their_getter_shows_them_count_as_missing(
    tmp_path: Path, new_log_lines: Lines, entry: str, kind: str
) -> None:
    acquisition = trial(tmp_path, {})
    shown = _moxPY.moxGetMetaData(acquisition, "FORCE_PLATFORM", entry)["info"]["values"]
    info = {"format": kind, "values": np.asarray(shown).tolist()}
    _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)
    assert has_wrench(acquisition) == [False, False]
    extents = " x ".join(str(extent) for extent in np.shape(shown))
    line = f"FORCE_PLATFORM:{entry} is not read : its dimensions are {extents}"
    assert len([each for each in new_log_lines() if line in each]) == 1


@pytest.mark.parametrize(("rows", "columns"), [(8, 6), (6, 8)])
def test_matrices_that_are_not_square(tmp_path: Path, rows: int, columns: int) -> None:
    plates = [Plate(4), Plate(4, DIRECTIONS["tilted"])]
    acquisition = read_plates(tmp_path, plates, SAMPLES)
    stored = np.full((2, columns, rows), 9.0)
    stored[:, :6, :6] = MATRIX.T
    info = {"format": "Real", "values": stored.tolist()}
    _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", "CAL_MATRIX", info)
    for number, plate in enumerate(plates):
        step_on(acquisition, plate, walking(SAMPLES, number), number)
    for number, wrench in enumerate(_moxPY.moxGetGroundReactionWrenches(acquisition)):
        assert_wrench(wrench, plates[number].at_point(walking(SAMPLES, number)))


def test_parameters_that_are_no_numbers_are_logged_once(
    tmp_path: Path, new_log_lines: Lines
) -> None:
    acquisition = trial(tmp_path, {"FORCE_PLATFORM:USED": "two", "FORCE_PLATFORM:ORIGIN": "below"})
    line = "Invalid value to read the content of an attribute"
    results(acquisition)
    results(acquisition)
    assert len([each for each in new_log_lines() if each.rstrip().endswith(line)]) == 2


@pytest.mark.parametrize(
    ("changes", "line"),
    [
        ({"FORCE_PLATFORM:CHANNEL": np.array([[1, 2, 3, 4, 5, 6], [6, 7, 8, 9, 10, 11]], np.int16)},
         "FORCE_PLATFORM:CHANNEL names the analog channel 6 for the platforms 1 and 2"),
        ({"FORCE_PLATFORM:ORIGIN": np.array([[0, 0, 40], [0, 0, -40]], np.float32),
          "FORCE_PLATFORM:TYPE": np.array([1, 2], np.int16)},
         "FORCE_PLATFORM:ORIGIN has a positive z; read with the opposite sign"),
    ],
)  # fmt: skip
def test_what_is_read_in_a_doubtful_way_is_logged_once(
    tmp_path: Path, new_log_lines: Lines, changes: dict[str, Any], line: str
) -> None:
    acquisition = trial(tmp_path, changes)
    results(acquisition)
    results(acquisition)
    assert len([each for each in new_log_lines() if line in each]) == 1


def test_repeated_labels_are_logged_once(tmp_path: Path, new_log_lines: Lines) -> None:
    acquisition = trial(tmp_path, {})
    labels = list(_moxPY.moxGetMetaData(acquisition, "ANALOG", "LABELS")["info"]["values"])
    _moxPY.moxSetMetaDataValue(acquisition, "ANALOG", "LABELS", [labels[0], *labels[:-1]])
    results(acquisition)
    results(acquisition)
    line = "ANALOG:LABELS has 'Fx_0' repeatedly; each entry takes a channel of its own"
    assert len([each for each in new_log_lines() if line in each]) == 1


def test_a_great_number_of_platforms_without_channels() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 1, 0, 1)
    for entry, values in (("USED", 30_000), ("TYPE", [2] * 30_000)):
        info = {"format": "Integer", "values": values}
        _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)
    assert len(_moxPY.moxGetForcePlatforms(acquisition)[0]) == 30_000
