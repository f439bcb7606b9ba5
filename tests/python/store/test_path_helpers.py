"""Groups by path, and sets that are deleted and moved."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.store_tree import Type, attribute, node, snapshot


@pytest.fixture
def store() -> Any:
    handle = _moxPY.new_data_store()
    probe.create_group(handle, "Format/Data/Markers")
    probe.create_group(handle, "Format/Data/Angles")
    probe.create_set(handle, "Format/Data/Markers/LASI", Type.FLOAT64, [3, 1, 2])
    probe.fill_set(handle, "Format/Data/Markers/LASI", "double", [1, 2, 3, 4, 5, 6])
    probe.create_text_attribute(handle, "Format/Data/Markers/LASI", "Label", "LASI")
    return handle


@pytest.mark.parametrize(
    "components",
    [("Format/Data/Markers",), ("Format", "Data/Markers"), ("Format", "Data", "Markers")],
)
def test_a_group_is_retrieved_by_its_components(store: Any, components: tuple[str, ...]):
    assert probe.retrieve_group(store, *components) == "Markers"


@pytest.mark.parametrize(
    "components", [("Format/Events",), ("Format", "Events"), ("Format", "Data", "Powers")]
)
def test_a_missing_group_is_named_by_its_path(store: Any, components: tuple[str, ...]):
    before = snapshot(store)
    path = "/".join(components)
    assert failure_of(probe.retrieve_group, store, *components) == (
        RuntimeError,
        f"Impossible to retrieve group with path : '{path}'",
    )
    assert snapshot(store) == before


def test_a_set_is_no_group(store: Any):
    assert failure_of(probe.retrieve_group, store, "Format/Data/Markers/LASI") == (
        RuntimeError,
        "Impossible to retrieve group with path : 'Format/Data/Markers/LASI'",
    )


def test_a_missing_group_is_created_with_those_above_it(store: Any):
    assert probe.retrieve_or_create_group(store, "Devices/ForcePlate/FP0") == "FP0"
    assert probe.list_groups(store, "Devices/ForcePlate") == ["FP0"]


def test_a_group_is_created_once(store: Any):
    probe.retrieve_or_create_group(store, "Devices")
    probe.create_group(store, "Devices/kept")
    assert probe.retrieve_or_create_group(store, "Devices") == "Devices"
    assert probe.list_groups(store, "") == ["Format", "Devices"]
    assert probe.list_groups(store, "Devices") == ["kept"]


def test_a_set_is_deleted_from_its_group(store: Any):
    probe.delete_set(store, "Format/Data/Markers", "Format/Data/Markers/LASI")
    assert probe.list_sets(store, "Format/Data/Markers") == []


def test_a_set_that_the_group_lacks_is_named(store: Any):
    before = snapshot(store)
    assert failure_of(
        probe.delete_set, store, "Format/Data/Angles", "Format/Data/Markers/LASI"
    ) == (RuntimeError, "Impossible to delete set with path : 'LASI'")
    assert snapshot(store) == before


def test_a_moved_set_keeps_values_and_attributes(store: Any):
    before = node(store, "Format/Data/Markers/LASI")["values"].tolist()
    probe.move_set(store, "Format/Data/Angles", "Format/Data/Markers", "LASI", "LHip")
    assert probe.list_sets(store, "Format/Data/Markers") == []
    assert probe.list_sets(store, "Format/Data/Angles") == ["LHip"]
    assert node(store, "Format/Data/Angles/LHip")["values"].tolist() == before
    assert attribute(store, "Format/Data/Angles/LHip", "Label") == (Type.STRING, [], ["LASI"])


def test_a_set_is_renamed_in_its_group(store: Any):
    probe.move_set(store, "Format/Data/Markers", "Format/Data/Markers", "LASI", "RASI")
    assert probe.list_sets(store, "Format/Data/Markers") == ["RASI"]


def test_a_set_is_not_moved_onto_another(store: Any):
    probe.create_set(store, "Format/Data/Angles/LASI", Type.FLOAT64, [3, 1, 2])
    before = snapshot(store)
    raised, text = failure_of(
        probe.move_set, store, "Format/Data/Angles", "Format/Data/Markers", "LASI", "LASI"
    )
    assert (raised, text) == (
        RuntimeError,
        "Impossible to move set 'LASI' : the name 'LASI' is taken",
    )
    assert snapshot(store) == before
