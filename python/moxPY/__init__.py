"""Motion-capture acquisitions as objects and as NumPy arrays.

    import moxPY as mox

    trial = mox.read("walk.c3d")
    trial.markers["LASI"].values

`read` opens a file as a `Trial`; ``help(moxPY.Trial)`` says what that offers. The functions see the
same acquisitions, and take a trial as well:

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

# ruff: noqa: F403, F405 -- the functions say themselves what they offer

from . import functions
from .acquisition import data_store as data_store
from .batch import Result as Result
from .batch import collect as collect
from .batch import map_files as map_files
from .example import example as example
from .functions import *
from .trial import Channel as Channel
from .trial import Gap as Gap
from .trial import Trial as Trial
from .trial import TrialWarning as TrialWarning
from .trial import read as read

__version__ = functions.moxGetVersion()

# What a star import gives: the functions and their handle, in words, for type checkers do not run
# anything. The names of the object view are common ones, which a script may have itself.
__all__ = [
    "data_store",
    "moxAppendAnalog",
    "moxAppendAnalysisParameter",
    "moxAppendEvent",
    "moxAppendMetaData",
    "moxAppendPoint",
    "moxClearAnalogs",
    "moxClearAnalysis",
    "moxClearEvents",
    "moxClearMetaData",
    "moxClearPoints",
    "moxCloseAcquisition",
    "moxDeleteAcquisition",
    "moxFindMetaData",
    "moxGetAnalog",
    "moxGetAnalogFrameNumber",
    "moxGetAnalogFrequency",
    "moxGetAnalogNumber",
    "moxGetAnalogResolution",
    "moxGetAnalogSampleNumberPerFrame",
    "moxGetAnalogs",
    "moxGetAnalogsValues",
    "moxGetAnalysis",
    "moxGetAngles",
    "moxGetAnglesValues",
    "moxGetEventNumber",
    "moxGetEvents",
    "moxGetEventsValues",
    "moxGetFirstFrame",
    "moxGetForcePlatformWrenches",
    "moxGetForcePlatforms",
    "moxGetForces",
    "moxGetForcesValues",
    "moxGetGroundReactionWrenches",
    "moxGetLastFrame",
    "moxGetMarkers",
    "moxGetMarkersValues",
    "moxGetMaxInterpolationGap",
    "moxGetMetaData",
    "moxGetMoments",
    "moxGetMomentsValues",
    "moxGetPoint",
    "moxGetPointFrameNumber",
    "moxGetPointFrequency",
    "moxGetPointNumber",
    "moxGetPoints",
    "moxGetPointsUnit",
    "moxGetPointsValues",
    "moxGetPowers",
    "moxGetPowersValues",
    "moxGetRotation",
    "moxGetRotations",
    "moxGetVersion",
    "moxMetaDataInfo",
    "moxNewAcquisition",
    "moxReadAcquisition",
    "moxRemoveAnalog",
    "moxRemoveAnalysisParameter",
    "moxRemoveMetaData",
    "moxRemovePoint",
    "moxSetAnalogDescription",
    "moxSetAnalogGain",
    "moxSetAnalogLabel",
    "moxSetAnalogNumber",
    "moxSetAnalogOffset",
    "moxSetAnalogResolution",
    "moxSetAnalogSampleNumberPerFrame",
    "moxSetAnalogScale",
    "moxSetAnalogUnit",
    "moxSetAnalogValues",
    "moxSetAnalogsValues",
    "moxSetAnglesValues",
    "moxSetEventDescription",
    "moxSetEventId",
    "moxSetEventLabel",
    "moxSetEventSubject",
    "moxSetEventTime",
    "moxSetFirstFrame",
    "moxSetForcesValues",
    "moxSetFrameNumber",
    "moxSetFrequency",
    "moxSetMarkersValues",
    "moxSetMaxInterpolationGap",
    "moxSetMetaData",
    "moxSetMetaDataDescription",
    "moxSetMetaDataDimensions",
    "moxSetMetaDataFormat",
    "moxSetMetaDataValue",
    "moxSetMomentsValues",
    "moxSetPointDescription",
    "moxSetPointLabel",
    "moxSetPointNumber",
    "moxSetPointType",
    "moxSetPointValues",
    "moxSetPointsUnit",
    "moxSetPointsValues",
    "moxSetPowersValues",
    "moxWriteAcquisition",
    "reload",
    "unload",
]
