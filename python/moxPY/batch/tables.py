"""What a function gives of a trial, as a table of Arrow."""

from __future__ import annotations

from collections import Counter
from collections.abc import Callable, Iterable, Mapping, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ..trial import Channels, Trial
from ..trial.bridges.tables import AXES, channels_table, wide_columns
from ..trial.extras import require

if TYPE_CHECKING:
    import pandas  # type: ignore[import-untyped, import-not-found, unused-ignore]
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]


@dataclass(frozen=True)
class Tabled:
    """A function whose value is made a table while the trial is open."""

    function: Callable[[Trial], Any]

    def __call__(self, trial: Trial) -> pyarrow.Table | None:
        value = self.function(trial)
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
    (name, count), *_ = Counter(table.column_names).most_common(1) or [("", 0)]
    if count > 1:
        raise ValueError(f"{count} columns have the name '{name}'")
    return table.replace_schema_metadata(None)


def _table_of(arrow: Any, value: Any) -> pyarrow.Table:
    if isinstance(value, Channels):
        return _of_columns(arrow, wide_columns(channels_table(value, {})))
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
    names, found = [], []
    for name, values in columns.items():
        for each, part in _parts(str(name), values):
            names.append(each)
            found.append(part)
    lengths = [len(values) for values in found if not _is_single(values)]
    rows = lengths[0] if lengths else 1
    arrays = [
        arrow.repeat(arrow.scalar(values), rows) if _is_single(values) else arrow.array(values)
        for values in found
    ]
    return arrow.Table.from_arrays(arrays, names=names)


def _parts(name: str, values: Any) -> Iterable[tuple[str, Any]]:
    """A column as it is, and the three of an array (n, 3)."""
    if hasattr(values, "__array__"):
        values = np.asarray(values)
        if values.ndim == 0:
            values = values.item()
        elif values.ndim > 1:
            return _components(name, values)
    return [(name, values)]


def _components(name: str, values: NDArray[Any]) -> Iterable[tuple[str, Any]]:
    if values.ndim != 2 or values.shape[1] != len(AXES):
        raise ValueError(
            f"'{name}': an array (n,) is a column, one (n, 3) is three, this one is {values.shape}"
        )
    return [(f"{name}_{axis}", values[:, place]) for place, axis in enumerate(AXES)]


def _is_single(values: Any) -> bool:
    return isinstance(values, str | bytes) or not isinstance(values, Iterable)


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
