"""Rates and frames of two trials."""

from __future__ import annotations

from collections.abc import Iterator

from .comparison import Comparison
from .difference import Difference


def clock(compared: Comparison) -> Iterator[Difference]:
    """Frames a second, the number and the first of the frames, analog samples in a frame."""
    one, other = compared.first, compared.second
    for name, first, second, allowed in (
        ("rate", one.rate, other.rate, compared.tolerance),
        ("frames", one.frames, other.frames, 0),
        ("first_frame", one.first_frame, other.first_frame, 0),
        ("samples_per_frame", one.samples_per_frame, other.samples_per_frame, 0),
    ):
        apart = abs(first - second)
        if apart > allowed:
            yield Difference(
                family="clock",
                channel=name,
                aspect="values",
                text=f"{first:.9g} and {second:.9g}",
                largest=float(apart),
            )
