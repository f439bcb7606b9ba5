"""Real files, compared with what other readers make of them."""

from __future__ import annotations

import itertools
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.independent_readers import Array, Recording
from support.repairs import repaired
from support.sample_table import SAMPLES, Sample

FindSample = Callable[[str], Path]
KINDS = {
    "ANGLES": ("ANGLE_UNITS", "deg"),
    "FORCES": ("FORCE_UNITS", "N"),
    "MOMENTS": ("MOMENT_UNITS", "Nmm"),
    "POWERS": ("POWER_UNITS", "W"),
}

every_sample = pytest.mark.parametrize("entry", SAMPLES, ids=lambda entry: entry.name)
every_comparison = pytest.mark.parametrize(
    ("entry", "reader"),
    [
        pytest.param(entry, reader, id=f"{entry.name}-{reader.__name__}")
        for entry in SAMPLES
        for reader in entry.readers
    ],
)


def compared(
    sample: FindSample, folder: Path, entry: Sample, reader: Callable[[Path], Recording]
) -> tuple[Any, Recording]:
    path = sample(entry.name)
    return _moxPY.moxReadAcquisition(str(path)), reader(repaired(path, folder, entry.repair))


def point_table(acquisition: Any) -> Array:
    """(frame, point, coordinate) in the order of the file."""
    matrix = _moxPY.moxGetPointsValues(acquisition)
    frames = int(_moxPY.moxGetPointFrameNumber(acquisition))
    return matrix.reshape(frames, -1, 3) if matrix.ndim else np.zeros((frames, 0, 3))


def information(acquisition: Any, channel: str, key: str) -> list[Any]:
    """One value of every "Point" or "Analog", in the order of the file."""
    count = int(getattr(_moxPY, f"moxGet{channel}Number")(acquisition))
    get = getattr(_moxPY, f"moxGet{channel}")
    return [get(acquisition, index)[1][key] for index in range(count)]


def expected_units(recording: Recording) -> list[str]:
    """The unit of each point: that of the kind whose list has its label."""
    unit_of = {}
    for kind, (parameter, default) in KINDS.items():
        unit = next(iter(recording.texts("POINT", parameter)), "") or default
        unit_of.update(dict.fromkeys(recording.texts("POINT", kind), unit))
    markers = next(iter(recording.texts("POINT", "UNITS")), "") or "mm"
    return [unit_of.get(label, markers) for label in recording.labels("POINT")]


@every_comparison
def test_points_are_equal(sample: FindSample, tmp_path: Path, entry: Sample, reader: Any) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    points = recording.points if entry.marks_count else recording.unmarked_points
    np.testing.assert_allclose(point_table(acquisition), points, rtol=2e-7, atol=0)


@every_comparison
def test_analogs_are_equal(sample: FindSample, tmp_path: Path, entry: Sample, reader: Any) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    matrix = _moxPY.moxGetAnalogsValues(acquisition)
    if recording.analogs.size == 0:
        assert matrix.shape == ()
        return
    np.testing.assert_allclose(matrix, recording.analogs, rtol=2e-7, atol=0)


@every_comparison
def test_rates_and_frames_are_equal(
    sample: FindSample, tmp_path: Path, entry: Sample, reader: Any
) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    assert np.float32(_moxPY.moxGetPointFrequency(acquisition)) == np.float32(recording.rate)
    assert _moxPY.moxGetPointFrameNumber(acquisition) == float(len(recording.points))
    assert _moxPY.moxGetFirstFrame(acquisition) == recording.first_frame - 1.0
    if recording.points.shape[1]:
        info = _moxPY.moxGetPoints(acquisition)[1]
        assert info["firstFrame"] == float(recording.first_frame)
        assert np.float32(info["frequency"]) == np.float32(recording.rate)


@every_comparison
def test_analog_rates_are_equal(
    sample: FindSample, tmp_path: Path, entry: Sample, reader: Any
) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    if recording.analogs.size == 0:
        assert _moxPY.moxGetAnalogNumber(acquisition) == 0.0
        return
    rate = _moxPY.moxGetAnalogFrequency(acquisition)
    assert np.float32(rate) == np.float32(recording.analog_rate)
    assert _moxPY.moxGetAnalogFrameNumber(acquisition) == float(len(recording.analogs))


@every_comparison
def test_labels_are_equal(sample: FindSample, tmp_path: Path, entry: Sample, reader: Any) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    labels = information(acquisition, "Point", "label")
    if not entry.has_labels:
        assert labels == [""] * recording.points.shape[1]
        return
    assert labels == recording.labels("POINT")
    assert information(acquisition, "Analog", "label") == recording.labels("ANALOG")


@every_comparison
def test_units_are_equal(sample: FindSample, tmp_path: Path, entry: Sample, reader: Any) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    assert information(acquisition, "Point", "units") == expected_units(recording)
    channels = recording.analogs.shape[1]
    units = recording.texts("ANALOG", "UNITS")[:channels]
    units += [""] * (channels - len(units))
    assert information(acquisition, "Analog", "units") == units


@every_comparison
def test_descriptions_are_equal(
    sample: FindSample, tmp_path: Path, entry: Sample, reader: Any
) -> None:
    acquisition, recording = compared(sample, tmp_path, entry, reader)
    count = recording.points.shape[1]
    described = recording.texts("POINT", "DESCRIPTIONS")[:count]
    described += [""] * (count - len(described))
    assert information(acquisition, "Point", "description") == described


@every_sample
def test_every_point_is_of_one_type(sample: FindSample, entry: Sample) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample(entry.name)))
    groups = ["Angles", "Forces", "Markers", "Moments", "Powers"]
    names = [list(getattr(_moxPY, f"moxGet{group}")(acquisition)[0]) for group in groups]
    values = _moxPY.moxGetPoints(acquisition)[0]
    assert [*itertools.chain(*names)] == list(values)
    assert len(values) == _moxPY.moxGetPointNumber(acquisition)


def test_the_table_has_every_sample(sample: FindSample) -> None:
    folder = sample(SAMPLES[0].name).parent
    files = {path.name for path in folder.iterdir() if path.suffix.lower() == ".c3d"}
    assert {entry.name for entry in SAMPLES} == files


def test_a_missing_reader_has_its_excuse() -> None:
    assert all(entry.excuse for entry in SAMPLES if len(entry.readers) < 2)
    assert all(entry.readers for entry in SAMPLES)


@pytest.mark.parametrize("processor", ["p", "s", "v"])
def test_one_trial_in_six_formats_is_one_trial(sample: FindSample, processor: str) -> None:
    real = _moxPY.moxReadAcquisition(str(sample(f"Eb015{processor}r.c3d")))
    integer = _moxPY.moxReadAcquisition(str(sample(f"Eb015{processor}i.c3d")))
    intel = _moxPY.moxReadAcquisition(str(sample("Eb015pr.c3d")))
    for acquisition in (real, integer):
        # Integers hold coordinates to a twelfth of a millimetre.
        np.testing.assert_allclose(
            _moxPY.moxGetPointsValues(acquisition), _moxPY.moxGetPointsValues(intel), atol=0.05
        )
        np.testing.assert_allclose(
            _moxPY.moxGetAnalogsValues(acquisition), _moxPY.moxGetAnalogsValues(intel), rtol=1e-6
        )


def test_a_broken_parameter_section_gives_what_is_there(sample: FindSample) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample("bad_parameter_section.c3d")))
    assert _moxPY.moxGetPointNumber(acquisition) == 45.0
    assert _moxPY.moxGetAnalogNumber(acquisition) == 32.0


def test_samples_that_are_all_marked_are_there(sample: FindSample) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample("basketball.c3d")))
    assert np.isfinite(_moxPY.moxGetPointsValues(acquisition)).all()


def test_a_recording_that_says_more_frames_than_it_holds(sample: FindSample) -> None:
    acquisition = _moxPY.moxReadAcquisition(str(sample("Optotrak.c3d")))
    assert _moxPY.moxGetPointFrameNumber(acquisition) == 29.0
