"""Calls, of every modifier above all, that every acquisition refuses."""

from __future__ import annotations

from typing import Any

import numpy as np
from support.proxies import deleted_handle

LARGEST, SMALLEST = 2**31 - 1, -(2**31)

# No acquisition here has so many frames, samples or channels.
MANY = 12_345
BAD_MATRICES = {
    "no matrix": None,
    "text": "matrix",
    "no dimensions": np.float64(1.0),
    "one dimension": np.zeros(3),
    "three dimensions": np.zeros((4, 3, 1)),
    "too many rows": np.zeros((MANY, 3)),
    "too many rows of one": np.zeros((MANY, 1)),
    "too many columns": np.zeros((4, MANY)),
    "no rows and too many columns": np.zeros((0, MANY)),
    "integers": np.zeros((MANY, 3), dtype=np.int64),
    "objects": np.zeros((MANY, 3), dtype=object),
    "ragged": [[1.0, 2.0, 3.0], [4.0]],
}
UNKNOWN_CHANNELS = [MANY, -1, LARGEST, SMALLEST, "no such label", ""]
UNKNOWN_GROUPS = ["NO SUCH GROUP", "ANALOG/NONE", "../Data", "//"]
REAL = {"format": "Real", "values": [1.0, 2.0]}
BAD_INFOS = {
    "no dictionary": None, "no format": {"values": [1.0]}, "no values": {"format": "Real"},
    "unknown format": {"format": "Float", "values": [1.0]}, "array": REAL | {"values": np.zeros(2)},
    "mixed": REAL | {"values": [1, 2.0]}, "ragged": REAL | {"values": [[1.0], []]},
    "text": REAL | {"values": "one"}, "empty": REAL | {"values": []},
    "one byte": {"format": "Byte", "values": [1]}, "wide": REAL | {"values": 2**40},
}  # fmt: skip

Call = tuple[str, tuple[Any, ...]]


def values() -> list[Call]:
    setters = ["Markers", "Angles", "Forces", "Moments", "Powers", "Points", "Analogs"]
    calls: list[Call] = [
        (f"moxSet{family}Values", (matrix,))
        for family in setters
        for matrix in BAD_MATRICES.values()
    ]
    for function in ("moxSetPointValues", "moxSetAnalogValues"):
        calls += [(function, (0, matrix)) for matrix in BAD_MATRICES.values()]
        calls += [(function, (channel, np.zeros((4, 3)))) for channel in UNKNOWN_CHANNELS]
    return calls


def points() -> list[Call]:
    calls: list[Call] = [
        ("moxAppendPoint", ("marker", "NEW", matrix)) for matrix in BAD_MATRICES.values()
    ]
    for word in ("Marker", "markers", "", "scalar"):
        calls += [
            ("moxAppendPoint", (word, "NEW", np.zeros((4, 3)))),
            ("moxSetPointType", (0, word)), ("moxSetPointType", ("LASI", word)),
            ("moxSetPointsUnit", (word, "mm")),
        ]  # fmt: skip
    for channel in UNKNOWN_CHANNELS:
        calls += [
            ("moxRemovePoint", (channel,)), ("moxSetPointLabel", (channel, "new")),
            ("moxSetPointDescription", (channel, "new")), ("moxSetPointType", (channel, "force")),
        ]  # fmt: skip
    calls += [("moxSetPointNumber", (LARGEST,)), ("moxSetPointNumber", (2**31,)),
              ("moxClearPoints", (0,)), ("moxSetPointsUnit", ("marker", None))]  # fmt: skip
    return calls


def analogs() -> list[Call]:
    calls: list[Call] = []
    for matrix in BAD_MATRICES.values():
        calls += [("moxAppendAnalog", ("NEW", matrix)), ("moxAppendAnalog", ("NEW", matrix, "x"))]
    for channel in UNKNOWN_CHANNELS:
        calls += [
            ("moxRemoveAnalog", (channel,)), ("moxSetAnalogLabel", (channel, "new")),
            ("moxSetAnalogDescription", (channel, "new")), ("moxSetAnalogUnit", (channel, "V")),
            ("moxSetAnalogGain", (channel, 1)), ("moxSetAnalogOffset", (channel, 1)),
            ("moxSetAnalogScale", (channel, 1.5)),
        ]  # fmt: skip
    calls += [("moxSetAnalogGain", (0, code)) for code in (6, -1, LARGEST, SMALLEST, 2**31, 1.0)]
    calls += [("moxSetAnalogScale", (0, 1e39)), ("moxSetAnalogOffset", (0, 0.5)),
              ("moxSetAnalogNumber", (LARGEST,)), ("moxSetAnalogNumber", (2**31,)),
              ("moxClearAnalogs", (0,))]  # fmt: skip
    return calls


def events() -> list[Call]:
    calls: list[Call] = []
    for name in ("no such event", "", "_", "a/b", "\\"):
        calls += [("moxSetEventDescription", (name, "new")), ("moxSetEventId", (name, 1))]
    for label, context in (("", ""), ("_", ""), ("a/b", "Left"), ("a", "Left\\")):
        calls += [("moxAppendEvent", (label, 1.0, context)),
                  ("moxAppendEvent", (label, 1.0, context, "Ann", "text", 2))]  # fmt: skip
    calls += [
        ("moxAppendEvent", ("Foot Strike", time, "Left")) for time in (np.nan, np.inf, 1e39, None)
    ]
    calls += [
        ("moxSetEventId", ("LeftFoot Strike", 2**31)), ("moxSetEventLabel", (0, "new")),
        ("moxSetEventTime", (0, 1.0)), ("moxSetEventSubject", (0, "new")), ("moxClearEvents", (0,)),
    ]  # fmt: skip
    return calls


def metadata() -> list[Call]:
    calls: list[Call] = []
    for info in BAD_INFOS.values():
        for group in ("TRIAL", "ANALOG", "NEW GROUP"):
            calls += [(name, (group, "COUNTS", info))
                      for name in ("moxAppendMetaData", "moxSetMetaData")]  # fmt: skip
    for group in UNKNOWN_GROUPS:
        calls += [
            ("moxSetMetaData", (group, "E", REAL)), ("moxSetMetaDataValue", (group, "E", 1.0)),
            ("moxSetMetaDataFormat", (group, "E", "Real")), ("moxRemoveMetaData", (group,)),
            ("moxSetMetaDataDimensions", (group, "E", [1])), ("moxRemoveMetaData", (group, "E")),
        ]  # fmt: skip
    calls += [("moxAppendMetaData", ("ANALOG", entry, REAL)) for entry in ("", "a/b", "b\\")]
    for value in (None, [], [1, 2.0], (1,), 1j, np.zeros((9, 9)), "text", {}):
        calls += [("moxSetMetaDataValue", ("ANALOG", "BITS", value)),
                  ("moxSetMetaDataValue", ("TRIAL/COUNTS", value))]  # fmt: skip
    for dimensions in (None, 3, [-1], [2**70], [1.0], ["1"], [2**20, 2**20], "11"):
        calls += [("moxSetMetaDataDimensions", ("ANALOG", "BITS", dimensions)),
                  ("moxSetMetaDataDimensions", ("TRIAL/COUNTS", dimensions))]  # fmt: skip
    calls += [
        ("moxSetMetaDataFormat", ("ANALOG", "BITS", "Float")), ("moxRemoveMetaData", ("",)),
        ("moxSetMetaDataFormat", ("TRIAL/COUNTS", "Float")), ("moxClearMetaData", (0,)),
        ("moxSetMetaDataDescription", ("TRIAL", "COUNTS", None)),
    ]  # fmt: skip
    return calls


def sampling() -> list[Call]:
    return [
        ("moxSetFrameNumber", (-1,)), ("moxSetFrameNumber", (4, 0)), ("moxSetFrameNumber", (-1, 2)),
        ("moxSetFrameNumber", (2**31,)), ("moxSetFrequency", (np.nan,)),
        ("moxSetFrequency", (np.inf,)), ("moxSetFrequency", (-1.0,)), ("moxSetFrequency", ("1",)),
        ("moxSetFirstFrame", (-1,)), ("moxSetFirstFrame", (-1, 1)), ("moxSetFirstFrame", (1.5,)),
        ("moxSetAnalogSampleNumberPerFrame", (0,)), ("moxSetAnalogSampleNumberPerFrame", (-3,)),
        ("moxSetAnalogResolution", (10,)), ("moxSetAnalogResolution", (0,)),
        ("moxSetMaxInterpolationGap", (2**31,)),
    ]  # fmt: skip


def analysis() -> list[Call]:
    return [
        ("moxAppendAnalysisParameter", ("a", "b", "c", 1.0)),
        ("moxAppendAnalysisParameter", ("a", "b", "c", 1.0, "d")),
        ("moxAppendAnalysisParameter", ("a", "b", "c", 1.0, "d", "e")),
        ("moxRemoveAnalysisParameter", (0,)), ("moxRemoveAnalysisParameter", ("a", "b")),
        ("moxClearAnalysis", ()),
    ]  # fmt: skip


def devices() -> list[Call]:
    return [
        ("moxGetRotation", ("no such segment",)), ("moxGetRotation", (0,)),
        ("moxGetForcePlatformWrenches", (0,)), ("moxGetForcePlatformWrenches", (2,)),
        ("moxGetForcePlatformWrenches", (1.0,)), ("moxGetGroundReactionWrenches", (-1.0,)),
        ("moxGetGroundReactionWrenches", (np.nan,)), ("moxGetGroundReactionWrenches", ("10",)),
    ]  # fmt: skip


FAMILIES = {
    "values": values, "points": points, "analogs": analogs, "events": events,
    "metadata": metadata, "sampling": sampling, "analysis": analysis,
    "devices": devices,
}  # fmt: skip
ALL = {family: make() for family, make in FAMILIES.items()}

# What stands in the place of the acquisition, and never is one.
NO_ACQUISITIONS = [None, 42, "handle", object(), deleted_handle()]
