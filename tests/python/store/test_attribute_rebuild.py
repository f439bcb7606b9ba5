"""Attributes that get another extent or another element type."""

from __future__ import annotations

import math
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type, attribute, snapshot

NATIVES = {
    Type.INT8: "int8",
    Type.INT16: "int16",
    Type.FLOAT32: "float",
    Type.STRING: "string",
}


def store_with(element_type: Type, values: list[Any], shape: list[int] | None = None) -> Any:
    """A store whose group "G" has the attribute "A"."""
    store = _moxPY.new_data_store()
    probe.create_group(store, "G")
    probe.create_attribute(store, "G", "A", element_type, shape or [len(values)])
    native = NATIVES.get(element_type, "double")
    probe.write_attribute_vector(store, "G", "A", native, values)
    return store


VALUES: dict[Type, tuple[list[Any], Any]] = {
    Type.INT8: ([1, 2, 3], 0),
    Type.INT16: ([1, 2, 3], 0),
    Type.FLOAT32: ([0.5, 1.5, 2.5], 0.0),
    Type.STRING: (["a", "b", "c"], ""),
}


@pytest.mark.parametrize("element_type", VALUES)
@pytest.mark.parametrize(
    ("dimensions", "count"), [([2, 3], 6), ([6], 6), ([2], 2), ([1], 1), ([], 1), ([0], 0)]
)
def test_values_are_kept_in_order_and_new_ones_are_empty(
    element_type: Type, dimensions: list[int], count: int
):
    values, empty = VALUES[element_type]
    store = store_with(element_type, values)
    probe.change_extent(store, "G", "A", dimensions)
    expected = (values + [empty] * 3)[:count]
    assert attribute(store, "G", "A") == (element_type, [count], expected)


def test_an_extent_of_two_dimensions_becomes_one():
    store = store_with(Type.INT16, [1, 2, 3, 4, 5, 6], [2, 3])
    probe.change_extent(store, "G", "A", [4])
    assert attribute(store, "G", "A") == (Type.INT16, [4], [1, 2, 3, 4])


UNSUPPORTED = [
    Type.BOOLEAN,
    Type.UINT8,
    Type.UINT16,
    Type.INT32,
    Type.UINT32,
    Type.INT64,
    Type.UINT64,
    Type.FLOAT64,
]


@pytest.mark.parametrize("element_type", UNSUPPORTED)
def test_other_element_types_get_no_other_extent(element_type: Type):
    store = store_with(element_type, [1, 0])
    before = snapshot(store)
    assert failure_of(probe.change_extent, store, "G", "A", [5]) == (
        RuntimeError,
        "Unsupported type",
    )
    assert snapshot(store) == before


CONVERSIONS: list[tuple[Type, list[Any], Type, list[Any]]] = [
    (Type.INT8, [-128, 127], Type.INT16, [-128, 127]),
    (Type.INT8, [-128, 127], Type.FLOAT32, [-128.0, 127.0]),
    (Type.INT8, [-128, 127], Type.STRING, ["-128", "127"]),
    (Type.INT16, [300, -300, 7], Type.INT8, [127, -128, 7]),
    (Type.INT16, [-32768, 32767], Type.FLOAT32, [-32768.0, 32767.0]),
    (Type.INT16, [-32768, 0], Type.STRING, ["-32768", "0"]),
    (Type.FLOAT32, [2.75, -2.75, 1e9, -1e9, math.nan], Type.INT16, [2, -2, 32767, -32768, 0]),
    (Type.FLOAT32, [1e9, -math.inf], Type.INT8, [127, -128]),
    (Type.FLOAT32, [0.5, 100.0], Type.STRING, ["0.5", "100"]),
    (Type.STRING, ["12", " -3.9 mm", "+7", "x", ""], Type.INT16, [12, -3, 7, 0, 0]),
    (Type.STRING, ["1e9", "-129"], Type.INT8, [127, -128]),
    (Type.STRING, ["0.5", "1e3x", "inf", "."], Type.FLOAT32, [0.5, 1000.0, math.inf, 0.0]),
]


@pytest.mark.parametrize(("source", "values", "target", "expected"), CONVERSIONS)
def test_values_are_converted(source: Type, values: list[Any], target: Type, expected: list[Any]):
    store = store_with(source, values)
    probe.change_type(store, "G", "A", target)
    assert attribute(store, "G", "A") == (target, [len(values)], expected)


@pytest.mark.parametrize("value", [0.1, 1 / 3, 1e-40, 3.4e38, 16777216.0])
def test_a_number_as_text_reads_back_as_the_same_number(value: float):
    store = store_with(Type.FLOAT32, [value])
    probe.change_type(store, "G", "A", Type.STRING)
    (text,) = attribute(store, "G", "A")[2]
    assert np.float32(text) == np.float32(value)
    probe.change_type(store, "G", "A", Type.FLOAT32)
    assert attribute(store, "G", "A")[2] == [float(np.float32(value))]


@pytest.mark.parametrize("element_type", NATIVES)
def test_the_own_type_changes_nothing(element_type: Type):
    store = store_with(element_type, VALUES[element_type][0])
    before = snapshot(store)
    probe.change_type(store, "G", "A", element_type)
    assert snapshot(store) == before


def test_the_shape_is_kept():
    store = store_with(Type.INT16, [1, 2, 3, 4, 5, 6], [3, 2])
    probe.change_type(store, "G", "A", Type.FLOAT32)
    assert attribute(store, "G", "A")[1] == [3, 2]


@pytest.mark.parametrize("target", [Type.INVALID, *UNSUPPORTED, 13, 200])
@pytest.mark.parametrize("source", NATIVES)
def test_no_other_type_is_taken_on(source: Type, target: int):
    store = store_with(source, VALUES[source][0])
    before = snapshot(store)
    assert failure_of(probe.change_type, store, "G", "A", target) == (
        RuntimeError,
        "Unsupported type",
    )
    assert snapshot(store) == before


@pytest.mark.parametrize("source", UNSUPPORTED)
def test_no_other_type_is_converted(source: Type):
    store = store_with(source, [1, 0])
    before = snapshot(store)
    assert failure_of(probe.change_type, store, "G", "A", Type.FLOAT32) == (
        RuntimeError,
        "Unsupported type",
    )
    assert snapshot(store) == before
