"""Trials as objects: `Trial` and what belongs to one.

A file a subject:

=============  =================================================================
trial          `Trial` itself: what it is made from, its clock, its parts
channels       mappings of labels: markers, angles …, analog channels
channel        one channel and its samples
samples        what counts as samples when something is assigned
gaps           runs of frames in which a point was not seen
copying        a trial like another one
events         instants such as foot strikes
=============  =================================================================
"""

from __future__ import annotations

from .channel import Channel
from .channels import Analogs, Channels, Points
from .events import Event, Events
from .gaps import Gap
from .trial import Trial

__all__ = [
    "Analogs",
    "Channel",
    "Channels",
    "Event",
    "Events",
    "Gap",
    "Points",
    "Trial",
]
