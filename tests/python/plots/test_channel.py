"""A channel over time: samples, gaps, events, units."""

from __future__ import annotations

import moxPY
import numpy as np
import pytest
from matplotlib.figure import Figure
from moxPY.plots.colours import LEFT, RIGHT
from plots.drawn import legend_of, rendered, spans, texts, upright, xy


def test_a_point_has_three_panels_with_its_samples(example: moxPY.Trial):
    axes = example.plot.channel("LKneeAngles", events=False)
    assert axes.shape == (3,)
    for index, panel in enumerate(axes):
        time, values = xy(panel.lines[0])
        assert np.array_equal(time, example.time)
        assert np.array_equal(values, example.angles["LKneeAngles"].values[:, index])
    assert [panel.get_ylabel() for panel in axes] == ["x (deg)", "y (deg)", "z (deg)"]
    assert axes[2].get_xlabel() == "time (s)"


def test_an_analog_channel_is_one_panel_over_its_own_clock(example: moxPY.Trial):
    axes = example.plot.channel(example.analogs["Fz1"])
    time, values = xy(axes.lines[0])
    assert np.array_equal(time, example.analogs.time)
    assert np.array_equal(values, example.analogs["Fz1"].values)
    assert axes.get_ylabel() == "Fz1 (N)"


def test_gaps_are_shaded_from_frame_to_frame(example: moxPY.Trial):
    axes = example.plot.channel("RWRB", "z")
    period = 1.0 / example.rate
    gaps = [gap for gap in example.markers.gaps() if gap.label == "RWRB"]
    expected = [
        ((gap.first - 1.5) * period, (gap.last - 0.5) * period) for gap in gaps
    ]  # frame 1 is 0.0
    assert len(gaps) == 2
    assert np.allclose(spans(axes), expected)
    assert legend_of(axes)[0] == "not seen"


def test_events_are_lines_in_the_colour_of_the_side(example: moxPY.Trial):
    axes = example.plot.channel("LASI", "x")
    colours = {"Left": LEFT, "Right": RIGHT}
    styles = {"Foot Strike": "-", "Foot Off": "--"}
    assert upright(axes) == [
        (event.time, colours[event.context], styles[event.label]) for event in example.events
    ]
    assert legend_of(axes)[1:] == [f"{side} {label}" for side in colours for label in styles]


def test_events_may_be_left_out(example: moxPY.Trial):
    assert upright(example.plot.channel("LASI", "x", events=False)) == []


def test_an_event_that_is_in_no_time_is_not_drawn(walk: moxPY.Trial):
    walk.events.clear()
    walk.events.add("LHS", 1.0, context="")
    walk.events.add("turn", 2.0)
    axes = walk.plot.channel("LASI", "x")
    assert upright(axes) == [(1.0, LEFT, "-"), (2.0, "#666666", ":")]


def test_axes_that_are_given_are_drawn_into(example: moxPY.Trial):
    figure = Figure()
    one, three = figure.add_subplot(4, 1, 1), [figure.add_subplot(4, 1, n) for n in (2, 3, 4)]
    assert example.plot.channel("LASI", "y", ax=one) is one
    assert list(example.plot.channel("LASI", ax=three)) == three
    assert one.lines
    assert figure.get_suptitle() == ""
    with pytest.raises(ValueError, match="the picture has 3 × 1 panels; ax has 1 axes"):
        example.plot.channel("LASI", ax=one)
    with pytest.raises(TypeError, match="ax is axes of matplotlib"):
        example.plot.channel("LASI", "y", ax="here")


def test_a_channel_that_is_nowhere_seen_says_so(walk: moxPY.Trial):
    walk.markers["LASI"] = np.full((walk.frames, 3), np.nan)
    axes = walk.plot.channel("LASI", "x")
    assert texts(axes) == ["not seen in any frame"]
    assert rendered(axes)


def test_one_frame_shows_as_a_dot(example: moxPY.Trial):
    axes = example.crop(100, 100).plot.channel("LHEE", "z")
    assert axes.lines[0].get_marker() == "o"
    assert rendered(axes)


def test_what_there_is_not_is_named(example: moxPY.Trial):
    with pytest.raises(KeyError, match="no channel 'LKneeAngle'; nearest: LKneeAngles"):
        example.plot.channel("LKneeAngle")
    with pytest.raises(ValueError, match="a component is x, y or z, not 'w'"):
        example.plot.channel("LASI", "w")
    with pytest.raises(ValueError, match="the analog channel 'Fz1' has no components"):
        example.plot.channel("Fz1", "x")
    empty = moxPY.Trial.new()
    empty.markers["A"] = np.empty((0, 3))
    with pytest.raises(ValueError, match="the channel 'A' has no samples"):
        empty.plot.channel("A")


def test_texts_of_files_are_no_formulas(walk: moxPY.Trial):
    walk.markers.rename({"LASI": "$\\frac{$"})
    walk.events.add("$\\bad{$", 1.0)
    walk.markers["$\\frac{$"].unit = "$\\x$"
    assert rendered(walk.plot.channel("$\\frac{$"))
    assert rendered(walk.plot.gaps())
    assert rendered(walk.plot.events())
