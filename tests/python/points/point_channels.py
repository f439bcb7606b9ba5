"""Acquisitions whose point channels a test lays down one by one."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np

INT32, FLOAT64 = 6, 11
ATTRIBUTE_TYPES = {"RelativeSetIndex": (INT32, "int32"), "SampleRate": (FLOAT64, "double"),
                   "StartTime": (FLOAT64, "double")}  # fmt: skip


@dataclass
class Channel:
    """A set of `Format/Data/<group>`; an attribute that is None is left out."""

    group: str
    name: str
    values: Any = ((1.0, 2.0), (3.0, 4.0), (5.0, 6.0))  # component, frame
    index: int | None = 0
    label: str | None = ""  # empty: the name
    unit: str | None = "mm"
    units: str | None = None  # the other spelling, which comes before `unit`
    description: str | None = "described"
    rate: float | None = 100.0
    start: float = 0.0


def with_points(*channels: Channel) -> Any:
    """A new acquisition with these channels, created in this order."""
    acquisition = _moxPY.moxNewAcquisition()
    for channel in channels:
        add_point(acquisition, channel)
    return acquisition


def add_point(acquisition: Any, channel: Channel) -> None:
    path = f"Format/Data/{channel.group}/{channel.name}"
    values = np.asarray(channel.values, dtype=np.float64)
    probe.create_set(acquisition, path, FLOAT64, [values.shape[0], 1, values.shape[1]])
    probe.fill_set(acquisition, path, "double", values.ravel().tolist())
    attributes = {
        "RelativeSetIndex": channel.index,
        "Label": channel.name if channel.label == "" else channel.label,
        "Unit": channel.unit,
        "Units": channel.units,
        "Description": channel.description,
        "SampleRate": channel.rate,
        "StartTime": channel.start,
    }
    for name, value in attributes.items():
        if value is not None:
            write_attribute(acquisition, path, name, value)


def write_attribute(acquisition: Any, path: str, name: str, value: Any) -> None:
    if isinstance(value, str):
        probe.create_text_attribute(acquisition, path, name, value)
        return
    store_type, native = ATTRIBUTE_TYPES[name]
    probe.create_attribute(acquisition, path, name, store_type, None)
    probe.write_attribute(acquisition, path, name, native, value)
