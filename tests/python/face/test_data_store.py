"""The handle that people hold: context manager, closing, representation."""

from __future__ import annotations

import copy
import gc
import pickle
import weakref
from collections.abc import Callable
from typing import Any

import _moxPY
import moxPY
import numpy as np
import pytest
from moxPY import data_store, moxGetPoints, moxGetPointsValues, moxNewAcquisition

CLOSED = "invalid null reference in method 'moxGetPoints', argument 3 of type 'strata::data_store'"


def test_functions_return_the_shadow_class():
    assert type(moxNewAcquisition()) is data_store
    assert type(_moxPY.moxNewAcquisition()) is data_store


def test_the_representation_tells_the_extents():
    made = moxNewAcquisition(2, 100, 3, 10)
    moxPY.moxSetFrequency(made, 119.88)
    assert repr(made) == "<data_store: 100 frames at 119.88 Hz, 2 points, 3 analog channels>"


def test_the_representation_of_a_store_that_is_no_acquisition():
    assert repr(data_store()) == "<data_store: no acquisition>"


def test_the_representation_of_a_closed_acquisition():
    made = moxNewAcquisition()
    made.close()
    assert repr(made) == "<data_store: closed>"


def test_a_handle_without_a_store_is_closed():
    bare = data_store.__new__(data_store)
    assert bare.closed
    assert repr(bare) == "<data_store: closed>"
    bare.close()


def test_a_closed_acquisition_is_refused():
    made = moxNewAcquisition(1, 10)
    made.close()
    with pytest.raises(ValueError, match="null reference") as caught:
        moxGetPoints(made)
    assert str(caught.value) == CLOSED


@pytest.mark.parametrize(
    ("call", "failure"),
    [
        (lambda nothing: moxGetPoints(nothing), ValueError),
        (lambda nothing: moxPY.moxSetFrequency(nothing, 100.0), ValueError),
        (lambda nothing: moxPY.moxGetPoint(nothing, 0), TypeError),
        (lambda nothing: moxPY.moxGetMetaData(nothing), TypeError),
        (lambda nothing: moxPY.moxSetFrameNumber(nothing, 5), TypeError),
        (lambda nothing: moxPY.moxAppendEvent(nothing, "Turn", 1.0, "General"), TypeError),
    ],
)
def test_none_and_closed_are_refused_as_the_package_says(
    call: Callable[[Any], Any], failure: type[Exception]
):
    with pytest.raises(failure) as caught:
        call(None)
    assert type(caught.value) is failure
    closed = moxNewAcquisition(1, 10)
    closed.close()
    with pytest.raises(ValueError, match="null reference"):
        call(closed)
    with pytest.raises(TypeError):
        call("walk.c3d")


def test_closing_twice_is_no_error():
    made = moxNewAcquisition()
    made.close()
    made.close()
    assert made.closed


def test_closing_after_deleting_is_no_error():
    made = moxNewAcquisition()
    _moxPY.delete_data_store(made)
    made.close()
    assert made.closed


def test_the_with_block_closes():
    with moxNewAcquisition(1, 10) as made:
        assert not made.closed
    assert made.closed


def test_the_with_block_closes_and_lets_failures_pass():
    with pytest.raises(KeyError), moxNewAcquisition(1, 10) as made:
        raise KeyError
    assert made.closed


def test_arrays_outlive_the_acquisition():
    with moxNewAcquisition(2, 10) as made:
        values = moxGetPointsValues(made)
    assert np.array_equal(values, np.zeros((10, 6)))


def test_the_functions_close_and_delete_leave_the_acquisition_open():
    made = moxNewAcquisition(1, 10)
    moxPY.moxCloseAcquisition(made)
    moxPY.moxDeleteAcquisition(made)
    assert moxPY.moxGetPointFrameNumber(made) == 10.0


def test_an_acquisition_goes_with_its_last_reference():
    made = moxNewAcquisition(1, 10)
    gone = weakref.ref(made)
    del made
    gc.collect()
    assert gone() is None


def test_a_copied_handle_is_of_the_same_acquisition():
    made = moxNewAcquisition(1, 10)
    other = copy.copy(made)
    moxPY.moxSetFrequency(made, 50)
    assert moxPY.moxGetPointFrequency(other) == 50.0


def test_a_handle_cannot_be_pickled():
    with pytest.raises(TypeError, match="cannot pickle"):
        pickle.dumps(moxNewAcquisition())


@pytest.mark.parametrize("name", sorted(set(moxPY.__all__) - {"data_store"}))
def test_the_face_calls_the_function_of_its_name(name: str, monkeypatch: pytest.MonkeyPatch):
    called = []
    monkeypatch.setattr(_moxPY, name, lambda *arguments: called.append(arguments))
    given = {
        "moxGetVersion": (),
        "moxNewAcquisition": (1, 2, 3, 4),
        "moxSetFrameNumber": ("acquisition", 5, 6),
        "reload": (),
        "unload": (),
    }
    parameters = getattr(moxPY, name).__code__.co_varnames
    arguments = given.get(name, parameters[: getattr(moxPY, name).__code__.co_argcount])
    getattr(moxPY, name)(*arguments)
    assert called == [arguments]


def test_the_ratio_is_left_alone_when_only_the_frames_are_set():
    made = moxNewAcquisition(1, 10, 1, 4)
    moxPY.moxSetFrameNumber(made, 20)
    assert moxPY.moxGetAnalogSampleNumberPerFrame(made) == 4.0
    assert moxPY.moxGetAnalogFrameNumber(made) == 80.0
