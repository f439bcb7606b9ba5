"""Data frames and data sets of other packages, and channels from them."""

from __future__ import annotations

import json
import subprocess
import sys
from collections.abc import Callable
from pathlib import Path
from typing import Any

import numpy as np
import pandas
import polars
import pytest
import xarray
from moxPY.trial import Trial
from moxPY.trial.extras import require
from support.same_readings import reading_differences, readings
from support.small_trials import example_trial, new_trial, read_trial, trajectory
from support.store_tree import snapshot

POINTS = ("markers", "angles", "forces", "moments", "powers", "points")
CHANNELS = (*POINTS, "analogs")


@pytest.fixture(params=["new", "read", "example", "one frame", "empty"])
def trial(request: pytest.FixtureRequest, tmp_path: Path) -> Trial:
    made: dict[str, Callable[[], Any]] = {
        "new": new_trial,
        "read": lambda: read_trial(tmp_path),
        "example": example_trial,
        "one frame": lambda: one_frame(),
        "empty": lambda: Trial.new(),
    }
    return Trial.of(made[request.param]())


def one_frame() -> Trial:
    trial = Trial.new(frames=1, samples_per_frame=2)
    trial.first_frame = 31
    trial.markers["A_x"] = [[1.0, np.nan, 3.0]]
    trial.analogs["time"] = [0.5, 1.5]
    return trial


# pandas.


@pytest.mark.parametrize("kind", POINTS)
def test_wide_points_of_pandas(trial: Trial, kind: Any) -> None:
    channels = getattr(trial, kind)
    frame = trial.to_pandas(kind)
    assert frame.index.name == "time"
    assert frame.columns.names == ["label", "axis"]
    assert frame.shape == (trial.frames, 3 * len(channels))
    np.testing.assert_array_equal(frame.index, trial.time)
    for label, channel in channels.items():
        np.testing.assert_array_equal(frame[label][["x", "y", "z"]], channel.values)
        np.testing.assert_array_equal(frame[label, "y"], channel.y)
    assert frame.attrs["units"] == channels.units


def test_wide_analogs_of_pandas(trial: Trial) -> None:
    frame = trial.to_pandas("analogs")
    np.testing.assert_array_equal(frame.index, trial.analogs.time)
    assert list(frame.columns) == trial.analogs.labels
    np.testing.assert_array_equal(frame, trial.analogs.values)
    assert frame.attrs["units"] == trial.analogs.units


@pytest.mark.parametrize("kind", CHANNELS)
def test_long_frames(trial: Trial, kind: Any) -> None:
    names = ["label"] if kind == "analogs" else ["label", "axis"]
    expected = [
        (time, label, *axis, value)
        for label, channel in getattr(trial, kind).items()
        for axis, component in components(channel.values)
        for time, value in zip(channel.time, component, strict=True)
    ]
    for frame in (trial.to_pandas(kind, long=True), trial.to_polars(kind, long=True)):
        assert list(frame.columns) == ["time", *names, "value"]
        assert frame["value"].to_numpy().dtype == frame["time"].to_numpy().dtype == np.float64
        rows = list(zip(*(frame[name].to_list() for name in frame.columns), strict=True))
        assert [row[:-1] for row in rows] == [row[:-1] for row in expected]
        np.testing.assert_array_equal([r[-1] for r in rows], [r[-1] for r in expected])


def components(values: Any) -> list[tuple[tuple[str, ...], Any]]:
    if values.ndim == 1:
        return [((), values)]
    return [((axis,), values[:, column]) for column, axis in enumerate("xyz")]


EVENT_FIELDS = ["time", "label", "context", "subject", "description", "id"]


def test_events(trial: Trial) -> None:
    expected = [tuple(getattr(e, name) for name in EVENT_FIELDS) for e in trial.events]
    for long in (False, True):
        frame = trial.to_pandas("events", long=long)
        assert list(frame.columns) == EVENT_FIELDS
        assert list(frame.itertuples(index=False, name=None)) == expected
        assert frame.time.dtype == np.float64
        assert frame.id.dtype == np.int64
        assert trial.to_polars("events", long=long).rows() == expected


def test_platforms(trial: Trial) -> None:
    wrenches = [plate.wrench() for plate in trial.platforms]
    wide, long = trial.to_pandas("platforms"), trial.to_pandas("platforms", long=True)
    assert wide.columns.names == ["platform", "quantity", "axis"]
    assert wide.shape == (len(trial.analogs.time), 9 * len(wrenches))
    table = trial.to_polars("platforms")
    for number, wrench in enumerate(wrenches):
        for part in ("force", "moment", "point"):
            expected = getattr(wrench, part)
            np.testing.assert_array_equal(wide[number][part][["x", "y", "z"]], expected)
            rows = long[(long.platform == number) & (long.quantity == part)]
            np.testing.assert_array_equal(rows.value.to_numpy().reshape(3, -1).T, expected)
            names = [f"{number}_{part}_{axis}" for axis in "xyz"]
            np.testing.assert_array_equal(table.select(names).to_numpy(), expected)
    assert wide.attrs["units"] == [wrench.units._asdict() for wrench in wrenches]


def test_another_kind_is_refused() -> None:
    trial: Any = Trial.new()
    for convert in (trial.to_pandas, trial.to_polars):
        with pytest.raises(ValueError, match=r"^there are frames of markers, .*; not of 'marker'$"):
            convert("marker")


# polars.


@pytest.mark.parametrize("kind", POINTS)
def test_wide_points_of_polars(trial: Trial, kind: Any) -> None:
    frame = trial.to_polars(kind)
    labels = getattr(trial, kind).labels
    assert frame.columns == ["time", *(f"{label}_{axis}" for label in labels for axis in "xyz")]
    np.testing.assert_array_equal(frame["time"], trial.time)
    values = getattr(trial, kind).values.reshape(trial.frames, -1) if trial.frames else None
    if values is not None and labels:
        np.testing.assert_array_equal(frame.drop("time").to_numpy(), values)


def test_two_columns_of_one_name_are_refused() -> None:
    trial = one_frame()
    message = "^two columns would have the name 'time': take the long frame$"
    with pytest.raises(ValueError, match=message):
        trial.to_polars("analogs")
    assert trial.to_polars("analogs", long=True).shape == (2, 3)


# Back.


def through_csv(frame: Any, folder: Path) -> Any:
    levels = list(range(frame.columns.nlevels))
    frame.to_csv(folder / "frame.csv")
    return pandas.read_csv(folder / "frame.csv", header=levels, index_col=0)


def through_parquet(frame: Any, folder: Path) -> Any:
    frame.to_parquet(folder / "frame.parquet")
    return pandas.read_parquet(folder / "frame.parquet")


FRAMES: dict[str, Callable[[Trial, Any, Path], Any]] = {
    "pandas": lambda trial, kind, _: trial.to_pandas(kind),
    "pandas reset": lambda trial, kind, _: trial.to_pandas(kind).reset_index(),
    "pandas reversed": lambda trial, kind, _: trial.to_pandas(kind).iloc[::-1],
    "pandas long": lambda trial, kind, _: trial.to_pandas(kind, long=True),
    "pandas shuffled": lambda trial, kind, _: trial.to_pandas(kind, long=True).sample(
        frac=1, random_state=1
    ),
    "polars": lambda trial, kind, _: trial.to_polars(kind),
    "polars long": lambda trial, kind, _: trial.to_polars(kind, long=True),
    "CSV": lambda trial, kind, folder: through_csv(trial.to_pandas(kind), folder),
    "Parquet": lambda trial, kind, folder: through_parquet(trial.to_pandas(kind), folder),
}


@pytest.mark.parametrize("frame_of", FRAMES.values(), ids=FRAMES)
@pytest.mark.parametrize("kind", ["markers", "moments", "analogs"])
def test_channels_from_a_frame(tmp_path: Path, frame_of: Any, kind: Any) -> None:
    trial = Trial.of(example_trial())
    trial.first_frame = 101
    before = readings(trial)
    getattr(trial, kind).update_from(frame_of(trial, kind, tmp_path))
    assert reading_differences(before, trial) == []

    changed = trial.copy()
    channels = getattr(changed, kind)
    first, last = channels.labels[0], channels.labels[-1]
    channels[first] = channels[first].values + 1.5
    channels["new"] = channels[last].values * 2
    frame = frame_of(changed, kind, tmp_path)
    getattr(trial, kind).update_from(frame)
    assert getattr(trial, kind) == channels
    assert getattr(trial, kind)["new"].unit == getattr(trial, kind)[last].unit


def test_channels_that_the_frame_lacks_and_those_it_does_not_change_stay() -> None:
    trial = Trial.of(new_trial())
    frame = trial.to_pandas("markers")[["RASI"]] + 1
    trial.markers.update_from(frame)
    assert trial.markers.labels == ["LASI", "RASI"]
    np.testing.assert_array_equal(trial.markers["LASI"], trajectory(0))
    np.testing.assert_array_equal(trial.markers["RASI"], trajectory(2) + 1)


def test_missing_values_are_not_seen() -> None:
    trial = Trial.of(new_trial())
    expected = np.array(trial.markers["LASI"].values)
    expected[2, 1] = np.nan
    frame = trial.to_polars("markers")
    column = polars.Series("LASI_y", [float(v) if np.isfinite(v) else None for v in expected[:, 1]])
    trial.markers.update_from(frame.with_columns(column))
    np.testing.assert_array_equal(trial.markers["LASI"], expected)


def test_awkward_labels_come_back() -> None:
    trial = one_frame()
    for long in (False, True):
        trial.markers.update_from(trial.to_polars("markers", long=long))
        trial.markers.update_from(trial.to_pandas("markers", long=long))
        trial.analogs.update_from(trial.to_pandas("analogs", long=long) * 1)
    assert trial.markers.labels == ["A_x"]
    assert trial.analogs.labels == ["time"]


def edited(change: Callable[[Any], Any], long: bool = False) -> Callable[[Trial], Any]:
    return lambda trial: change(trial.to_pandas("markers", long=long))


ODD_FRAMES: list[tuple[Callable[[Trial], Any], type[Exception], str]] = [
    (lambda _: np.ones((4, 6)), TypeError, "expected a data frame of pandas or polars, got"),
    (edited(lambda f: f.iloc[1:]), ValueError, "the frame has 3 instants, the trial 4"),
    (
        edited(lambda f: f.set_axis(f.index + 0.01).rename_axis("time")), ValueError,
        "the instants of the frame are not those of the trial, 0 s to 0.03 s at 100 Hz",
    ),
    (
        edited(lambda f: f.set_axis(f.index[[0, 1, 1, 3]])), ValueError,
        "the instants of the frame are not those of the trial, 0 s to 0.03 s at 100 Hz",
    ),
    (
        edited(lambda f: f.set_axis(pandas.Index(list("abcd"), name="time"))), TypeError,
        "times are seconds, not",
    ),
    (
        edited(lambda f: f.rename_axis(None)), ValueError,
        "the frame has no column 'time', and its index is not called so",
    ),
    (
        edited(lambda f: f.drop(columns=[("RASI", "y")]) + 1), ValueError,
        "the channel 'RASI' has no axis y in the frame",
    ),
    (
        edited(lambda f: f.rename(columns={"z": "w"}) + 1), ValueError,
        "the channel 'LASI' has an axis 'w', expected x, y or z",
    ),
    (
        edited(lambda f: f.assign(value="a"), long=True), TypeError,
        "the column of 'value': expected real numbers, got",
    ),
    (edited(lambda f: f.iloc[1:], long=True), ValueError, "the frame has 3 instants, the trial 4"),
    (
        edited(lambda f: f.drop(columns="axis"), long=True), ValueError,
        "the frame has no column 'axis'",
    ),
    (
        edited(lambda f: (f + 1).rename(columns={"RASI": "a\0"})), ValueError,
        "a label has no NUL character: 'a\\x00'",
    ),
    (
        edited(lambda f: f.set_axis([*f.columns[:5], f.columns[0]], axis=1)), ValueError,
        "two columns of the frame have one name",
    ),
]  # fmt: skip


@pytest.mark.parametrize(("frame_of", "error", "message"), ODD_FRAMES)
def test_frames_that_are_refused_change_nothing(
    frame_of: Callable[[Trial], Any], error: type[Exception], message: str
) -> None:
    trial = Trial.of(new_trial())
    before = snapshot(trial)
    frame = frame_of(trial)
    with pytest.raises(error) as failure:
        trial.markers.update_from(frame)
    assert str(failure.value).startswith(message)
    assert snapshot(trial) == before


# xarray.


def test_the_data_set(trial: Trial) -> None:
    data = trial.to_xarray()
    np.testing.assert_array_equal(data.time, trial.time)
    np.testing.assert_array_equal(data.analog_time, trial.analogs.time)
    assert data.time.attrs == data.analog_time.attrs == {"units": "s"}
    for kind in CHANNELS:
        channels = getattr(trial, kind)
        if kind == "points" or not channels:
            assert kind not in data
            continue
        label = kind.removesuffix("s")
        assert data[kind].attrs == ({"units": channels.unit} if channels.unit else {})
        assert dict(zip(data[label].values, data[f"{label}_unit"].values, strict=True)) == (
            channels.units
        )
        for name, channel in channels.items():
            chosen = data[kind].sel({label: name})
            np.testing.assert_array_equal(chosen, channel.values)
    for number, plate in enumerate(trial.platforms):
        wrench = plate.wrench()
        np.testing.assert_array_equal(data.platform_force.sel(platform=number), wrench.force)
        np.testing.assert_array_equal(data.platform_moment[:, number], wrench.moment)
        np.testing.assert_array_equal(data.platform_point[:, number], wrench.point)
    assert data.attrs["rate"] == trial.rate
    assert data.attrs["analog_rate"] == trial.analogs.rate
    assert data.attrs["first_frame"] == trial.first_frame
    events = json.loads(data.attrs["events"])
    assert [tuple(event.values()) for event in events] == [
        tuple(getattr(event, name) for name in EVENT_FIELDS) for event in trial.events
    ]


def test_the_data_set_survives_a_file(tmp_path: Path) -> None:
    trial = Trial.of(example_trial())
    trial.events.add("Drehung über 90°", 1.0, description='"quoted"')
    data = trial.to_xarray()
    data.to_netcdf(tmp_path / "trial.nc", engine="scipy")
    with xarray.open_dataset(tmp_path / "trial.nc", engine="scipy") as stored:
        assert stored.identical(data)


# Packages that are missing.


@pytest.mark.parametrize(
    ("call", "message"),
    [
        ("trial.to_pandas()", 'this needs pandas: pip install "moxPY[table]"'),
        ("trial.to_polars()", 'this needs polars: pip install "moxPY[polars]"'),
        ("trial.to_xarray()", 'this needs xarray: pip install "moxPY[xarray]"'),
        ("trial.to_rerun()", 'this needs Rerun: pip install "moxPY[rerun]"'),
    ],
)
def test_a_missing_package_is_named(call: str, message: str) -> None:
    script = f"""
import sys
from moxPY.trial import Trial
loaded = {{"pandas", "polars", "xarray", "scipy", "rerun"}} & set(sys.modules)
assert not loaded, loaded

class Nothing:
    def find_spec(self, name, path=None, target=None):
        if name.partition(".")[0] in ("pandas", "polars", "xarray", "scipy", "rerun"):
            raise ModuleNotFoundError(f"No module named {{name!r}}", name=name)

sys.meta_path.insert(0, Nothing())
trial = Trial.new(frames=1)
try:
    {call}
except ImportError as error:
    print(error)
"""
    done = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True)
    assert done.stdout == f"{message}\n", done.stderr


def test_a_package_that_is_broken_is_not_called_missing(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    (tmp_path / "broken.py").write_text("import nothing_of_this_name\n", encoding="utf-8")
    monkeypatch.syspath_prepend(tmp_path)
    with pytest.raises(ModuleNotFoundError, match="No module named 'nothing_of_this_name'"):
        require("broken")


def test_a_part_of_a_package() -> None:
    import scipy.signal

    assert require("scipy", "signal") is scipy.signal


def test_a_closed_trial() -> None:
    trial = Trial.of(example_trial())
    frame = trial.to_pandas()
    trial.close()
    conversions: list[Callable[[], Any]] = [
        trial.to_pandas, trial.to_polars, trial.to_xarray, lambda: trial.to_pandas("events"),
        lambda: trial.markers.update_from(frame),
    ]  # fmt: skip
    for convert in conversions:
        with pytest.raises(ValueError, match=r"^the trial was closed$"):
            convert()
