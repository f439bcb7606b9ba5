"""Analog channels."""

from __future__ import annotations

from typing import Any

import numpy as np

from .channels import (
    by_index,
    checked,
    close_gap,
    find,
    joined,
    keep_below,
    refuse_existing,
    set_name,
    spread,
    units,
    unused_name,
)
from .sampling import SamplingModel
from .state import Array, Channel, Refused, single

GAINS = [0.0, 10000.0, 5000.0, 2500.0, 1250.0, 1000.0]

Reading = list[Any]


def samples(channel: Channel) -> Array | float:
    """One dimension; a single sample is a number."""
    column = channel.values[:, 0]
    return float(column[0]) if len(column) == 1 else column


class AnalogModel(SamplingModel):
    def moxGetAnalogNumber(self) -> float:
        return float(len(self.analogs.channels))

    def moxGetAnalogsValues(self) -> Array:
        return joined(self.analogs.channels.values())

    def moxGetAnalogs(self) -> Reading:
        channels = self.analogs.channels
        first = next(iter(channels.values()), self.analogs)
        info = {
            "units": units(channels, "ANALOGS"),
            "label": {name: channel.label for name, channel in channels.items()},
            "offset": {name: channel.offset for name, channel in channels.items()},
            "scale": {name: channel.scale for name, channel in channels.items()},
            "description": {name: channel.description for name, channel in channels.items()},
            "gain": {name: GAINS[channel.gain] for name, channel in channels.items()},
            "frequency": first.rate,
        }
        return [{name: samples(channel) for name, channel in channels.items()}, info]

    def moxGetAnalog(self, key: int | str) -> Reading:
        channel = self._channel(key)
        info = {
            "label": channel.label,
            "units": channel.unit,
            "scale": channel.scale,
            "offset": channel.offset,
            "description": channel.description,
            "gain": GAINS[channel.gain],
            "frequency": channel.rate,
        }
        return [samples(channel), info]

    def moxAppendAnalog(self, label: str, matrix: Any, description: str = "") -> Reading:
        values = checked(matrix, self.analogs.samples, 1, 1)
        index = len(self.analogs.channels)
        label = label or unused_name(self.analogs, index)
        refuse_existing(self.analogs, label)
        self._add_channel(label, index, values, description)
        return self.moxGetAnalogs()

    def moxRemoveAnalog(self, key: int | str) -> Reading:
        removed = self._channel(key)
        del self.analogs.channels[removed.name]
        close_gap(self.analogs.channels.values(), removed.index)
        self.resize_channels_to_come()
        return self.moxGetAnalogs()

    def moxClearAnalogs(self) -> None:
        self.analogs.channels.clear()
        self.resize_channels_to_come()

    def moxSetAnalogNumber(self, number: int) -> None:
        count = len(self.analogs.channels)
        if count > number:
            # As many channels remain as were to be removed.
            keep_below(self.analogs, count - number)
        for index in range(count, number):
            name = unused_name(self.analogs, index)
            self._add_channel(name, index, np.zeros((self.analogs.samples, 1)), "")

    def moxSetAnalogsValues(self, matrix: Any) -> None:
        channels = by_index(self.analogs.channels.values())
        # As many as there are or, after a change of rate, as belong to the frames.
        samples = int(self.moxGetPointFrameNumber()) * self.ratio
        rows = samples if np.shape(matrix)[:1] == (samples,) else self.analogs.samples
        spread(checked(matrix, rows, len(channels), 1), channels, 1)
        if rows != self.analogs.samples:
            self.analogs.samples = rows
            self.resize_channels_to_come()

    def moxSetAnalogValues(self, key: int | str, matrix: Any) -> None:
        channel = self._channel(key)
        channel.values = checked(matrix, self.analogs.samples, 1, 1)

    def moxSetAnalogLabel(self, key: int | str, label: str) -> Reading:
        self._channel(key).label = label
        return self.moxGetAnalogs()

    def moxSetAnalogDescription(self, key: int | str, text: str) -> Reading:
        self._channel(key).description = text
        return self.moxGetAnalogs()

    def moxSetAnalogUnit(self, key: int | str, unit: str) -> Reading:
        self._channel(key).unit = unit
        return self.moxGetAnalogs()

    def moxSetAnalogGain(self, key: int | str, code: int) -> Reading:
        if code not in range(len(GAINS)):
            raise Refused(
                "Unknown gain. Read the documentation of this fuction to know the possible values"
            )
        self._channel(key).gain = code
        return self.moxGetAnalogs()

    def moxSetAnalogOffset(self, key: int | str, offset: int) -> Reading:
        self._channel(key).offset = single(offset)
        return self.moxGetAnalogs()

    def moxSetAnalogScale(self, key: int | str, scale: float) -> Reading:
        self._channel(key).scale = single(scale)
        return self.moxGetAnalogs()

    def _channel(self, key: int | str) -> Channel:
        return find([self.analogs], key)[1]

    def _add_channel(self, label: str, index: int, values: Array, description: str) -> None:
        rate = single(single(self.moxGetPointFrequency()) * self.ratio)
        name = set_name(label)
        self.analogs.channels[name] = Channel(
            name, label, index, values, rate, self.analogs.start, "Analog", description
        )  # fmt: skip
