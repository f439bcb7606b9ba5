"""A trial from text is like one from C3D: in what is written, and in every function."""

from __future__ import annotations

from pathlib import Path
from random import Random
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from opensim.texts import signals, sto, trc, walk
from stateful.random_edits import EDITS
from stateful.test_edited_recordings import differences, told
from support.agreement import assert_agreement
from support.same_readings import readings

TEXTS = {
    "trc": trc(walk(), first=31),
    "mot": sto(signals(), times=[f"{1 + row / 100:.2f}" for row in range(6)], header=["units=N,m"]),
    "no frames": trc({"A": np.empty((0, 3))}),
    "600 markers": trc({f"M{i}": np.full((2, 3), i) for i in range(600)}),
}
every_text = pytest.mark.parametrize("name", TEXTS)
with_frames = pytest.mark.parametrize("name", [name for name in TEXTS if name != "no frames"])


def from_text(folder: Path, name: str) -> Any:
    path = folder / "trial.txt"
    path.write_bytes(TEXTS[name])
    return _moxPY.moxReadAcquisition(str(path))


def written(folder: Path, acquisition: Any) -> Any:
    path = folder / "trial.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(path))
    return _moxPY.moxReadAcquisition(str(path))


@every_text
def test_all_parts_agree(tmp_path: Path, name: str):
    assert_agreement(from_text(tmp_path, name))


@every_text
def test_every_getter_answers(tmp_path: Path, name: str):
    answers = readings(from_text(tmp_path, name))
    raised = {
        getter: answer
        for getter, answer in answers.items()
        if isinstance(answer, tuple) and isinstance(answer[0], type)
    }
    of_c3d = readings(written(tmp_path, from_text(tmp_path, name)))
    assert raised == {getter: of_c3d[getter] for getter in raised}


@every_text
def test_what_is_written_as_c3d_reads_the_same(tmp_path: Path, name: str):
    acquisition = from_text(tmp_path, name)
    before = told(acquisition)
    assert list(differences("", before, told(written(tmp_path, acquisition)))) == []


@with_frames
def test_written_trials_are_equal_in_single_precision(tmp_path: Path, name: str):
    trial = mox.read(TEXTS[name], odd="raise")
    trial.write(tmp_path / "a.c3d")
    back = mox.read(tmp_path / "a.c3d", odd="raise")
    for kind in ("markers", "analogs"):
        one, other = getattr(trial, kind), getattr(back, kind)
        assert list(one) == list(other)
        assert [one[label].unit for label in one] == [other[label].unit for label in other]
        np.testing.assert_array_equal(one.values.astype(np.float32), other.values)
    assert (trial.first_frame, trial.frames) == (back.first_frame, back.frames)
    assert (trial.rate, trial.samples_per_frame) == (back.rate, back.samples_per_frame)
    np.testing.assert_array_equal(trial.time, back.time)


@with_frames
@pytest.mark.parametrize("storage", ["real", "integer", "source"])
@pytest.mark.parametrize("processor", ["intel", "dec", "mips", "source"])
def test_every_form_can_be_written(tmp_path: Path, name: str, storage: Any, processor: Any):
    trial = mox.read(TEXTS[name])
    path = tmp_path / "a.c3d"
    trial.write(path, storage=storage, processor=processor)
    back = mox.read(path, odd="raise")
    np.testing.assert_allclose(back.markers.values, trial.markers.values, atol=0.02)
    # Channels without a scale of their own are written in steps of 1 where integers are asked for.
    step = 0.5 if storage == "integer" else 1e-5
    np.testing.assert_allclose(back.analogs.values, trial.analogs.values, rtol=0, atol=step)


@pytest.mark.parametrize("sequence", range(6))
@pytest.mark.parametrize("name", ["trc", "mot"])
def test_edits_do_what_they_do_with_a_trial_from_c3d(tmp_path: Path, name: str, sequence: int):
    mine = from_text(tmp_path, name)
    other = written(tmp_path, from_text(tmp_path, name))
    randoms = [Random(f"{name} {sequence}") for _ in range(2)]
    done: list[str] = []
    for _ in range(25):
        edits = [random.choice(list(EDITS)) for random in randoms]
        assert edits[0] == edits[1]
        outcomes = [
            outcome_of(EDITS[edits[0]], random, acquisition)
            for random, acquisition in zip(randoms, (mine, other), strict=True)
        ]
        done.append(f"{edits[0]}: {outcomes[0]}")
        assert outcomes[0] == outcomes[1], done
        assert_agreement(mine)
    one, two = (without_kept_entries(told(each)) for each in (mine, other))
    assert list(differences("", one, two)) == [], done


def outcome_of(edit: Any, random: Random, acquisition: Any) -> str:
    state = random.getstate()
    try:
        edit(random, acquisition)
        outcome = ""
    except (RuntimeError, ValueError, TypeError, OverflowError, SystemError) as refusal:
        outcome = f"{type(refusal).__name__}: {refusal}"
    # However many choices were made on the way.
    random.setstate(state)
    random.random()
    return outcome


def without_kept_entries(results: dict[str, Any]) -> dict[str, Any]:
    """Without metadata, which a file has more of."""
    return {name: value for name, value in results.items() if name != "metadata"}
