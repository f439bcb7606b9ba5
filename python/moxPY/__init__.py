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

# ruff: noqa: F403 -- each file of functions says itself what it offers

from __future__ import annotations

from .acquisition import data_store
from .functions import plugins
from .functions.acquisition import files, sampling, set_sampling
from .functions.acquisition.files import *
from .functions.acquisition.sampling import *
from .functions.acquisition.set_sampling import *
from .functions.analogs import modify_analogs, read_analogs, set_analog_attributes
from .functions.analogs.modify_analogs import *
from .functions.analogs.read_analogs import *
from .functions.analogs.set_analog_attributes import *
from .functions.devices import force_platforms, rotations
from .functions.devices.force_platforms import *
from .functions.devices.rotations import *
from .functions.events import modify_events, read_events
from .functions.events.modify_events import *
from .functions.events.read_events import *
from .functions.metadata import analysis, modify_metadata, read_metadata
from .functions.metadata.analysis import *
from .functions.metadata.modify_metadata import *
from .functions.metadata.read_metadata import *
from .functions.plugins import *
from .functions.points import modify_points, read_point_values, read_points, set_point_values
from .functions.points.modify_points import *
from .functions.points.read_point_values import *
from .functions.points.read_points import *
from .functions.points.set_point_values import *

__version__ = plugins.moxGetVersion()

__all__ = ["data_store"]
__all__ += files.__all__
__all__ += sampling.__all__
__all__ += set_sampling.__all__
__all__ += modify_analogs.__all__
__all__ += read_analogs.__all__
__all__ += set_analog_attributes.__all__
__all__ += force_platforms.__all__
__all__ += rotations.__all__
__all__ += modify_events.__all__
__all__ += read_events.__all__
__all__ += analysis.__all__
__all__ += modify_metadata.__all__
__all__ += read_metadata.__all__
__all__ += modify_points.__all__
__all__ += read_point_values.__all__
__all__ += read_points.__all__
__all__ += set_point_values.__all__
__all__ += plugins.__all__
