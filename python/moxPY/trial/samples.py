"""What counts as samples when something is assigned to a channel or to a kind."""

from __future__ import annotations

import contextlib
import math
from collections.abc import Sequence
from typing import Any

import numpy as np
from numpy.typing import NDArray

FloatArray = NDArray[np.float64]


def samples_of(value: Any, shape: tuple[int, ...], axes: Sequence[str], what: str) -> FloatArray:
    """Numbers as a float64 array of exactly one shape.

    Parameters
    ----------
    value : array_like
        Anything that NumPy makes an array of numbers from: lists, data frames, masked arrays (NaN
        where masked), channels.
    shape : tuple of int
        The shape that it must have.
    axes : sequence of str
        What each axis counts, for the message: ``("frames", "3")``.
    what : str
        What the values are for, for the message.

    Raises
    ------
    TypeError
        The values are no real numbers.
    ValueError
        The shape is another one; the message says both.
    """
    try:
        array = np.ma.asanyarray(value) if np.ma.isMaskedArray(value) else np.asarray(value)
    except ValueError as error:  # lists of unequal lengths
        raise ValueError(f"{what}: {error}") from None
    if array.dtype.kind not in "fiub" and array.size > 0:
        array = _from_objects(value, array, what)
    if array.shape != shape:
        counted = ", ".join(axes) + ("," if len(axes) == 1 else "")
        raise ValueError(
            f"{what}: expected an array of shape ({counted}) = {shape}, got {array.shape}"
        )
    numbers = array.astype(np.float64)
    if isinstance(numbers, np.ma.MaskedArray):
        numbers = numbers.filled(np.nan)
    return np.ascontiguousarray(numbers)


def as_matrix(array: FloatArray) -> FloatArray:
    """A row a sample and a column a component, without frames, too."""
    return array.reshape(len(array), math.prod(array.shape[1:]))


def _from_objects(value: Any, array: NDArray[Any], what: str) -> NDArray[Any]:
    """The numbers of an array of objects, which data frames with missing values give."""
    if array.dtype.kind == "O":
        for numbers_of in (
            lambda: array.astype(np.float64),
            lambda: value.to_numpy(dtype=np.float64, na_value=np.nan),  # a data frame of pandas
        ):
            with contextlib.suppress(AttributeError, TypeError, ValueError):
                numbers: NDArray[Any] = numbers_of()
                return numbers
    raise TypeError(f"{what}: expected real numbers, got {array.dtype.name}")


def instants(first: int, count: int, rate: float) -> FloatArray:
    """The instants of some ticks of a clock, read-only; tick 0 is at 0 s. NaN without a rate.

    Parameters
    ----------
    first, count : int
        The first tick, and how many there are.
    rate : float
        Ticks a second.
    """
    ticks = np.arange(first, first + count, dtype=np.float64)
    return read_only(ticks / (rate if rate > 0.0 else math.nan))


def read_only(array: FloatArray) -> FloatArray:
    """The array, protected against writing, which would change nothing but the array."""
    array.flags.writeable = False
    return array
