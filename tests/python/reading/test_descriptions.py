"""Descriptions of points follow from POINT:DESCRIPTIONS by the point's column."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
from support.c3d_bytes import integer, text
from support.read_c3d import read_c3d, track

POINTS = {"A": track(2), "B": track(2), "C": track(2)}


def descriptions(acquisition: Any) -> dict[str, str]:
    return _moxPY.moxGetPoints(acquisition)[1]["description"]


def test_each_point_has_its_own(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, POINTS, point_descriptions=["one", "two", "three"])
    assert descriptions(acquisition) == {"A": "one", "B": "two", "C": "three"}


def test_points_beyond_the_list_have_none(tmp_path: Path) -> None:
    listed = {"POINT:DESCRIPTIONS": ["one"]}
    acquisition = read_c3d(tmp_path, POINTS, parameters=listed)
    assert descriptions(acquisition) == {"A": "one", "B": "", "C": ""}


def test_a_list_longer_than_the_points(tmp_path: Path) -> None:
    listed = {"POINT:DESCRIPTIONS": ["one", "two", "three", "four"]}
    acquisition = read_c3d(tmp_path, POINTS, parameters=listed)
    assert descriptions(acquisition) == {"A": "one", "B": "two", "C": "three"}


def test_a_file_without_the_list(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:DESCRIPTIONS": None})
    assert descriptions(acquisition) == {"A": "", "B": "", "C": ""}


def test_an_empty_list(tmp_path: Path) -> None:
    empty = text("DESCRIPTIONS", [], width=32)
    acquisition = read_c3d(tmp_path, POINTS, parameters={"POINT:DESCRIPTIONS": empty})
    assert descriptions(acquisition) == {"A": "", "B": "", "C": ""}


def test_numbers_in_place_of_the_list_are_logged(
    tmp_path: Path, new_log_lines: Callable[[], list[str]]
) -> None:
    numbers = {"POINT:DESCRIPTIONS": integer("DESCRIPTIONS", [1, 2, 3])}
    acquisition = read_c3d(tmp_path, {"A": track(2)}, parameters=numbers)
    assert descriptions(acquisition) == {"A": ""}
    line = "[error] [strata] Invalid value to read the content of an attribute"
    assert new_log_lines() == [line]


def test_points_of_other_types_are_counted_along(tmp_path: Path) -> None:
    acquisition = read_c3d(
        tmp_path, POINTS, point_descriptions=["one", "two", "three"],
        parameters={"POINT:ANGLES": ["B"]},
    )  # fmt: skip
    assert descriptions(acquisition) == {"B": "two", "A": "one", "C": "three"}
    assert _moxPY.moxGetPoint(acquisition, "B")[1]["description"] == "two"


def test_leading_blanks_belong_to_the_text(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(2)}, point_descriptions=["  left toe  "])
    assert descriptions(acquisition) == {"A": "  left toe"}
