"""The example trial, whose walk is known, and a recording with the values of another program."""

from __future__ import annotations

import inspect
import re
from collections.abc import Callable
from pathlib import Path

import moxPY
import numpy as np
import pytest
from moxPY.gait import DEFINITIONS, Definition, Gait


@pytest.fixture(scope="module")
def gait() -> Gait:
    with moxPY.read(moxPY.example()) as trial:
        return trial.gait()


# Events every 0.55 s, stance 0.66 s of 1.10 s, footprints every 0.65 m, heels 0.17 m apart.
BY_HAND = {
    "walking_speed": 1.30 / 1.10,
    "cadence": 120.0 / 1.10,
    "stride_time": 1.10,
    "stride_length": 1.30,
    "step_time": 0.55,
    "step_length": 0.65,
    "step_width": 0.17,
    "stance_time": 0.66,
    "stance_percent": 60.0,
    "swing_time": 0.44,
    "swing_percent": 40.0,
    "double_support_time": 0.22,
    "double_support_percent": 20.0,
    "single_support_time": 0.44,
    "single_support_percent": 40.0,
}


@pytest.mark.parametrize("name", BY_HAND)
def test_values_by_hand(gait: Gait, name: str) -> None:
    noise = 2e-3 if gait.left[name].unit.startswith("m") else 1e-5  # of the markers
    for side in gait.sides:
        assert side[name].values == pytest.approx(BY_HAND[name], abs=noise, rel=1e-6)
        assert side[name].count == {"Left": 2, "Right": 3}[side.side]


def test_lengths_are_distances_of_the_heel_markers(gait: Gait) -> None:
    with moxPY.read(moxPY.example()) as trial:
        left, right = trial.markers["LHEE"].values, trial.markers["RHEE"].values
    # Left strikes at 0.75, 1.85 and 2.95 s, right ones at 1.30 and 2.40 s; it walks along x.
    strides = (left[[185, 295], 0] - left[[75, 185], 0]) / 1000.0
    assert gait.left["stride_length"].values == pytest.approx(strides, abs=2e-5)
    steps = (left[[185, 295], 0] - right[[130, 240], 0]) / 1000.0
    assert gait.left["step_length"].values == pytest.approx(steps, abs=5e-4)
    middle = (left[[75, 185], 1] + left[[185, 295], 1]) / 2.0
    width = (middle - right[[130, 240], 1]) / 1000.0
    assert gait.left["step_width"].values == pytest.approx(width, abs=5e-4)


def test_the_file_has_the_same(gait: Gait) -> None:
    stored = {
        "Cadence": "cadence", "Walking Speed": "walking_speed", "Stride Time": "stride_time",
        "Step Time": "step_time", "Foot Off": "stance_percent", "Stride Length": "stride_length",
        "Single Support": "single_support_time", "Double Support": "double_support_time",
        "Step Length": "step_length",
    }  # fmt: skip
    with moxPY.read(moxPY.example()) as trial:
        for name, ours in stored.items():
            for side in gait.sides:
                parameter = trial.analysis.parameter(f"{side.side} {name}")
                assert (parameter.unit, parameter.value) == (
                    side[ours].unit,
                    pytest.approx(side[ours].mean, abs=2e-3),
                )


def test_a_recording_has_the_times_of_another_program(sample: Callable[[str], Path]) -> None:
    with moxPY.read(sample("2198928.c3d")) as trial:
        gait = trial.gait()
        stored = dict(trial.analysis)
    for side in gait.sides:
        for name, value in {
            "Cadence": side["cadence"].mean,
            "Stride Time": side["stride_time"].mean,
            "Step Time": side["step_time"].mean,
            "Foot Off": side["stance_percent"].mean,
            "Single Support": side["single_support_time"].mean,
            "Double Support": side["double_support_time"].mean,
        }.items():
            assert value == pytest.approx(stored[f"{side.side} {name}"], rel=1e-6)
        # That program takes another point of the foot.
        assert side["stride_length"].mean == pytest.approx(
            stored[f"{side.side} Stride Length"], rel=0.02
        )


def test_it_shows_itself(gait: Gait) -> None:
    assert repr(gait) == ("<gait: 2 left and 3 right strides of 1.30 m, 1.18 m/s, 109.1 steps/min>")
    assert repr(gait.left) == "<left side: 15 parameters of 2 strides>"
    assert repr(gait.left["step_width"]) == "<step_width: 0.170 ± 0.001 m, 2 strides>"
    html = gait._repr_html_()
    cells = re.findall(r"<td[^>]*>(.*?)</td>", html)
    assert cells[:8] == [
        "Walking speed", "1.18 ± 0.00", "1.18 ± 0.00", "m/s",
        "Cadence", "109.1 ± 0.0", "109.1 ± 0.0", "steps/min",
    ]  # fmt: skip
    assert "Lengths by the markers LHEE and RHEE (heel), z upwards." in html


def test_labels_are_escaped() -> None:
    trial = moxPY.read(moxPY.example())
    trial.markers.rename({"LHEE": "<b>:LHEE", "RHEE": "<b>:RHEE"})
    assert "&lt;b&gt;:LHEE" in trial.gait()._repr_html_()


def test_what_is_left_out_is_said_once(gait: Gait) -> None:
    trial = moxPY.read(moxPY.example())
    for event in trial.events.select("Foot Off", "Left"):
        trial.events.remove(event)
    html = trial.gait()._repr_html_()
    assert (
        "Left out stance time, stance, swing time, swing, double support time, double support, "
        "single support time, single support (left): there is no Left Foot Off event within a "
        "stride of the left foot." in html
    )
    assert html.count("Left out") == 2


def test_a_row_a_stride(gait: Gait) -> None:
    frame = gait.to_pandas()
    assert frame["side"].tolist() == ["Right", "Left", "Right", "Left", "Right"]
    assert frame["start"].tolist() == pytest.approx([0.2, 0.75, 1.3, 1.85, 2.4])
    assert list(frame.columns) == ["side", "start", "stop", *BY_HAND]
    assert frame.attrs["units"]["walking_speed"] == "m/s"
    means = frame.groupby("side")["step_length"].mean()
    assert means["Left"] == pytest.approx(gait.left["step_length"].mean)


def test_means_of_both_sides(gait: Gait) -> None:
    both = np.concatenate([side["step_length"].values for side in gait.sides])
    assert gait.mean("step_length") == pytest.approx(both.mean())
    assert np.isnan(moxPY.Trial.new(frames=10).gait().mean("step_length"))


def test_names_that_there_are_not_are_told_the_nearest(gait: Gait) -> None:
    with pytest.raises(KeyError, match="there is no parameter 'step_lenght'; nearest: step_length"):
        gait.left["step_lenght"]
    assert "step_lenght" not in gait.left


@pytest.mark.parametrize("definition", DEFINITIONS, ids=lambda definition: definition.name)
def test_definitions_cite_literature(definition: Definition) -> None:
    documentation = inspect.getdoc(definition.function) or ""
    assert "References\n---" in documentation or "in per cent of the stride" in documentation
