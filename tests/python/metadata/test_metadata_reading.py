"""Metadata as nested dictionaries: groups, entries, format names, shapes."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.metadata_entries import FORMAT_OF_TYPE, TYPE_NUMBERS, add_entry, append, info_of
from support.readings import same_reading
from support.store_tree import snapshot

READERS = ["moxGetMetaData", "moxFindMetaData"]
readers = pytest.mark.parametrize("reader", READERS)


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


def test_the_metadata_of_a_fresh_acquisition(acquisition: Any) -> None:
    exported = _moxPY.moxGetMetaData(acquisition)
    assert list(exported) == ["unlocked", "description", "info", "children"]
    assert (exported["unlocked"], exported["description"], exported["info"]) == (1.0, "", 0.0)
    assert list(exported["children"]) == ["DeviceType", "ANALOG"]
    device = exported["children"]["DeviceType"]
    assert list(device) == ["unlocked", "children", "description", "info"]
    assert (device["unlocked"], device["children"], device["description"]) == (1.0, 0.0, "")
    assert device["info"]["values"] == "Metadata"
    assert list(exported["children"]["ANALOG"]["children"]) == ["BITS"]


def test_an_entry_shows_values_format_and_dimensions_in_this_order(acquisition: Any) -> None:
    info = _moxPY.moxGetMetaData(acquisition, "ANALOG", "BITS")["info"]
    assert list(info) == ["values", "format", "dims"]
    assert (info["values"], info["format"]) == (12, "Integer")
    assert (info["dims"].dtype, info["dims"].shape) == (np.int64, (0,))


@readers
def test_a_group_is_part_of_the_whole(rich_trial: Any, reader: str) -> None:
    whole = _moxPY.moxGetMetaData(rich_trial)
    group = getattr(_moxPY, reader)(rich_trial, "TRIAL")
    assert same_reading(group, whole["children"]["TRIAL"])


@readers
def test_an_entry_is_part_of_its_group(rich_trial: Any, reader: str) -> None:
    group = _moxPY.moxGetMetaData(rich_trial, "TRIAL")["children"]
    for entry, expected in group.items():
        assert same_reading(getattr(_moxPY, reader)(rich_trial, "TRIAL", entry), expected)


@readers
def test_an_empty_entry_name_means_the_group(rich_trial: Any, reader: str) -> None:
    group = getattr(_moxPY, reader)(rich_trial, "TRIAL", "")
    assert same_reading(group, _moxPY.moxGetMetaData(rich_trial, "TRIAL"))


@readers
def test_of_an_entry_that_is_a_path_the_last_component_counts(rich_trial: Any, reader: str) -> None:
    entry = getattr(_moxPY, reader)(rich_trial, "TRIAL", "any/where/COUNTS")
    assert same_reading(entry, _moxPY.moxGetMetaData(rich_trial, "TRIAL", "COUNTS"))


def test_an_empty_group_has_no_children(acquisition: Any) -> None:
    probe.create_group(acquisition, "Format/Metadata/EMPTY")
    children = _moxPY.moxGetMetaData(acquisition, "EMPTY")["children"]
    assert (type(children), children) == (float, 0.0)


def test_groups_in_groups_come_after_entries(acquisition: Any) -> None:
    probe.create_group(acquisition, "Format/Metadata/OUTER/INNER")
    append(acquisition, "OUTER/INNER", "DEEP", "Integer", 1)
    append(acquisition, "OUTER", "FLAT", "Integer", 2)
    children = _moxPY.moxGetMetaData(acquisition, "OUTER")["children"]
    assert list(children) == ["FLAT", "INNER"]
    assert children["INNER"]["children"]["DEEP"]["info"]["values"] == 1
    inner = _moxPY.moxGetMetaData(acquisition, "OUTER/INNER", "DEEP")
    assert same_reading(inner, children["INNER"]["children"]["DEEP"])


def test_a_group_replaces_an_entry_of_its_name(acquisition: Any) -> None:
    append(acquisition, "OUTER", "SAME", "Integer", 1)
    probe.create_group(acquisition, "Format/Metadata/OUTER/SAME")
    children = _moxPY.moxGetMetaData(acquisition, "OUTER")["children"]
    assert list(children) == ["SAME"]
    assert "dims" not in children["SAME"]
    assert children["SAME"]["info"] == 0.0


@pytest.mark.parametrize(("element", "name"), list(FORMAT_OF_TYPE.items()))
def test_every_element_type_has_a_format_name(acquisition: Any, element: str, name: str) -> None:
    add_entry(acquisition, "G", "E", element, [2])
    assert info_of(acquisition, "G", "E")["format"] == name


@pytest.mark.parametrize(("element", "name"), list(FORMAT_OF_TYPE.items()))
def test_element_types_above_100_have_a_format_name_too(
    acquisition: Any, element: str, name: str
) -> None:
    probe.create_group(acquisition, "Format/Metadata/G")
    number = TYPE_NUMBERS[element] + 100
    probe.create_attribute(acquisition, "Format/Metadata/G", "E", number, [2])
    assert info_of(acquisition, "G", "E")["format"] == name.replace("integer", "Integer")


def test_matrices_are_shown_transposed_and_their_dimensions_as_stored(acquisition: Any) -> None:
    add_entry(acquisition, "G", "E", "int16", [2, 3], [1, 2, 3, 4, 5, 6])
    assert info_of(acquisition, "G", "E") == {
        "values": [[1, 4], [2, 5], [3, 6]], "format": "Integer", "dims": [2, 3],
    }  # fmt: skip


def test_dimensions_of_extent_1_stay(acquisition: Any) -> None:
    add_entry(acquisition, "G", "E", "float32", [1, 3], [1.0, 2.0, 3.0])
    assert info_of(acquisition, "G", "E")["values"] == [[1.0], [2.0], [3.0]]


def test_one_element_is_a_scalar_whatever_its_shape(acquisition: Any) -> None:
    add_entry(acquisition, "G", "E", "int16", [1, 1], [7])
    assert info_of(acquisition, "G", "E") == {"values": 7, "format": "Integer", "dims": [1, 1]}


def test_of_texts_the_first_dimension_is_shown(acquisition: Any) -> None:
    add_entry(acquisition, "G", "E", "string", [2, 3], list("abcdef"))
    assert info_of(acquisition, "G", "E") == {
        "values": ["a", "b"], "format": "Char", "dims": [2, 3],
    }  # fmt: skip


@pytest.mark.parametrize("element", ["int8", "uint8", "uint16", "uint32", "uint64"])
def test_a_single_small_or_unsigned_number_cannot_be_shown(acquisition: Any, element: str) -> None:
    add_entry(acquisition, "G", "E", element, [1])
    text = "Trying to read an unsupported data type for a data set"
    assert failure_of(_moxPY.moxGetMetaData, acquisition) == (SystemError, text)


@readers
@pytest.mark.parametrize("group", ["NOPE", "analog", "ANALOG/X", "..", "../Data", "/", "/ANALOG"])
def test_a_missing_group_is_named(any_trial: Any, reader: str, group: str) -> None:
    before = snapshot(any_trial)
    text = f"Impossible to retrieve group with path : 'Metadata/{group}' does not exist"
    assert failure_of(getattr(_moxPY, reader), any_trial, group) == (RuntimeError, text)
    assert failure_of(getattr(_moxPY, reader), any_trial, group, "X") == (RuntimeError, text)
    assert snapshot(any_trial) == before


@readers
@pytest.mark.parametrize("entry", ["NOPE", "bits", " BITS"])
def test_a_missing_entry_is_named_with_its_group(acquisition: Any, reader: str, entry: str) -> None:
    text = f"Unable to find the metadata entry '{entry}' in the group 'Metadata/ANALOG'"
    failure = failure_of(getattr(_moxPY, reader), acquisition, "ANALOG", entry)
    assert failure == (RuntimeError, text)


@pytest.mark.parametrize(
    ("function", "arguments"),
    [("moxGetMetaData", ()), ("moxGetMetaData", ("G",)), ("moxFindMetaData", ("G", "E")),
     ("moxClearMetaData", ()), ("moxRemoveMetaData", ("G",)),
     ("moxAppendMetaData", ("G", "E", {"format": "Real", "values": 1.0})),
     ("moxSetMetaData", ("G", "E", {"format": "Real", "values": 1.0})),
     ("moxSetMetaDataValue", ("G/E", 1.0)), ("moxSetMetaDataFormat", ("G", "E", "Real")),
     ("moxSetMetaDataDimensions", ("G", "E", [1])),
     ("moxSetMetaDataDescription", ("G", "E", "text"))],
)  # fmt: skip
def test_an_acquisition_without_metadata(
    acquisition: Any, function: str, arguments: tuple[Any, ...]
) -> None:
    probe.delete_group(acquisition, "Format/Metadata")
    before = snapshot(acquisition)
    text = "Impossible to retrieve group with path : 'Format/Metadata' does not exist"
    failure = failure_of(getattr(_moxPY, function), acquisition, *arguments)
    assert failure == (RuntimeError, text)
    assert snapshot(acquisition) == before


def test_a_set_as_a_dictionary_ends_with_its_values(acquisition: Any) -> None:
    probe.create_set(acquisition, "S", 11, [2, 1, 3])
    probe.fill_set(acquisition, "S", "double", [1, 2, 3, 4, 5, 6])
    probe.create_text_attribute(acquisition, "S", "Label", "é")
    probe.create_attribute(acquisition, "S", "Grid", 4, [2, 2])
    probe.write_attribute_vector(acquisition, "S", "Grid", "int16", [1, 2, 3, 4])
    shown = _moxPY.metadata_from_data_set(probe.data_set_proxy(acquisition, "S"))
    assert list(shown) == ["Label", "Grid", "Values"]
    assert shown["Label"] == "é"
    assert shown["Grid"].tolist() == [[1, 3], [2, 4]]
    assert shown["Values"].shape == (3, 1, 2)
    assert shown["Values"][:, 0, :].tolist() == [[1, 4], [2, 5], [3, 6]]


@pytest.mark.parametrize("value", [None, 1, "S"])
def test_what_is_no_set_is_refused(value: Any) -> None:
    text = "in method 'metadata_from_data_set', argument 1 of type 'strata::data_set const'"
    assert failure_of(_moxPY.metadata_from_data_set, value) == (TypeError, text)
