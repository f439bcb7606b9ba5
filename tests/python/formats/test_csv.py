"""CSV files, as pandas and polars read them."""

from __future__ import annotations

import csv
from pathlib import Path

import numpy as np
import pandas
import polars
import pytest
from formats.expected import expected_table
from moxPY.trial import Trial

KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")


@pytest.mark.parametrize("kind", KINDS)
def test_pandas_and_polars_read_every_number_back(
    any_trial: Trial, kind: str, tmp_path: Path
) -> None:
    if not len(getattr(any_trial, kind)):
        pytest.skip("the trial has none")
    (path,) = any_trial.export(tmp_path / "walk.csv", parts=[kind])
    expected = expected_table(any_trial, kind)
    frame = pandas.read_csv(path, dtype=np.float64)
    np.testing.assert_array_equal(frame.to_numpy(), expected)
    other = polars.read_csv(path, infer_schema_length=None)
    np.testing.assert_array_equal(other.cast(polars.Float64).fill_null(np.nan).to_numpy(), expected)
    assert len(set(other.columns)) == expected.shape[1]


def test_the_first_line_names_units(walk: Trial, tmp_path: Path) -> None:
    walk.export(tmp_path / "walk.csv", parts=["markers", "analogs", "angles"])
    heads = {
        kind: next(csv.reader((tmp_path / f"walk_{kind}.csv").read_text("utf-8").splitlines()))
        for kind in ("markers", "analogs", "angles")
    }
    assert heads["markers"][:3] == ["time [s]", "LFHD.x [mm]", "LFHD.y [mm]"]
    assert heads["angles"][1] == "LPelvisAngles.x [deg]"
    assert heads["analogs"][:4] == ["time [s]", "Fx1 [N]", "Fy1 [N]", "Fz1 [N]"]


def test_odd_labels_come_back(odd: Trial, tmp_path: Path) -> None:
    odd.export(tmp_path / "odd.csv")
    with (tmp_path / "odd_markers.csv").open(encoding="utf-8", newline="") as file:
        head = next(csv.reader(file))
    assert head[1::3] == [
        'a,"b".x [mm]',
        "Gürtel.x [mm]",
        "L/R Ζ µ.x [mm]",
        "=1+1.x [mm]",
        "time.x [mm]",
        "time_2.x [mm]",
    ]
    events = pandas.read_csv(tmp_path / "odd_events.csv")
    assert events.loc[0, "label"] == "Foot, é"
    assert events.loc[0, "time [s]"] == 1.1


@pytest.mark.parametrize("kind", ["markers", "analogs"])
def test_a_long_table_gives_the_channels_back(any_trial: Trial, kind: str, tmp_path: Path) -> None:
    channels = getattr(any_trial, kind)
    if not len(channels):
        pytest.skip("the trial has none")
    (path,) = any_trial.export(tmp_path / "walk.csv", parts=[kind], long=True)
    texts = dict.fromkeys(["label", "axis", "unit"], str)
    frame = pandas.read_csv(path, dtype=texts)
    axes = [] if kind == "analogs" else ["axis"]
    assert list(frame.columns) == ["time", "label", *axes, "value", "unit"]
    assert len(frame) == channels.values.size
    copy = any_trial.copy()
    copy_of = getattr(copy, kind)
    copy_of.values = np.zeros(copy_of.values.shape)
    if len(frame):
        copy_of.update_from(frame)
    assert copy_of == channels


def test_platforms_are_numbered_from_one(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(tmp_path / "walk.csv", parts=["platforms"], threshold=50.0)
    frame = pandas.read_csv(path)
    wrench = walk.platforms[1].wrench(50.0)
    for axis, name in enumerate("xyz"):
        force, point = frame[f"platform_2.force.{name} [N]"], frame[f"platform_2.point.{name} [mm]"]
        np.testing.assert_array_equal(force, wrench.force[:, axis])
        np.testing.assert_array_equal(point, wrench.point[:, axis])
        moment = frame[f"platform_2.free_moment.{name} [Nmm]"]
        np.testing.assert_array_equal(moment[wrench.contact], wrench.moment[wrench.contact, axis])
        # What would be the moment about the measuring origin there.
        assert moment[~wrench.contact].isna().all()


def test_what_was_asked_is_a_file_of_its_own(walk: Trial, tmp_path: Path) -> None:
    asked = {"up": "y", "units": ("m", "kN", "Nm"), "side": "person", "threshold": 0.03}
    walk.export(tmp_path / "walk.csv", **asked)
    facts = dict(csv.reader((tmp_path / "walk_trial.csv").read_text("utf-8").splitlines()))
    assert {name: facts[name] for name in ("up", "side", "threshold", "subject")} == {
        "up": "y", "side": "person", "threshold": "0.03", "subject": "Walker",
    }  # fmt: skip
    units = [facts[f"{quantity}_unit"] for quantity in ("length", "force", "moment")]
    assert units == ["m", "kN", "kNm"]  # moments of platforms are forces times lengths


def test_only_what_the_trial_has_becomes_a_file(any_trial: Trial, tmp_path: Path) -> None:
    paths = any_trial.export(tmp_path / "walk.csv")
    parts = [path.stem.removeprefix("walk_") for path in paths]
    assert parts == [
        part
        for part in ("trial", *KINDS, "platforms", "events")
        if part == "trial" or len(getattr(any_trial, part))
    ]
    assert sorted(tmp_path.glob("walk*")) == sorted(paths)
