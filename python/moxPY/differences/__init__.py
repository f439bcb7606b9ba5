"""What tells two trials apart: `differences`.

===========  ===================================================================
differences  what a user calls
difference   what is found
comparison   two trials and the tolerances, numbers compared
clock        rates and frames
channels     markers, angles, forces, moments, powers, analog channels
events       events
platforms    force platforms
rotations    rotations of segments
metadata     the parameters of a file
===========  ===================================================================
"""

from __future__ import annotations

from .difference import Aspect, Difference
from .differences import FAMILIES, differences

__all__ = ["FAMILIES", "Aspect", "Difference", "differences"]
