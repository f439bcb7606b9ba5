"""A refused call of any modifier leaves the whole acquisition as it was, bit for bit."""

from __future__ import annotations

from typing import Any

import _moxPY
import pytest
from invariants.refused_calls import ALL, MANY, NO_ACQUISITIONS
from support.failures import failure_of
from support.interface import REGISTERED
from support.store_tree import snapshot

MODIFIERS = [
    function
    for function in REGISTERED
    if function.name.startswith(("moxSet", "moxAppend", "moxRemove", "moxClear"))
]


@pytest.mark.parametrize("family", ALL)
def test_nothing_is_changed_by_a_refused_call(any_trial: Any, family: str) -> None:
    before = snapshot(any_trial)
    for function, arguments in ALL[family]:
        failure_of(getattr(_moxPY, function), any_trial, *arguments)
        assert snapshot(any_trial) == before, f"{function}{arguments}"


def test_every_modifier_is_refused_somewhere() -> None:
    refused = {function for calls in ALL.values() for function, _ in calls}
    assert refused >= {function.name for function in MODIFIERS}


@pytest.mark.parametrize("function", MODIFIERS, ids=str)
def test_arguments_of_wrong_types_change_nothing(rich_trial: Any, function: Any) -> None:
    before = snapshot(rich_trial)
    for count in range(9):
        raised, _ = failure_of(function, rich_trial, *[object()] * (count + 1))
        assert raised in (TypeError, RuntimeError)
        assert snapshot(rich_trial) == before


@pytest.mark.parametrize("no_acquisition", NO_ACQUISITIONS, ids=lambda value: type(value).__name__)
@pytest.mark.parametrize("family", ALL)
def test_what_is_no_acquisition_is_refused(family: str, no_acquisition: Any) -> None:
    for function, arguments in ALL[family]:
        raised, _ = failure_of(getattr(_moxPY, function), no_acquisition, *arguments)
        assert raised in (TypeError, ValueError)


def test_frames_without_end_are_refused_where_there_are_channels(rich_trial: Any) -> None:
    before = snapshot(rich_trial)
    raised, _ = failure_of(_moxPY.moxSetFrameNumber, rich_trial, 2**31 - 1)
    assert raised is MemoryError
    assert snapshot(rich_trial) == before


def test_a_ratio_is_refused_where_there_are_analog_channels(rich_trial: Any) -> None:
    before = snapshot(rich_trial)
    text = (
        "Impossible to modify of the number of analog samples per 3D frames when the acquisition "
        "already contains analog channels."
    )
    for function, arguments in (
        (_moxPY.moxSetAnalogSampleNumberPerFrame, (3,)),
        (_moxPY.moxSetFrameNumber, (MANY, 3)),
    ):
        assert failure_of(function, rich_trial, *arguments) == (RuntimeError, text)
        assert snapshot(rich_trial) == before
