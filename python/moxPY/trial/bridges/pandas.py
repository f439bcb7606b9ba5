"""Data frames of pandas."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from ..extras import require
from .tables import (
    Table,
    What,
    event_columns,
    event_types,
    long_columns,
    require_known,
    table_of,
)

if TYPE_CHECKING:
    import pandas  # type: ignore[import-untyped, import-not-found, unused-ignore]

    from ..trial import Trial


def to_pandas(trial: Trial, what: What = "markers", *, long: bool = False) -> pandas.DataFrame:
    """A data frame of one kind of channels, of the events or of the platforms.

    Parameters
    ----------
    what : str
        ``"markers"``, ``"angles"``, ``"forces"``, ``"moments"``, ``"powers"``, ``"points"`` (all of
        these), ``"analogs"``, ``"events"`` or ``"platforms"``.
    long : bool
        A row a number instead of a row a frame (of analogs and platforms: a row a sample).

    Returns
    -------
    pandas.DataFrame
        Its index is the time in seconds, and its columns are label and axis, of analogs the label;
        of platforms the number, ``"force"``, ``"moment"`` or ``"point"``, and the axis, as
        `Platform.wrench` gives them. A long one has columns ``time``, those names and ``value``.
        Of events it has a row each, with the fields of `Event` as columns. ``attrs["units"]`` has
        the unit of each label, of platforms those of each.

    Raises
    ------
    ImportError
        pandas is not installed.
    ValueError
        There is no such kind.

    Examples
    --------
    >>> frame = trial.to_pandas("markers")
    >>> frame["LASI"].columns.to_list()
    ['x', 'y', 'z']
    """
    require_known(what)
    packaged = require("pandas")
    if what == "events":
        frame: pandas.DataFrame = packaged.DataFrame(event_columns(trial)).astype(event_types())
        frame.attrs["units"] = {"time": "s"}
        return frame
    table = table_of(trial, what)
    if long:
        frame = packaged.DataFrame(long_columns(table))
        texts = {level: str for level in table.levels if level != "platform"}
        frame = frame.astype(texts)
    else:
        index = packaged.Index(table.time, name="time")
        frame = packaged.DataFrame(table.values, index=index, columns=_names(packaged, table))
    frame.attrs["units"] = table.units
    return frame


def _names(packaged: Any, table: Table) -> Any:
    if len(table.levels) == 1:
        labels = [label for (label,) in table.columns]
        return packaged.Index(labels, name=table.levels[0], dtype=str)
    if not table.columns:
        return packaged.MultiIndex.from_arrays([[] for _ in table.levels], names=table.levels)
    return packaged.MultiIndex.from_tuples(table.columns, names=table.levels)
