"""moxGetPoint by index and by label."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from points.point_channels import Channel, with_points


def refusal(acquisition: Any, point: int | str) -> str:
    with pytest.raises(RuntimeError) as failure:
        _moxPY.moxGetPoint(acquisition, point)
    return str(failure.value)


def test_a_point_and_its_information() -> None:
    acquisition = with_points(Channel("Markers", "LASI", ((1, 2), (3, 4), (5, 6)), unit="cm"))
    result = _moxPY.moxGetPoint(acquisition, "LASI")
    assert type(result) is list
    values, info = result
    assert values.tolist() == [[1.0, 3.0, 5.0], [2.0, 4.0, 6.0]]
    assert info == {
        "frequency": 100.0, "units": "cm", "label": "LASI", "description": "described",
    }  # fmt: skip


def test_the_index_is_the_stored_one_whatever_the_order() -> None:
    acquisition = with_points(
        Channel("Markers", "A", index=7), Channel("Markers", "B", index=0),
        Channel("Angles", "C", index=-3),
    )  # fmt: skip
    found = [_moxPY.moxGetPoint(acquisition, index)[1]["label"] for index in (0, 7, -3)]
    assert found == ["B", "A", "C"]


@pytest.mark.parametrize("index", [1, -1, 2147483647, -2147483648])
def test_an_index_that_no_point_has_is_quoted(index: int) -> None:
    acquisition = with_points(Channel("Markers", "A", index=0))
    expected = f"Unable to find channel with given index :  '{index}'"
    assert refusal(acquisition, index) == expected


@pytest.mark.parametrize("label", ["B", "a", "A ", " A", "", "Ä", "{}"])
def test_a_label_that_no_point_has_is_quoted(label: str) -> None:
    acquisition = with_points(Channel("Markers", "A"))
    expected = f"Unable to find channel with given label :  '{label}'"
    assert refusal(acquisition, label) == expected


def test_an_unknown_point_of_an_empty_acquisition() -> None:
    assert refusal(with_points(), 0) == "Unable to find channel with given index :  '0'"


def test_the_label_counts_and_not_the_name_of_the_set() -> None:
    acquisition = with_points(Channel("Markers", "L_R", label="L/R"))
    assert _moxPY.moxGetPoint(acquisition, "L/R")[1]["label"] == "L/R"
    assert refusal(acquisition, "L_R") == "Unable to find channel with given label :  'L_R'"


def test_a_label_that_several_groups_have_is_found_in_the_first() -> None:
    names = ["Powers", "Moments", "Markers", "Forces", "Angles"]
    channels = [Channel(name, "A", index=n, unit=name) for n, name in enumerate(names)]
    acquisition = with_points(*channels)
    found = []
    for group in reversed(names):
        found.append(_moxPY.moxGetPoint(acquisition, "A")[1]["units"])
        probe.delete_set(acquisition, f"Format/Data/{group}", f"Format/Data/{group}/A")
    assert found == ["Angles", "Forces", "Markers", "Moments", "Powers"]


def test_a_label_that_two_points_of_a_group_have_is_found_at_the_first() -> None:
    acquisition = with_points(
        Channel("Markers", "Z", label="A", description="first", index=5),
        Channel("Markers", "A", label="A", description="second", index=1),
    )
    assert _moxPY.moxGetPoint(acquisition, "A")[1]["description"] == "first"


def test_an_index_that_two_points_have_is_found_at_the_first() -> None:
    acquisition = with_points(Channel("Markers", "A", index=1), Channel("Forces", "B", index=1))
    assert _moxPY.moxGetPoint(acquisition, 1)[1]["label"] == "B"


def test_points_without_index_or_label_are_passed_over() -> None:
    acquisition = with_points(
        Channel("Markers", "A", index=None, label=None), Channel("Markers", "B", index=0)
    )
    assert _moxPY.moxGetPoint(acquisition, 0)[1]["label"] == "B"
    assert _moxPY.moxGetPoint(acquisition, "B")[1]["label"] == "B"


def test_the_attribute_units_comes_before_unit() -> None:
    acquisition = with_points(Channel("Markers", "A", unit="mm", units="m"))
    assert _moxPY.moxGetPoint(acquisition, 0)[1]["units"] == "m"


@pytest.mark.parametrize(
    ("missing", "attribute"),
    [
        ({"rate": None}, "SampleRate"),
        ({"label": None}, "Label"),
        ({"description": None}, "Description"),
        ({"unit": None}, "Unit"),
    ],
)
def test_a_missing_attribute_is_named(missing: dict[str, None], attribute: str) -> None:
    acquisition = with_points(Channel("Markers", "LASI", **missing))
    with pytest.raises(SystemError) as failure:
        _moxPY.moxGetPoint(acquisition, 0)
    assert str(failure.value) == (
        f"Unexpected error when extracting attribute value : set is LASI, attribute is {attribute}"
    )


def test_a_group_that_is_missing_before_the_hit_is_named() -> None:
    acquisition = with_points(Channel("Markers", "A"))
    probe.delete_group(acquisition, "Format/Data/Forces")
    expected = "Impossible to retrieve group with path : 'Format/Data/Forces'"
    assert refusal(acquisition, "A") == expected


def test_one_frame_is_an_array_of_three() -> None:
    acquisition = with_points(Channel("Markers", "A", ((1,), (2,), (3,))))
    assert _moxPY.moxGetPoint(acquisition, 0)[0].tolist() == [1.0, 2.0, 3.0]


@pytest.mark.parametrize("point", [1.5, None, b"A", ["A"], 2**40])
def test_other_arguments_match_no_form(point: Any) -> None:
    with pytest.raises(TypeError) as failure:
        _moxPY.moxGetPoint(with_points(), point)
    assert str(failure.value) == (
        "Wrong number or type of arguments for overloaded function 'moxGetPoint'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    moxGetPoint(PyObject *&,PyObject *&,strata::data_store,int)\n"
        "    moxGetPoint(PyObject *&,PyObject *&,strata::data_store,std::string const &)\n"
    )
