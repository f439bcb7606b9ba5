"""What only one of two trials has."""

from __future__ import annotations

from collections.abc import Iterator, Sequence

from .difference import Difference


def keys(family: str, one: Sequence[str], other: Sequence[str]) -> Iterator[Difference]:
    """Keys of one side, and whether those of both stand in another order."""
    firsts, seconds = set(one), set(other)
    for key in one:
        if key not in seconds:
            text = "only the first trial has it"
            yield Difference(family=family, channel=key, aspect="only first", text=text)
    for key in other:
        if key not in firsts:
            text = "only the second trial has it"
            yield Difference(family=family, channel=key, aspect="only second", text=text)
    pairs = zip(
        (key for key in one if key in seconds), (key for key in other if key in firsts), strict=True
    )
    moved = next((pair for pair in pairs if pair[0] != pair[1]), None)
    if moved is not None:
        text = f"another order: {moved[0]!r} stands where the second trial has {moved[1]!r}"
        yield Difference(family=family, channel=None, aspect="order", text=text)
