"""Spatio-temporal parameters of walking: `Trial.gait`.

A file a subject:

============  ================================================================
gait          what a user calls
definitions   each parameter: what it is, its unit, how one stride gives it
stride        one stride: its events, and where the feet stood
strides       the strides that the events of a trial tell
feet          where the feet are: markers, the level plane, metres
belt          the same on a treadmill, where feet come back to where they were
places        strides with the places where the feet stood
result        what comes back: each side, each parameter with every value
reasons       why a parameter is left out
display       the line and the table that show it
============  ================================================================
"""

from __future__ import annotations

from .definitions import DEFINITIONS, Definition
from .gait import gait
from .result import Gait, GaitSide, LeftOut, Measure

__all__ = ["DEFINITIONS", "Definition", "Gait", "GaitSide", "LeftOut", "Measure", "gait"]
