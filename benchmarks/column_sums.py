"""Fingerprints of matrices: two readers that agree on them have read the same values."""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import Any

import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.floating[Any]]
Sums = Mapping[str, Iterable[float]]

ROWS_AT_ONCE = 8192
RELATIVE_TOLERANCE = 1e-5  # some readers scale in single precision


def column_sums(matrix: Array) -> dict[str, list[float]]:
    """Of each column the number of values, their sum with weights, and the sum of magnitudes.

    The weights go from 1 to 7 and start again, so that a sample in the wrong row is noticed.
    NaN is no value. Works in blocks of rows: whatever the matrix's layout, no copy of it is made.
    """
    counts = np.zeros(matrix.shape[1])
    weighted = np.zeros(matrix.shape[1])
    magnitudes = np.zeros(matrix.shape[1])
    for start in range(0, len(matrix), ROWS_AT_ONCE):
        rows = np.asarray(matrix[start : start + ROWS_AT_ONCE], dtype=np.float64)
        known = ~np.isnan(rows)
        weights = 1.0 + np.arange(start, start + len(rows)) % 7
        rows = np.where(known, rows, 0.0) * weights[:, None]
        counts += known.sum(axis=0)
        weighted += rows.sum(axis=0)
        magnitudes += np.abs(rows).sum(axis=0)
    return {
        "counts": counts.tolist(),
        "weighted": weighted.tolist(),
        "magnitudes": magnitudes.tolist(),
    }


def agree(found: Sums, expected: Sums) -> bool:
    """Whether both fingerprints are of the same values, rounding apart."""
    counts = np.asarray(found["counts"])
    if not np.array_equal(counts, np.asarray(expected["counts"])):
        return False
    allowed = RELATIVE_TOLERANCE * np.asarray(expected["magnitudes"])
    difference = np.abs(np.asarray(found["weighted"]) - np.asarray(expected["weighted"]))
    return bool((difference <= allowed).all())
