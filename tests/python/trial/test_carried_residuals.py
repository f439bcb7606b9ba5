"""Residuals of channels that are assigned to trials which counted none before."""

from __future__ import annotations

import io
from pathlib import Path

import moxPY as mox
import numpy as np
import pytest
from moxPY.trial import Trial
from support.read_c3d import read_c3d, track

FRAMES = 5
WORDS = np.array([3, 0, -1, 256 * 5 + 7, 1.0])


def measured(folder: Path, scale: float) -> Trial:
    folder = folder / str(scale)
    folder.mkdir()
    points = {"A": track(FRAMES)}
    return Trial.of(read_c3d(folder, points, residuals={"A": WORDS}, scale=scale))


def empty_of_a_file(folder: Path) -> Trial:
    trial = measured(folder, 1.0)
    del trial.markers["A"]
    return trial


@pytest.mark.parametrize("start", ["new", "read"])
def test_the_first_residuals_bring_their_steps(tmp_path: Path, start: str) -> None:
    source = measured(tmp_path, 0.125)
    trial = Trial.new(FRAMES, source.rate) if start == "new" else empty_of_a_file(tmp_path)
    trial.markers["carried"] = source.markers["A"]
    content = io.BytesIO()
    trial.write(content)
    for shown in (trial, mox.read(content.getvalue())):
        carried = shown.markers["carried"]
        assert carried.residuals.tolist() == [0.375, 0.0, -1.0, 0.875, 0.125]
        np.testing.assert_array_equal(carried.cameras, source.markers["A"].cameras)


def test_points_without_residuals_bring_no_steps(tmp_path: Path) -> None:
    computed, source = Trial.new(FRAMES), measured(tmp_path, 0.125)
    computed.markers["M"] = track(FRAMES)
    trial = Trial.new(FRAMES)
    trial.markers["M"] = computed.markers["M"]
    trial.markers["carried"] = source.markers["A"]
    np.testing.assert_array_equal(trial.markers["carried"].residuals, source.markers["A"].residuals)


def test_steps_stay_where_residuals_are_counted_in_them(tmp_path: Path) -> None:
    trial, finer = measured(tmp_path, 0.5), measured(tmp_path, 0.125)
    before = trial.markers["A"].residuals
    trial.markers["carried"] = finer.markers["A"]
    assert trial.markers["A"].residuals.tolist() == before.tolist() == [1.5, 0.0, -1.0, 3.5, 0.5]
    assert trial.markers["carried"].residuals.tolist() == [0.5, 0.0, -1.0, 1.0, 0.0]
