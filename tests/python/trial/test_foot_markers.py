"""Which markers are on feet, and on which."""

from __future__ import annotations

import pytest
from moxPY.trial.foot_markers import foot_marker


@pytest.mark.parametrize(
    ("label", "meant"),
    [
        ("LHEE", ("", "Left", "heel")),
        ("Ann:R_Heel", ("Ann", "Right", "heel")),
        ("Lab 2:Ann:RHEE", ("Lab 2:Ann", "Right", "heel")),
        ("L_FCC", ("", "Left", "heel")),
        ("RCA", ("", "Right", "heel")),
        ("r_calc", ("", "Right", "heel")),
        ("LeftHeelBack", ("", "Left", "heel")),
        ("right heel", ("", "Right", "heel")),
        ("LANK", ("", "Left", "ankle")),
        ("R.Ankle", ("", "Right", "ankle")),
        ("L_FAL", ("", "Left", "ankle")),
        ("RLM", ("", "Right", "ankle")),
        ("RTOE", ("", "Right", "toe")),
        ("LMT5", ("", "Left", "forefoot")),
        ("L_FM1", ("", "Left", "forefoot")),
        ("RMET", ("", "Right", "forefoot")),
    ],
)
def test_labels_of_usual_sets(label: str, meant: tuple[str, str, str]) -> None:
    assert foot_marker(label) == meant


@pytest.mark.parametrize(
    "label", ["HEEL", "TOE", "LKNE", "LHEEX", "LTOO", "LELB", "LASI", "RANK_2", "LMKN", "", ":"]
)
def test_other_labels(label: str) -> None:
    assert foot_marker(label) is None
