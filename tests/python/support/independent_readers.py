"""Two readers of C3D files that other people wrote, and what they make of a file."""

from __future__ import annotations

import warnings
from collections.abc import Callable, Mapping
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any

import c3d
import ezc3d
import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.float64]


@dataclass
class Recording:
    """The content of a file; samples that are marked as not seen are NaN."""

    points: Array  # frame, point, coordinate
    unmarked_points: Array  # the same, whatever the marks say
    analogs: Array  # sample, channel
    residuals: Array | None  # frame, point, in the unit of the points; not seen: -1
    rate: float
    analog_rate: float
    first_frame: int
    texts: Callable[[str, str], list[str]]  # texts of a parameter, [] where it is missing
    rotations: Array | None = None  # sample, segment, row, column
    event_times: Array | None = None  # seconds, of the EVENT group
    header_events: Mapping[str, float] = field(default_factory=dict)  # label: seconds

    def labels(self, group: str) -> list[str]:
        """LABELS, LABELS2, ... as many as there are channels."""
        count = self.points.shape[1] if group == "POINT" else self.analogs.shape[1]
        listed, number = self.texts(group, "LABELS"), 2
        while more := self.texts(group, f"LABELS{number}"):
            listed, number = listed + more, number + 1
        return listed[:count]


def read_with_ezc3d(path: Path) -> Recording:
    content = ezc3d.c3d(str(path))

    def texts(group: str, name: str) -> list[str]:
        parameter = content["parameters"].get(group, {}).get(name)
        return [] if parameter is None else [unescaped(text) for text in parameter["value"]]

    data, header = content["data"], content["header"]
    points = data["points"][:3].transpose(2, 1, 0)
    return Recording(
        points=points,
        unmarked_points=points,
        analogs=data["analogs"][0].T,
        residuals=None,  # it takes the two bytes of the word the other way round
        rate=header["points"]["frame_rate"],
        analog_rate=header["analogs"]["frame_rate"],
        first_frame=header["points"]["first_frame"] + 1,  # counted from 0 there
        texts=texts,
        rotations=data["rotations"].transpose(3, 2, 0, 1),
        event_times=event_times(content["parameters"]),
    )


def event_times(parameters: Any) -> Array:
    """EVENT:TIMES holds minutes and seconds."""
    event = parameters.get("EVENT", {})
    if "TIMES" not in event or event["TIMES"]["value"].size == 0:
        return np.zeros(0)
    minutes, seconds = np.reshape(event["TIMES"]["value"], (2, -1), order="A")
    return (60 * minutes + seconds)[: int(event["USED"]["value"][0])]


def read_with_c3d(path: Path) -> Recording:
    with path.open("rb") as file, warnings.catch_warnings():
        warnings.simplefilter("ignore")
        reader = c3d.Reader(file)
        frames = list(reader.read_frames())
    points = np.stack([points for _, points, _ in frames]).astype(np.float64)
    analogs = np.stack([analogs for _, _, analogs in frames]).astype(np.float64)

    def texts(group: str, name: str) -> list[str]:
        parameter = reader.get(f"{group}:{name}")
        if parameter is None or not parameter.dimensions:
            return []
        return [str(text).rstrip(" \0") for text in np.ravel(parameter.string_array)]

    lost = points[..., 3:4] < 0
    return Recording(
        points=np.where(lost, np.nan, points[..., :3]),
        unmarked_points=points[..., :3],
        analogs=by_sample(analogs),
        residuals=points[..., 3],
        rate=reader.point_rate,
        analog_rate=reader.analog_rate,
        first_frame=reader.first_frame,
        texts=texts,
        header_events=header_events(reader.header),
    )


def header_events(header: Any) -> dict[str, float]:
    labels = [str(label).rstrip(" \0") for label in header.event_labels]
    return dict(zip(labels, map(float, header.event_timings), strict=True))


def unescaped(text: Any) -> str:
    """Text of ezc3d, which escapes the bytes of a text that is not UTF-8."""
    content = str(text).rstrip(" \0").encode(errors="surrogateescape")
    try:
        return content.decode()
    except UnicodeDecodeError:
        return content.decode("cp1252")


def by_sample(analogs: Any) -> Array:
    """(frame, channel, sample of the frame) as (sample, channel)."""
    if analogs.ndim != 3:
        return np.zeros((0, 0))
    return analogs.transpose(0, 2, 1).reshape(-1, analogs.shape[1])
