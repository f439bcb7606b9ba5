"""Frames, rates and the first frame, changed at random."""

from __future__ import annotations

from hypothesis import strategies as st
from hypothesis.stateful import rule
from stateful.editing_machine import EditingMachine
from stateful.picks import mostly

rates = mostly(
    st.sampled_from([50.0, 64, 100.0, 120.5, 1000.0]),
    st.sampled_from([0.0, -1.0, float("nan"), float("inf")]),
)
frame_counts = mostly(st.integers(1, 5), st.integers(-1, 1))
ratios = mostly(st.integers(1, 3), st.integers(-1, 0))


class SamplingRules(EditingMachine):
    @rule(frames=frame_counts)
    def set_frame_number(self, frames: int) -> None:
        self.perform("moxSetFrameNumber", frames)

    @rule(frames=frame_counts, ratio=ratios)
    def set_frame_number_and_ratio(self, frames: int, ratio: int) -> None:
        self.perform("moxSetFrameNumber", frames, ratio)

    @rule(ratio=ratios)
    def set_ratio(self, ratio: int) -> None:
        self.perform("moxSetAnalogSampleNumberPerFrame", ratio)

    @rule(rate=rates)
    def set_frequency(self, rate: float) -> None:
        self.perform("moxSetFrequency", rate)

    @rule(first=mostly(st.integers(0, 300), st.just(-1)))
    def set_first_frame(self, first: int) -> None:
        self.perform("moxSetFirstFrame", first)

    @rule(first=mostly(st.integers(0, 300), st.just(-1)), shift_events=st.integers(-1, 1))
    def set_first_frame_and_shift_events(self, first: int, shift_events: int) -> None:
        self.perform("moxSetFirstFrame", first, shift_events)

    @rule(bits=mostly(st.sampled_from([8, 12, 14, 16]), st.integers(7, 17)))
    def set_resolution(self, bits: int) -> None:
        self.perform("moxSetAnalogResolution", bits)

    @rule(gap=st.integers(-(2**31), 2**31 - 1))
    def set_interpolation_gap(self, gap: int) -> None:
        self.perform("moxSetMaxInterpolationGap", gap)
