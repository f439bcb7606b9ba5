"""Parameter sections in any place, order and state."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import (
    Analog,
    Group,
    c3d_bytes,
    integer,
    parameters_first,
    real,
    reversed_records,
    text,
)
from support.read_c3d import points_of, read_bytes, read_c3d, track

POINTS = {"LASI": track(3), "RASI": track(3, 50)}


def assert_whole(acquisition: Any) -> None:
    """The file's content, wherever its sections lie."""
    values, info = _moxPY.moxGetPoints(acquisition)
    assert list(values) == ["LASI", "RASI"]
    np.testing.assert_array_equal(values["LASI"], POINTS["LASI"])
    np.testing.assert_array_equal(values["RASI"], POINTS["RASI"])
    assert info["frequency"] == 100.0
    np.testing.assert_array_equal(_moxPY.moxGetAnalogs(acquisition)[0]["Fz"], [2.0, 4.0, 6.0])


def read_whole(folder: Path, **options: Any) -> None:
    analogs = [Analog("Fz", [1, 2, 3], scale=2.0)]
    assert_whole(read_c3d(folder, POINTS, analogs=analogs, samples_per_frame=1, **options))


@pytest.mark.parametrize("order", [parameters_first, reversed_records])
def test_parameters_may_come_before_their_group(tmp_path: Path, order: Any) -> None:
    read_whole(tmp_path, record_order=order)


@pytest.mark.parametrize("end_mark", ["zero_offset", "zero_name"])
def test_both_marks_end_the_section(tmp_path: Path, end_mark: str) -> None:
    read_whole(tmp_path, end_mark=end_mark)


@pytest.mark.parametrize("block", [2, 3, 11, 200, 255])
def test_the_parameters_may_begin_in_any_block(tmp_path: Path, block: int) -> None:
    read_whole(tmp_path, parameter_block=block, filler=0xAA)


@pytest.mark.parametrize("block", [20, 300, 40_000])
def test_the_data_may_begin_in_any_block(tmp_path: Path, block: int) -> None:
    read_whole(tmp_path, data_block=block, filler=0xAA)


@pytest.mark.parametrize("zeros", [1, 2, 100, 512, 5000])
def test_zeros_before_the_header_are_skipped(tmp_path: Path, zeros: int) -> None:
    read_whole(tmp_path, leading_zeros=zeros)


@pytest.mark.parametrize("head", [(0, 0), (1, 0x50), (0xFF, 0xFF)])
def test_the_first_bytes_of_the_section_do_not_matter(
    tmp_path: Path, head: tuple[int, int]
) -> None:
    read_whole(tmp_path, parameter_section={"head": head})


@pytest.mark.parametrize("blocks", [0, 1, 255])
def test_the_announced_length_of_the_section_does_not_matter(tmp_path: Path, blocks: int) -> None:
    read_whole(tmp_path, parameter_section={"block_count": blocks})


@pytest.mark.parametrize("processor", [0, 1, 83, 255])
def test_an_unknown_processor_is_guessed_from_the_header(tmp_path: Path, processor: int) -> None:
    read_whole(tmp_path, parameter_section={"processor": processor})


@pytest.mark.parametrize("gap", [1, 37, 600])
def test_gaps_between_records_are_skipped(tmp_path: Path, gap: int) -> None:
    def widen(groups: list[Group]) -> list[Group]:
        for group in groups:
            group.gap = gap
            group.parameters[0].gap = gap
        return groups

    read_whole(tmp_path, edit_groups=widen)


def test_a_section_longer_than_its_counter_can_say(tmp_path: Path) -> None:
    # 300 blocks; the counter has 8 bits.
    junk = [text(f"NOTE{n}", ["x" * 250] * 200) for n in range(3)]
    groups = [Group("NOTES", 50, junk)]
    read_whole(tmp_path, groups=groups)


@pytest.mark.parametrize("name", ["point:LABELS", "Point:Labels", "POINT:labels"])
def test_names_are_compared_without_case(tmp_path: Path, name: str) -> None:
    group_name, _, parameter_name = name.partition(":")

    def respell(groups: list[Group]) -> list[Group]:
        groups[0].name = group_name
        for parameter in groups[0].parameters:
            if parameter.name == "LABELS":
                parameter.name = parameter_name
        return groups

    read_whole(tmp_path, edit_groups=respell)


@pytest.mark.parametrize("ids", [{"POINT": 127, "ANALOG": 3}, {"POINT": 2, "ANALOG": 1}])
def test_groups_may_have_any_ids(tmp_path: Path, ids: dict[str, int]) -> None:
    read_whole(tmp_path, group_ids=ids)


def test_locked_parameters_are_parameters(tmp_path: Path) -> None:
    def lock(groups: list[Group]) -> list[Group]:
        for group in groups:
            group.locked = True
            for parameter in group.parameters:
                parameter.locked = True
        return groups

    read_whole(tmp_path, edit_groups=lock)


def test_descriptions_of_records_are_skipped(tmp_path: Path) -> None:
    def describe(groups: list[Group]) -> list[Group]:
        for group in groups:
            group.description = "d" * 255
            for parameter in group.parameters:
                parameter.description = "p" * 255
        return groups

    read_whole(tmp_path, edit_groups=describe)


def test_a_parameter_without_a_group_disturbs_nothing(tmp_path: Path) -> None:
    lost = Group("LOST", 99, [integer("A", [1, 2]), text("B", ["x"])], write_record=False)
    read_whole(tmp_path, groups=[lost])


@pytest.mark.parametrize("group_id", [0, -128])
def test_records_with_an_impossible_group_disturb_nothing(tmp_path: Path, group_id: int) -> None:
    odd = Group("ODD", 98, [integer("A", 1, group_id=group_id)])
    read_whole(tmp_path, groups=[odd])


def test_seven_dimensions_disturb_nothing(tmp_path: Path) -> None:
    cube = real("CUBE", np.zeros((1, 2, 1, 2, 1, 2, 3)))
    read_whole(tmp_path, groups=[Group("MINE", 70, [cube])])


def test_a_parameter_of_an_unknown_type_is_skipped(tmp_path: Path) -> None:
    strange = integer("STRANGE", [1, 2, 3])
    strange.type = 3
    read_whole(tmp_path, groups=[Group("MINE", 70, [strange, integer("FINE", 1)])])


def test_the_last_of_two_parameters_of_one_name_counts(tmp_path: Path) -> None:
    def repeat(groups: list[Group]) -> list[Group]:
        groups[0].parameters.append(text("LABELS", ["NEW1", "NEW2"]))
        return groups

    acquisition = read_c3d(tmp_path, POINTS, edit_groups=repeat)
    assert list(points_of(acquisition)) == ["NEW1", "NEW2"]


def test_two_groups_of_one_name_are_one(tmp_path: Path) -> None:
    def split(groups: list[Group]) -> list[Group]:
        point = groups[0]
        rest = Group("POINT", 60, point.parameters[5:])
        point.parameters = point.parameters[:5]
        return [*groups, rest]

    read_whole(tmp_path, edit_groups=split)


@pytest.mark.parametrize("offset", [1, 2, 0xFFFF])
def test_a_broken_chain_of_records_keeps_what_came_before(tmp_path: Path, offset: int) -> None:
    broken = Group("MINE", 70, [integer("A", 1, next_offset=offset), integer("B", 2)])
    read_whole(tmp_path, groups=[broken])


def test_a_section_may_end_anywhere_in_a_block(tmp_path: Path) -> None:
    for length in range(256):
        filler = text("FILL", b"x" * length)
        content = c3d_bytes(
            POINTS, groups=[Group("MINE", 70, [filler, filler])], end_mark="zero_name",
            analogs=[Analog("Fz", [1, 2, 3], scale=2.0)], samples_per_frame=1,
        )  # fmt: skip
        assert_whole(read_bytes(tmp_path, content))
