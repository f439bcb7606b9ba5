"""TRC files: what they hold, and every way in which they are odd."""

from __future__ import annotations

import re
import warnings
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from opensim.texts import trc, walk

WALK = walk()


def read(content: bytes) -> mox.Trial:
    """A trial of a file about which nothing is odd."""
    return mox.read(content, odd="raise")


def odd(content: bytes) -> tuple[mox.Trial, list[str]]:
    trial = mox.read(content, odd="ignore")
    return trial, trial.warnings


def refusal(content: bytes) -> str:
    with pytest.raises(ValueError, match=r"^'<bytes>': ") as raised:
        mox.read(content)
    return str(raised.value).removeprefix("'<bytes>': ")


def edited(content: bytes, line: int, old: str, new: str) -> bytes:
    lines = content.split(b"\n")
    assert old.encode() in lines[line - 1]
    lines[line - 1] = lines[line - 1].replace(old.encode(), new.encode("latin-1"), 1)
    return b"\n".join(lines)


def assert_holds(trial: mox.Trial, markers: dict[str, Any] = WALK) -> None:
    assert list(trial.markers) == list(markers)
    for label, places in markers.items():
        np.testing.assert_array_equal(trial.markers[label].values, places)


def test_a_file_is_a_trial():
    trial = read(trc(WALK))
    assert_holds(trial)
    assert (trial.frames, trial.rate, trial.first_frame, trial.last_frame) == (6, 100.0, 1, 6)
    assert trial.markers.unit == "mm"
    assert trial.markers["LASI"].unit == "mm"
    assert trial.samples_per_frame == 1
    assert len(trial.analogs) == 0
    assert len(trial.events) == 0
    assert len(trial.platforms) == 0
    np.testing.assert_array_equal(trial.time, np.arange(6) / 100)
    np.testing.assert_array_equal(trial.markers["LASI"].residuals, [0, 0, -1, 0, 0, 0])
    assert [tuple(gap) for gap in trial.markers.gaps()] == [("LASI", 3, 3)]


def test_a_path_is_read_by_its_content_whatever_it_is_called(tmp_path: Path):
    path = tmp_path / "walk.c3d"
    path.write_bytes(trc(WALK))
    assert_holds(mox.read(path, odd="raise"))
    handle = _moxPY.moxReadAcquisition(str(path))
    values, info = _moxPY.moxGetMarkers(handle)
    np.testing.assert_array_equal(values["RASI"], WALK["RASI"])
    assert info["units"] == {"ALLMARKERS": "mm"}


def test_metadata_say_what_those_of_a_file_would():
    metadata = read(trc(WALK, first=11)).metadata
    assert {name: entry for name, entry in metadata["POINT"].items() if name != "LABELS"} == {
        "USED": 3, "RATE": 100.0, "FRAMES": 6, "UNITS": "mm", "DESCRIPTIONS": ["", "", ""],
    }  # fmt: skip
    assert list(metadata["POINT"]["LABELS"]) == list(WALK)
    assert metadata["ANALOG"]["USED"] == 0


def test_more_labels_than_a_parameter_holds():
    markers = {f"M{i}": np.full((2, 3), i) for i in range(600)}
    trial = read(trc(markers))
    assert_holds(trial, markers)
    lists = [trial.metadata["POINT"][name] for name in ("LABELS", "LABELS2", "LABELS3")]
    assert [label for part in lists for label in part] == list(markers)


def test_values_keep_double_precision():
    places = np.array([[0.1, 1 / 3, np.pi]])
    np.testing.assert_array_equal(read(trc({"A": places})).markers["A"].values, places)


@pytest.mark.parametrize("units", ["mm", "m", "cm"])
def test_units_are_those_of_the_header(units: str):
    assert read(trc(WALK, units=units)).markers.unit == units


@pytest.mark.parametrize(
    "change",
    [
        lambda content: content.replace(b"\n", b"\r\n"),
        lambda content: b"\xef\xbb\xbf" + content,
        lambda content: content.removesuffix(b"\n"),
        lambda content: content + b"\n\n \t\t\n",
        lambda content: content.replace(b"\n", b"\t\n"),
        lambda content: content.replace(b"\t", b" \t "),
        lambda content: content.replace(b"\t\t\t0", b"\tNaN\tnan\t0"),
    ],
    ids=["CRLF", "mark", "no last newline", "blank lines", "tabs at ends", "blanks", "NaN"],
)
def test_spellings_that_mean_the_same(change: Any):
    assert_holds(read(change(trc(WALK))))


def test_the_blank_line_may_be_missing():
    assert_holds(read(trc(WALK, blank=False)))


def test_blanks_separate_where_there_are_no_tabs():
    whole = {"A": np.ones((3, 3)), "B": np.full((3, 3), 2.5)}
    assert_holds(read(trc(whole).replace(b"\t", b"  ")), whole)


def test_the_line_of_coordinates_may_be_missing():
    lines = trc(WALK).split(b"\n")
    assert_holds(read(b"\n".join([*lines[:4], *lines[6:]])))


def test_rows_may_end_before_markers_that_were_not_seen():
    markers = {label: places.copy() for label, places in WALK.items()}
    markers["L KNE"][1] = np.nan
    content = trc(markers)
    assert content.count(b"\t\t\t\n") == 1
    assert_holds(read(content.replace(b"\t\t\t\n", b"\n")), markers)


def test_labels_of_all_kinds_survive():
    labels = {"A": 0.0, "Knöchel": 1.0, "a/b": 2.0, "": 3.0, "x y": 4.0}
    content = trc({label: np.full((2, 3), value) for label, value in labels.items()})
    trial = read(content.replace(b"x y", b"A"))
    assert list(trial.markers) == ["A", "Knöchel", "a/b", "unamed_3", "A_2"]
    assert [_moxPY.moxGetPoint(trial.this, i)[1]["label"] for i in range(5)] == [
        "A", "Knöchel", "a/b", "", "A",
    ]  # fmt: skip
    assert [float(trial.markers.values[0, i, 0]) for i in range(5)] == [0, 1, 2, 3, 4]


@pytest.mark.parametrize("spelt", ["Knöchel".encode(), "Knöchel".encode("latin-1")])
def test_labels_are_utf_8_or_latin(spelt: bytes):
    assert "Knöchel" in read(trc(WALK).replace(b"LASI", spelt)).markers


def test_a_file_without_frames():
    trial = read(trc({"A": np.empty((0, 3)), "B": np.empty((0, 3))}))
    assert trial.frames == 0
    assert trial.rate == 100.0
    assert trial.markers["B"].values.shape == (0, 3)


def test_a_file_without_markers():
    trial, texts = odd(trc({}, times=["0.00", "0.01"]))
    assert (trial.frames, len(trial.markers), texts) == (2, 0, [])


@pytest.mark.parametrize(
    ("options", "text"),
    [
        ({"frames": 9}, "line 3: NumFrames is 9, but there are 6 rows"),
        ({"count": 41}, "line 3: NumMarkers is 41, but there are 3 markers"),
        ({"units": ""}, "the header does not tell the units of the markers"),
        ({"frames": 10**30}, None),
    ],
)
def test_what_the_header_says_wrongly(options: dict[str, Any], text: str | None):
    trial, texts = odd(trc(WALK, **options))
    assert_holds(trial)
    assert texts == ([text] if text else [])


def test_times_count_where_the_header_has_another_rate():
    times = [f"{row / 50:.3f}" for row in range(6)]
    trial, texts = odd(trc(WALK, times=times))
    assert trial.rate == 50.0
    assert texts == ["the header says 100 Hz, the times of the rows say 50 Hz; these count"]
    trial, texts = odd(edited(trc(WALK), 3, "100", "fast"))
    assert trial.rate == 100.0
    assert texts == ["line 3: DataRate is 'fast', no rate; the times of the rows tell it"]


def test_first_frame_is_that_of_the_file():
    trial = read(trc(WALK, first=151))
    assert (trial.first_frame, trial.last_frame) == (151, 156)
    assert trial.time[0] == 1.5
    assert _moxPY.moxGetFirstFrame(trial.this) == 150.0


def test_frame_numbers_that_contradict_the_times():
    times = [f"{row / 100:.2f}" for row in range(6)]
    trial, texts = odd(trc(WALK, first=31, times=times))
    assert trial.first_frame == 1
    assert texts == [
        "frames are numbered from 31 on, but by its time the first is frame 1; the time counts"
    ]
    trial, texts = odd(edited(trc(WALK), 9, "3\t", "7\t"))
    assert trial.frames == 6
    assert texts == ["line 9: frame number 7 follows 2; the times count"]


def test_time_that_begins_between_frames():
    times = [f"{0.014 + row / 100:.3f}" for row in range(6)]
    trial, texts = odd(trc(WALK, first=2, times=times))
    assert trial.first_frame == 2
    assert texts == [
        "time begins at 0.014 s, between two frames; it begins at 0.01 s here, which is frame 2"
    ]


def test_samples_with_some_of_their_coordinates():
    trial, texts = odd(trc(WALK).replace(b"-7.0\t-6.75\t-6.5", b"-7.0\t\t-6.5"))
    assert np.isnan(trial.markers["LASI"].values[0]).all()
    assert trial.markers["LASI"].residuals[0] == -1
    assert texts == ["1 samples of markers lack one or two coordinates; they count as not seen"]


@pytest.mark.parametrize("left", [12, 20, 26])
def test_a_cut_file_gives_its_whole_rows(left: int):
    content = trc(WALK)
    start = content.rstrip().rindex(b"\n") + 1
    trial, texts = odd(content[: start + left])
    assert trial.frames == 5
    np.testing.assert_array_equal(trial.markers["RASI"].values, WALK["RASI"][:5])
    row, count = texts
    assert row.startswith("line 12: ")
    assert row.endswith("; the file ends there, and the row is left out")
    assert count == "line 3: NumFrames is 6, but there are 5 rows"


@pytest.mark.parametrize(
    ("line", "old", "new", "text"),
    [
        (8, "-6.0", "-6,0", "line 8: cell 4, expected a number or nothing, got '-6,0'"),
        (8, "-6.0", "Ö", "line 8: cell 4, expected a number or nothing, got '\\xd6'"),
        (8, "-6.0", "1e999", "line 8: cell 4, expected a number or nothing, got '1e999'"),
        (8, "-6.0", "inf", "line 8: cell 4, expected a number or nothing, got 'inf'"),
        (8, "\t-6.0", "", "line 8: the row, expected 11 cells, got 10"),
        (8, "-6.0", "-6.0\t4", "line 8: the row, expected 11 cells, got '3.25' as cell 12"),
        (8, "-6.0", "-6\0", "line 8: byte 20 of the line, expected text, got NUL"),
        (8, "2", "two", "line 8: the frame number, expected a number, got 'two'"),
        (8, "0.010000", "", "line 8: the time, expected a number, got ''"),
        (8, "0.010000", "nan", "line 8: the time, expected a number, got 'nan'"),
        (8, "0.010000", "0.013", "line 8: the time, expected 0.01 s after 0, as between other "
         "rows, got 0.013"),
        (9, "0.020000", "0.005", "line 9: the time, expected more than 0.01, got 0.005"),
        (2, "DataRate", "Rate", "line 2: the header, expected the names 'DataRate' and so on, got "
         "'Rate\\x09CameraRate\\x09NumFrames\\x09NumMarkers\\x09Uni...'"),
        (4, "Time", "Zeit", "line 4: the labels, expected 'Frame#', 'Time' and the labels, got "
         "'Frame#\\x09Zeit\\x09LASI\\x09\\x09\\x09RASI\\x09\\x09\\x09L KNE'"),
        (4, "\t\t\tRASI", "\tRASI", "line 4: the labels, expected one above every third column, "
         "got labels above other columns"),
        (5, "\tZ3", "", "line 5: the names of the coordinates, expected 9 for 3 labels, got 8"),
    ],
)  # fmt: skip
def test_refusals_name_the_place(line: int, old: str, new: str, text: str):
    assert refusal(edited(trc(WALK), line, old, new)) == text


@pytest.mark.parametrize(
    ("lines", "text"),
    [
        (1, "line 2: the header, expected the names 'DataRate' and so on, got the end of the file"),
        (2, "line 3: the header, expected the values of the names before, got the end of the file"),
        (3, "line 4: the header, expected the line of 'Frame#', 'Time' and the labels, got the end "
         "of the file"),
    ],
)  # fmt: skip
def test_files_that_end_in_the_header(lines: int, text: str):
    content = b"".join(line + b"\n" for line in trc(WALK).split(b"\n")[:lines])
    assert refusal(content) == text


def test_few_bytes_do_not_become_many_numbers():
    markers = {f"M{i}": np.full((1, 3), 1.0) for i in range(20000)}
    content = trc(markers) + b"".join(b"%d\t%.2f\n" % (row + 2, row / 100) for row in range(1, 50))
    assert re.fullmatch(r"line \d+: the row, expected 60002 cells, got 2", refusal(content))


def test_more_markers_than_any_file_holds():
    content = trc({"A": np.ones((1, 3))})
    many = "\t\t\t".join("A" * 65536).encode()
    content = content.replace(b"Time\tA", b"Time\t" + many)
    lines = content.split(b"\n")
    text = "line 4: the labels, expected at most 65535, got 65536"
    assert refusal(b"\n".join([*lines[:4], *lines[6:]])) == text


def test_messages_name_the_path_and_functions_raise_theirs(tmp_path: Path):
    path = tmp_path / "walk.trc"
    path.write_bytes(edited(trc(WALK), 8, "-6.0", "x"))
    text = f"'{path}': line 8: cell 4, expected a number or nothing, got 'x'"
    with pytest.raises(ValueError, match="line 8") as raised:
        mox.read(path)
    assert str(raised.value) == text
    with pytest.raises(RuntimeError, match="line 8") as raised_by_function:
        _moxPY.moxReadAcquisition(str(path))
    assert str(raised_by_function.value) == text


def test_warnings_are_python_s_own():
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        mox.read(trc(WALK, frames=9))
    assert [str(each.message) for each in caught] == [
        "'<bytes>': line 3: NumFrames is 9, but there are 6 rows"
    ]


@pytest.mark.parametrize(
    "start", [b"PathFileTypes\t4\n", b"Path", b"pathfiletype\t4\n", b" PathFileType\t4\n"]
)
def test_what_begins_otherwise_is_no_such_file(start: bytes):
    with pytest.raises(ValueError, match="not a C3D file: it looks like text"):
        mox.read(start)
