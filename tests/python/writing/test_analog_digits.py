"""Analog values keep their digits, whatever scale and offset say."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, c3d_bytes
from writing.test_new_acquisitions import new
from writing.written import source_in, written_again

LogLines = Callable[[], list[str]]
SMALL = np.random.default_rng(7).normal(0, 5e-5, (1000, 1))


def with_channel(values: Any) -> Any:
    acquisition = new(0, len(values))
    _moxPY.moxAppendAnalog(acquisition, "E", np.asarray(values, float).reshape(-1, 1))
    return acquisition


def read_from(folder: Path, **options: Any) -> Any:
    path = folder / "trial.c3d"
    path.write_bytes(c3d_bytes({"A": np.ones((40, 3))}, **options))
    return _moxPY.moxReadAcquisition(str(path))


def is_close(after: Any, values: Any) -> bool:
    """Every value is off by a few units in the last place of the largest one at most."""
    found = _moxPY.moxGetAnalogsValues(after)
    allowed = np.abs(values).max() * 2.0**-22
    return bool((np.abs(found - np.reshape(values, found.shape)) <= allowed).all())


def scaling_of(acquisition: Any) -> tuple[float, float]:
    info = _moxPY.moxGetAnalog(acquisition, 0)[1]
    return info["scale"], info["offset"]


def test_an_offset_beside_which_values_vanish_is_written_as_0(
    tmp_path: Path, new_log_lines: LogLines
):
    acquisition = with_channel(SMALL)
    _moxPY.moxSetAnalogOffset(acquisition, 0, 2048)
    after = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert is_close(after, SMALL)
    assert scaling_of(after) == (1.0, 0.0)
    assert any(
        "the offset 2048 of the analog channel 'E' leaves its values, up to" in line
        for line in new_log_lines()
    )


def test_an_offset_beside_whole_numbers_stays(tmp_path: Path):
    counts = np.arange(-20, 20)
    acquisition = with_channel(counts)
    _moxPY.moxSetAnalogOffset(acquisition, 0, 2048)
    after = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert _moxPY.moxGetAnalogsValues(after).ravel().tolist() == counts.tolist()
    assert scaling_of(after) == (1.0, 2048.0)


def test_another_general_scale_costs_no_digits(tmp_path: Path):
    counts = 2048 + np.random.default_rng(7).integers(-9, 10, 40)
    acquisition = read_from(tmp_path, analogs=[Analog("E", counts, scale=0.1, offset=2048)])
    before = _moxPY.moxGetAnalogsValues(acquisition)
    info = {"format": "Real", "values": 1e6}
    _moxPY.moxAppendMetaData(acquisition, "ANALOG", "GEN_SCALE", info)
    assert is_close(written_again(acquisition, tmp_path, source_in(tmp_path)), before)


@pytest.mark.parametrize(("scale", "word"), [(1e38, "small"), (1e-38, "large")])
def test_a_scale_that_leaves_the_range_of_singles_is_replaced(
    tmp_path: Path, new_log_lines: LogLines, scale: float, word: str
):
    values = SMALL * (1 if word == "small" else 1e8)
    acquisition = with_channel(values)
    _moxPY.moxSetAnalogScale(acquisition, 0, scale)
    after = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert is_close(after, values)
    assert any(f"too {word} for its scale" in line for line in new_log_lines())


def test_a_scale_of_0_that_was_read_stays_with_values_of_0(tmp_path: Path):
    channel = Analog("E", np.arange(40), scale=0.0, offset=3)
    acquisition = read_from(tmp_path, analogs=[channel])
    _moxPY.moxSetFrameNumber(acquisition, 41)
    after = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert scaling_of(after) == (0.0, 3.0)
    assert not _moxPY.moxGetAnalogsValues(after).any()


def test_a_scale_of_0_that_was_read_goes_when_a_value_was_set(tmp_path: Path):
    acquisition = read_from(tmp_path, analogs=[Analog("E", np.arange(40), scale=0.0)])
    _moxPY.moxSetAnalogsValues(acquisition, np.arange(40.0).reshape(-1, 1))
    after = written_again(acquisition, tmp_path, source_in(tmp_path))
    assert scaling_of(after)[0] == 1.0
    assert is_close(after, np.arange(40.0))
