"""Attributes and sets as native values, and the lines that failures leave in the log."""

from __future__ import annotations

import math
from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.store_tree import Type, attribute

READ_FAILED = "[error] [strata] Invalid value to read the content of an attribute"
WRITE_FAILED = "[error] [strata] Invalid value to write the content of an attribute"
WRONG_COUNT = (
    "[error] [strata] The number of elements to write is not the same than in the shape of the"
    " attribute"
)
SELECTION_READ_FAILED = "[error] [strata] Invalid selection to read the content of a dataset"
SELECTION_WRITE_FAILED = "[error] [strata] Invalid selection to write the content of a dataset"
SET_READ_FAILED = "[error] [strata] Invalid value to read the content of a dataset"
SET_WRITE_FAILED = "[error] [strata] Invalid value to write the content of a dataset"
WRONG_SELECTION_COUNT = (
    "[error] [strata] The number of elements to write is not the same than in the shape of the"
    " selection"
)

Lines = Callable[[], list[str]]

# Native type: element type of the store, a value that needs its whole width.
NATIVES: dict[str, tuple[Type, Any]] = {
    "int8": (Type.INT8, -128),
    "int16": (Type.INT16, -32768),
    "int32": (Type.INT32, -(2**31)),
    "int64": (Type.INT64, -(2**53)),
    "uint64": (Type.UINT64, 2**53),
    "float": (Type.FLOAT32, 0.5),
    "double": (Type.FLOAT64, 0.1),
    "string": (Type.STRING, "mm/s²"),
}
SCALARS = [native for native in NATIVES if native not in ("int8", "int16")]


@pytest.fixture
def store() -> Any:
    """A store with the group "G" and the set "G/set", of one dimension and four elements."""
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "G")
    probe.create_set(handle, "G/set", Type.FLOAT64, [4])
    probe.fill_set(handle, "G/set", "double", [1.5, 2.5, 3.5, 4.5])
    return handle


@pytest.mark.parametrize("native", SCALARS)
@pytest.mark.parametrize("path", ["G", "G/set"])
def test_a_scalar_is_written_with_its_type_and_read_back(store: Any, native: str, path: str):
    element_type, value = NATIVES[native]
    probe.create_attribute(store, path, "A", element_type, None)
    probe.write_attribute(store, path, "A", native, value)
    assert attribute(store, path, "A") == (element_type, [], [value])
    assert probe.read_attribute(store, path, "A", native) == value


@pytest.mark.parametrize("native", NATIVES)
def test_a_vector_is_written_with_its_type_and_read_back(store: Any, native: str):
    element_type, value = NATIVES[native]
    probe.create_attribute(store, "G", "A", element_type, [2, 2])
    probe.write_attribute_vector(store, "G", "A", native, [value] * 4)
    assert attribute(store, "G", "A") == (element_type, [2, 2], [value] * 4)
    assert probe.read_attribute_vector(store, "G", "A", native) == [value] * 4


@pytest.mark.parametrize(
    ("stored", "native", "value", "expected"),
    [
        (Type.FLOAT32, "double", 0.1, float(np.float32(0.1))),
        (Type.INT16, "int32", -7, -7),
        (Type.FLOAT64, "int32", 2.75, 2),
        (Type.INT64, "float", 3, 3.0),
        (Type.INT32, "double", 12, 12.0),
        (Type.BOOLEAN, "int32", 1, 1),
    ],
)
def test_numbers_are_converted(store: Any, stored: Type, native: str, value: Any, expected: Any):
    probe.create_attribute(store, "G", "A", stored, None)
    probe.write_attribute(store, "G", "A", "double", value)
    assert probe.read_attribute(store, "G", "A", native) == expected


@pytest.mark.parametrize(
    ("native", "zero"), [("int32", 0), ("float", 0.0), ("double", 0.0), ("uint64", 0)]
)
def test_text_is_no_number(store: Any, new_log_lines: Lines, native: str, zero: Any):
    probe.create_text_attribute(store, "G", "A", "12")
    assert probe.read_attribute(store, "G", "A", native) == zero
    assert new_log_lines() == [READ_FAILED]


def test_a_number_is_no_text(store: Any, new_log_lines: Lines):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, None)
    assert probe.read_attribute(store, "G", "A", "string") == ""
    assert new_log_lines() == [READ_FAILED]


def test_a_vector_that_cannot_be_read_holds_zeros(store: Any, new_log_lines: Lines):
    probe.create_attribute(store, "G", "A", Type.STRING, [3])
    assert probe.read_attribute_vector(store, "G", "A", "float") == [0.0, 0.0, 0.0]
    assert new_log_lines() == [READ_FAILED]


@pytest.mark.parametrize("native", SCALARS)
def test_an_attribute_without_elements_reads_as_the_default(
    store: Any, new_log_lines: Lines, native: str
):
    probe.create_attribute(store, "G", "A", NATIVES[native][0], [0])
    assert probe.read_attribute(store, "G", "A", native) == ("" if native == "string" else 0)
    assert probe.read_attribute_vector(store, "G", "A", native) == []
    assert new_log_lines() == []


def test_an_attribute_without_elements_leaves_the_given_default(store: Any, new_log_lines: Lines):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, [2, 0])
    assert probe.read_attribute(store, "G", "A", "double", 12.5) == 12.5
    assert new_log_lines() == []


def test_a_missing_attribute_reads_as_the_default(store: Any, new_log_lines: Lines):
    assert probe.read_attribute(store, "G", "absent", "int32", 9) == 9
    assert probe.read_attribute(store, "G", "absent", "string", "none") == "none"
    assert probe.read_attribute_vector(store, "G", "absent", "string") == []
    assert new_log_lines() == []


def test_a_scalar_is_read_from_the_first_of_several_elements(store: Any):
    probe.create_attribute(store, "G", "A", Type.INT32, [3])
    probe.write_attribute_vector(store, "G", "A", "int32", [7, 8, 9])
    assert probe.read_attribute(store, "G", "A", "int32") == 7


@pytest.mark.parametrize("native", SCALARS)
def test_a_scalar_is_not_written_to_two_elements(store: Any, new_log_lines: Lines, native: str):
    element_type, value = NATIVES[native]
    probe.create_attribute(store, "G", "A", element_type, [2])
    before = attribute(store, "G", "A")
    probe.write_attribute(store, "G", "A", native, value)
    assert attribute(store, "G", "A") == before
    assert new_log_lines() == [WRONG_COUNT]


@pytest.mark.parametrize("count", [0, 1, 3])
def test_a_vector_of_another_length_is_not_written(store: Any, new_log_lines: Lines, count: int):
    probe.create_attribute(store, "G", "A", Type.INT16, [2])
    probe.write_attribute_vector(store, "G", "A", "int16", [5] * count)
    assert attribute(store, "G", "A") == (Type.INT16, [2], [0, 0])
    assert new_log_lines() == [WRONG_COUNT]


@pytest.mark.parametrize("native", NATIVES)
def test_an_empty_vector_fits_an_empty_attribute(store: Any, new_log_lines: Lines, native: str):
    probe.create_attribute(store, "G", "A", NATIVES[native][0], [0])
    probe.write_attribute_vector(store, "G", "A", native, [])
    assert attribute(store, "G", "A") == (NATIVES[native][0], [0], [])
    assert new_log_lines() == []


@pytest.mark.parametrize(("stored", "native"), [(Type.STRING, "int32"), (Type.INT32, "string")])
def test_text_and_numbers_are_not_written_into_each_other(
    store: Any, new_log_lines: Lines, stored: Type, native: str
):
    probe.create_attribute(store, "G", "A", stored, None)
    before = attribute(store, "G", "A")
    probe.write_attribute(store, "G", "A", native, NATIVES[native][1])
    assert attribute(store, "G", "A") == before
    assert new_log_lines() == [WRITE_FAILED]


def test_a_missing_attribute_is_not_written(store: Any, new_log_lines: Lines):
    probe.write_attribute(store, "G", "absent", "int32", 1)
    assert probe.list_attributes(store, "G") == []
    assert new_log_lines() == [WRONG_COUNT]


@pytest.mark.parametrize("path", ["G", "G/set"])
def test_a_text_attribute_is_created_as_a_scalar(store: Any, path: str):
    probe.create_text_attribute(store, path, "A", "膝")
    assert attribute(store, path, "A") == (Type.STRING, [], ["膝"])


@pytest.mark.parametrize(
    ("native", "expected"),
    [
        ("int32", [1, 2, 3, 4]),
        ("float", [1.5, 2.5, 3.5, 4.5]),
        ("double", [1.5, 2.5, 3.5, 4.5]),
    ],
)
def test_a_whole_set_is_read(store: Any, native: str, expected: list[Any]):
    assert probe.read_set_vector(store, "G/set", native) == expected
    assert probe.read_selection_vector(store, "G/set", None, native, []) == (True, expected)


def test_part_of_a_set_is_read(store: Any):
    assert probe.read_selection_vector(store, "G/set", [1, 2], "double", []) == (True, [2.5, 3.5])


@pytest.mark.parametrize(
    ("native", "expected"),
    [("int32", 2), ("int64", 2), ("float", 2.5), ("double", 2.5), ("bool", True)],
)
def test_one_element_of_a_set_is_read(store: Any, native: str, expected: Any):
    assert probe.read_selection(store, "G/set", [1, 1], native, 0) == (True, expected)


def test_texts_of_a_set_are_read(store: Any):
    probe.create_set(store, "G/texts", Type.STRING, [2])
    probe.fill_set(store, "G/texts", "string", ["R", "膝"])
    assert probe.read_selection_vector(store, "G/texts", None, "string", []) == (True, ["R", "膝"])
    assert probe.read_selection(store, "G/texts", [1, 1], "string", "") == (True, "膝")


def test_a_selection_beyond_the_set_is_not_read(store: Any, new_log_lines: Lines):
    assert probe.read_selection(store, "G/set", [4, 1], "double", 9) == (False, 9.0)
    assert probe.read_selection_vector(store, "G/set", [3, 2], "float", [9]) == (False, [9.0])
    assert new_log_lines() == [SELECTION_READ_FAILED] * 2


def test_a_selection_of_text_is_not_read_as_numbers(store: Any, new_log_lines: Lines):
    probe.create_set(store, "G/texts", Type.STRING, [1])
    assert probe.read_selection(store, "G/texts", None, "int32", 9) == (False, 9)
    assert probe.read_selection_vector(store, "G/texts", None, "double", [9]) == (False, [9.0])
    assert new_log_lines() == [SET_READ_FAILED] * 2


def test_several_elements_are_not_read_as_one(store: Any, new_log_lines: Lines):
    assert probe.read_selection(store, "G/set", None, "double", 9) == (False, 9.0)
    assert new_log_lines() == [SET_READ_FAILED]


def test_an_empty_set_is_read_as_an_empty_vector(store: Any, new_log_lines: Lines):
    probe.create_set(store, "G/empty", Type.FLOAT32, [0])
    assert probe.read_selection_vector(store, "G/empty", None, "float", [9]) == (True, [])
    assert probe.read_set_vector(store, "G/empty", "int32") == []
    assert new_log_lines() == []


@pytest.mark.parametrize("native", ["float", "double"])
def test_part_of_a_set_is_written(store: Any, native: str):
    probe.write_selection(store, "G/set", [1, 2], native, [0.25, math.nan])
    values = probe.read_set_vector(store, "G/set", "double")
    np.testing.assert_array_equal(values, [1.5, 0.25, math.nan, 4.5])


def test_a_selection_of_another_length_is_not_written(store: Any, new_log_lines: Lines):
    probe.write_selection(store, "G/set", None, "double", [1, 2, 3])
    assert probe.read_set_vector(store, "G/set", "double") == [1.5, 2.5, 3.5, 4.5]
    assert new_log_lines() == [WRONG_SELECTION_COUNT]


def test_a_selection_beyond_the_set_is_not_written(store: Any, new_log_lines: Lines):
    probe.write_selection(store, "G/set", [3, 2], "double", [1, 2])
    assert probe.read_set_vector(store, "G/set", "double") == [1.5, 2.5, 3.5, 4.5]
    assert new_log_lines() == [SELECTION_WRITE_FAILED]


def test_numbers_are_not_written_into_texts(store: Any, new_log_lines: Lines):
    probe.create_set(store, "G/texts", Type.STRING, [1])
    probe.write_selection(store, "G/texts", None, "float", [1])
    assert probe.read_set_vector(store, "G/texts", "string") == [""]
    assert new_log_lines() == [SET_WRITE_FAILED]


def test_nothing_is_written_into_an_empty_selection(store: Any, new_log_lines: Lines):
    probe.create_set(store, "G/empty", Type.FLOAT32, [0])
    probe.write_selection(store, "G/empty", None, "float", [])
    assert new_log_lines() == []
