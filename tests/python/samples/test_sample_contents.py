"""Residuals, events and rotations of real files, which the readers of other people tell, too."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.attributes import attributes_of
from support.independent_readers import Recording, read_with_c3d, read_with_ezc3d
from support.repairs import repaired
from support.sample_table import SAMPLES, Sample
from support.store_tree import node

FindSample = Callable[[str], Path]
WITH_EVENTS = {
    "Eb015pi.c3d", "Eb015pr.c3d", "Eb015si.c3d", "Eb015sr.c3d", "Eb015vi.c3d", "Eb015vr.c3d",
    "2198928.c3d", "gait-pig.c3d", "short.c3d",
}  # fmt: skip


def samples_of(reader: Any) -> Any:
    entries = [entry for entry in SAMPLES if reader in entry.readers]
    return pytest.mark.parametrize("entry", entries, ids=lambda entry: entry.name)


def compared(
    sample: FindSample, folder: Path, entry: Sample, reader: Callable[[Path], Recording]
) -> tuple[Any, Recording]:
    path = sample(entry.name)
    return _moxPY.moxReadAcquisition(str(path)), reader(repaired(path, folder, entry.repair))


def event_times(acquisition: Any) -> dict[str, list[float]]:
    sets = node(acquisition, "Format/Events")["sets"]
    return {name: content["values"].tolist() for name, content in sets.items()}


@samples_of(read_with_c3d)
def test_residuals_are_equal(sample: FindSample, tmp_path: Path, entry: Sample) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, read_with_c3d)
    words = node(acquisition, "Format/Data/Points")["attributes"]["Residuals"][2].T
    header = attributes_of(node(acquisition, "Format/Header"))
    # The low byte counts in units of the scale.
    residuals = np.where(words < 0, -1.0, (words.astype(int) & 255) * header["PointScale"][2])
    if not entry.marks_count:
        residuals[:] = -1.0
    np.testing.assert_allclose(residuals, recording.residuals, rtol=1e-6)


@samples_of(read_with_ezc3d)
def test_events_of_the_group_are_there(sample: FindSample, tmp_path: Path, entry: Sample) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, read_with_ezc3d)
    contexts, labels = recording.texts("EVENT", "CONTEXTS"), recording.texts("EVENT", "LABELS")
    expected = defaultdict(list)
    for context, label, time in zip(contexts, labels, recording.event_times, strict=False):
        expected[(context + label).replace("_", "")].append(float(np.float32(time)))
    found = event_times(acquisition)
    assert {name: found.get(name) for name in expected} == dict(expected)


@samples_of(read_with_c3d)
def test_events_of_the_header_are_there(sample: FindSample, tmp_path: Path, entry: Sample) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, read_with_c3d)
    found = event_times(acquisition)
    times = {time for values in found.values() for time in values}
    assert {np.float32(time) for time in recording.header_events.values()} <= times


def test_samples_with_events_have_them(sample: FindSample) -> None:
    for name in WITH_EVENTS:
        acquisition = _moxPY.moxReadAcquisition(str(sample(name)))
        assert event_times(acquisition), name


def test_rotations_are_equal(sample: FindSample) -> None:
    path = sample("C3DRotationExample.c3d")
    expected = read_with_ezc3d(path)
    acquisition = _moxPY.moxReadAcquisition(str(path))
    segments = node(acquisition, "Format/Data/Skeleton/Segments")["groups"]
    assert list(segments) == expected.texts("ROTATION", "LABELS")
    for index, (name, segment) in enumerate(segments.items()):
        transforms = segment["sets"]["T_SCS"]["values"].T
        theirs = expected.rotations[:, index]
        # A transform without a position is lost as a whole; the file keeps its last row.
        theirs = np.where(np.isnan(theirs).any(axis=(1, 2), keepdims=True), np.nan, theirs)
        np.testing.assert_array_equal(transforms, theirs, err_msg=name)
