"""Times and shares of the cycle, and what is left out where events are missing."""

from __future__ import annotations

import pytest
from gait.made_walks import DOUBLE_S, STEP_S, straight, walk
from moxPY.trial import Trial

STRIDE_S, STANCE_S = 2 * STEP_S, STEP_S + DOUBLE_S
TIMES = {
    "cadence": 120.0 / STRIDE_S,
    "stride_time": STRIDE_S,
    "step_time": STEP_S,
    "stance_time": STANCE_S,
    "stance_percent": 100.0 * STANCE_S / STRIDE_S,
    "swing_time": STRIDE_S - STANCE_S,
    "swing_percent": 100.0 - 100.0 * STANCE_S / STRIDE_S,
    "double_support_time": 2 * DOUBLE_S,
    "double_support_percent": 100.0 * 2 * DOUBLE_S / STRIDE_S,
    "single_support_time": STEP_S - DOUBLE_S,
    "single_support_percent": 100.0 * (STEP_S - DOUBLE_S) / STRIDE_S,
}


def made(steps: int = 8) -> Trial:
    return walk(straight(steps, 0.6, 0.6, 0.1))


def remove(trial: Trial, label: str, side: str, *times: float) -> None:
    for event in trial.events.select(label, side):
        if not times or any(abs(event.time - time) < 1e-3 for time in times):
            trial.events.remove(event)


@pytest.mark.parametrize("name", TIMES)
def test_times_in_closed_form(name: str) -> None:
    gait = made().gait(up="z")
    for side in gait.sides:
        assert len(side.strides) == 3
        assert side[name].values == pytest.approx(TIMES[name], rel=1e-5)
        assert side[name].deviation == pytest.approx(0.0, abs=1e-3)


def test_a_limp_has_other_times_on_each_side() -> None:
    trial = made()
    for event in trial.events.select(context="Left"):
        if event.label == "Foot Strike":  # late, so that the left step is long in time
            trial.events.replace(event, time=event.time + 0.06)
    gait = trial.gait(up="z")
    assert gait.left["step_time"].mean == pytest.approx(STEP_S + 0.06, abs=1e-5)
    assert gait.right["step_time"].mean == pytest.approx(STEP_S - 0.06, abs=1e-5)
    assert gait.left["stance_time"].mean == pytest.approx(STANCE_S - 0.06, abs=1e-5)
    assert gait.right["double_support_time"].mean == pytest.approx(2 * DOUBLE_S - 0.06, abs=1e-5)
    assert gait.left["single_support_time"].mean == pytest.approx(STEP_S - DOUBLE_S, abs=1e-5)
    assert gait.right["single_support_time"].mean == pytest.approx(
        STEP_S - DOUBLE_S + 0.06, abs=1e-5
    )


@pytest.mark.parametrize(
    ("strike", "off"), [("HEEL STRIKE", "toe off"), ("Initial Contact", "foot off")]
)
def test_other_words_for_the_events(strike: str, off: str) -> None:
    trial = made()
    for event in list(trial.events):
        words = strike if event.label == "Foot Strike" else off
        trial.events.replace(event, label=words, context=event.context.upper())
    assert trial.gait(up="z").right["stance_time"].mean == pytest.approx(STANCE_S, rel=1e-5)


def test_what_offs_tell_is_left_out_without_them() -> None:
    trial = made()
    remove(trial, "Foot Off", "Left")
    gait = trial.gait(up="z")
    assert gait.left["step_time"].mean == pytest.approx(STEP_S, rel=1e-5)
    supports = {name for name in TIMES if "support" in name}
    phases = {name for name in TIMES if name.startswith(("stance", "swing"))}
    assert set(gait.left.reasons) == supports | phases
    assert set(gait.right.reasons) == supports
    reason = "there is no Left Foot Off event within a stride of the left foot"
    assert gait.left.reasons["stance_time"] == reason
    assert gait.right.reasons["double_support_time"] == reason.replace("left foot", "right foot")
    with pytest.raises(KeyError, match="no 'stance_time' on the left side: there is no Left"):
        gait.left["stance_time"]


def test_strides_with_an_event_more_than_a_stride_has_are_left_out() -> None:
    trial = made()
    remove(trial, "Foot Strike", "Left", 1.2)
    gait = trial.gait(up="z")
    assert [(stride.start, stride.stop) for stride in gait.left.strides] == [
        (pytest.approx(2.2), pytest.approx(3.2))
    ]
    assert gait.notes == (
        "Left stride from 0.200 s to 2.200 s: several Left Foot Off and Right Foot Off and "
        "Right Foot Strike events in it, so a strike is missing",
    )
    # Of the right strides one has no left strike in it.
    steps = gait.right["step_time"]
    assert steps.count == 2
    assert len(steps.values) == 3


def test_events_that_are_there_twice_count_once() -> None:
    trial = made()
    for event in list(trial.events):
        trial.events.add(event.label, event.time + 0.005, context=event.context)
    gait = trial.gait(up="z")
    assert [len(side.strides) for side in gait.sides] == [3, 3]
    assert gait.notes == ()


def test_running_has_no_double_support() -> None:
    trial = made()
    for event in trial.events.select("Foot Off"):
        trial.events.replace(event, time=event.time - 2 * DOUBLE_S)
    gait = trial.gait(up="z")
    assert gait.left["stance_time"].mean == pytest.approx(STANCE_S - 2 * DOUBLE_S, rel=1e-5)
    assert gait.left.reasons["double_support_time"].startswith("the feet do not leave the floor in")


@pytest.mark.parametrize("steps", [0, 2])
def test_without_a_stride_everything_is_left_out(steps: int) -> None:
    gait = made(steps).gait(up="z") if steps else Trial.new(frames=10).gait()
    assert [*gait.left, *gait.right] == []
    assert len(gait.left_out) == 30
    assert "no two Left Foot Strike events" in gait.left_out[0].reason
    assert repr(gait) == "<gait: 0 left and 0 right strides>"
    assert len(gait.to_pandas()) == 0


def test_of_several_subjects_one_is_named() -> None:
    trial = made()
    for event in list(trial.events):
        trial.events.replace(event, subject="Ann")
        trial.events.add(event.label, event.time + 0.25, context=event.context, subject="Bob")
    gait = trial.gait(up="z")
    assert gait.left.reasons["cadence"] == (
        "the events are of several subjects: Ann, Bob; name one of them"
    )
    bob = trial.gait(up="z", subject="Bob")
    assert bob.left.strides[0].start == pytest.approx(0.45)
    assert bob.left["step_time"].mean == pytest.approx(STEP_S, rel=1e-5)
