"""Filters delay nothing and see no gaps."""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from scipy.signal import butter, filtfilt
from support.c3d_bytes import Analog
from support.read_c3d import read_c3d
from support.small_trials import new_trial
from support.store_tree import snapshot

FRAMES, RATE, RATIO = 600, 100.0, 10


def wave(frequency: float, rate: float = RATE, samples: int = FRAMES) -> Any:
    return 100 * np.sin(2 * np.pi * frequency * np.arange(samples) / rate + 0.3)


def point(*frequencies: float) -> Any:
    column = sum(wave(frequency) for frequency in frequencies)
    return np.column_stack([column, 2 * column, 3 * column])


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    words = np.arange(FRAMES) % 127 * 256.0 + 5
    words[200:240] = -1
    words[246:260] = -1
    samples = np.round(wave(20, 1000, FRAMES * RATIO) + wave(300, 1000, FRAMES * RATIO))
    return Trial.of(
        read_c3d(
            tmp_path,
            {"A": point(2, 30), "B": point(2, 12, 30), "Knee": point(3, 40)},
            rate=RATE,
            residuals={"B": words},
            parameters={"POINT:ANGLES": ["Knee"]},
            analogs=[Analog("S", samples), Analog("T", samples)],
            samples_per_frame=RATIO,
        )
    )


INNER = slice(60, -60)


@pytest.mark.parametrize(
    ("label", "cutoff", "kind", "left"),
    [
        ("A", 8.0, "low", (2,)),
        ("A", 10.0, "high", (30,)),
        ("B", (6.0, 20.0), "band", (12,)),
        ("B", (6.0, 20.0), "stop", (2, 30)),
    ],
)
def test_what_passes_is_neither_smaller_nor_later(
    tmp_path: Path, trial: Trial, label: str, cutoff: Any, kind: Any, left: Any
) -> None:
    trial.markers["B"].values = point(2, 12, 30)
    before = snapshot(trial)
    filtered = trial.filter(cutoff, kind=kind)
    assert snapshot(trial) == before
    values = filtered.markers[label].values
    np.testing.assert_allclose(values[INNER], point(*left)[INNER], atol=6.0)


@pytest.mark.parametrize("order", [1, 2, 3, 4])
def test_each_pass_has_the_order(trial: Trial, order: int) -> None:
    numerator, denominator = butter(order, 6.0 / (RATE / 2))
    expected = filtfilt(numerator, denominator, trial.markers["A"].values, axis=0)
    actual = trial.filter(6.0, order).markers["A"].values
    np.testing.assert_allclose(actual, expected, atol=1e-7)


def test_half_of_the_amplitude_is_left_at_the_cutoff(trial: Trial) -> None:
    trial.markers["A"].values = point(6.0)
    left = trial.filter(6.0).markers["A"].values
    np.testing.assert_allclose(left[INNER], point(6.0)[INNER] / 2, atol=0.5)


def test_runs_between_gaps_are_filtered_by_themselves(trial: Trial) -> None:
    values = trial.markers["B"].values
    actual = trial.filter(6.0).markers["B"].values
    numerator, denominator = butter(4, 6.0 / (RATE / 2))
    for run in (slice(0, 200), slice(260, 600)):
        expected = filtfilt(numerator, denominator, values[run], axis=0)
        np.testing.assert_allclose(actual[run], expected, atol=1e-7)
    # Six frames are too short.
    np.testing.assert_array_equal(actual[240:246], values[240:246])
    np.testing.assert_array_equal(np.isnan(actual), np.isnan(values))


def test_residuals_and_masks_stay(trial: Trial, tmp_path: Path) -> None:
    filtered = trial.filter(6.0)
    path = tmp_path / "written.c3d"
    _moxPY.moxWriteAcquisition(filtered, str(path))
    for shown in (filtered, Trial.of(_moxPY.moxReadAcquisition(str(path)))):
        for name in ("residuals", "cameras"):
            held, kept = (getattr(t.markers["B"], name) for t in (trial, shown))
            assert kept.tobytes() == held.tobytes()


@pytest.mark.parametrize(
    ("channels", "changed"),
    [
        ("points", {"A", "B", "Knee"}),
        ("markers", {"A", "B"}),
        ("angles", {"Knee"}),
        ("forces", set()),
        ("analogs", {"S", "T"}),
        ("T", {"T"}),
        (["A", "T", "A"], {"A", "T"}),
        ([], set()),
    ],
)
def test_channels_are_chosen(trial: Trial, channels: Any, changed: set[str]) -> None:
    filtered = trial.filter(6.0, channels=channels)
    for kind in (trial.points, trial.analogs):
        for label, channel in kind.items():
            others = filtered.analogs if channel.kind == "analogs" else filtered.points
            is_same = others[label].values.tobytes() == channel.values.tobytes()
            assert is_same == (label not in changed), label


def test_analog_channels_have_their_own_rate(trial: Trial) -> None:
    filtered = trial.filter((100.0, 450.0), kind="band", channels="analogs")
    expected = wave(300, 1000, FRAMES * RATIO)
    np.testing.assert_allclose(filtered.analogs["S"].values[300:-300], expected[300:-300], atol=3)


@pytest.mark.parametrize(
    ("arguments", "options", "message"),
    [
        ((50.0,), {}, "a cutoff lies between 0 and 50 Hz, half of the rate of the channels; 50.0 "),
        ((0.0,), {}, "a cutoff lies between 0 and 50 Hz, half of the rate of the channels; 0.0 "),
        ((np.nan,), {}, "a cutoff lies between 0 and 50 Hz"),
        ((500.0,), {"channels": "analogs"}, "a cutoff lies between 0 and 500 Hz"),
        ((500.0,), {"channels": ["A", "S"]}, "a cutoff lies between 0 and 50 Hz"),
        ((6.0,), {"kind": "band"}, "a filter of the kind 'band' has two cutoffs in rising order, "),
        (((8.0, 6.0),), {"kind": "stop"}, "a filter of the kind 'stop' has two cutoffs in rising "),
        (((6.0, 8.0),), {}, "a filter of the kind 'low' has one cutoff, not "),
        ((6.0, 0), {}, "the order of a filter is 1 or more, not 0"),
        ((6.0,), {"kind": "lowpass"}, "a kind of filter is one of low, high, band, stop, not "),
    ],
)
def test_other_filters_are_refused(
    trial: Trial, arguments: Any, options: Any, message: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match=r"filter|cutoff") as error:
        trial.filter(*arguments, **options)
    assert str(error.value).startswith(message)
    assert snapshot(trial) == before


def test_a_label_that_is_not_there_is_named(trial: Trial) -> None:
    with pytest.raises(KeyError, match="no channel 'Kne' among the points; nearest: Knee"):
        trial.filter(6.0, channels=["A", "Kne"])


def test_short_trials_stay_as_they_are() -> None:
    trial = Trial.of(new_trial())
    np.testing.assert_array_equal(trial.filter(6.0).points.values, trial.points.values)


def test_without_scipy_the_text_says_what_to_install(
    trial: Trial, monkeypatch: pytest.MonkeyPatch
) -> None:
    for name in [name for name in sys.modules if name.split(".")[0] == "scipy"]:
        monkeypatch.delitem(sys.modules, name)
    others = [path for path in sys.path if not (Path(path) / "scipy").is_dir()]
    monkeypatch.setattr(sys, "path", others)
    monkeypatch.setattr(sys, "path_importer_cache", {})
    with pytest.raises(ImportError, match=r'^this needs SciPy: pip install "moxPY\[signal\]"$'):
        trial.filter(6.0)
