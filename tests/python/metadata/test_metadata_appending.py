"""moxAppendMetaData and moxSetMetaData: new entries, entries made anew, what is refused."""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.metadata_entries import append, info_of, names_of, values_of
from support.readings import same_reading
from support.store_tree import snapshot

STORED_TYPES = {"Integer": np.int16, "Byte": np.int8, "Real": np.float32}

NOT_A_TYPE = (
    'Given struct field "format" needs to correspond to a real type '
    '{"Integer", "Char", "Real", "Byte"}'
)
TOO_LARGE = "Python int too large to convert to C long"
NOT_READABLE = "Trying to read an unsupported data type for a data set"
TEXT_INTO_NUMBERS = "Impossible to write text into a metadata entry of numbers"
NUMBERS_INTO_TEXT = 'Impossible to write number(s) into a metadata entry of format "Char"'


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


@pytest.mark.parametrize("group", ["NEW", "TRIAL"])
def test_a_new_entry_is_the_last_of_its_group(any_trial: Any, group: str) -> None:
    names = names_of(any_trial, group) if group in names_of(any_trial) else []
    append(any_trial, group, "ENTRY", "Real", [1.0, 2.0])
    assert names_of(any_trial, group) == [*names, "ENTRY"]
    assert info_of(any_trial, group, "ENTRY") == {
        "values": [1.0, 2.0], "format": "Real", "dims": [2],
    }  # fmt: skip


@pytest.mark.parametrize("kind", STORED_TYPES)
def test_numbers_are_stored_in_the_element_type_of_the_format(acquisition: Any, kind: str) -> None:
    append(acquisition, "G", "E", kind, [1, 2, 3])
    values = _moxPY.moxGetMetaData(acquisition, "G", "E")["info"]["values"]
    assert values.dtype == STORED_TYPES[kind]
    assert values.tolist() == [1, 2, 3]
    assert info_of(acquisition, "G", "E")["format"] == kind


@pytest.mark.parametrize(
    ("kind", "given", "kept"),
    [
        ("Integer", 7, 7), ("Integer", 2.9, 2), ("Integer", -2.9, -2), ("Integer", True, 1),
        ("Integer", 32767, 32767), ("Integer", -32768, -32768), ("Integer", 1e9, 32767),
        ("Integer", float("nan"), 0), ("Integer", float("inf"), 32767),
        ("Real", 7, 7.0), ("Real", True, 1.0),
        ("Real", 0.1, float(np.float32(0.1))), ("Real", 1e300, float("inf")),
        ("Char", "hip", "hip"), ("Char", "", ""), ("Char", "é%{}", "é%{}"),
    ],
)  # fmt: skip
def test_a_single_value_has_no_dimensions(
    acquisition: Any, kind: str, given: Any, kept: Any
) -> None:
    append(acquisition, "G", "E", kind, given)
    assert info_of(acquisition, "G", "E") == {"values": kept, "format": kind, "dims": []}


@pytest.mark.parametrize(
    ("kind", "given", "kept", "dimensions"),
    [
        ("Byte", [127, 0, -128], [127, 0, -128], [3]),
        ("Byte", [127.9, 128.0, -1e300], [127, 127, -128], [3]),
        ("Integer", [1.5, -1.5], [1, -1], [2]),
        ("Integer", [True, False], [1, 0], [2]),
        ("Real", [[1, 2, 3], [4, 5, 6]], [[1, 4], [2, 5], [3, 6]], [2, 3]),
        ("Real", [[[1.0], [2.0]]], [[[1.0], [2.0]]], [1, 2, 1]),
        ("Real", [1.5], 1.5, [1]),
        ("Char", ["hip", "", "é"], ["hip", "", "é"], [3]),
        ("Char", ["hip"], ["hip"], [1]),
        ("Char", [["a", "b"], ["c", "d"], ["e", "f"]], ["a", "b", "c"], [3, 2]),
    ],
)
def test_lists_keep_their_nesting(
    acquisition: Any, kind: str, given: Any, kept: Any, dimensions: list[int]
) -> None:
    append(acquisition, "G", "E", kind, given)
    assert info_of(acquisition, "G", "E") == {"values": kept, "format": kind, "dims": dimensions}


def test_an_entry_that_there_is_is_made_anew_at_the_end(rich_trial: Any) -> None:
    names = names_of(rich_trial, "TRIAL")
    append(rich_trial, "TRIAL", "COUNTS", "Char", "now a text")
    assert names_of(rich_trial, "TRIAL") == [*(n for n in names if n != "COUNTS"), "COUNTS"]
    assert info_of(rich_trial, "TRIAL", "COUNTS") == {
        "values": "now a text", "format": "Char", "dims": [],
    }  # fmt: skip


def test_an_entry_of_all_metadata(acquisition: Any) -> None:
    append(acquisition, "", "VERSION", "Integer", 3)
    assert list(_moxPY.moxGetMetaData(acquisition)["children"]) == [
        "DeviceType", "VERSION", "ANALOG",
    ]  # fmt: skip


def test_a_group_in_a_group_is_made(acquisition: Any) -> None:
    append(acquisition, "OUTER/INNER", "E", "Integer", 3)
    assert values_of(acquisition, "OUTER/INNER", "E") == 3


def test_a_slash_at_the_end_names_the_same_group(rich_trial: Any) -> None:
    append(rich_trial, "TRIAL/", "E", "Integer", 3)
    assert values_of(rich_trial, "TRIAL", "E") == 3


def test_other_members_of_the_dictionary_are_passed_over(acquisition: Any) -> None:
    info = {"numdims": 1, "values": [1, 2], "unit": None, "format": "Integer", "more": {"a": []}}
    _moxPY.moxAppendMetaData(acquisition, "G", "E", info)
    assert values_of(acquisition, "G", "E") == [1, 2]


def test_the_record_of_the_info_function_is_taken(acquisition: Any) -> None:
    record = _moxPY.moxMetaDataInfo("Real", [0.5, 1.5], 3)
    _moxPY.moxAppendMetaData(acquisition, "G", "E", record)
    assert values_of(acquisition, "G", "E") == [0.5, 1.5]


@pytest.mark.parametrize("function", ["moxAppendMetaData", "moxSetMetaData"])
def test_all_metadata_are_returned(rich_trial: Any, function: str) -> None:
    info = {"format": "Integer", "values": [9, 8]}
    returned = getattr(_moxPY, function)(rich_trial, "TRIAL", "COUNT", info)
    assert returned["children"]["TRIAL"]["children"]["COUNT"]["info"]["values"].tolist() == [9, 8]
    assert same_reading(returned, _moxPY.moxGetMetaData(rich_trial))


# An info dictionary, and what is said of it.
REFUSED_INFOS: list[tuple[Any, type[Exception], str]] = [
    ({}, RuntimeError, 'Given struct has no field "format"'),
    ({"values": [1]}, RuntimeError, 'Given struct has no field "format"'),
    ([], RuntimeError, 'Given struct has no field "format"'),
    ("format", RuntimeError, 'Given struct has no field "format"'),
    (None, RuntimeError, 'Given struct has no field "format"'),
    (7, RuntimeError, 'Given struct has no field "format"'),
    ({"Format": "Real"}, RuntimeError, 'Given struct has no field "format"'),
    ({"format": 4}, RuntimeError,
     'Given struct field "format" needs to have a string value'),
    ({"format": None, "values": [1.0]}, RuntimeError,
     'Given struct field "format" needs to have a string value'),
    ({"format": ["Real"], "values": [1.0]}, RuntimeError,
     'Given struct field "format" needs to have a string value'),
    ({"format": "Float", "values": [1.0]}, RuntimeError, NOT_A_TYPE),
    ({"format": "real"}, RuntimeError, NOT_A_TYPE),
    ({"format": ""}, RuntimeError, NOT_A_TYPE),
    ({"format": "Real"}, RuntimeError, 'Given struct has no field "values"'),
    ({"format": "Real", "Values": [1.0]}, RuntimeError, 'Given struct has no field "values"'),
    ({"format": "Real", "values": (1.0, 2.0)}, TypeError, "Unsupported data type: 'tuple'"),
    ({"format": "Real", "values": np.zeros(2)}, TypeError,
     "Unsupported data type: 'numpy.ndarray'"),
    ({"format": "Char", "values": b"text"}, TypeError, "Unsupported data type: 'bytes'"),
    ({"format": "Real", "values": [1.0, 1j]}, TypeError, "Unsupported data type: 'complex'"),
    ({"format": "Real", "values": [1.0], 3: 4}, TypeError, "Unsupported data type: 'int'"),
    ((), TypeError, "Unsupported data type: 'tuple'"),
    ({"format": "Integer", "values": 2**31}, OverflowError, TOO_LARGE),
    ({"format": "Real", "values": [1, 2**31]}, OverflowError, TOO_LARGE),
    ({"format": "Integer", "values": 2**15}, OverflowError, TOO_LARGE),
    ({"format": "Integer", "values": [1, -(2**15) - 1]}, OverflowError, TOO_LARGE),
    ({"format": "Integer", "values": [[1, 2], [70000, 4]]}, OverflowError, TOO_LARGE),
    ({"format": "Byte", "values": [1, 128]}, OverflowError, TOO_LARGE),
    ({"format": "Byte", "values": [-129, 1]}, OverflowError, TOO_LARGE),
    ({"format": "Real", "values": ["a"]}, RuntimeError, TEXT_INTO_NUMBERS),
    ({"format": "Integer", "values": "12"}, RuntimeError, TEXT_INTO_NUMBERS),
    ({"format": "Char", "values": [1, 2]}, RuntimeError, NUMBERS_INTO_TEXT),
    ({"format": "Char", "values": 1.5}, RuntimeError, NUMBERS_INTO_TEXT),
    ({"format": "Byte", "values": 1}, SystemError, NOT_READABLE),
    ({"format": "Byte", "values": [1]}, SystemError, NOT_READABLE),
    ({"format": "Byte", "values": [[1]]}, SystemError, NOT_READABLE),
    ({"format": "Real", "values": []}, SystemError, "Unexpected Python type to write"),
    ({"format": "Real", "values": [1, 2.5]}, SystemError, "Unexpected Python type to write"),
    ({"format": "Char", "values": ["a", 1]}, SystemError, "Unexpected Python type to write"),
    ({"format": "Real", "values": None}, SystemError, "Unexpected Python type to write"),
    ({"format": "Real", "values": {}}, SystemError, "Unexpected Python type to write"),
    ({"format": "Real", "values": [[1.0, 2.0], [3.0]]}, ValueError,
     "The nested lists of the given value have different lengths"),
    ({"format": "Real", "values": [[1.0], 2.0]}, ValueError,
     "The nested lists of the given value have different lengths"),
    ({"format": "Real", "values": [[[[[[[[1.0]]]]]]]]}, RuntimeError,
     "The values of a metadata entry can have at most 7 dimensions, current has : 8"),
    ({"format": "Char", "values": "a\0b"}, SystemError,
     "Internal error during UTF8 string extraction"),
    ({"format": "Char", "values": ["a", "\0"]}, SystemError,
     "Internal error during UTF8 string extraction"),
]  # fmt: skip


@pytest.mark.parametrize("entry", ["COUNTS", "NEW"])
@pytest.mark.parametrize(("info", "raised", "text"), REFUSED_INFOS)
def test_a_refused_dictionary_leaves_everything_as_it_was(
    rich_trial: Any, entry: str, info: Any, raised: type[Exception], text: str
) -> None:
    before = snapshot(rich_trial)
    for group in ("TRIAL", "NEW GROUP"):
        failure = failure_of(_moxPY.moxAppendMetaData, rich_trial, group, entry, info)
        assert failure == (raised, text)
        assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("info", "raised", "text"), REFUSED_INFOS)
def test_setting_an_entry_refuses_the_same_dictionaries(
    rich_trial: Any, info: Any, raised: type[Exception], text: str
) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetMetaData, rich_trial, "TRIAL", "COUNTS", info)
    assert failure == (raised, text)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize(("group", "entry"), [("NOPE", "E"), ("TRIAL", "NOPE"), ("ANALOG", "")])
@pytest.mark.parametrize("info", [{"format": "Real", "values": [1.0]}, None])
def test_an_entry_that_is_missing_cannot_be_set(
    any_trial: Any, group: str, entry: str, info: Any
) -> None:
    before = snapshot(any_trial)
    text = "Unable to set metadata : it doesn't exists in given acquisition"
    failure = failure_of(_moxPY.moxSetMetaData, any_trial, group, entry, info)
    assert failure == (RuntimeError, text)
    assert snapshot(any_trial) == before


def test_setting_an_entry_makes_it_anew(rich_trial: Any) -> None:
    info = {"format": "Char", "values": ["one", "two"]}
    _moxPY.moxSetMetaData(rich_trial, "TRIAL", "WEIGHT", info)
    assert info_of(rich_trial, "TRIAL", "WEIGHT") == {
        "values": ["one", "two"], "format": "Char", "dims": [2],
    }  # fmt: skip


@pytest.mark.parametrize(
    ("entry", "text"),
    [
        ("", "The name of a metadata entry cannot be empty"),
        ("a/b", "The name of a metadata entry cannot contain '/' or '\\', current is : 'a/b'"),
        ("b\\", "The name of a metadata entry cannot contain '/' or '\\', current is : 'b\\'"),
        ("/", "The name of a metadata entry cannot contain '/' or '\\', current is : '/'"),
    ],
)
def test_a_text_that_cannot_name_an_entry_is_refused(any_trial: Any, entry: str, text: str) -> None:
    before = snapshot(any_trial)
    for group in ("TRIAL", "NEW"):
        assert failure_of(append, any_trial, group, entry, "Real", [1.0]) == (RuntimeError, text)
        assert snapshot(any_trial) == before


@pytest.mark.parametrize("group", ["/", "//", "A//B", "/A"])
def test_a_path_with_an_empty_component_names_no_group(any_trial: Any, group: str) -> None:
    before = snapshot(any_trial)
    raised, _ = failure_of(append, any_trial, group, "E", "Real", [1.0])
    assert raised is RuntimeError
    assert snapshot(any_trial) == before
