"""Matrices that are refused: by dimensions, rows, columns, then element type."""

from __future__ import annotations

from typing import Any

import numpy as np
import pytest
from support.failures import failure_of
from support.store_tree import snapshot
from support.value_setters import MATRIX_TAKERS, Setter

takers = pytest.mark.parametrize("taker", MATRIX_TAKERS, ids=str)

ELEMENT_TYPE = (
    "Given matrix should have type as float or double, maybe try casting your array "
    "matrix.astype(np.float64) or matrix.astype(np.float32)"
)


def assert_refused(trial: Any, taker: Setter, matrix: Any, text: str) -> None:
    before = snapshot(trial)
    assert failure_of(taker.write, trial, matrix) == (RuntimeError, text)
    assert snapshot(trial) == before


@takers
@pytest.mark.parametrize("dimensions", [0, 1, 3, 4])
def test_a_matrix_has_two_dimensions(rich_trial: Any, taker: Setter, dimensions: int) -> None:
    text = f"Given matrix should have 2 dimensions, current has : {dimensions}"
    shape = (1,) * (dimensions - 2) + (taker.rows, taker.columns)
    shape = shape if dimensions > 2 else (taker.rows,) * dimensions
    assert_refused(rich_trial, taker, np.zeros(shape), text)


@takers
def test_three_values_alone_have_one_dimension(trial: Any, taker: Setter) -> None:
    text = "Given matrix should have 2 dimensions, current has : 1"
    assert_refused(trial, taker, np.zeros(3), text)


@takers
@pytest.mark.parametrize("more", [-1, 1, 1000])
def test_a_matrix_has_a_row_for_each_sample(rich_trial: Any, taker: Setter, more: int) -> None:
    rows = taker.rows + more
    text = (
        "Given matrix should have row number equals to the number of frames in the acquisition "
        f", current has : {rows}"
    )
    assert_refused(rich_trial, taker, np.zeros((rows, taker.columns)), text)


@takers
def test_rows_are_counted_before_columns(trial: Any, taker: Setter) -> None:
    text = (
        "Given matrix should have row number equals to the number of frames in the acquisition "
        ", current has : 0"
    )
    assert_refused(trial, taker, np.zeros((0, 0)), text)


@takers
@pytest.mark.parametrize("more", [-1, 1, 3])
def test_a_matrix_has_the_columns_of_its_channels(
    rich_trial: Any, taker: Setter, more: int
) -> None:
    columns = taker.columns + more
    text = (
        "Given matrix should have column number equals to the number of extracted points "
        f"multiplied by {taker.multiplier}, current has : {columns}"
    )
    assert_refused(rich_trial, taker, np.zeros((taker.rows, columns)), text)


@takers
@pytest.mark.parametrize(
    "element",
    ["int8", "uint8", "int16", "int32", "uint32", "int64", "uint64", "bool", "object", "complex64",
     "complex128", "float16", "longdouble", "U4", "S4", "datetime64[s]", "f8,f8"],
)  # fmt: skip
def test_elements_are_singles_or_doubles(trial: Any, taker: Setter, element: str) -> None:
    matrix = np.zeros((taker.rows, taker.columns), dtype=element)
    assert_refused(trial, taker, matrix, ELEMENT_TYPE)


@takers
def test_the_element_type_is_checked_last(trial: Any, taker: Setter) -> None:
    text = "Given matrix should have 2 dimensions, current has : 0"
    assert_refused(trial, taker, np.array(7), text)


class LooksLikeAnArray:
    def __array__(self, *_: Any, **__: Any) -> Any:
        raise AssertionError("only arrays, lists and tuples are taken")


class Interrupting:
    """A sequence that is interrupted when it is asked whether it is an array."""

    def __len__(self) -> int:
        return 0

    def __getitem__(self, index: int) -> Any:
        raise IndexError(index)

    @property
    def __array__(self) -> Any:
        raise KeyboardInterrupt("stop")


@takers
def test_an_interrupt_in_a_list_is_passed_on(rich_trial: Any, taker: Setter) -> None:
    before = snapshot(rich_trial)
    with pytest.raises(KeyboardInterrupt, match=r"^stop$"):
        taker.write(rich_trial, [Interrupting()])
    assert snapshot(rich_trial) == before


@takers
@pytest.mark.parametrize(
    "value",
    [None, 1.5, 7, True, "1.5", b"1.5", {}, {1.5}, range(3), np.float64(1.5), iter([1.5]),
     memoryview(np.zeros((4, 3))), LooksLikeAnArray(), np.ndarray],
    ids=lambda value: type(value).__name__,
)  # fmt: skip
def test_what_is_no_array_and_no_list_is_refused(trial: Any, taker: Setter, value: Any) -> None:
    assert_refused(trial, taker, value, ELEMENT_TYPE)


@takers
def test_lists_of_integers_are_integers(trial: Any, taker: Setter) -> None:
    assert_refused(trial, taker, [[0] * taker.columns] * taker.rows, ELEMENT_TYPE)


@takers
@pytest.mark.parametrize(
    "value", [[], [1.5, 2.5], (1.5,), ["text"]], ids=["empty", "list", "tuple", "texts"]
)
def test_flat_sequences_have_one_dimension(trial: Any, taker: Setter, value: Any) -> None:
    text = "Given matrix should have 2 dimensions, current has : 1"
    assert_refused(trial, taker, value, text)


@takers
def test_rows_of_different_lengths_are_no_matrix(rich_trial: Any, taker: Setter) -> None:
    before = snapshot(rich_trial)
    ragged = [[1.0] * taker.columns] * (taker.rows - 1) + [[1.0] * (taker.columns + 1)]
    raised, _ = failure_of(taker.write, rich_trial, ragged)
    assert raised is ValueError
    assert snapshot(rich_trial) == before


@takers
@pytest.mark.parametrize("times", [1, 2])
def test_a_list_that_holds_itself_is_no_matrix(rich_trial: Any, taker: Setter, times: int) -> None:
    before = snapshot(rich_trial)
    endless: list[Any] = [(1.0,)]
    endless += [endless] * times
    text = "The given list holds itself"
    assert failure_of(taker.write, rich_trial, endless) == (ValueError, text)
    assert snapshot(rich_trial) == before


@takers
def test_lists_nested_without_end_are_refused(trial: Any, taker: Setter) -> None:
    before = snapshot(trial)
    deep: list[Any] = [1.0]
    for _ in range(100_000):
        deep = [deep]
    assert failure_of(taker.write, trial, deep)[0] is RecursionError
    assert snapshot(trial) == before
