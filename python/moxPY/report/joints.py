"""Which channels stand on one page."""

from __future__ import annotations

from collections.abc import Sequence
from itertools import pairwise

from ..sides import sided

# Joints below each other on one sheet of paper, at most.
_ROWS = 6


def pages(labels: Sequence[str]) -> list[list[str]]:
    """Labels page by page, those of both sides of a joint on one, as many on each as it goes."""
    joints: dict[str, list[str]] = {}
    for label in labels:
        parts = sided(label)
        joints.setdefault(parts.subject + parts.place if parts else label, []).append(label)
    groups = list(joints.values())
    if not groups:
        return []
    sheets = -(-len(groups) // _ROWS)
    ends = [len(groups) * sheet // sheets for sheet in range(sheets + 1)]
    return [
        [label for joint in groups[first:end] for label in joint] for first, end in pairwise(ends)
    ]
