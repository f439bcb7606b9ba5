"""Angles, forces, moments and powers among the points of a file."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import text
from support.read_c3d import read_c3d, track

# type, parameter, parameter of the unit, default unit
KINDS = [
    ("Angles", "ANGLES", "ANGLE_UNITS", "deg"),
    ("Forces", "FORCES", "FORCE_UNITS", "N"),
    ("Moments", "MOMENTS", "MOMENT_UNITS", "Nmm"),
    ("Powers", "POWERS", "POWER_UNITS", "W"),
]
POINTS = {"LASI": track(3), "LHip": track(3, 50), "RASI": track(3, 100)}

every_kind = pytest.mark.parametrize(("group", "parameter", "units", "default"), KINDS)


def read_kind(acquisition: Any, group: str) -> Any:
    return getattr(_moxPY, f"moxGet{group}")(acquisition)


@every_kind
def test_listed_labels_are_of_their_type(
    tmp_path: Path, group: str, parameter: str, units: str, default: str
) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={f"POINT:{parameter}": ["LHip"]})
    values, info = read_kind(acquisition, group)
    assert list(values) == ["LHip"]
    np.testing.assert_array_equal(values["LHip"], POINTS["LHip"])
    assert info == {"frequency": 100.0, "units": {f"ALL{parameter}": default}}
    assert list(_moxPY.moxGetMarkers(acquisition)[0]) == ["LASI", "RASI"]


@every_kind
@pytest.mark.parametrize("form", ["one text", "a list"])
def test_the_unit_of_a_type(
    tmp_path: Path, group: str, parameter: str, units: str, default: str, form: str
) -> None:
    unit = "rad" if form == "one text" else ["rad"]
    acquisition = read_c3d(
        tmp_path, POINTS, parameters={f"POINT:{parameter}": ["LHip"], f"POINT:{units}": unit}
    )  # fmt: skip
    assert read_kind(acquisition, group)[1]["units"] == {f"ALL{parameter}": "rad"}
    assert _moxPY.moxGetPointsUnit(acquisition, group) == "rad"


@every_kind
def test_labels_are_matched_without_their_padding(
    tmp_path: Path, group: str, parameter: str, units: str, default: str
) -> None:
    listed = text(parameter, [b"LHip\0\0\0   "])
    acquisition = read_c3d(tmp_path, POINTS, parameters={f"POINT:{parameter}": listed})
    assert list(read_kind(acquisition, group)[0]) == ["LHip"]


@every_kind
def test_types_go_on_in_numbered_lists(
    tmp_path: Path, group: str, parameter: str, units: str, default: str
) -> None:
    lists = {f"POINT:{parameter}": ["LASI"], f"POINT:{parameter}2": ["RASI"]}
    acquisition = read_c3d(tmp_path, POINTS, parameters=lists)
    assert list(read_kind(acquisition, group)[0]) == ["LASI", "RASI"]


@pytest.mark.parametrize("parameter", ["SCALARS", "REACTIONS", "VIRTUALS", "MARKERS"])
def test_other_kinds_are_markers(tmp_path: Path, parameter: str) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={f"POINT:{parameter}": ["LHip"]})
    assert list(_moxPY.moxGetMarkers(acquisition)[0]) == list(POINTS)


def test_a_listed_label_that_no_point_has_makes_no_point(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:ANGLES": ["NONE", "LHip"]})
    assert list(_moxPY.moxGetAngles(acquisition)[0]) == ["LHip"]
    assert _moxPY.moxGetPointNumber(acquisition) == 3.0


def test_indices_are_the_columns_of_the_file(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:ANGLES": ["LHip"]})
    labels = [_moxPY.moxGetPoint(acquisition, n)[1]["label"] for n in range(3)]
    assert labels == ["LASI", "LHip", "RASI"]


def test_all_five_types_in_one_file(tmp_path: Path) -> None:
    points = {name: track(2, 10.0 * n) for n, name in enumerate(["M", "A", "F", "O", "P"])}
    kinds = {"ANGLES": ["A"], "FORCES": ["F"], "MOMENTS": ["O"], "POWERS": ["P"]}
    acquisition = read_c3d(
        tmp_path, points, parameters={f"POINT:{kind}": list_ for kind, list_ in kinds.items()}
    )  # fmt: skip
    values, info = _moxPY.moxGetPoints(acquisition)
    assert list(values) == ["A", "F", "M", "O", "P"]
    assert info["units"] == {"A": "deg", "F": "N", "M": "mm", "O": "Nmm", "P": "W"}
    for name, expected in points.items():
        np.testing.assert_array_equal(values[name], expected)


@pytest.mark.parametrize(("stored", "shown"), [("m", "m"), ("mm", "mm"), ("cm", "cm")])
def test_the_unit_of_the_markers(tmp_path: Path, stored: str, shown: str) -> None:
    acquisition = read_c3d(tmp_path, POINTS, point_units=stored)
    assert _moxPY.moxGetMarkers(acquisition)[1]["units"] == {"ALLMARKERS": shown}


def test_markers_are_in_millimetres_when_the_file_does_not_tell(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:UNITS": None})
    assert _moxPY.moxGetMarkers(acquisition)[1]["units"] == {"ALLMARKERS": "mm"}


@pytest.mark.parametrize(("listed", "units"), [(["m"], {"ALL": "m"}), (["m"] * 3, {"ALL": "m"})])
def test_the_unit_as_a_list(tmp_path: Path, listed: list[str], units: dict[str, str]) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:UNITS": listed})
    assert _moxPY.moxGetPoints(acquisition)[1]["units"] == units


def test_a_type_keeps_its_own_unit_beside_a_list(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, parameters={"POINT:UNITS": ["m"] * 3, "POINT:ANGLES": ["LHip"]}
    )  # fmt: skip
    assert _moxPY.moxGetAngles(acquisition)[1]["units"] == {"ALLANGLES": "deg"}


def test_a_label_with_its_subject_is_listed_with_it(tmp_path: Path) -> None:
    points = {"Bob:LASI": track(3), "Bob:LHip": track(3)}
    acquisition = read_c3d(tmp_path, points, parameters={"POINT:ANGLES": ["Bob:LHip"]})
    assert list(_moxPY.moxGetAngles(acquisition)[0]) == ["Bob:LHip"]


def test_two_points_of_a_listed_label_are_both_of_its_type(tmp_path: Path) -> None:
    points = [("LHip", track(3)), ("LHip", track(3, 9)), ("LASI", track(3))]
    acquisition = read_c3d(tmp_path, points, parameters={"POINT:ANGLES": ["LHip"]})
    assert list(_moxPY.moxGetAngles(acquisition)[0]) == ["LHip", "LHip_2"]
