"""Stored values as Python objects."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type

Lines = Callable[[], list[str]]

DTYPES: dict[Type, Any] = {
    Type.BOOLEAN: np.bool_,
    Type.INT8: np.int8,
    Type.UINT8: np.uint8,
    Type.INT16: np.int16,
    Type.UINT16: np.uint16,
    Type.INT32: np.int32,
    Type.UINT32: np.uint32,
    Type.INT64: np.int64,
    Type.UINT64: np.uint64,
    Type.FLOAT32: np.float32,
    Type.FLOAT64: np.float64,
}
SCALARS: list[tuple[Type, Any, Any]] = [
    (Type.BOOLEAN, 1, True),
    (Type.BOOLEAN, 0, False),
    (Type.INT16, -32768, -32768),
    (Type.INT32, -(2**31), -(2**31)),
    (Type.INT64, 2**53, 2**53),
    (Type.FLOAT32, 0.1, float(np.float32(0.1))),
    (Type.FLOAT64, 0.1, 0.1),
]
WITHOUT_SCALAR_FORM = [Type.INT8, Type.UINT8, Type.UINT16, Type.UINT32, Type.UINT64]


@pytest.fixture
def store() -> Any:
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "G")
    return handle


def attribute_with(
    store: Any, element_type: int, shape: list[int] | None, values: list[Any]
) -> Any:
    """Reads an attribute with these elements, neither transposed nor squeezed."""
    make_attribute(store, element_type, shape, values)
    return probe.read_value(store, "G", "A", 0, 0)


def make_attribute(store: Any, element_type: int, shape: list[int] | None, values: list[Any]):
    probe.create_attribute(store, "G", "A", element_type, shape)
    native = "string" if element_type in (Type.STRING, 112) else "double"
    probe.write_attribute_vector(store, "G", "A", native, values)


@pytest.mark.parametrize(("element_type", "dtype"), DTYPES.items())
def test_numpy_type_of_each_element_type(element_type: Type, dtype: Any):
    assert probe.dtype_of_store_type(element_type) == np.dtype(dtype)
    assert probe.dtype_of_store_type(element_type + 100) == np.dtype(dtype)


def test_numpy_type_of_texts():
    assert probe.dtype_of_store_type(Type.STRING).kind == "U"


@pytest.mark.parametrize("number", [0, 13, 100, 113, 200, -1])
def test_other_element_types_have_no_numpy_type(number: int):
    assert failure_of(probe.dtype_of_store_type, number) == (
        RuntimeError,
        "Unexpected internal type to convert to a corresponding NumPy type",
    )


@pytest.mark.parametrize(("element_type", "value", "expected"), SCALARS)
@pytest.mark.parametrize("shape", [None, [1], [1, 1, 1]])
def test_one_number_is_a_scalar(
    store: Any, element_type: Type, value: Any, expected: Any, shape: list[int] | None
):
    result = attribute_with(store, element_type, shape, [value])
    assert result == expected
    assert type(result) is type(expected)


@pytest.mark.parametrize("element_type", WITHOUT_SCALAR_FORM)
def test_one_number_of_the_other_types_has_no_python_form(store: Any, element_type: Type):
    make_attribute(store, element_type, [1], [1])
    assert failure_of(probe.read_value, store, "G", "A", 0, 0) == (
        SystemError,
        "Trying to read an unsupported data type for a data set",
    )


@pytest.mark.parametrize(("element_type", "dtype"), DTYPES.items())
@pytest.mark.parametrize("offset", [0, 100])
def test_several_numbers_are_an_array_of_their_type(
    store: Any, element_type: Type, dtype: Any, offset: int
):
    result = attribute_with(store, element_type + offset, [2, 3], [0, 1, 1, 0, 1, 0])
    assert result.dtype == dtype
    assert result.tolist() == [[0, 1, 1], [0, 1, 0]]


def test_types_above_one_hundred_are_read_like_those_below(store: Any):
    assert attribute_with(store, 111, None, [0.5]) == 0.5
    probe.delete_attribute(store, "G", "A")
    assert attribute_with(store, 112, [2], ["a", "b"]) == ["a", "b"]


def test_an_array_belongs_to_the_caller(store: Any):
    result = attribute_with(store, Type.FLOAT64, [2], [1, 2])
    assert result.flags.owndata
    result[0] = 9
    assert probe.read_value(store, "G", "A", 0, 0).tolist() == [1, 2]


@pytest.mark.parametrize(
    ("transpose", "squeeze", "shape"),
    [(0, 0, (3, 1, 4)), (1, 0, (4, 1, 3)), (0, 1, (3, 4)), (1, 1, (4, 3))],
)
def test_arrays_are_squeezed_then_transposed(
    store: Any, transpose: int, squeeze: int, shape: tuple[int, ...]
):
    values = np.arange(12.0).reshape(3, 1, 4)
    make_attribute(store, Type.FLOAT64, [3, 1, 4], values.ravel().tolist())
    result = probe.read_value(store, "G", "A", transpose, squeeze)
    expected = values.squeeze() if squeeze else values
    expected = expected.T if transpose else expected
    assert result.shape == shape
    np.testing.assert_array_equal(result, expected)


def test_a_column_is_squeezed_to_one_dimension(store: Any):
    make_attribute(store, Type.INT16, [3, 1], [1, 2, 3])
    assert probe.read_value(store, "G", "A", 0, 1).tolist() == [1, 2, 3]


def test_an_array_without_elements_keeps_its_shape(store: Any):
    result = attribute_with(store, Type.FLOAT32, [3, 0], [])
    assert (result.shape, result.dtype) == ((3, 0), np.float32)


@pytest.mark.parametrize("text", ["", "LASI", "mm/s²", "膝😀"])
def test_a_text_without_dimensions_is_a_str(store: Any, text: str):
    assert attribute_with(store, Type.STRING, None, [text]) == text


def test_one_text_with_a_dimension_is_a_list(store: Any):
    assert attribute_with(store, Type.STRING, [1], ["LASI"]) == ["LASI"]


def test_texts_of_two_dimensions_are_as_many_as_the_first(store: Any):
    texts = ["a", "b", "c", "d", "e", "f"]
    assert attribute_with(store, Type.STRING, [2, 3], texts) == ["a", "b"]


def test_no_texts_are_an_empty_list(store: Any):
    assert attribute_with(store, Type.STRING, [0], []) == []


def test_texts_of_an_empty_second_dimension_are_empty(store: Any):
    assert attribute_with(store, Type.STRING, [2, 0], []) == ["", ""]


def test_bytes_that_are_no_utf8_are_kept_as_surrogates(store: Any):
    probe.create_attribute(store, "G", "A", Type.STRING, None)
    probe.write_value(store, "G", "A", Type.STRING, b"mm/s\xb2")
    assert probe.read_value(store, "G", "A", 0, 0) == "mm/s\udcb2"


def test_an_invalid_type_is_not_read(store: Any):
    probe.create_attribute(store, "G", "A", Type.INVALID, None)
    assert failure_of(probe.read_value, store, "G", "A", 0, 0) == (
        RuntimeError,
        "Impossible to read the content of a data object with an invalid data type",
    )


def test_a_single_value_of_an_unknown_type_is_not_read(store: Any):
    probe.create_attribute(store, "G", "A", 200, None)
    assert failure_of(probe.read_value, store, "G", "A", 0, 0) == (
        SystemError,
        "Trying to read an unsupported data type for a data set",
    )


def test_several_values_of_an_unknown_type_are_not_read(store: Any):
    probe.create_attribute(store, "G", "A", 200, [2])
    assert failure_of(probe.read_value, store, "G", "A", 0, 0) == (
        RuntimeError,
        "Unexpected internal type to convert to a corresponding NumPy type",
    )


def test_the_short_form_reads_a_single_value(store: Any):
    make_attribute(store, Type.FLOAT64, None, [100.0])
    assert probe.read_scalar(store, "G", "A") == 100.0


def test_a_set_is_read_like_an_attribute(store: Any):
    values = np.arange(6.0).reshape(3, 1, 2)
    probe.create_set(store, "G/set", Type.FLOAT64, [3, 1, 2])
    probe.fill_set(store, "G/set", "double", values.ravel().tolist())
    np.testing.assert_array_equal(probe.read_value(store, "G/set", "", 0, 0), values)
    np.testing.assert_array_equal(probe.read_value(store, "G/set", "", 1, 1), values[:, 0].T)


def test_a_set_of_one_element_is_a_scalar(store: Any):
    probe.create_set(store, "G/set", Type.FLOAT32, [1])
    probe.fill_set(store, "G/set", "double", [0.1])
    assert probe.read_value(store, "G/set", "", 1, 0) == float(np.float32(0.1))


def test_a_set_of_an_invalid_type_is_not_read(store: Any):
    probe.create_set(store, "G/set", Type.INVALID, [2])
    assert failure_of(probe.read_value, store, "G/set", "", 0, 0) == (
        RuntimeError,
        "Impossible to read the content of a data object with an invalid data type",
    )


def test_part_of_a_set_is_read(store: Any):
    probe.create_set(store, "G/set", Type.FLOAT64, [3, 1, 4])
    probe.fill_set(store, "G/set", "double", list(range(12)))
    result = probe.read_selection_value(store, "G/set", [1, 1, 0, 1, 1, 3], 0, 1)
    assert result.tolist() == [5.0, 6.0, 7.0]


@pytest.mark.parametrize("dtype", DTYPES.values())
def test_a_selection_fills_an_array_of_any_type(store: Any, dtype: Any):
    probe.create_set(store, "G/set", Type.INT16, [3])
    probe.fill_set(store, "G/set", "int16", [0, 1, 1])
    array = np.ones(3, dtype)
    assert probe.fill_array(store, "G/set", None, array) is True
    assert array.tolist() == [0, 1, 1]


@pytest.mark.parametrize("dtype", [np.complex128, np.float16, np.object_, "U4", "S4", "M8[s]"])
def test_an_array_of_a_type_that_is_not_stored_is_not_filled(
    store: Any, new_log_lines: Lines, dtype: Any
):
    probe.create_set(store, "G/set", Type.FLOAT64, [2])
    array = np.zeros(2, dtype)
    assert probe.fill_array(store, "G/set", None, array) is False
    assert new_log_lines() == [
        "[error] [strata] This selection is valid, but the selected set has an invalid data_type"
    ]


def test_an_invalid_selection_fills_nothing(store: Any, new_log_lines: Lines):
    probe.create_set(store, "G/set", Type.FLOAT64, [2])
    array = np.full(2, 7.0)
    assert probe.fill_array(store, "G/set", [1, 2], array) is False
    assert array.tolist() == [7.0, 7.0]
    assert new_log_lines() == [
        "[error] [strata] Invalid selection to read the content of a dataset"
    ]


@pytest.mark.parametrize(
    "array", [np.zeros(3), np.zeros((2, 2)), np.zeros(4)[::2], np.zeros(2, ">f8")]
)
def test_an_array_that_cannot_take_the_elements_is_not_filled(
    store: Any, new_log_lines: Lines, array: Any
):
    probe.create_set(store, "G/set", Type.FLOAT64, [2])
    probe.fill_set(store, "G/set", "double", [1, 2])
    assert probe.fill_array(store, "G/set", None, array) is False
    assert not array.any()
    assert new_log_lines() == ["[error] [strata] Invalid value to read the content of a dataset"]
