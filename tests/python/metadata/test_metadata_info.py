"""moxMetaDataInfo: the record that describes a new entry."""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of


def test_a_record_holds_format_values_and_dimensions_in_this_order() -> None:
    record = _moxPY.moxMetaDataInfo("Real", [1.0, 2.0])
    assert list(record.items()) == [("format", "Real"), ("values", [1.0, 2.0]), ("numdims", 1)]


@pytest.mark.parametrize(
    ("values", "dimensions"),
    [
        (1, 0), (1.5, 0), ("text", 0), (None, 0), ((1, 2), 0), ({}, 0), ([], 1), ([1], 1),
        ([[1, 2], [3, 4]], 2), ([[[1]]], 3), ([[]], 2), (np.zeros(3), 1),
        (np.zeros((2, 0, 1)), 3), (np.array(1.0), 0),
    ],
)  # fmt: skip
def test_dimensions_are_counted_where_none_are_given(values: Any, dimensions: int) -> None:
    number = _moxPY.moxMetaDataInfo("Real", values)["numdims"]
    assert (type(number), number) == (int, dimensions)


@pytest.mark.parametrize("dimensions", [2, 3, 1000, 2**31 - 1])
def test_more_dimensions_than_needed_are_kept(dimensions: int) -> None:
    assert _moxPY.moxMetaDataInfo("Real", [[1.0]], dimensions)["numdims"] == dimensions


@pytest.mark.parametrize(
    ("values", "dimensions"),
    [([[1]], 1), ([1], 0), ([1], -1), (1, -1), (np.zeros((1, 1, 1)), 2), ([1], -(2**31))],
)
def test_fewer_dimensions_than_the_values_have_are_refused(values: Any, dimensions: int) -> None:
    text = "Given number of dimensions is lower than the number of dimensions for the given values."
    failure = failure_of(_moxPY.moxMetaDataInfo, "Real", values, dimensions)
    assert failure == (RuntimeError, text)


@pytest.mark.parametrize("name", ["Real", "Float", "", "é"])
def test_the_format_is_kept_as_given(name: str) -> None:
    assert _moxPY.moxMetaDataInfo(name, 1)["format"] == name


@pytest.mark.parametrize(
    ("given", "kept"),
    [
        (7, 7), (True, 1), (2**31, -1), (-(2**70), -1), (0.1, float(np.float32(0.1))),
        ("é", "é"), (b"caf\xc3\xa9", "café"), (b"\xff", "\udcff"), (None, None), ((1, 2), (1, 2)),
    ],
)  # fmt: skip
def test_single_values_are_normalised(given: Any, kept: Any) -> None:
    values = _moxPY.moxMetaDataInfo("Real", given)["values"]
    assert (type(values), values) == (type(kept), kept)


def test_a_list_is_kept_as_a_new_list() -> None:
    given = [1.0, [2.0]]
    kept = _moxPY.moxMetaDataInfo("Real", given)["values"]
    assert kept == given
    assert kept is not given


def test_an_array_is_kept_with_its_type_and_shape() -> None:
    given = np.arange(6, dtype=np.int16).reshape(2, 3)
    kept = _moxPY.moxMetaDataInfo("Real", given)["values"]
    assert (kept.dtype, kept.tolist()) == (np.int16, given.tolist())
