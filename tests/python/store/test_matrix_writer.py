"""Matrices that are written into channel sets, column by column."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import Type, node

WRONG_TYPE = (
    "Given matrix should have type as float or double, maybe try casting your array"
    " matrix.astype(np.float64) or matrix.astype(np.float32)"
)
MATRIX = np.arange(12.0).reshape(4, 3)


@pytest.fixture
def store() -> Any:
    """A store with the point set "P" and the analog set "A", four samples each."""
    handle = _moxPY.new_data_store()
    probe.create_set(handle, "P", Type.FLOAT64, [3, 1, 4])
    probe.create_set(handle, "A", Type.FLOAT64, [1, 1, 4])
    return handle


def values(store: Any, path: str) -> Any:
    return node(store, path)["values"][:, 0].T


@pytest.mark.parametrize(
    "matrix",
    [
        MATRIX,
        MATRIX.astype(np.float32),
        np.asfortranarray(MATRIX),
        MATRIX.astype(">f8"),
        np.repeat(MATRIX, 2, axis=0)[::2],
        MATRIX.tolist(),
        tuple(map(tuple, MATRIX)),
    ],
    ids=["double", "float", "column order", "byte order", "gaps", "list", "tuple"],
)
def test_columns_become_components(store: Any, matrix: Any):
    probe.write_matrix(store, "P", matrix, 0)
    np.testing.assert_array_equal(values(store, "P"), MATRIX)


def test_columns_are_taken_from_the_first_on(store: Any):
    probe.write_matrix(store, "A", MATRIX, 2)
    assert values(store, "A").ravel().tolist() == [2.0, 5.0, 8.0, 11.0]


def test_missing_samples_stay_missing(store: Any):
    matrix = MATRIX.copy()
    matrix[1] = np.nan
    probe.write_matrix(store, "P", matrix, 0)
    np.testing.assert_array_equal(values(store, "P"), matrix)


@pytest.mark.parametrize(
    "matrix",
    [
        MATRIX.astype(int),
        MATRIX.astype(bool),
        MATRIX.astype(complex),
        MATRIX.astype(np.float16),
        MATRIX.astype(object),
        MATRIX.astype(str),
        [[1, 2, 3]] * 4,
        None,
        1.5,
        "matrix",
    ],
)
def test_other_element_types_are_refused(store: Any, matrix: Any):
    assert failure_of(probe.write_matrix, store, "P", matrix, 0) == (RuntimeError, WRONG_TYPE)
    assert not values(store, "P").any()


def test_a_ragged_list_is_refused():
    raised, _ = failure_of(probe.as_matrix, [[1.0], [1.0, 2.0]])
    assert raised is ValueError


def test_a_plain_matrix_is_not_copied():
    assert np.shares_memory(probe.as_matrix(MATRIX), MATRIX)


def test_a_subclass_becomes_an_array():
    masked = np.ma.masked_equal(MATRIX, 5.0)
    assert type(probe.as_matrix(masked)) is np.ndarray
