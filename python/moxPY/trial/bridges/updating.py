"""Channels from a data frame, wide or long, of pandas or polars."""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ..labels import require_text
from ..samples import FloatArray, samples_of
from .tables import AXES

if TYPE_CHECKING:
    from ..channels import Channels

# How far an instant may lie from that of its sample, in samples: texts round.
_TOLERANCE = 1e-3

# The components of a channel by axis; of analog channels there is one, without a name.
_Components = dict[str, FloatArray]


def update_from(channels: Channels, frame: Any) -> None:
    """Replace and append channels with the columns of a data frame.

    It takes what `Trial.to_pandas` and `Trial.to_polars` give, wide and long, and such frames that
    were stored and read again. Channels that the frame lacks stay, as do those whose samples are
    the same; a label that is new appends a channel.

    Parameters
    ----------
    frame : pandas.DataFrame or polars.DataFrame
        Wide: the time is the index or a column ``time``, the other columns are label and axis as
        two levels or as ``LASI_x``; of analogs labels. Long: ``time``, ``label``, ``axis`` (not of
        analogs) and ``value``, in any order of rows.

    Raises
    ------
    TypeError
        It is no data frame, or has other things than numbers.
    ValueError
        Its times are not those of the trial, each once, or a channel lacks an axis. Nothing has
        changed then.
    """
    times, columns = _parts_of_frame(frame)
    axes = AXES if len(channels._axes) == 3 else ("",)
    read = _from_long if {"label", "value"} <= columns.keys() else _from_wide
    found = read(channels, times, columns, axes)
    changed = {label: _joined(label, parts, axes) for label, parts in found.items()}
    for label in changed:
        require_text(label, "label")
    for label, values in changed.items():
        if label not in channels or not np.array_equal(channels[label], values, equal_nan=True):
            channels[label] = values


def _parts_of_frame(frame: Any) -> tuple[Any, dict[Any, Any]]:
    """The column of times, which may be the index, and the others by name."""
    if not hasattr(frame, "columns") or not hasattr(frame, "to_numpy"):
        raise TypeError(f"expected a data frame of pandas or polars, got {type(frame).__name__}")
    names = list(frame.columns)
    if len(set(names)) < len(names):
        raise ValueError("two columns of the frame have one name")
    columns = {name: frame[name] for name in names}
    index = getattr(frame, "index", None)
    if getattr(index, "name", None) == "time":
        return index, columns
    for name in ("time", ("time", "")):
        if name in columns:
            return columns.pop(name), columns
    raise ValueError("the frame has no column 'time', and its index is not called so")


def _from_wide(
    channels: Channels, times: Any, columns: Mapping[Any, Any], axes: tuple[str, ...]
) -> dict[str, _Components]:
    rows = _rows_of(channels, times)
    found: dict[str, _Components] = {}
    for name, column in columns.items():
        label, axis = _parts_of(name, axes)
        _place(found.setdefault(label, {}), axis, rows, _numbers(column, label), label)
    return found


def _from_long(
    channels: Channels, times: Any, columns: Mapping[Any, Any], axes: tuple[str, ...]
) -> dict[str, _Components]:
    labels = np.asarray(columns["label"], dtype=object)
    if axes == ("",):
        named = np.full(len(labels), "", dtype=object)
    elif "axis" in columns:
        named = np.asarray(columns["axis"], dtype=object)
    else:
        raise ValueError("the frame has no column 'axis'")
    times = np.asarray(times)
    values = _numbers(columns["value"], "value")
    found: dict[str, _Components] = {}
    for label, axis in dict.fromkeys(zip(labels, named, strict=True)):
        chosen = (labels == label) & (named == axis)
        rows = _rows_of(channels, times[chosen])
        _require_axis(str(label), str(axis), axes)
        _place(found.setdefault(str(label), {}), str(axis), rows, values[chosen], str(label))
    return found


def _parts_of(name: Any, axes: tuple[str, ...]) -> tuple[str, str]:
    """Label and axis of a column of a wide frame."""
    if axes == ("",):
        return str(name[0] if isinstance(name, tuple) else name), ""
    if isinstance(name, tuple):
        label, axis = (str(part) for part in name)
    else:
        label, _, axis = str(name).rpartition("_")
    _require_axis(label, axis, axes)
    return label, axis


def _require_axis(label: str, axis: str, axes: Iterable[str]) -> None:
    if axis not in axes:
        raise ValueError(f"the channel '{label}' has an axis '{axis}', expected x, y or z")


def _rows_of(channels: Channels, times: Any) -> NDArray[np.intp]:
    """The sample that each instant belongs to."""
    expected = channels._time
    times = np.asarray(times)
    if times.dtype.kind not in "fiu":
        raise TypeError(f"times are seconds, not {times.dtype.name}")
    if len(times) != len(expected):
        raise ValueError(f"the frame has {len(times)} instants, the trial {len(expected)}")
    if len(expected) == 0:
        return np.empty(0, dtype=np.intp)
    positions = (times - expected[0]) * channels._rate
    nearest_rows = np.rint(positions)
    is_near = np.abs(positions - nearest_rows) <= _TOLERANCE
    if not (is_near.all() and np.array_equal(np.sort(nearest_rows), np.arange(len(expected)))):
        raise ValueError(
            f"the instants of the frame are not those of the trial, "
            f"{expected[0]:g} s to {expected[-1]:g} s at {channels._rate:g} Hz"
        )
    rows: NDArray[np.intp] = nearest_rows.astype(np.intp)
    return rows


def _numbers(column: Any, label: str) -> FloatArray:
    return samples_of(column, (len(column),), ("rows",), f"the column of '{label}'")


def _place(
    parts: _Components, axis: str, rows: NDArray[np.intp], values: FloatArray, label: str
) -> None:
    if axis in parts:
        raise ValueError(f"the channel '{label}' has an axis '{axis}' twice")
    parts[axis] = np.empty_like(values)
    parts[axis][rows] = values


def _joined(label: str, parts: _Components, axes: tuple[str, ...]) -> FloatArray:
    if axes == ("",):
        return parts[""]
    missing = [axis for axis in axes if axis not in parts]
    if missing:
        raise ValueError(f"the channel '{label}' has no axis {', '.join(missing)} in the frame")
    return np.column_stack([parts[axis] for axis in axes])
