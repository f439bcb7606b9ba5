"""Points: what the modifying functions do."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from .channels import (
    by_index,
    checked,
    close_gap,
    find,
    keep_below,
    refuse_existing,
    resize,
    set_name,
    spread,
    unused_name,
)
from .points import PointModel, Reading
from .sampling import SamplingModel
from .state import GROUP_OF_TYPE, Array, Channel, ChannelGroup, Refused


def _setter(group_name: str) -> Any:
    def set_values(self: PointEditModel, matrix: Any) -> None:
        group = self.point_groups[group_name]
        points = by_index(group.channels.values())
        spread(checked(matrix, group.samples, len(points), 3), points, 3)

    return set_values


class PointEditModel(PointModel, SamplingModel):
    moxSetMarkersValues = _setter("Markers")
    moxSetAnglesValues = _setter("Markers")  # not a slip: it writes the markers
    moxSetForcesValues = _setter("Forces")
    moxSetMomentsValues = _setter("Moments")
    moxSetPowersValues = _setter("Powers")

    def moxSetPointsValues(self, matrix: Any) -> None:
        frames = int(self.moxGetPointFrameNumber())
        columns = checked(matrix, frames, len(self.points), 3)
        for group in self.point_groups.values():
            resize(group, frames, math.nan)
        self.resize_channels_to_come()
        for point in self.points:
            point.values = columns[:, 3 * point.index : 3 * point.index + 3].copy()

    def moxSetPointValues(self, key: int | str, matrix: Any) -> None:
        group, point = find(self.point_groups.values(), key)
        point.values = checked(matrix, group.samples, 1, 3)

    def moxAppendPoint(self, word: str, label: str, matrix: Any) -> Reading:
        group = self._group_of(word)
        values = checked(matrix, group.samples, 1, 3)
        label = label or unused_name(group, len(self.points))
        refuse_existing(group, label)
        self._add_point(group, label, len(self.points), word, values)
        return self.moxGetPoints()

    def moxRemovePoint(self, key: int | str) -> Reading:
        group, point = find(self.point_groups.values(), key)
        del group.channels[point.name]
        close_gap(self.points, point.index)
        self.resize_channels_to_come()
        return self.moxGetPoints()

    def moxClearPoints(self) -> None:
        for group in self.point_groups.values():
            group.channels.clear()
        self.resize_channels_to_come()

    def moxSetPointLabel(self, key: int | str, label: str) -> Reading:
        find(self.point_groups.values(), key)[1].label = label
        return self.moxGetPoints()

    def moxSetPointDescription(self, key: int | str, text: str) -> Reading:
        find(self.point_groups.values(), key)[1].description = text
        return self.moxGetPoints()

    def moxSetPointType(self, key: int | str, word: str) -> Reading:
        target = self._group_of(word)
        holder, point = find(self.point_groups.values(), key)
        if target is not holder:
            refuse_existing(target, point.name)
            target.channels[point.name] = holder.channels.pop(point.name)
        point.metric = word
        return self.moxGetPoints()

    def moxSetPointsUnit(self, word: str, unit: str) -> None:
        for point in self._group_of(word).channels.values():
            point.unit = unit

    def moxSetPointNumber(self, number: int) -> Reading:
        count = len(self.points)
        if count > number:
            # As many points remain as were to be removed.
            for group in self.point_groups.values():
                keep_below(group, count - number)
        markers = self.point_groups["Markers"]
        for index in range(count, number):
            values = np.zeros((markers.samples, 3))
            self._add_point(markers, unused_name(markers, index), index, "marker", values)
        return self.moxGetPoints()

    def _group_of(self, word: str) -> ChannelGroup:
        if word not in GROUP_OF_TYPE:
            raise Refused(f'Unsupported point type : "{word}"')
        return self.point_groups[GROUP_OF_TYPE[word]]

    def _add_point(
        self, group: ChannelGroup, label: str, index: int, word: str, values: Array
    ) -> None:
        name = set_name(label)
        group.channels[name] = Channel(
            name, label, index, values, group.rate, group.start, word
        )  # fmt: skip
