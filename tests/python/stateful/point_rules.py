"""Points, changed at random."""

from __future__ import annotations

from hypothesis import strategies as st
from hypothesis.stateful import precondition, rule
from stateful.editing_machine import EditingMachine
from stateful.matrices import Matrix, matrices
from stateful.picks import Existing, channel_key, existing, mostly
from support.model.state import GROUP_OF_TYPE, POINT_TYPES

LABELS = ["LASI", "RASI", "Hüfte", "A/B", "A_B", "", "unamed_1", "unamed_2", "LASI_2"]

labels = st.sampled_from(LABELS)
new_labels = mostly(st.integers(0, 99).map(lambda number: f"M{number}"), labels, st.just(""))
picks = mostly(existing, st.integers(-1, 7), labels)
words = mostly(st.sampled_from(list(GROUP_OF_TYPE)), st.just("Marker"))
texts = st.sampled_from(["", "mm", "µV", "a longer text", "Grad °"])

Pick = Existing | int | str


class PointRules(EditingMachine):
    def point(self, pick: Pick) -> int | str:
        return channel_key(pick, self.model.points)

    @rule(group=st.sampled_from(list(POINT_TYPES)), matrix=matrices)
    def set_values_of_a_type(self, group: str, matrix: Matrix) -> None:
        written = self.model.point_groups["Markers" if group == "Angles" else group]
        values = matrix.of(written.samples, 3 * len(written.channels))
        self.perform(f"moxSet{group}Values", values)

    @rule(matrix=matrices)
    def set_values_of_all_points(self, matrix: Matrix) -> None:
        frames = int(self.model.moxGetPointFrameNumber())
        self.perform("moxSetPointsValues", matrix.of(frames, 3 * len(self.model.points)))

    @precondition(lambda self: self.model.points)
    @rule(pick=picks, matrix=matrices)
    def set_values_of_a_point(self, pick: Pick, matrix: Matrix) -> None:
        frames = self.model.point_groups["Markers"].samples
        self.perform("moxSetPointValues", self.point(pick), matrix.of(frames, 3))

    @rule(word=words, label=new_labels, matrix=matrices)
    def append_point(self, word: str, label: str, matrix: Matrix) -> None:
        frames = self.model.point_groups["Markers"].samples
        self.perform("moxAppendPoint", word, label, matrix.of(frames, 3))

    @precondition(lambda self: self.model.points)
    @rule(pick=picks)
    def remove_point(self, pick: Pick) -> None:
        self.perform("moxRemovePoint", self.point(pick))

    @rule(number=st.integers(-2, 8))
    def set_point_number(self, number: int) -> None:
        self.perform("moxSetPointNumber", number)

    @precondition(lambda self: self.model.points)
    @rule(pick=picks, label=labels)
    def set_point_label(self, pick: Pick, label: str) -> None:
        self.perform("moxSetPointLabel", self.point(pick), label)

    @precondition(lambda self: self.model.points)
    @rule(pick=picks, text=texts)
    def set_point_description(self, pick: Pick, text: str) -> None:
        self.perform("moxSetPointDescription", self.point(pick), text)

    @precondition(lambda self: self.model.points)
    @rule(pick=picks, word=words)
    def set_point_type(self, pick: Pick, word: str) -> None:
        self.perform("moxSetPointType", self.point(pick), word)

    @rule(word=words, unit=texts)
    def set_points_unit(self, word: str, unit: str) -> None:
        self.perform("moxSetPointsUnit", word, unit)
