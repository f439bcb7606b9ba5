"""A trial as the options want it."""

from __future__ import annotations

from typing import TYPE_CHECKING

from .options import Options

if TYPE_CHECKING:
    from ..trial import Trial


def prepared(trial: Trial, options: Options) -> Trial:
    """The trial in the axes and units that are asked for; itself where nothing is.

    Raises
    ------
    ValueError
        Nothing tells which axis points upwards, or a unit is unknown.
    """
    if options.units is not None:
        trial = trial.in_units(*options.units)
    if options.up is None:
        return trial
    return {"x": trial.x_up, "y": trial.y_up, "z": trial.z_up}[options.up]()
