"""Rotations of a trial: matrices by the segments' labels, and what is assigned is written."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from support.read_c3d import read_c3d
from support.small_trials import read_trial
from support.store_tree import node, snapshot

FRAMES, RATIO = 3, 2
SAMPLES = FRAMES * RATIO


def transforms(seed: int, samples: int = SAMPLES) -> Any:
    """(samples, 4, 4): columns are the axes and the position; exact as singles."""
    values = np.random.default_rng(seed).integers(-512, 512, (samples, 4, 4)) / 8.0
    values[:, 3] = [0.0, 0.0, 0.0, 1.0]
    return values


def records(matrices: Any, reliability: float = 0.0) -> Any:
    """(samples, 17): column by column, then the reliability."""
    columns = matrices.transpose(0, 2, 1).reshape(-1, 16)
    return np.column_stack([columns, np.full(len(matrices), reliability)])


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    segments = {"Pelvis": records(transforms(1), 0.5), "L/Thigh": records(transforms(2))}
    return Trial.of(
        read_c3d(
            tmp_path,
            {"A": np.zeros((FRAMES, 3))},
            rotations=segments,
            rotation_ratio=RATIO,
            first_frame=11,
        )
    )


def written(trial: Trial, folder: Path) -> Trial:
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    return Trial.of(_moxPY.moxReadAcquisition(str(path)))


def reliabilities(trial: Trial, label: str) -> list[float]:
    rotations = node(trial, f"Format/Data/Skeleton/Segments/{label}")["sets"]["T_SCS"]
    return np.ravel(rotations["attributes"]["Reliability"][2]).tolist()


def test_segments_by_their_labels(trial: Trial) -> None:
    assert trial.rotations.labels == list(trial.rotations) == ["Pelvis", "L_Thigh"]
    assert len(trial.rotations) == 2
    assert "Pelvis" in trial.rotations
    assert "pelvis" not in trial.rotations
    for seed, (label, values) in enumerate(trial.rotations.items(), start=1):
        np.testing.assert_array_equal(values, transforms(seed))
        assert not values.flags.writeable
        np.testing.assert_array_equal(_moxPY.moxGetRotation(trial, label)[0], values)
    assert repr(trial.rotations) == "<rotations (2): Pelvis, L_Thigh>"
    with pytest.raises(KeyError, match="no segment 'Pelvic' among the rotations; nearest: Pelvis"):
        trial.rotations["Pelvic"]


def test_the_clock_of_rotations(trial: Trial) -> None:
    assert (trial.rotations.rate, trial.rotations.samples_per_frame) == (200.0, 2)
    np.testing.assert_allclose(trial.rotations.time, 0.1 + np.arange(6) / 200.0, rtol=1e-15)
    trial.rate = 50.0
    assert trial.rotations.rate == 100.0
    np.testing.assert_allclose(trial.rotations.time, 0.2 + np.arange(6) / 100.0, rtol=1e-15)


@pytest.mark.parametrize("make", [_moxPY.moxNewAcquisition, None])
def test_a_trial_without_rotations(tmp_path: Path, make: Any) -> None:
    trial = Trial.of(make() if make else read_trial(tmp_path))
    assert dict(trial.rotations) == {}
    assert trial.rotations.time.shape == (0,)
    with pytest.raises(KeyError, match="no segment 'Pelvis'"):
        trial.rotations["Pelvis"] = transforms(1)


def test_what_is_assigned_is_read_and_written(trial: Trial, tmp_path: Path) -> None:
    trial.rotations["L_Thigh"] = transforms(7)
    for shown in (trial, written(trial, tmp_path)):
        np.testing.assert_array_equal(shown.rotations["L_Thigh"], transforms(7))
        np.testing.assert_array_equal(shown.rotations["Pelvis"], transforms(1))
        assert shown.rotations.samples_per_frame == RATIO
    exact = transforms(8) / 3.0
    trial.rotations["Pelvis"] = exact.tolist()
    np.testing.assert_array_equal(trial.rotations["Pelvis"], exact)
    again = written(trial, tmp_path).rotations["Pelvis"]
    np.testing.assert_array_equal(again, exact.astype(np.float32))


def test_samples_without_numbers_were_not_seen(trial: Trial, tmp_path: Path) -> None:
    matrices = transforms(7)
    matrices[1, 2, 3] = np.nan
    matrices[4] = np.nan
    trial.rotations["Pelvis"] = matrices
    matrices[1] = np.nan
    for shown in (trial, written(trial, tmp_path)):
        np.testing.assert_array_equal(shown.rotations["Pelvis"], matrices)
        assert reliabilities(shown, "Pelvis") == [0.5, -1.0, 0.5, 0.5, -1.0, 0.5]
    trial.rotations["Pelvis"] = transforms(9)
    for shown in (trial, written(trial, tmp_path)):
        np.testing.assert_array_equal(shown.rotations["Pelvis"], transforms(9))
        assert reliabilities(shown, "Pelvis") == [0.5, 0.0, 0.5, 0.5, 0.0, 0.5]


@pytest.mark.parametrize(
    ("matrices", "failure"),
    [
        (np.zeros((SAMPLES, 16)), ValueError),
        (np.zeros((SAMPLES + 1, 4, 4)), ValueError),
        (np.zeros((FRAMES, 4, 4)), ValueError),
        (np.full((SAMPLES, 4, 4), "x"), TypeError),
    ],
)
def test_other_matrices_are_refused(trial: Trial, matrices: Any, failure: Any) -> None:
    before = snapshot(trial)
    with pytest.raises(failure, match="the rotations of 'Pelvis': expected"):
        trial.rotations["Pelvis"] = matrices
    assert snapshot(trial) == before


@pytest.mark.parametrize("frames", [1, FRAMES + 4])
def test_rotations_of_other_frames_can_be_assigned(
    trial: Trial, tmp_path: Path, frames: int
) -> None:
    _moxPY.moxSetFrameNumber(trial, frames)
    new = transforms(7, frames * RATIO)
    trial.rotations["Pelvis"] = new
    other = np.full((frames * RATIO, 4, 4), np.nan)
    kept = min(SAMPLES, len(other))
    other[:kept] = transforms(2)[:kept]
    for shown in (trial, written(trial, tmp_path)):
        np.testing.assert_array_equal(shown.rotations["Pelvis"], new)
        np.testing.assert_array_equal(shown.rotations["L_Thigh"], other)
        assert shown.rotations.time.shape == (frames * RATIO,)
        assert reliabilities(shown, "L_Thigh")[kept:] == [-1.0] * (len(other) - kept)


def test_one_frame_is_a_stack_of_one(tmp_path: Path) -> None:
    trial = Trial.of(read_c3d(tmp_path, rotations={"S": records(transforms(5, 1))}))
    assert trial.rotations["S"].shape == (1, 4, 4)
    trial.rotations["S"] = transforms(6, 1)
    np.testing.assert_array_equal(trial.rotations["S"], transforms(6, 1))


def test_rotations_of_a_recording_turn_round_and_back(sample: Any, tmp_path: Path) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample("C3DRotationExample.c3d"))))
    turn = np.array([[0.0, -1, 0, 0], [1, 0, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]])
    before = {label: values.copy() for label, values in trial.rotations.items()}
    assert before
    for label, values in before.items():
        trial.rotations[label] = turn @ values
    again = written(trial, tmp_path)
    for label, values in before.items():
        np.testing.assert_array_equal(turn.T @ again.rotations[label], values)
        assert reliabilities(again, label) == reliabilities(trial, label)
