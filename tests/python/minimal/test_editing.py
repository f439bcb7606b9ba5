"""Changing, writing and reading again."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import moxPY as mox
import numpy as np
import pytest


def test_values_of_a_marker(trial: mox.Trial) -> None:
    values = np.full((5, 3), 7.25)
    trial.markers["LASI"] = values
    np.testing.assert_array_equal(trial.markers["LASI"].values, values)


def test_a_new_marker_reaches_the_file(trial: mox.Trial, tmp_path: Path) -> None:
    values = np.arange(15.0).reshape(5, 3)
    trial.markers["NEW"] = values
    trial.write(tmp_path / "new.c3d")
    again = mox.read(tmp_path / "new.c3d")
    assert list(again.markers) == ["LASI", "RASI", "NEW"]
    np.testing.assert_array_equal(again.markers["NEW"].values, values)


def test_what_is_not_changed_stays(trial: mox.Trial, tmp_path: Path) -> None:
    trial.write(tmp_path / "new.c3d")
    again = mox.read(tmp_path / "new.c3d")
    for label in ("LASI", "RASI"):
        np.testing.assert_array_equal(again.markers[label].values, trial.markers[label].values)
    np.testing.assert_array_equal(again.analogs["Fz1"].values, trial.analogs["Fz1"].values)
    assert _moxPY.moxGetEvents(again)[0] == _moxPY.moxGetEvents(trial)[0]


def test_writing_twice_gives_the_same_file(trial: mox.Trial, tmp_path: Path) -> None:
    for name in ("a.c3d", "b.c3d"):
        trial.write(tmp_path / name)
    assert (tmp_path / "a.c3d").read_bytes() == (tmp_path / "b.c3d").read_bytes()


def test_a_trial_made_of_nothing(tmp_path: Path) -> None:
    trial = mox.Trial.new(3, 50.0, 2)
    trial.markers["A"] = np.ones((3, 3))
    trial.events.add("Foot Strike", 0.02, "Left")
    trial.write(tmp_path / "made.c3d")
    again = mox.read(tmp_path / "made.c3d")
    assert (again.frames, len(again.events)) == (3, 1)


def test_a_file_is_replaced(trial: mox.Trial, walk: Path, tmp_path: Path) -> None:
    trial.markers["LASI"] = np.zeros((5, 3))
    trial.write(walk)
    np.testing.assert_array_equal(mox.read(walk).markers["LASI"].values, np.zeros((5, 3)))
    assert [path.name for path in tmp_path.iterdir()] == ["walk.c3d"]


def test_a_copy_is_a_trial_of_its_own(trial: mox.Trial) -> None:
    other = trial.copy()
    other.markers["LASI"] = np.zeros((5, 3))
    assert trial.markers["LASI"].values[4, 2] == 3.5


def test_fewer_frames(trial: mox.Trial) -> None:
    _moxPY.moxSetFrameNumber(trial, 2)
    assert _moxPY.moxGetMarkersValues(trial).shape == (2, 6)
    assert _moxPY.moxGetAnalogsValues(trial).shape == (8, 1)


@pytest.mark.parametrize("label", ["Läufer", "歩行", "🚶"])
def test_labels_beyond_plain_letters(trial: mox.Trial, tmp_path: Path, label: str) -> None:
    trial.markers[label] = np.ones((5, 3))
    trial.write(tmp_path / "new.c3d")
    assert label in mox.read(tmp_path / "new.c3d").markers
