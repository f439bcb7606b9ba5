"""Metadata of a trial as nested mappings of values."""

from __future__ import annotations

import dataclasses
import math
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import ezc3d
import numpy as np
import pytest
from _moxPY import trial as calls
from moxPY.trial import Entry, Trial
from support.independent_readers import read_with_ezc3d
from support.lab_group import GROUP, lab_trial
from support.metadata_entries import add_entry, info_of
from support.small_trials import read_trial
from support.store_tree import snapshot
from writing.written import source_in, written_again

FindSample = Callable[[str], Path]


def entry(value: Any, type: str, shape: tuple[int, ...]) -> Entry:
    return Entry(value=value, type=type, shape=shape)


@pytest.fixture
def trial() -> Trial:
    return lab_trial()


NEW = {
    "COUNT": entry(3, "Integer", ()),
    "HEIGHT": entry(2.5, "Real", ()),
    "OPERATOR": entry("Ann", "Char", ()),
    "ROOMS": entry(np.array([1, 2, 3]), "Integer", (3,)),
    "OFFSETS": entry(np.array([[0.5, 1.5, 2.5], [3.5, 4.5, 5.5]]), "Real", (2, 3)),
    "NAMES": entry(["x", "yz"], "Char", (2,)),
    "TABLE": entry([["a", "b", "c"], ["d", "e", "ff"]], "Char", (2, 3)),
    "NOTHING": entry([], "Char", (0,)),
    "BYTES": entry(np.array([1, -2, 3]), "Byte", (3,)),
}


def test_editing_an_entry_lists_no_others(trial: Trial, monkeypatch: pytest.MonkeyPatch) -> None:
    def listed(*_: Any) -> Any:
        pytest.fail("groups or entries were listed")

    for name in ("metadata_groups", "metadata_entries"):
        monkeypatch.setattr(calls, name, listed)
    trial.metadata[GROUP]["COUNT"] = 4
    trial.metadata[GROUP]["ADDED"] = "new"
    group = trial.metadata[GROUP]
    assert (group["COUNT"], group["ADDED"], "ADDED" in group, "ADDE" in group) == (
        4, "new", True, False,
    )  # fmt: skip
    assert (GROUP in trial.metadata, GROUP[:-1] in trial.metadata) == (True, False)
    del group["ADDED"]
    assert "ADDED" not in group


@pytest.mark.parametrize("name", [None, 3, ("a",), "", "/", f"{GROUP}/", "\0", "\ud800", "A\0B"])
def test_no_group_and_no_entry_is_called_so(trial: Trial, name: Any) -> None:
    assert name not in trial.metadata
    assert name not in trial.metadata[GROUP]
    with pytest.raises(KeyError):
        trial.metadata[name]


def test_a_dictionary_makes_a_group(trial: Trial) -> None:
    group = trial.metadata[GROUP]
    assert list(group) == list(NEW)
    assert {name: group.entry(name) for name in group} == NEW
    for name, expected in NEW.items():
        assert type(group[name]) is type(expected.value)
    assert group["ROOMS"].dtype == np.int16
    assert group["OFFSETS"].dtype == np.float32
    assert group["BYTES"].dtype == np.int8
    for name in ("ROOMS", "OFFSETS", "BYTES"):
        with pytest.raises(ValueError, match="read-only"):
            group[name][:] = 0


def test_the_functions_show_the_same(trial: Trial) -> None:
    assert info_of(trial, GROUP, "OFFSETS") == {
        "values": np.array(NEW["OFFSETS"].value).T.tolist(), "format": "Real", "dims": [2, 3],
    }  # fmt: skip
    assert info_of(trial, GROUP, "OPERATOR") == {"values": "Ann", "format": "Char", "dims": []}
    _moxPY.moxSetMetaDataValue(trial, GROUP, "COUNT", 4)
    assert trial.metadata[GROUP]["COUNT"] == 4
    _moxPY.moxAppendMetaData(trial, "OTHER", "X", {"format": "Char", "values": "text"})
    assert trial.metadata["OTHER"]["X"] == "text"
    group = trial.metadata["OTHER"]
    _moxPY.moxRemoveMetaData(trial, "OTHER")
    assert "OTHER" not in trial.metadata
    with pytest.raises(KeyError, match="no metadata group 'OTHER'"):
        group["X"]
    with pytest.raises(KeyError, match="no metadata group 'OTHER'"):
        group["X"] = "made anew"
    assert "OTHER" not in trial.metadata
    assert repr(group) == "<metadata group: no metadata group 'OTHER'>"


def test_what_is_written_is_read_again(trial: Trial, tmp_path: Path) -> None:
    again = Trial.of(written_again(trial, tmp_path))
    assert again.metadata[GROUP] == trial.metadata[GROUP]
    assert {name: again.metadata[GROUP].entry(name) for name in NEW} == NEW
    parameters = read_with_ezc3d(tmp_path / "written.c3d")
    assert parameters is not None


# Other values.

ACCEPTED: list[tuple[str, Any, Entry]] = [
    ("COUNT", 32767, entry(32767, "Integer", ())),
    ("COUNT", -32768.0, entry(-32768, "Integer", ())),
    ("COUNT", True, entry(1, "Integer", ())),
    ("COUNT", np.uint8(200), entry(200, "Integer", ())),
    ("COUNT", [5], entry(5, "Integer", (1,))),
    ("COUNT", np.array([[1], [2]]), entry(np.array([[1], [2]]), "Integer", (2, 1))),
    ("ROOMS", 5, entry(5, "Integer", ())),
    ("ROOMS", (4, 5.0), entry(np.array([4, 5]), "Integer", (2,))),
    ("ROOMS", range(4), entry(np.arange(4), "Integer", (4,))),
    ("ROOMS", [], entry(np.array([]), "Integer", (0,))),
    ("ROOMS", np.ma.array([1, 2]), entry(np.array([1, 2]), "Integer", (2,))),
    ("HEIGHT", 3, entry(3.0, "Real", ())),
    ("HEIGHT", 0.1, entry(float(np.float32(0.1)), "Real", ())),
    ("HEIGHT", math.inf, entry(math.inf, "Real", ())),
    ("HEIGHT", 3.4028235e38, entry(float(np.finfo(np.float32).max), "Real", ())),
    ("HEIGHT", np.float32(0.5), entry(0.5, "Real", ())),
    ("OFFSETS", [1, 2.5], entry(np.array([1.0, 2.5]), "Real", (2,))),
    ("OFFSETS", np.array([1, 2], dtype=">i4"), entry(np.array([1.0, 2.0]), "Real", (2,))),
    ("OFFSETS", np.zeros((0, 3)), entry(np.zeros((0, 3)), "Real", (0, 3))),
    ("OFFSETS", np.arange(6.0).reshape(2, 3).T,
     entry(np.arange(6.0).reshape(2, 3).T, "Real", (3, 2))),
    ("OPERATOR", "", entry("", "Char", ())),
    ("OPERATOR", np.str_("Eve"), entry("Eve", "Char", ())),
    ("OPERATOR", ["Ann", "Eve"], entry(["Ann", "Eve"], "Char", (2,))),
    ("NAMES", "x", entry("x", "Char", ())),
    ("NAMES", np.array([["a"], ["bc"]]), entry([["a"], ["bc"]], "Char", (2, 1))),
    ("TABLE", [], entry([], "Char", (0,))),
    ("BYTES", [127, -128], entry(np.array([127, -128]), "Byte", (2,))),
    ("NEW", 5, entry(5, "Integer", ())),
    ("NEW", True, entry(1, "Integer", ())),
    ("NEW", np.array([True, False]), entry(np.array([1, 0]), "Integer", (2,))),
    ("NEW", np.array([1, 2], dtype=np.int8), entry(np.array([1, 2]), "Integer", (2,))),
    ("NEW", np.uint64(5), entry(5, "Integer", ())),
    ("NEW", 5.0, entry(5.0, "Real", ())),
    ("NEW", [1, 2.5], entry(np.array([1.0, 2.5]), "Real", (2,))),
    ("NEW", np.array([1e-3]), entry(float(np.float32(1e-3)), "Real", (1,))),
    ("NEW", "text", entry("text", "Char", ())),
    ("NEW", [["a", "b"]], entry([["a", "b"]], "Char", (1, 2))),
]  # fmt: skip


@pytest.mark.parametrize(("name", "value", "expected"), ACCEPTED)
def test_values_keep_the_type_and_bring_their_shape(
    trial: Trial, name: str, value: Any, expected: Entry, tmp_path: Path
) -> None:
    group = trial.metadata[GROUP]
    others = {other: group.entry(other) for other in group if other != name}
    order = list(dict.fromkeys([*group, name]))
    group[name] = value
    assert group.entry(name) == expected
    assert type(group[name]) is type(expected.value)
    assert list(group) == order
    assert {other: group.entry(other) for other in group if other != name} == others
    again = Trial.of(written_again(trial, tmp_path)).metadata[GROUP].entry(name)
    assert again == expected


def test_a_plain_number_keeps_the_dimensions_of_the_one_before(trial: Trial) -> None:
    trial.metadata[GROUP]["HEIGHT"] = [[2.5]]
    assert trial.metadata[GROUP].entry("HEIGHT") == entry(2.5, "Real", (1, 1))
    trial.metadata[GROUP]["HEIGHT"] = 3
    assert trial.metadata[GROUP].entry("HEIGHT") == entry(3.0, "Real", (1, 1))


REFUSED: list[tuple[str, Any, type[Exception], str]] = [
    ("COUNT", 32768, OverflowError,
     "the entry 'LAB:COUNT': 32768 is not between -32768 and 32767"),
    ("COUNT", -(10**30), OverflowError, "is not between"),
    ("COUNT", np.array([1, 70000]), OverflowError, "70000 is not between"),
    ("COUNT", math.inf, OverflowError, "infinity is no whole number"),
    ("COUNT", 1e300, OverflowError, "is not between"),
    ("COUNT", 1.5, TypeError, "the entry 'LAB:COUNT': expected whole numbers, got 1.5"),
    ("COUNT", [1, math.nan], TypeError, "expected whole numbers, got nan"),
    ("COUNT", np.ma.array([1, 2], mask=[0, 1]), TypeError, "expected whole numbers, got nan"),
    ("COUNT", "5", TypeError, "the entry 'LAB:COUNT': expected a number, got str"),
    ("COUNT", None, TypeError, "expected a number, got NoneType"),
    ("COUNT", b"5", TypeError, "expected a number, got bytes"),
    ("COUNT", {1}, TypeError, "expected a number, got set"),
    ("COUNT", {"A": 1}, TypeError, "expected a number, got dict"),
    ("COUNT", 1j, TypeError, "expected a number, got complex"),
    ("COUNT", np.array([1j]), TypeError, "expected numbers or text, got complex128"),
    ("COUNT", np.array(["2020"], dtype="M8[s]"), TypeError, "expected numbers or text"),
    ("COUNT", [[1, 2], [3]], ValueError, "the entry 'LAB:COUNT': lists of unequal lengths"),
    ("COUNT", np.zeros((1,) * 8, int), ValueError, "at most 7 dimensions are possible, got 8"),
    ("HEIGHT", 1e39, OverflowError, "beyond the largest"),
    ("HEIGHT", -(10**400), OverflowError, "beyond the largest"),
    ("HEIGHT", np.array([1e300]), OverflowError, "beyond the largest"),
    ("HEIGHT", "2.5", TypeError, "expected a number, got str"),
    ("OPERATOR", 5, TypeError, "the entry 'LAB:OPERATOR': expected text, got int"),
    ("OPERATOR", b"Ann", TypeError, "expected text, got bytes"),
    ("OPERATOR", ["a", 1], TypeError, "expected text, got int"),
    ("OPERATOR", np.array([1.0]), TypeError, "expected text, got float"),
    ("OPERATOR", "a\0b", ValueError, "NUL"),
    ("OPERATOR", ["a", ["b"]], ValueError, "lists of unequal lengths"),
    ("OPERATOR", "\ud800", UnicodeEncodeError, "surrogates"),
    ("BYTES", [128, 1], OverflowError, "128 is not between -128 and 127"),
    ("BYTES", 5, ValueError, "an entry of type Byte holds a list, not a single value"),
    ("NEW", 40000, OverflowError, "the entry 'LAB:NEW': 40000 is not between"),
    ("NEW", 1e39, OverflowError, "beyond the largest"),
    ("NEW", [1, "a"], TypeError, "the entry 'LAB:NEW': text beside numbers"),
    ("NEW", None, TypeError, "expected a number, got NoneType"),
    ("NEW", [[1, 2], [3]], ValueError, "lists of unequal lengths"),
    ("", 5, ValueError, "a name is not empty"),
    ("A/B", 5, ValueError, "has no '/'"),
    ("A\\B", 5, ValueError, "has no '/'"),
]  # fmt: skip


@pytest.mark.parametrize(("name", "value", "kind", "text"), REFUSED)
def test_what_an_entry_cannot_hold_is_refused(
    trial: Trial, name: str, value: Any, kind: type[Exception], text: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(kind) as failure:
        trial.metadata[GROUP][name] = value
    assert type(failure.value) is kind
    assert text in str(failure.value)
    assert snapshot(trial) == before


def test_names_are_texts(trial: Trial) -> None:
    with pytest.raises(TypeError, match="a name of metadata is a str, not int"):
        trial.metadata[GROUP][3] = 5  # type: ignore[index]
    with pytest.raises(TypeError, match="a name of metadata is a str, not int"):
        trial.metadata[3] = {}  # type: ignore[index]
    assert 3 not in trial.metadata
    assert 3 not in trial.metadata[GROUP]
    with pytest.raises(KeyError, match="no entry '3'"):
        trial.metadata[GROUP][3]  # type: ignore[index]


# Groups.


def test_a_dictionary_replaces_a_group(trial: Trial) -> None:
    groups = list(trial.metadata)
    trial.metadata[GROUP] = {"HEIGHT": 3, "OPERATOR": 7, "BYTES": 200, "NEW": ["a"], "COUNT": 0.5}
    assert list(trial.metadata) == groups
    group = trial.metadata[GROUP]
    assert {name: group.entry(name) for name in group} == {
        "HEIGHT": entry(3.0, "Real", ()),  # an entry keeps a type that fits
        "OPERATOR": entry(7, "Integer", ()),
        "BYTES": entry(200, "Integer", ()),
        "NEW": entry(["a"], "Char", (1,)),
        "COUNT": entry(0.5, "Real", ()),
    }
    trial.metadata[GROUP] = {}
    assert len(trial.metadata[GROUP]) == 0
    assert list(trial.metadata) == groups


def test_a_group_is_a_copy_of_another_one_with_its_types(trial: Trial) -> None:
    trial.metadata["COPY"] = trial.metadata[GROUP]
    copy = trial.metadata["COPY"]
    assert copy == trial.metadata[GROUP]
    assert {name: copy.entry(name) for name in copy} == NEW
    copy["COUNT"] = 4
    assert trial.metadata[GROUP]["COUNT"] == 3
    assert copy != trial.metadata[GROUP]


@pytest.mark.parametrize("name", [GROUP, "OTHER"])
@pytest.mark.parametrize(
    ("entries", "kind", "text"),
    [
        ({"COUNT": 4, "X": 40000}, OverflowError, ":X': 40000 is not between"),
        ({"COUNT": 4, "X": [1, "a"]}, TypeError, "text beside numbers"),
        ({"COUNT": 4, "X/Y": 1}, ValueError, "has no '/'"),
        ({"COUNT": 4, "X": {"Y": 1}}, TypeError, "expected a number, got dict"),
        ([("COUNT", 4)], TypeError, "expected a dictionary of entries, got list"),
        (5, TypeError, "expected a dictionary of entries, got int"),
    ],
)
def test_a_group_is_assigned_as_a_whole_or_not_at_all(
    trial: Trial, name: str, entries: Any, kind: type[Exception], text: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(kind) as failure:
        trial.metadata[name] = entries
    assert text in str(failure.value)
    assert snapshot(trial) == before


@pytest.mark.parametrize("name", ["a\0b", "caf\udce9"])
def test_names_that_no_file_can_have(trial: Trial, name: str) -> None:
    before, group = snapshot(trial), trial.metadata[GROUP]
    assert name not in group
    assert name not in trial.metadata
    with pytest.raises(KeyError):
        group[name]
    with pytest.raises(ValueError, match="a name of metadata is Unicode without NUL character"):
        group[name] = 5
    with pytest.raises(ValueError, match="a name of metadata is Unicode without NUL character"):
        trial.metadata[name] = {}
    assert snapshot(trial) == before


def test_an_entry_keeps_whatever_name_it_has(trial: Trial) -> None:
    add_entry(trial, GROUP, "A\\B", "int16", [], [5])
    before = snapshot(trial)
    trial.metadata[GROUP]["A\\B"] = trial.metadata[GROUP]["A\\B"]
    assert snapshot(trial) == before


@pytest.mark.parametrize("name", ["", "A/B", "A\\B"])
def test_groups_without_a_name_are_refused(trial: Trial, name: str) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match="a name is not empty"):
        trial.metadata[name] = {"A": 1}
    assert snapshot(trial) == before


def test_removal(trial: Trial) -> None:
    del trial.metadata[GROUP]["COUNT"]
    assert list(trial.metadata[GROUP]) == list(NEW)[1:]
    assert trial.metadata[GROUP].pop("HEIGHT") == 2.5
    group = trial.metadata[GROUP]
    del trial.metadata[GROUP]
    assert GROUP not in trial.metadata
    with pytest.raises(KeyError, match="no metadata group 'LAB'"):
        len(group)
    trial.metadata.clear()
    assert list(trial.metadata) == []
    assert list(_moxPY.moxGetMetaData(trial)["children"]) == ["DeviceType"]


def test_what_is_missing_is_named_with_what_is_near(trial: Trial) -> None:
    before = snapshot(trial)
    group = trial.metadata[GROUP]
    for missing in (lambda: group["HIGHT"], lambda: group.entry("HIGHT")):
        with pytest.raises(KeyError) as failure:
            missing()
        text = "no entry 'HIGHT' in the metadata group 'LAB'; nearest: HEIGHT"
        assert failure.value.args == (text,)
    with pytest.raises(KeyError, match=r"no entry 'height' .*; nearest: HEIGHT"):
        del group["height"]
    with pytest.raises(KeyError, match="no metadata group 'LBA'; nearest: LAB"):
        trial.metadata["LBA"]
    with pytest.raises(KeyError, match="no metadata group 'lab'; nearest: LAB"):
        del trial.metadata["lab"]
    with pytest.raises(KeyError):
        del trial.metadata[""]
    for path in ("LAB/", "/LAB", "LAB/COUNT", ""):
        assert path not in trial.metadata
        assert trial.metadata.get(path) is None
    assert group.get("/COUNT") is None
    assert snapshot(trial) == before


def test_the_look_of_it(trial: Trial) -> None:
    group = trial.metadata[GROUP]
    assert repr(group) == (
        "<metadata group LAB (9): COUNT, HEIGHT, OPERATOR, ROOMS, OFFSETS, …, BYTES>"
    )
    assert repr(trial.metadata) == f"<metadata ({len(trial.metadata)}): " + (
        f"{', '.join(trial.metadata)}>"
    )
    assert repr(group.entry("HEIGHT")) == "<Real (): 2.5>"
    assert repr(group.entry("ROOMS")) == "<Integer (3,): [1, 2, 3]>"
    group["ROOMS"] = np.arange(1000)
    assert len(repr(group.entry("ROOMS"))) < 100
    assert group._ipython_key_completions_() == list(group)
    assert trial.metadata._ipython_key_completions_() == list(trial.metadata)
    assert (group.name, group.description) == (GROUP, "")


def test_an_entry_does_not_change(trial: Trial) -> None:
    taken = trial.metadata[GROUP].entry("ROOMS")
    with pytest.raises(dataclasses.FrozenInstanceError):
        taken.value = 5  # type: ignore[misc]
    trial.metadata[GROUP]["ROOMS"] = [4, 5, 6]
    assert taken.value.tolist() == [1, 2, 3]
    assert taken != trial.metadata[GROUP].entry("ROOMS")
    assert taken != 3


# What a file says of entries.


def test_descriptions_and_locks_of_a_file(tmp_path: Path) -> None:
    trial = Trial.of(read_trial(tmp_path))
    groups, entries = (_records(trial, name) for name in ("Groups", "Parameters"))
    for name, description in zip(groups["Stored"], groups["Description"], strict=True):
        assert trial.metadata[name].description == description
    rows = zip(*(entries[name] for name in ("Group", "Stored", "Description", "Locked")),
               strict=True)  # fmt: skip
    for owner, name, description, locked in rows:
        shown = trial.metadata[groups["Stored"][owner]].entry(name)
        assert (shown.description, shown.locked) == (description, bool(locked))


def _records(trial: Trial, name: str) -> dict[str, list[Any]]:
    attributes = probe.tree(trial)["groups"]["Format"]["groups"]["Header"]["groups"][name]
    return {key: np.ravel(values).tolist()
            for key, (_, _, values) in attributes["attributes"].items()}  # fmt: skip


@pytest.mark.parametrize("name", ["Eb015pi.c3d", "TYPE-2.C3D", "2198928.c3d"])
def test_in_samples_descriptions_are_those_of_another_reader(name: str, sample: FindSample) -> None:
    path = sample(name)
    trial = Trial.of(_moxPY.moxReadAcquisition(str(path)))
    parameters = ezc3d.c3d(str(path))["parameters"]
    for group in parameters.keys() & trial.metadata.keys():
        for entry_name in trial.metadata[group]:
            theirs, ours = parameters[group][entry_name], trial.metadata[group].entry(entry_name)
            assert ours.description == theirs["description"].rstrip()
            assert ours.locked == bool(theirs["is_locked"])
        assert trial.metadata[group].description == parameters[group]["__METADATA__"]["DESCRIPTION"]


def test_a_description_outlives_another_value(tmp_path: Path) -> None:
    trial = Trial.of(read_trial(tmp_path))
    point = trial.metadata["POINT"]
    before = point.entry("UNITS")
    point["UNITS"] = ["m"]
    changed = point.entry("UNITS")
    assert (changed.description, changed.locked) == (before.description, before.locked)
    reread = Trial.of(written_again(trial, tmp_path, source_in(tmp_path)))
    again = reread.metadata["POINT"].entry("UNITS")
    assert (again.description, again.locked) == (before.description, before.locked)


def test_a_closed_trial_says_so(trial: Trial) -> None:
    group = trial.metadata[GROUP]
    trial.close()
    for use in (lambda: group["COUNT"], lambda: list(trial.metadata), lambda: len(group)):
        with pytest.raises(ValueError, match="the trial was closed"):
            use()
