"""Events, changed at random."""

from __future__ import annotations

from hypothesis import strategies as st
from hypothesis.stateful import precondition, rule
from stateful.editing_machine import EditingMachine
from stateful.picks import Existing, event_name, existing, mostly

labels = mostly(
    st.sampled_from(["Foot Strike", "Foot_Strike", "FO", "Heel"]), st.sampled_from(["a/b", "_", ""])
)
contexts = st.sampled_from(["Left", "Right", ""])
picks = mostly(existing, st.sampled_from(["Left_Foot_Strike", "Left_FO", "Lefta/b", "", "Nobody"]))
texts = st.sampled_from(["", "Müller", "heel first"])
times = mostly(
    st.floats(0.0, 10.0), st.sampled_from([-0.5, 61.25, float("nan"), float("inf"), 1e300])
)
ids = st.sampled_from([-1, 0, 1, 2, 7, -(2**31)])


class EventRules(EditingMachine):
    def event(self, pick: Existing | str) -> str:
        return event_name(pick, list(self.model.events))

    @rule(label=labels, time=times, context=contexts)
    def append_event(self, label: str, time: float, context: str) -> None:
        self.perform("moxAppendEvent", label, time, context)

    @rule(label=labels, time=times, context=contexts, subject=texts)
    def append_event_of_a_subject(
        self, label: str, time: float, context: str, subject: str
    ) -> None:
        self.perform("moxAppendEvent", label, time, context, subject)

    @rule(label=labels, time=times, context=contexts, subject=texts, text=texts)
    def append_described_event(
        self, label: str, time: float, context: str, subject: str, text: str
    ) -> None:
        self.perform("moxAppendEvent", label, time, context, subject, text)

    @rule(label=labels, time=times, context=contexts, subject=texts, text=texts, id=ids)
    def append_event_with_id(
        self, label: str, time: float, context: str, subject: str, text: str, id: int
    ) -> None:
        self.perform("moxAppendEvent", label, time, context, subject, text, id)

    @precondition(lambda self: self.model.events)
    @rule(pick=picks, text=texts)
    def set_event_description(self, pick: Existing | str, text: str) -> None:
        self.perform("moxSetEventDescription", self.event(pick), text)

    @precondition(lambda self: self.model.events)
    @rule(pick=picks, id=ids)
    def set_event_id(self, pick: Existing | str, id: int) -> None:
        self.perform("moxSetEventId", self.event(pick), id)
