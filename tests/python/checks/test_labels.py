"""Labels that are missing, doubled, or there for one side only."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from checks.made_trials import clean_trial, the_one
from moxPY.trial import Trial


def add(trial: Trial, label: str, like: str = "C7", offset: float = 150.0) -> None:
    trial.markers[label] = trial.markers[like].values + offset


def test_channels_without_a_label_are_counted() -> None:
    trial = clean_trial()
    add(trial, "A")
    add(trial, "B", offset=90.0)
    for label in ("A", "B"):
        trial.markers[label].label = ""
    trial.analogs["EMG"] = np.arange(len(trial.analogs.time)) % 7.0
    trial.analogs["EMG"].label = " "
    assert [(finding.rule, finding.text) for finding in trial.check()] == [
        ("unnamed", "2 markers without a label"),
        ("unnamed", "1 analog channel without a label"),
    ]


def test_labels_of_several_channels_are_told_with_their_number() -> None:
    trial = clean_trial()
    for offset in (150.0, 90.0):
        trial.markers[f"EXTRA{offset}"] = trial.markers["C7"].values + offset
        trial.markers[f"EXTRA{offset}"].label = "T10"
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel) == ("doubled", None)
    assert finding.text.startswith("several markers have one label: T10 (")


@pytest.mark.parametrize("label", ["*12", "Anna:*7", "Unlabeled_3", "unlabelled 4", "Unnamed5"])
def test_trajectories_that_nobody_named_are_a_note(label: str) -> None:
    trial = clean_trial()
    add(trial, label)
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity) == ("unlabelled", "note")
    assert finding.text == f"1 marker not labelled: {label}"


@pytest.mark.parametrize(("label", "other"), [
    ("LFIN2", "RFIN2"), ("RXYZ", "LXYZ"), ("Left_Heel", "Right_Heel"), ("Anna:R.TO", "Anna:L.TO"),
])  # fmt: skip
def test_a_marker_on_one_side_only_is_a_note(label: str, other: str) -> None:
    trial = clean_trial()
    add(trial, label)
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity, finding.channel) == ("one_sided", "note", label)
    assert finding.text == f"there is no {other}"
    add(trial, other, offset=-150.0)
    assert trial.check() == []


@pytest.mark.parametrize("label", ["RBAK", "Anna:ROFF", "Lumbar", "T10a", "STRN2"])
def test_markers_that_are_on_no_side_or_tell_the_sides_apart_are_well(label: str) -> None:
    trial = clean_trial()
    add(trial, label)
    assert trial.check() == []


def test_one_leg_alone_is_well() -> None:
    trial = clean_trial()
    for label in [label for label in trial.markers if label.startswith("R")]:
        del trial.markers[label]
    assert trial.check() == []


def test_what_was_odd_about_the_file_is_told(sample: Any) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(Path(sample("Optotrak.c3d")))))
    found = trial.check(only="contradictions")
    assert [finding.text for finding in found] == trial.warnings
    assert len(found) == 1
