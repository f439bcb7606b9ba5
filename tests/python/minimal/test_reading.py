"""What a file holds arrives bit for bit."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes


def test_markers(trial: mox.Trial, points: dict[str, np.ndarray]) -> None:
    assert list(trial.markers) == ["LASI", "RASI"]
    for label, values in points.items():
        np.testing.assert_array_equal(trial.markers[label].values, values)


def test_analog_samples_are_scaled(trial: mox.Trial) -> None:
    np.testing.assert_array_equal(np.ravel(trial.analogs["Fz1"].values), np.arange(20) / 2)
    assert trial.analogs["Fz1"].unit == "N"


def test_rates_and_frames(trial: mox.Trial) -> None:
    assert (trial.frames, trial.first_frame) == (5, 1)
    assert _moxPY.moxGetPointFrequency(trial) == 100.0
    assert _moxPY.moxGetAnalogFrequency(trial) == 400.0


def test_events(trial: mox.Trial) -> None:
    values, _ = _moxPY.moxGetEvents(trial)
    assert list(values) == ["LeftFoot Strike"]
    assert np.float32(np.ravel(values["LeftFoot Strike"])[0]) == np.float32(0.02)


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
@pytest.mark.parametrize("storage", ["real", "integer"])
def test_every_number_format(tmp_path: Path, processor: str, storage: str) -> None:
    values = np.arange(12.0).reshape(4, 3)
    path = tmp_path / "trial.c3d"
    path.write_bytes(c3d_bytes({"A": values}, processor=processor, storage=storage, scale=0.5))
    read = _moxPY.moxGetPoints(_moxPY.moxReadAcquisition(str(path)))[0]["A"]
    np.testing.assert_array_equal(read, values)


def test_metadata(trial: mox.Trial) -> None:
    found: Any = _moxPY.moxFindMetaData(trial, "POINT", "USED")
    assert found


def test_more_frames_than_a_page(tmp_path: Path) -> None:
    values = np.arange(3.0 * 70_000).reshape(-1, 3)
    path = tmp_path / "long.c3d"
    path.write_bytes(c3d_bytes({"A": values}, frame_counts=("wrapped", "long_frames")))
    np.testing.assert_array_equal(mox.read(path).markers["A"].values, values)


def test_bytes_as_source(walk: Path, points: dict[str, np.ndarray]) -> None:
    read = mox.read(walk.read_bytes())
    np.testing.assert_array_equal(read.markers["RASI"].values, points["RASI"])


def test_wrenches_of_the_example() -> None:
    wrenches = _moxPY.moxGetForcePlatformWrenches(mox.read(mox.example()))
    assert len(wrenches) > 0
