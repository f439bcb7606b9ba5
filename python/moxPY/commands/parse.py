"""What is typed behind options: texts that become values."""

from __future__ import annotations

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
        return Stretch(*(int(end[1:]) if end else None for end in ends))
    if any(end.startswith("f") for end in ends):
        raise click.BadParameter(
            f"'{text}': both ends are frames (f100:f250), or both are seconds (1.0:3.5)"
        )
    try:
        start, stop = (float(end) if end else None for end in ends)
    except ValueError:
        raise click.BadParameter(f"'{text}': a time is in seconds, such as 1.5") from None
    return Stretch(start=start, stop=stop)


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
    raise click.BadParameter(f"'{text.removeprefix('=')}' is no number for a name such as x=0.5")


def words(text: str) -> tuple[str, ...]:
    """What stands between commas."""
    return tuple(text.split(","))
