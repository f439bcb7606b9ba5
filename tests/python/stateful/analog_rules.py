"""Analog channels, changed at random."""

from __future__ import annotations

from hypothesis import strategies as st
from hypothesis.stateful import precondition, rule
from stateful.editing_machine import EditingMachine
from stateful.matrices import Matrix, matrices
from stateful.picks import channel_key
from stateful.point_rules import Pick, labels, new_labels, picks, texts


class AnalogRules(EditingMachine):
    def channel(self, pick: Pick) -> int | str:
        return channel_key(pick, list(self.model.analogs.channels.values()))

    @rule(matrix=matrices, of_the_frames=st.booleans())
    def set_values_of_all_channels(self, matrix: Matrix, of_the_frames: bool) -> None:
        group = self.model.analogs
        frames = int(self.model.moxGetPointFrameNumber())
        samples = frames * self.model.ratio if of_the_frames else group.samples
        self.perform("moxSetAnalogsValues", matrix.of(samples, len(group.channels)))

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, matrix=matrices)
    def set_values_of_a_channel(self, pick: Pick, matrix: Matrix) -> None:
        self.perform(
            "moxSetAnalogValues", self.channel(pick), matrix.of(self.model.analogs.samples, 1)
        )

    @rule(label=new_labels, matrix=matrices)
    def append_channel(self, label: str, matrix: Matrix) -> None:
        self.perform("moxAppendAnalog", label, matrix.of(self.model.analogs.samples, 1))

    @rule(label=new_labels, matrix=matrices, text=texts)
    def append_described_channel(self, label: str, matrix: Matrix, text: str) -> None:
        self.perform("moxAppendAnalog", label, matrix.of(self.model.analogs.samples, 1), text)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks)
    def remove_channel(self, pick: Pick) -> None:
        self.perform("moxRemoveAnalog", self.channel(pick))

    @rule(number=st.integers(-2, 6))
    def set_channel_number(self, number: int) -> None:
        self.perform("moxSetAnalogNumber", number)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, label=labels)
    def set_channel_label(self, pick: Pick, label: str) -> None:
        self.perform("moxSetAnalogLabel", self.channel(pick), label)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, text=texts)
    def set_channel_description(self, pick: Pick, text: str) -> None:
        self.perform("moxSetAnalogDescription", self.channel(pick), text)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, unit=texts)
    def set_channel_unit(self, pick: Pick, unit: str) -> None:
        self.perform("moxSetAnalogUnit", self.channel(pick), unit)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, code=st.integers(-1, 6))
    def set_channel_gain(self, pick: Pick, code: int) -> None:
        self.perform("moxSetAnalogGain", self.channel(pick), code)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, offset=st.integers(-(2**31), 2**31 - 1))
    def set_channel_offset(self, pick: Pick, offset: int) -> None:
        self.perform("moxSetAnalogOffset", self.channel(pick), offset)

    @precondition(lambda self: self.model.analogs.channels)
    @rule(pick=picks, scale=st.sampled_from([0.1, 2, -1e-30, 0.0]))
    def set_channel_scale(self, pick: Pick, scale: float) -> None:
        self.perform("moxSetAnalogScale", self.channel(pick), scale)
