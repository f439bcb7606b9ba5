"""Electromyograms: raw, envelope, phases."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path

import moxPY
import numpy as np
import pytest
from plots.drawn import legend_of, line, rendered, spans, xy
from scipy import signal

MUSCLES = ["RectFem", "BicFem", "TibAnt", "Gastroc"]


def test_left_and_right_muscles_are_side_by_side(example: moxPY.Trial):
    axes = example.plot.emg()
    titles = [[panel.get_title(loc="left") for panel in row] for row in axes]
    assert titles == [[f"L{muscle}", f"R{muscle}"] for muscle in MUSCLES]
    assert {panel.get_ylabel() for panel in axes.flat} == {"V"}
    assert {panel.get_xlabel() for panel in axes[-1]} == {"time (s)"}
    assert legend_of(axes[0, 0]) == [
        "raw, about its mean", "envelope (6 Hz)", "left stance", "right stance",
    ]  # fmt: skip


def test_raw_and_envelope(example: moxPY.Trial):
    axes = example.plot.emg(["RGastroc"])
    raw = example.analogs["RGastroc"].values
    time, shown = xy(line(axes[0, 0], "raw"))
    assert np.array_equal(time, example.analogs.time)
    assert np.allclose(shown, raw - raw.mean())
    high, low = (signal.butter(4, f, kind, fs=1000.0) for f, kind in ((20, "high"), (6, "low")))
    expected = signal.filtfilt(*low, np.abs(signal.filtfilt(*high, raw)))
    assert np.allclose(xy(line(axes[0, 0], "envelope"))[1], expected, atol=1e-4)


def test_phases_are_the_stances_of_the_side(example: moxPY.Trial):
    axes = example.plot.emg(["RGastroc"])
    stances = [(each.start, each.stop) for each in example.cycles("Right", end="Foot Off")]
    assert np.allclose(spans(axes[0, 0]), stances)


def test_a_muscle_of_no_side_has_bars_of_both(walk: moxPY.Trial):
    walk.analogs.rename({"RGastroc": "EMG1"})
    axes = walk.plot.emg()
    assert axes.shape == (1, 1)
    assert len(spans(axes[0, 0])) == 2 + 3  # left, right
    assert max(patch.get_y() + patch.get_height() for patch in axes[0, 0].patches) < 0.15


def test_without_events_there_are_no_phases(walk: moxPY.Trial):
    walk.events.clear()
    axes = walk.plot.emg(["RGastroc"])
    assert spans(axes[0, 0]) == []
    assert legend_of(axes[0, 0]) == ["raw, about its mean", "envelope (6 Hz)"]


def test_what_there_is_not_is_named(walk: moxPY.Trial):
    with pytest.raises(KeyError, match="no channel 'LGastro' among the analogs; nearest"):
        walk.plot.emg(["LGastro"])
    with pytest.raises(ValueError, match="a cutoff lies between 0 and 500 Hz"):
        walk.plot.emg(cutoff=600.0)
    for muscle in MUSCLES:
        del walk.analogs[f"L{muscle}"], walk.analogs[f"R{muscle}"]
    with pytest.raises(ValueError, match="the trial has no channels of electromyography"):
        walk.plot.emg()
    walk.analogs.clear()
    with pytest.raises(ValueError, match="the trial has no channels of electromyography"):
        walk.plot.emg()


def test_a_slow_rate_is_refused():
    trial = moxPY.Trial.new(frames=10, rate=30.0)
    trial.analogs["EMG1"] = np.zeros(10)
    with pytest.raises(ValueError, match="analog channels at 30 Hz are too slow"):
        trial.plot.emg()
    empty = moxPY.Trial.new(rate=100.0)
    empty.analogs["EMG1"] = np.zeros(0)
    with pytest.raises(ValueError, match="the trial has no analog samples"):
        empty.plot.emg()


def test_one_frame(example: moxPY.Trial):
    assert rendered(example.crop(100, 100).plot.emg())


def test_named_channels_are_found_among_others(sample: Callable[[str], Path]):
    trial = moxPY.read(sample("2198928.c3d"), odd="ignore")
    axes = trial.plot.emg()
    assert [panel.get_title(loc="left") for panel in axes.T.flat] == [
        f"EMG{number}" for number in range(1, 13)
    ]
