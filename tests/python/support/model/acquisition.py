"""A whole acquisition as a model: new, or as it is read from a file."""

from __future__ import annotations

import math
from collections.abc import Mapping

import numpy as np

from ..c3d_bytes import C3DFile
from ..parameters import BYTE, CHARACTER, INTEGER, REAL, Parameter
from .analogs import AnalogModel
from .channels import set_name
from .entries import require_readable
from .events import EventModel
from .metadata import MetadataModel
from .point_edits import PointEditModel
from .state import (
    POINT_TYPES,
    Channel,
    Entry,
    Event,
    MetadataGroup,
    RawSets,
    single,
)


class Acquisition(PointEditModel, AnalogModel, EventModel, MetadataModel):
    """Has a method for each function that takes an acquisition, of the same name."""


def new_acquisition(points: int, frames: int, analogs: int, ratio: int) -> Acquisition:
    model = Acquisition()
    bits = {"BITS": Entry("int32", (), [12])}
    model.metadata = MetadataGroup(
        {"DeviceType": Entry("str", (), ["Metadata"])}, {"ANALOG": MetadataGroup(bits)}
    )
    model.moxSetFrameNumber(frames, ratio)
    model.moxSetPointNumber(points)
    model.moxSetAnalogNumber(analogs)
    return model


def acquisition_of(
    file: C3DFile, types: Mapping[str, str], units: Mapping[str, str]
) -> Acquisition:
    """What a file becomes; `types` of the labels that are no markers, `units` of all types."""
    model = Acquisition()
    rate, start = file.rate, (file.first_frame - 1) / file.rate
    model.ratio = file.samples_a_frame
    model.raw = RawSets(file.frame_count, rate, rate * model.ratio)
    for group in model.point_groups.values():
        group.samples, group.rate, group.start = file.frame_count, rate, start
    model.analogs.samples = file.frame_count * model.ratio
    model.analogs.rate, model.analogs.start = rate * model.ratio, start
    _add_points(model, file, types, units)
    _add_analogs(model, file)
    _add_events(model, file)
    model.metadata = _metadata(file)
    return model


def _add_points(
    model: Acquisition, file: C3DFile, types: Mapping[str, str], units: Mapping[str, str]
) -> None:
    names: list[str] = []
    for index, (label, table) in enumerate(file.point_list):
        names.append(_distinct(str(label), index, names))
        word = types.get(str(label), "marker")
        group = model.point_groups[{word: name for name, word in POINT_TYPES.items()}[word]]
        seen = table[:, 3:] >= 0
        group.channels[names[-1]] = Channel(
            names[-1], str(label), index, np.where(seen, table[:, :3], np.nan), group.rate,
            group.start, word, str((file.point_descriptions or [""] * 99)[index]), units[word],
        )  # fmt: skip


def _add_analogs(model: Acquisition, file: C3DFile) -> None:
    names: list[str] = []
    for index, channel in enumerate(file.analog_list):
        names.append(_distinct(str(channel.label), index, names))
        physical = (np.asarray(channel.raw) - channel.offset) * channel.scale * file.gen_scale
        model.analogs.channels[names[-1]] = Channel(
            names[-1], str(channel.label), index, physical.reshape(-1, 1), model.analogs.rate,
            model.analogs.start, "Analog", str(channel.description), str(channel.units), 0,
            float(channel.offset), single(channel.scale),
        )  # fmt: skip


def _distinct(label: str, index: int, taken: list[str]) -> str:
    """The name of a channel of a file: two with one label are both kept."""
    name = set_name(label) or f"unamed_{index}"
    number = 2
    while name in taken:
        name, number = f"{set_name(label)}_{number}", number + 1
    return name


def _add_events(model: Acquisition, file: C3DFile) -> None:
    for event in file.events or ():
        name = f"{event.context}{event.label}".replace("_", "")
        # The first occurrence describes the event.
        kept = model.events.setdefault(
            name, Event([], str(event.subject), str(event.description), event.icon)
        )
        kept.times.append(single(event.time))


def _metadata(file: C3DFile) -> MetadataGroup:
    layout = file.layout()
    groups = file.all_groups(layout.data_block, layout.rotation_block)
    return MetadataGroup(
        {"DeviceType": Entry("str", (), ["Metadata"])},
        {
            str(group.name): MetadataGroup(
                {str(each.name): _entry_of(each) for each in group.parameters}
            )
            for group in groups
        },
    )


def _entry_of(parameter: Parameter) -> Entry:
    """Dimensions are kept reversed, texts without their length."""
    if parameter.type == CHARACTER:
        width = parameter.dims[0] if parameter.dims else 1
        dims = parameter.dims[:0:-1]
        count = math.prod(dims)
        rows = [parameter.data[row * width : (row + 1) * width] for row in range(count)]
        return Entry("str", dims, [row.decode().rstrip() for row in rows])
    kind = {BYTE: "int8", INTEGER: "int16", REAL: "float32"}[parameter.type]
    if kind == "int8" and len(parameter.data) == 1:
        kind = "int16"
    require_readable(kind, len(parameter.data))
    elements = np.ravel(parameter.data).astype(kind).tolist()
    return Entry(kind, tuple(parameter.dims[::-1]), elements)
