"""Metadata that are assigned what they are stay as they are."""

from __future__ import annotations

import math
import tempfile
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from support.lab_group import GROUP, lab_trial
from support.metadata_entries import NATIVE_OF_TYPE, TYPE_NUMBERS, add_entry
from support.sample_table import SAMPLES
from support.small_trials import KINDS
from support.store_tree import snapshot

FindSample = Callable[[str], Path]
PATH = f"Format/Metadata/{GROUP}"


def written(trial: Trial) -> bytes:
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "written.c3d")
        try:
            _moxPY.moxWriteAcquisition(trial, str(path))
        except RuntimeError as error:  # not all trials of the tests have a rate
            return str(error).encode()
        return path.read_bytes()


def assign_all_to_themselves(trial: Trial) -> None:
    for group in trial.metadata.values():
        for name in group:
            group[name] = group[name]


def stored_as(trial: Trial, element: str, shape: list[int], values: list[Any]) -> None:
    """The entry LAB:X of any type of the store."""
    if element == "uint64":
        add_entry(trial, GROUP, "X", element, shape)
        trial.metadata[GROUP]["X"] = np.array(values, dtype=object).reshape(shape)
    else:
        add_entry(trial, GROUP, "X", element, shape, values)


@pytest.fixture
def trial() -> Trial:
    return lab_trial()


@pytest.mark.parametrize("kind", KINDS)
def test_assigning_each_value_to_itself_changes_nothing(kind: str, tmp_path: Path) -> None:
    trial = Trial.of(KINDS[kind](tmp_path))
    content, before = written(trial), snapshot(trial)
    assign_all_to_themselves(trial)
    assert snapshot(trial) == before
    for name in trial.metadata:
        trial.metadata[name] = trial.metadata[name]
        assert snapshot(trial) == before
        trial.metadata[name] = dict(trial.metadata[name])
        assert snapshot(trial) == before
    assert written(trial) == content


@pytest.mark.parametrize("name", [sample.name for sample in SAMPLES])
def test_in_samples_assigning_each_value_to_itself_changes_nothing(
    name: str, sample: FindSample
) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    content, before = written(trial), snapshot(trial)
    assign_all_to_themselves(trial)
    assert snapshot(trial) == before
    assert written(trial) == content


@pytest.mark.parametrize("name", [sample.name for sample in SAMPLES])
def test_in_samples_values_are_those_of_the_functions(name: str, sample: FindSample) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    tree = _moxPY.moxGetMetaData(trial)["children"]
    assert tree.pop("DeviceType")["children"] == 0.0  # in no group
    assert list(trial.metadata) == list(tree)
    for group, inner in tree.items():
        entries = inner["children"] or {}
        assert list(trial.metadata[group]) == list(entries)
        for entry_name, described in entries.items():
            info, shown = described["info"], trial.metadata[group].entry(entry_name)
            assert (shown.type, list(shown.shape)) == (info["format"], info["dims"].tolist())
            if shown.type == "Char":
                assert np.array(shown.value, dtype=object).shape == shown.shape or 0 in shown.shape
                flat = np.ravel(np.array(shown.value, dtype=object)).tolist()
                count = shown.shape[0] if shown.shape else 1
                assert flat[:count] == np.ravel(np.array(info["values"], dtype=object)).tolist()
            elif math.prod(shown.shape) == 1:
                assert type(shown.value) in (int, float)
                assert shown.value == info["values"]
            else:
                assert shown.value.shape == shown.shape
                np.testing.assert_array_equal(shown.value, info["values"].T)


STORED: list[tuple[str, list[int], list[Any]]] = [
    ("int8", [], [-5]),
    ("int8", [1], [7]),
    ("int8", [2, 1], [1, 2]),
    ("int16", [1, 1], [-3]),
    ("int32", [], [70000]),
    ("int32", [2], [70000, -(2**31)]),
    ("int64", [], [2**62]),
    ("uint64", [], [2**64 - 1]),
    ("uint64", [2], [2**64 - 1, 0]),
    ("float32", [1], [0.1]),
    ("float32", [0, 3], []),
    ("float32", [], [-0.0]),
    ("float64", [], [0.1]),
    ("float64", [2], [1e300, math.nan]),
    ("float32", [], [math.nan]),
    ("float32", [], [math.inf]),
    ("string", [1], ["x"]),
    ("string", [1, 1, 2], ["x", ""]),
    ("string", [0, 3], []),
    ("string", [2, 0, 3], []),
    ("string", [], ["grün"]),
]


assert set(NATIVE_OF_TYPE) >= {element for element, _, _ in STORED}


@pytest.mark.parametrize(("element", "shape", "values"), STORED)
def test_values_of_every_type_and_shape_stay_as_they_are(
    trial: Trial, element: str, shape: list[int], values: list[Any]
) -> None:
    stored_as(trial, element, shape, values)
    group, before = trial.metadata[GROUP], snapshot(trial)
    assert group.entry("X").shape == tuple(shape)
    assert np.ravel(np.array(group["X"], dtype=object)).tolist() == pytest.approx(
        np.array(values, dtype=np.float32 if element == "float32" else object).tolist(), nan_ok=True
    ) or element == "string"  # fmt: skip
    group["X"] = group["X"]
    assert snapshot(trial) == before
    trial.metadata[GROUP] = {name: group[name] for name in group}
    assert snapshot(trial) == before


@pytest.mark.parametrize("element", ["uint8", "uint16", "uint32", "boolean"])
@pytest.mark.parametrize("shape", [[], [1], [2]])
def test_types_that_the_functions_cannot_read_stay_as_they_are(
    trial: Trial, element: str, shape: list[int]
) -> None:
    add_entry(trial, GROUP, "X", element, shape)
    group, before = trial.metadata[GROUP], snapshot(trial)
    assert group.entry("X").type == ("Byte" if element in ("uint8", "boolean") else "Integer")
    group["X"] = group["X"]
    assert snapshot(trial) == before


def test_types_with_a_second_number_keep_it(trial: Trial) -> None:
    probe.create_attribute(trial, PATH, "X", TYPE_NUMBERS["int16"] + 100, [2])
    before = snapshot(trial)
    trial.metadata[GROUP]["X"] = [0, 0]
    assert snapshot(trial) == before


def test_the_bits_of_a_nan_stay(trial: Trial) -> None:
    stored_as(trial, "float32", [], [0.0])
    odd = np.array([0x7FA12345], dtype=np.uint32).view(np.float32)
    trial.metadata[GROUP]["X"] = odd.reshape(())
    before = snapshot(trial)
    assert math.isnan(trial.metadata[GROUP]["X"])
    trial.metadata[GROUP]["X"] = trial.metadata[GROUP]["X"]
    assert snapshot(trial) == before


def test_texts_that_are_no_unicode_stay(trial: Trial) -> None:
    trial.metadata[GROUP]["OPERATOR"] = "caf\udce9"
    assert trial.metadata[GROUP]["OPERATOR"] == "caf\udce9"
    assert _moxPY.moxGetMetaData(trial, GROUP, "OPERATOR")["info"]["values"] == "caf\udce9"
