"""Trials as files of other formats: `export`.

A file a subject, and a file a format:

==========  ====================================================================
export      what a user calls
options     what is asked of a file: axes, units, threshold, side, parts
prepared    a trial as the options want it
target      the files that an export makes, complete or not at all
registry    the formats there are, and how others are added
about       what a file says about the trial, and about what was asked
part        the parts of a trial as tables
reaction    what the force platforms measured, on the side that is asked for
by_feet     the same by the foot that was on them
rows        numbers as lines of text
text        texts that other formats can hold
csv         tables as text
columnar    tables as Arrow has them, for the next two
parquet     tables for data frames
arrow       the same, not packed
xlsx        Excel workbooks
trc         markers for OpenSim
storage     the form that the next two share
mot         ground reaction forces for OpenSim
sto         channels and platforms for OpenSim
json        everything but samples
json_text   JSON as people read it
npz         arrays for NumPy
c3d         C3D files
==========  ====================================================================
"""

from __future__ import annotations

from .export import export
from .options import Options
from .registry import Format, formats, register
from .target import Target

__all__ = ["Format", "Options", "Target", "export", "formats", "register"]
