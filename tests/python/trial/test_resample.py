"""Another rate: the instants stay, and what lies between samples is what was recorded."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from scipy.spatial.transform import Rotation
from support.agreement import assert_agreement
from support.c3d_bytes import Analog, Event
from support.independent_readers import read_with_ezc3d
from support.read_c3d import read_c3d
from support.small_trials import example_trial, new_trial
from support.store_tree import snapshot

FRAMES, RATE, RATIO, FIRST = 400, 100.0, 10, 15
EVENTS = (0.2, 1.0, 2.345)


def at(time: Any) -> Any:
    """(samples, 3): what is recorded at each instant."""
    return np.column_stack(
        [
            400 * np.sin(2 * np.pi * 1.5 * time),
            200 * np.cos(2 * np.pi * 0.7 * time),
            900 + 50 * time - 30 * np.sin(2 * np.pi * 3 * time),
        ]
    )


def sensor(time: Any) -> Any:
    return 800 * np.sin(2 * np.pi * 11 * time) + 100


def turns(time: Any) -> Any:
    matrices = np.tile(np.eye(4), (len(time), 1, 1))
    angles = np.column_stack([90 * time, 0 * time, 0 * time])
    matrices[:, :3, :3] = Rotation.from_euler("zyx", angles, degrees=True).as_matrix()
    matrices[:, :3, 3] = at(time)
    return matrices


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    frames = (np.arange(FRAMES) + FIRST - 1) / RATE
    samples = (np.arange(FRAMES * RATIO) + (FIRST - 1) * RATIO) / (RATE * RATIO)
    acquisition = read_c3d(
        tmp_path,
        {"A": at(frames), "B": at(frames + 1.0)},
        rate=RATE,
        first_frame=FIRST,
        analogs=[Analog("S", np.round(sensor(samples)), units="N")],
        samples_per_frame=RATIO,
        events=[Event("Left", "Foot Strike", time) for time in EVENTS],
        rotations={"Pelvis": np.zeros((FRAMES, 17))},
    )
    made = Trial.of(acquisition)
    made.rotations["Pelvis"] = turns(frames)
    return made


def written(trial: Trial, folder: Path) -> Path:
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    return path


@pytest.mark.parametrize("rate", [50.0, 200.0, 40.0, 125.0, 250.0])
def test_points_are_what_was_recorded_at_the_new_instants(trial: Trial, rate: float) -> None:
    before = snapshot(trial)
    changed = trial.resample(rate)
    assert snapshot(trial) == before
    assert changed.rate == rate
    steps = np.arange(2000) / rate
    inside = steps[(steps >= trial.time[0] - 1e-9) & (steps <= trial.time[-1] + 1e-9)]
    np.testing.assert_allclose(changed.time, inside[: changed.frames], rtol=1e-12)
    assert len(inside) - changed.frames in (0, 1)
    # Cubic splines are worse at the ends.
    inner = slice(8, -8)
    np.testing.assert_allclose(
        changed.markers["A"].values[inner], at(changed.time)[inner], atol=2e-3
    )
    np.testing.assert_allclose(changed.markers["A"].values, at(changed.time), atol=0.2)
    np.testing.assert_allclose(
        changed.markers["B"].values[inner], at(changed.time + 1)[inner], atol=2e-3
    )
    assert not changed.markers["A"].residuals.any()
    assert_agreement(changed.copy().this)


@pytest.mark.parametrize("rate", [50.0, 200.0, 250.0])
def test_analog_samples_are_the_same_at_their_own_rate(trial: Trial, rate: float) -> None:
    changed = trial.resample(rate)
    assert changed.analogs.rate == 1000.0
    assert changed.samples_per_frame == round(1000 / rate)
    kept = np.isin(np.rint(trial.analogs.time * 1000), np.rint(changed.analogs.time * 1000))
    assert kept.sum() == changed.frames * changed.samples_per_frame
    assert changed.analogs["S"].values.tobytes() == trial.analogs["S"].values[kept].tobytes()
    np.testing.assert_allclose(changed.analogs.time, trial.analogs.time[kept], rtol=1e-12)
    assert changed.analogs["S"].unit == "N"


@pytest.mark.parametrize(("rate", "analog_rate"), [(100.0, 500.0), (120.0, 1200.0), (60.0, 240.0)])
def test_analog_channels_at_another_rate(trial: Trial, rate: float, analog_rate: float) -> None:
    changed = trial.resample(rate, analog_rate)
    assert (changed.rate, changed.analogs.rate) == (rate, analog_rate)
    inner = slice(60, -60)
    expected = sensor(changed.analogs.time)[inner]
    # The samples are whole numbers.
    np.testing.assert_allclose(changed.analogs["S"].values[inner], expected, atol=2.0)


def test_what_is_too_fast_for_the_new_analog_rate_does_not_come_back_slow(trial: Trial) -> None:
    fast = 100 * np.sin(2 * np.pi * 390 * trial.analogs.time)
    trial.analogs["S"].values = fast
    changed = trial.resample(100.0, 200.0)
    assert np.abs(changed.analogs["S"].values[20:-20]).max() < 0.1


def test_rotations_turn_evenly(trial: Trial) -> None:
    for rate in (250.0, 50.0):
        changed = trial.resample(rate)
        inner = slice(8, -8)
        np.testing.assert_allclose(
            changed.rotations["Pelvis"][inner], turns(changed.time)[inner], atol=3e-3
        )


def test_matrices_that_are_no_rotations_are_taken_from_the_nearest_sample(trial: Trial) -> None:
    matrices = 2.0 * trial.rotations["Pelvis"]
    trial.rotations["Pelvis"] = matrices
    changed = trial.resample(50.0)
    kept = np.flatnonzero(np.isin(np.rint(trial.time * 100), np.rint(changed.time * 100)))
    np.testing.assert_array_equal(changed.rotations["Pelvis"], matrices[kept])


def test_gaps_stay_gaps(trial: Trial) -> None:
    values = trial.markers["A"].values.copy()
    values[100:150, 1] = np.nan
    values[160:161] = np.nan
    values[:7] = np.nan
    trial.markers["A"].values = values
    changed = trial.resample(250.0)
    place = changed.time * RATE - (FIRST - 1)
    lost = ((place > 99) & (place < 150)) | ((place > 159) & (place < 161)) | (place < 7)
    on_sample = np.isclose(place, np.rint(place), atol=1e-6)
    seen_there = on_sample & ~np.isnan(values[np.rint(place).astype(int)]).any(axis=1)
    missing = np.isnan(changed.markers["A"].values).all(axis=1)
    np.testing.assert_array_equal(missing, lost & ~seen_there)
    assert not np.isnan(changed.markers["B"].values).any()
    np.testing.assert_array_equal(changed.markers["A"].residuals, np.where(missing, -1.0, 0.0))


def test_events_keep_their_seconds(trial: Trial, tmp_path: Path) -> None:
    changed = trial.resample(50.0)
    assert changed.events == trial.events
    recording = read_with_ezc3d(written(changed, tmp_path))
    assert (recording.rate, recording.analog_rate) == (50.0, 1000.0)
    assert recording.first_frame == 8
    np.testing.assert_allclose(recording.points[20:-20, 0], at(changed.time)[20:-20], atol=1e-2)
    np.testing.assert_allclose(recording.event_times, EVENTS, rtol=1e-6)
    again = Trial.of(_moxPY.moxReadAcquisition(str(tmp_path / "written.c3d")))
    np.testing.assert_allclose(again.time, changed.time, rtol=1e-12)
    np.testing.assert_allclose(again.rotations["Pelvis"], changed.rotations["Pelvis"], rtol=1e-6)


def test_the_same_rate_is_a_copy(trial: Trial) -> None:
    assert snapshot(trial.resample(RATE)) == snapshot(trial)


def test_platforms_measure_the_same() -> None:
    trial = Trial.of(example_trial())
    changed = trial.resample(trial.rate / 2)
    samples = len(changed.analogs.time)
    for new, old in zip(changed.platforms, trial.platforms, strict=True):
        np.testing.assert_array_equal(new.wrench().force, old.wrench().force[:samples])


@pytest.mark.parametrize(
    ("arguments", "message"),
    [
        ((0.0,), "a rate is a positive number, not 0.0"),
        ((-5.0,), "a rate is a positive number, not -5.0"),
        ((np.nan,), "a rate is a positive number, not nan"),
        ((50.0, np.inf), "a rate is a positive number, not inf"),
        (
            (120.0,),
            "the rate of the analog channels, 1000, is no whole multiple of 120; give an "
            "analog_rate that is one",
        ),
        ((120.0, 500.0), "an analog rate of 500 is no whole multiple of 120"),
        ((0.2, 1000.0), "no frame of a rate of 0.2 lies in the trial"),
    ],
)
def test_other_rates_are_refused(trial: Trial, arguments: tuple[float, ...], message: str) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match="rate") as error:
        trial.resample(*arguments)
    assert str(error.value) == message
    assert snapshot(trial) == before


def test_a_trial_without_analogs_takes_any_rate() -> None:
    trial = Trial.new(frames=50, rate=100.0)
    trial.markers["A"] = np.ones((50, 3))
    changed = trial.resample(33.0)
    np.testing.assert_allclose(changed.time, np.arange(17) / 33.0)
    np.testing.assert_allclose(changed.markers["A"].values, np.ones((17, 3)))


@pytest.mark.parametrize("frames", [28, 29])
def test_a_trial_without_analogs_may_have_a_frame_too_few_for_the_last_one(frames: int) -> None:
    trial = Trial.new(frames=frames, rate=30.0)
    trial.markers["A"] = np.arange(frames * 3.0).reshape(-1, 3)
    changed = trial.resample(15.0)
    assert changed.time.tolist() == trial.time[::2].tolist()
    np.testing.assert_allclose(changed.markers["A"].values, trial.markers["A"].values[::2])


def test_rates_of_numpy_are_rates(trial: Trial) -> None:
    changed = trial.resample(np.float32(trial.rate / 2), np.int64(trial.analogs.rate))
    assert snapshot(changed) == snapshot(trial.resample(trial.rate / 2, trial.analogs.rate))


def test_a_trial_without_frames_or_rate() -> None:
    assert Trial.new(rate=100.0).resample(50.0).frames == 0
    with pytest.raises(ValueError, match="a trial without a rate cannot be resampled"):
        Trial.of(_moxPY.moxNewAcquisition(1, 5)).resample(50.0)
    closed = Trial.of(new_trial())
    closed.close()
    with pytest.raises(ValueError, match="the trial was closed"):
        closed.resample(50.0)
