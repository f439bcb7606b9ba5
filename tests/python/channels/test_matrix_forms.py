"""Matrices in every memory layout and element type: what is given is what is read."""

from __future__ import annotations

from array import array
from collections import deque
from collections.abc import Callable
from typing import Any

import numpy as np
import pytest
from support.value_setters import MATRIX_TAKERS, SETTERS, Setter

takers = pytest.mark.parametrize("taker", MATRIX_TAKERS, ids=str)


class Rows(np.ndarray):
    """Never less than two dimensions, and nothing an element would be: only its memory counts."""

    def __getitem__(self, item: Any) -> Any:
        return np.full((1, 1), 99.0)

    def __array__(self, *_: Any, **__: Any) -> Any:
        raise AssertionError("an array is taken as it is")


def in_a_larger_array(matrix: Any) -> Any:
    larger = np.full((matrix.shape[0] + 2, matrix.shape[1] + 3), 99.0)
    larger[1:-1, 2:-1] = matrix
    return larger[1:-1, 2:-1]


def every_second(matrix: Any) -> Any:
    larger = np.full((2 * matrix.shape[0], 2 * matrix.shape[1]), 99.0)
    larger[::2, 1::2] = matrix
    return larger[::2, 1::2]


def unaligned(matrix: Any) -> Any:
    memory = bytearray(b"\0" + matrix.tobytes())
    return np.frombuffer(memory, dtype=matrix.dtype, offset=1).reshape(matrix.shape)


def read_only(matrix: Any) -> Any:
    matrix = matrix.copy()
    matrix.flags.writeable = False
    return matrix


FORMS: dict[str, Callable[[Any], Any]] = {
    "C order": np.ascontiguousarray,
    "Fortran order": np.asfortranarray,
    "part of a larger array": in_a_larger_array,
    "every second row and column": every_second,
    "rows backwards": lambda matrix: matrix[::-1].copy()[::-1],
    "columns backwards": lambda matrix: matrix[:, ::-1].copy()[:, ::-1],
    "both backwards": lambda matrix: matrix[::-1, ::-1].copy(order="F")[::-1, ::-1],
    "other byte order": lambda matrix: matrix.astype(matrix.dtype.newbyteorder()),
    "unaligned": unaligned,
    "read-only": read_only,
    "subclass": lambda matrix: matrix.view(Rows),
    "masked, nothing hidden": np.ma.masked_array,
}


@takers
@pytest.mark.parametrize("element", ["float64", "float32"])
@pytest.mark.parametrize("form", FORMS)
def test_values_read_back_equal_whatever_the_memory_layout(
    rich_trial: Any, taker: Setter, form: str, element: str
) -> None:
    matrix = taker.matrix()
    taker.write(rich_trial, FORMS[form](matrix.astype(element)))
    read = taker.read(rich_trial)
    assert read.dtype == np.float64
    assert np.array_equal(read, matrix)


@takers
def test_singles_are_widened_and_not_rounded_otherwise(trial: Any, taker: Setter) -> None:
    singles = (taker.matrix() / 3).astype(np.float32)
    taker.write(trial, singles)
    assert taker.read(trial).tolist() == [[float(cell) for cell in row] for row in singles]


@takers
def test_one_row_for_all_frames(trial: Any, taker: Setter) -> None:
    row = np.arange(float(taker.columns))
    taker.write(trial, np.broadcast_to(row, (taker.rows, taker.columns)))
    assert taker.read(trial).tolist() == [row.tolist()] * taker.rows


@takers
@pytest.mark.parametrize("sequence", [list, tuple])
def test_nested_sequences_of_floats_are_matrices(trial: Any, taker: Setter, sequence: Any) -> None:
    matrix = taker.matrix()
    taker.write(trial, sequence(sequence(row) for row in matrix.tolist()))
    assert np.array_equal(taker.read(trial), matrix)


@takers
def test_a_list_of_rows_that_are_arrays_is_a_matrix(trial: Any, taker: Setter) -> None:
    matrix = taker.matrix()
    taker.write(trial, list(matrix))
    assert np.array_equal(taker.read(trial), matrix)


@takers
def test_one_list_may_be_every_row(trial: Any, taker: Setter) -> None:
    row = [0.5] * taker.columns
    taker.write(trial, [row] * taker.rows)
    assert taker.read(trial).tolist() == [row] * taker.rows


@takers
def test_rows_may_be_sequences_of_any_kind(trial: Any, taker: Setter) -> None:
    row = array("d", [0.5] * taker.columns)
    rows = [row, deque(row), memoryview(row), tuple(row)] * (taker.rows // 4)
    taker.write(trial, rows)
    assert taker.read(trial).tolist() == [list(row)] * taker.rows


# Signs of zero, a quiet NaN with a payload, a negative NaN, infinities, extremes, subnormals.
BITS = [
    0x8000000000000000, 0x7FF8000000000123, 0xFFF8000000000000, 0x7FF0000000000000,
    0xFFF0000000000000, 0x7FEFFFFFFFFFFFFF, 0x0000000000000001, 0x3FF0000000000001,
]  # fmt: skip


@takers
def test_every_double_is_kept_bit_for_bit(trial: Any, taker: Setter) -> None:
    cells = np.resize(np.array(BITS, dtype=np.uint64), (taker.rows, taker.columns))
    taker.write(trial, cells.view(np.float64))
    read = np.ascontiguousarray(taker.read(trial))
    assert read.view(np.uint64).tolist() == cells.tolist()


@takers
def test_missing_and_infinite_singles_are_kept(trial: Any, taker: Setter) -> None:
    values = np.array([np.nan, np.inf, -np.inf, -0.0, 1e-45, 3.4028235e38], dtype=np.float32)
    matrix = np.resize(values, (taker.rows, taker.columns))
    taker.write(trial, matrix)
    expected = matrix.astype(np.float64)
    assert np.array_equal(taker.read(trial), expected, equal_nan=True)
    assert np.array_equal(np.signbit(taker.read(trial)), np.signbit(expected))


@takers
def test_the_given_matrix_is_neither_changed_nor_kept(trial: Any, taker: Setter) -> None:
    matrix = taker.matrix()
    given = matrix.copy()
    taker.write(trial, given)
    assert np.array_equal(given, matrix)
    given[:] = 99.0
    assert np.array_equal(taker.read(trial), matrix)


@takers
def test_an_array_that_was_read_is_not_the_stored_one(trial: Any, taker: Setter) -> None:
    taker.write(trial, taker.matrix())
    taker.read(trial)[:] = 99.0
    assert np.array_equal(taker.read(trial), taker.matrix())


@takers
def test_what_a_mask_hides_is_missing(trial: Any, taker: Setter) -> None:
    matrix = taker.matrix()
    masked = np.ma.masked_less(matrix, np.median(matrix))
    taker.write(trial, masked)
    expected = np.where(np.ma.getmaskarray(masked), np.nan, matrix)
    assert np.isnan(expected).any()
    assert np.array_equal(taker.read(trial), expected, equal_nan=True)


@pytest.mark.parametrize("setter", SETTERS, ids=str)
def test_setting_values_returns_nothing(trial: Any, setter: Setter) -> None:
    assert setter.write(trial, setter.matrix()) is None


@pytest.mark.parametrize("setter", SETTERS, ids=str)
def test_values_can_be_set_again_and_again(trial: Any, setter: Setter) -> None:
    for factor in (1.0, -2.0, 0.5):
        setter.write(trial, factor * setter.matrix())
        assert np.array_equal(setter.read(trial), factor * setter.matrix())
