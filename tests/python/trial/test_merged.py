"""Two recordings of the same frames become one, and neither changes."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Event, Trial
from support.c3d_bytes import Analog
from support.c3d_bytes import Event as Strike
from support.independent_readers import read_with_c3d
from support.read_c3d import read_c3d, track
from support.store_tree import snapshot

FRAMES, RATIO = 20, 2


def made(folder: Path, prefix: str, **options: Any) -> Trial:
    frames = options.pop("frames", FRAMES)
    start = 100.0 * len(prefix)
    words = np.arange(frames) * 256.0 + len(prefix)
    words[4:6] = -1
    counts = np.arange(frames * RATIO) * len(prefix)
    content: dict[str, Any] = {
        "rate": 100.0,
        "first_frame": 5,
        "residuals": {f"{prefix}A": words},
        "point_units": "mm",
        "parameters": {"POINT:ANGLES": [f"{prefix}Knee"]},
        "analogs": [Analog(f"{prefix}S", counts, scale=0.5, offset=3, units="mV")],
        "samples_per_frame": RATIO,
        "events": [Strike("Left", "Foot Strike", 0.1), Strike("Right", prefix, 0.12)],
    }
    points = {f"{prefix}A": track(frames, start), f"{prefix}Knee": track(frames, start + 7)}
    folder = folder / prefix
    folder.mkdir(exist_ok=True)
    return Trial.of(read_c3d(folder, points, **(content | options)))


def test_channels_of_both_are_there(tmp_path: Path) -> None:
    one, two = made(tmp_path, "x"), made(tmp_path, "yy")
    before = snapshot(one), snapshot(two)
    both = one.merged(two)
    assert (snapshot(one), snapshot(two)) == before
    path = tmp_path / "written.c3d"
    _moxPY.moxWriteAcquisition(both, str(path))
    for shown in (both, Trial.of(_moxPY.moxReadAcquisition(str(path)))):
        assert shown.markers.labels == ["xA", "yyA"]
        assert shown.angles.labels == ["xKnee", "yyKnee"]
        assert shown.analogs.labels == ["xS", "yyS"]
        for source in (one, two):
            for kind in ("markers", "angles"):
                for label, channel in getattr(source, kind).items():
                    kept = getattr(shown, kind)[label]
                    for name in ("values", "residuals", "cameras"):
                        assert getattr(kept, name).tobytes() == getattr(channel, name).tobytes()
                    assert (kept.unit, kept.description) == (channel.unit, channel.description)
            for label, channel in source.analogs.items():
                assert shown.analogs[label].values.tobytes() == channel.values.tobytes()
                assert shown.analogs[label].unit == "mV"
    recording = read_with_c3d(path)
    assert recording.labels("POINT") == ["xA", "xKnee", "yyA", "yyKnee"]
    np.testing.assert_array_equal(recording.analogs[:, 1], two.analogs["yyS"].values)


def test_events_that_both_have_are_there_once(tmp_path: Path) -> None:
    both = made(tmp_path, "x").merged(made(tmp_path, "yy"))
    assert both.events == [
        Event(time=0.1, label="Foot Strike", context="Left"),
        Event(time=0.12, label="x", context="Right"),
        Event(time=0.12, label="yy", context="Right"),
    ]


def test_equal_labels_are_refused_or_get_a_suffix(tmp_path: Path) -> None:
    one = made(tmp_path, "x")
    before = snapshot(one)
    with pytest.raises(ValueError, match="both") as error:
        one.merged(one)
    assert str(error.value) == (
        "both trials would have the labels xA, xKnee; give a suffix for those of the other"
    )
    both = one.merged(one, suffix="_b")
    assert snapshot(one) == before
    assert both.points.labels == ["xA", "xKnee", "xA_b", "xKnee_b"]
    assert both.analogs.labels == ["xS", "xS_b"]
    np.testing.assert_array_equal(both.markers["xA_b"].values, one.markers["xA"].values)
    with pytest.raises(ValueError, match=r"the labels xA_b, xKnee_b; give another suffix$"):
        both.merged(one, suffix="_b")


def test_many_equal_labels_are_not_all_listed() -> None:
    trial = Trial.new(frames=1)
    for number in range(50):
        trial.markers[f"M{number}"] = np.zeros((1, 3))
    with pytest.raises(ValueError, match=r"the labels M0, M1, M2, …, M49; give a suffix"):
        trial.merged(trial)


def test_a_suffix_is_for_equal_labels_alone(tmp_path: Path) -> None:
    both = made(tmp_path, "x").merged(made(tmp_path, "yy"), suffix="_b")
    assert both.markers.labels == ["xA", "yyA"]


@pytest.mark.parametrize(
    ("options", "message"),
    [
        ({"rate": 50.0}, "the trials differ in their rate: 100 and 50"),
        ({"frames": 21}, "the trials differ in their number of frames: 20 and 21"),
        ({"first_frame": 6}, "the trials differ in their first frame: 5 and 6"),
        (
            {"analogs": [Analog("z", np.zeros(FRAMES))], "samples_per_frame": 1},
            "the trials differ in their number of analog samples in each frame: 2 and 1",
        ),
    ],
)
def test_other_frames_are_refused(tmp_path: Path, options: Any, message: str) -> None:
    one, two = made(tmp_path, "x"), made(tmp_path, "yy", **options)
    with pytest.raises(ValueError, match=f"^{message}$"):
        one.merged(two)


@pytest.mark.parametrize("first", ["points", "analogs"])
@pytest.mark.parametrize("new", [False, True], ids=["read", "new"])
def test_analog_samples_do_not_matter_where_only_one_has_channels(
    tmp_path: Path, first: str, new: bool
) -> None:
    without = made(tmp_path, "x", analogs=[], samples_per_frame=1)
    if new:
        without = Trial.new(FRAMES, 100.0)
        without.first_frame = 5
        without.markers["xA"] = track(FRAMES)
    channels = made(tmp_path, "yy")
    pair = (without, channels) if first == "points" else (channels, without)
    before = [snapshot(trial) for trial in pair]
    both = pair[0].merged(pair[1])
    assert [snapshot(trial) for trial in pair] == before
    path = tmp_path / "written.c3d"
    both.write(path)
    for shown in (both, Trial.of(_moxPY.moxReadAcquisition(str(path)))):
        assert (shown.samples_per_frame, shown.rate, shown.frames) == (RATIO, 100.0, FRAMES)
        assert (shown.first_frame, shown.analogs.rate) == (5, 200.0)
        np.testing.assert_array_equal(shown.analogs.values, channels.analogs.values)
        for source in pair:
            for label, channel in source.points.items():
                for name in ("values", "residuals", "cameras"):
                    kept = getattr(shown.points[label], name)
                    np.testing.assert_allclose(kept, getattr(channel, name), rtol=1e-7)


def test_only_trials_are_merged(tmp_path: Path) -> None:
    one = made(tmp_path, "x")
    for other, name in ((3, "int"), (_moxPY.moxNewAcquisition(), "data_store"), (None, "None")):
        with pytest.raises(TypeError, match=f"^expected a Trial, got {name}"):
            one.merged(other)
