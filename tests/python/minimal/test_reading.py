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


@pytest.mark.parametrize(
    ("group", "name", "format_name", "values"),
    [
        ("POINT", "USED", "Integer", 2),
        ("POINT", "RATE", "Real", 100.0),
        ("POINT", "UNITS", "Char", "mm"),
        ("POINT", "LABELS", "Char", ["LASI", "RASI"]),
        ("ANALOG", "LABELS", "Char", ["Fz1"]),
    ],
)
def test_metadata(
    trial: mox.Trial, group: str, name: str, format_name: str, values: object
) -> None:
    found: Any = _moxPY.moxFindMetaData(trial, group, name)
    assert (found["info"]["format"], found["info"]["values"]) == (format_name, values)


def test_more_frames_than_a_page(tmp_path: Path) -> None:
    values = np.arange(3.0 * 70_000).reshape(-1, 3)
    path = tmp_path / "long.c3d"
    path.write_bytes(c3d_bytes({"A": values}, frame_counts=("wrapped", "long_frames")))
    np.testing.assert_array_equal(mox.read(path).markers["A"].values, values)


def test_bytes_as_source(walk: Path, points: dict[str, np.ndarray]) -> None:
    read = mox.read(walk.read_bytes())
    np.testing.assert_array_equal(read.markers["RASI"].values, points["RASI"])


def axes_of(corners: np.ndarray) -> np.ndarray:
    """The axes of a plate as columns, from its corners as columns."""
    first, second, third, fourth = corners.T
    x, y = first + fourth - second - third, first + second - third - fourth
    x, y = x / np.linalg.norm(x), y / np.linalg.norm(y)
    return np.column_stack([x, y, np.cross(x, y)])


def test_wrenches_of_the_example() -> None:
    trial = mox.read(mox.example())
    plates = _moxPY.moxGetForcePlatforms(trial)[0]
    wrenches = _moxPY.moxGetForcePlatformWrenches(trial)
    assert len(plates) == len(wrenches) == 2
    for number, (plate, wrench) in enumerate(zip(plates, wrenches, strict=True), 1):
        axes, corners = axes_of(plate["corners"]), plate["corners"]
        force, moment = (
            np.column_stack(
                [np.ravel(trial.analogs[f"{kind}{axis}{number}"].values) for axis in "xyz"]
            )
            for kind in "FM"
        )
        assert np.abs(force[:, 2]).max() > 500
        np.testing.assert_allclose(wrench["F"], force @ axes.T, atol=1e-9)
        np.testing.assert_allclose(wrench["M"], moment @ axes.T, atol=1e-9)
        place = corners.mean(axis=1) - axes @ plate["origin"]
        np.testing.assert_allclose(wrench["P"], np.tile(place, (3600, 1)), atol=1e-9)
