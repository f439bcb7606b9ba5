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

# ruff: noqa: F403 -- the functions say themselves what they offer

from typing import TYPE_CHECKING

from . import functions
from .acquisition import data_store as data_store
from .functions import *

__version__ = functions.moxGetVersion()

# As in `functions`: a list for the interpreter, which type checkers do without.
if not TYPE_CHECKING:
    __all__ = ["data_store", *functions.__all__]
