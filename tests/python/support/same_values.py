"""Results compared strictly: types, order of dictionaries, element types and shapes of arrays."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from .model.state import Anything


def require_same(actual: Any, expected: Any, where: str) -> None:
    """Fails with the place of the first difference; NaN is equal to NaN."""
    if isinstance(expected, Anything):
        assert type(actual) is expected.kind, where
        return
    assert type(actual) is type(expected), f"{where}: {actual!r} is no {type(expected).__name__}"
    if isinstance(expected, dict):
        assert list(actual) == list(expected), f"{where}: keys {list(actual)}, not {list(expected)}"
        for key, value in expected.items():
            require_same(actual[key], value, f"{where}[{key!r}]")
    elif isinstance(expected, list):
        assert len(actual) == len(expected), f"{where}: {actual!r} is not {expected!r}"
        for place, value in enumerate(expected):
            require_same(actual[place], value, f"{where}[{place}]")
    elif isinstance(expected, np.ndarray):
        _require_same_array(actual, expected, where)
    elif isinstance(expected, float) and math.isnan(expected):
        assert math.isnan(actual), f"{where}: {actual!r} is not NaN"
    else:
        assert actual == expected, f"{where}: {actual!r} is not {expected!r}"


def _require_same_array(actual: Any, expected: Any, where: str) -> None:
    assert actual.dtype == expected.dtype, f"{where}: {actual.dtype}, not {expected.dtype}"
    assert actual.shape == expected.shape, f"{where}: {actual.shape}, not {expected.shape}"
    if expected.ndim:  # without channels there is an array without dimensions, whatever it holds
        same = np.array_equal(actual, expected, equal_nan=True)
        assert same, f"{where}:\n{actual}\nis not\n{expected}"
