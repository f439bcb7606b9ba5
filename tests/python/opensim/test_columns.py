"""MOT and STO files: what they hold, and every way in which they are odd."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from opensim.test_markers import edited, odd, read, refusal
from opensim.texts import signals, sto

SIGNALS = signals()


def assert_holds(trial: mox.Trial, columns: dict[str, Any] = SIGNALS) -> None:
    assert list(trial.analogs) == list(columns)
    for label, samples in columns.items():
        np.testing.assert_array_equal(trial.analogs[label].values, samples)


def test_a_file_is_a_trial():
    trial = read(sto(SIGNALS))
    assert_holds(trial)
    assert (trial.frames, trial.rate, trial.first_frame) == (6, 100.0, 1)
    assert (trial.analogs.rate, trial.samples_per_frame) == (100.0, 1)
    assert len(trial.points) == 0
    assert [trial.analogs[label].unit for label in trial.analogs] == ["", ""]
    np.testing.assert_array_equal(trial.analogs.time, np.arange(6) / 100)


def test_the_functions_read_it(tmp_path: Path):
    path = tmp_path / "forces.mot"
    path.write_bytes(sto(SIGNALS))
    handle = _moxPY.moxReadAcquisition(str(path))
    values, _ = _moxPY.moxGetAnalog(handle, "ground_force_vy")
    np.testing.assert_array_equal(values, SIGNALS["ground_force_vy"])
    assert _moxPY.moxGetPointNumber(handle) == 0
    assert _moxPY.moxGetAnalogResolution(handle) == 12


@pytest.mark.parametrize("separator", ["\t", " ", "   ", " \t "])
@pytest.mark.parametrize("end", ["\n", "\r\n", "\t\n"])
def test_spellings_that_mean_the_same(separator: str, end: str):
    assert_holds(read(sto(SIGNALS, separator=separator, end=end)))


@pytest.mark.parametrize(
    "header",
    [
        ["datacolumns 3", "datarows 6", "range 0 0.05", "otherdata 1"],
        ["nRows = 6", "NCOLUMNS=3", "inDegrees=yes", "", "Units are S.I. units (second, meters, "
         "Newtons, ...)", "Angles are in degrees.", "anything=else"],
        [],
        ["DataRate=100.000000", "DataType=double"],
    ],
)  # fmt: skip
def test_headers_of_all_kinds(header: list[str]):
    trial = read(sto(SIGNALS, header=header))
    assert_holds(trial)
    assert trial.rate == 100.0
    assert [trial.analogs[label].unit for label in trial.analogs] == ["", ""]


def test_end_of_the_header_is_found_however_it_is_spelt():
    assert_holds(read(sto(SIGNALS).replace(b"endheader", b" EndHeader ")))


def test_blank_lines_and_a_byte_order_mark_mean_nothing():
    content = sto(SIGNALS).replace(b"endheader\n", b"endheader\n\n\n")
    assert_holds(read(b"\xef\xbb\xbf" + content + b"\n\t\n"))


@pytest.mark.parametrize(
    ("line", "units"),
    [
        ("units=N,m", ["N", "m"]),
        ("units=s,N,m", ["N", "m"]),
        ("Units=N\tm", ["N", "m"]),
        ("units = N m", ["N", "m"]),
        ("units=,m", ["", "m"]),
        ("units=mm", ["mm", "mm"]),
    ],
)
def test_units_of_the_header(line: str, units: list[str]):
    trial = read(sto(SIGNALS, header=[line]))
    assert [trial.analogs[label].unit for label in trial.analogs] == units


@pytest.mark.parametrize(
    ("header", "labels", "units"),
    [
        (["unit=deg"], ["a_x", "b"], ["deg", "deg"]),
        (["unit_a=N", "unit_b=mV"], ["a_x", "a_y", "b", "c"], ["N", "N", "mV", ""]),
        (["force_unit=N", "length_unit=m", "moment_unit=Nm", "side=person"],
         ["ground_force_1_vx", "ground_force_1_pz", "ground_torque_1_y", "knee_vx"],
         ["N", "m", "Nm", ""]),
    ],
)  # fmt: skip
def test_units_by_name(header: list[str], labels: list[str], units: list[str]):
    trial = read(sto(dict.fromkeys(labels, np.arange(3.0)), header=header))
    assert [trial.analogs[label].unit for label in labels] == units


def test_units_for_other_columns_are_not_believed():
    trial, texts = odd(sto(SIGNALS, header=["units=a,b,c,d"]))
    assert trial.analogs["ground_force_vy"].unit == ""
    assert texts == ["4 units are told for 2 columns; none is believed"]


def test_empty_cells_are_nan():
    gap = {"a": np.array([1.0, np.nan, 3.0]), "b": np.array([np.nan, 5.0, np.nan])}
    assert_holds(read(sto(gap)), gap)
    assert_holds(read(sto({"a": np.array([1.0, np.inf])})), {"a": np.array([1.0, np.inf])})


@pytest.mark.parametrize("text", [b"nan", b"-nan(ind)", b"1.#QNAN"])
def test_what_libraries_write_for_nan(text: bytes):
    content = sto({"a": np.array([1.0, 2.5])}).replace(b"2.5", text)
    assert np.isnan(read(content).analogs["a"].values).tolist() == [False, True]


def test_first_frame_follows_the_time():
    times = [f"{1.5 + row / 100:.2f}" for row in range(6)]
    trial = read(sto(SIGNALS, times=times))
    assert trial.first_frame == 151
    assert trial.analogs.time[0] == 1.5


def test_time_before_zero():
    times = [f"{row / 100 - 0.02:.2f}" for row in range(6)]
    trial, texts = odd(sto(SIGNALS, times=times))
    assert trial.first_frame == 1
    assert texts == [
        "time begins at -0.02 s, for which there is no frame number; it begins at 0 s here"
    ]


@pytest.mark.parametrize(
    ("rate", "places"), [(1000.0, 3), (120.0, 3), (59.94, 6), (1 / 0.03, 2), (2000.0, 8)]
)
def test_rate_is_that_of_the_times(rate: float, places: int):
    times = [f"{row / rate:.{places}f}" for row in range(400)]
    trial = read(sto({"a": np.arange(400.0)}, times=times))
    assert trial.rate == pytest.approx(rate, rel=1e-12)


def test_counts_that_contradict_the_rows():
    trial, texts = odd(sto(SIGNALS, header=["nRows=7", "nColumns=20"]))
    assert_holds(trial)
    assert texts == [
        "line 4: nColumns is 20, but there are 3 labels",
        "line 3: nRows is 7, but there are 6 rows",
    ]


def test_one_row_has_no_rate():
    trial, texts = odd(sto({"a": np.array([2.0])}))
    assert (trial.frames, trial.rate, texts) == (1, 0.0, ["1 rows tell no rate; it is 0 Hz"])
    assert read(sto({"a": np.array([2.0])}, header=["DataRate=50"])).rate == 50.0


def test_a_file_of_times_alone():
    trial = read(sto({}, times=["0.00", "0.01"]))
    assert (trial.frames, len(trial.analogs)) == (2, 0)


def test_labels_of_all_kinds_survive():
    columns = {"/jointset/hip/value": np.arange(3.0), "Kraft ö": np.arange(3.0) + 5}
    trial = read(sto(columns))
    assert list(trial.analogs.labels) == list(columns)
    np.testing.assert_array_equal(trial.analogs["Kraft ö"].values, [5, 6, 7])


def test_a_cut_file_gives_its_whole_rows():
    trial, texts = odd(sto(SIGNALS).removesuffix(b"\t1.0\n"))
    assert trial.frames == 5
    assert texts == [
        "line 13: the row, expected 3 cells, got 2; the file ends there, and the row is left out",
        "line 3: nRows is 6, but there are 5 rows",
    ]


@pytest.mark.parametrize(
    ("line", "old", "new", "text"),
    [
        (9, "12.5", "12,5", "line 9: cell 2, expected a number or nothing, got '12,5'"),
        (9, "\t12.5", "", "line 9: the row, expected 3 cells, got 2"),
        (9, "12.5", "12.5\t3", "line 9: the row, expected 3 cells, got '0.20000000298023224' as "
         "cell 4"),
        (9, "0.01", "later", "line 9: the time, expected a number, got 'later'"),
        (9, "0.01", "0.014", "line 9: the time, expected 0.01 s after 0, as between other rows, "
         "got 0.014"),
        (10, "0.02", "0.00", "line 10: the time, expected more than 0.01, got 0"),
        (9, "12.5", "\0", "line 9: byte 6 of the line, expected text, got NUL"),
        (7, "time", "frame", "line 7: the labels, expected 'time' first, got 'frame'"),
        (2, "version=1", "DataType=Vec3", "line 2: DataType, expected double, got 'Vec3'"),
    ],
)  # fmt: skip
def test_refusals_name_the_place(line: int, old: str, new: str, text: str):
    assert refusal(edited(sto(SIGNALS), line, old, new)) == text


def test_a_file_that_ends_with_its_header():
    text = "line 3: the labels, expected 'time' and the labels, got the end of the file"
    assert refusal(b"forces\nendheader\n") == text


@pytest.mark.parametrize("content", [
    b"forces\nversion=1\n",
    b"forces\n" + b"x" * 4096 + b"\nendheader\ntime\ta\n",
    b"for\x01ces\nendheader\ntime\ta\n",
    b"forces\nnot the endheader\ntime\ta\n",
])  # fmt: skip
def test_what_has_no_end_of_a_header_at_its_start_is_no_such_file(content: bytes):
    with pytest.raises(ValueError, match="not a C3D file: "):
        mox.read(content)


def test_a_text_with_the_bytes_of_a_c3d_file_is_a_text():
    """The second letter is the key of C3D, and one far behind it a processor."""
    label = "T" * 60_000
    trial = read(sto({label: np.array([1.0, 2.0])}).replace(b"forces", b"oPensim", 1))
    assert trial.analogs.labels == [label]
