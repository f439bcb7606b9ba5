"""Matrices of every kind that a script may hand over, right and wrong ones."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
from hypothesis import strategies as st
from stateful.picks import mostly

GOOD_FORMS = [
    "float64", "float32", "fortran", "sliced", "backwards", "big-endian", "read-only", "subclass",
    "list",
]  # fmt: skip
BAD_FORMS = [
    "row too many", "column too many", "one dimension", "three dimensions", "integers", "objects",
    "text", "nothing",
]  # fmt: skip


class Laboratory(np.ndarray):
    """A sub-class of the array."""


@dataclass(frozen=True)
class Matrix:
    """A matrix that gets its size when it is needed."""

    form: str
    start: int
    special: float | None  # stands in the last cell

    def of(self, rows: int, columns: int) -> Any:
        """The matrix for so many rows and columns, or one that does not fit."""
        if self.form in BAD_FORMS:
            return self._wrong(rows, columns)
        values = self.start + np.arange(rows * columns, dtype=np.float64).reshape(rows, columns) / 8
        if self.special is not None and values.size:
            values[-1, -1] = self.special
        return _FORMS[self.form](values)

    def _wrong(self, rows: int, columns: int) -> Any:
        shapes = {
            "row too many": (rows + 1, columns),
            "column too many": (rows, columns + 1),
            "one dimension": (rows,),
            "three dimensions": (rows, columns, 1),
        }
        if self.form in shapes:
            return np.ones(shapes[self.form])
        types = {"integers": np.int32, "objects": object, "text": "U4"}
        if self.form in types:
            return np.ones((rows, columns), dtype=types[self.form])
        return None


def _sliced(values: Any) -> Any:
    wide = np.full((2 * len(values), 2 * values.shape[1]), -1.0)
    wide[::2, ::2] = values
    return wide[::2, ::2]


def _read_only(values: Any) -> Any:
    values.flags.writeable = False
    return values


_FORMS = {
    "float64": lambda values: values,
    "float32": lambda values: values.astype(np.float32),
    "fortran": np.asfortranarray,
    "sliced": _sliced,
    "backwards": lambda values: values[::-1, ::-1].copy()[::-1, ::-1],
    "big-endian": lambda values: values.astype(">f8"),
    "read-only": _read_only,
    "subclass": lambda values: values.view(Laboratory),
    "list": lambda values: values.tolist(),
}

matrices = st.builds(
    Matrix,
    form=mostly(st.sampled_from(GOOD_FORMS), st.sampled_from(BAD_FORMS)),
    start=st.integers(0, 100),
    special=st.sampled_from([None, float("nan"), float("inf"), -0.0]),
)
