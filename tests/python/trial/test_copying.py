"""Copies hold the same, and from then on neither sees what the other becomes."""

from __future__ import annotations

import copy
from collections.abc import Callable
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from support.leaks import assert_nothing_lost
from support.memory import address_space
from support.small_trials import KINDS, new_trial
from support.store_tree import snapshot

FRAMES = 330_000
MEGABYTE = 1 << 20


def change_values(trial: Trial) -> None:
    trial.markers["LASI"].values = np.full((trial.frames, 3), 7.0)


def change_a_single_sample_of_all(trial: Trial) -> None:
    values = np.array(trial.analogs.values)
    values[0, 0] += 1
    trial.analogs.values = values


def rename(trial: Trial) -> None:
    trial.angles["LKneeAngle"].label = "other"


def remove(trial: Trial) -> None:
    del trial.forces["RGRF"]


def append(trial: Trial) -> None:
    trial.powers["new"] = np.ones((trial.frames, 3))


def append_an_event(trial: Trial) -> None:
    _moxPY.moxAppendEvent(trial, "Foot Strike", 2.0, "Left")


def clear_events(trial: Trial) -> None:
    _moxPY.moxClearEvents(trial)


def change_metadata(trial: Trial) -> None:
    _moxPY.moxSetMetaData(trial, "TRIAL", "COUNTS", {"format": "Integer", "values": [4, 5, 6]})


def change_the_rate(trial: Trial) -> None:
    trial.rate = 50.0


def change_frames(trial: Trial) -> None:
    _moxPY.moxSetFrameNumber(trial, trial.frames - 2)


def renumber(trial: Trial) -> None:
    trial.first_frame = 100


EDITS = [
    change_values, change_a_single_sample_of_all, rename, remove, append, append_an_event,
    clear_events, change_metadata, change_the_rate, change_frames, renumber,
]  # fmt: skip

COPIES: dict[str, Callable[[Trial], Trial]] = {
    "Trial.copy": Trial.copy,
    "copy.copy": copy.copy,
    "copy.deepcopy": copy.deepcopy,
}
each_copy = pytest.mark.parametrize("copied", COPIES.values(), ids=COPIES)


@each_copy
@pytest.mark.parametrize("kind", KINDS)
def test_a_copy_holds_the_same(copied: Callable[[Trial], Trial], kind: str, tmp_path: Any):
    trial = Trial.of(KINDS[kind](tmp_path))
    made = copied(trial)
    assert type(made) is Trial
    assert snapshot(made) == snapshot(trial)


@pytest.mark.parametrize("edit", EDITS)
def test_the_original_does_not_see_changes_of_the_copy(
    rich_trial: Any, edit: Callable[[Trial], None]
):
    trial = Trial.of(rich_trial)
    before = snapshot(trial)
    made = trial.copy()
    edit(made)
    assert snapshot(trial) == before
    assert snapshot(made) != before


@pytest.mark.parametrize("edit", EDITS)
def test_the_copy_does_not_see_changes_of_the_original(
    rich_trial: Any, edit: Callable[[Trial], None]
):
    trial = Trial.of(rich_trial)
    before = snapshot(trial)
    made = trial.copy()
    edit(trial)
    assert snapshot(made) == before
    assert snapshot(trial) != before


def test_a_copy_outlives_the_original():
    trial = Trial.of(new_trial())
    before = snapshot(trial)
    made = trial.copy()
    trial.close()
    assert snapshot(made) == before


def test_a_channel_follows_its_own_trial():
    trial = Trial.of(new_trial())
    channel = trial.markers["LASI"]
    trial.copy().markers.rename({"LASI": "other"})
    assert channel.label == "LASI"


def test_a_subclass_is_copied_as_one():
    class Walk(Trial):
        pass

    assert type(Walk.of(new_trial()).copy()) is Walk
    assert type(copy.deepcopy(Walk.of(new_trial()))) is Walk


def test_a_trial_within_something_is_copied_once():
    trial = Trial.of(new_trial())
    first, second = copy.deepcopy([trial, trial])
    assert first is second
    assert first is not trial


def test_a_closed_trial_is_not_copied():
    trial = Trial.of(new_trial())
    trial.close()
    with pytest.raises(ValueError, match=r"^the trial was closed$"):
        trial.copy()


def test_samples_are_shared_until_they_are_written():
    """Of 63 MB: the copy takes next to nothing, a channel that is written its own."""
    trial = Trial.of(_moxPY.moxNewAcquisition(8, FRAMES))
    channel = np.ones((trial.frames, 3))
    with address_space(24 * MEGABYTE):
        made = trial.copy()
        first, second = made.markers.labels[:2]
        made.markers[first].values = channel
    assert not trial.markers[first].values.any()
    assert made.markers[first].values.all()
    assert not made.markers[second].values.any()


def test_copying_loses_no_memory():
    trial = Trial.of(new_trial())
    assert_nothing_lost(lambda: trial.copy(), trial)
