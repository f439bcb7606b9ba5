"""Random edits through a trial and through the functions, on one acquisition: after each step both
say what was done, and every channel that was ever taken is still the same one."""

from __future__ import annotations

import tempfile
from dataclasses import dataclass
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from hypothesis import HealthCheck, settings
from hypothesis import strategies as st
from hypothesis.stateful import (
    RuleBasedStateMachine,
    invariant,
    precondition,
    rule,
    run_state_machine_as_test,
)
from moxPY.trial import Channel, Event, Trial
from support.memory import under_a_sanitizer
from support.small_trials import new_trial, read_trial

WORDS = {
    "markers": "marker", "angles": "angle", "forces": "force", "moments": "moment",
    "powers": "power",
}  # fmt: skip

LABEL = st.sampled_from(["A", "B", "C", "µ 1", "LASI", "Fz1"])
KIND = st.sampled_from([*WORDS, "analogs"])
UNIT = st.sampled_from(["mm", "m", "V", "Nmm/kg"])
NUMBER = st.integers(-1000, 1000)
TIME = st.sampled_from([0.0, 0.1, 0.5, 0.75, 1.25])
EVENT = st.sampled_from(["Foot Strike", "Foot Off", "Jump"])
SIDE = st.sampled_from(["Left", "Right", "General"])


def key_of(event: Event) -> tuple[float, str, str]:
    """What tells events apart here; files hold times in single precision."""
    return float(np.float32(event.time)), event.label, event.context


@dataclass(eq=False)
class Tracked:
    """What a channel has to be, and the object that shows it."""

    channel: Channel
    kind: str
    label: str
    unit: str
    values: Any


class Edits(RuleBasedStateMachine):
    def __init__(self) -> None:
        super().__init__()
        self.trial = self.start()
        self.points = self._tracked(self.trial.points)
        self.analogs = self._tracked(self.trial.analogs)
        self.removed: list[Channel] = []
        self.events = [key_of(event) for event in self.trial.events]
        self.rate, self.first = 100.0, 1

    def start(self) -> Trial:
        return Trial.of(new_trial())

    def _tracked(self, channels: Any) -> list[Tracked]:
        return sorted(
            (Tracked(c, c.kind, c.label, c.unit, c.values) for _, c in channels.items()),
            key=lambda each: each.channel.index,
        )

    def _of(self, kind: str) -> list[Tracked]:
        return [each for each in self.points + self.analogs if each.kind == kind]

    def _list(self, kind: str) -> list[Tracked]:
        return self.analogs if kind == "analogs" else self.points

    def _values(self, kind: str, seed: int) -> Any:
        trial = self.trial
        if kind == "analogs":
            return seed + np.arange(float(trial.frames * trial.samples_per_frame))
        values = seed + np.arange(3.0 * trial.frames).reshape(trial.frames, 3)
        if trial.frames and seed % 3 == 0:
            values[seed % trial.frames] = np.nan
        return values

    def _found(self, kind: str, label: str) -> Tracked | None:
        return next((each for each in self._of(kind) if each.label == label), None)

    def _remember(self, kind: str, label: str, values: Any) -> None:
        """A channel that was just appended."""
        channel = getattr(self.trial, kind)[label]
        self._list(kind).append(Tracked(channel, kind, label, channel.unit, values))

    def _forget(self, gone: list[Tracked]) -> None:
        self.removed += [each.channel for each in gone]
        self.points = [each for each in self.points if each not in gone]
        self.analogs = [each for each in self.analogs if each not in gone]

    # Edits through the trial.

    @rule(kind=KIND, label=LABEL, seed=NUMBER)
    def assign(self, kind: str, label: str, seed: int) -> None:
        values, tracked = self._values(kind, seed), self._found(kind, label)
        getattr(self.trial, kind)[label] = values
        if tracked is None:
            self._remember(kind, label, values)
        else:
            tracked.values = values

    @rule(kind=KIND, label=LABEL)
    def delete(self, kind: str, label: str) -> None:
        tracked = self._found(kind, label)
        if tracked is None:
            with pytest.raises(KeyError):
                del getattr(self.trial, kind)[label]
        else:
            del getattr(self.trial, kind)[label]
            self._forget([tracked])

    @rule(kind=KIND, old=LABEL, new=LABEL, swap=st.booleans())
    def rename(self, kind: str, old: str, new: str, swap: bool) -> None:
        first, second = self._found(kind, old), self._found(kind, new)
        if first is None or first is second:
            return
        channels = getattr(self.trial, kind)
        if second is None:
            channels.rename({old: new})
        elif swap:
            channels.rename({old: new, new: old})
            second.label = old
        else:
            with pytest.raises(ValueError, match="two channels would have the label"):
                channels.rename({old: new})
            return
        first.label = new

    @rule(kind=KIND, seed=NUMBER)
    def assign_a_kind(self, kind: str, seed: int) -> None:
        tracked = self._of(kind)
        values = [self._values(kind, seed + 10 * place) for place in range(len(tracked))]
        if tracked:
            getattr(self.trial, kind).values = np.stack(values, axis=1)
        for each, new in zip(tracked, values, strict=True):
            each.values = new

    @precondition(lambda self: self.points or self.analogs)
    @rule(data=st.data(), unit=UNIT, seed=NUMBER)
    def change_a_channel(self, data: Any, unit: str, seed: int) -> None:
        tracked = data.draw(st.sampled_from(self.points + self.analogs))
        tracked.channel.unit = tracked.unit = unit
        tracked.channel.values = tracked.values = self._values(tracked.kind, seed)

    @rule(label=EVENT, time=TIME, side=SIDE)
    def add_event(self, label: str, time: float, side: str) -> None:
        event = self.trial.events.add(label, time, side)
        self.events.append(key_of(event))

    @precondition(lambda self: self.events)
    @rule(data=st.data(), time=TIME)
    def move_or_remove_an_event(self, data: Any, time: float) -> None:
        event = data.draw(st.sampled_from(list(self.trial.events)))
        self.events.remove(key_of(event))
        if data.draw(st.booleans()):
            event = self.trial.events.replace(event, time=time)
            self.events.append(key_of(event))
        else:
            self.trial.events.remove(event)

    @rule(rate=st.sampled_from([50.0, 100.0, 120.0]))
    def change_the_rate(self, rate: float) -> None:
        self.trial.rate = self.rate = rate

    @rule(frame=st.integers(1, 500))
    def renumber(self, frame: int) -> None:
        moved = (frame - self.first) / self.rate
        self.trial.first_frame = self.first = frame
        expected = sorted((time + moved, *rest) for time, *rest in self.events)
        stored = sorted(key_of(event) for event in self.trial.events)
        np.testing.assert_allclose([e[0] for e in stored], [e[0] for e in expected], atol=1e-4)
        assert sorted(e[1:] for e in stored) == sorted(tuple(e[1:]) for e in expected)
        self.events = stored

    # Edits through the functions.

    @rule(kind=KIND, label=LABEL, seed=NUMBER)
    def append_by_function(self, kind: str, label: str, seed: int) -> None:
        if any(each.label == label for each in self._list(kind)):
            return
        values = self._values(kind, seed)
        try:
            if kind == "analogs":
                _moxPY.moxAppendAnalog(self.trial, label, values.reshape(-1, 1))
            else:
                _moxPY.moxAppendPoint(self.trial, WORDS[kind], label, values)
        except RuntimeError as refusal:  # a renamed channel had this label when it was made
            if "already exists" not in str(refusal):
                raise
            return
        self._remember(kind, label, values)

    @precondition(lambda self: self.points)
    @rule(data=st.data(), label=LABEL, seed=NUMBER)
    def change_a_point_by_function(self, data: Any, label: str, seed: int) -> None:
        index = data.draw(st.integers(0, len(self.points) - 1))
        tracked = self.points[index]
        values = self._values("markers", seed)
        _moxPY.moxSetPointValues(self.trial, index, values)
        tracked.values = values
        if all(each.label != label for each in self.points):
            _moxPY.moxSetPointLabel(self.trial, index, label)
            tracked.label = label

    @precondition(lambda self: self.analogs)
    @rule(data=st.data(), label=LABEL, unit=UNIT, seed=NUMBER)
    def change_an_analog_by_function(self, data: Any, label: str, unit: str, seed: int) -> None:
        index = data.draw(st.integers(0, len(self.analogs) - 1))
        tracked = self.analogs[index]
        values = self._values("analogs", seed)
        _moxPY.moxSetAnalogValues(self.trial, index, values.reshape(-1, 1))
        _moxPY.moxSetAnalogUnit(self.trial, index, unit)
        tracked.values, tracked.unit = values, unit
        if all(each.label != label for each in self.analogs):
            _moxPY.moxSetAnalogLabel(self.trial, index, label)
            tracked.label = label

    @precondition(lambda self: self.points)
    @rule(data=st.data())
    def remove_a_point_by_function(self, data: Any) -> None:
        index = data.draw(st.integers(0, len(self.points) - 1))
        _moxPY.moxRemovePoint(self.trial, index)
        self._forget([self.points[index]])

    @precondition(lambda self: self.analogs)
    @rule(data=st.data())
    def remove_an_analog_by_function(self, data: Any) -> None:
        index = data.draw(st.integers(0, len(self.analogs) - 1))
        _moxPY.moxRemoveAnalog(self.trial, index)
        self._forget([self.analogs[index]])

    @precondition(lambda self: len(self.points) > 9 or len(self.events) > 6)
    @rule()
    def clear_by_function(self) -> None:
        _moxPY.moxClearPoints(self.trial)
        _moxPY.moxClearEvents(self.trial)
        self._forget(list(self.points))
        self.events = []

    @rule(label=EVENT, time=TIME, side=SIDE)
    def append_an_event_by_function(self, label: str, time: float, side: str) -> None:
        _moxPY.moxAppendEvent(self.trial, label, time, side)
        self.events.append((float(np.float32(time)), label, side))

    @rule(rate=st.sampled_from([50.0, 100.0, 200.0]))
    def change_the_rate_by_function(self, rate: float) -> None:
        frames, first = _moxPY.moxGetPointFrameNumber(self.trial), self.first
        _moxPY.moxSetFrequency(self.trial, rate)
        _moxPY.moxSetFrameNumber(self.trial, int(frames))
        _moxPY.moxSetFirstFrame(self.trial, first - 1)
        self.rate = rate

    @rule(frame=st.integers(1, 500))
    def renumber_by_function(self, frame: int) -> None:
        _moxPY.moxSetFirstFrame(self.trial, frame - 1)
        self.first = frame

    # What has to be true after each step.

    @invariant()
    def channels_are_what_they_were_made(self) -> None:
        for tracked in (self.points, self.analogs):
            for index, each in enumerate(tracked):
                channel = each.channel
                assert (channel.index, channel.kind) == (index, each.kind)
                assert (channel.label, channel.unit) == (each.label, each.unit)
                np.testing.assert_array_equal(channel.values, each.values)
        for channel in self.removed:
            with pytest.raises(KeyError, match="was removed from the trial"):
                _ = channel.values

    @invariant()
    def functions_say_the_same(self) -> None:
        trial = self.trial
        assert _moxPY.moxGetPointNumber(trial) == len(self.points) == len(trial.points)
        assert _moxPY.moxGetAnalogNumber(trial) == len(self.analogs) == len(trial.analogs)
        for get, tracked in (
            (_moxPY.moxGetPoint, self.points),
            (_moxPY.moxGetAnalog, self.analogs),
        ):
            for index, each in enumerate(tracked):
                values, info = get(trial, index)
                np.testing.assert_array_equal(values, each.values)
                assert (info["label"], info["units"]) == (each.label, each.unit)
                assert info["frequency"] == each.channel.rate

    @invariant()
    def mappings_say_the_same(self) -> None:
        trial = self.trial
        for kind in (*WORDS, "analogs"):
            channels, tracked = getattr(trial, kind), self._of(kind)
            assert [channel.label for _, channel in channels.items()] == [t.label for t in tracked]
            assert len(set(channels.labels)) == len(channels) == len(tracked)
            assert all(channels[t.label].is_same(t.channel) for t in tracked)
            for place, each in enumerate(tracked):
                np.testing.assert_array_equal(channels.values[:, place], each.values)
        assert [c.label for _, c in trial.points.items()] == [t.label for t in self.points]
        assert len(set(trial.points.labels)) == len(self.points)

    @invariant()
    def clocks_say_the_same(self) -> None:
        trial = self.trial
        assert trial.rate == _moxPY.moxGetPointFrequency(trial) == self.rate
        assert trial.analogs.rate == _moxPY.moxGetAnalogFrequency(trial)
        assert trial.first_frame == self.first
        assert trial.last_frame == self.first + trial.frames - 1
        frames = _moxPY.moxGetFirstFrame(trial), _moxPY.moxGetLastFrame(trial)
        # Start times are single.
        np.testing.assert_allclose(frames, (trial.first_frame - 1, trial.last_frame - 1), atol=1e-3)
        np.testing.assert_allclose(
            trial.time, (self.first - 1 + np.arange(trial.frames)) / self.rate
        )

    @invariant()
    def events_say_the_same(self) -> None:
        events = list(self.trial.events)
        assert sorted(map(key_of, events)) == sorted(self.events)
        assert [e.time for e in events] == sorted(e.time for e in events)
        stored = _moxPY.moxGetEvents(self.trial)[0]
        times = sorted(float(time) for each in stored.values() for time in np.atleast_1d(each))
        assert times == [key_of(event)[0] for event in events]


class EditsOfAFile(Edits):
    def start(self) -> Trial:
        with tempfile.TemporaryDirectory() as folder:
            return Trial.of(read_trial(Path(folder)))


class EditsOfNothing(Edits):
    def start(self) -> Trial:
        return Trial.new()


@pytest.mark.parametrize("machine", [Edits, EditsOfAFile, EditsOfNothing])
def test_both_interfaces_agree(machine: type[Edits]) -> None:
    run_state_machine_as_test(  # type: ignore[no-untyped-call]
        machine,
        settings=settings(
            max_examples=5 if under_a_sanitizer() else 15,
            stateful_step_count=25,
            derandomize=True,
            database=None,
            deadline=None,
            suppress_health_check=list(HealthCheck),
        ),
    )
