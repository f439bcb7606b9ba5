"""A user's script, for type checkers alone: what it takes, gives and completes of a `Trial`."""

# ruff: noqa: F403, F405 -- people begin like this, and type checkers know what it brings

from __future__ import annotations

import copy
import io
import os
import pickle
import warnings
from collections.abc import Mapping, Sequence
from pathlib import Path
from typing import Any, assert_type

import moxPY as mox
import numpy as np
import polars
import xarray
from moxPY import *
from moxPY.trial import (
    Analogs,
    Analysis,
    AnalysisParameter,
    Channel,
    Channels,
    Cycle,
    Entry,
    Event,
    Events,
    Gap,
    MeanCycle,
    Metadata,
    MetadataGroup,
    Platform,
    Platforms,
    Points,
    Rotations,
    Trial,
    TrialWarning,
    Wrench,
    WrenchUnits,
)
from numpy.typing import NDArray

Numbers = NDArray[np.float64]


def open_trials(path: str) -> Trial:
    handle = moxReadAcquisition(path)
    assert_type(moxGetPointFrequency(handle), float)
    trial = Trial.of(handle)
    with Trial.new(frames=300, rate=100.0, samples_per_frame=10) as empty:
        assert_type(empty, Trial)
        assert_type(empty.closed, bool)
    assert_type(moxGetPointFrequency(trial), float)
    assert_type(mox.read(path), mox.Trial)
    return trial


def sources(path: str, folder: Path, entry: os.DirEntry[str], content: bytes) -> None:
    for source in (path, folder / "walk.c3d", entry, os.fsencode(path)):
        assert_type(mox.read(source), Trial)
    for buffer in (content, bytearray(content), memoryview(content), io.BytesIO(content)):
        assert_type(mox.read(buffer, odd="ignore"), Trial)
    with (folder / "walk.c3d").open("rb") as file, mox.read(file, odd="raise") as trial:
        assert_type(trial, Trial)
    warnings.simplefilter("error", TrialWarning)
    assert_type(trial.warnings, list[str])
    assert_type(trial.path, Path | None)


def destinations(trial: Trial, folder: Path) -> None:
    trial.write("walk.c3d")
    trial.write(folder / "walk.c3d", storage="integer", processor="source")
    trial.write(str(folder), storage="source", processor="dec")
    trial.write(io.BytesIO(), storage="real", processor="mips")
    with (folder / "walk.c3d").open("wb") as file:
        trial.write(file, processor="intel")


def copies(trial: Trial) -> None:
    assert_type(trial.copy(), Trial)
    assert_type(copy.copy(trial), Trial)
    assert_type(copy.deepcopy(trial), Trial)
    assert_type(pickle.dumps(trial), bytes)


def verbs(trial: Trial) -> None:
    for made in (
        trial.crop(101, 200), trial.crop(first=101), trial.crop(last=200),
        trial.crop(start=0.5, stop=1), trial.resample(50), trial.resample(50.0, analog_rate=500),
        trial.fill_gaps(), trial.fill_gaps(longest=10, method="cubic"),
        trial.filter(6), trial.filter((20.0, 450.0), order=2, kind="band", channels="analogs"),
        trial.filter(6.0, channels=["LASI"]), trial.rotated(np.eye(3)),
        trial.rotated([[1, 0, 0], [0, 1, 0], [0, 0, 1]]), trial.z_up(), trial.y_up(),
        trial.in_units(), trial.in_units("mm"), trial.in_units(length="m", force="N", moment="Nm"),
        trial.merged(trial), trial.merged(trial, suffix="_2"),
    ):  # fmt: skip
        assert_type(made, Trial)


def clock(trial: Trial) -> None:
    assert_type(trial.rate, float)
    assert_type(trial.frames, int)
    assert_type(trial.first_frame, int)
    assert_type(trial.last_frame, int)
    assert_type(trial.samples_per_frame, int)
    assert_type(trial.duration, float)
    assert_type(trial.time, Numbers)
    trial.rate = 200
    trial.first_frame = 101


def channels(trial: Trial) -> None:
    for kind in (trial.markers, trial.angles, trial.forces, trial.moments, trial.powers):
        assert_type(kind, Channels)
    assert_type(trial.points, Points)
    markers = trial.markers
    assert_type(markers.labels, list[str])
    assert_type(markers.unit, str | None)
    assert_type(markers.units, dict[str, str])
    assert_type(markers.values, Numbers)
    markers.values = markers.values * 2
    markers.values = [[[1, 2, 3]]]
    markers.unit = "m"
    markers.rename({"LFIN": "LeftFinger"})
    markers.rename(str.upper)
    markers["MID"] = (markers["LASI"] + markers["RASI"]) / 2
    markers["COPY"] = markers["LASI"]
    markers["COPY"] += 10.0
    markers["LIST"] = [[1.0, 2.0, 3.0]]
    markers.update({"A": np.zeros((3, 3)), "B": markers["LASI"]})
    del markers["*5"]
    assert_type(markers.get("LASI"), Channel | None)
    assert_type(markers.pop("LASI"), Channel)
    assert_type("LASI" in markers, bool)
    assert_type(len(markers), int)
    for label, channel in markers.items():
        assert_type(label, str)
        assert_type(channel, Channel)
    for gap in markers.gaps():
        assert_type(gap, Gap)
        label, first, last = gap
        assert_type((label, first, last), tuple[str, int, int])
        assert_type(gap.frames, int)


def one_channel(trial: Trial) -> None:
    knee = trial.angles["LKneeAngles"]
    for array in (knee.values, knee.x, knee.y, knee.z, knee.time, knee.residuals):
        assert_type(array, Numbers)
    assert_type(knee.cameras, NDArray[np.bool_])
    assert_type(knee.rate, float)
    for text in (knee.label, knee.unit, knee.description, knee.kind):
        assert_type(text, str)
    assert_type(knee.index, int)
    assert_type(knee.trial, Trial)
    assert_type(knee.shape, tuple[int, ...])
    knee.label, knee.unit, knee.description = "knee", "rad", ""
    knee.values = np.zeros((3, 3))
    knee.values = [[0, 0, 0]]
    knee.carry(trial.angles["RKneeAngles"])
    print(np.asarray(knee).max(), np.linalg.norm(knee, axis=1), len(knee), knee[0], list(knee))
    assert_type(knee.normalize(trial.cycles("Left"), points=101), Numbers)
    mean = knee.mean_cycle([(0.5, 1.5)])
    assert_type(mean, MeanCycle)
    assert_type(mean.mean + mean.deviation, Numbers)


def analog_channels(trial: Trial) -> None:
    analogs = trial.analogs
    assert_type(analogs, Analogs)
    assert_type(analogs.rate, float)
    assert_type(analogs.time, Numbers)
    assert_type(analogs.values, Numbers)
    analogs.values = analogs.values - 1
    analogs["EMG"] = np.abs(analogs["EMG"].values)
    analogs["LIST"] = [0.5, 1.5]
    assert_type(analogs["EMG"], Channel)
    assert_type(analogs["EMG"].values, Numbers)
    analogs.rename(lambda label: label.lower())


def all_points(trial: Trial) -> None:
    assert_type(trial.points["LASI"], Channel)
    assert_type(trial.points["LASI"].values, Numbers)
    assert_type(trial.points.values, Numbers)
    for kind in (trial.angles, trial.forces, trial.moments, trial.powers):
        for label in kind:
            assert_type(kind[label].values, Numbers)


def events(trial: Trial) -> None:
    assert_type(trial.events, Events)
    strike = trial.events.add("Foot Strike", 1.32, context="Left")
    assert_type(strike, Event)
    strike = trial.events.replace(strike, time=1.3)
    trial.events.remove(strike)
    assert_type(trial.events.select(label="Foot Strike", context="Left"), list[Event])
    assert_type(trial.events.times("Foot Strike", "Left"), Numbers)
    assert_type(trial.events[0], Event)
    assert_type(trial.events[:2], list[Event])
    assert_type(trial.events.labels + trial.events.contexts, list[str])
    for event in trial.events:
        print(event.time + 1, event.label.upper(), event.context, event.subject, event.id + 1)
    for cycle in trial.cycles("Left", start="Foot Strike", end="Foot Off"):
        assert_type(cycle, Cycle)
        assert_type(cycle.stop - cycle.start, float)
        assert_type(cycle.duration, float)
    trial.events.clear()


def platforms(trial: Trial) -> None:
    assert_type(trial.platforms, Platforms)
    plate = trial.platforms[0]
    assert_type(plate, Platform)
    assert_type(trial.platforms[1:], list[Platform])
    assert_type(plate.type, int)
    assert_type(plate.corners, Numbers)
    assert_type(plate.origin, Numbers)
    assert_type(plate.calibration, Numbers | None)
    assert_type(plate.channels, list[Channel])
    wrench = plate.wrench(threshold=10.0, at="cop", frame="lab")
    assert_type(wrench, Wrench)
    assert_type(wrench.force, Numbers)
    assert_type(wrench.moment[wrench.contact], Numbers)
    assert_type(wrench.point, Numbers)
    assert_type(wrench.time, Numbers)
    assert_type(wrench.units, WrenchUnits)
    assert_type(plate.reaction(threshold=20.0), Wrench)
    plate.zero(0.0, 0.5)
    assert_type(trial.platforms.detect_events(threshold=20.0, store=True), list[Event])


def rotations(trial: Trial) -> None:
    assert_type(trial.rotations, Rotations)
    assert_type(trial.rotations["pelvis"], Numbers)
    trial.rotations["pelvis"] = np.broadcast_to(np.eye(4), (3, 4, 4))
    assert_type(trial.rotations.labels, list[str])


def metadata(trial: Trial) -> None:
    assert_type(trial.metadata, Metadata)
    group = trial.metadata["POINT"]
    assert_type(group, MetadataGroup)
    assert_type((group.name, group.description), tuple[str, str])
    entry = group.entry("RATE")
    assert_type(entry, Entry)
    assert_type((entry.type, entry.description), tuple[str, str])
    assert_type(entry.shape, tuple[int, ...])
    assert_type(entry.locked, bool)
    rate: float = group["RATE"]
    group["RATE"] = rate
    group["LABELS"] = ["LASI", "RASI"]
    group["MATRIX"] = np.eye(4)
    trial.metadata["SESSION"] = {"OPERATOR": "Kim", "VISIT": 2}
    trial.metadata["COPY"] = group
    assert_type("RATE" in group, bool)
    assert_type(trial.metadata.get("SESSION"), MetadataGroup | None)
    for name, each in trial.metadata.items():
        assert_type((name, each, list(each)), tuple[str, MetadataGroup, list[str]])
    del group["MATRIX"], trial.metadata["SESSION"]


def analysis(trial: Trial) -> None:
    assert_type(trial.analysis, Analysis)
    assert_type(trial.analysis["Left Cadence"], float)
    parameter = trial.analysis.parameter("Left Cadence")
    assert_type(parameter, AnalysisParameter)
    assert_type(parameter.value, float)
    assert_type(parameter.name + parameter.unit + parameter.context, str)
    assert_type(dict(trial.analysis), dict[str, float])


def frames(trial: Trial) -> None:
    frame = trial.to_pandas("markers", long=False)
    trial.markers.update_from(frame)
    wide = trial.to_polars("analogs", long=True)
    assert_type(wide, polars.DataFrame)
    trial.analogs.update_from(wide)
    assert_type(trial.to_xarray(), xarray.Dataset)
    print(trial.to_pandas(what="events"), trial.to_polars("platforms"))


def as_interfaces(trial: Trial) -> tuple[Mapping[str, Channel], Sequence[Event], Mapping[str, Any]]:
    """Parts are the mappings and sequences of `collections.abc`."""
    return trial.markers, trial.events, trial.metadata["POINT"]


def star_import(path: str) -> None:
    """What a star brings has its types."""
    with moxReadAcquisition(path) as acquisition:
        assert_type(acquisition, data_store)
        values, info = moxGetMarkers(acquisition)
        assert_type(values, dict[str, Any])
        print(info["frequency"], moxGetPointsValues(Trial.of(acquisition)))
        moxSetPointLabel(acquisition, "LFIN", "LeftFinger")
        moxWriteAcquisition(acquisition, path)
