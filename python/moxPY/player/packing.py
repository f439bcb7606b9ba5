"""Samples as short texts: base64 of numbers of 16 or 32 bits, little endian."""

from __future__ import annotations

import base64
from typing import Any

import numpy as np
from numpy.typing import NDArray

# Numbers of 16 bits go from -LARGEST to LARGEST; the one below stands for a sample that is none.
LARGEST = 32767
MISSING = -32768


def pack(values: NDArray[Any], precision: float | None = None) -> dict[str, Any]:
    """Samples as the page reads them.

    Parameters
    ----------
    values : ndarray, shape (samples, components)
        A sample with a number that is not finite is one that is missing.
    precision : float, optional
        The most by which a number may be off. Where 16 bits do not reach it, it takes 32 bits.

    Returns
    -------
    dict
        ``"samples"``, the base64 of all samples of the first component, then of the second …;
        ``"precision"``, the most by which a number is off; ``"form"``. Of the form ``"int16"`` a
        number q stands for ``offset + step * q``, by component, and -32768 for a missing sample;
        of ``"float32"`` a NaN does.
    """
    rows = np.asarray(values, dtype=np.float64)
    seen = np.isfinite(rows).all(axis=1)
    known = rows[seen] if seen.any() else np.zeros((1, rows.shape[1]))
    low, high = known.min(axis=0), known.max(axis=0)
    with np.errstate(over="ignore"):  # of numbers that 16 bits are no use for
        step = (high - low) / (2 * LARGEST)
        offset = low + (high - low) / 2
    # Half a step, and what rounding in double precision adds.
    off_by = float((step / 2 * (1 + 1e-9) + np.spacing(np.abs(known).max(axis=0)) * 2).max())
    if not np.isfinite(off_by) or (precision is not None and off_by > precision):
        return _single(rows, seen)
    numbers = np.full(rows.shape, MISSING, dtype="<i2")
    divisor = np.where(step > 0.0, step, 1.0)
    numbers[seen] = np.clip(np.rint((rows[seen] - offset) / divisor), -LARGEST, LARGEST)
    return {
        "form": "int16",
        "offset": offset.tolist(),
        "step": step.tolist(),
        "precision": off_by,
        "samples": _text(numbers),
    }


def _single(rows: NDArray[np.float64], seen: NDArray[np.bool_]) -> dict[str, Any]:
    with np.errstate(over="ignore"):  # what single precision cannot hold is missing
        numbers = rows.astype("<f4")
    numbers[~(seen & np.isfinite(numbers).all(axis=1))] = np.nan
    largest = np.nanmax(np.abs(numbers), initial=0.0)
    return {
        "form": "float32",
        "precision": float(np.spacing(largest)),
        "samples": _text(numbers),
    }


def _text(numbers: NDArray[Any]) -> str:
    return base64.b64encode(np.ascontiguousarray(numbers.T).tobytes()).decode("ascii")
