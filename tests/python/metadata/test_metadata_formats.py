"""moxSetMetaDataFormat: conversions, entries that keep their type, unknown formats."""

from __future__ import annotations

from typing import Any

import _moxPY
import pytest
from support.failures import failure_of
from support.metadata_entries import WAYS, add_entry, append, info_of, values_of, ways
from support.small_trials import ENTRIES
from support.store_tree import snapshot

NO_KEY = (
    "invalid map<K, T> key. Exception thrown while it should not. "
    "Please contact the support and report this problem."
)
NOT_READABLE = "Trying to read an unsupported data type for a data set"


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


# Entry, new format, what is read then.
CONVERSIONS: list[tuple[str, str, Any]] = [
    ("COUNTS", "Integer", [1, 2, 3]), ("COUNTS", "Byte", [1, 2, 3]),
    ("COUNTS", "Real", [1.0, 2.0, 3.0]), ("COUNTS", "Char", ["1", "2", "3"]),
    ("COUNT", "Real", 7.0), ("COUNT", "Char", "7"),
    ("BYTES", "Integer", [4, 5]), ("BYTES", "Real", [4.0, 5.0]), ("BYTES", "Char", ["4", "5"]),
    ("WEIGHTS", "Integer", [0, 1, 2, 3]), ("WEIGHTS", "Byte", [0, 1, 2, 3]),
    ("WEIGHTS", "Char", ["0.5", "1.5", "2.5", "3.5"]), ("WEIGHT", "Integer", 72),
    ("WEIGHT", "Char", "72.5"), ("NAMES", "Real", [0.0, 0.0]), ("NAMES", "Integer", [0, 0]),
    ("NAME", "Char", "gait"), ("NAME", "Integer", 0),
    ("GRID", "Integer", [[1, 4], [2, 5], [3, 6]]), ("GRID", "Char", ["1", "2"]),
]  # fmt: skip


@ways
@pytest.mark.parametrize(("entry", "kind", "read"), CONVERSIONS)
def test_a_format_converts_the_values_and_keeps_the_dimensions(
    rich_trial: Any, way: str, entry: str, kind: str, read: Any
) -> None:
    before = info_of(rich_trial, "TRIAL", entry)
    WAYS[way]("moxSetMetaDataFormat", rich_trial, "TRIAL", entry, kind)
    assert info_of(rich_trial, "TRIAL", entry) == before | {"values": read, "format": kind}


@pytest.mark.parametrize(
    ("kind", "given", "target", "read"),
    [
        ("Real", [1e9, -1e9, float("nan")], "Integer", [32767, -32768, 0]),
        ("Real", [200.0, -200.0, 1.9], "Byte", [127, -128, 1]),
        ("Integer", [300, -300, 5], "Byte", [127, -128, 5]),
        ("Real", [0.1, 1e-7, float("inf")], "Char", ["0.1", "1e-07", "inf"]),
        ("Char", ["12 cm", " -3.75", "x1"], "Real", [12.0, -3.75, 0.0]),
        ("Char", ["12.9", "99999", ""], "Integer", [12, 32767, 0]),
        ("Char", ["+5", "1e2", "0x10"], "Byte", [5, 100, 0]),
    ],
)
def test_what_a_conversion_does_to_values_out_of_range(
    acquisition: Any, kind: str, given: Any, target: str, read: Any
) -> None:
    append(acquisition, "G", "E", kind, given)
    _moxPY.moxSetMetaDataFormat(acquisition, "G", "E", target)
    assert values_of(acquisition, "G", "E") == read


@pytest.mark.parametrize("value", [0.1, 1 / 3, 16777217.0, 1e-30, -3.4e38])
def test_singles_become_texts_that_read_back(acquisition: Any, value: float) -> None:
    append(acquisition, "G", "E", "Real", [value, 0.0])
    single = values_of(acquisition, "G", "E")[0]
    for kind in ("Char", "Real"):
        _moxPY.moxSetMetaDataFormat(acquisition, "G", "E", kind)
    assert values_of(acquisition, "G", "E")[0] == single


@ways
@pytest.mark.parametrize("kind", ["real", "Float", "", "UNKNOWN", "integer"])
@pytest.mark.parametrize("entry", ENTRIES)
def test_an_unknown_format_is_refused(rich_trial: Any, way: str, entry: str, kind: str) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(WAYS[way], "moxSetMetaDataFormat", rich_trial, "TRIAL", entry, kind)
    assert failure == (RuntimeError, NO_KEY)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize("kind", ["Integer", "Byte", "Real", "Char"])
def test_the_format_of_an_entry_of_32_bits_stays(acquisition: Any, kind: str) -> None:
    before = snapshot(acquisition)
    _moxPY.moxSetMetaDataFormat(acquisition, "ANALOG", "BITS", kind)
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("element", ["int32", "int64", "float64"])
def test_the_format_of_an_entry_of_another_element_type_stays(
    acquisition: Any, element: str
) -> None:
    add_entry(acquisition, "G", "E", element, [2], [1, 2])
    before = snapshot(acquisition)
    _moxPY.moxSetMetaDataFormat(acquisition, "G", "E", "Char")
    assert snapshot(acquisition) == before


@pytest.mark.parametrize("entry", ["COUNT", "WEIGHT", "NAME"])
def test_one_value_cannot_become_a_byte(rich_trial: Any, entry: str) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetMetaDataFormat, rich_trial, "TRIAL", entry, "Byte")
    assert failure == (SystemError, NOT_READABLE)
    assert snapshot(rich_trial) == before
