"""The strip of stick figures."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path

import moxPY
import numpy as np
import pytest
from matplotlib.colors import to_hex
from matplotlib.figure import Figure
from moxPY.plots.colours import LEFT, RIGHT
from moxPY.skeleton import sticks_of
from plots.drawn import legend_of, rendered, texts, xy


def test_a_figure_has_the_shape_of_the_body(example: moxPY.Trial):
    axes = example.plot.sticks(frames=[150])
    labels = [
        label for label in example.markers
        if label in {end for stick in sticks_of(example) for end in stick}
    ]  # fmt: skip
    forward, height = xy(axes.lines[0])
    places = np.array([example.markers[label].values[149] for label in labels])
    assert np.allclose(height, places[:, 2], equal_nan=True)
    middle = (np.nanmin(places[:, 0]) + np.nanmax(places[:, 0])) / 2
    # The example walks nearly straight along x.
    assert np.allclose(forward, places[:, 0] - middle, atol=2.0, equal_nan=True)
    assert axes.get_aspect() == 1.0
    assert (axes.get_xlabel(), axes.get_ylabel()) == ("time (s)", "z (mm)")


def test_limbs_are_joined_in_the_colours_of_their_sides(example: moxPY.Trial):
    axes = example.plot.sticks(frames=[150], sticks=[("LKNE", "LANK"), ("RKNE", "RANK")])
    assert [to_hex(each.get_color()[0]) for each in axes.collections] == [LEFT, RIGHT]
    for drawn, side in zip(axes.collections, "LR", strict=True):
        (segment,) = drawn.get_segments()
        heights = [example.markers[f"{side}{place}"].z[149] for place in ("KNE", "ANK")]
        assert segment[:, 1] == pytest.approx(heights)
    assert legend_of(axes) == ["left side", "right side"]


def test_figures_stand_above_their_times(example: moxPY.Trial):
    axes = example.plot.sticks(frames=[1, 101, 301])
    assert [tick.get_text() for tick in axes.get_xticklabels()] == ["0.00", "1.00", "3.00"]
    assert len(axes.lines) == 3
    assert len(example.plot.sticks(5).lines) == 5


def test_who_walks_backwards_through_the_laboratory_still_walks_to_the_right(walk: moxPY.Trial):
    shown = xy(walk.plot.sticks(frames=[150]).lines[0])
    turned = walk.rotated([[-1, 0, 0], [0, -1, 0], [0, 0, 1]])
    assert np.allclose(xy(turned.plot.sticks(frames=[150]).lines[0]), shown, equal_nan=True)


def test_a_missing_marker_costs_its_sticks_alone(walk: moxPY.Trial):
    values = walk.markers["LKNE"].values.copy()
    values[149] = np.nan
    walk.markers["LKNE"].values = values
    before, after = (
        sum(len(each.get_segments()) for each in walk.plot.sticks(frames=[f]).collections)
        for f in (149, 150)
    )
    assert (before, after) == (46, 44)


def test_without_platforms_the_body_tells_what_is_up(example: moxPY.Trial):
    for trial in (example, example.y_up()):
        copy = trial.copy()
        copy.metadata.pop("FORCE_PLATFORM")
        assert len(copy.platforms) == 0
        assert copy.plot.sticks().get_ylabel() == trial.plot.sticks().get_ylabel()


def test_markers_without_known_labels_are_dots(walk: moxPY.Trial):
    walk.markers.rename({label: f"*{i}" for i, label in enumerate(walk.markers.labels)})
    axes = walk.plot.sticks()
    assert not axes.collections
    assert len(xy(axes.lines[0])[0]) == 40


def test_gaps_everywhere_say_so(walk: moxPY.Trial):
    walk.markers.values = np.full((360, 40, 3), np.nan)
    axes = walk.plot.sticks()
    assert texts(axes) == ["no marker is seen in these frames"]
    assert rendered(axes)


def test_one_frame_and_one_marker(example: moxPY.Trial):
    assert len(example.crop(100, 100).plot.sticks().lines) == 1
    trial = moxPY.Trial.new(frames=1)
    trial.markers["A"] = [[1.0, 2.0, 3.0]]
    assert rendered(trial.plot.sticks())


def test_axes_that_are_given_are_drawn_into(example: moxPY.Trial):
    given = Figure().subplots()
    assert example.plot.sticks(ax=given) is given
    assert rendered(given)


def test_what_there_is_not_is_named(example: moxPY.Trial):
    with pytest.raises(ValueError, match="there is no frame 361: the trial has frames 1 to 360"):
        example.plot.sticks(frames=[361])
    with pytest.raises(ValueError, match="there are no frames to draw"):
        example.plot.sticks(frames=[])
    with pytest.raises(ValueError, match="the number of figures is 1 or more, not 0"):
        example.plot.sticks(0)
    with pytest.raises(KeyError, match="no channel 'LKNEE' among the markers; nearest: LKNE"):
        example.plot.sticks(sticks=[("LKNEE", "LANK")])
    with pytest.raises(ValueError, match="the trial has no markers"):
        moxPY.Trial.new(frames=5).plot.sticks()
    empty = moxPY.Trial.new()
    empty.markers["A"] = np.empty((0, 3))
    with pytest.raises(ValueError, match="the trial has no frames"):
        empty.plot.sticks()


@pytest.mark.parametrize(
    "name", ["2198928.c3d", "TYPE-3.c3d", "type1.C3D", "phasespace_sample.c3d"]
)
def test_bodies_of_different_laboratories(sample: Callable[[str], Path], name: str):
    trial = moxPY.read(sample(name), odd="ignore")
    assert rendered(trial.plot.sticks())
