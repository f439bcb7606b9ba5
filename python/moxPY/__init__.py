"""Motion-capture acquisitions as NumPy arrays.

    from moxPY import *

    trial = moxReadAcquisition("walk.c3d")
    values, info = moxGetMarkers(trial)

Every function is the one of the extension module `_moxPY`, with documentation and types. What is
true of all of them:

- The first argument is an open acquisition. One that was closed raises ValueError, anything that is
  no acquisition raises TypeError. None raises ValueError, but TypeError in functions of several
  forms, such as `moxGetPoint`, which takes an index or a label.
- Functions that give values and information return a list of both.
- Arrays belong to the caller: changing one does not change the acquisition.
- Counts and frame numbers are floats.
"""

# ruff: noqa: F403 -- each family of functions says itself what it offers

from __future__ import annotations

from . import (
    analogs,
    analysis,
    edit_analogs,
    edit_events,
    edit_metadata,
    edit_points,
    events,
    force_platforms,
    lifecycle,
    metadata,
    plugins,
    point_values,
    points,
    rotations,
    sampling,
    set_analog_attributes,
    set_point_values,
    set_sampling,
)
from .acquisition import data_store
from .analogs import *
from .analysis import *
from .edit_analogs import *
from .edit_events import *
from .edit_metadata import *
from .edit_points import *
from .events import *
from .force_platforms import *
from .lifecycle import *
from .metadata import *
from .plugins import *
from .point_values import *
from .points import *
from .rotations import *
from .sampling import *
from .set_analog_attributes import *
from .set_point_values import *
from .set_sampling import *

__version__ = plugins.moxGetVersion()

__all__ = ["data_store"]
__all__ += analogs.__all__
__all__ += analysis.__all__
__all__ += edit_analogs.__all__
__all__ += edit_events.__all__
__all__ += edit_metadata.__all__
__all__ += edit_points.__all__
__all__ += events.__all__
__all__ += force_platforms.__all__
__all__ += lifecycle.__all__
__all__ += metadata.__all__
__all__ += plugins.__all__
__all__ += point_values.__all__
__all__ += points.__all__
__all__ += rotations.__all__
__all__ += sampling.__all__
__all__ += set_analog_attributes.__all__
__all__ += set_point_values.__all__
__all__ += set_sampling.__all__
