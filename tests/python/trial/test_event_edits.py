"""Random changes of events through both interfaces, beside a list of them."""

from __future__ import annotations

import dataclasses
from pathlib import Path

import _moxPY
import numpy as np
import pytest
from hypothesis import HealthCheck, settings
from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, invariant, precondition, rule
from moxPY.trial import Event, Trial

labels = st.sampled_from(["Foot Strike", "Foot_ Strike", " Strike", "a/b", "ab", "FO"])
contexts = st.sampled_from(["Left", "LeftFoot", "Right", ""])
texts = st.sampled_from(["", "Müller", "heel first"])
times = st.sampled_from([0.0, 0.1, 1.32, 60.7, 61.25, -0.5]) | st.floats(0, 100, width=32)
ids = st.sampled_from([0, 1, 2, 7, -1])
fields = st.fixed_dictionaries(
    {"time": times, "label": labels, "context": contexts, "subject": texts, "description": texts,
     "id": ids}
)  # fmt: skip
picks = st.integers(0, 1000)


def rows(events: list[Event]) -> list[tuple[object, ...]]:
    """What is compared whatever the order of events of one instant."""
    return sorted(
        (float(np.float32(event.time)), *dataclasses.astuple(event)[1:]) for event in events
    )


class EventEdits(RuleBasedStateMachine):
    folder: Path

    def __init__(self) -> None:
        super().__init__()
        self.trial = Trial.new(frames=10)
        self.events: list[Event] = []

    @rule(given=fields)
    def add(self, given: dict[str, object]) -> None:
        expected = Event(**given)  # type: ignore[arg-type]
        assert self.trial.events.add(**given) == expected  # type: ignore[arg-type]
        self.events.append(expected)

    @precondition(lambda self: self.events)
    @rule(pick=picks)
    def remove(self, pick: int) -> None:
        self.trial.events.remove(self.events.pop(pick % len(self.events)))

    @precondition(lambda self: self.events)
    @rule(pick=picks, given=fields, names=st.sets(st.sampled_from(["time", "label", "context",
                                                                   "subject", "id"])))  # fmt: skip
    def replace(self, pick: int, given: dict[str, object], names: set[str]) -> None:
        place = pick % len(self.events)
        changes = {name: given[name] for name in names}
        expected = dataclasses.replace(self.events[place], **changes)  # type: ignore[arg-type]
        found = self.trial.events.replace(self.events[place], **changes)  # type: ignore[arg-type]
        assert found == expected
        self.events[place] = expected

    @rule(given=fields)
    def append_with_the_function(self, given: dict[str, object]) -> None:
        """With all texts, so that the function has none to take from the other events."""
        event = Event(**{**given, "label": "Turn", "subject": "Ann", "description": "fast"})  # type: ignore[arg-type]
        id = event.id if event.id != -1 else 3
        _moxPY.moxAppendEvent(
            self.trial, event.label, event.time, event.context, event.subject, event.description, id
        )
        self.events.append(dataclasses.replace(event, id=id))

    @rule()
    def write_and_read(self) -> None:
        path = str(self.folder / "events.c3d")
        _moxPY.moxWriteAcquisition(self.trial, path)
        self.trial = Trial.of(_moxPY.moxReadAcquisition(path))

    @invariant()
    def the_trial_has_the_events(self) -> None:
        found = list(self.trial.events)
        assert rows(found) == rows(self.events)
        assert [event.time for event in found] == sorted(event.time for event in found)

    @invariant()
    def the_functions_see_them(self) -> None:
        times, names, _, _ = _moxPY.moxGetEventsValues(self.trial)
        assert sorted(times) == [row[0] for row in rows(self.events)]
        assert _moxPY.moxGetEventNumber(self.trial) == len(self.events)
        subjects = _moxPY.moxGetEvents(self.trial)[1]["subject"]
        assert list(subjects) == list(dict.fromkeys(names))


@pytest.mark.parametrize("steps", [6, 40])
def test_random_changes_of_events(tmp_path: Path, steps: int) -> None:
    machine = type("EventEdits", (EventEdits,), {"folder": tmp_path}).TestCase
    machine.settings = settings(
        max_examples=40, stateful_step_count=steps, derandomize=True, database=None, deadline=None,
        suppress_health_check=list(HealthCheck),
    )  # fmt: skip
    machine().runTest()
