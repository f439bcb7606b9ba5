"""Trials as objects: `Trial` and what belongs to one.

A file a subject:

===============  =================================================================
trial            `Trial` itself: what it is made from, its clock, its parts
channels         mappings of labels: markers, angles …, analog channels
channel          one channel and its samples
kinds            the kinds of channels
samples          what counts as samples when something is assigned
asking           the functions of the extension, as the view asks them
popping          mappings that give what is removed as part of a copy
labels           what a label is, and which are nearest to one that is missing
numbers          numbers that scripts give
gaps             runs of frames in which a point was not seen
copying          a trial like another one
reading          opening files
partial          reading a part of a file, and what is not there for it
foreign_content  what a file is that is no C3D file
writing          making files
events           instants such as foot strikes
cycles           stretches from an event to the next one of its side
normalize        samples over the course of cycles
platforms        the force platforms of a trial
platform         one force platform
plate_entries    what the metadata say of force platforms, changed
wrench           what a platform measured
up_axis          which axis of the laboratory is the vertical one
foot_events      which events are strikes and offs, and of which foot
foot_markers     which markers are on feet, by the usual label sets
foot_contacts    when feet came down on a platform and left it
rotations        rotations of segments
metadata         the parameters of a file, in groups
entry_values     what an entry of each type can hold
analysis         single results that a file keeps
units            what the units that files name are worth
place_unit       the unit of places in the laboratory
verbs            what makes another trial of a trial, a file a verb
summary          what a trial holds, as plain values
display          how trials and their parts show themselves
bridges          data frames and data sets of other packages
extras           packages that a user may not have
runs             numeric work on runs of samples, so that gaps stay gaps
===============  =================================================================
"""

from __future__ import annotations

from .analysis import Analysis, AnalysisParameter
from .channel import Channel
from .channels import Analogs, Channels, Points
from .cycles import Cycle
from .events import Event, Events
from .gaps import Gap
from .metadata import Entry, Metadata, MetadataGroup
from .normalize import MeanCycle
from .platform import Platform
from .platforms import Platforms
from .reading import TrialWarning, read
from .rotations import Rotations
from .trial import Trial
from .wrench import Wrench, WrenchUnits

__all__ = [
    "Analogs",
    "Analysis",
    "AnalysisParameter",
    "Channel",
    "Channels",
    "Cycle",
    "Entry",
    "Event",
    "Events",
    "Gap",
    "MeanCycle",
    "Metadata",
    "MetadataGroup",
    "Platform",
    "Platforms",
    "Points",
    "Rotations",
    "Trial",
    "TrialWarning",
    "Wrench",
    "WrenchUnits",
    "read",
]
