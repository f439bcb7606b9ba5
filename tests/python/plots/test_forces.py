"""Ground reaction forces over time, and as vectors at the centre of pressure."""

from __future__ import annotations

import moxPY
import numpy as np
import pytest
from matplotlib.figure import Figure
from moxPY.plots.colours import LEFT, RIGHT
from plots.conftest import EXAMPLE
from plots.drawn import collection, legend_of, line, rendered, spans, texts, xy


def without_platforms() -> moxPY.Trial:
    return moxPY.Trial.new(frames=10)


def test_forces_are_those_on_the_person(example: moxPY.Trial):
    axes = example.plot.forces()
    assert [panel.get_ylabel() for panel in axes] == ["z, vertical (N)", "x (N)", "y (N)"]
    assert axes[2].get_xlabel() == "time (s)"
    for number, plate in enumerate(example.platforms, 1):
        reaction = plate.reaction(20.0)
        for panel, axis in zip(axes, (2, 0, 1), strict=True):
            time, force = xy(line(panel, f"plate {number}"))
            assert np.array_equal(time, reaction.time)
            assert np.array_equal(force, reaction.force[:, axis])


def test_contacts_are_those_of_the_events(example: moxPY.Trial):
    axes = example.plot.forces()
    found = example.platforms.detect_events(20.0)
    strikes = {e.context: e.time for e in found if e.label == "Foot Strike"}
    offs = {e.context: e.time for e in found if e.label == "Foot Off"}
    for name, side, colour in (("plate 1", "Right", RIGHT), ("plate 2", "Left", LEFT)):
        contact = line(axes[0], f"{name}, {side}")
        time, force = xy(contact)
        assert contact.get_color() == colour
        assert time[0] == pytest.approx(strikes[side])
        assert time[-1] == pytest.approx(offs[side] - 1.0 / example.analogs.rate)
        assert force.min() >= 20.0
    assert np.allclose(spans(axes[0])[0], (strikes["Right"], offs["Right"] - 0.001))
    assert texts(axes[0]) == ["threshold 20 N", "plate 1", "plate 2"]
    assert legend_of(axes[0]) == ["Left foot", "Right foot", "no contact"]


def test_another_threshold_is_drawn(example: moxPY.Trial):
    axes = example.plot.forces(100.0)
    heights = [each.get_ydata()[0] for each in axes[0].lines if each.get_linestyle() != "-"]
    assert heights == [100.0]
    assert xy(line(axes[0], "plate 1, Right"))[1].min() >= 100.0


def test_one_panel_is_the_vertical_force(example: moxPY.Trial):
    given = Figure().subplots()
    assert example.plot.forces(ax=given) is given
    assert given.get_ylabel() == "z, vertical (N)"
    assert given.get_xlabel() == "time (s)"


def test_up_is_as_the_platforms_lie(example: moxPY.Trial):
    vertical, *_ = example.y_up().plot.forces()
    assert vertical.get_ylabel() == "y, vertical (N)"
    assert xy(line(vertical, "plate 1"))[1].max() == pytest.approx(755.2, abs=0.1)


def test_nobody_on_a_platform(example: moxPY.Trial):
    before = example.crop(start=0.0, stop=1.0)
    panels = [before.plot.forces()[0], before.plot.butterfly()[0]]
    for panel in panels:
        assert "nobody was on a platform with 20 N or more" in texts(panel)
        assert rendered(panel)


def test_one_frame_in_the_middle_of_a_contact(example: moxPY.Trial):
    frame = example.crop(160, 160)
    assert rendered(frame.plot.forces())
    assert rendered(frame.plot.butterfly())


def test_sides_that_nobody_can_tell(walk: moxPY.Trial):
    walk.markers.clear()
    axes = walk.plot.forces()
    assert line(axes[0], "plate 1, General")
    assert line(axes[0], "plate 2, General").get_linestyle() == "--"
    assert "foot not known" in legend_of(axes[0])
    assert spans(axes[0]) == []  # nothing to tell apart
    assert rendered(walk.plot.butterfly())


def test_gaps_everywhere_only_cost_the_sides(walk: moxPY.Trial):
    walk.markers.values = np.full((360, 40, 3), np.nan)
    assert rendered(walk.plot.forces())
    assert rendered(walk.plot.butterfly())


@pytest.mark.parametrize("what", ["forces", "butterfly"])
def test_a_trial_without_platforms_is_refused(what: str):
    with pytest.raises(ValueError, match="the trial has no force platforms"):
        getattr(without_platforms().plot, what)()


def test_platforms_without_channels_say_so(walk: moxPY.Trial):
    walk.analogs.clear()
    vertical = walk.plot.forces()[0]
    assert "the platforms have no force that is known" in texts(vertical)
    assert rendered(vertical)
    assert rendered(walk.plot.butterfly())


def test_a_trial_without_samples_is_refused():
    trial = moxPY.read(EXAMPLE).crop(1, 1)
    moxPY.moxSetFrameNumber(trial, 0)
    with pytest.raises(ValueError, match="the trial has no analog samples"):
        trial.plot.forces()


def test_a_negative_threshold_is_refused(example: moxPY.Trial):
    for what in (example.plot.forces, example.plot.butterfly):
        with pytest.raises(ValueError, match="threshold"):
            what(-1.0)


def test_platforms_that_are_nowhere_have_no_butterfly(walk: moxPY.Trial):
    corners = walk.metadata["FORCE_PLATFORM"]["CORNERS"]
    walk.metadata["FORCE_PLATFORM"]["CORNERS"] = np.zeros_like(corners)
    assert rendered(walk.plot.forces())
    assert rendered(walk.plot.butterfly())


def test_vectors_stand_on_the_centre_of_pressure_and_are_as_high_as_the_force(
    example: moxPY.Trial,
):
    side, floor = example.plot.butterfly()
    assert (side.get_ylabel(), floor.get_xlabel(), floor.get_ylabel()) == (
        "z force (N)", "x (mm)", "y (mm)",
    )  # fmt: skip
    reaction = example.platforms[0].reaction(20.0)
    first = np.flatnonzero(reaction.force[:, 2] >= 20.0)[0]
    vectors = collection(side, "plate 1, Right").get_segments()
    scale = side.get_aspect()  # so many millimetres are as wide as a newton is high
    for number, (foot, tip) in enumerate(vectors):
        sample = first + 10 * number  # one each 0.01 s
        assert foot == pytest.approx([reaction.point[sample, 0], 0.0])
        assert tip[1] == pytest.approx(reaction.force[sample, 2])
        assert tip[0] - foot[0] == pytest.approx(scale * reaction.force[sample, 0])
    assert len(vectors) == 66


def test_a_contact_all_the_time_has_no_more_vectors_than_can_be_seen(example: moxPY.Trial):
    example = example.copy()
    load = example.analogs["Fz1"]
    load.values = load.values - 100.0  # an amplifier that nobody has set to zero
    side, _ = example.plot.butterfly()
    label = next(each.get_label() for each in side.collections if "plate 1" in each.get_label())
    assert 180 <= len(collection(side, label).get_segments()) <= 200


def test_the_name_of_a_platform_is_at_a_corner_of_its_own(walk: moxPY.Trial):
    around = np.deg2rad(20.0)
    turn = [
        [np.cos(around), -np.sin(around), 0.0],
        [np.sin(around), np.cos(around), 0.0],
        [0, 0, 1],
    ]
    _, floor = walk.rotated(turn).plot.butterfly()
    outlines = np.concatenate([patch.get_xy()[:4] for patch in floor.patches])
    for name in floor.texts:
        assert np.linalg.norm(outlines - name.xy, axis=1).min() == pytest.approx(0.0, abs=1e-6)


def test_the_path_lies_on_the_platforms(example: moxPY.Trial):
    _, floor = example.plot.butterfly()
    reaction = example.platforms[1].reaction(20.0)
    path = reaction.point[reaction.contact][:, :2]
    shown = np.column_stack(xy(line(floor, "plate 2, Left")))
    assert np.array_equal(shown, path)
    outlines = [patch.get_xy()[:4] for patch in floor.patches]
    assert np.allclose(outlines, [plate.corners[:, :2] for plate in example.platforms])
    assert floor.get_aspect() == 1.0


def test_the_floor_is_seen_from_above(example: moxPY.Trial):
    _, floor = example.y_up().plot.butterfly()  # there z points towards the onlooker's feet
    assert floor.get_ylabel() == "z (mm)"
    bottom, top = floor.get_ylim()
    assert bottom > top


def test_one_panel_is_the_view_from_the_side(example: moxPY.Trial):
    given = Figure().subplots()
    assert example.plot.butterfly(ax=given) is given
    assert given.get_xlabel() == "x (mm)"
