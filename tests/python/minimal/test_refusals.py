"""Errors arrive as Python's own, with their whole text, through every library on the way."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes
from support.failures import failure_of


def test_a_missing_file(tmp_path: Path) -> None:
    name = str(tmp_path / "none.c3d")
    expected = (RuntimeError, f"The filename '{name}' does not exist")
    assert failure_of(_moxPY.moxReadAcquisition, name) == expected


def test_a_missing_file_in_python_s_words(tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError):
        mox.read(tmp_path / "none.c3d")


def test_a_directory(tmp_path: Path) -> None:
    text = f"Impossible to open in read mode the file '{tmp_path}'"
    assert failure_of(_moxPY.moxReadAcquisition, str(tmp_path)) == (RuntimeError, text)


def test_a_file_of_no_known_kind(tmp_path: Path) -> None:
    path = tmp_path / "notes.txt"
    path.write_bytes(b"hello")
    text = f"No importer accepts the file '{path}'"
    assert failure_of(_moxPY.moxReadAcquisition, str(path)) == (RuntimeError, text)


def test_a_file_that_ends_in_its_header(tmp_path: Path) -> None:
    path = tmp_path / "cut.c3d"
    path.write_bytes(c3d_bytes({"A": np.ones((2, 3))})[:300])
    kind, text = failure_of(_moxPY.moxReadAcquisition, str(path))
    assert kind is RuntimeError
    assert text


def test_an_unknown_label(trial: mox.Trial) -> None:
    with pytest.raises(KeyError, match="LASJ"):
        trial.markers["LASJ"]


def test_a_wrong_shape_changes_nothing(trial: mox.Trial) -> None:
    before = trial.markers["LASI"].values.copy()
    with pytest.raises(ValueError, match="5"):
        trial.markers["LASI"] = np.ones((4, 3))
    np.testing.assert_array_equal(trial.markers["LASI"].values, before)


def test_more_memory_than_there_is(trial: mox.Trial) -> None:
    kind, _ = failure_of(_moxPY.moxSetFrameNumber, trial, 2**31 - 1)
    assert kind is MemoryError
    assert trial.frames == 5


def test_the_store_s_own_exception_is_known_in_the_module() -> None:
    with pytest.raises(ValueError, match=r"^These bytes are no image of a store$"):
        _moxPY.trial.load(bytes(100))


def test_a_closed_trial(trial: mox.Trial) -> None:
    trial.close()
    with pytest.raises(ValueError, match="closed"):
        _ = trial.frames


def test_a_folder_that_is_not_there(trial: mox.Trial, tmp_path: Path) -> None:
    name = str(tmp_path / "none" / "new.c3d")
    text = f"Export to c3d failed, could not create file at: {name}"
    assert failure_of(_moxPY.moxWriteAcquisition, trial, name) == (RuntimeError, text)
    assert not (tmp_path / "none").exists()
