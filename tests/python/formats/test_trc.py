"""TRC files: markers."""

from __future__ import annotations

from pathlib import Path

import numpy as np
import pytest
import trc
from formats.opensim_files import read_markers
from moxPY.trial import Trial
from support.small_trials import new_trial


@pytest.fixture
def full() -> Trial:
    """A trial with all its markers in every frame, from frame 31 on."""
    trial = Trial.of(new_trial())
    trial.markers.unit = "mm"
    trial.first_frame = 31
    return trial


def test_another_reader_gets_labels_and_numbers(full: Trial, tmp_path: Path) -> None:
    (path,) = full.export(tmp_path / "walk.trc")
    data = trc.TRCData()
    data.load(str(path))
    assert (data["FileName"], data["Units"], data["DataRate"]) == ("walk.trc", "mm", 100.0)
    assert (data["NumFrames"], data["NumMarkers"]) == (full.frames, len(full.markers))
    assert data["OrigDataStartFrame"] == 31
    assert data["Frame#"] == [31, 32, 33, 34]
    assert data["Time"] == full.time.tolist()
    assert data["Markers"] == full.markers.labels
    for label, marker in full.markers.items():
        np.testing.assert_array_equal(data[label], marker.values)


def test_gaps_are_empty_cells(tmp_path: Path) -> None:
    trial = Trial.new(frames=2, rate=50.0)
    trial.markers["Left Heel"] = [[0.1, 1 / 3, 1e-7], [np.nan] * 3]
    trial.markers["µ"] = [[np.nan] * 3, [1.0, 2.0, 3.0]]
    (path,) = trial.export(tmp_path / "walk.trc")
    assert path.read_text("utf-8").split("\n") == [
        "PathFileType\t4\t(X/Y/Z)\twalk.trc",
        "DataRate\tCameraRate\tNumFrames\tNumMarkers\tUnits\tOrigDataRate\tOrigDataStartFrame\t"
        "OrigNumFrames",
        "50.0\t50.0\t2\t2\tmm\t50.0\t1\t2",
        "Frame#\tTime\tLeft Heel\t\t\tµ\t\t\t",
        "\t\tX1\tY1\tZ1\tX2\tY2\tZ2\t",
        "",
        "1\t0.0\t0.1\t0.3333333333333333\t1e-07\t\t\t\t",
        "2\t0.02\t\t\t\t1.0\t2.0\t3.0\t",
        "",
    ]


def test_markers_of_a_walk(walk: Trial, tmp_path: Path) -> None:
    walk.markers["LHEE"] = np.where(np.arange(360)[:, None] < 9, np.nan, walk.markers["LHEE"])
    (path,) = walk.export(tmp_path / "walk.trc", up="y", units=("m", "N", "Nm"))
    markers = read_markers(path)
    assert markers.head["Units"] == "m"
    assert markers.labels == walk.markers.labels
    # A right angle about x takes z to y, and y to -z.
    x, y, z = np.moveaxis(walk.markers.values, 2, 0)
    expected = np.stack([x, z, -y], axis=2).reshape(360, -1) / 1000.0
    np.testing.assert_allclose(markers.table.iloc[:, 2:], expected, rtol=1e-14)
    assert markers.table["Frame#"].tolist() == list(range(1, 361))


def test_tabs_and_line_breaks_in_labels_are_blanks(tmp_path: Path) -> None:
    trial = Trial.new(frames=1)
    for label in ("a\tb", "c\r\nd", " e "):
        trial.markers[label] = np.ones((1, 3))
    (path,) = trial.export(tmp_path / "walk.trc")
    assert read_markers(path).labels == ["a b", "c d", "e"]


@pytest.mark.parametrize(
    ("labels", "text"),
    [
        (["a\tb", "a b"], r"the labels 'a\\tb' and 'a b' would both be 'a b'"),
        (["\n"], r"the label '\\n' is nothing but blanks, which TRC cannot hold"),
    ],
)
def test_labels_that_no_file_can_hold(labels: list[str], text: str, tmp_path: Path) -> None:
    trial = Trial.new(frames=1)
    for label in labels:
        trial.markers[label] = np.ones((1, 3))
    with pytest.raises(ValueError, match=rf"^{text}$"):
        trial.export(tmp_path / "walk.trc")
    assert list(tmp_path.iterdir()) == []


def test_units_that_the_format_lacks(full: Trial, tmp_path: Path) -> None:
    full.markers.unit = "Metres"
    (path,) = full.export(tmp_path / "walk.trc")
    assert read_markers(path).head["Units"] == "m"
    full.markers.unit = "Unknown"
    with pytest.raises(
        ValueError, match=r"^the unit 'Unknown' of the markers is none that TRC has"
    ):
        full.export(tmp_path / "walk.trc")
    full.markers["LASI"].unit = "mm"
    with pytest.raises(ValueError, match=r"^the markers have units mm, Unknown, and TRC has one"):
        full.export(tmp_path / "walk.trc")


def test_without_markers(tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^the trial has no markers, which TRC needs$"):
        Trial.new(frames=3).export(tmp_path / "walk.trc")


def test_without_frames(tmp_path: Path) -> None:
    trial = Trial.new()
    trial.markers["A"] = np.empty((0, 3))
    (path,) = trial.export(tmp_path / "walk.trc")
    assert path.read_text().endswith("\n\t\tX1\tY1\tZ1\t\n\n")
