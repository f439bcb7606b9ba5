"""What may be wrong with a trial: `check`, and the rules that it goes by.

A file a subject, and a file a rule or a few that belong together:

==============  ================================================================
check           what a user calls
finding         what is found
rule            what makes a rule: an id, a function, its limits
rules           the table of all rules
recording       a trial as rules look at it, each part read once
segment_points  which markers are no markers but ends of the axes of segments
contradictions  what was odd about the file
gaps            frames in which markers were not seen
jumps           markers that are suddenly somewhere else
still           markers that do not move
duplicates      markers at one place
extent          how far the markers lie apart
labels          labels that are missing, doubled, or there for one side only
events          events outside the trial, or in a wrong order
signals         analog channels that are dead or at the end of their range
plates          forces outside the corners, baselines that are not zero
==============  ================================================================
"""

from __future__ import annotations

from .check import check
from .finding import Finding, Severity
from .rule import Limit, Rule
from .rules import RULES

__all__ = ["RULES", "Finding", "Limit", "Rule", "Severity", "check"]
