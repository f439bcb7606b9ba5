"""Text files that others read as well: the same numbers."""

from __future__ import annotations

import io
from pathlib import Path
from typing import Any

import moxPY as mox
import numpy as np
import pytest
from opensim.texts import sto, trc

FRAMES = 50
random = np.random.default_rng(7)
MARKERS = {f"M{i}": random.normal(0, 900, (FRAMES, 3)) for i in range(12)}
COLUMNS = {f"force_{i}": random.normal(0, 900, FRAMES) for i in range(9)}


def test_markers(tmp_path: Path):
    trc_reader: Any = pytest.importorskip("trc", reason="compares with a reader not installed")
    path = tmp_path / "walk.trc"
    path.write_bytes(trc(MARKERS, rate="120", first=7))
    other = trc_reader.TRCData()
    other.load(str(path))
    trial = mox.read(path, odd="raise")
    assert list(trial.markers) == other["Markers"]
    for label in trial.markers:
        np.testing.assert_array_equal(trial.markers[label].values, np.array(other[label]))
    assert (trial.rate, trial.frames) == (other["DataRate"], other["NumFrames"])
    assert trial.first_frame == other["Frame#"][0]
    np.testing.assert_allclose(trial.time, other["Time"], atol=1e-6)


@pytest.mark.parametrize("separator", ["\t", "  "])
def test_columns(separator: str):
    pandas = pytest.importorskip("pandas")
    content = sto(COLUMNS, separator=separator)
    trial = mox.read(content, odd="raise")
    table = content.partition(b"endheader\n")[2]
    frame = pandas.read_csv(io.BytesIO(table), sep=r"\s+", dtype=str).astype(float)
    assert ["time", *trial.analogs] == list(frame.columns)
    np.testing.assert_array_equal(trial.analogs.values, frame.to_numpy()[:, 1:])
    np.testing.assert_allclose(trial.analogs.time, frame["time"], atol=1e-9)
