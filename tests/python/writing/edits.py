"""Edits of an acquisition with the points and channels of `support.small_trials`, by name."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _moxPY
import numpy as np
from support.small_trials import signal, trajectory

Edit = Callable[[Any], Any]


def samples_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetAnalogFrameNumber(acquisition))


def frames_of(acquisition: Any) -> int:
    return int(_moxPY.moxGetPointFrameNumber(acquisition))


def append_point(kind: str, label: str) -> Edit:
    def edit(acquisition: Any) -> None:
        values = trajectory(20, frames_of(acquisition))
        values[1] = np.nan
        _moxPY.moxAppendPoint(acquisition, kind, label, values)

    return edit


def set_values_with_a_gap(acquisition: Any) -> None:
    values = trajectory(30, frames_of(acquisition))
    values[2, 1] = np.nan  # one component is enough: the sample as a whole is lost
    _moxPY.moxSetPointValues(acquisition, "RASI", values)
    values[2] = np.nan
    _moxPY.moxSetPointValues(acquisition, "RASI", values)


def append_analog(acquisition: Any) -> None:
    _moxPY.moxAppendAnalog(acquisition, "EMG2", signal(5, samples_of(acquisition)), "tibialis")


def set_analog_values(acquisition: Any) -> None:
    _moxPY.moxSetAnalogValues(acquisition, 0, signal(7, samples_of(acquisition)))


def set_all_analog_values(acquisition: Any) -> None:
    count = int(_moxPY.moxGetAnalogNumber(acquisition))
    columns = [signal(7 + n, samples_of(acquisition)) for n in range(count)]
    _moxPY.moxSetAnalogsValues(acquisition, np.hstack(columns))


def call(name: str, *arguments: Any) -> Edit:
    return lambda acquisition: getattr(_moxPY, name)(acquisition, *arguments)


def several(*edits: Edit) -> Edit:
    def edit(acquisition: Any) -> None:
        for each in edits:
            each(acquisition)

    return edit


EDITS: dict[str, Edit] = {
    "rename a marker": call("moxSetPointLabel", "LASI", "PelvisLeft"),
    "rename an angle": call("moxSetPointLabel", "LKneeAngle", "A rather long name of an angle"),
    "swap two names": several(
        call("moxSetPointLabel", "LASI", "other"),
        call("moxSetPointLabel", "RASI", "LASI"),
        call("moxSetPointLabel", "other", "RASI"),
    ),
    "describe a point": call("moxSetPointDescription", "LASI", "links, über dem Gürtel"),
    "append a marker": append_point("marker", "NEW"),
    "append an angle": append_point("angle", "NewAngle"),
    "append a force": append_point("force", "NewForce"),
    "append a moment": append_point("moment", "NewMoment"),
    "append a power": append_point("power", "NewPower"),
    "remove the first point": call("moxRemovePoint", 0),
    "remove the only angle": call("moxRemovePoint", "LKneeAngle"),
    "remove a force": call("moxRemovePoint", "LGRF"),
    "retype the only angle": call("moxSetPointType", "LKneeAngle", "marker"),
    "retype a marker": call("moxSetPointType", "LASI", "power"),
    "retype all forces": several(
        call("moxSetPointType", "LGRF", "moment"), call("moxSetPointType", "RGRF", "moment")
    ),
    "unit of the markers": call("moxSetPointsUnit", "marker", "m"),
    "unit of the angles": call("moxSetPointsUnit", "angle", "rad"),
    "values with a gap": set_values_with_a_gap,
    "clear points": call("moxClearPoints"),
    "more points": call("moxSetPointNumber", 12),
    "fewer points": call("moxSetPointNumber", 3),
    "rename an analog": call("moxSetAnalogLabel", "Fx1", "Force"),
    "append an analog": append_analog,
    "remove an analog": call("moxRemoveAnalog", "EMG1"),
    "more analogs": call("moxSetAnalogNumber", 6),
    "clear analogs": call("moxClearAnalogs"),
    "describe an analog": call("moxSetAnalogDescription", 1, "soleus"),
    "unit of an analog": call("moxSetAnalogUnit", 1, "mV"),
    "gain of an analog": call("moxSetAnalogGain", 1, 2),
    "values of an analog": set_analog_values,
    "values of all analogs": set_all_analog_values,
    "resolution": call("moxSetAnalogResolution", 16),
    "append an event": call("moxAppendEvent", "Foot Off", 0.75, "Left", "Bob", "toe", 2),
    "append a new event": call("moxAppendEvent", "Jump", 75.5, "General"),
    "describe an event": call("moxSetEventDescription", "RightFoot Off", "late"),
    "id of an event": call("moxSetEventId", "RightFoot Off", 7),
    "clear events": call("moxClearEvents"),
    "more frames": call("moxSetFrameNumber", 7),
    "fewer frames": call("moxSetFrameNumber", 2),
    "frames that fit nothing": call("moxSetFrameNumber", 5),
    "first frame": call("moxSetFirstFrame", 50),
    "first frame with events": call("moxSetFirstFrame", 50, 1),
    "gap": call("moxSetMaxInterpolationGap", 12),
}
