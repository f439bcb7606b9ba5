"""The table of all rules."""

from __future__ import annotations

from .contradictions import contradictions
from .duplicates import duplicates
from .extent import extent
from .gaps import empty, ends, gaps
from .jumps import jumps
from .labels import doubled, one_sided, unlabelled, unnamed
from .rule import Limit, Rule
from .still import frozen, still

#: In the order in which findings are told.
RULES: tuple[Rule, ...] = (
    Rule(
        "contradictions",
        "the file contradicts itself or lacks something",
        "warning",
        contradictions,
    ),
    Rule(
        "gaps",
        "a marker was lost and seen again",
        "warning",
        gaps,
        (Limit("gap_length", 0.0, "s", "the shortest gap that counts"),),
    ),
    Rule("ends", "markers were not seen at the beginning or the end", "note", ends),
    Rule("empty", "a marker was never seen", "warning", empty),
    Rule(
        "jumps",
        "a marker is suddenly somewhere else",
        "warning",
        jumps,
        (
            Limit("jump_speed", 3.0, "m/s", "the least change of velocity from frame to frame"),
            Limit("jump_outlier", 10.0, "", "how often the marker's usual change it is at least"),
        ),
    ),
    Rule(
        "still",
        "a marker does not move while others do",
        "warning",
        still,
        (Limit("still_range", 1.0, "mm", "how far it may stray"),),
    ),
    Rule(
        "frozen",
        "a marker that moves has exactly one place for a while",
        "warning",
        frozen,
        (Limit("frozen_time", 0.25, "s", "the shortest while"),),
    ),
    Rule(
        "duplicates",
        "two markers are at one place",
        "warning",
        duplicates,
        (
            Limit("duplicate_distance", 1.0, "mm", "how near they are"),
            Limit("duplicate_time", 0.25, "s", "the shortest time that counts"),
        ),
    ),
    Rule(
        "extent",
        "the markers lie too near to each other or too far apart for their unit",
        "warning",
        extent,
        (
            Limit("least_extent", 50.0, "mm", "the least size of the space with all markers"),
            Limit("largest_extent", 100.0, "m", "the largest"),
        ),
    ),
    Rule("unnamed", "channels have no label", "warning", unnamed),
    Rule("doubled", "several channels of a kind have one label", "warning", doubled),
    Rule("unlabelled", "trajectories that nobody gave a name to", "note", unlabelled),
    Rule("one_sided", "a marker on one side of the body only", "note", one_sided),
)
