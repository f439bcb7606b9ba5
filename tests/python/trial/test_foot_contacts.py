"""Foot strikes and offs that platforms tell: instants and sides of loads that are known."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import CENTRE, DIRECTIONS, Array, Load, Plate, read_plates, step_on
from moxPY.trial import Trial
from support.small_trials import example_trial, read_trial

RATE, RATIO = 100.0, 10  # of points; samples in a frame
FRAMES = 200
SAMPLES = FRAMES * RATIO
PLACE = np.array([40.0, 60.0, 0.0])  # of the foot, on the plate
OTHER = np.array([-90.0, -500.0, 0.0])  # of the other foot
Y_UP = np.array([[1.0, 0, 0], [0, 0, -1], [0, 1, 0]])


def stance(first: int, stop: int, peak: float = 700.0) -> Array:
    """A load that begins at one sample and is gone at another one, over 100 N in between."""
    load = np.zeros(SAMPLES)
    phase = np.arange(stop - first) / (stop - first)
    load[first:stop] = 100.0 + (peak - 100.0) * np.sin(np.pi * phase)
    return load


def stepping(folder: Path, *loads: Array, axes: Array = DIRECTIONS["z down"], sign: float = -1.0,
             **options: Any) -> Trial:  # fmt: skip
    """A trial with a plate for each load, 700 mm apart along the first one's x axis."""
    plates = [Plate(2, axes, centre=CENTRE + number * 700.0 * axes[:, 0])
              for number in range(len(loads))]  # fmt: skip
    trial = Trial.of(
        read_plates(folder, plates, SAMPLES, frames=FRAMES, samples_per_frame=RATIO,
                    rate=RATE, **options)
    )  # fmt: skip
    for number, (plate, vertical) in enumerate(zip(plates, loads, strict=True)):
        force = np.outer(vertical, [0.1, -0.05, 1.0]) * sign
        place = np.tile(PLACE, (SAMPLES, 1))
        step_on(trial, plate, Load(force, place, np.zeros(SAMPLES)), number)
    return trial


def put_markers(trial: Trial, axes: Array, **places: Array) -> None:
    """Markers at places of the first plate, all the time."""
    for label, place in places.items():
        position = CENTRE + axes @ place
        trial.markers[label] = np.tile(position, (trial.frames, 1))


def told(trial: Trial, **options: Any) -> list[tuple[str, float, str]]:
    events = trial.platforms.detect_events(**options)
    assert [event.time for event in events] == sorted(event.time for event in events)
    assert {event.id for event in events if event.label == "Foot Strike"} <= {1}
    assert {event.id for event in events if event.label == "Foot Off"} <= {2}
    short = {"Foot Strike": "on", "Foot Off": "off"}
    return [(short[event.label], round(event.time, 9), event.context) for event in events]


@pytest.mark.parametrize("axes", [*DIRECTIONS.values(), Y_UP], ids=[*DIRECTIONS, "y up"])
@pytest.mark.parametrize("sign", [1.0, -1.0])
def test_a_step_has_a_strike_and_an_off(tmp_path: Path, axes: Array, sign: float) -> None:
    trial = stepping(tmp_path, stance(300, 900), axes=axes, sign=sign)
    put_markers(trial, axes, LHEE=PLACE + 20.0, RHEE=OTHER)
    assert told(trial) == [("on", 0.3, "Left"), ("off", 0.9, "Left")]


def test_events_lie_on_the_trials_clock(tmp_path: Path) -> None:
    trial = stepping(tmp_path, stance(300, 900), first_frame=101)
    put_markers(trial, DIRECTIONS["z down"], LHEE=OTHER, RTOE=PLACE)
    assert told(trial) == [("on", 1.3, "Right"), ("off", 1.9, "Right")]


def test_several_platforms_in_order_of_time(tmp_path: Path) -> None:
    trial = stepping(tmp_path, stance(800, 1400), stance(200, 900))
    markers = {"Ann:L_Heel": PLACE, "Ann:RANK": PLACE + np.array([700.0, 0.0, -80.0])}
    put_markers(trial, DIRECTIONS["z down"], **markers)
    assert told(trial) == [
        ("on", 0.2, "Right"),
        ("on", 0.8, "Left"),
        ("off", 0.9, "Right"),
        ("off", 1.4, "Left"),
    ]


def test_the_side_is_that_of_the_instant(tmp_path: Path) -> None:
    """One foot comes down on the plate, the other one leaves it."""
    trial = stepping(tmp_path, stance(300, 1500))
    left, right = np.tile(OTHER, (FRAMES, 1)), np.tile(OTHER, (FRAMES, 1))
    left[:100], right[100:] = PLACE, PLACE
    axes = DIRECTIONS["z down"]
    trial.markers["LTOE"] = CENTRE + left @ axes.T
    trial.markers["RTOE"] = CENTRE + right @ axes.T
    assert told(trial) == [("on", 0.3, "Left"), ("off", 1.5, "Right")]


@pytest.mark.parametrize(
    "labels",
    [(), ("LHEE",), ("LKNE", "RKNE"), ("LHEE", "RASI"), ("HEEL", "TOE"), ("LHEEX", "RHEEX")],
)
def test_without_markers_of_both_feet_the_side_is_general(
    tmp_path: Path, labels: tuple[str, ...]
) -> None:
    trial = stepping(tmp_path, stance(300, 900))
    put_markers(trial, DIRECTIONS["z down"], **dict.fromkeys(labels, PLACE))
    assert told(trial) == [("on", 0.3, "General"), ("off", 0.9, "General")]


def test_a_foot_is_seen_by_any_of_its_markers(tmp_path: Path) -> None:
    trial = stepping(tmp_path, stance(300, 900))
    put_markers(trial, DIRECTIONS["z down"], LHEE=PLACE, LTOE=PLACE, RANK=OTHER)
    heel = trial.markers["LHEE"].values.copy()
    heel[20:40] = np.nan  # about the strike
    trial.markers["LHEE"] = heel
    assert told(trial)[0] == ("on", 0.3, "Left")
    trial.markers["LTOE"] = np.full((FRAMES, 3), np.nan)
    assert told(trial) == [("on", 0.3, "General"), ("off", 0.9, "Left")]


def test_a_contact_at_the_ends_of_the_recording_began_or_ends_elsewhere(tmp_path: Path) -> None:
    trial = stepping(tmp_path, stance(0, 500) + stance(1200, SAMPLES))
    assert told(trial) == [("off", 0.5, "General"), ("on", 1.2, "General")]


def test_blows_and_dips_are_no_steps(tmp_path: Path) -> None:
    load = stance(400, 1300)
    load[200:249] = 90.0  # 49 ms
    load[600:640] = 0.0  # 40 ms without load
    load[800:1000] = 11.0  # under the threshold, over half of it
    load[1500:1550] = 90.0  # 50 ms
    trial = stepping(tmp_path, load)
    expected = [("on", 0.4), ("off", 1.3), ("on", 1.5), ("off", 1.55)]
    assert [event[:2] for event in told(trial)] == expected
    load[800:1000] = 9.0
    trial = stepping(tmp_path, load)
    expected[1:1] = [("off", 0.8), ("on", 1.0)]
    assert [event[:2] for event in told(trial)] == expected


def test_the_threshold_is_the_callers(tmp_path: Path) -> None:
    load = np.concatenate([np.zeros(300), np.arange(700.0), np.zeros(SAMPLES - 1000)])
    trial = stepping(tmp_path, load)
    assert [event[:2] for event in told(trial)] == [("on", 0.32), ("off", 1.0)]
    assert [event[:2] for event in told(trial, threshold=600.0)] == [("on", 0.9), ("off", 1.0)]
    assert told(trial, threshold=1000.0) == []
    with pytest.raises(ValueError, match="a threshold is a number that is not negative, not -1"):
        trial.platforms.detect_events(-1.0)


def test_nobody_steps_where_there_is_no_platform(tmp_path: Path) -> None:
    assert Trial.of(read_trial(tmp_path)).platforms.detect_events() == []
    assert Trial.of(_moxPY.moxNewAcquisition()).platforms.detect_events() == []


def events_of_file(trial: Trial) -> list[tuple[str, float, str]]:
    times, names, _, _ = _moxPY.moxGetEventsValues(trial)
    short = {"Foot Strike": "on", "Foot Off": "off"}
    return sorted(
        (
            (short[name.removeprefix(side)], float(time), side)
            for time, name in zip(times, names, strict=True)
            for side in ("Left", "Right")
            if name.startswith(side)
        ),
        key=lambda event: event[1],
    )


def assert_known(trial: Trial, least: int, tolerance: float) -> None:
    """Every event that was detected is one that the file has."""
    known = events_of_file(trial)
    detected = told(trial)
    assert len(detected) >= least
    for label, time, side in detected:
        assert any(
            (label, side) == (other, context) and abs(time - instant) <= tolerance
            for other, instant, context in known
        ), (label, time, side)


def test_the_events_of_the_gait_trial() -> None:
    assert_known(Trial.of(example_trial()), 4, 0.005)


def test_the_events_of_a_recording(sample: Any) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample("gait-pig.c3d"))))
    assert_known(trial, 4, 1.0 / trial.rate)


def test_nothing_is_stored_unless_asked(tmp_path: Path) -> None:
    trial = Trial.of(example_trial())
    before = list(trial.events)
    found = trial.platforms.detect_events()
    assert list(trial.events) == before
    stored = trial.platforms.detect_events(store=True)
    assert stored == found
    assert list(trial.events) == sorted([*before, *found], key=lambda event: event.time)
    path = tmp_path / "stored.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    again = Trial.of(_moxPY.moxReadAcquisition(str(path)))
    assert all(event in again.events for event in found)
