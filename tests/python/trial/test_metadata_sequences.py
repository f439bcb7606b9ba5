"""Any sequence of changes of metadata is that of dictionaries."""

from __future__ import annotations

import tempfile
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from moxPY.trial import Trial
from support.metadata_entries import info_of

SINGLES = st.floats(width=32, allow_nan=False)
TEXTS = st.text("aZ09 ä_-", min_size=1, max_size=9).map(str.strip).filter(bool)
WORDS = st.integers(-32768, 32767)
ELEMENTS = [WORDS, SINGLES, TEXTS]
VALUES = st.one_of(
    *ELEMENTS,
    *(st.lists(element, min_size=1, max_size=4) for element in ELEMENTS),
    *(st.lists(st.tuples(element, element).map(list), min_size=1, max_size=3)
      for element in ELEMENTS),
)  # fmt: skip
NAMES = st.sampled_from(["A", "B", "C"])
STEPS = st.one_of(
    st.tuples(st.just("set"), NAMES, NAMES, VALUES),
    st.tuples(st.just("function"), NAMES, NAMES, VALUES),
    st.tuples(st.just("delete"), NAMES, NAMES, st.none()),
    st.tuples(st.just("group"), NAMES, NAMES, st.dictionaries(NAMES, VALUES)),
    st.tuples(st.just("drop"), NAMES, NAMES, st.none()),
)

Model = dict[str, dict[str, Any]]


def type_of(value: Any) -> str:
    item = np.ravel(np.array(value, dtype=object))[0]
    return {int: "Integer", float: "Real", str: "Char"}[type(item)]


def fits(value: Any, kind: str) -> bool:
    """Whether an entry of a type holds a value."""
    if type_of(value) == kind or (type_of(value), kind) == ("Integer", "Real"):
        return True
    if (type_of(value), kind) != ("Real", "Integer"):
        return False
    numbers = np.ravel(np.array(value, dtype=float))
    return bool(np.all(np.abs(numbers) <= 32767) and np.all(numbers == np.round(numbers)))


def take_step(trial: Trial, model: Model, step: tuple[str, str, str, Any]) -> None:
    """Changes both; `model` holds a type and a value of each entry."""
    action, group, name, value = step
    metadata = trial.metadata
    if action == "group":
        old = model.get(group, {})
        model[group] = {
            key: (old[key][0] if key in old and fits(item, old[key][0]) else type_of(item), item)
            for key, item in value.items()
        }
        metadata[group] = value
    elif action == "function":
        info = {"format": type_of(value), "values": value}
        _moxPY.moxAppendMetaData(trial, group, name, info)
        model.setdefault(group, {})[name] = (type_of(value), value)
    elif group not in model:
        with pytest.raises(KeyError):
            metadata[group]
    elif action == "drop":
        del metadata[group], model[group]
    elif action == "delete":
        assert (metadata[group].pop(name, None) is None) == (name not in model[group])
        model[group].pop(name, None)
    else:
        kind = model[group][name][0] if name in model[group] else type_of(value)
        if not fits(value, kind):
            with pytest.raises((TypeError, OverflowError)):
                metadata[group][name] = value
        else:
            metadata[group][name] = value
            model[group][name] = (kind, value)


def require_same(trial: Trial, model: Model) -> None:
    mine = {group: entries for group, entries in trial.metadata.items() if group in "ABC"}
    assert mine.keys() == model.keys()
    for group, entries in model.items():
        assert mine[group].keys() == entries.keys()
        for name, (kind, value) in entries.items():
            assert mine[group].entry(name).type == kind
            shown = np.array(mine[group][name], dtype=object).ravel().tolist()
            assert shown == np.array(value, dtype=object).ravel().tolist()
            assert info_of(trial, group, name)["format"] == kind


@settings(max_examples=60, deadline=None, derandomize=True, database=None)
@given(steps=st.lists(STEPS, max_size=25))
def test_any_sequence_of_changes_is_that_of_dictionaries(steps: Any) -> None:
    trial, model = Trial.new(frames=1), {}  # type: tuple[Trial, Model]
    for step in steps:
        take_step(trial, model, step)
        require_same(trial, model)
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "written.c3d")
        _moxPY.moxWriteAcquisition(trial, str(path))
        require_same(Trial.of(_moxPY.moxReadAcquisition(str(path))), model)
