"""Python values that become stored ones."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type, attribute, snapshot

Lines = Callable[[], list[str]]

WRONG_COUNT = (
    "[error] [strata] The number of elements to write is not the same than in the shape of the"
    " attribute"
)
TOO_LARGE = "Python int too large to convert to C long"


@pytest.fixture
def store() -> Any:
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "G")
    return handle


def written(store: Any, element_type: Type, shape: list[int] | None, value: Any) -> list[Any]:
    """The elements of a new attribute after `value` was written with the type it maps to."""
    probe.create_attribute(store, "G", "A", element_type, shape)
    write(store, value)
    return attribute(store, "G", "A")[2]


def write(store: Any, value: Any) -> None:
    probe.write_value(store, "G", "A", probe.store_type_of_value(value), value)


class Int(int):
    pass


class Float(float):
    pass


class Text(str):
    pass


class Bytes(bytes):
    pass


ARRAYS: list[tuple[Any, Type]] = [
    (np.bool_, Type.BOOLEAN),
    (np.int8, Type.INT8),
    (np.uint8, Type.UINT8),
    (np.int16, Type.INT16),
    (np.uint16, Type.UINT16),
    (np.int32, Type.INT32),
    (np.intc, Type.INT32),
    (np.uint32, Type.UINT32),
    (np.int64, Type.INT64),
    (np.longlong, Type.INT64),
    (np.uint64, Type.UINT64),
    (np.float32, Type.FLOAT32),
    (np.float64, Type.FLOAT64),
    (">f8", Type.FLOAT64),
    (">i4", Type.INT32),
    ("S3", Type.STRING),
    ("U3", Type.STRING),
    (np.complex128, Type.INVALID),
    (np.float16, Type.INVALID),
    (np.longdouble, Type.INVALID),
    (np.object_, Type.INVALID),
    ("M8[s]", Type.INVALID),
]


@pytest.mark.parametrize(("dtype", "element_type"), ARRAYS)
def test_element_type_of_an_array(dtype: Any, element_type: Type):
    assert probe.store_type_of_value(np.zeros(2, dtype)) == element_type


circular: list[Any] = []
circular.append(circular)

VALUES: list[tuple[Any, Type]] = [
    (b"x", Type.STRING),
    (Bytes(b"x"), Type.STRING),
    ("x", Type.STRING),
    (Text("x"), Type.STRING),
    (1.5, Type.FLOAT64),
    (Float(1.5), Type.FLOAT64),
    (np.float64(1.5), Type.FLOAT64),
    (1, Type.INT64),
    (Int(1), Type.INT64),
    (True, Type.INT64),
    (2**100, Type.INT64),
    ([1, 2], Type.INT64),
    ([1, True], Type.INT64),
    ([1.5, 2.5], Type.FLOAT64),
    (["a", b"b"], Type.STRING),
    ([[1.5], [2.5]], Type.FLOAT64),
    ([np.zeros(2), np.zeros(2)], Type.FLOAT64),
    ([1, 1.5], Type.INVALID),
    ([[1], [1.5]], Type.INVALID),
    ([1, None], Type.INVALID),
    ([], Type.INVALID),
    ([[], []], Type.INVALID),
    (None, Type.INVALID),
    ((1, 2), Type.INVALID),
    ({}, Type.INVALID),
    (1j, Type.INVALID),
    (np.int64(1), Type.INVALID),
    (np.float32(1), Type.INVALID),
]


@pytest.mark.parametrize(("value", "element_type"), VALUES)
def test_element_type_of_a_value(value: Any, element_type: Type):
    assert probe.store_type_of_value(value) == element_type


def test_a_list_that_holds_itself_is_refused():
    raised, _ = failure_of(probe.store_type_of_value, circular)
    assert raised is RecursionError


@pytest.mark.parametrize(
    ("value", "shape"),
    [
        (1, []),
        ("text", []),
        (None, []),
        ((1, 2), []),
        ([1, 2, 3], [3]),
        ([[1, 2], [3, 4], [5, 6]], [3, 2]),
        ([], [0]),
        ([[], []], [2, 0]),
        (np.zeros((2, 0, 3)), [2, 0, 3]),
        (np.float64(1), []),
        (np.array(1), []),
    ],
)
def test_shape_of_a_value(value: Any, shape: list[int]):
    assert probe.shape_of_value(value) == shape


@pytest.mark.parametrize(
    ("value", "element_type", "stored"),
    [
        (0.1, Type.FLOAT64, 0.1),
        (0.1, Type.FLOAT32, float(np.float32(0.1))),
        (Float(2.5), Type.FLOAT64, 2.5),
        (2.75, Type.INT16, 2),
        (2**53, Type.INT64, 2**53),
        (2**40, Type.INT64, 2**40),
        (-7, Type.FLOAT32, -7.0),
        (True, Type.INT64, 1),
        (Int(5), Type.INT16, 5),
        ("膝", Type.STRING, "膝"),
        (b"bytes", Type.STRING, "bytes"),
        (Text("own"), Type.STRING, "own"),
        ("", Type.STRING, ""),
    ],
)
def test_a_scalar_is_written(store: Any, value: Any, element_type: Type, stored: Any):
    assert written(store, element_type, None, value) == [stored]


@pytest.mark.parametrize("value", [None, (1,), {}, 1j, np.float32(1), []])
def test_a_value_that_maps_to_no_type_is_refused(store: Any, value: Any):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, None)
    before = snapshot(store)
    assert failure_of(write, store, value) == (SystemError, "Unexpected Python type to write")
    assert snapshot(store) == before


@pytest.mark.parametrize("value", [None, (1,), {}, 1j, np.float32(1)])
def test_a_scalar_of_another_type_is_refused(store: Any, value: Any):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, None)
    assert failure_of(probe.write_value, store, "G", "A", Type.FLOAT64, value) == (
        SystemError,
        "Unsupported Python type to write a scalar",
    )


def test_an_int_beyond_64_bits_overflows(store: Any):
    probe.create_attribute(store, "G", "A", Type.INT64, None)
    assert failure_of(write, store, 2**63) == (OverflowError, TOO_LARGE)
    assert attribute(store, "G", "A")[2] == [0]


@pytest.mark.parametrize(
    ("number", "element_type"),
    [(2**32 + 5, Type.INT32), (-1, Type.UINT64), (256, Type.UINT8), (-129, Type.INT8)],
)
def test_an_int_beyond_the_stored_type_overflows(store: Any, number: int, element_type: Type):
    probe.create_attribute(store, "G", "A", element_type, None)
    assert failure_of(write, store, number) == (OverflowError, TOO_LARGE)
    assert attribute(store, "G", "A")[2] == [0]


def test_a_text_without_utf8_form_is_refused(store: Any):
    probe.create_attribute(store, "G", "A", Type.STRING, None)
    assert failure_of(write, store, "\ud800") == (
        SystemError,
        "Internal error during UTF8 string extraction",
    )


def test_a_scalar_is_not_written_to_two_elements(store: Any, new_log_lines: Lines):
    assert written(store, Type.FLOAT64, [2], 1.5) == [0.0, 0.0]
    assert new_log_lines() == [WRONG_COUNT]


def test_a_number_is_not_written_into_a_text(store: Any, new_log_lines: Lines):
    assert written(store, Type.STRING, None, 1.5) == [""]
    assert new_log_lines() == [
        "[error] [strata] Invalid value to write the content of an attribute"
    ]


@pytest.mark.parametrize(
    ("value", "element_type", "shape", "stored"),
    [
        ([0.1, 0.2], Type.FLOAT64, [2], [0.1, 0.2]),
        ([1.5, -2.5], Type.INT16, [2], [1, -2]),
        ([1, 2, 3], Type.INT64, [3], [1, 2, 3]),
        ([True, False], Type.INT64, [2], [1, 0]),
        ([2**31 - 1, -(2**31)], Type.INT64, [2], [2**31 - 1, -(2**31)]),
        ([[1, 2], [3, 4]], Type.FLOAT32, [2, 2], [1.0, 2.0, 3.0, 4.0]),
        (["a", b"b", ""], Type.STRING, [3], ["a", "b", ""]),
        ([["a", "b"], ["c", "d"]], Type.STRING, [2, 2], ["a", "b", "c", "d"]),
        ([[1.5], [2.5]], Type.FLOAT64, [2], [1.5, 2.5]),
    ],
)
def test_a_list_is_written(
    store: Any, value: Any, element_type: Type, shape: list[int], stored: list[Any]
):
    assert written(store, element_type, shape, value) == stored


@pytest.mark.parametrize("number", [2**31, -(2**31) - 1, 2**32, 2**64])
def test_ints_of_a_list_are_32_bits_wide(store: Any, number: int):
    probe.create_attribute(store, "G", "A", Type.INT64, [2])
    assert failure_of(write, store, [1, number]) == (OverflowError, TOO_LARGE)
    assert attribute(store, "G", "A")[2] == [0, 0]


@pytest.mark.parametrize("value", [[1, 1.5], ["a", 1], [None], []])
def test_a_list_of_several_types_is_refused(store: Any, value: list[Any]):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, [len(value)])
    assert failure_of(write, store, value) == (SystemError, "Unexpected Python type to write")


@pytest.mark.parametrize(
    "target", [t for t in Type if t not in (0, Type.INT64, Type.FLOAT64, Type.STRING)]
)
def test_lists_are_given_to_three_types_only(store: Any, target: Type):
    probe.create_attribute(store, "G", "A", target, [1])
    before = snapshot(store)
    assert failure_of(probe.write_value, store, "G", "A", target, [1]) == (
        SystemError,
        "Unsupported Python type to write a List",
    )
    assert snapshot(store) == before


@pytest.mark.parametrize(
    "ragged", [[[1, 2], [3]], [[1], [2, 3]], [[1], 2], [[1, 2], [[3], 4]], [[1, [2]], [3, 4]]]
)
def test_a_ragged_list_is_refused(store: Any, ragged: list[Any]):
    probe.create_attribute(store, "G", "A", Type.INT64, [2, 2])
    before = snapshot(store)
    assert failure_of(probe.write_value, store, "G", "A", Type.INT64, ragged) == (
        ValueError,
        "The nested lists of the given value have different lengths",
    )
    assert snapshot(store) == before


def test_an_item_that_is_no_number_is_refused(store: Any):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, [2])
    raised, text = failure_of(probe.write_value, store, "G", "A", Type.FLOAT64, [1.5, "x"])
    assert (raised, text) == (TypeError, "must be real number, not str")
    assert attribute(store, "G", "A")[2] == [0.0, 0.0]


def test_items_that_change_their_list_do_no_harm(store: Any):
    values: list[Any] = []

    class Clearing:
        def __float__(self) -> float:
            values.clear()
            return 1.5

    values += [Clearing(), 2.5, 3.5]
    probe.create_attribute(store, "G", "A", Type.FLOAT64, [3])
    probe.write_value(store, "G", "A", Type.FLOAT64, values)
    assert attribute(store, "G", "A")[2] == [1.5, 2.5, 3.5]


def test_a_list_of_another_length_is_not_written(store: Any, new_log_lines: Lines):
    assert written(store, Type.FLOAT64, [3], [1.5, 2.5]) == [0.0, 0.0, 0.0]
    assert new_log_lines() == [WRONG_COUNT]


MATRIX = np.arange(6.0).reshape(2, 3)


@pytest.mark.parametrize(
    "array",
    [MATRIX, np.asfortranarray(MATRIX), MATRIX.astype(">f8"), np.repeat(MATRIX, 2, axis=1)[:, ::2]],
    ids=["plain", "column order", "other byte order", "with gaps"],
)
def test_an_array_is_written_in_logical_order(store: Any, array: Any):
    assert written(store, Type.FLOAT64, [2, 3], array) == [0, 1, 2, 3, 4, 5]


@pytest.mark.parametrize(
    ("dtype", "element_type"), [item for item in ARRAYS if item[1] not in (0, Type.STRING)]
)
def test_arrays_of_each_type_are_written(store: Any, dtype: Any, element_type: Type):
    assert written(store, element_type, [3], np.array([0, 1, 1], dtype)) == [0, 1, 1]


def test_an_array_is_converted_to_the_stored_type(store: Any):
    assert written(store, Type.INT16, [2], np.array([2.75, -1e9])) == [2, -32768]


@pytest.mark.parametrize("array", [np.array(["a", "bc"]), np.array([b"a", b"bc"])])
def test_an_array_of_texts_is_written(store: Any, array: Any):
    assert written(store, Type.STRING, [2], array) == ["a", "bc"]


def test_an_array_of_texts_of_two_dimensions_is_written(store: Any):
    array = np.array([["a", "b"], ["c", "d"]])
    assert written(store, Type.STRING, [2, 2], array) == ["a", "b", "c", "d"]


def test_an_array_of_one_text_without_dimensions_is_written(store: Any):
    assert written(store, Type.STRING, None, np.array("LASI")) == ["LASI"]


def test_an_array_of_another_type_is_not_written(store: Any, new_log_lines: Lines):
    probe.create_attribute(store, "G", "A", Type.FLOAT64, [2])
    probe.write_value(store, "G", "A", Type.FLOAT64, np.zeros(2, complex))
    assert attribute(store, "G", "A")[2] == [0.0, 0.0]
    assert new_log_lines() == [
        "[error] [strata] Invalid data type to write the content of an attribute"
    ]


def test_an_array_of_another_length_is_not_written(store: Any, new_log_lines: Lines):
    assert written(store, Type.FLOAT64, [2], np.ones(3)) == [0.0, 0.0]
    assert new_log_lines() == [WRONG_COUNT]


@pytest.mark.parametrize(
    ("format_name", "value", "expected"),
    [
        ("Integer", [1, 2, 3], (Type.INT16, [3], [1, 2, 3])),
        ("Integer", 7, (Type.INT16, [], [7])),
        ("Byte", [1, -2], (Type.INT8, [2], [1, -2])),
        ("Real", [[0.5, 1.5]], (Type.FLOAT32, [1, 2], [0.5, 1.5])),
        ("Real", np.array([[1, 2], [3, 4]]), (Type.FLOAT32, [2, 2], [1.0, 2.0, 3.0, 4.0])),
        ("Char", "mm", (Type.STRING, [], ["mm"])),
        ("Char", ["a", "b"], (Type.STRING, [2], ["a", "b"])),
    ],
)
def test_a_new_attribute_takes_its_type_from_the_format(
    store: Any, format_name: str, value: Any, expected: tuple[Type, list[int], list[Any]]
):
    probe.write_new(store, "G", "A", format_name, value)
    assert attribute(store, "G", "A") == expected


@pytest.mark.parametrize("format_name", ["", "integer", "Double", "String"])
def test_an_unknown_format_is_no_key(store: Any, format_name: str):
    assert failure_of(probe.write_new, store, "G", "A", format_name, 1) == (
        RuntimeError,
        "invalid map<K, T> key. Exception thrown while it should not. "
        "Please contact the support and report this problem.",
    )
    assert probe.list_attributes(store, "G") == []


@pytest.mark.parametrize("value", [None, [1, 1.5], {}, [[1], [2, 3]], [2**40]])
def test_a_value_that_cannot_be_written_leaves_no_attribute(store: Any, value: Any):
    raised, _ = failure_of(probe.write_new, store, "G", "A", "Integer", value)
    assert raised in (SystemError, ValueError, OverflowError)
    assert probe.list_attributes(store, "G") == []
