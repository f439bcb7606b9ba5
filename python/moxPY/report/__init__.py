"""The report of a trial, or of several of one subject: `Trial.report`.

What a report says and how it is written are apart: sections make blocks, and both HTML and PDF are
made of the same blocks. A file a subject:

============  ================================================================
report        what a user calls
blocks        what sections consist of: facts, tables, pictures, players
sections      which sections there are, in which order, and who makes them
header        who was recorded, when, how, with what
findings      what checks find, and gaps
walking       events and spatio-temporal parameters
curves        angles, moments, powers over the gait cycle, forces, EMG
motion        the players
joints        which channels stand on one page
drawing       the pictures of a trial, one after the other, in the same style
html          a report as one file of HTML
report.css    how that looks, on screens and on paper
pdf           a report as pages of matplotlib
paper         one page after the other, line by line
============  ================================================================
"""

from __future__ import annotations

from .report import report
from .sections import SECTIONS

__all__ = ["SECTIONS", "report"]
