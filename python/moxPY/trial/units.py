"""What the units that files name are worth."""

from __future__ import annotations

from typing import Literal, NamedTuple

Quantity = Literal["length", "force", "moment"]

# In metres and newtons, as they are written; a file's letters may be of either case.
_LENGTHS = {
    "m": 1.0,
    "dm": 0.1,
    "cm": 0.01,
    "mm": 0.001,
    "um": 1e-6,
    "µm": 1e-6,
    "in": 0.0254,
    "inch": 0.0254,
    "ft": 0.3048,
    "meter": 1.0,
    "metre": 1.0,
    "meters": 1.0,
    "metres": 1.0,
    "millimeter": 0.001,
    "millimetre": 0.001,
    "millimeters": 0.001,
    "millimetres": 0.001,
}
_FORCES = {
    "n": 1.0,
    "nt": 1.0,  # an older abbreviation
    "newton": 1.0,
    "newtons": 1.0,
    "dan": 10.0,
    "kn": 1000.0,
    "lbf": 4.4482216152605,
    "kgf": 9.80665,
}
_SEPARATORS = " .·*-⋅"
# What is no newton and no metre with these capitals.
_OTHERS = ("MN", "Mm")


class Unit(NamedTuple):
    """A unit of a length, a force or a moment."""

    quantity: Quantity
    size: float  #: in m, N or Nm
    per: str  #: what it was divided by, as ``/kg``; usually empty


def parse_unit(text: str) -> Unit | None:
    """The unit that a text names; None for one of any other quantity.

    Capitals do not matter, since files are written in both: ``NMM`` is a newton millimetre. Of a
    moment the two parts may be told apart by a blank, a point, a star or a hyphen.
    """
    name, slash, divisor = text.strip().partition("/")
    name = name.strip()
    per = slash + divisor.strip()
    if name.startswith(_OTHERS):
        return None
    name = name.lower()
    if name in _LENGTHS:
        return Unit("length", _LENGTHS[name], per)
    if name in _FORCES:
        return Unit("force", _FORCES[name], per)
    for force, size in _FORCES.items():
        length = name.removeprefix(force).strip(_SEPARATORS)
        if name.startswith(force) and length in _LENGTHS:
            return Unit("moment", size * _LENGTHS[length], per)
    return None
