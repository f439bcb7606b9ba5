"""Values whose Python code changes or deletes the acquisition meanwhile break nothing."""

from __future__ import annotations

from collections.abc import Callable
from contextlib import suppress
from typing import Any

import _moxPY
import numpy as np
import pytest
from invariants.meddling import (
    ACTIONS,
    Handle,
    Number,
    Row,
    Rows,
    Sequence,
    acting_key,
    acting_matrix,
)
from support.agreement import assert_agreement
from support.failures import failure_of
from support.metadata_entries import append
from support.small_trials import FRAMES
from support.store_tree import snapshot
from support.value_setters import MATRIX_TAKERS, Setter

takers = pytest.mark.parametrize("taker", MATRIX_TAKERS, ids=str)
actions = pytest.mark.parametrize("action", ACTIONS)

# Row of a matrix -> that it acts when it is read.
ROWS: dict[str, Callable[[Callable[[], Any], int], Any]] = {
    "number": lambda act, columns: [Number(act)] * columns,
    "array": Row,
    "sequence": Sequence,
}


def attempt(call: Callable[[], Any]) -> None:
    """A call that may be refused, with one of the exceptions that calls are refused with."""
    with suppress(RuntimeError, ValueError, TypeError, MemoryError, SystemError):
        call()


@takers
@actions
@pytest.mark.parametrize("row", ROWS)
def test_a_matrix_that_meddles_leaves_a_sound_acquisition(
    trial: Any, taker: Setter, action: str, row: str
) -> None:
    calls = []

    def act() -> None:
        calls.append(1)
        ACTIONS[action](trial)

    matrix = [ROWS[row](act, taker.columns) for _ in range(taker.rows)]
    attempt(lambda: taker.write(trial, matrix))
    assert_agreement(trial)
    assert calls or row == "number"  # NumPy takes numbers of classes it does not know as objects


@takers
def test_the_acquisition_is_looked_at_after_the_matrix_was_read(trial: Any, taker: Setter) -> None:
    """A matrix for the count of frames that reading it leaves behind."""
    per_frame = taker.rows // FRAMES
    matrix: list[Any] = [[1.0] * taker.columns] * (2 * taker.rows - 1)
    act = lambda: _moxPY.moxSetFrameNumber(trial, 2 * FRAMES)  # noqa: E731
    taker.write(trial, [*matrix, Row(act, taker.columns)])
    assert taker.read(trial).tolist() == [[1.0] * taker.columns] * (2 * FRAMES * per_frame)


@takers
def test_an_array_of_a_subclass_runs_no_code_of_its_own(trial: Any, taker: Setter) -> None:
    made: list[int] = []
    matrix = acting_matrix(np.asfortranarray(taker.matrix()), lambda: made.append(1))
    made.clear()
    taker.write(trial, matrix)
    assert made == []
    assert np.array_equal(taker.read(trial), taker.matrix())


@takers
def test_a_list_that_is_changed_while_it_is_read(trial: Any, taker: Setter) -> None:
    matrix: list[Any] = [[1.0] * taker.columns for _ in range(taker.rows)]
    matrix[0] = Row(matrix.clear, taker.columns)
    attempt(lambda: taker.write(trial, matrix))
    assert_agreement(trial)


class Shelf(Sequence):
    """A sequence that hands out a list which others can change."""

    def __init__(self, rows: list[Any]) -> None:
        self.rows = rows

    def __len__(self) -> int:
        return 1

    def __getitem__(self, item: int) -> Any:
        return [self.rows][item]


@takers
def test_a_list_in_a_sequence_that_is_changed_while_it_is_read(trial: Any, taker: Setter) -> None:
    rows: list[Any] = [[1.0] * taker.columns for _ in range(1000)]
    before = snapshot(trial)
    matrix = [Shelf(rows), [[Row(rows.clear, taker.columns)] * 1000]]
    assert failure_of(taker.write, trial, matrix)[0] is RuntimeError
    assert snapshot(trial) == before


@takers
@actions
def test_a_list_with_an_iterator_of_its_own(trial: Any, taker: Setter, action: str) -> None:
    rows = Rows(lambda: ACTIONS[action](trial), taker.matrix().tolist())
    attempt(lambda: taker.write(trial, rows))
    assert_agreement(trial)


@takers
def test_the_error_of_a_value_is_passed_on_and_nothing_changed(trial: Any, taker: Setter) -> None:
    before = snapshot(trial)

    def fail() -> None:
        raise ZeroDivisionError("of its own")

    matrix = [Row(fail, taker.columns)] * taker.rows
    assert failure_of(taker.write, trial, matrix) == (ZeroDivisionError, "of its own")
    assert snapshot(trial) == before


@takers
def test_a_handle_that_is_deleted_while_the_matrix_is_read(trial: Any, taker: Setter) -> None:
    """The call goes on with the store, which it holds; the handle is a null reference after."""
    matrix = [Row(lambda: delete_once(trial), taker.columns)] * taker.rows
    taker.write(trial, matrix)
    raised, _ = failure_of(_moxPY.moxGetPoints, trial)
    assert raised is ValueError


def delete_once(acquisition: Any) -> None:
    attempt(lambda: _moxPY.delete_data_store(acquisition))


@actions
def test_dimensions_that_meddle(trial: Any, action: str) -> None:
    dimensions = [Number(lambda: ACTIONS[action](trial), 2)] * 2
    attempt(lambda: _moxPY.moxSetMetaDataDimensions(trial, "TRIAL", "COUNTS", dimensions))
    assert_agreement(trial)
    _moxPY.moxGetMetaData(trial)


def test_an_entry_that_its_own_dimensions_remove_is_missing(trial: Any) -> None:
    act = lambda: attempt(lambda: _moxPY.moxRemoveMetaData(trial, "TRIAL", "COUNTS"))  # noqa: E731
    text = "Unable to find the metadata entry 'COUNTS' in the group 'Metadata/TRIAL'"
    failure = failure_of(
        _moxPY.moxSetMetaDataDimensions, trial, "TRIAL", "COUNTS", [Number(act, 2)]
    )
    assert failure == (RuntimeError, text)


def test_an_entry_that_its_own_dimensions_replace_is_the_new_one(trial: Any) -> None:
    act = lambda: append(trial, "TRIAL", "COUNTS", "Char", ["a", "b"])  # noqa: E731
    _moxPY.moxSetMetaDataDimensions(trial, "TRIAL", "COUNTS", [Number(act, 3)])
    values = _moxPY.moxGetMetaData(trial, "TRIAL", "COUNTS")["info"]["values"]
    assert values == ["a", "b", ""]


def test_dimensions_that_change_their_own_list(trial: Any) -> None:
    dimensions: list[Any] = []
    dimensions += [Number(dimensions.clear, 2), 3]
    _moxPY.moxSetMetaDataDimensions(trial, "TRIAL/COUNTS", dimensions)
    values = _moxPY.moxGetMetaData(trial, "TRIAL", "COUNTS")["info"]["values"]
    assert values.tolist() == [1, 2, 3, 0, 0, 0]


class BadText:
    """Not an integer, and what is said of it takes the acquisition apart."""

    def __init__(self, action: Callable[[], Any]) -> None:
        self.action = action

    def __repr__(self) -> str:
        self.action()
        return "<bad>"


@actions
def test_a_message_that_meddles(trial: Any, action: str) -> None:
    bad = BadText(lambda: ACTIONS[action](trial))
    text = "The dimensions of a metadata entry must be integers, current has : <bad>"
    failure = failure_of(_moxPY.moxSetMetaDataDimensions, trial, "TRIAL", "COUNTS", [bad])
    assert failure == (TypeError, text)
    assert_agreement(trial)


@actions
@pytest.mark.parametrize("entry", ["GRID", "WEIGHTS", "NAMES"])
def test_a_metadata_value_of_an_array_subclass(trial: Any, action: str, entry: str) -> None:
    arrays = {
        "GRID": np.arange(6.0).reshape(3, 2).T, "WEIGHTS": np.arange(8.0)[::2],
        "NAMES": np.array(["a", "b"]),
    }  # fmt: skip
    value = acting_matrix(arrays[entry], lambda: ACTIONS[action](trial))
    attempt(lambda: _moxPY.moxSetMetaDataValue(trial, "TRIAL", entry, value))
    assert_agreement(trial)
    _moxPY.moxGetMetaData(trial)


def test_numbers_of_an_array_subclass_run_no_code_of_their_own(trial: Any) -> None:
    value = acting_matrix(np.arange(6.0).reshape(3, 2).T, lambda: _moxPY.moxClearMetaData(trial))
    append(trial, "TRIAL", "GRID", "Real", [[0.0] * 3] * 2)
    _moxPY.moxSetMetaDataValue(trial, "TRIAL", "GRID", value)
    values = _moxPY.moxGetMetaData(trial, "TRIAL", "GRID")["info"]["values"]
    assert values.tolist() == [[0.0, 1.0], [2.0, 3.0], [4.0, 5.0]]


@actions
def test_keys_that_meddle_when_they_are_compared(trial: Any, action: str) -> None:
    info = {
        acting_key(name, lambda: ACTIONS[action](trial)): value
        for name, value in (("format", "Integer"), ("values", [1, 2]))
    }
    attempt(lambda: _moxPY.moxAppendMetaData(trial, "TRIAL", "COUNTS", info))
    assert_agreement(trial)
    _moxPY.moxGetMetaData(trial)


def test_keys_that_empty_their_own_dictionary(trial: Any) -> None:
    info: dict[str, Any] = {}
    info[acting_key("values", info.clear)] = [1, 2]
    info["format"] = "Integer"
    attempt(lambda: _moxPY.moxAppendMetaData(trial, "TRIAL", "COUNTS", info))
    assert_agreement(trial)


HANDLE_CALLS: dict[str, tuple[Any, ...]] = {
    "moxRemovePoint": (0,), "moxSetPointLabel": (0, "new"), "moxSetPointType": (0, "force"),
    "moxSetPointValues": (0, np.ones((FRAMES, 3))), "moxClearPoints": (),
    "moxAppendPoint": ("marker", "NEW", np.ones((FRAMES, 3))), "moxSetPointNumber": (20,),
    "moxRemoveAnalog": (0,), "moxSetAnalogGain": (0, 1), "moxSetAnalogNumber": (9,),
    "moxAppendEvent": ("A", 1.0, "Left"), "moxSetEventId": ("LeftFoot Strike", 2),
    "moxSetMetaDataValue": ("TRIAL", "COUNTS", [1, 2, 3]), "moxRemoveMetaData": ("TRIAL",),
    "moxGetPoints": (), "moxGetAnalogs": (), "moxGetEventsValues": (), "moxGetMetaData": (),
}  # fmt: skip


@actions
@pytest.mark.parametrize(("function", "arguments"), list(HANDLE_CALLS.items()))
def test_a_handle_that_meddles_when_it_is_looked_at(
    trial: Any, action: str, function: str, arguments: tuple[Any, ...]
) -> None:
    handle = Handle(trial, lambda: ACTIONS[action](trial))
    attempt(lambda: getattr(_moxPY, function)(handle, *arguments))
    assert_agreement(trial)


class Index(int):
    def __index__(self) -> int:
        raise AssertionError("an int is taken as it is")

    __int__ = __float__ = __index__  # type: ignore[assignment]


class Real(float):
    def __float__(self) -> float:
        raise AssertionError("a float is taken as it is")


def test_subclasses_of_numbers_run_no_code_of_their_own(trial: Any) -> None:
    _moxPY.moxSetPointLabel(trial, Index(0), "new")
    _moxPY.moxSetAnalogScale(trial, Index(0), Real(0.5))
    _moxPY.moxAppendEvent(trial, "A", Real(1.5), "Left")
    _moxPY.moxSetMetaDataValue(trial, "TRIAL", "COUNTS", [Index(4), Index(5), Index(6)])
    _moxPY.moxSetMetaDataValue(trial, "TRIAL", "WEIGHT", Real(2.5))
    entries = _moxPY.moxGetMetaData(trial, "TRIAL")["children"]
    assert entries["COUNTS"]["info"]["values"].tolist() == [4, 5, 6]
    assert entries["WEIGHT"]["info"]["values"] == 2.5
    assert _moxPY.moxGetEvents(trial)[0]["LeftA"] == 1.5
