"""The table of all rules."""

from __future__ import annotations

from .contradictions import contradictions
from .duplicates import duplicates
from .events import order, outside, repeated
from .extent import extent
from .gaps import empty, ends, gaps
from .jumps import jumps
from .labels import doubled, one_sided, unlabelled, unnamed
from .plates import baselines, clipped_baselines, off_plate
from .rule import Limit, Rule
from .signals import dead, saturated
from .still import frozen, still

_CONTACT = Limit("contact_force", 50.0, "N", "the least load of somebody on a platform")

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
    Rule("outside", "an event before the first or after the last frame", "error", outside),
    Rule("order", "two strikes or two offs of a foot follow each other", "warning", order),
    Rule("repeated", "an event is there twice", "warning", repeated),
    Rule("dead", "an analog channel has one value throughout", "warning", dead),
    Rule(
        "saturated",
        "an analog channel is at the end of its range",
        "warning",
        saturated,
        (Limit("saturated_samples", 4.0, "", "the fewest equal samples in a row"),),
    ),
    Rule(
        "off_plate",
        "the force on a platform acts outside its corners",
        "warning",
        off_plate,
        (
            Limit("corner_margin", 20.0, "mm", "how far outside the corners is well"),
            Limit("corner_time", 0.05, "s", "the shortest time that counts"),
            _CONTACT,
        ),
    ),
    Rule(
        "baselines",
        "a platform measures a force with nobody on it",
        "warning",
        baselines,
        (
            Limit("baseline_force", 5.0, "N", "the largest force along an axis that is well"),
            _CONTACT,
        ),
    ),
    Rule(
        "clipped_baselines",
        "a platform measures exactly one force with nobody on it",
        "note",
        clipped_baselines,
        (_CONTACT,),
    ),
)
