"""Acquisitions, their arrays and their files live independently of each other."""

from __future__ import annotations

import os
import sys
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from reading import drop_acquisitions
from reading.fresh_process import run_python
from support.c3d_bytes import c3d_bytes
from support.read_c3d import read_bytes, read_c3d, track

POINTS = {"A": track(5), "B": track(5, 40)}
READERS = {
    "moxGetPoints": lambda acquisition: _moxPY.moxGetPoints(acquisition)[0]["A"],
    "moxGetMarkers": lambda acquisition: _moxPY.moxGetMarkers(acquisition)[0]["A"],
    "moxGetPoint": lambda acquisition: _moxPY.moxGetPoint(acquisition, 0)[0],
    "moxGetPointsValues": _moxPY.moxGetPointsValues,
    "moxGetMarkersValues": _moxPY.moxGetMarkersValues,
    "moxGetAnalogs": lambda acquisition: _moxPY.moxGetAnalogs(acquisition)[0]["F"],
    "moxGetAnalog": lambda acquisition: _moxPY.moxGetAnalog(acquisition, "F")[0],
    "moxGetAnalogsValues": _moxPY.moxGetAnalogsValues,
}

every_reader = pytest.mark.parametrize("read", READERS.values(), ids=READERS.keys())


def acquisition_in(folder: Path) -> Any:
    return read_c3d(folder, POINTS, analogs={"F": np.arange(10)}, samples_per_frame=2)


@every_reader
def test_writing_into_an_array_changes_no_later_read(tmp_path: Path, read: Any) -> None:
    acquisition = acquisition_in(tmp_path)
    array = read(acquisition)
    untouched = array.copy()
    array[...] = -1.0
    np.testing.assert_array_equal(read(acquisition), untouched)


@every_reader
def test_an_array_is_writeable_and_its_memory_is_its_own(tmp_path: Path, read: Any) -> None:
    acquisition = acquisition_in(tmp_path)
    array, again = read(acquisition), read(acquisition)
    assert array.flags.writeable
    assert array.dtype == np.float64
    # A transposed array is a view of one that owns its memory, and that nobody else knows.
    owner = array if array.base is None else array.base
    assert isinstance(owner, np.ndarray)
    assert owner.flags.owndata
    assert not np.shares_memory(array, again)


@every_reader
def test_an_array_outlives_its_acquisition(tmp_path: Path, read: Any) -> None:
    acquisition = acquisition_in(tmp_path)
    array = read(acquisition)
    expected = array.copy()
    del acquisition
    junk = [acquisition_in(tmp_path) for _ in range(5)]
    np.testing.assert_array_equal(array, expected)
    del junk


def test_channels_do_not_share_memory(tmp_path: Path) -> None:
    values = _moxPY.moxGetPoints(acquisition_in(tmp_path))[0]
    assert not np.shares_memory(values["A"], values["B"])


@pytest.mark.parametrize("read", [_moxPY.moxGetPointsValues, _moxPY.moxGetAnalogsValues])
def test_matrices_are_in_c_order(tmp_path: Path, read: Any) -> None:
    matrix = read(acquisition_in(tmp_path))
    assert matrix.flags.c_contiguous
    assert matrix.flags.owndata
    assert matrix.dtype == np.dtype("=f8")
    assert matrix.ndim == 2


def test_reading_twice_gives_two_acquisitions(tmp_path: Path) -> None:
    content = c3d_bytes(POINTS)
    first, second = read_bytes(tmp_path, content), read_bytes(tmp_path, content)
    _moxPY.moxSetFrequency(first, 50.0)
    assert _moxPY.moxGetPointFrequency(first) == 50.0
    assert _moxPY.moxGetPointFrequency(second) == 100.0


def test_dropping_one_keeps_the_other(tmp_path: Path) -> None:
    content = c3d_bytes(POINTS)
    first, second = read_bytes(tmp_path, content), read_bytes(tmp_path, content)
    del first
    np.testing.assert_array_equal(_moxPY.moxGetPoint(second, "B")[0], POINTS["B"])


@pytest.mark.parametrize("after", ["deleted", "overwritten", "cut"])
def test_the_file_is_no_longer_needed(tmp_path: Path, after: str) -> None:
    acquisition = read_bytes(tmp_path, c3d_bytes(POINTS))
    path = tmp_path / "trial.c3d"
    if after == "deleted":
        path.unlink()
    elif after == "overwritten":
        path.write_bytes(b"\xff" * 5000)
    else:
        os.truncate(path, 10)
    np.testing.assert_array_equal(_moxPY.moxGetPoint(acquisition, "A")[0], POINTS["A"])
    assert _moxPY.moxGetPoint(acquisition, "B")[1]["label"] == "B"


def test_a_file_that_was_read_is_as_before(tmp_path: Path) -> None:
    content = c3d_bytes(POINTS)
    read_bytes(tmp_path, content)
    assert (tmp_path / "trial.c3d").read_bytes() == content


@pytest.mark.skipif(not Path("/proc/self/fd").exists(), reason="/proc tells the open files")
def test_no_file_stays_open(tmp_path: Path) -> None:
    def open_trials() -> list[str]:
        files = [str(entry.resolve()) for entry in Path("/proc/self/fd").iterdir()]
        return [name for name in files if name.endswith(".c3d")]

    acquisition = acquisition_in(tmp_path)
    assert open_trials() == []
    with pytest.raises(RuntimeError):
        read_bytes(tmp_path, b"nothing")
    assert open_trials() == []
    del acquisition


@pytest.mark.skipif(sys.platform != "linux", reason="/proc tells the memory")
@pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="the sanitizer's memory")
@pytest.mark.parametrize("kind", ["good", "cut", "foreign"])
def test_a_thousand_files_read_and_dropped_leave_no_memory_behind(
    tmp_path: Path, kind: str
) -> None:
    content = c3d_bytes({"A": track(2000), "B": track(2000)}, analogs={"F": np.arange(2000)})
    content = {"good": content, "cut": content[:1500], "foreign": b"\xff" * 60_000}[kind]
    path = tmp_path / "trial.c3d"
    path.write_bytes(content)
    grown = int(run_python(str(drop_acquisitions.__file__), str(path), "1000"))
    # A thousandth of it would already be a megabyte for each KB that one read leaves behind.
    assert grown < 1_000_000
