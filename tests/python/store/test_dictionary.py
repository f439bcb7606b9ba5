"""Dictionary items from attributes and from Python values."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type


@pytest.fixture
def store() -> Any:
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "G")
    probe.create_set(handle, "G/LASI", Type.FLOAT64, [2])
    return handle


def item(value: Any) -> Any:
    dictionary: dict[str, Any] = {}
    probe.item_from_value(dictionary, "key", value)
    assert list(dictionary) == ["key"]
    return dictionary["key"]


def test_an_attribute_is_stored_under_its_name(store: Any):
    probe.create_text_attribute(store, "G/LASI", "Unit", "mm")
    dictionary = {"before": 1}
    probe.item_from_attribute(dictionary, store, "G/LASI", "Unit")
    assert dictionary == {"before": 1, "Unit": "mm"}


def test_an_attribute_is_squeezed_and_not_transposed(store: Any):
    probe.create_attribute(store, "G/LASI", "Matrix", Type.INT16, [2, 1, 3])
    probe.write_attribute_vector(store, "G/LASI", "Matrix", "int16", [1, 2, 3, 4, 5, 6])
    dictionary: dict[str, Any] = {}
    probe.item_from_attribute(dictionary, store, "G/LASI", "Matrix")
    assert dictionary["Matrix"].tolist() == [[1, 2, 3], [4, 5, 6]]


def test_a_missing_attribute_is_named_with_its_set(store: Any):
    dictionary: dict[str, Any] = {}
    assert failure_of(probe.item_from_attribute, dictionary, store, "G/LASI", "Subject") == (
        SystemError,
        "Unexpected error when extracting attribute value : set is LASI, attribute is Subject",
    )
    assert dictionary == {}


@pytest.mark.parametrize(
    ("value", "expected"),
    [
        (b"mm", "mm"),
        (b"mm/s\xb2", "mm/s\udcb2"),
        (b"", ""),
        ("膝", "膝"),
        (7, 7),
        (-(2**31), -(2**31)),
        (2**31 - 1, 2**31 - 1),
        (2**31, -1),
        (-(2**31) - 1, -1),
        (2**100, -1),
        (True, 1),
        (0.1, float(np.float32(0.1))),
        (1e300, float("inf")),
        (None, None),
    ],
)
def test_values_get_their_normal_form(value: Any, expected: Any):
    result = item(value)
    assert result == expected
    assert type(result) is type(expected)


def test_nan_stays_nan():
    assert np.isnan(item(float("nan")))


def test_an_array_is_shared():
    array = np.arange(3)
    assert item(array) is array


def test_a_list_becomes_a_new_list():
    values = [1, "a"]
    result = item(values)
    assert result == values
    assert result is not values


def test_a_text_without_utf8_form_is_refused():
    raised, _ = failure_of(probe.item_from_value, {}, "key", "\ud800")
    assert raised is UnicodeEncodeError
