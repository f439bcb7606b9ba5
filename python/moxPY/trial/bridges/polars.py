"""Data frames of polars."""

from __future__ import annotations

from typing import TYPE_CHECKING

from ..extras import require
from .tables import (
    What,
    event_columns,
    event_types,
    long_columns,
    require_known,
    table_of,
    wide_columns,
)

if TYPE_CHECKING:
    import polars  # type: ignore[import-untyped, import-not-found, unused-ignore]

    from ..trial import Trial


def to_polars(trial: Trial, what: What = "markers", *, long: bool = False) -> polars.DataFrame:
    """A data frame of polars, which has no index: the first column is ``time``.

    Parameters
    ----------
    what, long
        As of `to_pandas`.

    Returns
    -------
    polars.DataFrame
        Its columns are called ``LASI_x`` by label and axis, of analogs by label, of platforms
        ``0_force_x``; a long one is as `to_pandas` has it. Units are in ``trial.markers.units``.

    Raises
    ------
    ImportError
        polars is not installed.
    ValueError
        There is no such kind, or a channel is called ``time``: ask for the long frame then.

    Examples
    --------
    >>> trial.to_polars("angles").columns[:2]
    ['time', 'LPelvisAngles_x']
    """
    require_known(what)
    packaged = require("polars")
    if what == "events":
        frame: polars.DataFrame = packaged.DataFrame(event_columns(trial), schema=event_types())
        return frame
    table = table_of(trial, what)
    if long:
        types = {level: int if level == "platform" else str for level in table.levels}
        schema = {"time": float, **types, "value": float}
        frame = packaged.DataFrame(long_columns(table), schema=schema)
    else:
        frame = packaged.DataFrame(wide_columns(table))
    return frame
