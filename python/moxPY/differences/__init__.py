"""What tells two trials apart: `differences`.

===========  ===================================================================
differences  what a user calls
difference   what is found
comparison   two trials and the tolerances, numbers compared
keys         what only one of the two has
stretch      the frames that both have
clock        rates and frames
channels     markers, angles, forces, moments, powers, analog channels
residuals    residuals and camera masks of points
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
