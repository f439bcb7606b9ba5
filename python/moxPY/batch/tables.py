"""What a function gives of a trial, as rows of a table."""

from __future__ import annotations

from collections import Counter
from collections.abc import Callable, Iterable, Mapping, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ..trial import Channels, Trial
from ..trial.bridges.tables import AXES
from ..trial.extras import require
from .blocks import Block

if TYPE_CHECKING:
    import pandas  # type: ignore[import-untyped, import-not-found, unused-ignore]
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]


@dataclass(frozen=True)
class Tabled:
    """A function whose value is made rows of a table while the trial is open."""

    function: Callable[[Trial], Any]

    def __call__(self, trial: Trial) -> pyarrow.Table | Block | None:
        value = self.function(trial)
        if isinstance(value, Channels):
            return Block.of(value)
        return None if value is None else arrow_table(value)


def arrow_table(value: Any) -> pyarrow.Table:
    """The table of what a function gave.

    Raises
    ------
    TypeError
        It is nothing that a table could be made of.
    ValueError
        Columns have different lengths, the same name or more than two dimensions.
    """
    table = _table_of(require("pyarrow"), value)
    names = table.schema.names
    if len(set(names)) < len(names):
        (name, count), *_ = Counter(names).most_common(1)
        raise ValueError(f"{count} columns have the name '{name}'")
    return table.replace_schema_metadata(None)


def _table_of(arrow: Any, value: Any) -> pyarrow.Table:
    if isinstance(value, Mapping):
        return _of_columns(arrow, value)
    if isinstance(value, list | tuple) and all(isinstance(row, Mapping) for row in value):
        return _of_rows(arrow, value)
    if _is_frame_of(value, "pandas"):
        return _of_pandas(arrow, value)
    if _is_frame_of(value, "polars"):
        return value.to_arrow()  # with types that others know, unlike what the frame lends
    if hasattr(value, "__arrow_c_stream__") and not hasattr(value, "name"):  # no single column
        return arrow.table(value)
    raise TypeError(
        "a table is made of a data frame, a dictionary, a list of dictionaries or channels such as "
        f"trial.markers, not of {type(value).__name__}"
    )


def _is_frame_of(value: Any, package: str) -> bool:
    kind = type(value)
    return kind.__module__.partition(".")[0] == package and kind.__name__ == "DataFrame"


def _of_columns(arrow: Any, columns: Mapping[Any, Any]) -> pyarrow.Table:
    """Columns, or one row; what is one value is that of every row."""
    names: list[str] = []
    found: list[Any] = []
    single: dict[int, Any] = {}
    for key, values in columns.items():
        name = str(key)
        if hasattr(values, "__array__"):
            values = np.asarray(values)
            if values.ndim > 1:
                names += _component_names(name, values)
                found += list(values.T)
                continue
            values = values if values.ndim else values.item()
        if isinstance(values, str | bytes) or not isinstance(values, Iterable):
            single[len(names)] = values
        names.append(name)
        found.append(values)
    lengths = [len(values) for place, values in enumerate(found) if place not in single]
    rows = lengths[0] if lengths else 1
    for place, value in single.items():
        found[place] = arrow.repeat(arrow.scalar(value), rows)
    return arrow.Table.from_arrays([_as_array(arrow, values) for values in found], names=names)


def _component_names(name: str, values: NDArray[Any]) -> list[str]:
    if values.ndim != 2 or values.shape[1] != len(AXES):
        raise ValueError(
            f"'{name}': an array (n,) is a column, one (n, 3) is three, this one is {values.shape}"
        )
    return [f"{name}_{axis}" for axis in AXES]


def _as_array(arrow: Any, values: Any) -> Any:
    return values if isinstance(values, arrow.Array | arrow.ChunkedArray) else arrow.array(values)


def _of_rows(arrow: Any, rows: Sequence[Mapping[Any, Any]]) -> pyarrow.Table:
    """A row a dictionary; what one of them lacks is null."""
    names = dict.fromkeys(name for row in rows for name in row)
    columns = [arrow.array([row.get(name) for row in rows]) for name in names]
    return arrow.Table.from_arrays(columns, names=[str(name) for name in names])


def _of_pandas(arrow: Any, frame: pandas.DataFrame) -> pyarrow.Table:
    """An index that has a name is columns, too; names of several parts are joined."""
    if any(name is not None for name in frame.index.names):
        frame = frame.reset_index()
    columns = [frame.iloc[:, place] for place in range(frame.shape[1])]
    arrays = [_of_series(arrow, column) for column in columns]
    return arrow.Table.from_arrays(arrays, names=[_joined(name) for name in frame.columns])


def _of_series(arrow: Any, series: Any) -> Any:
    # NaN stays NaN, as in columns that are arrays; everything else may lack values.
    if isinstance(series.dtype, np.dtype) and series.dtype.kind == "f":
        return arrow.array(series.to_numpy())
    return arrow.array(series, from_pandas=True)


def _joined(name: Any) -> str:
    parts = name if isinstance(name, tuple) else (name,)
    return "_".join(str(part) for part in parts if part != "")
