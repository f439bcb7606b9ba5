"""Curves of several trials over the gait cycle in one picture."""

from __future__ import annotations

import moxPY
import numpy as np
import pytest
from moxPY.plots.colours import LEFT, RIGHT
from moxPY.plots.laid_over import laid_over
from plots.drawn import legend_of, line, rendered, xy


@pytest.fixture
def trials(walk: moxPY.Trial) -> list[tuple[str, moxPY.Trial]]:
    """The walk, and one with 5 degrees more."""
    other = walk.copy()
    for _, channel in other.angles.items():
        channel.values = channel.values + 5.0
    return [("one", walk), ("two $x$", other)]


def test_each_trial_has_a_line_a_side(trials: list[tuple[str, moxPY.Trial]]):
    labels = trials[0][1].angles.labels
    axes = laid_over("angles", trials, labels)
    alone = [trial.plot.angles() for _, trial in trials]
    assert axes.shape == (4, 3)
    for place in np.ndindex(axes.shape):
        for side, colour in (("Left", LEFT), ("Right", RIGHT)):
            lines = [line(axes[place], f"{side}, {name}") for name in ("one", r"two \$x\$")]
            for own, single in zip(lines, alone, strict=True):
                assert np.array_equal(xy(own), xy(line(single[place], side)))
                assert own.get_color() == colour
            assert lines[0].get_linestyle() != lines[1].get_linestyle()
        assert axes[place].get_title(loc="left") == alone[0][place].get_title(loc="left")
        assert axes[place].get_ylabel() == "deg"
    assert axes[3, 0].get_xlabel() == "gait cycle (%)"
    assert legend_of(axes[0, 0]) == [
        "Left", "Right", "one (2 left, 3 right)", r"two \$x\$ (2 left, 3 right)",
    ]  # fmt: skip
    assert rendered(axes)


def test_a_component_that_another_trial_has_is_shown(trials: list[tuple[str, moxPY.Trial]]):
    knee = trials[0][1].angles["LKneeAngles"]
    knee.values = knee.values * [1.0, 0.0, 0.0]
    axes = laid_over("angles", trials, ["LKneeAngles"])
    assert axes.shape == (1, 3)
    assert xy(line(axes[0, 2], "Left, one"))[1] == pytest.approx(np.zeros(101))
    assert xy(line(axes[0, 2], r"Left, two \$x\$"))[1].min() > 5.0


def test_the_reference_is_drawn_once(trials: list[tuple[str, moxPY.Trial]]):
    normal = {"KneeAngles": (np.full((51, 3), 7.0), np.full((51, 3), 2.0))}
    axes = laid_over("angles", trials, ["LKneeAngles", "RKneeAngles"], normal)
    for panel in axes[0]:
        (band,) = panel.collections
        heights = band.get_paths()[0].vertices[:, 1]
        assert (heights.min(), heights.max()) == (5.0, 9.0)
    assert legend_of(axes[0, 0])[-1] == "reference"
