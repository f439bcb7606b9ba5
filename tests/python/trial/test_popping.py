"""What is taken out of a trial by `pop` stays what it was."""

from __future__ import annotations

import numpy as np
import pytest
from moxPY.trial import Trial
from support.small_trials import example_trial


@pytest.fixture
def trial() -> Trial:
    return Trial.of(example_trial())


@pytest.mark.parametrize("kind", ["markers", "angles", "points", "analogs"])
def test_a_popped_channel_keeps_its_samples(trial: Trial, kind: str) -> None:
    channels, before = getattr(trial, kind), trial.copy()
    label = channels.labels[1]
    original = getattr(before, kind)[label]
    popped = channels.pop(label)
    assert label not in channels
    np.testing.assert_array_equal(popped.values, original.values)
    channels["Renamed"] = popped
    assert (channels["Renamed"].unit, channels["Renamed"].description) == (
        original.unit,
        original.description,
    )
    np.testing.assert_array_equal(channels["Renamed"].values, original.values)


def test_the_last_channel_is_popped_in_the_end(trial: Trial) -> None:
    expected = {label: channel.values for label, channel in trial.markers.items()}
    popped = {}
    while trial.markers:
        label, channel = trial.markers.popitem()
        popped[label] = channel.values
    assert list(popped) == list(expected)
    for label, values in expected.items():
        np.testing.assert_array_equal(popped[label], values)
    with pytest.raises(KeyError, match="there is nothing left"):
        trial.markers.popitem()


def test_a_popped_group_keeps_its_entries(trial: Trial) -> None:
    entries = dict(trial.metadata["ANALYSIS"])
    popped = trial.metadata.pop("ANALYSIS")
    assert "ANALYSIS" not in trial.metadata
    trial.metadata["RESULTS"] = popped
    for name, value in entries.items():
        np.testing.assert_array_equal(trial.metadata["RESULTS"][name], value)


def test_what_is_not_there_is_the_default_or_an_error(trial: Trial) -> None:
    count = len(trial.markers)
    assert trial.markers.pop("nobody", None) is None
    assert trial.metadata.pop("NOTHING", 3) == 3
    with pytest.raises(KeyError, match="no channel 'nobody' among the markers"):
        trial.markers.pop("nobody")
    with pytest.raises(KeyError, match="no metadata group 'NOTHING'"):
        trial.metadata.pop("NOTHING")
    assert len(trial.markers) == count
