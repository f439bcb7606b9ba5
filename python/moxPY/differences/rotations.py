"""Rotations of segments of two trials."""

from __future__ import annotations

from collections.abc import Iterator

from .comparison import Comparison, counted, distance, number
from .difference import Difference
from .keys import keys
from .stretch import Stretch


def rotations(compared: Comparison) -> Iterator[Difference]:
    """Segments by their labels; matrices entry by entry, in the frames that both trials have."""
    one, other = compared.first.rotations, compared.second.rotations
    yield from keys("rotations", one.labels, other.labels)
    both = [label for label in one.labels if label in other]
    ratio = one.samples_per_frame
    if both and ratio != other.samples_per_frame:
        text = (
            f"{ratio} and {other.samples_per_frame} samples in each frame, which are not compared"
        )
        yield Difference(family="rotations", channel=None, aspect="shape", text=text)
        return
    stretch = Stretch.of(compared, ratio)
    for label in both:
        matrices = one[label][stretch.first], other[label][stretch.second]
        # A file that was cut short has fewer samples than its frames need.
        count = min(map(len, matrices))
        apart = distance(matrices[0][:count], matrices[1][:count], compared.tolerance)
        if apart.unequal:
            frame, time = stretch.place(apart.row)
            text = f"up to {number(apart.largest)} apart in frame {frame}"
            yield Difference(
                family="rotations",
                channel=label,
                aspect="values",
                text=f"{text}; {counted(apart.unequal, 'sample')}",
                largest=apart.largest,
                frame=frame,
                time=time,
            )
        if len(apart.one_sided):
            frame, time = stretch.place(int(apart.one_sided[0]))
            text = (
                f"seen in one trial only in {len(apart.one_sided)} samples, first in frame {frame}"
            )
            yield Difference(
                family="rotations", channel=label, aspect="gaps", text=text, frame=frame, time=time
            )
