"""Samples in the page are those of the trial, to the precision that is stated."""

from __future__ import annotations

import numpy as np
import pytest
from moxPY.player.packing import pack
from support.page_content import numbers_of


@pytest.mark.parametrize("scale", [1e-6, 1.0, 1e4, 1e30])
@pytest.mark.parametrize("offset", [0.0, -1e5])
def test_numbers_are_within_the_stated_precision(scale: float, offset: float):
    values = np.random.default_rng(3).normal(size=(500, 3)) * scale + offset
    packed = pack(values)
    assert packed["form"] == "int16"
    off = np.abs(numbers_of(packed) - values).max()
    assert 0.0 < off <= packed["precision"]
    assert packed["precision"] <= np.ptp(values, axis=0).max() / 131_000 + 1e-10


def test_missing_samples_stay_missing_and_others_do_not():
    values = np.arange(30.0).reshape(10, 3)
    values[[0, 4, 9]] = np.nan
    values[6, 1] = np.inf
    missing = np.isnan(numbers_of(pack(values)))
    assert missing.all(axis=1).tolist() == [i in (0, 4, 6, 9) for i in range(10)]
    assert missing.any(axis=1).tolist() == missing.all(axis=1).tolist()


@pytest.mark.parametrize("frames", [0, 1, 5])
def test_nothing_and_the_same_thing_can_be_packed(frames: int):
    nothing, same = np.full((frames, 3), np.nan), np.full((frames, 3), -7.25)
    assert np.isnan(numbers_of(pack(nothing))).all()
    assert numbers_of(pack(same)).tolist() == same.tolist()


def test_samples_that_16_bits_are_too_few_for_take_32():
    values = np.array([[0.0, 0.0, 0.0], [1e6, 1.0, 123.456]])
    packed = pack(values, precision=0.1)
    assert packed["form"] == "float32"
    assert np.abs(numbers_of(packed) - values).max() <= packed["precision"] < 0.1
    assert pack(values, precision=100.0)["form"] == "int16"


def test_numbers_that_no_single_precision_holds_are_missing():
    values = np.array([[1.0, 2.0, 3.0], [1e300, -1e300, 0.0], [-1.7e308, 1.7e308, 0.0]])
    packed = pack(values, precision=0.1)
    assert np.isnan(numbers_of(packed)).all(axis=1).tolist() == [False, True, True]
