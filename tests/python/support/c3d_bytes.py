"""C3D files written byte by byte for tests, with every lie and oddity that a test asks for.

`c3d_bytes(points, **options)` gives the bytes of a file; `C3DFile(points, **options)` is the same
description as an object, whose `layout()` tells where its sections lie. All options are the
fields of `C3DFile`, and all have a default, so that a test names only what it is about:

    c3d_bytes({"LASI": positions})                                     Intel, real, 100 Hz
    c3d_bytes({"LASI": positions}, processor="dec", storage="integer", scale=0.05)
    c3d_bytes([("A", a), ("A", b), ("", c), ("L/R", d)])               any labels, also bytes
    c3d_bytes({"LASI": np.column_stack([positions, words])})           raw fourth words
    c3d_bytes(analogs=[Analog("Fz1", raw, scale=0.5, offset=2048, units="N")],
              samples_per_frame=10, analog_format="UNSIGNED", bits=16)
    c3d_bytes(points, header={"point_count": 7, "first_frame": 0})     contradicts the parameters
    c3d_bytes(points, parameters={"POINT:USED": 7,                     int: integer
                                  "POINT:FRAMES": 7.0,                 float: real
                                  "POINT:ANGLES": ["LHip", "LKnee"],   characters [5, 2]
                                  "POINT:RATE": None,                  removed
                                  "ANALOG": None,                      group removed
                                  "MINE:CUBE": real("CUBE", cube, locked=True)})
    c3d_bytes(points, groups=[Group("LOST", 9, [integer("A", 1)], write_record=False)])
    c3d_bytes(points, record_order=parameters_first, end_mark="zero_name")

Lists of more than 255 entries go on in NAME2, NAME3, ...: labels, descriptions, units, scales,
offsets, events and plain lists in `parameters`. A file that is cut short is a slice of the bytes.
"""

from __future__ import annotations

from collections.abc import Callable, Mapping, Sequence
from dataclasses import dataclass, field
from functools import cached_property
from typing import Any

from numpy.typing import ArrayLike

from .contents import (
    Analog,
    Channels,
    Event,
    Labelled,
    Platform,
    Point,
    Rotation,
    analog_channels,
    points_with_words,
    rotation_samples,
)
from .groups import LARGEST_WORD, apply_changes, default_groups
from .header import FOUR_CHARACTER_LABELS, HeaderEvent, header_bytes
from .number_formats import NUMBER_FORMATS, NumberFormat
from .parameter_section import (
    BLOCK,
    RecordOrder,
    in_blocks,
    parameters_first,
    reversed_records,
    section_bytes,
)
from .parameters import Group, Parameter, Text, byte, integer, numbered, real, text
from .sections import data_bytes, rotation_bytes

__all__ = [
    "Analog",
    "C3DFile",
    "Event",
    "Group",
    "HeaderEvent",
    "Layout",
    "Parameter",
    "Platform",
    "byte",
    "c3d_bytes",
    "integer",
    "numbered",
    "parameters_first",
    "real",
    "reversed_records",
    "text",
]


@dataclass(frozen=True)
class Layout:
    """Where the sections lie, as byte offsets from the header; blocks count from 1."""

    parameter_offset: int
    data_block: int
    data_offset: int
    frame_bytes: int
    data_end: int  # behind the last frame, before the padding
    rotation_block: int
    rotation_offset: int


@dataclass
class C3DFile:
    """A C3D file as its content and its oddities; `to_bytes` writes it."""

    # Label -> (frames, 3), or (frames, 4) with the raw fourth word; NaN makes a sample invalid.
    points: Labelled = ()
    processor: str = "intel"  # "intel", "dec", "mips"
    storage: str = "real"  # "real", "integer"
    scale: float = 0.1  # magnitude; written negative for real storage
    rate: float = 100.0
    first_frame: int = 1
    frames: int | None = None  # None: as many as the points, analogs or rotations have
    # Raw fourth words, by label or by index: -1, or cameras * 256 + residual.
    residuals: Mapping[Any, ArrayLike] = field(default_factory=dict)
    point_units: Text = "mm"
    point_descriptions: Sequence[Text] | None = None
    label_width: int | None = None  # None: the longest label
    # How FRAMES is told, any of: "integer" (stops at 65535), "wrapped" (modulo 65536), "real",
    # "long_frames", "trial". Empty: not at all.
    frame_counts: Sequence[str] = ("integer",)

    analogs: Channels = ()
    samples_per_frame: int | None = None  # None: from the lengths
    gen_scale: float = 1.0
    analog_format: Text | None = None  # "SIGNED", "UNSIGNED"
    bits: int | None = None

    platforms: Sequence[Platform] = ()
    zero: Sequence[int] = (0, 0)
    events: Sequence[Event] | None = None  # None: no EVENT group
    header_events: Sequence[HeaderEvent] = ()
    # Label -> (samples, 17) reals, or (samples, 4, 4) transforms.
    rotations: Labelled = ()
    rotation_ratio: int = 1

    # Changes of what follows from the content above.
    header: Mapping[str, float] = field(default_factory=dict)  # names: see header.py
    header_patches: Mapping[int, bytes] = field(default_factory=dict)  # byte offset: bytes
    parameters: Mapping[str, Any] = field(default_factory=dict)  # see groups.apply_changes
    groups: Sequence[Group] = ()  # written as they are, behind the others
    group_ids: Mapping[str, int] = field(default_factory=dict)
    edit_groups: Callable[[list[Group]], list[Group]] | None = None  # last word on all groups

    # Places and marks.
    leading_zeros: int = 0  # zero bytes before the header; all pointers count from the header
    parameter_block: int = 2
    parameter_section: Mapping[str, Any] = field(default_factory=dict)  # head, block_count, ...
    record_order: RecordOrder | None = None  # parameters_first, reversed_records, or your own
    end_mark: str = "zero_offset"  # "zero_offset", "zero_name"
    data_block: int | None = None  # None: right behind the parameters
    filler: int = 0  # byte that fills gaps between sections
    data: bytes | None = None  # replaces the data section

    @cached_property
    def numbers(self) -> NumberFormat:
        return NUMBER_FORMATS[self.processor]

    @cached_property
    def point_list(self) -> list[Point]:
        return points_with_words(self.points, self.residuals)

    @cached_property
    def analog_list(self) -> list[Analog]:
        return analog_channels(self.analogs)

    @cached_property
    def rotation_list(self) -> list[Rotation]:
        return rotation_samples(self.rotations)

    @property
    def signed_scale(self) -> float:
        return {"real": -self.scale, "integer": self.scale}[self.storage]

    @cached_property
    def frame_count(self) -> int:
        if self.frames is not None:
            return self.frames
        if self.point_list:
            return len(self.point_list[0][1])
        if self.analog_list:
            return _length(self.analog_list[0].raw) // (self.samples_per_frame or 1)
        if self.rotation_list:
            return len(self.rotation_list[0][1]) // self.rotation_ratio
        return 0

    @cached_property
    def samples_a_frame(self) -> int:
        if self.samples_per_frame is not None:
            return self.samples_per_frame
        if not self.analog_list or not self.frame_count:
            return 1
        return _length(self.analog_list[0].raw) // self.frame_count

    def all_groups(self, data_block: int = 0, rotation_block: int = 0) -> list[Group]:
        groups = default_groups(self, data_block, rotation_block)
        apply_changes(groups, self.parameters)
        for group in groups:
            group.id = self.group_ids.get(str(group.name), group.id)
        groups += self.groups
        return groups if self.edit_groups is None else self.edit_groups(groups)

    def layout(self) -> Layout:
        # Block numbers have a fixed size in the parameters, so a draft has the final length.
        parameter_offset = (self.parameter_block - 1) * BLOCK
        behind = parameter_offset + len(self._parameters(0, 0))
        data_block = self.data_block or behind // BLOCK + 1
        data_offset = (data_block - 1) * BLOCK
        data_end = data_offset + len(self._data())
        rotation_block = -(-data_end // BLOCK) + 1
        real = self.storage == "real"
        values = self.samples_a_frame * len(self.analog_list)
        frame_bytes = (4 if real else 2) * (4 * len(self.point_list) + values)
        return Layout(
            parameter_offset,
            data_block,
            data_offset,
            frame_bytes,
            data_end,
            rotation_block,
            (rotation_block - 1) * BLOCK,
        )

    def to_bytes(self) -> bytes:
        layout = self.layout()
        fields = self._header_fields(layout) | dict(self.header)
        sections = {
            0: header_bytes(fields, self.header_events, self.numbers, self.header_patches),
            layout.parameter_offset: self._parameters(layout.data_block, layout.rotation_block),
            layout.data_offset: in_blocks(self._data()),
            layout.rotation_offset: in_blocks(rotation_bytes(self.rotation_list, self.numbers)),
        }
        content = bytearray(self.leading_zeros)
        for offset, section in sections.items():
            if section:
                gap = offset + self.leading_zeros - len(content)
                if gap < 0:
                    raise ValueError(f"a section at {offset} overlaps the one before it")
                content += bytes([self.filler]) * gap + section
        return bytes(content)

    def _header_fields(self, layout: Layout) -> dict[str, float]:
        count = self.frame_count
        analog_values = self.samples_a_frame * len(self.analog_list)
        return {
            "parameter_block": self.parameter_block,
            "key": 0x50,
            "point_count": len(self.point_list),
            "analog_values": analog_values,
            "first_frame": self.first_frame,
            "last_frame": min(self.first_frame + count - 1, LARGEST_WORD),
            "scale": self.signed_scale,
            "data_start": layout.data_block,
            "samples_per_frame": self.samples_a_frame if analog_values else 0,
            "rate": self.rate,
            "event_key": FOUR_CHARACTER_LABELS,
            "event_count": len(self.header_events),
        }

    def _parameters(self, data_block: int, rotation_block: int) -> bytes:
        return section_bytes(
            self.all_groups(data_block, rotation_block),
            self.numbers,
            order=self.record_order,
            end_mark=self.end_mark,
            **self.parameter_section,
        )

    def _data(self) -> bytes:
        return self._encoded_data if self.data is None else self.data

    @cached_property
    def _encoded_data(self) -> bytes:
        return data_bytes(
            self.point_list,
            self.analog_list,
            self.frame_count,
            real=self.storage == "real",
            scale=self.scale,
            numbers=self.numbers,
        )


def _length(values: ArrayLike) -> int:
    return len(values)  # type: ignore[arg-type]


def c3d_bytes(points: Labelled = (), **options: Any) -> bytes:
    """The bytes of a C3D file; the options are the fields of `C3DFile`."""
    return C3DFile(points, **options).to_bytes()
