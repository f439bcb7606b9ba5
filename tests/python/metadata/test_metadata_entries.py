"""What every modifier of an entry does: all metadata returned, missing entries named."""

from __future__ import annotations

from typing import Any

import _moxPY
import pytest
from support.failures import failure_of
from support.metadata_entries import WAYS, ways
from support.readings import same_reading
from support.store_tree import attribute, snapshot


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


@pytest.mark.parametrize("path", ["NOPE/NOPE", "TRIAL/NOPE", "NOPE", ""])
@pytest.mark.parametrize("text", ["new", "", "é"])
def test_descriptions_are_ignored_whatever_they_are_of(
    any_trial: Any, path: str, text: str
) -> None:
    before = snapshot(any_trial)
    group, _, entry = path.rpartition("/")
    for returned in (
        _moxPY.moxSetMetaDataDescription(any_trial, path, text),
        _moxPY.moxSetMetaDataDescription(any_trial, group, entry, text),
    ):
        assert same_reading(returned, _moxPY.moxGetMetaData(any_trial))
    assert snapshot(any_trial) == before


MODIFIERS: dict[str, Any] = {
    "moxSetMetaDataValue": [9, 9, 9], "moxSetMetaDataFormat": "Char",
    "moxSetMetaDataDimensions": [4], "moxSetMetaDataDescription": "text",
}  # fmt: skip


@ways
@pytest.mark.parametrize(("function", "value"), list(MODIFIERS.items()))
def test_all_metadata_are_returned(rich_trial: Any, way: str, function: str, value: Any) -> None:
    returned = WAYS[way](function, rich_trial, "TRIAL", "COUNTS", value)
    assert same_reading(returned, _moxPY.moxGetMetaData(rich_trial))


@ways
@pytest.mark.parametrize("function", [f for f in MODIFIERS if f != "moxSetMetaDataDescription"])
@pytest.mark.parametrize(
    ("group", "entry", "text"),
    [
        ("NOPE", "E", "Impossible to retrieve group with path : 'Metadata/NOPE' does not exist"),
        ("ANALOG", "N", "Unable to find the metadata entry 'N' in the group 'Metadata/ANALOG'"),
        ("ANALOG", "", "Unable to find the metadata entry '' in the group 'Metadata/ANALOG'"),
    ],
)
def test_a_missing_group_or_entry_is_named(
    acquisition: Any, way: str, function: str, group: str, entry: str, text: str
) -> None:
    before = snapshot(acquisition)
    value = MODIFIERS[function]
    failure = failure_of(WAYS[way], function, acquisition, group, entry, value)
    assert failure == (RuntimeError, text)
    assert snapshot(acquisition) == before


def test_stored_values_have_the_new_type_and_extent(rich_trial: Any) -> None:
    _moxPY.moxSetMetaDataFormat(rich_trial, "TRIAL", "COUNTS", "Byte")
    _moxPY.moxSetMetaDataDimensions(rich_trial, "TRIAL", "COUNTS", [2, 2])
    kind, shape, values = attribute(rich_trial, "Format/Metadata/TRIAL", "COUNTS")
    assert (kind, shape, values) == (2, [4], [1, 2, 3, 0])
