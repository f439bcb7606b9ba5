"""Which markers tell where the feet are."""

from __future__ import annotations

import numpy as np
import pytest
from gait.made_walks import straight, walk
from moxPY.trial import Trial

PRINTS = straight(7, 0.6, 0.6, 0.1)


def made(*labels: str) -> Trial:
    """The walk with the markers of each foot under these labels, a metre further left each."""
    trial = walk(PRINTS)
    for number, label in enumerate(labels):
        for side in "LR":
            moved = trial.markers[f"{side}HEE"].values + np.array([0.0, 1000.0 * (number + 1), 0.0])
            trial.markers[label.format(side)] = moved
    del trial.markers["LHEE"], trial.markers["RHEE"]
    return trial


@pytest.mark.parametrize(
    ("labels", "chosen", "place"),
    [
        (("{}TOE", "{}ANK", "{}_Heel"), "{}_Heel", "heel"),
        (("{}TOE", "{}ANK"), "{}ANK", "ankle"),
        (("{}TOE", "{}MT5"), "{}TOE", "toe"),
        (("{}_FCC",), "{}_FCC", "heel"),
        (("Ann:{}ANK", "Bob:{}HEE"), "Bob:{}HEE", "heel"),
    ],
)
def test_the_marker_nearest_to_the_heel(labels: tuple[str, ...], chosen: str, place: str) -> None:
    gait = made(*labels).gait(up="z")
    assert gait.markers == {"Left": chosen.format("L"), "Right": chosen.format("R")}
    assert gait.place == place
    assert gait.left["step_length"].mean == pytest.approx(0.6, abs=1e-6)


def test_the_markers_of_the_subject_that_is_named() -> None:
    gait = made("Ann:{}HEE", "Bob:{}HEE").gait(up="z", subject="Bob")
    assert gait.markers["Left"] == "Bob:LHEE"


def test_both_feet_have_one_place() -> None:
    trial = made("{}TOE")
    trial.markers["LHEE"] = trial.markers["LTOE"].values
    assert trial.gait(up="z").markers == {"Left": "LTOE", "Right": "RTOE"}


@pytest.mark.parametrize(
    ("label", "reason"),
    [
        ("{}KNE", "there are no markers on the heels, ankles or toes of both feet"),
        ("{}MT5", "there are no markers on the heels, ankles or toes of both feet"),
    ],
)
def test_without_them_times_are_left(label: str, reason: str) -> None:
    gait = made(label).gait(up="z")
    assert {each.reason for each in gait.left_out} == {reason}
    assert {each.name for each in gait.left_out} == {
        "walking_speed", "stride_length", "step_length", "step_width",
    }  # fmt: skip
    assert gait.markers == {}
    assert gait.left["cadence"].mean == pytest.approx(120.0, rel=1e-5)


def test_without_an_axis_that_points_upwards() -> None:
    gait = walk(PRINTS).gait()
    assert gait.left.reasons["step_width"] == (
        "nothing tells which axis points upwards; say it, as in up='z'"
    )


def test_a_unit_that_is_no_length() -> None:
    trial = walk(PRINTS)
    trial.markers["LHEE"].unit = "V"
    reason = trial.gait(up="z").left.reasons["step_width"]
    assert reason == "the unit of the markers on the feet is no length: 'V'"


def test_a_gap_at_a_strike_leaves_out_the_strides_beside_it() -> None:
    trial = walk(PRINTS)  # left strikes at 0.2, 1.2, 2.2, 3.2 s
    heel = trial.markers["LHEE"].values.copy()
    heel[110:130] = np.nan
    trial.markers["LHEE"] = heel
    gait = trial.gait(up="z")
    assert np.isnan(gait.left["step_length"].values).tolist() == [True, True, False]
    assert gait.left["step_length"].count == 1
    assert gait.left["stride_time"].count == 3
    # The right step needs where the left foot stood.
    assert np.isnan(gait.right["step_length"].values).tolist() == [True, False]
    assert gait.right["stride_length"].count == 2


def test_markers_that_are_never_seen() -> None:
    trial = walk(PRINTS)
    trial.markers["LHEE"] = np.full((trial.frames, 3), np.nan)
    gait = trial.gait(up="z")
    assert gait.left.reasons["stride_length"] == (
        "the markers LHEE and RHEE are not seen at the foot strikes"
    )
    assert gait.right["stride_length"].mean == pytest.approx(1.2, abs=1e-6)


def test_events_between_frames_and_outside_of_the_trial() -> None:
    trial = walk(PRINTS)
    strike = trial.events.select("Foot Strike", "Left")[0]
    trial.events.replace(strike, time=-1.0)
    gait = trial.gait(up="z")
    assert np.isnan(gait.left["stride_length"].values).tolist() == [True, False, False]
