"""Analysis parameters of a trial by name."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from moxPY.trial import AnalysisParameter, Trial
from support.small_trials import example_trial

FindSample = Callable[[str], Path]


def trial_with(**entries: Any) -> Trial:
    trial = Trial.new()
    trial.metadata["ANALYSIS"] = entries
    return trial


@pytest.fixture
def trial() -> Trial:
    return trial_with(
        USED=4,
        NAMES=["Cadence", "Cadence", "Speed", "Cadence"],
        VALUES=[1.5, 2.5, 3.0, 4.5],
        UNITS=["1/s", "1/s", "m/s", "1/min"],
        CONTEXTS=["Left", "Right", "Right", "Left"],
        SUBJECTS=["Ann", "Ann", "Ann", "Eve"],
        DESCRIPTIONS=["", "", "walking", ""],
    )


def test_values_by_name(trial: Trial) -> None:
    assert dict(trial.analysis) == {
        "Left Cadence": 1.5, "Right Cadence": 2.5, "Speed": 3.0, "Left Cadence_2": 4.5,
    }  # fmt: skip
    assert len(trial.analysis) == 4
    assert "Speed" in trial.analysis
    assert "Cadence" not in trial.analysis
    assert trial.analysis._ipython_key_completions_() == list(trial.analysis)
    assert repr(trial.analysis) == (
        "<analysis (4): Left Cadence, Right Cadence, Speed, Left Cadence_2>"
    )


def test_what_is_said_of_a_parameter(trial: Trial) -> None:
    assert trial.analysis.parameter("Speed") == AnalysisParameter(
        name="Speed",
        value=3.0,
        unit="m/s",
        context="Right",
        subject="Ann",
        description="walking",
    )
    assert trial.analysis.parameter("Left Cadence_2").subject == "Eve"


def test_a_missing_parameter_is_told_with_those_near(trial: Trial) -> None:
    text = "no analysis parameter 'speed'; nearest: Speed"
    with pytest.raises(KeyError) as failure:
        trial.analysis["speed"]
    assert failure.value.args == (text,)
    assert trial.analysis.get("speed") is None


def test_changes_of_the_metadata_are_seen(trial: Trial) -> None:
    _moxPY.moxSetMetaDataValue(trial, "ANALYSIS", "VALUES", [7.0, 8.0, 9.0, 10.0])
    assert trial.analysis["Speed"] == 9.0
    del trial.metadata["ANALYSIS"]["UNITS"]
    assert trial.analysis.parameter("Speed").unit == ""
    del trial.metadata["ANALYSIS"]
    assert dict(trial.analysis) == {}
    assert repr(trial.analysis) == "<analysis (0): none>"


@pytest.mark.parametrize(
    ("entries", "expected"),
    [
        ({}, {}),
        ({"NAMES": ["A"]}, {}),
        ({"VALUES": [1.0]}, {}),
        ({"NAMES": "A", "VALUES": 1.0}, {"A": 1.0}),
        ({"NAMES": ["A", "B"], "VALUES": [1.0]}, {"A": 1.0}),
        ({"NAMES": ["A"], "VALUES": [1.0, 2.0], "UNITS": ["m", "s"]}, {"A": 1.0}),
        ({"NAMES": ["A", "B"], "VALUES": [1, 2], "UNITS": ["m"]}, {"A": 1.0, "B": 2.0}),
        ({"NAMES": ["A", "A"], "VALUES": [1, 2]}, {"A": 1.0, "A_2": 2.0}),
        ({"NAMES": ["A"], "VALUES": ["x"]}, {}),
        ({"NAMES": ["A"], "NAMES2": ["B"], "VALUES": [1], "VALUES2": [2]}, {"A": 1.0, "B": 2.0}),
    ],
)
def test_lists_that_do_not_fit_give_what_is_there(
    entries: dict[str, Any], expected: dict[str, float]
) -> None:
    assert dict(trial_with(**entries).analysis) == expected


def test_parameters_are_those_of_the_function() -> None:
    trial = Trial.of(example_trial())
    content, units = _moxPY.moxGetAnalysis(trial)
    values = content["children"]["VALUES"]["info"]["values"].tolist()
    rows = [trial.analysis.parameter(name) for name in trial.analysis]
    assert len(rows) == len(content["children"]["NAMES"]["info"]["values"]) > 0
    assert [row.value for row in rows] == values
    assert [row.unit for row in rows] == units["units"]


def test_parameters_of_a_sample(sample: FindSample) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample("2198928.c3d"))))
    assert len(trial.analysis) == 22
    assert trial.analysis["Left Cadence"] == pytest.approx(150.94339)
    assert trial.analysis.parameter("Right Walking Speed") == AnalysisParameter(
        name="Walking Speed",
        value=pytest.approx(1.1044586),
        unit="m/s",
        context="Right",
        subject="21989",
    )
