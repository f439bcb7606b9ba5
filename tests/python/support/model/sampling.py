"""Frames, rates and the first frame."""

from __future__ import annotations

import math

import numpy as np

from .channels import resize
from .entries import assign_number, tell_rate
from .state import Anything, ChannelGroup, Entry, Refused, State, single


class SamplingModel(State):
    def moxGetPointFrequency(self) -> float:
        return self.raw.point_rate if self.raw else self.point_groups["Angles"].rate

    def moxGetPointFrameNumber(self) -> float:
        return float(self.raw.frames if self.raw else self.point_groups["Angles"].samples)

    def moxGetAnalogFrequency(self) -> float:
        return self.raw.analog_rate if self.raw else self.analogs.rate

    def moxGetAnalogFrameNumber(self) -> float:
        return float(self.analogs.samples)

    def moxGetAnalogSampleNumberPerFrame(self) -> float:
        return float(self.ratio)

    def moxGetMaxInterpolationGap(self) -> float:
        return float(self.gap)

    def moxGetFirstFrame(self) -> float:
        markers = self.point_groups["Markers"]
        return float(np.float32(markers.rate) * np.float32(markers.start))

    def moxGetLastFrame(self) -> float:
        last = np.float32(self.moxGetFirstFrame()) + np.float32(self._markers.samples)
        return float(last - np.float32(1.0))

    def moxGetAnalogResolution(self) -> float | Anything:
        if "ANALOG" not in self.metadata.groups:
            raise Refused("Impossible to retrieve group with path : 'Format/Metadata/ANALOG'")
        bits = self.metadata.groups["ANALOG"].entries.get("BITS")
        if bits is None:
            return 12.0
        readable = bits.kind != "str" and len(bits.elements) == 1
        return float(bits.elements[0]) if readable else Anything(float)

    def moxSetFrequency(self, rate: float) -> None:
        if not math.isfinite(rate) or rate < 0:
            raise Refused()
        former = self.moxGetPointFrequency()
        if self.raw:
            if former:
                self.raw.frames = int(rate / former * self.raw.frames)
            self.raw.point_rate, self.raw.analog_rate = float(rate), float(rate * self.ratio)
        for group in self.point_groups.values():
            _set_rate(group, rate)
        _set_rate(self.analogs, rate * self.ratio)
        self._set_rate_of("POINT", rate)
        self._set_rate_of("ANALOG", rate * self.ratio)

    def moxSetFrameNumber(self, frames: int, ratio: int | None = None) -> None:
        if frames < 0:
            raise Refused()
        if ratio is not None:
            self.moxSetAnalogSampleNumberPerFrame(ratio)
        for group in self.point_groups.values():
            resize(group, frames, math.nan)
        resize(self.analogs, frames * self.ratio, 0.0)
        if self.raw:
            self.raw.frames = frames

    def moxSetAnalogSampleNumberPerFrame(self, ratio: int) -> None:
        if ratio < 1:
            raise Refused("Ratio cannot be lower than 1")
        if self.analogs.channels:
            raise Refused(
                "Impossible to modify of the number of analog samples per 3D frames when the "
                "acquisition already contains analog channels."
            )
        self.ratio = ratio
        self.analogs.samples = int(self.moxGetPointFrameNumber()) * ratio
        self.analogs.rate = self.moxGetPointFrequency() * ratio
        if self.raw:
            self.raw.analog_rate = self.analogs.rate
        self._set_rate_of("ANALOG", self.analogs.rate)
        self.resize_channels_to_come()

    def moxSetFirstFrame(self, first: int, shift_events: int = 0) -> None:
        rate = self._markers.rate
        if first < 0 or (first > 0 and rate == 0):
            raise Refused()
        former = self._markers.start
        start = float(np.float32(first) / np.float32(rate)) if first else 0.0
        if shift_events:
            shift = single(start - single(former))
            for event in self.events.values():
                event.times = [single(time + shift) for time in event.times]
        for group in [*self.point_groups.values(), self.analogs]:
            group.start = start
            for channel in group.channels.values():
                channel.start = start

    def moxSetMaxInterpolationGap(self, gap: int) -> None:
        self.gap = gap

    def moxSetAnalogResolution(self, bits: int) -> None:
        if bits not in (8, 12, 14, 16):
            raise Refused("Invalid analog resolution.")
        self.moxGetAnalogResolution()  # needs the group
        entries = self.metadata.groups["ANALOG"].entries
        if "BITS" in entries:
            assign_number(entries["BITS"], bits)
        else:
            entries["BITS"] = Entry("int32", (), [bits])

    def resize_channels_to_come(self) -> None:
        """Groups without channels have the samples that belong to what there is."""
        groups = self.point_groups.values()
        if not any(group.channels for group in groups):
            counted = int(self.moxGetPointFrameNumber())
            held = self.analogs.samples // self.ratio
            for group in groups:
                group.samples = held if self.analogs.channels else counted
        if not self.analogs.channels:
            self.analogs.samples = int(self.moxGetPointFrameNumber()) * self.ratio

    def _set_rate_of(self, group: str, rate: float) -> None:
        """The parameter that says a rate follows where there is one."""
        if group in self.metadata.groups:
            tell_rate(self.metadata.groups[group].entries, rate)

    @property
    def _markers(self) -> ChannelGroup:
        return self.point_groups["Markers"]


def _set_rate(group: ChannelGroup, rate: float) -> None:
    group.rate = float(rate)
    for channel in group.channels.values():
        channel.rate = float(rate)
