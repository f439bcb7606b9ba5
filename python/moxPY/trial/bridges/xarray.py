"""Data sets of xarray."""

from __future__ import annotations

import json
from dataclasses import asdict
from typing import TYPE_CHECKING, Any

import numpy as np

from ..extras import require
from ..partial import measured_platforms
from .tables import AXES

if TYPE_CHECKING:
    import xarray  # type: ignore[import-untyped, import-not-found, unused-ignore]

    from ..channels import Channels
    from ..trial import Trial

_POINTS = ("markers", "angles", "forces", "moments", "powers")


def to_xarray(trial: Trial) -> xarray.Dataset:
    """The trial as a data set with a variable for each kind of channels.

    Returns
    -------
    xarray.Dataset
        ``markers``, ``angles``, ``forces``, ``moments``, ``powers`` over (``time``, ``marker``,
        ``axis``), (``time``, ``angle``, ``axis``) …, ``analogs`` over (``analog_time``,
        ``analog``), and ``platform_force``, ``platform_moment``, ``platform_point`` over
        (``analog_time``, ``platform``, ``axis``), as `Platform.wrench` gives them; without those
        that the trial has none of. Times are seconds on the trial's clock. The unit of a variable
        is its attribute ``units`` where it has one; that of each label is a coordinate
        ``marker_unit``, ``analog_unit`` …

        Attributes of the set: ``rate``, ``analog_rate``, ``first_frame`` and ``events``, which is
        JSON, so that everything can be stored as netCDF.

    Raises
    ------
    ImportError
        xarray is not installed.

    Examples
    --------
    >>> data = trial.to_xarray()
    >>> data.markers.sel(marker="LASI", axis="z").mean("time").attrs["units"]
    'mm'
    """
    packaged = require("xarray")
    variables: dict[str, Any] = {}
    coordinates: dict[str, Any] = {
        "time": ("time", trial.time, {"units": "s"}),
        "analog_time": ("analog_time", trial.analogs.time, {"units": "s"}),
        "axis": list(AXES),
    }
    for kind in _POINTS:
        _add(variables, coordinates, kind, getattr(trial, kind), ("time", "axis"))
    _add(variables, coordinates, "analogs", trial.analogs, ("analog_time",))
    _add_platforms(variables, coordinates, trial)
    attributes = {
        "rate": trial.rate,
        "analog_rate": trial.analogs.rate,
        "first_frame": trial.first_frame,
        "events": json.dumps([asdict(event) for event in trial.events]),
    }
    data: xarray.Dataset = packaged.Dataset(variables, coordinates, attributes)
    return data


def _add(
    variables: dict[str, Any],
    coordinates: dict[str, Any],
    kind: str,
    channels: Channels,
    dimensions: tuple[str, ...],
) -> None:
    units = list(channels.units.values())
    if not units:
        return
    label = kind.removesuffix("s")
    coordinates[label] = channels.labels
    coordinates[f"{label}_unit"] = (label, units)
    variables[kind] = (
        (dimensions[0], label, *dimensions[1:]),
        channels.values,
        _units(units),
    )


def _add_platforms(variables: dict[str, Any], coordinates: dict[str, Any], trial: Trial) -> None:
    wrenches = [plate.wrench() for plate in measured_platforms(trial)]
    if not wrenches:
        return
    coordinates["platform"] = np.arange(len(wrenches))
    for part in ("force", "moment", "point"):
        variables[f"platform_{part}"] = (
            ("analog_time", "platform", "axis"),
            np.stack([getattr(wrench, part) for wrench in wrenches], axis=1),
            _units([getattr(wrench.units, part) for wrench in wrenches]),
        )


def _units(units: list[str]) -> dict[str, str]:
    """The unit as an attribute, where all have one."""
    return {"units": units[0]} if len(set(units)) == 1 else {}
