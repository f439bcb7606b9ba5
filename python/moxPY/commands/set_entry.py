"""Giving an entry of the metadata the value that was typed."""

from __future__ import annotations

from collections.abc import Iterable
from typing import Any

import numpy as np

from ..trial import Entry, Trial
from .parse import Setting


def set_entry(trial: Trial, setting: Setting) -> None:
    """Change an entry, which keeps its type, or make one.

    Names of groups and entries that there are may be typed in letters of either case. An entry
    that holds several values gets those between commas. A new one is of numbers if all between
    commas are numbers, else one text.

    Raises
    ------
    ValueError
        The text is no value of the entry's type, or has another count than a table's cells.
    """
    name = _spelt(setting.group, trial.metadata)
    group = trial.metadata.get(name)
    if group is None:
        trial.metadata[name] = {setting.entry: _new_value(setting.text)}
        return
    entry = _spelt(setting.entry, group)
    what = f"--set {name}:{entry}"
    if entry in group:
        group[entry] = _value_of(group.entry(entry), setting.text, what)
    else:
        group[entry] = _new_value(setting.text)


def _spelt(name: str, known: Iterable[str]) -> str:
    """The name as the file spells it."""
    names = list(known)
    if name in names:
        return name
    alike = [each for each in names if each.casefold() == name.casefold()]
    return alike[0] if len(alike) == 1 else name


def _value_of(entry: Entry, text: str, what: str) -> Any:
    """The typed value for an entry, with the dimensions that it has."""
    if entry.type == "Char":
        if len(entry.shape) > 1:
            raise ValueError(f"{what}: texts in a table of {_shown(entry.shape)} are not typed")
        return text.split(",") if entry.shape else text
    numbers = _numbers(text)
    if numbers is None:
        raise ValueError(f"{what}: expected numbers, got '{text}'")
    if not entry.shape:
        if len(numbers) != 1:
            raise ValueError(f"{what}: expected one number, got '{text}'")
        return numbers[0]
    if len(entry.shape) == 1:
        return numbers
    if len(numbers) != np.prod(entry.shape):
        raise ValueError(
            f"{what}: expected {np.prod(entry.shape)} numbers ({_shown(entry.shape)}), "
            f"got {len(numbers)}"
        )
    return np.reshape(numbers, entry.shape)


def _new_value(text: str) -> Any:
    numbers = _numbers(text)
    if numbers is None:
        return text
    return numbers[0] if len(numbers) == 1 else numbers


def _numbers(text: str) -> list[int] | list[float] | None:
    """The numbers between commas: whole ones, or real ones; None where one is no number."""
    for kind in (int, float):
        try:
            return [kind(part) for part in text.split(",")]
        except ValueError:
            continue
    return None


def _shown(shape: tuple[int, ...]) -> str:
    return " by ".join(map(str, shape))
