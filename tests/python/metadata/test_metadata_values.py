"""moxSetMetaDataValue: what is written, and what is refused."""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.metadata_entries import WAYS, add_entry, append, info_of, names_of, values_of, ways
from support.store_tree import snapshot

DIFFERENT_SHAPE = (
    "Impossible to write value(s) with a shape different than the one stored in the data attribute"
)
TEXT_INTO_NUMBERS = "Impossible to write text into a metadata entry of numbers"
TOO_LARGE = "Python int too large to convert to C long"
NUMBERS_INTO_TEXT = 'Impossible to write number(s) into a metadata entry of format "Char"'


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


# Entry -> a value that is accepted and what is read then.
NEW_VALUES: list[tuple[str, Any, Any]] = [
    ("COUNTS", [7, 8, 9], [7, 8, 9]),
    ("COUNTS", [7.9, -8.9, 1e9], [7, -8, 32767]),
    ("COUNTS", [True, False, True], [1, 0, 1]),
    ("COUNTS", np.array([7, 8, 9], dtype=np.uint8), [7, 8, 9]),
    ("COUNTS", np.array([7.5, 8.5, float("nan")]), [7, 8, 0]),
    ("COUNT", 9, 9),
    ("COUNT", 9.9, 9),
    ("COUNT", np.array(9), 9),
    ("COUNT", np.float64(9.9), 9),
    ("BYTES", [-1, 127], [-1, 127]),
    ("WEIGHTS", [1, 2, 3, 4], [1.0, 2.0, 3.0, 4.0]),
    ("WEIGHTS", np.arange(8.0)[::2], [0.0, 2.0, 4.0, 6.0]),
    ("WEIGHTS", np.arange(4.0)[::-1], [3.0, 2.0, 1.0, 0.0]),
    ("WEIGHTS", np.arange(4, dtype=">i2"), [0.0, 1.0, 2.0, 3.0]),
    ("WEIGHTS", np.array([True, False, True, True]), [1.0, 0.0, 1.0, 1.0]),
    ("WEIGHT", 0.1, float(np.float32(0.1))),
    ("WEIGHT", 3, 3.0),
    ("NAMES", ["a", "é"], ["a", "é"]),
    ("NAMES", [b"a", "b"], ["a", "b"]),
    ("NAMES", np.array(["foot", "a longer text"]), ["foot", "a longer text"]),
    ("NAMES", np.array([b"x", b"y"]), ["x", "y"]),
    ("NAME", "walk", "walk"),
    ("NAME", b"walk", "walk"),
    ("NAME", np.str_("walk"), "walk"),
    ("NAME", np.array("walk"), "walk"),
    ("GRID", [[9, 8, 7], [6, 5, 4]], [[9.0, 6.0], [8.0, 5.0], [7.0, 4.0]]),
    ("GRID", np.arange(6.0).reshape(2, 3), [[0.0, 3.0], [1.0, 4.0], [2.0, 5.0]]),
    ("GRID", np.arange(6.0).reshape(3, 2).T, [[0.0, 1.0], [2.0, 3.0], [4.0, 5.0]]),
    ("GRID", np.asfortranarray(np.arange(6.0).reshape(2, 3)), [[0.0, 3.0], [1.0, 4.0], [2.0, 5.0]]),
]


@ways
@pytest.mark.parametrize(("entry", "value", "read"), NEW_VALUES)
def test_a_value_replaces_the_former_one_and_keeps_format_and_dimensions(
    rich_trial: Any, way: str, entry: str, value: Any, read: Any
) -> None:
    before = info_of(rich_trial, "TRIAL", entry)
    names = names_of(rich_trial, "TRIAL")
    WAYS[way]("moxSetMetaDataValue", rich_trial, "TRIAL", entry, value)
    assert info_of(rich_trial, "TRIAL", entry) == before | {"values": read}
    assert names_of(rich_trial, "TRIAL") == names


def test_a_value_that_was_read_is_written_back_transposed(rich_trial: Any) -> None:
    before = snapshot(rich_trial)
    shown = _moxPY.moxGetMetaData(rich_trial, "TRIAL", "GRID")["info"]["values"]
    _moxPY.moxSetMetaDataValue(rich_trial, "TRIAL", "GRID", shown.T)
    assert snapshot(rich_trial) == before


REFUSED_VALUES: list[tuple[str, Any, type[Exception], str]] = [
    ("COUNTS", [1, 2], RuntimeError, DIFFERENT_SHAPE),
    ("COUNTS", [[1, 2, 3]], RuntimeError, DIFFERENT_SHAPE),
    ("COUNTS", 1, RuntimeError, DIFFERENT_SHAPE),
    ("COUNT", [1], RuntimeError, DIFFERENT_SHAPE),
    ("COUNT", np.array([1]), RuntimeError, DIFFERENT_SHAPE),
    ("NAME", ["a"], RuntimeError, DIFFERENT_SHAPE),
    ("GRID", np.zeros((3, 2)), RuntimeError, DIFFERENT_SHAPE),  # as it is shown
    ("GRID", np.zeros(6), RuntimeError, DIFFERENT_SHAPE),
    ("COUNTS", None, TypeError, "Unsupported data type"),
    ("COUNTS", {}, TypeError, "Unsupported data type"),
    ("COUNTS", (1, 2, 3), TypeError, "Unsupported data type"),
    ("COUNTS", [1, 2.0, 3], TypeError, "Unsupported data type"),
    ("COUNTS", [], TypeError, "Unsupported data type"),
    ("COUNTS", [1, 2, None], TypeError, "Unsupported data type"),
    ("COUNTS", np.array([1, 2, 3], dtype=object), TypeError, "Unsupported data type"),
    ("COUNTS", np.array([1, 2, 3j]), TypeError, "Unsupported data type"),
    ("COUNTS", np.zeros(3, dtype=np.float16), TypeError, "Unsupported data type"),
    ("COUNT", 1j, TypeError, "Unsupported data type"),
    ("COUNT", np.float32(1.0), TypeError, "Unsupported data type"),
    ("COUNT", np.int64(1), TypeError, "Unsupported data type"),
    ("COUNTS", ["a", "b", "c"], RuntimeError, TEXT_INTO_NUMBERS),
    ("COUNT", "7", RuntimeError, TEXT_INTO_NUMBERS),
    ("NAMES", [1, 2], RuntimeError, NUMBERS_INTO_TEXT),
    ("NAME", 7, RuntimeError, NUMBERS_INTO_TEXT),
    ("COUNTS", [1, 2, 2**31], OverflowError, TOO_LARGE),
    ("COUNTS", [1, 2, -(2**63)], OverflowError, TOO_LARGE),
    ("COUNTS", [1, 2, 2**15], OverflowError, TOO_LARGE),
    ("COUNTS", [-(2**15) - 1, 2, 3], OverflowError, TOO_LARGE),
    ("COUNTS", np.array([1, 2, 40000]), OverflowError, TOO_LARGE),
    ("COUNTS", np.array([1, 2, 40000], dtype=np.uint16), OverflowError, TOO_LARGE),
    ("COUNTS", np.array([1, 2, 2**64 - 1], dtype=np.uint64), OverflowError, TOO_LARGE),
    ("COUNTS", np.array([1, 2, 40000], dtype=">i4"), OverflowError, TOO_LARGE),
    ("COUNT", 2**15, OverflowError, TOO_LARGE),
    ("COUNT", np.array(2**15), OverflowError, TOO_LARGE),
    ("COUNT", 2**63, OverflowError, TOO_LARGE),
    ("WEIGHT", 2**63, OverflowError, TOO_LARGE),
    ("WEIGHTS", [1, 2, 3, 2**31], OverflowError, TOO_LARGE),
    ("BYTES", [0, 128], OverflowError, TOO_LARGE),
    ("BYTES", [-129, 0], OverflowError, TOO_LARGE),
    ("BYTES", np.array([0, 255], dtype=np.uint8), OverflowError, TOO_LARGE),
    ("GRID", [[1.0, 2.0, 3.0], [4.0]], ValueError,
     "The nested lists of the given value have different lengths"),
    ("GRID", [[1.0, 2.0, 3.0], [4.0, 5.0, [6.0]]], ValueError,
     "The nested lists of the given value have different lengths"),
    ("NAME", "\ud800", SystemError, "Internal error during UTF8 string extraction"),
    ("NAMES", ["a", "\udcff"], SystemError, "Internal error during UTF8 string extraction"),
]  # fmt: skip


@ways
@pytest.mark.parametrize(("entry", "value", "raised", "text"), REFUSED_VALUES)
def test_a_refused_value_leaves_everything_as_it_was(
    rich_trial: Any, way: str, entry: str, value: Any, raised: type[Exception], text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(WAYS[way], "moxSetMetaDataValue", rich_trial, "TRIAL", entry, value)
    assert failure == (raised, text)
    assert snapshot(rich_trial) == before


INTEGERS = ["int8", "uint8", "int16", "uint16", "int32", "uint32", "int64", "uint64"]


@pytest.mark.parametrize("given", INTEGERS)
@pytest.mark.parametrize("stored", INTEGERS)
def test_integers_are_kept_or_refused_in_entries_of_every_integer_type(
    acquisition: Any, stored: str, given: str
) -> None:
    add_entry(acquisition, "G", "E", stored, [2])
    limits, kept = np.iinfo(given), np.iinfo(stored)
    for number in (limits.min, limits.max):
        value = np.array([number, 1], dtype=given)
        before = snapshot(acquisition)
        if kept.min <= number <= kept.max:
            _moxPY.moxSetMetaDataValue(acquisition, "G", "E", value)
            assert values_of(acquisition, "G", "E") == [number, 1]
        else:
            failure = failure_of(_moxPY.moxSetMetaDataValue, acquisition, "G", "E", value)
            assert failure == (OverflowError, TOO_LARGE)
            assert snapshot(acquisition) == before


@pytest.mark.parametrize("number", [2**31, 2**40, 2**63 - 1, -(2**31) - 1, 2**63, 10**30])
def test_a_single_integer_beyond_a_wider_entry_is_refused(acquisition: Any, number: int) -> None:
    before = snapshot(acquisition)
    failure = failure_of(_moxPY.moxSetMetaDataValue, acquisition, "ANALOG", "BITS", number)
    assert failure == (OverflowError, TOO_LARGE)
    assert snapshot(acquisition) == before


def test_a_single_integer_may_have_64_bits_where_the_entry_has(acquisition: Any) -> None:
    add_entry(acquisition, "G", "E", "int64", None, [0])
    _moxPY.moxSetMetaDataValue(acquisition, "G", "E", 2**63 - 1)
    assert values_of(acquisition, "G", "E") == 2**63 - 1


@pytest.mark.parametrize("value", [2**40, np.array(2**40)])
def test_a_real_entry_takes_every_integer_that_can_be_given(rich_trial: Any, value: Any) -> None:
    _moxPY.moxSetMetaDataValue(rich_trial, "TRIAL", "WEIGHT", value)
    assert values_of(rich_trial, "TRIAL", "WEIGHT") == 2.0**40


def test_an_entry_of_all_metadata_is_named_by_a_path_without_slash(acquisition: Any) -> None:
    _moxPY.moxSetMetaDataValue(acquisition, "DeviceType", "Other")
    exported = _moxPY.moxGetMetaData(acquisition)["children"]["DeviceType"]
    assert exported["info"]["values"] == "Other"


def test_a_path_may_lead_through_groups(acquisition: Any) -> None:
    append(acquisition, "OUTER/INNER", "E", "Integer", 3)
    _moxPY.moxSetMetaDataValue(acquisition, "OUTER/INNER/E", 4)
    assert values_of(acquisition, "OUTER/INNER", "E") == 4
