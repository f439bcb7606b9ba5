"""Pickled trials: the same in every getter, in every process, to the last bit."""

from __future__ import annotations

import multiprocessing
import pickle
from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from _moxPY import trial as calls
from hypothesis import given, settings
from hypothesis import strategies as st
from support.leaks import assert_nothing_lost
from support.same_readings import reading_differences, readings
from support.sample_table import SAMPLES
from support.small_trials import KINDS, example_trial, new_trial
from support.store_tree import snapshot

PROTOCOLS = range(2, pickle.HIGHEST_PROTOCOL + 1)


def pickled(trial: mox.Trial, protocol: int = pickle.DEFAULT_PROTOCOL) -> mox.Trial:
    made = pickle.loads(pickle.dumps(trial, protocol))
    assert type(made) is type(trial)
    return made


@pytest.mark.parametrize("protocol", PROTOCOLS)
@pytest.mark.parametrize("kind", KINDS)
def test_a_pickled_trial_holds_the_same(kind: str, protocol: int, tmp_path: Path):
    trial = mox.Trial.of(KINDS[kind](tmp_path))
    before = snapshot(trial)
    assert snapshot(pickled(trial, protocol)) == before
    assert snapshot(trial) == before


@pytest.mark.parametrize("name", [sample.name for sample in SAMPLES])
def test_a_pickled_sample_reads_the_same(name: str, sample: Callable[[str], Path]):
    trial = mox.read(sample(name), odd="ignore")
    made = pickled(trial)
    assert reading_differences(readings(trial), made) == []
    assert snapshot(made) == snapshot(trial)


def test_every_bit_of_a_sample_is_kept():
    bits = [0, 1 << 63, 1, 0x7FF0 << 48, (0x7FF8 << 48) + 7, (0xFFF0 << 48) + 1, (0x3FF << 52) + 1]
    values = np.resize(np.array(bits, np.uint64).view(np.float64), 8)
    trial = mox.Trial.of(new_trial())
    trial.analogs["EMG1"] = values
    found = pickled(trial).analogs["EMG1"].values
    assert found.tobytes() == trial.analogs["EMG1"].values.tobytes()
    assert found.view(np.uint64).tolist() == values.view(np.uint64).tolist()


def test_a_pickled_trial_is_another_one():
    trial = mox.Trial.of(new_trial())
    before = snapshot(trial)
    made = pickled(trial)
    made.markers["LASI"] = np.zeros((made.frames, 3))
    _moxPY.moxClearEvents(made)
    assert snapshot(trial) == before


def test_path_and_warnings_go_along(tmp_path: Path):
    path = tmp_path / "walk.c3d"
    mox.Trial.of(example_trial()).write(path)
    path.write_bytes(path.read_bytes()[:-4096])
    trial = pickled(mox.read(path, odd="ignore"))
    assert trial.path == path
    assert len(trial.warnings) == 1


def test_a_pickle_is_no_larger_than_what_is_held():
    """Of the channels and the raw sets that share their samples, one has them."""
    trial = mox.Trial.of(example_trial())
    assert trial.path is not None
    assert len(pickle.dumps(trial)) < 1.5 * trial.path.stat().st_size


class Walk(mox.Trial):
    pass


def test_a_subclass_stays_one():
    assert type(pickle.loads(pickle.dumps(Walk.of(new_trial())))) is Walk


def test_a_closed_trial_is_not_pickled():
    trial = mox.Trial.of(new_trial())
    trial.close()
    with pytest.raises(ValueError, match=r"^the trial was closed$"):
        pickle.dumps(trial)


def halved(trial: mox.Trial) -> mox.Trial:
    """What another process does."""
    trial.markers.values = trial.markers.values / 2
    return trial


@pytest.mark.parametrize("start", multiprocessing.get_all_start_methods())
def test_trials_go_to_other_processes_and_back(start: str):
    trials = [mox.Trial.of(example_trial()) for _ in range(3)]
    expected = trials[0].markers.values / 2
    with multiprocessing.get_context(start).Pool(2) as pool:
        for made in pool.map(halved, trials):
            assert made.markers.values.tobytes() == expected.tobytes()


# What is no image.

FOREIGN = [b"", b"text", bytes(32), bytes(1000)]


@pytest.mark.parametrize("content", FOREIGN)
def test_foreign_bytes_are_refused(content: bytes):
    with pytest.raises(ValueError, match=r"^These bytes are no image of a store$"):
        calls.load(content)


def test_a_cut_image_is_refused():
    image = calls.dump(new_trial())
    for length in range(32, len(image), 97):
        with pytest.raises(ValueError, match="damaged"):
            calls.load(image[:length])


@pytest.mark.parametrize("content", ["text", None, 3])
def test_what_lends_no_bytes_is_refused(content: Any):
    with pytest.raises(TypeError, match="bytes-like"):
        calls.load(content)


IMAGE = calls.dump(new_trial())
edits = st.lists(
    st.tuples(st.integers(0, len(IMAGE) - 1), st.binary(min_size=1, max_size=9)),
    min_size=1,
    max_size=4,
)


@given(edits=edits, length=st.integers(0, len(IMAGE)))
@settings(max_examples=300, deadline=None)
def test_a_damaged_image_is_refused(edits: list[tuple[int, bytes]], length: int):
    changed = bytearray(IMAGE)
    for place, patch in edits:
        changed[place : place + len(patch)] = patch
    del changed[length:]
    if changed == IMAGE:
        return
    with pytest.raises(ValueError, match=r"image|These bytes"):
        calls.load(changed)


def refused(content: bytes) -> None:
    with pytest.raises(ValueError, match="damaged"):
        calls.load(content)


def test_pickling_loses_no_memory():
    trial = mox.Trial.of(new_trial())
    image = calls.dump(trial)
    assert_nothing_lost(lambda: pickle.dumps(trial), trial)
    assert_nothing_lost(lambda: calls.load(image), image)
    assert_nothing_lost(lambda: refused(image[:-1]), image)
