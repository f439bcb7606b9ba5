"""Events outside the trial, or in a wrong order."""

from __future__ import annotations

import pytest
from checks.made_trials import clean_trial, the_one


@pytest.mark.parametrize("time", [0.05, 3.6])
def test_an_event_outside_the_trial_is_an_error(time: float) -> None:
    trial = clean_trial()  # 0.12 s to 3.49 s
    trial.events.add("Turn", time)
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity, finding.time) == ("outside", "error", time)
    assert finding.text == (
        f"General Turn at {time:.3f} s, the trial lasts from 0.120 s to 3.490 s"
    )


@pytest.mark.parametrize("time", [0.11, 0.12, 3.49, 3.5])
def test_the_last_frame_lasts_until_the_next_would_begin(time: float) -> None:
    trial = clean_trial()
    trial.events.add("Turn", time)
    assert trial.check() == []


def test_two_strikes_without_an_off_between_are_found() -> None:
    trial = clean_trial()
    (missing,) = [event for event in trial.events.select("Foot Off", "Left") if event.time == 1.41]
    trial.events.remove(missing)
    finding = the_one(trial.check())
    assert (finding.rule, finding.severity) == ("order", "warning")
    assert (finding.time, finding.frames) == (1.85, (186, 186))
    assert finding.text == "Left Foot Strike at 1.850 s follows another at 0.750 s"


def test_an_event_on_the_wrong_side_is_found_on_both() -> None:
    trial = clean_trial()
    (event,) = [event for event in trial.events.select("Foot Off", "Left") if event.time == 1.41]
    trial.events.replace(event, context="Right")
    assert [finding.text for finding in trial.check()] == [
        "Right Foot Off at 1.960 s follows another at 1.410 s",
        "Left Foot Strike at 1.850 s follows another at 0.750 s",
    ]


def test_a_side_with_strikes_alone_is_well() -> None:
    trial = clean_trial()
    for event in trial.events.select("Foot Off"):
        trial.events.remove(event)
    assert trial.check() == []


def test_feet_of_two_subjects_have_an_order_of_their_own() -> None:
    trial = clean_trial()
    for event in list(trial.events):
        trial.events.add(event.label, event.time + 0.03, event.context, subject="Ben")
    assert trial.check() == []


def test_an_event_that_is_there_twice_is_found() -> None:
    trial = clean_trial()
    trial.events.add("Foot Strike", 0.76, "Left", subject=trial.events[2].subject)
    finding = the_one(trial.check())
    assert (finding.rule, finding.frames, finding.time) == ("repeated", (77, 77), 0.76)
    assert finding.text == "Left Foot Strike twice, at 0.750 s and 0.760 s"
