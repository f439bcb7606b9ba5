"""What of a trial is in the page: everything that it shows, at its frames and in its units."""

from __future__ import annotations

import re
from typing import Any

import moxPY
import numpy as np
import pytest
from moxPY.player.curves import WHOLE
from moxPY.player.sides import side_of, side_of_event
from support.page_content import content_in, numbers_of


@pytest.fixture
def content(walk: moxPY.Trial) -> dict[str, Any]:
    return content_in(walk.view().html)


def near(track: dict[str, Any], values: Any, components: int = 3) -> None:
    shown = numbers_of(track, components)
    assert np.isnan(shown).tolist() == np.isnan(values).tolist()
    assert np.nanmax(np.abs(shown - values), initial=0.0) <= track["precision"]


def test_markers_are_those_of_the_trial(walk: moxPY.Trial, content: dict[str, Any]):
    assert [marker["label"] for marker in content["markers"]] == walk.markers.labels
    for marker in content["markers"]:
        near(marker["track"], walk.markers[marker["label"]].values)
        assert marker["track"]["precision"] < 0.05  # mm
    assert content["unit"] == "mm"


def test_the_clock_is_that_of_the_trial(content: dict[str, Any]):
    assert (content["frames"], content["rate"], content["firstFrame"]) == (360, 100.0, 1)


def test_curves_are_those_of_the_trial(walk: moxPY.Trial, content: dict[str, Any]):
    kinds = ("angles", "forces", "moments", "powers", "analogs")
    labels = [(kind, label) for kind in kinds for label in getattr(walk, kind)]
    assert [(curve["kind"], curve["label"]) for curve in content["curves"]] == labels
    for curve in content["curves"]:
        channel = getattr(walk, curve["kind"])[curve["label"]]
        components = len(curve["components"])
        near(curve["track"], channel.values.reshape(-1, components), components)
        assert curve["unit"] == channel.unit
        assert curve["ratio"] == (10 if curve["kind"] == "analogs" else 1)


def test_forces_are_those_on_the_person_at_each_frame(walk: moxPY.Trial, content: dict[str, Any]):
    wrenches = moxPY.moxGetGroundReactionWrenches(walk)
    assert len(content["plates"]) == len(wrenches) == 2
    for plate, wrench, platform in zip(content["plates"], wrenches, walk.platforms, strict=True):
        force, point = wrench["F"][::10], wrench["P"][::10]
        near(plate["force"], force)
        shown = numbers_of(plate["point"])
        stood_on = force[:, 2] >= 20.0
        assert np.isfinite(shown).all(axis=1).tolist() == stood_on.tolist()
        assert np.abs(shown - point)[stood_on].max() <= plate["point"]["precision"] < 0.01
        assert plate["corners"] == platform.corners.tolist()
        assert plate["unit"] == "N"


def test_forces_in_other_units_are_told_in_newtons(walk: moxPY.Trial):
    before = numbers_of(content_in(walk.view().html)["plates"][0]["force"])
    content = content_in(walk.in_units(force="kN").view(threshold=0.02).html)
    after = content["plates"][0]
    assert after["unit"] == "N"
    assert np.abs(numbers_of(after["force"]) - before).max() < 0.05


def test_events_are_at_their_frames(walk: moxPY.Trial):
    walk.events.add("Before", -0.5)
    walk.events.add("After", 3.7)
    walk.first_frame = 101
    shown = content_in(walk.view().html)["events"]
    assert [
        (event["frame"], event["label"], event["side"], event["context"]) for event in shown[:3]
    ] == [
        (20, "Foot Strike", "right", "Right"),
        (31, "Foot Off", "left", "Left"),
        (75, "Foot Strike", "left", "Left"),
    ]
    assert shown[0]["time"] == pytest.approx(1.2)
    assert len(shown) == 13


def test_sticks_are_the_usual_ones_or_those_that_are_given(walk: moxPY.Trial):
    labels = walk.markers.labels

    def sticks(**options: Any) -> list[tuple[str, str]]:
        pairs = content_in(walk.view(**options).html)["sticks"]
        return [(labels[one], labels[other]) for one, other in pairs]

    assert {frozenset(stick) for stick in sticks()} >= {
        frozenset(("LKNE", "LANK")),
        frozenset(("RELB", "RSHO")),
    }
    assert sticks(sticks=[("LASI", "LTHI"), ["C7", "T10"]]) == [("LASI", "LTHI"), ("C7", "T10")]
    assert sticks(sticks=[]) == []


def test_sticks_that_make_no_sense_are_refused(walk: moxPY.Trial):
    with pytest.raises(KeyError) as unknown:
        walk.view(sticks=[("LASI", "LKNEE")])
    assert unknown.value.args[0].startswith("no channel 'LKNEE' among the markers")
    assert "LKNE" in unknown.value.args[0]
    for stick in ("LR", ("LASI",), ("LASI", "LKNE", "LANK"), 3):
        with pytest.raises(ValueError, match="a stick is between two markers") as odd:
            walk.view(sticks=[stick])  # type: ignore[list-item]
        assert repr(stick) in str(odd.value)


@pytest.mark.parametrize(
    ("up", "direction"),
    [(None, [0, 0, 1]), ("z", [0, 0, 1]), ("y", [0, 1, 0]), ("-X", [-1, 0, 0])],
)
def test_up_is_what_the_caller_or_the_trial_says(
    walk: moxPY.Trial, up: str | None, direction: list[int]
):
    assert content_in(walk.view(up=up).html)["up"] == direction


def test_up_is_found_where_nothing_tells_it():
    trial = moxPY.Trial.new(frames=50)
    walked = np.linspace(-3000.0, 3000.0, 50)
    for label, height, aside in (("HEAD", 1700.0, -900.0), ("FOOT", 20.0, -600.0)):
        place = np.column_stack([walked, np.full(50, height), np.full(50, aside)])
        trial.markers[label] = place
    assert content_in(trial.view().html)["up"] == [0, 1, 0]


@pytest.mark.parametrize("up", ["north", "--x", "+-z", ""])
def test_an_axis_that_there_is_not_is_refused(walk: moxPY.Trial, up: str):
    with pytest.raises(ValueError, match=rf"up is 'x', 'y' or 'z'.*not '{re.escape(up)}'"):
        walk.view(up=up)


def test_many_analog_samples_are_shown_by_what_each_frame_lies_between():
    samples = np.random.default_rng(5).normal(size=WHOLE + 10)
    trial = moxPY.Trial.new(frames=len(samples) // 10, samples_per_frame=10)
    trial.analogs["EMG"] = samples
    curve = content_in(trial.view().html)["curves"][0]
    assert (curve["ratio"], curve["components"]) == (1, ["least", "most"])
    frames = samples.reshape(-1, 10)
    near(curve["track"], np.column_stack([frames.min(axis=1), frames.max(axis=1)]), 2)


def test_segments_are_where_the_rotations_have_them(sample: Any):
    trial = moxPY.read(sample("C3DRotationExample.c3d"), odd="ignore")
    content = content_in(trial.view().html)
    assert [segment["label"] for segment in content["segments"]] == trial.rotations.labels
    for segment in content["segments"]:
        matrices = trial.rotations[segment["label"]]
        near(segment["origin"], matrices[:, :3, 3])
        for axis in range(3):
            shown = numbers_of(segment["axes"], 9)[:, 3 * axis : 3 * axis + 3]
            assert np.nanmax(np.abs(shown - matrices[:, :3, axis])) < 1e-4
    assert content["unit"] == "mm"


def test_a_trial_of_nothing_has_a_page():
    content = content_in(moxPY.Trial.new().view().html)
    assert (content["frames"], content["markers"], content["curves"]) == (0, [], [])


@pytest.mark.parametrize(
    ("label", "others", "side", "name"),
    [
        ("LKNE", ["RKNE"], "left", "KNE"),
        ("Anna:RKneeAngles", ["Anna:LKneeAngles"], "right", "Anna:KneeAngles"),
        ("Left_Heel", ["Right_Heel"], "left", "Heel"),
        ("LUMB", ["LKNE"], "", "LUMB"),
        ("C7", [], "", "C7"),
    ],
)
def test_a_side_needs_its_counterpart(label: str, others: list[str], side: str, name: str):
    assert side_of(label, [label, *others]) == (side, name)


@pytest.mark.parametrize(
    ("context", "label", "side"),
    [
        ("Left", "Foot Strike", "left"),
        ("right", "Foot Off", "right"),
        ("", "LHS", "left"),
        ("RTO", "", "right"),
        ("General", "Right Foot Strike", "right"),
        ("General", "Load", ""),
        ("", "Lift", ""),
    ],
)
def test_the_side_of_an_event_is_in_its_context_or_its_label(context: str, label: str, side: str):
    assert side_of_event(context, label) == side
