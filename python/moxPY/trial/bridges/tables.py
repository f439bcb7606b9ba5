"""What goes into a data frame, whichever package makes it: columns of numbers over time."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass, fields
from typing import TYPE_CHECKING, Any, Literal, get_args

import numpy as np
from numpy.typing import NDArray

from ..events import Event
from ..samples import FloatArray

if TYPE_CHECKING:
    from ..channels import Channels
    from ..trial import Trial

What = Literal[
    "markers", "angles", "forces", "moments", "powers", "points", "analogs", "events", "platforms"
]

AXES = ("x", "y", "z")


@dataclass(frozen=True, slots=True)
class Table:
    """Numbers over time, a column a component of a channel."""

    time: FloatArray  #: (rows,), seconds on the trial's clock
    levels: tuple[str, ...]  #: what each part of a column's name is: ``("label", "axis")``
    columns: list[tuple[Any, ...]]  #: the names of the columns in these parts
    values: FloatArray  #: (rows, columns)
    units: Any  #: by label; of platforms a dictionary for each


def require_known(what: str) -> None:
    """ValueError for what no frame can be made of."""
    if what not in get_args(What):
        raise ValueError(f"there are frames of {', '.join(get_args(What))}; not of '{what}'")


def table_of(trial: Trial, what: str) -> Table:
    """The table of a kind of channels or of the platforms."""
    if what == "platforms":
        return _platforms(trial)
    channels = trial.analogs if what == "analogs" else getattr(trial, what)
    return channels_table(channels, channels.units)


def channels_table(channels: Channels, units: Mapping[str, str]) -> Table:
    """The table of points or of analog channels."""
    labels, values = channels.labelled_values()
    if values.ndim == 2:
        columns: list[tuple[Any, ...]] = [(label,) for label in labels]
        return Table(channels._time, ("label",), columns, values, units)
    columns = [(label, axis) for label in labels for axis in AXES]
    matrix = values.reshape(len(values), len(columns))
    return Table(channels._time, ("label", "axis"), columns, matrix, units)


def _platforms(trial: Trial) -> Table:
    """Force, moment and point of application of each platform, as its channels give them."""
    time = trial.analogs.time
    wrenches = [plate.wrench() for plate in trial.platforms]
    parts = ("force", "moment", "point")
    columns = [(i, part, axis) for i in range(len(wrenches)) for part in parts for axis in AXES]
    arrays = [getattr(wrench, part) for wrench in wrenches for part in parts]
    values = np.concatenate(arrays, axis=1) if arrays else np.empty((len(time), 0))
    units = [wrench.units._asdict() for wrench in wrenches]
    return Table(time, ("platform", "quantity", "axis"), columns, values, units)


def wide_columns(table: Table) -> dict[str, NDArray[Any]]:
    """Columns by name, the time first."""
    return {"time": table.time, **dict(zip(wide_names(table), table.values.T, strict=True))}


def wide_names(table: Table) -> list[str]:
    """Names for columns beside one that is called ``time``; the parts are joined: ``LASI_x``.

    Raises
    ------
    ValueError
        Two would have one name.
    """
    names = ["_".join(map(str, parts)) for parts in table.columns]
    seen = {"time"}
    for name in names:
        if name in seen:
            raise ValueError(f"two columns would have the name '{name}': take the long frame")
        seen.add(name)
    return names


def long_columns(table: Table) -> dict[str, NDArray[Any]]:
    """A row a number, column by column: time, the parts of the name, value."""
    rows = len(table.time)
    named = {
        level: np.repeat(np.array([column[part] for column in table.columns], dtype=object), rows)
        for part, level in enumerate(table.levels)
    }
    if "platform" in named:
        named["platform"] = named["platform"].astype(np.int64)
    times = np.tile(table.time, len(table.columns))
    return {"time": times, **named, "value": table.values.ravel(order="F")}


def event_columns(trial: Trial) -> dict[str, list[Any]]:
    """The events, a row each, in order of time."""
    events = list(trial.events)
    return {field.name: [getattr(each, field.name) for each in events] for field in fields(Event)}


def event_types() -> dict[str, type]:
    """What each column of `event_columns` holds, without events, too."""
    texts = {field.name: str for field in fields(Event)}
    return {**texts, "time": float, "id": int}
