"""What is typed behind options: texts that become values."""

from __future__ import annotations

import math
import re
from typing import NamedTuple

import click

from ..trial.units import parse_unit


class Stretch(NamedTuple):
    """What `Trial.crop` takes: frames or seconds, an open end is None."""

    first: int | None = None
    last: int | None = None
    start: float | None = None
    stop: float | None = None


class Setting(NamedTuple):
    """An entry of the metadata and what is typed for it."""

    group: str
    entry: str
    text: str


def stretch(text: str) -> Stretch:
    """``1.0:3.5`` in seconds, ``f100:f250`` in frames."""
    ends = text.split(":")
    if len(ends) != 2 or not any(ends):
        raise click.BadParameter(
            f"'{text}' is no stretch such as 1.0:3.5 (seconds) or f100:f250 (frames)"
        )
    if all(re.fullmatch(r"(f\d+)?", end) for end in ends):
        first, last = (int(end[1:]) if end else None for end in ends)
        _require_order(text, first, last)
        return Stretch(first, last)
    if any(end.startswith("f") for end in ends):
        raise click.BadParameter(
            f"'{text}': both ends are frames (f100:f250), or both are seconds (1.0:3.5)"
        )
    try:
        start, stop = (float(end) if end else None for end in ends)
    except ValueError:
        raise click.BadParameter(f"'{text}': a time is in seconds, such as 1.5") from None
    if not all(end is None or math.isfinite(end) for end in (start, stop)):
        raise click.BadParameter(f"'{text}': a time is in seconds, such as 1.5")
    _require_order(text, start, stop)
    return Stretch(start=start, stop=stop)


def _require_order(text: str, first: float | None, last: float | None) -> None:
    if first is not None and last is not None and first > last:
        raise click.BadParameter(f"'{text}' ends before it begins")


def pair(text: str) -> tuple[str, str]:
    """``OLD=NEW``"""
    old, _, new = text.partition("=")
    if not (old and new):
        raise click.BadParameter(f"'{text}' is no pair of labels such as LASI=LeftHip")
    return old, new


def setting(text: str) -> Setting:
    """``GROUP:ENTRY=VALUE``"""
    name, equals, value = text.partition("=")
    group, _, entry = name.partition(":")
    if not (equals and group and entry):
        raise click.BadParameter(f"'{text}' is no entry and value such as SUBJECTS:NAMES=Ann")
    return Setting(group, entry, value)


def units(text: str) -> tuple[str, str, str]:
    """``m,N,Nm``: of lengths, forces and moments."""
    names = text.split(",")
    if len(names) != 3:
        raise click.BadParameter(
            f"'{text}': units are three, of lengths, forces and moments, such as m,N,Nm"
        )
    for name, quantity in zip(names, ("length", "force", "moment"), strict=True):
        unit = parse_unit(name)
        if unit is None or unit.quantity != quantity or unit.per:
            raise click.BadParameter(f"'{name}' is no known unit of a {quantity}")
    return names[0], names[1], names[2]


def number(text: str) -> tuple[str, float]:
    """``NAME=NUMBER``"""
    name, equals, value = text.partition("=")
    try:
        if equals:
            return name, float(value)
    except ValueError:
        pass
    raise click.BadParameter(f"'{text}' is no number for a name such as x=0.5")


def tolerance(text: str) -> tuple[str, float]:
    """``0.5``, which has an empty name, or ``markers=0.5``"""
    try:
        return number(text if "=" in text else f"={text}")
    except click.BadParameter:
        raise click.BadParameter(
            f"'{text}' is no number such as 0.5, nor one for a family such as markers=0.5"
        ) from None


def rate(text: str) -> float:
    """Frames a second."""
    try:
        value = float(text)
    except ValueError:
        value = math.nan
    if not (math.isfinite(value) and value > 0.0):
        raise click.BadParameter(f"'{text}' is no rate such as 100 (frames a second)")
    return value


def words(text: str) -> tuple[str, ...]:
    """What stands between commas."""
    return tuple(text.split(","))
