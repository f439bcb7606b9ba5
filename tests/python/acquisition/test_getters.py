"""What is common to all functions that give a number of the time base."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import _moxPY
import pytest
from support.read_files import read_trial
from support.store_tree import snapshot

GETTERS: list[tuple[Callable[[Any], Any], float, float]] = [
    # function, of a new acquisition of 2 points, 50 frames, 3 channels at ratio 4, of a file
    (_moxPY.moxGetPointFrequency, 0.0, 100.0),
    (_moxPY.moxGetPointFrameNumber, 50.0, 100.0),
    (_moxPY.moxGetPointNumber, 2.0, 3.0),
    (_moxPY.moxGetAnalogNumber, 3.0, 2.0),
    (_moxPY.moxGetAnalogFrequency, 0.0, 300.0),
    (_moxPY.moxGetAnalogFrameNumber, 200.0, 300.0),
    (_moxPY.moxGetAnalogSampleNumberPerFrame, 4.0, 3.0),
    (_moxPY.moxGetAnalogResolution, 12.0, 16.0),
    (_moxPY.moxGetMaxInterpolationGap, 0.0, 10.0),
    (_moxPY.moxGetFirstFrame, 0.0, 20.0),
    (_moxPY.moxGetLastFrame, 49.0, 119.0),
]


@pytest.mark.parametrize(("function", "expected", "_"), GETTERS)
def test_numbers_of_a_new_acquisition(function: Any, expected: float, _: float):
    result = function(_moxPY.moxNewAcquisition(2, 50, 3, 4))
    assert (type(result), result) == (float, expected)


@pytest.mark.parametrize(("function", "_", "expected"), GETTERS)
def test_numbers_of_a_file(function: Any, _: float, expected: float):
    acquisition = read_trial(first_frame=21, bits=16, header={"max_gap": 10})
    result = function(acquisition)
    assert (type(result), result) == (float, expected)


@pytest.mark.parametrize("function", [function for function, _, _ in GETTERS])
def test_nothing_is_changed(function: Any):
    acquisition = read_trial()
    before = snapshot(acquisition)
    function(acquisition)
    assert snapshot(acquisition) == before
