"""What is asked of a file of another format."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Literal

Axis = Literal["x", "y", "z"]
Side = Literal["measured", "person", "plate"]


@dataclass(frozen=True, kw_only=True, slots=True)
class Options:
    """How a trial is turned, scaled and cut into files; without options nothing is.

    What is asked for is stated in the file, as far as its format has a place for it.
    """

    up: Axis | None = None  #: the axis that points upwards; None: as the trial has it
    units: tuple[str, str, str] | None = None  #: of lengths, forces, moments; None: the trial's
    threshold: float = 20.0  #: the least force of a contact, in the unit that is written
    side: Side = "measured"  #: whom forces act on: as the channels say, the person, the plate
    feet: bool = False  #: forces by the foot that is nearer, right and left, not by platform
    long: bool = False  #: tables with a row a number instead of a row a frame
    parts: tuple[str, ...] | None = None  #: the parts of a trial that are written; None: all
