"""That all getters, counts and matrix checks of an acquisition say the same."""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np

from support.failures import failure_of
from support.readings import (
    ANALOG_GROUP,
    POINT_GROUPS,
    attributes_of,
    group_node,
    indices_in,
    value_of,
)
from support.store_tree import snapshot

MATRICES = {
    "Markers": "moxSetMarkersValues", "Forces": "moxSetForcesValues",
    "Moments": "moxSetMomentsValues", "Powers": "moxSetPowersValues",
    "Points": "moxSetPointsValues", "Analogs": "moxSetAnalogsValues",
}  # fmt: skip


def assert_agreement(acquisition: Any) -> None:
    frames = int(_moxPY.moxGetPointFrameNumber(acquisition))
    samples = int(_moxPY.moxGetAnalogFrameNumber(acquisition))
    assert samples == frames * int(_moxPY.moxGetAnalogSampleNumberPerFrame(acquisition))
    assert_device_groups(acquisition, frames, samples)
    assert_raw_sets(acquisition, frames, samples)
    assert_first_and_last_frame(acquisition, frames)
    assert_points(acquisition, frames)
    assert_analogs(acquisition, samples)
    assert_events(acquisition)
    assert_matrix_checks(acquisition, frames, samples)


def assert_device_groups(acquisition: Any, frames: int, samples: int) -> None:
    """Groups and their sets carry the counts, rates and start that the getters give."""
    point_rate = _moxPY.moxGetPointFrequency(acquisition)
    ratio = _moxPY.moxGetAnalogSampleNumberPerFrame(acquisition)
    analog_rate = _moxPY.moxGetAnalogFrequency(acquisition)
    assert analog_rate == point_rate * ratio
    start = attributes_of(group_node(acquisition, POINT_GROUPS["Markers"]))["StartTime"]
    places = [(path, 3, frames, point_rate) for path in POINT_GROUPS.values()]
    for path, components, count, rate in [*places, (ANALOG_GROUP, 1, samples, analog_rate)]:
        group = group_node(acquisition, path)
        held = attributes_of(group)
        assert (held["NumSamples"], held["SampleRate"], held["StartTime"]) == (count, rate, start)
        for each in group["sets"].values():
            own = attributes_of(each)
            assert each["shape"] == [components, 1, count]
            assert (own["SampleRate"], own["StartTime"]) == (rate, start)
            if "Residuals" in each["attributes"]:
                assert each["attributes"]["Residuals"][1] == [count]


def assert_raw_sets(acquisition: Any, frames: int, samples: int) -> None:
    """What the sets of a file say, where there are any, is what the groups say."""
    sets = group_node(acquisition, "Format/Data")["sets"]
    for name, group, count in (("Points", "Markers", frames), ("Analogs", None, samples)):
        if name in sets:
            path = POINT_GROUPS[group] if group else ANALOG_GROUP
            held = attributes_of(group_node(acquisition, path))
            raw = {key: value_of(sets[name]["attributes"][key])
                   for key in ("NumSamples", "SampleRate", "StartTime")}  # fmt: skip
            assert raw == {key: held[key] for key in raw}
            assert raw["NumSamples"] == count


def assert_first_and_last_frame(acquisition: Any, frames: int) -> None:
    markers = attributes_of(group_node(acquisition, POINT_GROUPS["Markers"]))
    first = np.float32(markers["SampleRate"]) * np.float32(markers["StartTime"])
    assert _moxPY.moxGetFirstFrame(acquisition) == float(first)
    assert _moxPY.moxGetLastFrame(acquisition) == float(first + np.float32(frames - 1))


def assert_points(acquisition: Any, frames: int) -> None:
    indices = [index for path in POINT_GROUPS.values() for index in indices_in(acquisition, path)]
    count = int(_moxPY.moxGetPointNumber(acquisition))
    values, info = _moxPY.moxGetPoints(acquisition)
    assert len(values) == count
    assert sorted(indices) == list(range(count))
    matrix = _moxPY.moxGetPointsValues(acquisition)
    assert matrix.shape == ((frames, 3 * count) if count else ())
    for index in range(count):
        own, own_info = _moxPY.moxGetPoint(acquisition, index)
        block = matrix[:, 3 * index : 3 * index + 3]
        assert np.array_equal(own.reshape(frames, 3), block, equal_nan=True)
        assert own_info["frequency"] == _moxPY.moxGetPointFrequency(acquisition)
    for key in ("label", "description") if count else ():
        assert list(info[key]) == list(values)
    per_type = [getattr(_moxPY, f"moxGet{group}")(acquisition)[0] for group in POINT_GROUPS]
    assert sum(map(len, per_type)) == count


def assert_analogs(acquisition: Any, samples: int) -> None:
    count = int(_moxPY.moxGetAnalogNumber(acquisition))
    values, info = _moxPY.moxGetAnalogs(acquisition)
    assert len(values) == count
    assert sorted(indices_in(acquisition, ANALOG_GROUP)) == list(range(count))
    assert info["frequency"] == _moxPY.moxGetAnalogFrequency(acquisition)
    matrix = _moxPY.moxGetAnalogsValues(acquisition)
    assert matrix.shape == ((samples, count) if count else ())
    for index in range(count):
        own, own_info = _moxPY.moxGetAnalog(acquisition, index)
        assert np.array_equal(np.reshape(own, samples), matrix[:, index], equal_nan=True)
        assert own_info["frequency"] == _moxPY.moxGetAnalogFrequency(acquisition)
    for key in ("label", "offset", "scale", "description", "gain"):
        assert list(info[key]) == list(values)


def assert_events(acquisition: Any) -> None:
    values, info = _moxPY.moxGetEvents(acquisition)
    times, names, descriptions, ids = _moxPY.moxGetEventsValues(acquisition)
    flat = [float(time) for each in values.values() for time in np.ravel(each)]
    assert times.tolist() == flat
    assert _moxPY.moxGetEventNumber(acquisition) == len(flat)
    assert len(names) == len(descriptions) == len(ids) == len(flat)
    assert list(info["subject"]) == list(values)


def assert_matrix_checks(acquisition: Any, frames: int, samples: int) -> None:
    """What was read can be written back, one row or one column more cannot."""
    for family, setter in MATRICES.items():
        rows = samples if family == "Analogs" else frames
        write, read = getattr(_moxPY, setter), getattr(_moxPY, f"moxGet{family}Values")
        matrix = read(acquisition)
        if not matrix.ndim:  # no channels
            matrix = np.zeros((rows, 0))
        columns = matrix.shape[1]
        assert len(matrix) == rows
        before = snapshot(acquisition)
        for wrong in (np.zeros((rows + 1, columns)), np.zeros((rows, columns + 1))):
            assert failure_of(write, acquisition, wrong)[0] is RuntimeError
        assert snapshot(acquisition) == before
        write(acquisition, matrix)
        assert np.array_equal(np.ravel(read(acquisition)), np.ravel(matrix), equal_nan=True) or (
            columns == 0
        )
