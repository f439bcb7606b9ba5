"""Pictures of trials by matplotlib: `Trial.plot`.

matplotlib is imported when the first picture is drawn. A file a subject:

===============  =================================================================
plots            `Plots`: what `Trial.plot` offers
channel          a channel over time, with its gaps and the events
angles           angles, moments and powers over the gait cycle
laid_over        the same of several trials in one picture
cycle_axes       the axes of these panels
cycle_panels     which panels such a grid has, and what they are called
cycle_reference  what is usual over the gait cycle
cycles_of_kind   which gait cycles show channels of a kind
forces           ground reaction forces over time
butterfly        force vectors at the centre of pressure
contacts         who stood when on which platform
emg              electromyography: raw signals and envelopes
events           events as a time line
occasions        events as pictures mark them
gaps             when each marker was not seen
sticks           a strip of stick figures
view             how a body is looked at
panels           the axes of a picture
colours          colours of sides and components
===============  =================================================================
"""

from __future__ import annotations

from .plots import Plots

__all__ = ["Plots"]
