"""Analog channels that are dead or at the end of their range."""

from __future__ import annotations

import numpy as np
import pytest
from checks.made_trials import Array, clean_trial, the_one
from moxPY.trial import Trial

RATE = 1000.0
SAMPLES = 3000
TIME = np.arange(SAMPLES) / RATE
STEP = 10.0 / 4096  # a converter with 12 bits for 10 V


def with_signal(signal: Array, *, stored: bool = True) -> Trial:
    """A trial with one channel, as a converter with steps stores it."""
    trial = Trial.new(300, 100.0, 10)
    trial.analogs["EMG"] = np.round(signal / STEP) * STEP if stored else signal
    trial.analogs["EMG"].unit = "V"
    return trial


def burst(amplitude: float) -> Array:
    random = np.random.default_rng(4)
    envelope = 0.02 + np.exp(-(((TIME - 1.5) / 0.2) ** 2))
    smooth = np.convolve(random.normal(0.0, 1.0, SAMPLES), np.hanning(11) / 3.0, "same")
    signal: Array = amplitude * envelope * smooth
    return signal


def test_a_channel_with_one_value_is_dead() -> None:
    trial = clean_trial()
    trial.analogs["EMG9"] = np.full(len(trial.analogs.time), -0.0)
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel, finding.text) == ("dead", "EMG9", "0 in every sample")


def test_a_platform_without_any_signal_is_one_finding() -> None:
    trial = clean_trial()
    for channel in trial.platforms[1].channels:
        channel.values = np.zeros(len(trial.analogs.time))
    finding = the_one(trial.check())
    assert (finding.rule, finding.channel) == ("dead", None)
    assert finding.text == "platform 1: all 6 channels are dead"


@pytest.mark.parametrize("rail", [2.0, 5.0])
def test_a_signal_that_is_cut_off_is_found_where_it_is_longest(rail: float) -> None:
    signal = np.clip(burst(9.0), -rail, rail)
    signal[1437:1487] = rail
    signal[1430:1437] = signal[1487:1500] = 0.0
    finding = the_one(with_signal(signal).check())
    assert (finding.rule, finding.channel) == ("saturated", "EMG")
    assert finding.frames == (1437 // 10 + 1, 1486 // 10 + 1)
    assert finding.time == pytest.approx(1.437)
    assert f"at the end of its range, {rail:g} V" in finding.text


def test_one_plateau_of_few_samples_is_well() -> None:
    signal = np.clip(burst(3.0), -10.0, 10.0)
    signal[2000:2003] = 5.0
    assert with_signal(signal).check() == []
    signal[2000:2004] = 5.0
    assert [finding.rule for finding in with_signal(signal).check()] == ["saturated"]
    assert with_signal(signal).check(saturated_samples=5) == []


@pytest.mark.parametrize("signal", [
    burst(3.0),
    3.0 * np.sin(2.0 * np.pi * TIME),                    # flat tops of some samples
    0.3 * np.sin(2.0 * np.pi * 0.3 * TIME),              # and of many
    np.where(np.sin(40.0 * TIME) > 0.0, 5.0, 0.0),       # a switch
    np.where((TIME > 1.0) & (TIME < 1.02), 5.0, 0.0) + STEP * (np.arange(SAMPLES) % 20),
    4.0 * np.clip(np.sin(5.0 * TIME), 0.0, 1.0) ** 2,    # a load that rests at one end
    -4.0 * np.clip(np.sin(5.0 * TIME), 0.0, 1.0) ** 2,
    5.0 * (TIME * 3.0 % 1.0),                            # a saw
])  # fmt: skip
@pytest.mark.parametrize("stored", [True, False])
def test_what_signals_do_at_their_ends_is_well(signal: Array, stored: bool) -> None:
    assert with_signal(signal, stored=stored).check() == []


def test_signals_with_nan_are_not_judged() -> None:
    signal = np.clip(burst(9.0), -2.0, 2.0)
    signal[7] = np.nan
    assert with_signal(signal).check() == []


def test_signals_with_more_values_than_steps_are_judged() -> None:
    trial = Trial.new(120_000, 100.0, 10)
    trial.analogs["RAMP"] = np.clip(np.linspace(-1.0, 1.1, 1_200_000), -1.0, 1.0)
    finding = the_one(trial.check())
    assert (finding.rule, finding.frames) == ("saturated", (114286, 120000))
