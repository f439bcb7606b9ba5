"""Numbers as lines of text, many and fast."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np

from ..trial.samples import FloatArray

_NUMBERS_AT_ONCE = 200_000


def rows(matrix: FloatArray, separator: str, missing: str) -> Iterator[str]:
    """The rows of a matrix, each number with as many digits as give it back.

    Parameters
    ----------
    separator : str
        What stands between numbers.
    missing : str
        What stands for NaN.
    """
    at_once = max(1, _NUMBERS_AT_ONCE // max(1, matrix.shape[1]))
    for start in range(0, len(matrix), at_once):
        block = matrix[start : start + at_once]
        # Lists write their numbers faster than any loop over them.
        lines = [repr(row)[1:-1].replace(", ", separator) for row in block.tolist()]
        if np.isnan(block).any():
            lines = [line.replace("nan", missing) for line in lines]
        yield from lines


def with_time(time: FloatArray, values: FloatArray) -> FloatArray:
    """The values behind a first column with the time."""
    return np.column_stack([time, values])
