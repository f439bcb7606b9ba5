"""moxGetMarkers and its four siblings, and moxGetPoints."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from points.point_channels import Channel, with_points
from support.store_tree import snapshot

GROUPS = ["Angles", "Forces", "Markers", "Moments", "Powers"]

every_group = pytest.mark.parametrize("group", GROUPS)


def read(acquisition: Any, group: str) -> Any:
    return getattr(_moxPY, f"moxGet{group}")(acquisition)


def system_error(call: Any) -> str:
    with pytest.raises(SystemError) as failure:
        call()
    return str(failure.value)


@every_group
def test_values_are_frames_by_components(group: str) -> None:
    acquisition = with_points(Channel(group, "A", ((1, 2), (3, 4), (5, 6))))
    result = read(acquisition, group)
    assert type(result) is list
    values, _ = result
    assert list(values) == ["A"]
    assert values["A"].tolist() == [[1.0, 3.0, 5.0], [2.0, 4.0, 6.0]]
    assert values["A"].dtype == np.float64


@every_group
def test_only_the_own_group_is_read(group: str) -> None:
    acquisition = with_points(*[Channel(each, f"in {each}") for each in GROUPS])
    assert list(read(acquisition, group)[0]) == [f"in {group}"]


@every_group
def test_channels_come_in_the_order_of_creation(group: str) -> None:
    acquisition = with_points(
        Channel(group, "Z", index=2), Channel(group, "A", index=1), Channel(group, "M", index=0)
    )
    assert list(read(acquisition, group)[0]) == ["Z", "A", "M"]


@every_group
def test_the_key_is_the_name_of_the_set_and_not_the_label(group: str) -> None:
    acquisition = with_points(Channel(group, "name", label="label"))
    assert list(read(acquisition, group)[0]) == ["name"]


@every_group
def test_one_unit_has_the_key_of_the_type(group: str) -> None:
    acquisition = with_points(Channel(group, "A", unit="u"), Channel(group, "B", unit="u"))
    assert read(acquisition, group)[1] == {
        "frequency": 100.0,
        "units": {f"ALL{group.upper()}": "u"},
    }


@every_group
def test_mixed_units_are_told_for_each_channel(group: str) -> None:
    acquisition = with_points(
        Channel(group, "A", unit="mm"),
        Channel(group, "B", unit="m"),
        Channel(group, "C", unit="mm"),
    )
    assert read(acquisition, group)[1]["units"] == {"A": "mm", "B": "m", "C": "mm"}


@pytest.mark.parametrize("other", ["MM", "mm ", ""])
def test_units_are_compared_byte_by_byte(other: str) -> None:
    acquisition = with_points(Channel("Markers", "A"), Channel("Markers", "B", unit=other))
    assert _moxPY.moxGetMarkers(acquisition)[1]["units"] == {"A": "mm", "B": other}


def test_the_attribute_units_comes_before_unit() -> None:
    acquisition = with_points(
        Channel("Markers", "A", unit="mm", units="m"), Channel("Markers", "B", unit="m")
    )
    assert _moxPY.moxGetMarkers(acquisition)[1]["units"] == {"ALLMARKERS": "m"}


@every_group
def test_a_group_without_channels_gives_two_empty_dictionaries(group: str) -> None:
    assert read(with_points(), group) == [{}, {}]


@every_group
def test_one_frame_is_an_array_of_three(group: str) -> None:
    acquisition = with_points(Channel(group, "A", ((1,), (2,), (3,))))
    assert read(acquisition, group)[0]["A"].tolist() == [1.0, 2.0, 3.0]


@every_group
def test_the_frequency_is_that_of_the_first_channel(group: str) -> None:
    acquisition = with_points(Channel(group, "A", rate=59.94), Channel(group, "B", rate=None))
    assert read(acquisition, group)[1]["frequency"] == 59.94


@every_group
def test_a_first_channel_without_a_rate_is_named(group: str) -> None:
    acquisition = with_points(Channel(group, "A", rate=None), Channel(group, "B"))
    assert system_error(lambda: read(acquisition, group)) == (
        "Unexpected error when extracting attribute value : set is A, attribute is SampleRate"
    )


@every_group
def test_a_missing_group_is_named(group: str) -> None:
    acquisition = with_points()
    probe.delete_group(acquisition, f"Format/Data/{group}")
    with pytest.raises(RuntimeError) as failure:
        read(acquisition, group)
    expected = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
    assert str(failure.value) == expected


def test_all_points_come_group_by_group() -> None:
    acquisition = with_points(*[Channel(group, f"in {group}") for group in reversed(GROUPS)])
    values, info = _moxPY.moxGetPoints(acquisition)
    assert list(values) == [f"in {group}" for group in GROUPS]
    assert list(info) == ["frequency", "firstFrame", "units", "label", "description"]


def test_all_points_of_one_unit_have_the_plain_key() -> None:
    acquisition = with_points(Channel("Angles", "A", unit="u"), Channel("Powers", "B", unit="u"))
    assert _moxPY.moxGetPoints(acquisition)[1]["units"] == {"ALL": "u"}


def test_all_points_of_several_units() -> None:
    acquisition = with_points(Channel("Markers", "A"), Channel("Angles", "B", unit="deg"))
    assert _moxPY.moxGetPoints(acquisition)[1]["units"] == {"B": "deg", "A": "mm"}


def test_labels_and_descriptions_of_all_points() -> None:
    acquisition = with_points(
        Channel("Markers", "A", label="L/A", description="left"), Channel("Angles", "B")
    )
    info = _moxPY.moxGetPoints(acquisition)[1]
    assert info["label"] == {"B": "B", "A": "L/A"}
    assert info["description"] == {"B": "described", "A": "left"}


def test_a_name_that_two_groups_share_gets_a_suffix_in_every_dictionary() -> None:
    acquisition = with_points(
        Channel("Markers", "A", ((1, 2),) * 3, label="m", unit="mm"),
        Channel("Angles", "A", ((3, 4),) * 3, label="a", unit="deg"),
        Channel("Powers", "A", ((5, 6),) * 3, label="p", unit="W"),
    )
    values, info = _moxPY.moxGetPoints(acquisition)
    assert {key: array[0, 0] for key, array in values.items()} == {"A": 3.0, "A_2": 1.0, "A_3": 5.0}
    assert info["units"] == {"A": "deg", "A_2": "mm", "A_3": "W"}
    assert info["label"] == {"A": "a", "A_2": "m", "A_3": "p"}
    assert list(info["description"]) == ["A", "A_2", "A_3"]


def test_a_suffix_takes_no_name_that_is_there() -> None:
    acquisition = with_points(
        Channel("Angles", "A"), Channel("Angles", "A_2"), Channel("Markers", "A")
    )
    assert len(_moxPY.moxGetPoints(acquisition)[0]) == 3


@pytest.mark.parametrize(
    ("start", "rate", "expected"),
    [(0.0, 100.0, 1.0), (0.5, 100.0, 51.0), (2.32, 100.0, None), (1.0 / 3.0, 59.94, None),
     (0.0, 0.0, 1.0)],
)  # fmt: skip
def test_the_first_frame_in_single_precision(
    start: float, rate: float, expected: float | None
) -> None:
    acquisition = with_points(Channel("Markers", "A", start=start, rate=rate))
    frame = _moxPY.moxGetPoints(acquisition)[1]["firstFrame"]
    single = np.float32(np.float32(start) * np.float32(rate)) + np.float32(1)
    assert type(frame) is float
    assert frame == (expected if expected is not None else float(single))


def test_no_points_at_all_give_two_empty_dictionaries() -> None:
    assert _moxPY.moxGetPoints(with_points()) == [{}, {}]


@pytest.mark.parametrize(
    ("missing", "attribute"),
    [
        ({"rate": None}, "SampleRate"),
        ({"label": None}, "Label"),
        ({"description": None}, "Description"),
    ],
)
def test_a_channel_without_its_attributes_is_named(
    missing: dict[str, None], attribute: str
) -> None:
    acquisition = with_points(Channel("Forces", "LF", **missing))
    assert system_error(lambda: _moxPY.moxGetPoints(acquisition)) == (
        f"Unexpected error when extracting attribute value : set is LF, attribute is {attribute}"
    )


def test_a_missing_group_stops_reading_all_points() -> None:
    acquisition = with_points(Channel("Markers", "A"))
    probe.delete_group(acquisition, "Format/Data/Powers")
    with pytest.raises(RuntimeError) as failure:
        _moxPY.moxGetPoints(acquisition)
    assert str(failure.value) == "Impossible to retrieve group with path : 'Format/Data/Powers'"


def test_reading_changes_nothing() -> None:
    acquisition = with_points(Channel("Markers", "A"), Channel("Angles", "A", unit="deg"))
    before = snapshot(acquisition)
    _moxPY.moxGetPoints(acquisition)
    _moxPY.moxGetPointsValues(acquisition)
    _moxPY.moxGetMarkers(acquisition)
    _moxPY.moxGetPoint(acquisition, 0)
    assert snapshot(acquisition) == before
