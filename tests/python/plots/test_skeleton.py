"""Which markers a stick figure joins."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path

import moxPY
import pytest
from moxPY.skeleton import sticks_between, sticks_of

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


def joined(*labels: str) -> set[frozenset[str]]:
    return {frozenset(stick) for stick in sticks_between(labels)}


def pairs(*texts: str) -> set[frozenset[str]]:
    return {frozenset(text.split("-")) for text in texts}


def test_the_leg_of_the_usual_full_body_set():
    found = joined("LASI", "LPSI", "LTHI", "LKNE", "LTIB", "LANK", "LHEE", "LTOE", "LMT5")
    assert found == pairs(
        "LASI-LPSI", "LASI-LKNE", "LKNE-LANK", "LANK-LHEE", "LHEE-LTOE", "LANK-LTOE", "LHEE-LMT5",
        "LTOE-LMT5",
    )  # fmt: skip


def test_all_markers_of_the_example_but_those_off_the_joints_are_joined():
    trial = moxPY.read(EXAMPLE)
    sticks = sticks_of(trial)
    free = set(trial.markers) - {label for stick in sticks for label in stick}
    assert free == {f"{side}{place}" for side in "LR" for place in ("UPA", "FRM", "THI", "TIB")}
    assert len(sticks) == len({frozenset(stick) for stick in sticks}) == 46


@pytest.mark.parametrize(
    ("knee", "ankle"),
    [
        ("L.Knee", "L.Ankle"), ("LeftKnee", "LeftAnkle"), ("left_knee", "left_ankle"),
        ("knee_l", "ankle_l"), ("LLKN", "LLMA"), ("L_KNEE_LAT", "L_ANKLE_LAT"), ("LFLE", "LFAL"),
        ("LKNE", "LANK"), ("Knee Left", "Ankle Left"), ("Anna:LKNE", "Anna:LANK"),
    ],
)  # fmt: skip
def test_labels_are_understood_in_the_usual_spellings(knee: str, ankle: str):
    assert joined(knee, ankle) == {frozenset((knee, ankle))}


def test_a_place_without_a_marker_is_passed_over():
    assert joined("RASI", "RANK", "RTOE") == pairs("RASI-RANK", "RANK-RTOE")


def test_an_arm_with_one_of_two_markers_at_the_wrist():
    assert joined("LSHO", "LELB", "LWRA", "LFIN") == pairs("LSHO-LELB", "LELB-LWRA", "LWRA-LFIN")


def test_joints_inside_the_body_are_preferred_to_markers_on_it():
    found = joined("LASI", "RASI", "SACR", "LHJC", "RHJC", "LKNE", "RKNE")
    assert found == pairs(
        "LASI-RASI", "LASI-SACR", "RASI-SACR", "LHJC-RHJC", "LHJC-SACR", "RHJC-SACR",
        "LHJC-LKNE", "RHJC-RKNE",
    )  # fmt: skip


def test_each_subject_is_by_itself():
    assert joined("Anna:LKNE", "Anna:LANK", "Ben:LKNE", "Ben:LANK", "LKNE") == pairs(
        "Anna:LKNE-Anna:LANK", "Ben:LKNE-Ben:LANK"
    )


def test_the_rear_of_a_head_is_no_right_marker_and_one_of_two_heads_no_rear():
    assert joined("THEA", "FHEA", "RHEA") == pairs("THEA-FHEA", "THEA-RHEA", "FHEA-RHEA")
    assert joined("C7", "LHEA", "RHEA") == set()


def test_all_markers_of_a_plate_are_joined():
    labels = ["LTH1", "LTH2", "LTH3", "LTH4", "RTH1", "RTH2", "RTH3"]
    found = joined(*labels, "LSK1", "LSK2", "LSK3", "PV1", "PV2", "PV3")
    assert found == pairs(
        "LTH1-LTH2", "LTH1-LTH3", "LTH1-LTH4", "LTH2-LTH3", "LTH2-LTH4", "LTH3-LTH4",
        "RTH1-RTH2", "RTH2-RTH3", "RTH1-RTH3",
    )  # fmt: skip


@pytest.mark.parametrize(
    "labels", [[], [""], ["*1", "*2", "*3"], ["Marker_1", "Marker_2"], ["2000"], ["L", "R"], [":"]]
)
def test_labels_that_mean_no_place_are_joined_with_nothing(labels: list[str]):
    assert sticks_between(labels) == []


@pytest.mark.parametrize(
    ("name", "number"),
    [
        ("2198928.c3d", 10), ("gait-pig.c3d", 9), ("TYPE-3.c3d", 18), ("short.c3d", 23),
        ("kyowadengyo.c3d", 12), ("type1.C3D", 14), ("Eb015pi.c3d", 30), ("basketball.c3d", 0),
    ],
)  # fmt: skip
def test_sets_of_different_laboratories(sample: Callable[[str], Path], name: str, number: int):
    trial = moxPY.read(sample(name), odd="ignore")
    sticks = sticks_of(trial)
    assert len(sticks) == number
    assert {label for stick in sticks for label in stick} <= set(trial.markers)
