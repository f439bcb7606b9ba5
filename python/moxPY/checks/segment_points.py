"""Which markers are no markers but ends of the axes of segments, which models write among them."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Iterable

# Origin and the ends of three axes, at the end of a label or before a word: LFEO, LFEA, LFEL, LFEP;
# o_Global, x_Global, y_Global, z_Global.
_ENDS = frozenset("OALP")
_BEGINNINGS = frozenset("oxyz")


def segment_points(labels: Iterable[str]) -> set[str]:
    """The labels that come in fours, as the origin and the axes of a segment do."""
    endings: dict[str, set[str]] = defaultdict(set)
    beginnings: dict[str, set[str]] = defaultdict(set)
    labels = list(labels)
    for label in labels:
        endings[label[:-1]].add(label[-1:])
        if label[1:2] == "_":
            beginnings[label[1:]].add(label[:1])
    return {
        label
        for label in labels
        if (label[-1:] in _ENDS and endings[label[:-1]] >= _ENDS)
        or (label[:1] in _BEGINNINGS and beginnings.get(label[1:], set()) >= _BEGINNINGS)
    }
