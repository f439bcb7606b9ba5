"""Cycles from an event to the next one of its side, and channels over their course."""

from __future__ import annotations

import itertools
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Cycle, Trial

RATE, FRAMES = 100.0, 400


def single(time: float) -> float:
    """As events give it."""
    return float(str(np.float32(time)))


@pytest.fixture
def trial() -> Trial:
    trial = Trial.new(frames=FRAMES, rate=RATE, samples_per_frame=4)
    for label, context, times in [
        ("Foot Strike", "Left", [2.25, 0.25, 1.25]),
        ("Foot Off", "Left", [0.75, 2.0]),
        ("Foot Strike", "Right", [0.75, 1.75]),
        ("Turn", "General", [1.25]),
    ]:
        for time in times:
            trial.events.add(label, time, context)
    return trial


def spans(cycles: list[Cycle]) -> list[tuple[float, float]]:
    return [(cycle.start, cycle.stop) for cycle in cycles]


def test_cycles_from_strike_to_strike(trial: Trial) -> None:
    assert spans(trial.cycles("Left")) == [(0.25, 1.25), (1.25, 2.25)]
    assert spans(trial.cycles("Right")) == [(0.75, 1.75)]
    assert trial.cycles("Nobody") == trial.cycles("Left", "Turn") == []


def test_a_cycle_has_the_events_of_every_side_its_ends_included(trial: Trial) -> None:
    first, second = trial.cycles("Left")
    assert first.duration == 1.0
    assert first.events == tuple(trial.events[:5])
    assert [(event.label, event.time) for event in second.events] == [
        ("Foot Strike", 1.25), ("Turn", 1.25), ("Foot Strike", 1.75), ("Foot Off", 2.0),
        ("Foot Strike", 2.25),
    ]  # fmt: skip
    start, stop, events = second
    assert (start, stop, len(events)) == (1.25, 2.25, 5)


def test_a_start_pairs_with_the_first_end_after_it(trial: Trial) -> None:
    assert spans(trial.cycles("Left", "Foot Strike", "Foot Off")) == [(0.25, 0.75), (1.25, 2.0)]
    assert spans(trial.cycles("Left", "Foot Off", "Foot Strike")) == [(0.75, 1.25), (2.0, 2.25)]
    trial.events.add("Foot Strike", 1.5, "Left")
    assert spans(trial.cycles("Left", end="Foot Off")) == [(0.25, 0.75), (1.25, 2.0), (1.5, 2.0)]


def test_an_end_at_the_instant_of_the_start_is_not_after_it(trial: Trial) -> None:
    trial.events.add("Foot Off", 1.25, "Left")
    assert spans(trial.cycles("Left", end="Foot Off")) == [(0.25, 0.75), (1.25, 2.0)]


def test_events_of_one_instant_count_once(trial: Trial) -> None:
    trial.events.add("Foot Strike", 1.25, "Left", subject="Bob")
    assert spans(trial.cycles("Left")) == [(0.25, 1.25), (1.25, 2.25)]


def test_random_cycles_agree_with_a_search() -> None:
    random = np.random.default_rng(3)
    for _ in range(30):
        trial = Trial.new()
        times = {
            label: np.sort(random.uniform(0, 9, random.integers(0, 6)).astype(np.float32))
            for label in ("A", "B")
        }
        for label, instants in times.items():
            for time in instants:
                trial.events.add(label, float(time), "Left")
                trial.events.add(label, float(time) + 0.01, "Right")
        expected = []
        for start in map(single, times["A"]):
            later = [stop for stop in map(single, times["B"]) if stop > start]
            expected += [(start, later[0])] if later else []
        assert spans(trial.cycles("Left", "A", "B")) == expected


def filled(trial: Trial) -> Any:
    """A marker that goes as a sine in x and along a line in y."""
    time = trial.time
    trial.markers["A"] = np.column_stack([np.sin(time), 3 * time - 1, np.cos(time)])
    return trial.markers["A"]


def test_a_line_and_a_sine_over_a_cycle(trial: Trial) -> None:
    courses = filled(trial).normalize(trial.cycles("Left"))
    assert (courses.shape, courses.dtype) == ((2, 101, 3), np.float64)
    instants = np.array([[0.25], [1.25]]) + np.arange(101) / 100
    np.testing.assert_allclose(courses[..., 1], 3 * instants - 1, atol=1e-12)
    # A chord leaves a sine by at most step² / 8.
    np.testing.assert_allclose(courses[..., 0], np.sin(instants), atol=0.01**2 / 8 + 1e-12)


@pytest.mark.parametrize("points", [2, 7, 101, 1000])
def test_courses_agree_with_numpy(trial: Trial, points: int) -> None:
    _moxPY.moxSetFirstFrame(trial, 20)
    random = np.random.default_rng(1)
    trial.markers["A"] = random.normal(size=(FRAMES, 3))
    trial.analogs["F"] = random.normal(size=4 * FRAMES)
    cycles = [(0.21, 1.13), (single(1.7), 3.333), (0.2, 4.19)]
    for channel, components in ((trial.markers["A"], 3), (trial.analogs["F"], 1)):
        values = channel.values.reshape(-1, components)
        found = channel.normalize(cycles, points).reshape(3, points, components)
        for number, (start, stop) in enumerate(cycles):
            instants = np.linspace(start, stop, points)
            for component in range(components):
                expected = np.interp(instants, channel.time, values[:, component])
                np.testing.assert_allclose(found[number, :, component], expected, atol=1e-9)


def test_analog_channels_have_no_components(trial: Trial) -> None:
    trial.analogs["F"] = 2 * trial.analogs.time
    courses = trial.analogs["F"].normalize(trial.cycles("Left"), points=11)
    np.testing.assert_allclose(courses, [np.linspace(0.5, 2.5, 11), np.linspace(2.5, 4.5, 11)])


def test_gaps_and_what_lies_outside_are_not_seen() -> None:
    trial = Trial.new(frames=11, rate=10.0)
    values = np.column_stack([np.arange(11.0)] * 3)
    values[4:6, :] = np.nan
    trial.markers["A"] = values
    courses = trial.markers["A"].normalize([(-0.2, 1.3)], points=31)
    found = courses[0, :, 0]
    instants = np.linspace(-0.2, 1.3, 31)
    seen = (instants > -1e-9) & (instants < 0.3 + 1e-9)
    seen |= (instants > 0.6 - 1e-9) & (instants < 1.0 + 1e-9)
    np.testing.assert_allclose(found[seen], 10 * instants[seen], atol=1e-9)
    assert np.isnan(found[~seen]).all()


@pytest.mark.parametrize("frame", [33, 132, 288, 399])
def test_an_event_at_a_frame_needs_that_frame_alone(frame: int) -> None:
    """Singles are nearly never the instant of a frame."""
    trial = Trial.new(frames=FRAMES, rate=RATE)
    values = np.full((FRAMES, 3), np.nan)
    values[:10] = 5.0
    values[frame] = 7.0
    trial.markers["A"] = values
    start = trial.events.add("Foot Strike", 0.07, "Left")
    trial.events.add("Foot Strike", frame / RATE, "Left")
    (course,) = trial.markers["A"].normalize(trial.cycles("Left"), points=2)
    assert course.tolist() == [[5.0] * 3, [7.0] * 3]
    (course,) = trial.markers["A"].normalize([(start.time, frame / RATE + 1e-3)], points=2)
    assert np.isnan(course[1]).all()


def test_mean_and_deviation_are_those_of_numpy(trial: Trial) -> None:
    trial.markers["A"] = np.random.default_rng(2).normal(size=(FRAMES, 3))
    cycles = [(0.1, 0.9), (1.0, 2.2), (2.5, 3.1)]
    courses = trial.markers["A"].normalize(cycles, 21)
    mean, deviation, count = trial.markers["A"].mean_cycle(cycles, 21)
    np.testing.assert_allclose(mean, courses.mean(axis=0))
    np.testing.assert_allclose(deviation, courses.std(axis=0, ddof=1))
    assert (count.shape, count.min(), count.max()) == ((21, 3), 3, 3)


def test_cycles_without_a_value_do_not_count() -> None:
    trial = Trial.new(frames=5, rate=1.0)
    trial.markers["A"] = [[1.0] * 3, [2.0] * 3, [np.nan] * 3, [5.0] * 3, [9.0] * 3]
    cycles = [(0, 1), (3, 4), (1, 2)]
    mean, deviation, count = trial.markers["A"].mean_cycle(cycles, 2)
    assert count[:, 0].tolist() == [3, 2]
    np.testing.assert_allclose(mean[:, 0], [8 / 3, 5.5])
    np.testing.assert_allclose(deviation[:, 0], [np.std([1, 5, 2], ddof=1), np.std([2, 9], ddof=1)])
    single_cycle = trial.markers["A"].mean_cycle(cycles[2:], 2)
    assert single_cycle.count[:, 0].tolist() == [1, 0]
    assert single_cycle.mean[0, 0] == 2.0
    assert np.isnan(single_cycle.mean[1, 0])
    assert np.isnan(single_cycle.deviation).all()


def test_no_cycles(trial: Trial) -> None:
    trial.analogs["F"] = 2 * trial.analogs.time
    point = filled(trial)
    assert point.normalize([]).shape == (0, 101, 3)
    assert trial.analogs["F"].normalize(trial.cycles("Nobody"), 11).shape == (0, 11)
    mean, deviation, count = point.mean_cycle([])
    assert mean.shape == deviation.shape == count.shape == (101, 3)
    assert np.isnan(mean).all()
    assert not count.any()


def test_a_trial_without_frames_has_no_values() -> None:
    trial = Trial.of(_moxPY.moxNewAcquisition(1, 0))
    (label,) = trial.markers.labels
    assert np.isnan(trial.markers[label].normalize([(0.0, 1.0)])).all()


def test_results_are_read_only(trial: Trial) -> None:
    point = filled(trial)
    for array in (point.normalize(trial.cycles("Left")), *point.mean_cycle(trial.cycles("Left"))):
        with pytest.raises(ValueError, match="read-only"):
            array[0] = 0


@pytest.mark.parametrize("cycle", [(1.0, 1.0), (2.0, 1.0), (float("nan"), 1.0)])
def test_a_cycle_ends_after_it_starts(trial: Trial, cycle: tuple[float, float]) -> None:
    with pytest.raises(ValueError, match="a cycle must stop after it starts"):
        filled(trial).normalize([(0.5, 1.0), cycle])


@pytest.mark.parametrize("points", [1, 0, -3])
def test_a_cycle_has_two_ends(trial: Trial, points: int) -> None:
    with pytest.raises(ValueError, match=f"not {points} points"):
        filled(trial).normalize(trial.cycles("Left"), points)


@pytest.mark.parametrize("name", ["2198928.c3d", "gait-pig.c3d"])
def test_cycles_of_a_recording(sample: Any, name: str) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    met = 0
    for side in ("Left", "Right"):
        cycles = trial.cycles(side)
        assert spans(cycles) == list(itertools.pairwise(trial.events.times("Foot Strike", side)))
        for _, channel in (*trial.markers.items(), *trial.analogs.items()):
            courses = channel.normalize(cycles, 11).reshape(len(cycles), 11, -1)
            values = channel.values.reshape(len(channel), -1)
            for course, cycle in zip(courses, cycles, strict=True):
                instants = np.linspace(cycle.start, cycle.stop, 11)
                expected = [np.interp(instants, channel.time, column) for column in values.T]
                known = ~np.isnan(expected).T
                np.testing.assert_allclose(
                    course[known], np.transpose(expected)[known], rtol=1e-9, atol=1e-9
                )
                assert np.isnan(course[~known]).all()
                met += int(known.sum())
    assert met > 1000
