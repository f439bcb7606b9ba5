"""The parameters that follow from a file's content, and what a test puts in their place."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from .contents import Event, Platform
from .parameters import Array, Group, Parameter, integer, numbered, parameters_of, real, text

if TYPE_CHECKING:
    from .c3d_bytes import C3DFile

LARGEST_WORD = 65535


def default_groups(file: C3DFile, data_block: int, rotation_block: int) -> list[Group]:
    """POINT, ANALOG and FORCE_PLATFORM always; TRIAL, EVENT and ROTATION where there is content."""
    contents = {
        "POINT": _point(file, data_block),
        "ANALOG": _analog(file),
        "FORCE_PLATFORM": _force_platform(file.platforms, file.zero),
    }
    if "trial" in file.frame_counts:
        contents["TRIAL"] = _trial(file)
    if file.events is not None:
        contents["EVENT"] = _event(file.events)
    if file.rotation_list:
        contents["ROTATION"] = _rotation(file, rotation_block)
    return [Group(name, id, held) for id, (name, held) in enumerate(contents.items(), start=1)]


def _point(file: C3DFile, data_block: int) -> list[Parameter]:
    labels = [label for label, _ in file.point_list]
    descriptions = file.point_descriptions or [b""] * len(labels)
    return [
        integer("USED", len(labels), locked=True),
        real("SCALE", file.signed_scale, locked=True),
        real("RATE", file.rate, locked=True),
        integer("DATA_START", data_block, locked=True),
        *_frame_counts(file),
        *numbered(text, "LABELS", labels, width=file.label_width),
        *numbered(text, "DESCRIPTIONS", descriptions),
        text("UNITS", file.point_units, width=4),
    ]


def _frame_counts(file: C3DFile) -> list[Parameter]:
    count = file.frame_count
    forms = {
        "integer": integer("FRAMES", min(count, LARGEST_WORD), locked=True),
        "wrapped": integer("FRAMES", count % (LARGEST_WORD + 1), locked=True),
        "real": real("FRAMES", float(count), locked=True),
        "long_frames": real("LONG_FRAMES", float(count)),
    }
    return [forms[form] for form in file.frame_counts if form != "trial"]


def _trial(file: C3DFile) -> list[Parameter]:
    def field(name: str, frame: int) -> Parameter:
        return integer(name, [frame & LARGEST_WORD, frame >> 16])  # the low word comes first

    last = file.first_frame + file.frame_count - 1
    return [field("ACTUAL_START_FIELD", file.first_frame), field("ACTUAL_END_FIELD", last)]


def _analog(file: C3DFile) -> list[Parameter]:
    used = integer("USED", len(file.analog_list), locked=True)
    if not file.analog_list:
        return [used]

    def column(name: str) -> list[Any]:
        return [getattr(channel, name) for channel in file.analog_list]

    parameters = [
        used,
        *numbered(text, "LABELS", column("label"), width=file.label_width),
        *numbered(text, "DESCRIPTIONS", column("description")),
        real("GEN_SCALE", file.gen_scale),
        *numbered(real, "SCALE", column("scale")),
        *numbered(integer, "OFFSET", column("offset")),
        *numbered(text, "UNITS", column("units"), width=4),
        real("RATE", file.rate * file.samples_a_frame, locked=True),
    ]
    if file.analog_format is not None:
        parameters.append(text("FORMAT", file.analog_format, locked=True))
    if file.bits is not None:
        parameters.append(integer("BITS", file.bits, locked=True))
    return parameters


def _force_platform(platforms: Sequence[Platform], zero: Sequence[int]) -> list[Parameter]:
    parameters = [integer("USED", len(platforms))]
    if not platforms:
        return parameters
    widest = max(len(platform.channels) for platform in platforms)
    channels = [[*p.channels, *[0] * (widest - len(p.channels))] for p in platforms]
    parameters += [
        integer("TYPE", [platform.type for platform in platforms]),
        integer("ZERO", zero),
        real("CORNERS", np.stack([np.asarray(platform.corners) for platform in platforms])),
        real("ORIGIN", np.stack([np.asarray(platform.origin) for platform in platforms])),
        integer("CHANNEL", channels),
    ]
    if any(platform.cal_matrix is not None for platform in platforms):
        # Column by column: the row varies fastest.
        matrices = [_cal_matrix(platform, widest).T for platform in platforms]
        parameters.append(real("CAL_MATRIX", np.stack(matrices)))
    return parameters


def _cal_matrix(platform: Platform, channels: int) -> Array:
    """The platform's matrix, or nothing, in the upper left corner of a unit matrix."""
    matrix = np.eye(channels)
    if platform.cal_matrix is not None:
        own = np.asarray(platform.cal_matrix)
        matrix[: own.shape[0], : own.shape[1]] = own
    return matrix


def _event(events: Sequence[Event]) -> list[Parameter]:
    times = [divmod(event.time, 60.0) for event in events]
    return [
        integer("USED", len(events)),
        *numbered(text, "CONTEXTS", [event.context for event in events], width=16),
        *numbered(text, "LABELS", [event.label for event in events], width=32),
        *numbered(text, "DESCRIPTIONS", [event.description for event in events], width=80),
        *numbered(text, "SUBJECTS", [event.subject for event in events], width=32),
        *numbered(real, "TIMES", np.reshape(times, (-1, 2))),
        *numbered(integer, "ICON_IDS", [event.icon for event in events]),
        *numbered(integer, "GENERIC_FLAGS", [event.flag for event in events]),
    ]


def _rotation(file: C3DFile, rotation_block: int) -> list[Parameter]:
    labels = [label for label, _ in file.rotation_list]
    return [
        integer("USED", len(labels)),
        integer("DATA_START", rotation_block),
        integer("RATIO", file.rotation_ratio),
        real("RATE", file.rate * file.rotation_ratio),
        *numbered(text, "LABELS", labels),
        *numbered(text, "DESCRIPTIONS", [b""] * len(labels)),
    ]


def apply_changes(groups: list[Group], changes: Mapping[str, Any]) -> None:
    """`changes` of the form GROUP: None, or GROUP:NAME: None, Parameter or plain value.

    A replaced parameter keeps its place, a new one goes to the end, unknown groups are made.
    """
    for path, value in changes.items():
        group_name, _, name = path.partition(":")
        group = next((group for group in groups if group.name == group_name), None)
        if not name:
            groups[:] = [kept for kept in groups if kept is not group]
            continue
        if group is None:
            group = Group(group_name, max((group.id for group in groups), default=0) + 1)
            groups.append(group)
        if value is None:
            new = []
        else:
            new = [value] if isinstance(value, Parameter) else parameters_of(name, value)
        names = [parameter.name for parameter in group.parameters]
        place = names.index(name) if name in names else len(names)
        group.parameters[place : place + 1] = new
