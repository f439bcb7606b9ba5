"""Acquisitions whose analog channels a test lays down one by one."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import Any

import _mox_probe as probe
import _moxPY

FLOAT64 = 11
ATTRIBUTE_TYPES = {
    "RelativeSetIndex": (6, "int32"),
    "Gain": (6, "int32"),
    "Scale": (10, "float"),
    "Offset": (10, "float"),
    "SampleRate": (11, "double"),
}


@dataclass
class Channel:
    """A set of `Format/Data/AnalogsExport`; an attribute that is None is left out."""

    name: str
    samples: Sequence[float] = (1.0, 2.0, 3.0)
    index: int | None = 0
    label: str | None = ""  # empty: the name
    unit: str | None = "V"
    description: str | None = "described"
    gain: int | None = 0
    offset: float | None = 0.0
    scale: float | None = 1.0
    rate: float | None = 1000.0


def with_analogs(*channels: Channel) -> Any:
    """A new acquisition with these channels, created in this order."""
    acquisition = _moxPY.moxNewAcquisition()
    for channel in channels:
        add_analog(acquisition, channel)
    return acquisition


def add_analog(acquisition: Any, channel: Channel) -> None:
    path = f"Format/Data/AnalogsExport/{channel.name}"
    probe.create_set(acquisition, path, FLOAT64, [1, 1, len(channel.samples)])
    probe.fill_set(acquisition, path, "double", list(channel.samples))
    texts = {
        "Label": channel.name if channel.label == "" else channel.label,
        "Unit": channel.unit,
        "Description": channel.description,
    }
    for name, text in texts.items():
        if text is not None:
            probe.create_text_attribute(acquisition, path, name, text)
    numbers = {
        "RelativeSetIndex": channel.index,
        "Gain": channel.gain,
        "Offset": channel.offset,
        "Scale": channel.scale,
        "SampleRate": channel.rate,
    }
    for name, number in numbers.items():
        if number is not None:
            store_type, native = ATTRIBUTE_TYPES[name]
            probe.create_attribute(acquisition, path, name, store_type, None)
            probe.write_attribute(acquisition, path, name, native, number)
