"""Events as a time line, and the chart of gaps."""

from __future__ import annotations

import moxPY
import numpy as np
import pytest
from moxPY.plots.colours import LEFT, RIGHT
from plots.drawn import bars, collection, legend_of, rendered, texts, xy


def test_every_event_is_on_the_line_of_its_side(example: moxPY.Trial):
    axes = example.plot.events()
    shown = [
        (float(xy(line)[0][0]), int(xy(line)[1][0]), line.get_color(), line.get_marker())
        for line in axes.lines
    ]
    assert shown == [
        (
            event.time,
            0 if event.context == "Left" else 1,
            LEFT if event.context == "Left" else RIGHT,
            "v" if event.label == "Foot Strike" else "^",
        )
        for event in example.events
    ]
    assert [tick.get_text() for tick in axes.get_yticklabels()] == ["Left", "Right"]
    assert (axes.get_xlabel(), axes.get_ylabel()) == ("time (s)", "side")
    assert legend_of(axes) == ["foot strike", "foot off", "on the floor"]


def test_a_bar_is_the_stance(example: moxPY.Trial):
    axes = example.plot.events()
    left, right = axes.collections
    for shown, side in ((left, "Left"), (right, "Right")):
        stances = example.cycles(side, "Foot Strike", "Foot Off")
        assert np.allclose(bars(shown), [(each.start, each.stop) for each in stances])


def test_short_labels_tell_side_and_kind(walk: moxPY.Trial):
    walk.events.clear()
    for label, context, time in (
        ("LHS", "", 0.5), ("", "RTO", 0.7), ("LTO", "", 1.0), ("jump", "General", 1.2),
    ):  # fmt: skip
        walk.events.add(label or "x", time, context=context)
        if not label:
            walk.events.replace(walk.events.select("x")[0], label="Toe Off", context="right")
    axes = walk.plot.events()
    assert [tick.get_text() for tick in axes.get_yticklabels()] == ["Left", "Right", "General"]
    assert [line.get_marker() for line in axes.lines] == ["v", "^", "^", "D"]
    assert np.allclose(bars(axes.collections[0]), [(0.5, 1.0)])
    assert texts(axes) == ["jump"]


def test_events_outside_of_the_recording_are_shown(walk: moxPY.Trial):
    walk.events.add("Foot Strike", 5.0, context="Left")
    axes = walk.plot.events()
    assert axes.get_xlim()[0] < 0.0
    assert axes.get_xlim()[1] > 5.0


def test_a_trial_without_events_is_refused(walk: moxPY.Trial):
    walk.events.clear()
    with pytest.raises(ValueError, match="the trial has no events"):
        walk.plot.events()


def test_bars_are_the_gaps(example: moxPY.Trial):
    axes = example.plot.gaps()
    gaps = example.markers.gaps()
    for label in {gap.label for gap in gaps}:
        expected = [(gap.first - 0.5, gap.last + 0.5) for gap in gaps if gap.label == label]
        assert np.allclose(bars(collection(axes, label)), expected)
    shown = {each.get_label() for each in axes.collections} & set(example.markers)
    assert shown == {gap.label for gap in gaps}
    assert [tick.get_text() for tick in axes.get_yticklabels()] == example.markers.labels
    assert (axes.get_xlabel(), axes.get_ylabel()) == ("frame", "marker")
    assert "9 gaps in 7 of 40 markers" in axes.figure.get_suptitle()


def test_the_share_of_a_gap_is_told(example: moxPY.Trial):
    axes = example.plot.gaps(["LFIN", "LASI", "LKneeAngles"])
    assert texts(axes) == ["6 %", "6 %"]  # 22 and 21 of 360 frames


def test_frames_are_numbered_as_in_the_file(example: moxPY.Trial):
    axes = example.crop(100, 200).plot.gaps(["RWRB"])
    assert np.allclose(bars(collection(axes, "RWRB")), [(118.5, 123.5)])
    assert axes.get_xlim() == (99.5, 200.5)


def test_ends_of_segments_are_no_rows(walk: moxPY.Trial):
    for end in "OALP":
        walk.markers[f"LFE{end}"] = walk.markers["LASI"].values
    axes = walk.plot.gaps()
    assert len(axes.get_yticklabels()) == 40
    assert len(walk.plot.gaps(["LFEO"]).get_yticklabels()) == 1


def _many(count: int) -> moxPY.Trial:
    """A trial of many markers, each missing for as many frames as its number modulo 5."""
    trial = moxPY.Trial.new(frames=6)
    for number in range(count):
        values = np.ones((6, 3))
        values[: number % 5] = np.nan
        trial.markers[f"M{number}"] = values
    return trial


def test_of_very_many_gaps_the_longest_have_a_row():
    axes = _many(400).plot.gaps()
    shown = [int(tick.get_text()[1:]) for tick in axes.get_yticklabels()]
    # 80 markers lack 4 frames, 80 lack 3, and of those that lack 2 the first ones have a row.
    lacking = {lack: sum(number % 5 == lack for number in shown) for lack in range(5)}
    assert lacking == {4: 80, 3: 80, 2: 20, 1: 0, 0: 0}
    assert shown == sorted(shown)
    assert axes.figure.get_suptitle() == "320 gaps in 320 of 400 markers"


def test_many_markers_without_gaps_are_one_row():
    trial = moxPY.Trial.new(frames=6)
    for number in range(100):
        trial.markers[f"M{number}"] = np.ones((6, 3))
    axes = trial.plot.gaps()
    assert [tick.get_text() for tick in axes.get_yticklabels()] == ["all 100"]
    assert axes.figure.get_suptitle() == "no gaps in 0 of 100 markers"


def test_of_many_markers_those_with_gaps_are_listed():
    trial = moxPY.Trial.new(frames=10)
    for number in range(80):
        values = np.full((10, 3), float(number))
        values[3, :] = np.nan if number % 8 == 0 else 1.0
        trial.markers[f"M{number}"] = values
    axes = trial.plot.gaps()
    assert [tick.get_text() for tick in axes.get_yticklabels()] == [
        f"M{n}" for n in range(0, 80, 8)
    ]
    assert axes.figure.get_suptitle() == "10 gaps in 10 of 80 markers"


@pytest.mark.parametrize("seen", [True, False])
def test_all_or_nothing_seen(walk: moxPY.Trial, seen: bool):
    walk.markers.values = np.full((360, 40, 3), 1.0 if seen else np.nan)
    axes = walk.plot.gaps()
    assert axes.figure.get_suptitle().startswith("no gaps in 0" if seen else "40 gaps in 40")
    assert rendered(axes)


def test_a_chart_of_nothing_is_refused():
    with pytest.raises(ValueError, match="the trial has no markers"):
        moxPY.Trial.new(frames=5).plot.gaps()
    empty = moxPY.Trial.new()
    empty.markers["A"] = np.empty((0, 3))
    with pytest.raises(ValueError, match="the trial has no frames"):
        empty.plot.gaps()
