"""`moxpy convert` to the formats that there are: what comes back, and where it lies."""

from __future__ import annotations

import tempfile
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pandas as pd
import pytest
from hypothesis import given, settings
from moxPY.commands import main
from moxPY.formats import formats
from moxPY.formats.options import PARTS
from support.any_trials import trials

Call = Callable[..., Any]


@settings(deadline=None, max_examples=50)
@given(trial=trials())
def test_a_trial_comes_back_from_c3d_as_it_was(trial: moxPY.Trial):
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "trial.c3d"
        trial.write(path)
        assert main(["convert", str(path), "-o", f"{folder}/out", "--to", "c3d"]) == 0
        first, second = moxPY.read(path), moxPY.read(f"{folder}/out/trial.c3d")
    assert second.markers.labels == trial.markers.labels
    assert second.analogs.labels == trial.analogs.labels
    assert second.points == trial.points
    assert list(second.events) == list(first.events)
    assert (second.rate, second.first_frame) == (trial.rate, trial.first_frame)
    assert second.samples_per_frame == first.samples_per_frame
    assert second.analogs == first.analogs
    assert second.metadata == first.metadata


def test_a_converted_file_has_no_differences(call: Call, walk: Path, tmp_path: Path):
    assert call("convert", walk, "-o", tmp_path / "out", "--to", "c3d").code == 0
    assert call("diff", walk, tmp_path / "out" / "walk.c3d") == (0, "", "")


@pytest.mark.parametrize("name", formats())
def test_every_format_lies_where_its_files_are_said_to_be(
    name: str, call: Call, walk: Path, tmp_path: Path
):
    code, out, err = call("convert", walk, "-o", tmp_path / "out", "--to", name)
    assert (code, err) == (0, "")
    paths = sorted(map(Path, out.splitlines()))
    assert paths == sorted((tmp_path / "out").iterdir())
    for path in paths:
        assert path.stat().st_size > 0
        assert path.name.endswith(formats()[name].suffix)
        part = path.name.removeprefix("walk").removesuffix(formats()[name].suffix)
        assert part == "" or part.removeprefix("_") in PARTS


def test_tables_have_the_axes_units_and_parts_that_are_asked_for(
    call: Call, walk: Path, tmp_path: Path
):
    words = ["--to", "parquet", "--parts", "markers", "--up", "y", "--units", "m,N,Nm"]
    path = tmp_path / "out" / "walk_markers.parquet"
    assert call("convert", walk, "-o", path.parent, *words).out == f"{path}\n"
    expected = moxPY.read(walk).markers["C7"].values / 1000
    frame = pd.read_parquet(path)
    # Of a laboratory with z upwards, y becomes z the other way round.
    np.testing.assert_allclose(frame["C7_y"], expected[:, 2])
    np.testing.assert_allclose(np.abs(frame["C7_z"]), np.abs(expected[:, 1]))


def test_parts_that_there_are_not_are_refused(call: Call, tmp_path: Path):
    words = ["-o", tmp_path / "out", "--to", "csv", "--parts", "markers,evnts"]
    code, _, err = call("convert", "missing.c3d", *words)
    assert code == 2
    assert "there is no part 'evnts'; there are trial, markers," in " ".join(err.split())
