"""Edits of whatever acquisition there is, at random; all values are ones that a file holds."""

from __future__ import annotations

from collections.abc import Callable
from random import Random
from typing import Any

import _moxPY
import numpy as np

Edit = Callable[[Random, Any], Any]

KINDS = ("marker", "angle", "force", "moment", "power")
LABELS = (
    "LASI", "new", "Left Knee", "a rather long label of more than thirty letters", "µV", "*12",
    "A/B", "Ferse_links", "", "LASI",
)  # fmt: skip
TEXTS = ("", "left", "über dem Gürtel", "two words", "x" * 90)
UNITS = {"marker": "m", "angle": "rad", "force": "kN", "moment": "Nm", "power": "W/kg"}
VOLTS = ("V", "mV", "N", "")
CONTEXTS = ("Left", "Right", "General", "")
EVENTS = ("Foot Strike", "Foot Off", "Jump", "FS", "Ferse ab")


def frames_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetPointFrameNumber(acquisition))


def samples_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetAnalogFrameNumber(acquisition))


def trajectory(random: Random, frames: int, points: int = 1) -> Any:
    """Numbers that single precision holds, with some frames missing as a whole."""
    numbers = np.random.default_rng(random.getrandbits(32))
    values = numbers.normal(0, 500, (frames, points, 3)).astype(np.float32).astype(np.float64)
    values[numbers.random((frames, points)) < 0.1] = np.nan
    return values.reshape(frames, 3 * points)


def signal(random: Random, samples: int, channels: int = 1) -> Any:
    numbers = np.random.default_rng(random.getrandbits(32))
    return numbers.normal(0, 5, (samples, channels)).astype(np.float32).astype(np.float64)


def point_of(random: Random, acquisition: Any) -> int:
    return random.randrange(max(int(_moxPY.moxGetPointNumber(acquisition)), 1))


def analog_of(random: Random, acquisition: Any) -> int:
    return random.randrange(max(int(_moxPY.moxGetAnalogNumber(acquisition)), 1))


def event_of(random: Random, acquisition: Any) -> str:
    names = list(_moxPY.moxGetEvents(acquisition)[0])
    return str(random.choice(names)) if names else "nothing"


def entry_of(random: Random, acquisition: Any) -> tuple[str, str, dict[str, Any]]:
    """A metadata entry that is the user's own business."""
    groups = _moxPY.moxGetMetaData(acquisition)["children"]
    entries = [
        (group, name, entry["info"])
        for group, content in groups.items()
        if isinstance(content["children"], dict) and group not in DERIVED_GROUPS
        for name, entry in content["children"].items()
        if isinstance(entry["info"], dict)
    ]
    return random.choice(entries) if entries else ("MINE", "NONE", {"format": "Real"})


# Their entries follow from points, channels, events and platforms; other edits change them.
DERIVED_GROUPS = ("POINT", "ANALOG", "EVENT", "FORCE_PLATFORM", "TRIAL", "ROTATION")


def set_a_kind(random: Random, acquisition: Any) -> None:
    group = random.choice(["Markers", "Forces", "Moments", "Powers"])
    count = len(getattr(_moxPY, f"moxGet{group}")(acquisition)[0])
    values = trajectory(random, frames_of(acquisition), count)
    getattr(_moxPY, f"moxSet{group}Values")(acquisition, values)


def set_all_points(random: Random, acquisition: Any) -> None:
    count = int(_moxPY.moxGetPointNumber(acquisition))
    _moxPY.moxSetPointsValues(acquisition, trajectory(random, frames_of(acquisition), count))


def set_all_analogs(random: Random, acquisition: Any) -> None:
    count = int(_moxPY.moxGetAnalogNumber(acquisition))
    _moxPY.moxSetAnalogsValues(acquisition, signal(random, samples_of(acquisition), count))


def resample(random: Random, acquisition: Any) -> None:
    """Another rate, and the first frame and the values that belong to it."""
    rate = _moxPY.moxGetPointFrequency(acquisition)
    first = _moxPY.moxGetFirstFrame(acquisition)
    factor = random.choice([0.5, 2.0])
    _moxPY.moxSetFrequency(acquisition, rate * factor)
    _moxPY.moxSetFirstFrame(acquisition, int(first * factor))
    count = int(_moxPY.moxGetPointNumber(acquisition))
    frames = frames_of(acquisition)
    _moxPY.moxSetPointsValues(acquisition, trajectory(random, frames, count))
    ratio = int(_moxPY.moxGetAnalogSampleNumberPerFrame(acquisition))
    channels = int(_moxPY.moxGetAnalogNumber(acquisition))
    if channels:
        _moxPY.moxSetAnalogsValues(acquisition, signal(random, frames * ratio, channels))


def append_point(random: Random, acquisition: Any) -> None:
    values, label = trajectory(random, frames_of(acquisition)), random.choice(LABELS)
    if label not in labels_of_points(acquisition) | {""}:
        _moxPY.moxAppendPoint(acquisition, random.choice(KINDS), label, values)


def append_analog(random: Random, acquisition: Any) -> None:
    values = signal(random, samples_of(acquisition))
    _moxPY.moxAppendAnalog(acquisition, random.choice(LABELS), values, random.choice(TEXTS))


def append_event(random: Random, acquisition: Any) -> None:
    time = float(np.float32(random.uniform(0, 120)))
    more = [
        random.choice(["", "Ann", "Bob"]),
        random.choice(TEXTS),
        random.choice([-1, 0, 1, 2, 9]),
    ]
    label, context = random.choice(EVENTS), random.choice(CONTEXTS)
    _moxPY.moxAppendEvent(acquisition, label, time, context, *more[: random.randrange(4)])


def append_entry(random: Random, acquisition: Any) -> None:
    info = random.choice([
        {"format": "Real", "values": [0.5, -1.25, 3.0]},
        {"format": "Integer", "values": [1, -2, 32767]},
        {"format": "Byte", "values": [1, -2, 127]},
        {"format": "Char", "values": ["one", "", "drei und vierzig µ"]},
        {"format": "Char", "values": "text"},
        {"format": "Real", "values": [[0.0, 1.0, 2.0], [3.0, 4.0, 5.0]]},
    ])  # fmt: skip
    group, name = random.choice(["MINE", "SUBJECTS", "OTHER"]), random.choice(["A", "B", "C"])
    _moxPY.moxAppendMetaData(acquisition, group, name, info)


def set_entry_format(random: Random, acquisition: Any) -> None:
    group, name, _ = entry_of(random, acquisition)
    word = random.choice(["Integer", "Real", "Char", "Byte"])
    _moxPY.moxSetMetaDataFormat(acquisition, group, name, word)


def set_entry_dimensions(random: Random, acquisition: Any) -> None:
    group, name, _ = entry_of(random, acquisition)
    _moxPY.moxSetMetaDataDimensions(acquisition, group, name, [random.randrange(1, 5)])


def remove_entry(random: Random, acquisition: Any) -> None:
    group, name, _ = entry_of(random, acquisition)
    _moxPY.moxRemoveMetaData(acquisition, group, name)


def with_point(name: str, draw: Callable[[Random], Any]) -> Edit:
    def edit(random: Random, acquisition: Any) -> None:
        getattr(_moxPY, name)(acquisition, point_of(random, acquisition), draw(random))

    return edit


def with_analog(name: str, draw: Callable[[Random], Any]) -> Edit:
    def edit(random: Random, acquisition: Any) -> None:
        getattr(_moxPY, name)(acquisition, analog_of(random, acquisition), draw(random))

    return edit


def label_of(random: Random) -> str:
    return random.choice(LABELS)


def label_point(random: Random, acquisition: Any) -> None:
    """The lists of kinds name labels, so a file holds no label in two kinds, nor an empty one."""
    index, label = point_of(random, acquisition), random.choice(LABELS)
    if label not in labels_of_points(acquisition) | {""}:
        _moxPY.moxSetPointLabel(acquisition, index, label)


def labels_of_points(acquisition: Any) -> set[str]:
    return set(_moxPY.moxGetPoints(acquisition)[1].get("label", {}).values())


def text_of(random: Random) -> str:
    return random.choice(TEXTS)


def set_point_values(random: Random, acquisition: Any) -> None:
    values = trajectory(random, frames_of(acquisition))
    _moxPY.moxSetPointValues(acquisition, point_of(random, acquisition), values)


def set_analog_values(random: Random, acquisition: Any) -> None:
    values = signal(random, samples_of(acquisition))
    _moxPY.moxSetAnalogValues(acquisition, analog_of(random, acquisition), values)


def set_points_unit(random: Random, acquisition: Any) -> None:
    kind = random.choice(KINDS)
    _moxPY.moxSetPointsUnit(acquisition, kind, UNITS[kind])


def retype_point(random: Random, acquisition: Any) -> None:
    """A file has one unit for all points of a kind, so the point takes that of its new kind.

    The lists of kinds name labels, so a label that several points bear, or none, stays in its kind.
    """
    index, kind = point_of(random, acquisition), random.choice(KINDS)
    labels = list(_moxPY.moxGetPoints(acquisition)[1].get("label", {}).values())
    label = _moxPY.moxGetPoint(acquisition, index)[1]["label"]
    if label and labels.count(label) == 1:
        _moxPY.moxSetPointType(acquisition, index, kind)
        _moxPY.moxSetPointsUnit(acquisition, kind, UNITS[kind])


def remove_point(random: Random, acquisition: Any) -> None:
    _moxPY.moxRemovePoint(acquisition, point_of(random, acquisition))


def remove_analog(random: Random, acquisition: Any) -> None:
    _moxPY.moxRemoveAnalog(acquisition, analog_of(random, acquisition))


def describe_event(random: Random, acquisition: Any) -> None:
    name = event_of(random, acquisition)
    _moxPY.moxSetEventDescription(acquisition, name, text_of(random))


def identify_event(random: Random, acquisition: Any) -> None:
    _moxPY.moxSetEventId(acquisition, event_of(random, acquisition), random.randrange(5))


def set_frame_number(random: Random, acquisition: Any) -> None:
    frames = max(frames_of(acquisition) + random.choice([-3, 1, 5]), 1)
    _moxPY.moxSetFrameNumber(acquisition, frames)


def set_first_frame(random: Random, acquisition: Any) -> None:
    _moxPY.moxSetFirstFrame(acquisition, random.randrange(400), random.randrange(2))


def call(name: str, *draws: Callable[[Random], Any]) -> Edit:
    def edit(random: Random, acquisition: Any) -> None:
        getattr(_moxPY, name)(acquisition, *(draw(random) for draw in draws))

    return edit


EDITS: dict[str, Edit] = {
    "label a point": label_point,
    "describe a point": with_point("moxSetPointDescription", text_of),
    "retype a point": retype_point,
    "unit of a kind": set_points_unit,
    "values of a point": set_point_values,
    "values of a kind": set_a_kind,
    "values of all points": set_all_points,
    "append a point": append_point,
    "remove a point": remove_point,
    "label an analog": with_analog("moxSetAnalogLabel", label_of),
    "describe an analog": with_analog("moxSetAnalogDescription", text_of),
    "unit of an analog": with_analog("moxSetAnalogUnit", lambda random: random.choice(VOLTS)),
    "gain of an analog": with_analog("moxSetAnalogGain", lambda random: random.randrange(6)),
    "values of an analog": set_analog_values,
    "values of all analogs": set_all_analogs,
    "append an analog": append_analog,
    "remove an analog": remove_analog,
    "append an event": append_event,
    "append another event": append_event,
    "describe an event": describe_event,
    "id of an event": identify_event,
    "clear events": call("moxClearEvents"),
    "append an entry": append_entry,
    "append another entry": append_entry,
    "format of an entry": set_entry_format,
    "dimensions of an entry": set_entry_dimensions,
    "remove an entry": remove_entry,
    "number of frames": set_frame_number,
    "first frame": set_first_frame,
    "another rate": resample,
    "gap": call("moxSetMaxInterpolationGap", lambda random: random.randrange(50)),
    "resolution": call("moxSetAnalogResolution", lambda random: random.choice([8, 12, 14, 16])),
}
