"""Points: what the reading functions give."""

from __future__ import annotations

from typing import Any

import numpy as np

from .channels import find, joined, keyed, units
from .state import POINT_TYPES, Array, Channel, State

Reading = list[Any]


def samples(channel: Channel) -> Array:
    """frames × 3; a single frame is three values."""
    return channel.values[0] if len(channel.values) == 1 else channel.values


def _of_one_type(group: str) -> tuple[Any, Any]:
    """The two functions that read one group."""

    def read(self: PointModel) -> Reading:
        channels = self.point_groups[group].channels
        values = {name: samples(channel) for name, channel in channels.items()}
        if not channels:
            return [values, {}]
        first = next(iter(channels.values()))
        return [values, {"frequency": first.rate, "units": units(channels, group.upper())}]

    def matrix(self: PointModel) -> Array:
        return joined(self.point_groups[group].channels.values())

    return read, matrix


class PointModel(State):
    moxGetAngles, moxGetAnglesValues = _of_one_type("Angles")
    moxGetForces, moxGetForcesValues = _of_one_type("Forces")
    moxGetMarkers, moxGetMarkersValues = _of_one_type("Markers")
    moxGetMoments, moxGetMomentsValues = _of_one_type("Moments")
    moxGetPowers, moxGetPowersValues = _of_one_type("Powers")

    @property
    def points(self) -> list[Channel]:
        groups = self.point_groups.values()
        return [channel for group in groups for channel in group.channels.values()]

    def moxGetPointNumber(self) -> float:
        return float(len(self.points))

    def moxGetPointsValues(self) -> Array:
        return joined(self.points)

    def moxGetPoints(self) -> Reading:
        points = keyed(self.points)
        values = {key: samples(point) for key, point in points.items()}
        if not points:
            return [values, {}]
        first = next(iter(points.values()))
        info = {
            "frequency": first.rate,
            "firstFrame": float(np.float32(first.start) * np.float32(first.rate) + np.float32(1.0)),
            "units": units(points, ""),
            "label": {key: point.label for key, point in points.items()},
            "description": {key: point.description for key, point in points.items()},
        }
        return [values, info]

    def moxGetPoint(self, key: int | str) -> Reading:
        _, point = find(self.point_groups.values(), key)
        info = {
            "frequency": point.rate,
            "units": point.unit,
            "label": point.label,
            "description": point.description,
        }
        return [samples(point), info]

    def moxGetPointsUnit(self, group: str) -> str:
        if group not in POINT_TYPES or not self.point_groups[group].channels:
            return ""
        return next(iter(self.point_groups[group].channels.values())).unit
