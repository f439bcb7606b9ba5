"""Two trials that are compared, and how numbers are."""

from __future__ import annotations

import math
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np
from numpy.typing import NDArray

if TYPE_CHECKING:
    from ..trial.trial import Trial


@dataclass(frozen=True, slots=True)
class Comparison:
    """Two trials, and how far numbers of a family may be apart."""

    first: Trial
    second: Trial
    tolerance: float


class Distance(NamedTuple):
    """How far two arrays of one shape are apart."""

    largest: float  #: without sign, where both are numbers; 0 without such places
    row: int  #: of the first place with it
    unequal: int  #: rows in which one differs by more than the tolerance
    one_sided: NDArray[np.intp]  #: the rows in which one of the two is NaN and the other is not


def distance(one: Any, other: Any, tolerance: float) -> Distance:
    """Compare arrays row by row. NaN is as NaN, an infinity as itself."""
    one, other = _rows(one), _rows(other)
    missing = np.isnan(one), np.isnan(other)
    one_sided = np.flatnonzero((missing[0] != missing[1]).any(axis=1))
    with np.errstate(invalid="ignore", over="ignore"):
        apart = np.abs(one - other)
    apart[(one == other) | missing[0] | missing[1]] = 0.0
    rows = apart.max(axis=1, initial=0.0)
    row = int(rows.argmax()) if len(rows) else 0
    largest = float(rows[row]) if len(rows) else 0.0
    return Distance(largest, row, int(np.count_nonzero(rows > tolerance)), one_sided)


def _rows(array: Any) -> NDArray[np.float64]:
    """A matrix with the rows of an array, without any, too."""
    numbers = np.asarray(array, dtype=np.float64)
    return numbers.reshape(len(numbers), math.prod(numbers.shape[1:]))


def number(value: float) -> str:
    """A number for texts."""
    return f"{value:.6g}"


def counted(count: int, what: str) -> str:
    """A number of things for texts, with the verb behind it: ``"1 frame differs"``."""
    return f"{count} {what} differs" if count == 1 else f"{count} {what}s differ"
