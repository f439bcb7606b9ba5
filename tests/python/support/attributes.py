"""Attributes as plain values that compare."""

from __future__ import annotations

from typing import Any

from support.store_tree import Type

Plain = tuple[Type, list[int], Any]


def attributes_of(owner: dict[str, Any]) -> dict[str, Plain]:
    """Type, shape and elements of every attribute; a single value stands for itself."""
    return {name: plain(*attribute) for name, attribute in owner["attributes"].items()}


def plain(kind: int, shape: list[int], elements: Any) -> Plain:
    if not isinstance(elements, list):
        return Type(kind), shape, elements.tolist()
    return Type(kind), shape, elements[0] if shape == [] else elements
