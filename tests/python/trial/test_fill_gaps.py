"""Lost markers get places; what was seen stays as it was."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from support.c3d_bytes import Analog
from support.independent_readers import read_with_c3d
from support.read_c3d import read_c3d
from support.small_trials import new_trial
from support.store_tree import snapshot

FRAMES, RATE = 120, 100.0
# First and last index of the gaps of "A"; the first and the last one are no inner ones.
GAPS = [(0, 4), (20, 20), (40, 44), (70, 81), (115, 119)]


def path_of(frames: Any) -> Any:
    time = frames / RATE
    return np.column_stack(
        [300 * np.sin(4 * time), 500 + 200 * time, 40 * np.cos(5 * time) + 100 * time**2]
    )


def words() -> Any:
    """Cameras and residuals; −1 in the gaps."""
    content = (np.arange(FRAMES) % 127 * 256 + 3 + np.arange(FRAMES) % 11).astype(np.float64)
    for first, last in GAPS:
        content[first : last + 1] = -1
    return content


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    frames = np.arange(FRAMES, dtype=np.float64)
    return Trial.of(
        read_c3d(
            tmp_path,
            {"A": path_of(frames), "B": path_of(frames + 7), "Knee": path_of(frames)},
            rate=RATE,
            residuals={"A": words(), "Knee": words()},
            parameters={"POINT:ANGLES": ["Knee"]},
            analogs=[Analog("S", np.arange(FRAMES))],
        )
    )


def frames_of(gaps: Any) -> Any:
    flags = np.zeros(FRAMES, dtype=bool)
    for first, last in gaps:
        flags[first : last + 1] = True
    return flags


@pytest.mark.parametrize(("method", "bound"), [("pchip", 1.5), ("cubic", 0.05), ("linear", 8.0)])
def test_inner_gaps_are_filled(trial: Trial, method: Any, bound: float) -> None:
    before = snapshot(trial)
    filled = trial.fill_gaps(method=method)
    assert snapshot(trial) == before
    values = filled.markers["A"].values
    inner, ends = frames_of(GAPS[1:-1]), frames_of([GAPS[0], GAPS[-1]])
    np.testing.assert_array_equal(np.isnan(values).all(axis=1), ends)
    np.testing.assert_allclose(
        values[inner], path_of(np.flatnonzero(inner).astype(np.float64)), atol=bound
    )
    assert [(gap.first, gap.last) for gap in filled.markers.gaps()] == [(1, 5), (116, 120)]


def test_linear_is_the_line_between_both_sides(trial: Trial) -> None:
    values, filled = (t.markers["A"].values for t in (trial, trial.fill_gaps(method="linear")))
    for first, last in GAPS[1:-1]:
        for i in range(3):
            expected = np.interp(
                np.arange(first, last + 1), [first - 1, last + 1], values[[first - 1, last + 1], i]
            )
            np.testing.assert_allclose(filled[first : last + 1, i], expected, rtol=1e-12)


def test_pchip_stays_between_both_sides(trial: Trial) -> None:
    filled = trial.fill_gaps().markers["A"].values
    for first, last in GAPS[1:-1]:
        sides = np.sort(filled[[first - 1, last + 1]], axis=0)
        inside = filled[first : last + 1]
        assert ((inside >= sides[0] - 1e-9) & (inside <= sides[1] + 1e-9)).all()


@pytest.mark.parametrize(("longest", "count"), [(0, 0), (1, 1), (4, 1), (5, 2), (11, 2), (12, 3)])
def test_longer_gaps_stay(trial: Trial, longest: int, count: int) -> None:
    filled = trial.fill_gaps(longest)
    gaps = [(gap.first - 1, gap.last - 1) for gap in filled.markers.gaps()]
    assert gaps == [GAPS[0], *GAPS[1 + count :]]


def test_what_was_seen_stays_bit_by_bit(trial: Trial, tmp_path: Path) -> None:
    filled = trial.fill_gaps()
    path = tmp_path / "written.c3d"
    _moxPY.moxWriteAcquisition(filled, str(path))
    again = Trial.of(_moxPY.moxReadAcquisition(str(path)))
    seen, inner = ~frames_of(GAPS), frames_of(GAPS[1:-1])
    for shown in (filled, again):
        old, new = trial.markers["A"], shown.markers["A"]
        for name in ("values", "residuals", "cameras"):
            assert getattr(new, name)[seen].tobytes() == getattr(old, name)[seen].tobytes()
        assert not new.residuals[inner].any()
        assert not new.cameras[inner].any()
        assert not np.isnan(new.values[inner]).any()
    read = read_with_c3d(path)
    assert not np.isnan(read.points[inner, 0]).any()
    np.testing.assert_allclose(read.points[inner, 0], filled.markers["A"].values[inner], rtol=1e-6)


def test_other_channels_stay(trial: Trial) -> None:
    filled = trial.fill_gaps()
    for kind, label in (("markers", "B"), ("angles", "Knee"), ("analogs", "S")):
        old, new = getattr(trial, kind)[label], getattr(filled, kind)[label]
        assert new.values.tobytes() == old.values.tobytes()
    np.testing.assert_array_equal(filled.angles["Knee"].residuals, trial.angles["Knee"].residuals)


def test_a_marker_that_nobody_saw_stays_lost() -> None:
    trial = Trial.of(new_trial())
    trial.markers["LASI"] = np.full((trial.frames, 3), np.nan)
    trial.markers["RASI"] = [[1, 2, 3], [np.nan] * 3, [3, np.nan, 5], [4, 5, 6]]
    filled = trial.fill_gaps(method="linear")
    assert np.isnan(filled.markers["LASI"].values).all()
    expected = [[1, 2, 3], [2, 3, 4], [3, 4, 5], [4, 5, 6]]
    np.testing.assert_allclose(filled.markers["RASI"].values, expected, rtol=1e-12)


def test_other_methods_are_refused(trial: Trial) -> None:
    with pytest.raises(ValueError, match="a method is one of linear, cubic, pchip, not 'spline'"):
        trial.fill_gaps(method="spline")  # type: ignore[arg-type]
    with pytest.raises(ValueError, match="the longest gap has 0 frames or more, not -1"):
        trial.fill_gaps(-1)
