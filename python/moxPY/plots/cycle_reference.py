"""What is usual over the gait cycle, as it is given to pictures."""

from __future__ import annotations

from collections.abc import Mapping
from typing import Any

import numpy as np

from ..trial.samples import FloatArray


def reference_of(given: Mapping[str, Any] | None) -> dict[str, tuple[FloatArray, FloatArray]]:
    """Mean and deviation by label, each of shape (instants, 3).

    Raises
    ------
    ValueError
        One has another shape, or its parts differ.
    TypeError
        `given` is no mapping, or a reference no pair.
    """
    if given is None:
        return {}
    if not isinstance(given, Mapping):
        raise TypeError(f"reference is a mapping of labels, not {type(given).__name__}")
    return {label: _band(label, band) for label, band in given.items()}


def _band(label: str, band: Any) -> tuple[FloatArray, FloatArray]:
    try:
        mean, deviation = (np.asarray(part, dtype=np.float64) for part in tuple(band)[:2])
    except (TypeError, ValueError):
        raise TypeError(
            f"the reference of '{label}' is a MeanCycle or a pair of mean and deviation"
        ) from None
    if mean.shape != deviation.shape or mean.ndim != 2 or mean.shape[1] != 3 or len(mean) < 2:
        raise ValueError(
            f"the reference of '{label}': expected a mean and a deviation of shape (instants, 3), "
            f"got {mean.shape} and {deviation.shape}"
        )
    return mean, deviation
