"""Faults of markers: each is found where it was put, and nothing else is."""

from __future__ import annotations

from pathlib import Path

import numpy as np
import pytest
from checks.made_trials import FIRST, LAST, clean_trial, places, put, the_one
from moxPY.trial import Trial
from support.c3d_bytes import Analog
from support.read_c3d import read_c3d

NAN = float("nan")
ASIDE = np.array([60.0, 0.0, 0.0])
FLOOR = np.array([900.0, -300.0, 20.0])


# Gaps.


def test_the_longest_of_several_gaps_is_told() -> None:
    trial = clean_trial()
    put(trial, "RTOE", 100, NAN)
    put(trial, "RTOE", 200, NAN, 219)
    put(trial, "LTOE", 77, NAN)
    one, other = trial.check()
    assert (one.channel, one.frames, one.time) == ("LTOE", (77, 77), 0.76)
    assert one.text == "1 gap of 1 frame (0.01 s), frame 77"
    assert (other.channel, other.frames, other.time) == ("RTOE", (200, 219), 1.99)
    assert other.text == (
        "2 gaps of 21 frames in all, the longest of 20 frames (0.2 s), frames 200 to 219"
    )


def test_ends_are_no_gaps_and_one_note_for_all_markers() -> None:
    trial = clean_trial()
    put(trial, "RTOE", FIRST, NAN, 30)
    put(trial, "LTOE", 330, NAN, LAST)
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity, finding.channel) == ("ends", "note", None)
    assert (finding.frames, finding.time) == ((31, 329), 0.3)
    assert finding.text == (
        "2 of 40 markers not seen at an end of the trial, all from frame 31 to 329: LTOE, RTOE"
    )
    put(trial, "RTOE", FIRST, NAN, 340)
    finding = the_one(trial.check())
    assert finding.frames is None
    assert "never all of them" in finding.text


def test_a_marker_that_was_never_seen_has_no_gap() -> None:
    trial = clean_trial()
    put(trial, "RTOE", FIRST, NAN, LAST)
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel, finding.frames) == ("empty", "RTOE", None)


def test_ends_of_segments_have_no_gaps_of_their_own() -> None:
    trial = clean_trial()
    for end in "OALP":
        trial.markers[f"LFE{end}"] = trial.markers["LKNE"].values + 40.0
        put(trial, f"LFE{end}", 100, NAN, 110)
    assert trial.check() == []


# Jumps.


def test_a_marker_that_is_elsewhere_in_one_frame_jumps_twice() -> None:
    trial = clean_trial()
    put(trial, "LKNE", 150, places(trial, "LKNE", 150, 150) + ASIDE)
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel) == ("jumps", "LKNE")
    assert finding.frames in {(149, 150), (150, 151)}
    assert finding.text.startswith("jumps 2 times, farthest by ")


def test_swapped_labels_are_a_jump_of_both() -> None:
    trial = clean_trial()
    one, other = places(trial, "LKNE", 200, LAST), places(trial, "LTIB", 200, LAST)
    put(trial, "LKNE", 200, other, LAST)
    put(trial, "LTIB", 200, one, LAST)
    findings = trial.check()
    assert {(finding.rule, finding.channel) for finding in findings} == {
        ("jumps", "LTIB"),
        ("jumps", "LKNE"),
    }
    for finding in findings:
        assert (finding.frames, finding.time) == ((199, 200), 1.98)
        assert finding.text.startswith("jumps by ")
    assert trial.check(jump_speed=1000.0) == []
    assert trial.check(jump_outlier=1e6) == []


def test_a_fast_smooth_movement_is_no_jump() -> None:
    trial = Trial.new(400, 100.0)
    time = np.arange(400) / 100.0
    # 8 m/s and 100 m/s² at most: faster than a foot in a kick.
    swing = 8000.0 / 12.5 * np.sin(12.5 * time)
    noise = np.random.default_rng(5).normal(0.0, 0.3, (400, 3))
    trial.markers["TOE"] = np.column_stack([swing, 0 * time, 100 + 0 * time]) + noise
    trial.markers.unit = "mm"
    assert trial.check() == []


def test_nothing_jumps_over_a_gap() -> None:
    trial = clean_trial()
    put(trial, "LKNE", 150, NAN, 170)
    put(trial, "LKNE", 171, places(trial, "LKNE", 171, LAST) + 60.0, LAST)
    assert [finding.rule for finding in trial.check()] == ["gaps"]


@pytest.mark.parametrize("unit", ["m", "cm", "in"])
def test_limits_are_of_the_same_length_in_every_unit(unit: str) -> None:
    trial = clean_trial()
    put(trial, "LKNE", 150, places(trial, "LKNE", 150, 150) + ASIDE)
    found = [(finding.rule, finding.frames) for finding in trial.in_units(unit).check()]
    assert found == [(finding.rule, finding.frames) for finding in trial.check()]


# Markers that do not move.


def reflection(frames: int, noise: float) -> np.ndarray:
    return np.random.default_rng(8).uniform(-noise, noise, (frames, 3)) + FLOOR


def test_a_marker_that_stays_while_others_walk_is_found() -> None:
    trial = clean_trial()
    trial.markers["FLOOR"] = reflection(trial.frames, 0.3)
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel) == ("still", "FLOOR")
    assert finding.text == "does not move: stays within 0.6 mm"
    trial.markers["FLOOR"] = reflection(trial.frames, 3.0)
    assert trial.check() == []


def test_where_all_markers_are_still_nothing_is_wrong() -> None:
    trial = Trial.new(300, 100.0)
    for number in range(5):
        trial.markers[f"CORNER{number}"] = reflection(300, 0.3) + 200.0 * number
    trial.markers.unit = "mm"
    assert trial.check() == []


def test_the_axes_of_the_laboratory_may_stay() -> None:
    trial = clean_trial()
    for number, axis in enumerate("oxyz"):
        trial.markers[f"{axis}_Global"] = np.full((trial.frames, 3), 50.0 * number)
    assert trial.check() == []


def test_a_gap_that_was_filled_with_the_last_place_is_found() -> None:
    trial = clean_trial()
    put(trial, "LELB", 120, places(trial, "LELB", 120, 120), 160)
    finding = the_one(trial.check(without="jumps"))
    assert (finding.rule, finding.channel) == ("frozen", "LELB")
    assert (finding.frames, finding.time) == ((120, 160), 1.19)
    assert finding.text == "at exactly one place for 0.41 s, frames 120 to 160"
    assert trial.check(without="jumps", frozen_time=0.5) == []


# Markers at one place.


def test_a_gap_that_was_filled_with_another_marker_is_found() -> None:
    trial = clean_trial()
    put(trial, "LTHI", 201, places(trial, "LKNE", 201, 240), 240)
    finding = the_one(trial.check(without="jumps"))
    assert (finding.rule, finding.channel) == ("duplicates", "LTHI")
    assert finding.frames == (201, 240)
    assert "for 0.4 s, frames 201 to 240" in finding.text
    assert trial.check(without="jumps", duplicate_time=0.5) == []


def test_a_marker_with_two_copies_is_told_once() -> None:
    trial = clean_trial()
    for label in "A", "B":
        trial.markers[label] = trial.markers["C7"].values + 0.2
    finding = the_one(trial.check())
    assert finding.channel == "C7"
    assert finding.text == "at the place of A and of 1 more for 3.38 s, frames 13 to 350"


def test_ends_of_segments_meet_in_joints() -> None:
    trial = clean_trial()
    for end in "OALP":
        for number, segment in enumerate(("LFE", "LTI")):
            offset = 40.0 * "OALP".index(end) * (1 - 2 * number)
            trial.markers[segment + end] = trial.markers["LKNE"].values + 30.0 + offset
    assert trial.check() == []


def test_computed_points_do_not_count_where_others_were_measured(tmp_path: Path) -> None:
    random = np.random.default_rng(2)
    walk = np.cumsum(random.normal(0.0, 2.0, (200, 3)), axis=0)
    points = {label: walk + 100.0 * n for n, label in enumerate(("C7", "T10", "SACR", "HEAD"))}
    points |= {"VIRT": walk + 200.0, "ALSO": walk + 200.0}
    trial = Trial.of(read_c3d(tmp_path, points, rate=100.0))
    copies = {finding.channel for finding in trial.check(only="duplicates")}
    assert copies == {"SACR", "VIRT"}


def test_all_pairs_that_are_near_are_found_and_no_others() -> None:
    """Each pair is looked at in each frame, which the rule is too quick for."""
    random, rate, frames, count = np.random.default_rng(5), 20.0, 60, 40
    walks = np.cumsum(random.normal(0.0, 3.0, (count, frames, 3)), axis=1)
    walks += random.uniform(-400.0, 400.0, (count, 1, 3))
    for _ in range(40):  # stretches of any length just within or just beyond a millimetre
        one, other = random.choice(count, 2, replace=False)
        first, length = random.integers(frames), random.integers(2, 20)
        way = random.normal(0.0, 1.0, 3)
        way *= random.choice([0.0, 0.999, 1.001]) / np.linalg.norm(way)
        walks[one, first : first + length] = walks[other, first : first + length] + way
    walks[random.random((count, frames)) < 0.002] = np.nan
    trial = Trial.new(frames=frames, rate=rate)
    for number, walk in enumerate(walks):
        trial.markers[f"M{number:02}"] = walk
    trial.markers.unit = "mm"
    values = [channel.values for _, channel in trial.markers.items()]
    expected = {}
    for one in range(count):
        found = []
        for other in range(one + 1, count):
            near = np.linalg.norm(values[one] - values[other], axis=1) <= 1.0
            run, longest = 0, (0, 0)
            for frame, is_near in enumerate(near):
                run = run + 1 if is_near else 0
                longest = max(longest, (run, -(frame - run + 1)))
            if longest[0] >= 5:  # a quarter of a second
                found.append((longest[0], -longest[1], other))
        if found:
            length, first, other = max(found, key=lambda each: each[0])
            more = f" and of {len(found) - 1} more" if len(found) > 1 else ""
            expected[f"M{one:02}"] = (first + 1, first + length, f"M{other:02}{more} for")
    findings = trial.check(only="duplicates")
    assert len(expected) > 8
    assert any("more" in text for _, _, text in expected.values())
    assert [finding.channel for finding in findings] == list(expected)
    for finding in findings:
        first, last, text = expected[finding.channel]
        assert finding.frames == (first, last)
        assert text in finding.text


# The unit.


def test_metres_that_are_called_millimetres_are_found() -> None:
    trial = clean_trial().in_units("m")
    trial.markers.unit = "mm"
    findings = trial.check(only=["extent", "duplicates", "still"])
    finding = the_one(findings)
    assert finding.rule == "extent"
    assert finding.text.endswith(" mm: the unit is hardly mm")
    trial = clean_trial()
    trial.markers.unit = "m"
    assert the_one(trial.check(only="extent")).text.endswith(" m: the unit is hardly m")


def test_without_a_unit_nothing_is_guessed() -> None:
    trial = clean_trial().in_units("m")
    trial.markers.unit = ""
    assert trial.check(without="jumps") == []


def test_channels_of_one_sample_are_well(tmp_path: Path) -> None:
    analogs = [Analog("A", np.array([3.0]))]
    trial = Trial.of(read_c3d(tmp_path, {"B": np.ones((1, 3))}, analogs=analogs, frames=1))
    assert trial.check() == []
