"""moxGetPointsUnit and moxGetPointNumber."""

from __future__ import annotations

import _mox_probe as probe
import _moxPY
import pytest
from points.point_channels import Channel, with_points

GROUPS = ["Angles", "Forces", "Markers", "Moments", "Powers"]


@pytest.mark.parametrize("group", GROUPS)
def test_the_unit_of_a_group_is_that_of_its_first_point(group: str) -> None:
    acquisition = with_points(
        Channel(group, "Z", unit="first", index=9), Channel(group, "A", unit="second", index=0)
    )
    assert _moxPY.moxGetPointsUnit(acquisition, group) == "first"


def test_the_attribute_unit_is_read_and_not_units() -> None:
    acquisition = with_points(Channel("Markers", "A", unit="mm", units="m"))
    assert _moxPY.moxGetPointsUnit(acquisition, "Markers") == "mm"


@pytest.mark.parametrize("name", ["markers", "MARKERS", "marker", "Points", "", "Markers "])
def test_the_unit_of_an_unknown_group_is_empty(name: str) -> None:
    acquisition = with_points(Channel("Markers", "A"))
    assert _moxPY.moxGetPointsUnit(acquisition, name) == ""


@pytest.mark.parametrize("group", GROUPS)
def test_the_unit_of_a_group_without_points_is_empty(group: str) -> None:
    assert _moxPY.moxGetPointsUnit(with_points(), group) == ""


def test_a_point_without_a_unit_has_an_empty_one() -> None:
    acquisition = with_points(Channel("Markers", "A", unit=None))
    assert _moxPY.moxGetPointsUnit(acquisition, "Markers") == ""


def test_the_number_of_points_is_a_float() -> None:
    number = _moxPY.moxGetPointNumber(_moxPY.moxNewAcquisition(42))
    assert type(number) is float
    assert number == 42.0


def test_points_of_all_groups_are_counted() -> None:
    acquisition = with_points(*[Channel(group, "A") for group in GROUPS], Channel("Markers", "B"))
    assert _moxPY.moxGetPointNumber(acquisition) == 6.0


def test_an_acquisition_without_points_has_0() -> None:
    assert _moxPY.moxGetPointNumber(with_points()) == 0.0


@pytest.mark.parametrize("group", GROUPS)
def test_a_missing_group_stops_the_count(group: str) -> None:
    acquisition = with_points(Channel("Markers", "A"))
    probe.delete_group(acquisition, f"Format/Data/{group}")
    with pytest.raises(RuntimeError) as failure:
        _moxPY.moxGetPointNumber(acquisition)
    expected = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    assert str(failure.value) == expected
