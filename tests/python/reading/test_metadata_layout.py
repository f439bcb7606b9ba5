"""Parameters of a file as attributes below Format/Metadata."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np
import pytest
from support.attributes import attributes_of
from support.c3d_bytes import Group, Parameter, byte, integer, real, text
from support.read_c3d import read_c3d, track
from support.store_tree import Type, node


def read_parameter(folder: Path, parameter: Parameter, **options: Any) -> Any:
    acquisition = read_c3d(
        folder, {"A": track(2)}, groups=[Group("MINE", 60, [parameter])], **options
    )  # fmt: skip
    return attributes_of(node(acquisition, "Format/Metadata/MINE"))[str(parameter.name)]


@pytest.mark.parametrize(
    ("parameter", "expected"),
    [
        (byte("X", [1, 2, 255]), (Type.INT8, [3], [1, 2, -1])),
        (integer("X", [1, -2, 32767]), (Type.INT16, [3], [1, -2, 32767])),
        (integer("X", 7), (Type.INT16, [], 7)),
        (real("X", [0.5, -1.5]), (Type.FLOAT32, [2], [0.5, -1.5])),
        (real("X", 59.94), (Type.FLOAT32, [], float(np.float32(59.94)))),
        (text("X", "hello"), (Type.STRING, [], "hello")),
        (text("X", ["a", "bcd", ""]), (Type.STRING, [3], ["a", "bcd", ""])),
        (text("X", ""), (Type.STRING, [], "")),
        (text("X", [], width=4), (Type.STRING, [0], [])),
        (Parameter("X", -1, (), b"y"), (Type.STRING, [], "y")),
    ],
    ids=["bytes", "integers", "integer", "reals", "real", "text", "texts", "empty text", "no texts",
         "character"],
)  # fmt: skip
def test_types_and_shapes(tmp_path: Path, parameter: Parameter, expected: Any) -> None:
    assert read_parameter(tmp_path, parameter) == expected


@pytest.mark.parametrize("value", [5, 200])
@pytest.mark.parametrize("dims", [(), (1,), (1, 1)])
def test_one_byte_is_a_number_of_two(tmp_path: Path, value: int, dims: tuple[int, ...]) -> None:
    kind, shape, elements = read_parameter(tmp_path, byte("X", [value], dims=dims))
    assert kind == Type.INT16
    assert shape == list(dims)
    assert np.ravel(elements).tolist() == [value]


def test_dimensions_are_reversed(tmp_path: Path) -> None:
    # In the file the first extent varies fastest: 3 coordinates of 4 corners of 2 platforms.
    corners = np.arange(24.0).reshape(2, 4, 3)
    parameter = real("X", corners)
    assert parameter.dims == (3, 4, 2)
    kind, shape, elements = read_parameter(tmp_path, parameter)
    assert (kind, shape) == (Type.FLOAT32, [2, 4, 3])
    np.testing.assert_array_equal(elements, corners)


def test_texts_lose_the_dimension_of_their_characters(tmp_path: Path) -> None:
    parameter = Parameter("X", -1, (2, 3, 2), b"a b c d e f ")
    kind, shape, elements = read_parameter(tmp_path, parameter)
    assert (kind, shape) == (Type.STRING, [2, 3])
    assert np.ravel(elements).tolist() == ["a", "b", "c", "d", "e", "f"]


@pytest.mark.parametrize("dims", [(1, 1, 1, 1, 1, 1, 1), (2, 1, 2, 1, 2, 1, 3)])
def test_seven_dimensions(tmp_path: Path, dims: tuple[int, ...]) -> None:
    values = np.arange(int(np.prod(dims))).reshape(dims[::-1])
    kind, shape, elements = read_parameter(tmp_path, integer("X", values))
    assert (kind, shape) == (Type.INT16, list(dims[::-1]))
    np.testing.assert_array_equal(elements, values)


@pytest.mark.parametrize("padding", [b"   ", b"\0\0\0", b"\0x ", b" \0 "])
def test_texts_end_at_their_padding(tmp_path: Path, padding: bytes) -> None:
    assert read_parameter(tmp_path, text("X", b" a b" + padding))[2] == " a b"


def test_texts_in_windows_1252(tmp_path: Path) -> None:
    assert read_parameter(tmp_path, text("X", [b"\xb5V", b"\x80", "µ".encode()]))[2] == [
        "µV", "€", "µ",
    ]  # fmt: skip


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_every_byte_order(tmp_path: Path, processor: str) -> None:
    options = {"processor": processor}
    assert read_parameter(tmp_path, integer("X", [258, -2]), **options)[2] == [258, -2]
    assert read_parameter(tmp_path, real("X", [0.5, -3.0]), **options)[2] == [0.5, -3.0]


def test_groups_and_parameters_in_the_order_of_the_file(tmp_path: Path) -> None:
    groups = [
        Group("ZETA", 20, [integer("Z", 1), integer("A", 2)]), Group("ALPHA", 10, [real("R", 1.0)]),
    ]  # fmt: skip
    acquisition = read_c3d(tmp_path, {"A": track(2)}, groups=groups)
    metadata = node(acquisition, "Format/Metadata")
    assert list(metadata["groups"]) == ["POINT", "ANALOG", "FORCE_PLATFORM", "ZETA", "ALPHA"]
    assert list(metadata["groups"]["ZETA"]["attributes"]) == ["Z", "A"]


def test_names_keep_their_spelling(tmp_path: Path) -> None:
    groups = [Group("Processing", 20, [real("LLegLength", 900.0)])]
    acquisition = read_c3d(tmp_path, {"A": track(2)}, groups=groups)
    metadata = node(acquisition, "Format/Metadata/Processing")
    assert attributes_of(metadata) == {"LLegLength": (Type.FLOAT32, [], 900.0)}


@pytest.mark.parametrize("slash", ["/", "\\"])
def test_separators_in_names_are_replaced(tmp_path: Path, slash: str) -> None:
    groups = [Group(f"MY{slash}GROUP", 20, [integer(f"MY{slash}VALUE", 3)])]
    acquisition = read_c3d(tmp_path, {"A": track(2)}, groups=groups)
    metadata = node(acquisition, "Format/Metadata/MY_GROUP")
    assert attributes_of(metadata) == {"MY_VALUE": (Type.INT16, [], 3)}


def test_a_group_without_a_record_is_named_by_its_id(tmp_path: Path) -> None:
    lost = Group("LOST", 99, [integer("A", 4)], write_record=False)
    acquisition = read_c3d(tmp_path, {"A": track(2)}, groups=[lost])
    metadata = node(acquisition, "Format/Metadata/GROUP_99")
    assert attributes_of(metadata) == {"A": (Type.INT16, [], 4)}


def test_a_group_without_parameters_is_there(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, {"A": track(2)}, groups=[Group("EMPTY", 30)])
    assert node(acquisition, "Format/Metadata/EMPTY")["attributes"] == {}


def test_an_empty_list_keeps_its_shape(tmp_path: Path) -> None:
    kind, shape, _ = read_parameter(tmp_path, real("X", [], dims=(3, 0)))
    assert (kind, shape) == (Type.FLOAT32, [0, 3])
