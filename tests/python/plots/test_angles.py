"""Angles, moments and powers over the gait cycle."""

from __future__ import annotations

from collections.abc import Callable
from itertools import pairwise
from pathlib import Path

import moxPY
import numpy as np
import pytest
from matplotlib.colors import to_hex
from matplotlib.figure import Figure
from matplotlib.patches import Rectangle
from moxPY.plots.colours import LEFT, REFERENCE, RIGHT
from plots.drawn import collection, legend_of, line, rendered, texts, xy


def mean_by_hand(trial: moxPY.Trial, label: str, side: str) -> np.ndarray:
    """The mean over cycles at each per cent, on straight lines between samples."""
    channel, courses = trial.angles[label], []
    strikes = trial.events.times("Foot Strike", side)
    for start, stop in pairwise(strikes):
        at = start + (stop - start) * np.arange(101) / 100.0
        courses.append([np.interp(at, trial.time, channel.values[:, axis]) for axis in range(3)])
    return np.mean(courses, axis=0)


def varied(trial: moxPY.Trial) -> None:
    """Make cycles of a side differ, which those of the example do not."""
    knee = trial.angles["LKneeAngles"]
    knee.values = knee.values * (1.0 + 0.2 * trial.time[:, np.newaxis])


def test_lines_are_means_of_the_cycles_of_their_side(walk: moxPY.Trial):
    varied(walk)
    axes = walk.plot.angles()
    assert axes.shape == (4, 3)
    for row, joint in enumerate(("Pelvis", "Hip", "Knee", "Ankle")):
        for side, colour in (("Left", LEFT), ("Right", RIGHT)):
            expected = mean_by_hand(walk, f"{side[0]}{joint}Angles", side)
            for column in range(3):
                shown = line(axes[row, column], side)
                per_cent, course = xy(shown)
                assert np.array_equal(per_cent, np.linspace(0, 100, 101))
                assert np.allclose(course, expected[column], atol=1e-6)
                assert shown.get_color() == colour


def test_the_band_is_one_standard_deviation(walk: moxPY.Trial):
    varied(walk)
    knee = walk.angles["LKneeAngles"]
    cycles = walk.cycles("Left")
    one, other = knee.normalize(cycles)[:, :, 0]
    mean, spread = (one + other) / 2, np.abs(one - other) / np.sqrt(2.0)
    axes = walk.plot.angles(["LKneeAngles"])
    (band,) = axes[0, 0].collections
    vertices = band.get_paths()[0].vertices
    assert vertices[:, 1].min() == pytest.approx((mean - spread).min())
    assert vertices[:, 1].max() == pytest.approx((mean + spread).max())


def test_panels_are_named_as_in_the_field_and_have_units(example: moxPY.Trial):
    axes = example.plot.angles()
    assert [panel.get_title(loc="left") for panel in axes[2]] == [
        "Knee flexion", "Knee varus", "Knee rotation",
    ]  # fmt: skip
    assert {panel.get_ylabel() for panel in axes.flat} == {"deg"}
    assert {panel.get_xlabel() for panel in axes[-1]} == {"gait cycle (%)"}
    assert legend_of(axes[0, 0]) == [
        "Left (2 cycles)", "Right (3 cycles)", "± 1 standard deviation", "foot off",
    ]  # fmt: skip


def test_the_right_line_lies_on_the_wider_left_one_whatever_the_order(example: moxPY.Trial):
    axes = example.plot.angles(["RKneeAngles", "LKneeAngles"])
    left, right = line(axes[0, 0], "Left"), line(axes[0, 0], "Right")
    assert left.get_zorder() < right.get_zorder()
    assert left.get_linewidth() > right.get_linewidth()


def test_joints_go_from_the_pelvis_to_the_foot_unless_they_are_named(walk: moxPY.Trial):
    walk.angles.rename({"LHipAngles": "LFootProgressAngles", "LKneeAngles": "TrunkAngles"})
    axes = walk.plot.angles()
    assert [panel.get_title(loc="left") for panel in axes[:, 2]] == [
        "Pelvis rotation", "Hip rotation", "Knee rotation", "Ankle rotation",
        "LFootProgressAngles z", "TrunkAngles z",
    ]  # fmt: skip
    named = walk.plot.angles(["RAnkleAngles", "RHipAngles"])
    assert [panel.get_title(loc="left") for panel in named[:, 2]] == [
        "Ankle rotation", "Hip rotation",
    ]  # fmt: skip


def test_a_deviation_is_explained_in_the_colours_of_its_sides_and_a_reference_in_grey(
    example: moxPY.Trial,
):
    usual = {"KneeAngles": (np.zeros((5, 3)), np.ones((5, 3)))}
    axes = example.plot.angles(["LKneeAngles", "RKneeAngles"], reference=usual)
    (legend,) = axes[0, 0].figure.legends
    patches = [to_hex(patch.get_facecolor()) for patch in legend.findobj(Rectangle)]
    assert patches == [LEFT, RIGHT, REFERENCE]


def test_foot_offs_are_where_they_are_in_the_cycle(example: moxPY.Trial):
    axes = example.plot.angles(["LHipAngles", "RHipAngles"])
    offs = {
        float(each.get_xdata()[0]): each.get_color()
        for each in axes[0, 0].lines
        if each.get_linestyle() == "--"
    }
    assert list(offs) == pytest.approx([60.0, 60.0], abs=1e-4)  # 0.66 s of 1.10 s
    assert set(offs.values()) == {LEFT, RIGHT}


def test_moments_and_powers_have_their_own_units(example: moxPY.Trial):
    moments, powers = example.plot.moments(), example.plot.powers()
    assert (moments.shape, powers.shape) == ((3, 3), (1, 3))  # a power has one component
    assert moments[0, 0].get_ylabel() == "Nmm/kg"
    assert [panel.get_title(loc="left") for panel in powers[0]] == [
        "HipPower", "KneePower", "AnklePower",
    ]  # fmt: skip
    _, course = xy(line(powers[0, 1], "Left"))
    on_a_plate = example.cycles("Left")[1:]
    expected = example.powers["LKneePower"].mean_cycle(on_a_plate).mean[:, 2]
    assert np.array_equal(course, expected, equal_nan=True)


def test_a_reference_is_a_band_behind(example: moxPY.Trial):
    mean = np.linspace(0.0, 30.0, 51)[:, np.newaxis] * [1.0, 2.0, 3.0]
    axes = example.plot.angles(
        ["LKneeAngles", "RKneeAngles"], reference={"KneeAngles": (mean, np.full((51, 3), 2.0))}
    )
    vertices = collection(axes[0, 1], "reference").get_paths()[0].vertices
    assert vertices[:, 1].min() == pytest.approx(-2.0)
    assert vertices[:, 1].max() == pytest.approx(62.0)
    assert legend_of(axes[0, 0])[-1] == "reference"


def test_the_mean_cycle_of_another_trial_is_a_reference(example: moxPY.Trial):
    normal = example.angles["LKneeAngles"].mean_cycle(example.cycles("Left"))
    axes = example.plot.angles(["LKneeAngles"], reference={"LKneeAngles": normal})
    assert collection(axes[0, 0], "reference")


@pytest.mark.parametrize(
    ("reference", "error", "text"),
    [
        ({"KneeAngles": (np.zeros(101), np.zeros(101))}, ValueError, "shape .instants, 3."),
        ({"KneeAngles": 3.0}, TypeError, "a MeanCycle or a pair of mean and deviation"),
        ([1.0], TypeError, "reference is a mapping of labels, not list"),
    ],
)
def test_a_reference_of_another_shape_is_refused(
    example: moxPY.Trial, reference: object, error: type[Exception], text: str
):
    with pytest.raises(error, match=text):
        example.plot.angles(reference=reference)  # type: ignore[arg-type]


def test_cycles_may_be_given(example: moxPY.Trial):
    first = example.cycles("Left")[:1]
    axes = example.plot.angles(["LHipAngles", "RHipAngles"], cycles={"Left": first})
    _, course = xy(line(axes[0, 0], "Left"))
    assert np.array_equal(course, example.angles["LHipAngles"].normalize(first)[0, :, 0])
    assert legend_of(axes[0, 0])[:2] == ["Left (1 cycle)", "Right (no cycles)"]


def test_axes_that_are_given_are_drawn_into(example: moxPY.Trial):
    given = Figure().subplots(1, 3)
    axes = example.plot.angles(["LHipAngles"], ax=given)
    assert list(axes[0]) == list(given)
    with pytest.raises(ValueError, match="the picture has 4 × 3 panels; ax has 3 axes"):
        example.plot.angles(ax=given)


def test_a_small_range_is_not_blown_up(walk: moxPY.Trial):
    walk.angles["LHipAngles"] = np.full((360, 3), 5.0) + 0.001 * np.arange(3)
    low, high = walk.plot.angles(["LHipAngles"])[0, 0].get_ylim()
    assert high - low >= 10.0 - 1e-9


def test_labels_of_other_models_keep_their_names(walk: moxPY.Trial):
    values = walk.angles["LKneeAngles"].values
    walk.angles.clear()
    walk.angles["Left_Elbow"] = values
    walk.angles["Right_Elbow"] = values
    walk.angles["Trunk"] = values
    axes = walk.plot.angles()
    assert [panel.get_title(loc="left") for panel in axes[:, 0]] == ["Elbow x", "Trunk x"]
    assert len([each for each in axes[1, 0].lines if each.get_label() in ("Left", "Right")]) == 2


def test_what_is_seen_in_no_cycle_says_so(walk: moxPY.Trial):
    walk.angles["LHipAngles"] = np.full((360, 3), np.nan)
    axes = walk.plot.angles(["LHipAngles"])
    assert [texts(panel) for panel in axes[0]] == [["not seen in any cycle"]] * 3
    assert rendered(axes)


def test_without_cycles_it_says_how_to_find_some(walk: moxPY.Trial):
    walk.events.clear()
    with pytest.raises(ValueError, match=r"neither side has a gait cycle.*detect_events"):
        walk.plot.angles()


@pytest.mark.parametrize("kind", ["angles", "moments", "powers"])
def test_without_channels_it_is_refused(walk: moxPY.Trial, kind: str):
    getattr(walk, kind).clear()
    with pytest.raises(ValueError, match=f"the trial has no {kind}"):
        getattr(walk.plot, kind)()


def test_one_frame_has_no_course(example: moxPY.Trial):
    frame = example.crop(100, 100)
    with pytest.raises(ValueError, match="neither side has a gait cycle"):
        frame.plot.angles()


def test_a_trial_with_a_subject_before_its_labels(sample: Callable[[str], Path]):
    trial = moxPY.read(sample("gait-pig.c3d"), odd="ignore")
    axes = trial.plot.angles()
    assert [panel.get_title(loc="left") for panel in axes[:, 0]] == [
        "Pelvis tilt", "Hip flexion", "Knee flexion", "Ankle dorsiflexion", "FootProgressAngles x",
    ]  # fmt: skip
