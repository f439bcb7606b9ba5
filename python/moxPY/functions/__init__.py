"""The functions of the extension module `_moxPY`, with documentation and types, by family."""

# ruff: noqa: F403 -- each file says itself what it offers

from types import FunctionType
from typing import TYPE_CHECKING

from .acquisition.files import *
from .acquisition.lifecycle import *
from .acquisition.sampling import *
from .acquisition.set_sampling import *
from .analogs.modify_analogs import *
from .analogs.read_analogs import *
from .analogs.set_analog_attributes import *
from .devices.force_platforms import *
from .devices.rotations import *
from .devices.wrenches import *
from .events.modify_events import *
from .events.read_events import *
from .metadata.analysis import *
from .metadata.info_record import *
from .metadata.modify_metadata import *
from .metadata.read_metadata import *
from .plugins import *
from .points.modify_points import *
from .points.read_point_values import *
from .points.read_points import *
from .points.set_point_values import *

# Type checkers cannot read a computed list, and would take it for one that offers nothing. Where
# they see none, they offer what is imported with a star.
if not TYPE_CHECKING:
    __all__ = [name for name, value in vars().items() if isinstance(value, FunctionType)]
