"""Properties of comparisons, for random trials and changes."""

from __future__ import annotations

from typing import Any

import numpy as np
from hypothesis import given, settings
from hypothesis import strategies as st
from moxPY.differences import Difference
from moxPY.trial import Trial

LABELS = st.sampled_from(["LASI", "RASI", "C7", "*1", "SACR"])
KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")
NUMBERS = st.floats(-1e6, 1e6) | st.sampled_from([np.nan, 0.0, -0.0, np.inf])
OTHER_SIDE = {"only first": "only second", "only second": "only first"}


@st.composite
def trials(draw: st.DrawFn) -> Trial:
    frames, ratio = draw(st.integers(0, 5)), draw(st.integers(1, 3))
    trial = Trial.new(frames, draw(st.sampled_from([50.0, 100.0])), ratio)
    for kind in KINDS:
        shape = (frames * ratio,) if kind == "analogs" else (frames, 3)
        for label in draw(st.lists(LABELS, unique=True, max_size=2)):
            size = int(np.prod(shape))
            values = draw(st.lists(NUMBERS, min_size=size, max_size=size))
            getattr(trial, kind)[label] = np.reshape(values, shape)
            getattr(trial, kind)[label].unit = draw(st.sampled_from(["mm", "m", ""]))
    for time in draw(st.lists(st.sampled_from([0.0, 0.25, 0.5, 1.0]), max_size=4)):
        trial.events.add(draw(st.sampled_from(["Foot Strike", "Foot Off"])), time, "Left")
    for entry in draw(st.lists(st.sampled_from(["A", "B"]), unique=True, max_size=2)):
        value: Any = draw(st.integers(-9, 9) | st.text("xyz", min_size=1) | st.just([1.5, 2.5]))
        trial.metadata["LAB"] = {**trial.metadata.get("LAB", {}), entry: value}
    return trial


def brief(found: list[Difference], *, turned: bool = False) -> list[tuple[Any, ...]]:
    """What differs without sides and order."""
    return sorted(
        (
            each.family,
            str(each.channel),
            OTHER_SIDE.get(each.aspect, each.aspect) if turned else each.aspect,
            str(each.largest),
        )
        for each in found
    )


@settings(max_examples=60, deadline=None)
@given(trials())
def test_nothing_differs_from_itself_and_its_copies(trial: Trial) -> None:
    assert trial.differences(trial) == []
    assert trial.differences(trial.copy()) == []


@settings(max_examples=120, deadline=None)
@given(trials(), trials(), st.sampled_from([0.0, 0.3, 1e3]))
def test_what_differs_is_the_same_from_both_sides(
    one: Trial, other: Trial, tolerance: float
) -> None:
    there = one.differences(other, tolerance=tolerance)
    back = other.differences(one, tolerance=tolerance)
    assert brief(there) == brief(back, turned=True)


@settings(max_examples=120, deadline=None)
@given(trials(), st.data())
def test_one_changed_sample_is_found_at_its_place(trial: Trial, data: st.DataObject) -> None:
    places = [(kind, label) for kind in KINDS for label in getattr(trial, kind)]
    if not places or trial.frames == 0:
        return
    kind, label = data.draw(st.sampled_from(places))
    changed = trial.copy()
    channel = getattr(changed, kind)[label]
    values = channel.values.copy()
    index = data.draw(st.integers(0, values.size - 1))
    before = values.flat[index]
    after = 2e6 if np.isnan(before) or np.isinf(before) else before + 1.5
    rows = values.reshape(len(values), -1)
    row = index // rows.shape[1]
    if kind != "analogs" and np.isnan(rows[row]).any():
        return  # a point that lacks one number lacks all of them
    values.flat[index] = after
    channel.values = values
    found = trial.differences(changed, without="residuals")
    assert [(each.family, each.channel) for each in found] == [(kind, label)]
    per_frame = trial.samples_per_frame if kind == "analogs" else 1
    assert found[0].frame == 1 + row // per_frame
    assert found[0].aspect == ("gaps" if np.isnan(before) else "values")
    if np.isfinite(before):
        assert found[0].largest is not None
        np.testing.assert_allclose(found[0].largest, 1.5, rtol=1e-9)
