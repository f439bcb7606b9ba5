"""What an acquisition consists of, as plain Python values and NumPy arrays."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Any

import numpy as np
from numpy.typing import NDArray

Array = NDArray[Any]

# Group name -> type word, in the order in which everything walks over the groups.
POINT_TYPES = {
    "Angles": "angle", "Forces": "force", "Markers": "marker", "Moments": "moment",
    "Powers": "power",
}  # fmt: skip
GROUP_OF_TYPE = {word: group for group, word in POINT_TYPES.items()}


class Refused(Exception):
    """The call is refused and changes nothing.

    Where two things are wrong and their order is free, the kind is Exception.
    """

    def __init__(
        self,
        text: str | None = None,
        kind: type[Exception] = RuntimeError,
        names: tuple[str, ...] = (),
    ) -> None:
        super().__init__(text)
        self.text = text  # the whole text; None where it is free
        self.kind = kind
        self.names = names  # what a free text has to mention


class Anything:
    """Stands for a result that is not laid down, but for its type."""

    def __init__(self, kind: type) -> None:
        self.kind = kind


@dataclass
class Channel:
    """A point or an analog channel."""

    name: str
    label: str
    index: int
    values: Array  # sample, component
    rate: float
    start: float  # seconds
    metric: str
    description: str = ""
    unit: str = "Unknown"
    # Analog channels only.
    gain: int = 0
    offset: float = 0.0
    scale: float = 1.0


@dataclass
class ChannelGroup:
    """The channels of one kind, by name and in the order of their creation."""

    samples: int = 0
    rate: float = 0.0
    start: float = 0.0
    channels: dict[str, Channel] = field(default_factory=dict)


@dataclass
class RawSets:
    """What an acquisition that was read still knows of the file's own channel tables."""

    frames: int
    point_rate: float
    analog_rate: float


@dataclass
class Event:
    """All occurrences of one event."""

    times: list[float]  # representable in single precision
    subject: str
    description: str
    id: int


@dataclass
class Entry:
    """A metadata entry; `kind` is the element type as NumPy calls it, "str" for text."""

    kind: str
    dims: tuple[int, ...]
    elements: list[Any]  # the last dimension varies fastest


@dataclass
class MetadataGroup:
    entries: dict[str, Entry] = field(default_factory=dict)
    groups: dict[str, MetadataGroup] = field(default_factory=dict)


@dataclass
class State:
    """An acquisition without points, analog channels, frames and events."""

    point_groups: dict[str, ChannelGroup] = field(
        default_factory=lambda: {name: ChannelGroup() for name in POINT_TYPES}
    )
    analogs: ChannelGroup = field(default_factory=ChannelGroup)
    ratio: int = 1  # analog samples in a frame
    gap: int = 0
    raw: RawSets | None = None
    events: dict[str, Event] = field(default_factory=dict)
    metadata: MetadataGroup = field(default_factory=MetadataGroup)


def single(value: float) -> float:
    """The nearest number that single precision can hold."""
    with np.errstate(over="ignore"):
        return float(np.float32(value))
