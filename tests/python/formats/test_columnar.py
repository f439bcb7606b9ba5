"""Parquet and Arrow files, as pandas, polars and pyarrow read them."""

from __future__ import annotations

import json
from pathlib import Path
from typing import Any

import numpy as np
import pandas
import polars
import pyarrow.feather
import pyarrow.parquet
import pytest
from formats.expected import expected_table
from moxPY.trial import Trial

READERS: dict[str, list[Any]] = {
    "parquet": [pandas.read_parquet, polars.read_parquet],
    "arrow": [pandas.read_feather, polars.read_ipc],
}


def schema_of(path: Path) -> Any:
    if path.suffix == ".parquet":
        return pyarrow.parquet.read_schema(path)
    return pyarrow.feather.read_table(path).schema


@pytest.mark.parametrize("format", READERS)
@pytest.mark.parametrize("kind", ["markers", "angles", "analogs"])
def test_every_number_comes_back(any_trial: Trial, format: str, kind: str, tmp_path: Path) -> None:
    if not len(getattr(any_trial, kind)):
        pytest.skip("the trial has none")
    (path,) = any_trial.export(tmp_path / f"walk.{format}", parts=[kind])
    expected = expected_table(any_trial, kind)
    for read in READERS[format]:
        frame = read(path)
        np.testing.assert_array_equal(frame.to_numpy(), expected)
        assert frame.columns[0] == "time"
        assert {str(dtype).lower() for dtype in frame.dtypes} == {"float64"}


def test_names_of_columns_differ(odd: Trial, tmp_path: Path) -> None:
    odd.export(tmp_path / "odd.parquet")
    frame = polars.read_parquet(tmp_path / "odd_markers.parquet")
    assert frame.columns[1::3] == [
        'a,"b"_x', "Gürtel_x", "L/R Ζ µ_x", "=1+1_x", "time_x", "time_2_x",
    ]  # fmt: skip
    assert polars.read_parquet(tmp_path / "odd_analogs.parquet").columns == ["time", "time_2"]


def test_polars_gives_the_markers_back(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(tmp_path / "walk.parquet", parts=["markers"])
    copy = walk.copy()
    copy.markers.values = np.zeros(copy.markers.values.shape)
    copy.markers.update_from(polars.read_parquet(path))
    assert copy.markers == walk.markers


@pytest.mark.parametrize("format", READERS)
def test_the_schema_says_what_the_trial_is(walk: Trial, format: str, tmp_path: Path) -> None:
    asked: Any = {"up": "x", "units": ("m", "N", "Nm"), "side": "plate", "threshold": 5.0}
    walk.export(tmp_path / f"walk.{format}", **asked)
    schema = schema_of(tmp_path / f"walk_platforms.{format}")
    said = json.loads(schema.metadata[b"moxPY"])
    facts = {name: said[name] for name in ("part", "up", "side", "threshold", "rate", "frames")}
    assert facts == {
        "part": "platforms", "up": "x", "side": "plate", "threshold": 5.0, "rate": 100.0,
        "frames": 360,
    }  # fmt: skip
    assert (said["length_unit"], said["force_unit"], said["moment_unit"]) == ("m", "N", "Nm")
    assert [event["time"] for event in said["events"]] == walk.events.times().tolist()
    field = schema.field("platform_2_point_z")
    assert field.metadata == {
        b"unit": b"m", b"platform": b"2", b"quantity": b"point", b"axis": b"z",
    }  # fmt: skip


@pytest.mark.parametrize("format", READERS)
def test_long_tables(any_trial: Trial, format: str, tmp_path: Path) -> None:
    if not len(any_trial.markers):
        pytest.skip("the trial has none")
    (path,) = any_trial.export(tmp_path / f"walk.{format}", parts=["markers"], long=True)
    expected = any_trial.to_polars("markers", long=True)
    for read in READERS[format]:
        frame = read(path)
        assert list(frame.columns) == ["time", "label", "axis", "value", "unit"]
        for name in ("time", "label", "axis", "value"):
            np.testing.assert_array_equal(frame[name].to_numpy(), expected[name].to_numpy())
        assert set(frame["unit"]) <= set(any_trial.markers.units.values())


def test_events(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(tmp_path / "walk.parquet", parts=["events"])
    for frame in (pandas.read_parquet(path), polars.read_parquet(path)):
        assert frame["time"].to_numpy().tolist() == walk.events.times().tolist()
        assert list(frame["label"]) == [event.label for event in walk.events]
        assert list(frame["id"]) == [event.id for event in walk.events]
