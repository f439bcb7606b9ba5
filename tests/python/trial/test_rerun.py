"""Recordings of Rerun, read back by its own server."""

from __future__ import annotations

import subprocess
import sys
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest

rerun = pytest.importorskip("rerun")
pytest.importorskip("datafusion")

# Rerun says that what it needs is still experimental, and leaves sockets to the collector.
pytestmark = pytest.mark.filterwarnings("ignore")

Table = dict[str, list[Any]]
Reader = Callable[..., Table]


@pytest.fixture(scope="module")
def example() -> moxPY.Trial:
    return moxPY.read(moxPY.example())


@pytest.fixture(scope="module")
def read(example: moxPY.Trial, tmp_path_factory: pytest.TempPathFactory) -> Iterator[Reader]:
    """A function that reads some entities of the example's recording, by frame or time."""
    path = tmp_path_factory.mktemp("rerun") / "walk.rrd"
    example.to_rerun(path)
    with rerun.server.Server(datasets={"walk": [path]}) as server:
        dataset = server.client().get_dataset("walk")

        def reader(entity: str, index: str | None = "frame") -> Table:
            table = dataset.filter_contents([entity]).reader(index=index).to_arrow_table()
            if index is not None:
                table = table.sort_by(index)
            return {name: table[name].to_pylist() for name in table.column_names}

        yield reader


def test_markers_are_where_they_are_and_gaps_are_nowhere(example: moxPY.Trial, read: Reader):
    table = read("/lab/markers/LASI")
    assert table["frame"] == list(range(1, 361))
    assert [each.total_seconds() for each in table["time"]] == pytest.approx(example.time)
    places = table["/lab/markers/LASI:Points3D:positions"]
    for place, values in zip(places, example.markers["LASI"].values, strict=True):
        if np.isnan(values).any():
            assert place == []
        else:
            assert place[0] == pytest.approx(values, abs=1e-3)
    assert [place for place in places if not place]
    assert table["/lab/markers/LASI:Points3D:labels"][0] == ["LASI"]


def test_sticks_end_at_markers_that_are_seen(example: moxPY.Trial, read: Reader):
    sticks = [(one, other) for one, other in moxPY.skeleton.sticks_of(example) if one[0] == "L"]
    sticks = [stick for stick in sticks if stick[1][0] == "L"]
    shown = read("/lab/sticks/left")["/lab/sticks/left:LineStrips3D:strips"]
    for index in (0, 104, 359):
        ends = [[example.markers[label].values[index] for label in stick] for stick in sticks]
        expected = [end for end in ends if np.isfinite(end).all()]
        assert np.allclose(shown[index], expected, atol=1e-3)
    assert len(shown[104]) < len(shown[50])


def test_arrows_are_forces_on_the_person_at_their_point(example: moxPY.Trial, read: Reader):
    entity = "/lab/platforms/1/force"
    table = read(entity)
    reaction = example.platforms[0].reaction(20.0)
    frame, sample = 150, 1500
    assert reaction.contact[sample]
    (origin,) = table[f"{entity}:Arrows3D:origins"][frame]
    (vector,) = table[f"{entity}:Arrows3D:vectors"][frame]
    assert origin == pytest.approx(reaction.point[sample], abs=1e-3)
    assert vector == pytest.approx(reaction.force[sample], abs=1e-3)  # 1 mm a newton
    assert table[f"{entity}:Arrows3D:vectors"][0] == []  # nobody stands there
    outline = read("/lab/platforms/1", None)["/lab/platforms/1:LineStrips3D:strips"][0][0]
    corners = example.platforms[0].corners
    assert np.allclose(outline, [*corners, corners[0]])


def test_curves_have_every_sample_and_their_units(example: moxPY.Trial, read: Reader):
    angles = read("/angles/LKneeAngles")
    shown = np.array(angles["/angles/LKneeAngles:Scalars:scalars"])
    assert np.array_equal(shown, example.angles["LKneeAngles"].values)
    names = angles["/angles/LKneeAngles:SeriesLines:names"][0]
    assert names == [f"LKneeAngles {axis} (deg)" for axis in "xyz"]
    analog = read("/analogs/Fz1", "time")
    assert [each.total_seconds() for each in analog["time"]] == pytest.approx(example.analogs.time)
    load = np.array(analog["/analogs/Fz1:Scalars:scalars"])[:, 0]
    assert np.array_equal(load, example.analogs["Fz1"].values)
    assert analog["frame"] == [1 + sample // 10 for sample in range(3600)]
    force = np.array(read("/platforms/2/force", "time")["/platforms/2/force:Scalars:scalars"])
    assert np.array_equal(force, example.platforms[1].reaction(20.0).force)


def test_events_are_texts_at_their_times(example: moxPY.Trial, read: Reader):
    table = read("/events", "time")
    texts = [text for (text,) in table["/events:TextLog:text"]]
    assert texts == [f"{event.context} {event.label}" for event in example.events]
    times = [event.time for event in example.events]
    assert [each.total_seconds() for each in table["time"]] == pytest.approx(times)
    assert table["frame"] == [round(time * 100) + 1 for time in times]


def test_z_is_up(read: Reader):
    (axes,) = read("/lab", None)["/lab:ViewCoordinates:xyz"][0]
    assert list(axes) == [3, 5, 1]  # right, forwards, up


def test_a_recording_of_the_callers_is_logged_into_and_no_viewer_opened(
    example: moxPY.Trial, monkeypatch: pytest.MonkeyPatch
):
    opened: list[str] = []
    monkeypatch.setattr(rerun.RecordingStream, "spawn", lambda *_, **__: opened.append("viewer"))
    own = rerun.RecordingStream("own")
    stream = own.binary_stream()
    assert example.to_rerun(recording=own) is own
    assert b"LKneeAngles" in stream.read()
    with rerun.RecordingStream("active") as active:
        stream = active.binary_stream()
        assert example.to_rerun().get_recording_id() == active.get_recording_id()
        assert b"LKneeAngles" in stream.read()
    assert opened == []
    assert isinstance(example.crop(1, 2).to_rerun(), rerun.RecordingStream)
    assert opened == ["viewer"]


def test_a_recording_replaces_no_other_kind_of_file(example: moxPY.Trial, tmp_path: Path):
    path = tmp_path / "walk.c3d"
    path.write_text("old")
    with pytest.raises(ValueError, match=r"^a recording ends on \.rrd, not '\.c3d'$"):
        example.to_rerun(path)
    assert path.read_text() == "old"


def test_what_is_refused_leaves_the_file_as_it_was(example: moxPY.Trial, tmp_path: Path):
    path = tmp_path / "walk.rrd"
    path.write_bytes(b"as it was")
    with pytest.raises(KeyError, match="LNEE"):
        example.to_rerun(path, sticks=[("LASI", "LNEE")])
    with pytest.raises(ValueError, match="threshold"):
        example.to_rerun(path, threshold=-1.0)
    with pytest.raises(ValueError, match="path and recording"):
        example.to_rerun(path, recording=rerun.RecordingStream("own"))
    assert path.read_bytes() == b"as it was"
    assert list(tmp_path.iterdir()) == [path]
    example.crop(1, 2).to_rerun(path)
    assert path.read_bytes()[:4] == b"RRF2"
    assert list(tmp_path.iterdir()) == [path]


@pytest.mark.parametrize("rate", [0.0, 100.0])
@pytest.mark.parametrize("frames", [0, 1])
def test_trials_of_next_to_nothing(rate: float, frames: int, tmp_path: Path):
    trial = moxPY.Trial.new(frames=frames, rate=rate)
    trial.to_rerun(tmp_path / "nothing.rrd")
    trial.markers["Anna: L/KNE"] = np.ones((frames, 3))
    trial.events.add("Foot Strike", 1.0, context="Left")
    trial.to_rerun(tmp_path / "little.rrd")
    assert (tmp_path / "little.rrd").stat().st_size > (tmp_path / "nothing.rrd").stat().st_size


def test_real_trials(sample: Callable[[str], Path], tmp_path: Path):
    for name in ("2198928.c3d", "TYPE-3.c3d", "basketball.c3d", "C3DRotationExample.c3d"):
        trial = moxPY.read(sample(name), odd="ignore")
        trial.to_rerun(tmp_path / "real.rrd", threshold=20.0)


def test_rerun_is_imported_when_it_is_asked_for():
    script = "import moxPY, sys; assert not any(m.startswith('rerun') for m in sys.modules)"
    subprocess.run([sys.executable, "-c", script], check=True)
