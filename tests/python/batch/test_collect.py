"""One table of many files, in memory and on disk."""

from __future__ import annotations

import threading
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY as mox
import numpy as np
import pandas as pd
import polars as pl
import pyarrow as pa
import pyarrow.parquet as pq
import pytest
from moxPY.batch import sinks, stacking
from support import batch_functions as functions
from support.c3d_bytes import Analog, c3d_bytes
from support.read_c3d import track

COUNT = 12
FOREIGN = b"this is no trial"


def paths(folder: Path) -> list[str]:
    return [str(path) for path in sorted(folder.glob("*.c3d"))]


def expected(folder: Path) -> pd.DataFrame:
    """The frame of `track` in the folder's files, made without the package."""
    frames = []
    for number, path in enumerate(paths(folder), 1):
        columns = dict(zip(["LASI_x", "LASI_y", "LASI_z"], track(number, number).T, strict=True))
        time = np.arange(number) / 100.0
        frames.append(pd.DataFrame({"file": path, "time": time, **columns}))
    return pd.concat(frames, ignore_index=True)


def markers(trial: mox.Trial) -> Any:
    return trial.markers


def as_pandas(trial: mox.Trial) -> Any:
    return trial.to_pandas()


def as_polars(trial: mox.Trial) -> Any:
    return trial.to_polars()


def as_arrow(trial: mox.Trial) -> Any:
    return pa.table(trial.to_polars())


def as_columns(trial: mox.Trial) -> Any:
    return {"time": trial.time, "LASI": trial.markers["LASI"].values}


def as_channels(trial: mox.Trial) -> Any:
    return {"time": list(trial.time), "LASI": trial.markers["LASI"]}


def as_rows(trial: mox.Trial) -> Any:
    names = ["LASI_x", "LASI_y", "LASI_z"]
    values = trial.markers["LASI"].values
    return [
        {"time": time, **dict(zip(names, row, strict=True))}
        for time, row in zip(trial.time, values, strict=True)
    ]


WAYS = [markers, as_pandas, as_polars, as_arrow, as_columns, as_channels, as_rows]


def frame_of(made: Any) -> pd.DataFrame:
    """What was collected as a frame of pandas with texts as texts."""
    if isinstance(made, Path):
        made = pq.read_table(made)
    if isinstance(made, pl.DataFrame):
        made = made.to_arrow()
    frame = made.to_pandas() if isinstance(made, pa.Table) else made
    return frame.astype({"file": str})


# What a function gives.


@pytest.mark.parametrize("function", WAYS)
def test_all_forms_make_the_same_table(folder: Path, function: Callable[[mox.Trial], Any]):
    made = mox.collect(function, folder)
    pd.testing.assert_frame_equal(frame_of(made), expected(folder), check_column_type=False)


@pytest.mark.parametrize("function", WAYS)
def test_all_forms_make_the_same_file(
    folder: Path, tmp_path: Path, function: Callable[[mox.Trial], Any]
):
    made = mox.collect(function, folder, to=tmp_path / "all.parquet")
    assert made == tmp_path / "all.parquet"
    pd.testing.assert_frame_equal(frame_of(made), expected(folder), check_column_type=False)


@pytest.mark.parametrize(
    ("to", "kind"), [("pandas", pd.DataFrame), ("polars", pl.DataFrame), ("arrow", pa.Table)]
)
def test_tables_of_other_packages(folder: Path, to: str, kind: type):
    made = mox.collect(markers, folder, to=to)
    assert type(made) is kind
    pd.testing.assert_frame_equal(frame_of(made), expected(folder), check_column_type=False)


def test_processes_make_the_same_table(folder: Path):
    made = mox.collect(functions.markers, folder, executor="processes", jobs=2)
    pd.testing.assert_frame_equal(frame_of(made), expected(folder), check_column_type=False)


def test_a_dictionary_of_values_is_a_row(folder: Path):
    made = mox.collect(lambda trial: {"frames": trial.frames, "name": trial.path.stem}, folder)
    assert made["file"].to_list() == paths(folder)
    assert made["frames"].to_list() == list(range(1, COUNT + 1))
    assert made["name"].to_list() == [Path(path).stem for path in paths(folder)]


def test_a_value_is_that_of_every_row(folder: Path):
    made = mox.collect(lambda trial: {"time": trial.time, "frames": trial.frames}, folder)
    assert made["frames"].to_list() == [n for n in range(1, COUNT + 1) for _ in range(n)]


def test_single_numbers_of_numpy_are_values(folder: Path):
    function = lambda trial: {"a": np.float32(0.5), "b": np.array(3), "c": np.int8(2)}  # noqa: E731
    made = mox.collect(function, folder / "walk_01.c3d")
    assert made.drop(columns="file").to_dict("records") == [{"a": 0.5, "b": 3, "c": 2}]


def test_rows_that_lack_a_value_have_none(folder: Path):
    function = lambda trial: [{"a": 1.0}, {"b": "x"}]  # noqa: E731
    made = mox.collect(function, folder / "walk_01.c3d", to="arrow")
    assert made.column("a").to_pylist() == [1.0, None]
    assert made.column("b").to_pylist() == [None, "x"]


def test_none_is_no_rows(folder: Path):
    made = mox.collect(lambda trial: {"n": trial.frames} if trial.frames > 9 else None, folder)
    assert made["n"].to_list() == [10, 11, 12]


def test_analog_channels(tmp_path: Path):
    content = c3d_bytes(analogs=[Analog("Fz", np.arange(8.0))], samples_per_frame=2)
    (tmp_path / "a.c3d").write_bytes(content)
    made = mox.collect(lambda trial: trial.analogs, tmp_path)
    assert made["Fz"].to_list() == list(np.arange(8.0))
    assert made["time"].to_list() == list(np.arange(8) / 200.0)


@pytest.mark.parametrize("function", [markers, as_pandas, as_polars, as_columns])
def test_gaps_are_no_numbers_and_no_nulls(tmp_path: Path, function: Callable[[mox.Trial], Any]):
    values = track(3)
    values[1] = np.nan
    words = np.column_stack([values, [0.0, -1.0, 0.0]])
    (tmp_path / "a.c3d").write_bytes(c3d_bytes({"LASI": np.nan_to_num(words)}))
    column = mox.collect(function, tmp_path, to="arrow").column("LASI_x")
    assert column.null_count == 0
    assert np.isnan(column.to_numpy()).tolist() == [False, True, False]


def test_an_index_without_a_name_is_no_column(folder: Path):
    function = lambda trial: pd.DataFrame({"a": [1, 2]}, index=[5, 6])  # noqa: E731
    assert mox.collect(function, folder / "walk_01.c3d").columns.to_list() == ["file", "a"]


# What does not go.


@pytest.mark.parametrize(
    ("value", "kind", "text"),
    [
        (3, TypeError, "a table is made of a data frame, a dictionary, .*, not of int"),
        ([3], TypeError, "not of list"),
        (pd.Series([1], name="a"), TypeError, "not of Series"),
        (pl.Series("a", [1]), TypeError, "not of Series"),
        ({"a": [1, 2], "b": [1]}, ValueError, "expected length 2 but got length 1"),
        ({"a": np.zeros((2, 4))}, ValueError, r"'a': an array \(n,\) is a column, .* is \(2, 4\)"),
        ({"a": np.zeros((2, 3)), "a_x": [1, 2]}, ValueError, "2 columns have the name 'a_x'"),
        ({"file": 3}, ValueError, r"walk_01.c3d': the table has a column 'file' of its own"),
    ],
)
def test_what_is_no_table_is_refused(folder: Path, value: Any, kind: Any, text: str):
    with pytest.raises(kind, match=text):
        mox.collect(lambda trial: value, folder / "walk_01.c3d")


@pytest.mark.parametrize("to", ["excel", "all.csv", Path("all")])
def test_other_targets_are_refused(folder: Path, to: Any):
    with pytest.raises(ValueError, match=r"goes to 'pandas', 'polars', 'arrow' or a .parquet file"):
        mox.collect(markers, folder, to=to)


def test_bad_files_are_left_out_with_one_warning(folder: Path):
    bad = [folder / f"walk_{number:02}.c3d" for number in (2, 3, 4, 5)]
    for path in bad:
        path.write_bytes(FOREIGN)
    with pytest.warns(mox.TrialWarning) as told:
        made = mox.collect(lambda trial: {"n": trial.frames}, folder)
    (warning,) = told
    lines = str(warning.message).splitlines()
    assert lines[0] == "4 files are not in the table:"
    assert lines[1].startswith(f"  {bad[0]}: ValueError: ")
    assert lines[4:] == ["  and 1 more"]
    assert Path(warning.filename) == Path(__file__)
    assert made["n"].to_list() == [1, *range(6, COUNT + 1)]
    assert list(made.attrs["errors"]) == [str(path) for path in bad]


def test_the_first_error_is_raised_on_request(folder: Path, tmp_path: Path):
    (folder / "walk_03.c3d").write_bytes(FOREIGN)
    with pytest.raises(ValueError, match=r"walk_03.c3d': not a C3D file"):
        mox.collect(markers, folder, to=tmp_path / "all.parquet", on_error="raise")
    assert sorted(path.name for path in tmp_path.iterdir()) == ["trials"]
    assert not [each for each in threading.enumerate() if each.name.startswith("moxPY")]


@pytest.mark.parametrize("to", [None, "all.parquet"])
def test_where_all_files_fail_there_is_no_table(folder: Path, tmp_path: Path, to: Any):
    with pytest.raises(KeyError, match="LASI") as caught:
        mox.collect(functions.refused, folder, to=to and tmp_path / to)
    assert "walk_01.c3d'; all files fail" in caught.value.__notes__[-1]
    assert sorted(path.name for path in tmp_path.iterdir()) == ["trials"]


@pytest.mark.parametrize("to", ["pandas", "polars", "arrow", "all.parquet"])
def test_no_rows_are_a_table_without_rows(folder: Path, tmp_path: Path, to: str):
    to = str(tmp_path / to) if "." in to else to
    for function, files in ((markers, []), (lambda trial: None, folder)):
        made = frame_of(mox.collect(function, files, to=to))
        assert made.columns.to_list() == ["file"]
        assert len(made) == 0


# Columns that differ.


def varied(trial: mox.Trial) -> Any:
    """Integers, from the fifth file on floats; from the seventh on another column."""
    number = trial.frames
    row: dict[str, Any] = {"n": number if number < 5 else number + 0.5}
    return row if number < 7 else {**row, "late": "yes"}


@pytest.mark.parametrize("to", [None, "all.parquet"])
@pytest.mark.parametrize("group", [1, 1 << 20])
def test_columns_of_all_files_make_the_table(
    folder: Path, tmp_path: Path, to: Any, group: int, monkeypatch: pytest.MonkeyPatch
):
    for module in (sinks, stacking):
        monkeypatch.setattr(module, "GROUP_VALUES", group)
    made = frame_of(mox.collect(varied, folder, to=to and tmp_path / to))
    assert made["n"].to_list() == [1.0, 2.0, 3.0, 4.0, *(n + 0.5 for n in range(5, COUNT + 1))]
    assert made["late"].isna().to_list() == [True] * 6 + [False] * 6
    assert made["file"].to_list() == paths(folder)
    assert sorted(path.name for path in tmp_path.iterdir()) == sorted(
        ["trials", *([to] if to else [])]
    )


# Rows, and the first coordinate of the first point.
RECORDINGS = [(3, "LASI"), (2, "LASI"), (0, "LASI"), (2, "RASI"), (4, "LASI"), (9, "LASI"), (1, "")]


@pytest.mark.parametrize("to", [None, "all.parquet"])
@pytest.mark.parametrize("group", [1, 20, 1 << 20])
def test_channels_of_any_length_and_label_go_together(
    tmp_path: Path, to: Any, group: int, monkeypatch: pytest.MonkeyPatch
):
    for module in (sinks, stacking):
        monkeypatch.setattr(module, "GROUP_VALUES", group)
    recorded = tmp_path / "trials"
    recorded.mkdir()
    for number, (rows, label) in enumerate(RECORDINGS):
        trial = mox.Trial.new(frames=rows)
        if label:
            trial.markers[label] = track(rows, number)
        trial.write(recorded / f"{number}.c3d")
    made = frame_of(mox.collect(markers, recorded, to=to and tmp_path / to))
    axes = [f"{label}_{axis}" for label in ("LASI", "RASI") for axis in "xyz"]
    assert made.columns.to_list() == ["file", "time", *axes]
    for number, (rows, label) in enumerate(RECORDINGS):
        part = made[made["file"] == str(recorded / f"{number}.c3d")]
        assert part["time"].to_list() == list(np.arange(rows) / 100.0)
        for other in ("LASI", "RASI"):
            values = part[[f"{other}_{axis}" for axis in "xyz"]].to_numpy()
            expect = track(rows, number) if other == label else np.full((rows, 3), np.nan)
            np.testing.assert_array_equal(values, expect)


@pytest.mark.parametrize("to", ["arrow", "all.parquet"])
def test_channels_that_a_file_lacks_are_null(tmp_path: Path, to: str):
    for label in ("A", "B"):
        (tmp_path / f"{label}.c3d").write_bytes(c3d_bytes({label: track(2)}))
    made = mox.collect(markers, tmp_path, to=str(tmp_path / to) if "." in to else to)
    table = pq.read_table(made) if isinstance(made, Path) else made
    assert table.column("A_x").to_pylist() == [0.0, 1.0, None, None]
    assert table.column("B_x").to_pylist() == [None, None, 0.0, 1.0]


@pytest.mark.parametrize("to", [None, "all.parquet"])
def test_a_column_that_does_not_fit_names_its_file(folder: Path, tmp_path: Path, to: Any):
    function = lambda trial: {"n": trial.frames if trial.frames != 4 else "four"}  # noqa: E731
    text = r"walk_04.c3d': the column 'n' is string, in the files before it is int64"
    with pytest.warns(mox.TrialWarning, match=text):
        made = mox.collect(function, folder, to=to and tmp_path / to)
    assert frame_of(made)["n"].to_list() == [1, 2, 3, *range(5, COUNT + 1)]
    with pytest.raises(TypeError, match=text):
        mox.collect(function, folder, to=to and tmp_path / to, on_error="raise")


def test_channels_called_as_the_column_of_files_are_refused(tmp_path: Path):
    content = c3d_bytes(analogs=[Analog("file", np.arange(4.0))])
    (tmp_path / "a.c3d").write_bytes(content)
    with pytest.raises(ValueError, match=r"a.c3d': the table has a column 'file' of its own"):
        mox.collect(lambda trial: trial.analogs, tmp_path)


# Files.


def test_a_file_that_is_there_stays_until_the_new_one_is_complete(folder: Path, tmp_path: Path):
    place = tmp_path / "all.parquet"
    mox.collect(markers, folder, to=place)
    before = place.read_bytes()
    with pytest.raises(KeyError):
        mox.collect(functions.refused, folder, to=place)
    assert place.read_bytes() == before
    mox.collect(varied, folder, to=place)
    assert pq.read_table(place).column_names == ["file", "n", "late"]


def test_a_file_in_no_folder_is_refused(folder: Path, tmp_path: Path):
    with pytest.raises(FileNotFoundError):
        mox.collect(markers, folder, to=tmp_path / "none" / "all.parquet")


def test_groups_of_rows_are_written_as_they_come(
    folder: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    for module in (sinks, stacking):
        monkeypatch.setattr(module, "GROUP_VALUES", 50)
    place = mox.collect(markers, folder, to=tmp_path / "all.parquet")
    file = pq.ParquetFile(place)
    sizes = [file.metadata.row_group(n).num_rows for n in range(file.num_row_groups)]
    assert sum(sizes) == sum(range(1, COUNT + 1))
    assert len(sizes) > 3
