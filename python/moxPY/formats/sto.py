"""STO: any part that is numbers over time, for OpenSim; a file a part."""

from __future__ import annotations

from typing import TYPE_CHECKING

from ..trial.kinds import KINDS
from .about import about
from .options import Options
from .part import Part, chosen, part_of
from .storage import save
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """Columns called as ``LASI_x``, ``nan`` where a point was not seen."""
    for name in chosen(trial, options, (*KINDS, "platforms"), "STO"):
        part = part_of(trial, name, options)
        facts = about(trial, options)
        asked = ("up", "side", "threshold") if name == "platforms" else ("up",)
        said = {**{key: facts[key] for key in asked}, **_units(part)}
        place = target.path(name)
        save(
            place,
            place.stem,
            said,
            part.names("_"),
            part.rate,
            part.time,
            part.values,
            in_degrees="deg" in part.units,
        )


def _units(part: Part) -> dict[str, str]:
    """The unit of all columns, or of each channel where they differ."""
    if len(set(part.units)) == 1:
        return {"unit": part.units[0]}
    names = part.names("_")
    if part.levels[-1] == "axis":  # the three of a channel have one unit
        names = [name[:-2] for name in names]
    return {f"unit_{name}": unit for name, unit in zip(names, part.units, strict=True)}
