"""The parameters of two trials."""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any

import numpy as np

from ..trial.metadata import Entry, MetadataGroup
from .comparison import Comparison, distance
from .difference import Aspect, Difference


def metadata(compared: Comparison) -> Iterator[Difference]:
    """Groups and entries by their names, in whatever order: types, shapes, values, descriptions and
    locks."""
    one, other = compared.first.metadata, compared.second.metadata
    for name in dict.fromkeys([*one, *other]):
        if name not in other:
            yield _plain(name, "only first", "only the first trial has it")
        elif name not in one:
            yield _plain(name, "only second", "only the second trial has it")
        else:
            yield from _groups(name, one[name], other[name], compared.tolerance)


def _groups(
    name: str, one: MetadataGroup, other: MetadataGroup, tolerance: float
) -> Iterator[Difference]:
    if one.description != other.description:
        yield _plain(name, "description", f"{one.description!r} and {other.description!r}")
    for entry in dict.fromkeys([*one, *other]):
        key = f"{name}:{entry}"
        if entry not in other:
            yield _plain(key, "only first", "only the first trial has it")
        elif entry not in one:
            yield _plain(key, "only second", "only the second trial has it")
        else:
            yield from _entries(key, one.entry(entry), other.entry(entry), tolerance)


def _entries(key: str, one: Entry, other: Entry, tolerance: float) -> Iterator[Difference]:
    if one.type != other.type:
        yield _plain(key, "type", f"{one.type} and {other.type}")
    elif one.shape != other.shape:
        yield _plain(key, "shape", f"{one.shape} and {other.shape}")
    elif one.type == "Char":
        if one.value != other.value:
            yield _plain(key, "values", _texts_that_differ(one.value, other.value))
    else:
        yield from _numbers(key, one.value, other.value, tolerance)
    if one.description != other.description:
        yield _plain(key, "description", f"{one.description!r} and {other.description!r}")
    if one.locked != other.locked:
        text = "locked in the first trial only" if one.locked else "locked in the second trial only"
        yield _plain(key, "lock", text)


def _numbers(key: str, one: Any, other: Any, tolerance: float) -> Iterator[Difference]:
    first = np.asarray(one, dtype=np.float64).reshape(-1)
    second = np.asarray(other, dtype=np.float64).reshape(-1)
    apart = distance(first, second, tolerance)
    if not apart.unequal and not len(apart.one_sided):
        return
    row = apart.row if apart.unequal else int(apart.one_sided[0])
    text = f"{first[row]:.9g} and {second[row]:.9g}"
    if first.size > 1:
        text += f", number {row + 1} of {first.size}"
    largest = apart.largest if apart.unequal else None
    yield Difference(family="metadata", channel=key, aspect="values", text=text, largest=largest)


def _texts_that_differ(one: Any, other: Any) -> str:
    """The first pair of texts that are not equal."""
    if isinstance(one, str):
        return f"{_brief(one)} and {_brief(other)}"
    first, second = np.asarray(one, dtype=object).ravel(), np.asarray(other, dtype=object).ravel()
    row = next(
        index for index, pair in enumerate(zip(first, second, strict=True)) if pair[0] != pair[1]
    )
    return f"{_brief(first[row])} and {_brief(second[row])}, text {row + 1} of {len(first)}"


def _brief(text: str) -> str:
    shown = repr(text)
    return shown if len(shown) <= 40 else f"{shown[:38]}…'"


def _plain(key: str, aspect: Aspect, text: str) -> Difference:
    return Difference(family="metadata", channel=key, aspect=aspect, text=text)
