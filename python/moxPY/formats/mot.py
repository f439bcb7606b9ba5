"""MOT: ground reaction forces of all platforms or of both feet, for OpenSim."""

from __future__ import annotations

from typing import TYPE_CHECKING

import numpy as np

from ..trial.wrench import Wrench
from .about import about
from .by_feet import by_feet
from .options import Options
from .part import require, require_clock
from .reaction import reactions
from .storage import save
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """Force, point and free moment, in the names of OpenSim; under the threshold all are 0.

    Raises
    ------
    ValueError
        The trial has no force platforms, one of them tells no force, or, where feet are asked for,
        nothing tells whose a contact is.
    """
    require(trial, "platforms", "which MOT needs")
    require_clock(trial)
    wrenches = reactions(trial, options)
    _require_forces(wrenches)
    if options.feet:
        named = by_feet(trial, wrenches, options.threshold)
    else:
        named = {str(number): wrench for number, wrench in enumerate(wrenches, 1)}
    columns = [name for key in named for name in _names(key)]
    arrays = [array for wrench in named.values() for array in _arrays(wrench)]
    facts = about(trial, options)
    said = {key: facts[key] for key in _SAID}
    values = np.concatenate(arrays, axis=1)
    rate = trial.analogs.rate
    save(target.path(), target.stem, said, columns, rate, wrenches[0].time, values)


_SAID = ("up", "length_unit", "force_unit", "moment_unit", "side", "threshold")


def _names(key: str) -> list[str]:
    return [
        *(f"ground_force_{key}_v{axis}" for axis in "xyz"),
        *(f"ground_force_{key}_p{axis}" for axis in "xyz"),
        *(f"ground_torque_{key}_{axis}" for axis in "xyz"),
    ]


def _arrays(wrench: Wrench) -> list[np.ndarray[tuple[int, ...], np.dtype[np.float64]]]:
    loaded = wrench.contact[:, np.newaxis]
    # Adding 0 makes -0.0 a plain zero.
    return [
        np.where(loaded, array, 0.0) + 0.0 for array in (wrench.force, wrench.point, wrench.moment)
    ]


def _require_forces(wrenches: list[Wrench]) -> None:
    for number, wrench in enumerate(wrenches, 1):
        unknown = np.isnan(wrench.force).any(axis=1)
        if len(unknown) and unknown.all():
            raise ValueError(
                f"force platform {number} tells no force: its type is unknown, or corners, "
                "channels or calibration are missing"
            )
        if unknown.any():
            time = wrench.time[int(np.argmax(unknown))]
            raise ValueError(f"force platform {number} has no number at {time:g} s")
