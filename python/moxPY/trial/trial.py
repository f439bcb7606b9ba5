"""A trial: one recording with everything in it."""

from __future__ import annotations

import math
from contextlib import suppress
from pathlib import Path
from types import TracebackType
from typing import Any, Self

import _moxPY
from _moxPY import trial as calls

from ..checks import check
from ..differences import differences
from ..formats import export
from ..gait import gait
from ..player import view
from ..plots import Plots
from ..report import report
from . import copying, partial, writing
from .analysis import Analysis
from .asking import ask
from .bridges.pandas import to_pandas
from .bridges.polars import to_polars
from .bridges.rerun import to_rerun
from .bridges.xarray import to_xarray
from .channels import Analogs, Channels, Points
from .cycles import cycles
from .display import trial_html, trial_repr
from .events import Events
from .metadata import Metadata
from .numbers import real_number, whole_number
from .platforms import Platforms
from .rotations import Rotations
from .samples import FloatArray, instants
from .verbs.crop import crop
from .verbs.fill_gaps import fill_gaps
from .verbs.filter import filter
from .verbs.in_units import in_units
from .verbs.merged import merged
from .verbs.resample import resample
from .verbs.rotated import rotated, x_up, y_up, z_up


class Trial:
    """One recording: points, analog channels, events, force platforms, rotations, metadata.

    `moxPY.read` opens a file, `Trial.new` begins an empty trial, `Trial.of` looks at an acquisition
    that the ``mox…`` functions opened. A trial is a view: every ``mox…`` function takes it, and
    what they change it shows at once.

    The verbs (`crop`, `filter` …) return a new trial and leave this one as it was; the parts
    (`markers`, `events`, `metadata` …) are changed in place. Arrays are read-only.

    Leaving a ``with`` block frees the memory; arrays that were taken stay. Whatever is asked of a
    closed trial raises ValueError.
    """

    __slots__ = ("__weakref__", "this")

    this: Any  #: the extension module's own handle

    def __init__(self) -> None:
        raise TypeError("a trial is made by moxPY.read, Trial.new or Trial.of")

    @classmethod
    def of(cls, acquisition: Any) -> Self:
        """The trial that an acquisition of the ``mox…`` functions holds; both stay one.

        Raises
        ------
        TypeError
            `acquisition` is no acquisition.
        """
        trial = cls.__new__(cls)
        _moxPY.data_store_swiginit(trial, acquisition)
        return trial

    @classmethod
    def new(cls, frames: int = 0, rate: float = 100.0, samples_per_frame: int = 1) -> Self:
        """A trial without channels.

        Parameters
        ----------
        frames : int
            Number of frames.
        rate : float
            Frames a second.
        samples_per_frame : int
            Samples of an analog channel in each frame.

        Raises
        ------
        ValueError
            A number is negative, there is no sample in a frame, or the rate is not finite.
        TypeError
            An argument is no number, or a count is not whole.
        """
        frames = whole_number(frames, "the number of frames", 0)
        ratio = whole_number(samples_per_frame, "the number of samples in a frame", 1)
        number = real_number(rate, "a rate")
        if not (math.isfinite(number) and number >= 0.0):
            raise ValueError(f"a rate is 0 or a positive number, not {rate}")
        trial = cls.of(_moxPY.moxNewAcquisition(0, frames, 0, ratio))
        _moxPY.moxSetFrequency(trial, number)
        return trial

    @property
    def rate(self) -> float:
        """Frames a second. Assigning one changes what a frame lasts: the frames keep their
        numbers, events their seconds."""
        return ask(_moxPY.moxGetPointFrequency, self)

    @rate.setter
    def rate(self, rate: float) -> None:
        number = real_number(rate, "a rate")
        if not (math.isfinite(number) and number > 0.0):
            raise ValueError(f"a trial has a number of frames a second above 0, not {rate}")
        first = self.first_frame
        # Not moxSetFrequency, with which a file's frames are another number of the same length.
        calls.set_time_base(self, number, self.samples_per_frame, self.frames)
        self._number_frames_from(first)

    @property
    def frames(self) -> int:
        """Number of frames."""
        return int(ask(_moxPY.moxGetPointFrameNumber, self))

    @property
    def samples_per_frame(self) -> int:
        """Samples of an analog channel in each frame."""
        return int(ask(_moxPY.moxGetAnalogSampleNumberPerFrame, self))

    @property
    def first_frame(self) -> int:
        """The number of the first frame, usually 1. Assigning one renumbers the frames; events
        stay with their frames."""
        return round(ask(_moxPY.moxGetFirstFrame, self)) + 1

    @first_frame.setter
    def first_frame(self, frame: int) -> None:
        number = whole_number(frame, "the number of the first frame", 1)
        self._number_frames_from(number, move_events=True)

    def _number_frames_from(self, frame: int, *, move_events: bool = False) -> None:
        ask(_moxPY.moxSetFirstFrame, self, frame - 1, int(move_events))

    @property
    def last_frame(self) -> int:
        """The number of the last frame."""
        return self.first_frame + self.frames - 1

    @property
    def time(self) -> FloatArray:
        """The instant of each frame in seconds on the trial's clock, on which frame 1 is 0.0;
        shape (frames,). NaN without a rate, as of a file that tells none."""
        return instants(self.first_frame - 1, self.frames, self.rate)

    @property
    def duration(self) -> float:
        """How many seconds the frames last together. NaN without a rate."""
        return self.frames / self.rate if self.rate > 0.0 else math.nan

    @property
    def markers(self) -> Channels:
        """The markers: positions in the laboratory."""
        return Channels(self, "Markers")

    @property
    def angles(self) -> Channels:
        """The angles that a model computed."""
        return Channels(self, "Angles")

    @property
    def forces(self) -> Channels:
        """The forces that a model computed."""
        return Channels(self, "Forces")

    @property
    def moments(self) -> Channels:
        """The moments that a model computed."""
        return Channels(self, "Moments")

    @property
    def powers(self) -> Channels:
        """The powers that a model computed."""
        return Channels(self, "Powers")

    @property
    def points(self) -> Points:
        """The points of all five kinds."""
        return Points(self)

    @property
    def analogs(self) -> Analogs:
        """The analog channels."""
        return Analogs(self)

    write = writing.write
    export = export
    check = check
    gait = gait
    report = report
    differences = differences
    view = view
    copy = copying.copy
    __copy__ = copying.copy
    __deepcopy__ = copying.deep_copy
    __reduce__ = copying.reduce

    crop = crop
    resample = resample
    fill_gaps = fill_gaps
    filter = filter
    rotated = rotated
    z_up = z_up
    y_up = y_up
    x_up = x_up
    in_units = in_units
    merged = merged

    @property
    def warnings(self) -> list[str]:
        """What was odd about the file that the trial was read from, in whatever way it was; a copy
        keeps it, a file that is written does not get it."""
        return calls.warnings(self)

    @property
    def unread(self) -> dict[str, dict[str, str]]:
        """The channels of the file that were not read (`moxPY.read` with ``only``): of each kind
        the units by the labels, in the file's order. Empty for a trial that was read as a whole.

        Such channels are none of the trial. What would need them says that they were not read, and
        the trial is not written as C3D, which would lose them.

        Examples
        --------
        >>> part = read(path, only="markers")
        >>> {kind: len(units) for kind, units in part.unread.items()}
        {'angles': 8, 'forces': 8, 'moments': 6, 'powers': 6, 'analogs': 20}
        >>> part.unread["angles"]["LKneeAngles"]
        'deg'
        """
        return partial.unread(self)

    @property
    def path(self) -> Path | None:
        """The absolute path of the file that the trial was read from; None where there was none."""
        path, _, _ = calls.source(self)
        return None if path is None else Path(path)

    @property
    def events(self) -> Events:
        """The events, in order of time."""
        return Events(self)

    cycles = cycles

    @property
    def platforms(self) -> Platforms:
        """The force platforms."""
        return Platforms(self)

    @property
    def rotations(self) -> Rotations:
        """The rotations of segments."""
        return Rotations(self)

    @property
    def plot(self) -> Plots:
        """Pictures of the trial by matplotlib: ``trial.plot.angles()``."""
        return Plots(self)

    to_pandas = to_pandas
    to_polars = to_polars
    to_xarray = to_xarray
    to_rerun = to_rerun

    @property
    def metadata(self) -> Metadata:
        """The metadata: the parameters of the file, in groups."""
        return Metadata(self)

    @property
    def analysis(self) -> Analysis:
        """The analysis parameters, such as the cadence of each side."""
        return Analysis(self)

    @property
    def closed(self) -> bool:
        """Whether the trial was closed."""
        try:
            # Looks at the handle and does nothing else.
            _moxPY.moxCloseAcquisition(self)
        except ValueError:
            return True
        return False

    def close(self) -> None:
        """Free the memory now. Closing twice is no error."""
        with suppress(ValueError):  # another thread may have been faster than any question
            _moxPY.delete_data_store(self)

    __repr__ = trial_repr
    _repr_html_ = trial_html

    def __enter__(self) -> Self:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()
