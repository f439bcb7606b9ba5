"""What is asked of a file of another format."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import Any, Literal, get_args

from ..trial.kinds import KINDS

Axis = Literal["x", "y", "z"]
Side = Literal["measured", "person", "plate"]

#: The parts of a trial that files hold, in the order in which they are written.
PARTS = ("trial", *KINDS, "platforms", "rotations", "events")


@dataclass(frozen=True, kw_only=True, slots=True)
class Options:
    """How a trial is turned, scaled and cut into files; without options nothing is.

    What is asked for is stated in the file, as far as its format has a place for it.

    Raises
    ------
    ValueError
        An axis, a side or a part is none of the words, or the threshold is negative or NaN.
    """

    up: Axis | None = None  #: the axis that points upwards; None: as the trial has it
    units: tuple[str, str, str] | None = None  #: of lengths, forces, moments; None: the trial's
    threshold: float = 20.0  #: the least force of a contact, in the unit that is written
    side: Side = "measured"  #: whom forces act on: as the channels say, the person, the plate
    feet: bool = False  #: forces by the foot that is nearer, right and left, not by platform
    long: bool = False  #: tables with a row a number instead of a row a frame
    parts: Sequence[str] | None = None  #: the parts of a trial that are written; None: all

    def __post_init__(self) -> None:
        if self.up is not None:
            _require_word(self.up, "axis", get_args(Axis))
        _require_word(self.side, "side", get_args(Side))
        if not self.threshold >= 0.0:
            raise ValueError(f"a threshold is a number that is not negative, not {self.threshold}")
        for name, many in (("units", self.units), ("parts", self.parts)):
            if isinstance(many, str):  # which is a sequence of letters
                raise ValueError(f"{name} are a list of texts, not the one text '{many}'")
        if self.units is not None and len(self.units) != 3:
            raise ValueError(
                f"units are three, of lengths, forces and moments; got {len(self.units)}"
            )
        for part in self.parts or ():
            _require_word(part, "part", PARTS)


def _require_word(word: Any, what: str, words: Sequence[str]) -> None:
    if word not in words:
        raise ValueError(f"there is no {what} '{word}'; there are {', '.join(words)}")
