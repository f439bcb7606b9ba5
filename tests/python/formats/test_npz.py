"""NPZ files, as NumPy reads them."""

from __future__ import annotations

from pathlib import Path

import numpy as np
import pytest
from moxPY.trial import Trial, read

KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")


def test_arrays_come_back_without_pickle(any_trial: Trial, tmp_path: Path) -> None:
    (path,) = any_trial.export(tmp_path / "walk.npz")
    with np.load(path, allow_pickle=False) as arrays:
        content = dict(arrays)  # reads them all
    np.testing.assert_array_equal(content["time"], any_trial.time)
    np.testing.assert_array_equal(content["analog_time"], any_trial.analogs.time)
    for kind in KINDS:
        channels = getattr(any_trial, kind)
        assert (kind in content) == (len(channels) > 0)
        if len(channels):
            np.testing.assert_array_equal(content[kind], channels.values)
            assert content[f"{kind}_labels"].tolist() == channels.labels
            assert content[f"{kind}_units"].tolist() == list(channels.units.values())
    if len(any_trial.events):
        assert content["event_time"].tolist() == any_trial.events.times().tolist()
        assert content["event_label"].tolist() == [event.label for event in any_trial.events]
        assert content["event_id"].dtype == np.int64


def test_platforms_are_an_axis(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(tmp_path / "walk.npz", parts=["platforms"], side="plate")
    with np.load(path) as arrays:
        content = dict(arrays)
    assert content["platform_force"].shape == (3600, 2, 3)
    reaction = walk.platforms[1].reaction()
    np.testing.assert_array_equal(content["platform_force"][:, 1], -reaction.force)
    np.testing.assert_array_equal(content["platform_point"][:, 1], reaction.point)
    assert content["platform_units"].tolist() == [["N", "mm", "Nmm"]] * 2
    np.testing.assert_array_equal(content["platform_corners"][1], walk.platforms[1].corners)
    assert '"side": "plate"' in str(content["about"])


def test_rotations(sample: object, tmp_path: Path) -> None:
    trial = read(sample("C3DRotationExample.c3d"))  # type: ignore[operator]
    (path,) = trial.export(tmp_path / "walk.npz")
    with np.load(path) as arrays:
        content = dict(arrays)
    labels = content["rotations_labels"].tolist()
    assert labels == trial.rotations.labels
    for position, label in enumerate(labels):
        np.testing.assert_array_equal(content["rotations"][:, position], trial.rotations[label])
    np.testing.assert_array_equal(content["rotations_time"], trial.rotations.time)


def test_a_trial_with_nothing_in_it(tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^the trial has no markers, .* or events, of which NPZ"):
        Trial.new(frames=3).export(tmp_path / "walk.npz")
