"""One force platform of a trial."""

from __future__ import annotations

from dataclasses import replace
from itertools import zip_longest
from typing import TYPE_CHECKING, Any, Literal

import numpy as np
from _moxPY import trial as calls

from .channel import Channel
from .display import one_line
from .numbers import real_number
from .place_unit import place_unit
from .samples import FloatArray, read_only
from .units import Quantity
from .up_axis import up_axis
from .wrench import Wrench, WrenchUnits

if TYPE_CHECKING:
    from .trial import Trial

#: What the channels of each type measure. Those of type 4 are outputs which a matrix makes forces
#: and moments of; some files give them these units.
QUANTITIES: dict[int, tuple[Quantity, ...]] = {
    1: ("force", "force", "force", "length", "length", "moment"),
    2: ("force", "force", "force", "moment", "moment", "moment"),
    3: ("force",) * 8,
    4: ("force", "force", "force", "moment", "moment", "moment"),
}


class Platform:
    """A force platform, which is a number in its trial: everything is read when it is asked for.

    After the trial lost the platform everything raises IndexError; after it was closed, ValueError.
    """

    __slots__ = ("_index", "_trial")

    def __init__(self, trial: Trial, index: int) -> None:
        self._trial = trial
        self._index = index

    @property
    def index(self) -> int:
        """Where the platform stands among those of the trial, from 0."""
        return self._index

    @property
    def type(self) -> int:
        """How channels make force and moment: 1 to 4, as files number the types. Platforms of
        other types have no wrench; 0 where the trial does not say it."""
        return int(self._described("type"))

    @property
    def corners(self) -> FloatArray:
        """The corners in the laboratory, shape (4, 3): in the platform's own axes (+x, +y),
        (−x, +y), (−x, −y), (+x, −y). NaN where the trial lacks them."""
        return self._array("corners")

    @property
    def origin(self) -> FloatArray:
        """What the trial has as origin, shape (3,): usually the vector from the measuring origin to
        the centre of the surface, in the platform's axes. NaN where the trial lacks it."""
        return self._array("origin")

    @property
    def calibration(self) -> FloatArray | None:
        """What turns channels of type 4 into force and moment, shape (6, 6); larger where a file
        has it so, None without one."""
        matrix = self._described("calibration")
        return None if matrix is None else read_only(matrix)

    @property
    def frame(self) -> FloatArray:
        """The platform's axes as columns and the centre of its surface, shape (4, 4): takes places
        on the platform to the laboratory. x runs from the second corner to the first, z is normal
        to it and to the edge from the fourth corner to the first. NaN where the corners span no
        plane."""
        return self._array("frame")

    @property
    def channels(self) -> list[Channel]:
        """The analog channels that the platform measures with, in the order of its type; without
        those that the trial lacks."""
        return [channel for _, channel in self.measured]

    @property
    def labels(self) -> list[str]:
        """The labels of its channels, also where these were not read (`Trial.unread`)."""
        unread: list[str] | None = self._described("unread")
        return [channel.label for channel in self.channels] if unread is None else unread

    @property
    def is_read(self) -> bool:
        """Whether the analog channels that it measures with were read: without them nobody knows
        its wrench (`Trial.unread`)."""
        return self._described("unread") is None

    @property
    def measured(self) -> list[tuple[Quantity | None, Channel]]:
        """The channels, each behind what it measures: ``"force"``, ``"moment"`` or ``"length"``;
        None for platforms of types that nobody has described."""
        handles = calls.platform_channels(self._trial, self._index)
        quantities = QUANTITIES.get(self.type, ())
        return [
            (quantity, Channel(self._trial, handle))
            for quantity, handle in zip_longest(quantities, handles)
            if handle is not None
        ]

    @property
    def units(self) -> WrenchUnits:
        """Units of what the platform measures, as its channels and the markers name them; nothing
        is converted. Without markers, the metadata name the unit of points.

        Moments of type 3 are computed: forces times the unit of points. Outputs in volts, of type
        4, tell no unit.
        """
        point = place_unit(self._trial)
        force = self._unit_of("force")
        if self.type == 3:
            return WrenchUnits(force, f"{force}{point}" if force and point else "", point)
        return WrenchUnits(force, self._unit_of("moment"), point)

    def _unit_of(self, quantity: Quantity) -> str:
        """The unit of the first channel of a quantity; empty where that names none of it."""
        for measured, channel in self.measured:
            if measured == quantity:
                unit = channel.unit
                return "" if unit.lower() in {"v", "mv", "uv", "µv", "unknown"} else unit
        return ""

    def wrench(
        self,
        threshold: float = 10.0,
        at: Literal["cop", "origin"] = "cop",
        frame: Literal["lab", "plate"] = "lab",
    ) -> Wrench:
        """Force, moment and point of application, with the signs that the channels have.

        No file says whether its channels mean the force on the platform or the one on the person;
        `reaction` decides it by the load. Nothing is converted.

        Parameters
        ----------
        threshold : float
            Least force along the platform's own z axis, either way, at which somebody stands on it;
            in the unit of the force channels.
        at : {"cop", "origin"}
            Where the moment is taken: at the point of application, where only the free moment about
            the platform's normal is left, or at the measuring origin.
        frame : {"lab", "plate"}
            The axes: those of the laboratory, or those of `Platform.frame`, which begin at the
            centre of the surface.

        Returns
        -------
        Wrench
            NaN throughout, and without contact, for a platform that has no wrench: the log says
            why.

        Notes
        -----
        Under the threshold there is no contact. Of ``at="cop"`` the point is NaN there, the force
        is what was measured, and the moment is the one **about the measuring origin**, another
        quantity: take ``moment[contact]`` for free moments. With ``at="origin"`` forces, moments
        and points are the same with every threshold.

        Raises
        ------
        ValueError
            The threshold is negative or NaN, `at` or `frame` is neither of its words, or the analog
            channels of the file were not read (`Trial.unread`).
        TypeError
            The threshold is no number.
        """
        force, moment, point = self._wrench(at, frame, threshold)
        applied = point if at == "cop" else self._wrench("cop", frame, threshold)[2]
        contact = ~np.isnan(applied).any(axis=1)
        contact.flags.writeable = False
        return Wrench(
            force=force,
            moment=moment,
            point=point,
            time=self._trial.analogs.time,
            contact=contact,
            units=self.units,
        )

    def reaction(self, threshold: float = 20.0) -> Wrench:
        """The ground reaction: the force on the person, in the laboratory.

        It is `wrench`, turned round as a whole where the mean force upwards of the samples with
        contact is negative: one sign for the platform, so that moments and horizontal forces stay
        with the vertical one. The platform's axes may point into the floor or out of it. Upwards is
        the positive direction of the axis along which the corners of all platforms are level
        (`moxPY.trial.up_axis`). A platform that nobody stepped on keeps its signs.

        Parameters
        ----------
        threshold : float
            As for `wrench`.

        Raises
        ------
        ValueError
            The threshold is negative or NaN.
        TypeError
            The threshold is no number.
        """
        wrench = self.wrench(threshold)
        axis = up_axis(self._trial)
        if axis is None or np.nansum(wrench.force[wrench.contact, axis]) >= 0.0:
            return wrench
        return replace(wrench, force=read_only(-wrench.force), moment=read_only(-wrench.moment))

    def zero(self, start: float, stop: float) -> None:
        """Take the mean of a stretch, in which nobody was on the platform, off its channels.

        The channels change in place, all or none; offsets and scales that belong to the stored form
        of a channel stay. Of a platform of type 1 the two channels that measure a point are left
        alone: they have no baseline.

        Parameters
        ----------
        start, stop : float
            Seconds on the trial's clock; the samples with start ≤ t ≤ stop.

        Raises
        ------
        ValueError
            No sample lies in the stretch, a channel has no numbers there, or the analog channels
            of the file were not read.
        """
        if not self.is_read:
            raise ValueError("the analog channels were not read")
        stretch = self._stretch(start, stop)
        # By index: what is named twice has one baseline. No load has no place.
        channels = {c.index: c for quantity, c in self.measured if quantity != "length"}
        changed = []
        for channel in channels.values():
            values = channel.values
            unloaded = values[stretch]
            unloaded = unloaded[np.isfinite(unloaded)]
            if unloaded.size == 0:
                raise ValueError(
                    f"the channel '{channel.label}' has no numbers from {start} s to {stop} s"
                )
            changed.append((channel, values - unloaded.mean()))
        for channel, values in changed:
            channel.values = values

    def _stretch(self, start: float, stop: float) -> slice:
        """The samples of a stretch; instants count to a millionth of a sample."""
        time, rate = self._trial.analogs.time, self._trial.analogs.rate
        margin = 1e-6 / rate if rate > 0.0 else 0.0
        inside = np.flatnonzero((time >= start - margin) & (time <= stop + margin))
        if inside.size == 0:
            clock = f"{time[0]:g} s to {time[-1]:g} s" if time.size else "no samples"
            clock = clock if rate > 0.0 else "no rate"
            raise ValueError(
                f"there is no sample from {start} s to {stop} s; the trial has {clock}"
            )
        return slice(int(inside[0]), int(inside[-1]) + 1)

    def _wrench(self, at: str, frame: str, threshold: float) -> list[FloatArray]:
        least = real_number(threshold, "a threshold")
        return calls.platform_wrench(self._trial, self._index, at, frame, least)

    def _described(self, what: str) -> Any:
        return calls.platform_description(self._trial, self._index)[what]

    def _array(self, what: str) -> FloatArray:
        array: FloatArray = self._described(what)
        return array

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Platform):
            return NotImplemented
        return self._trial.this is other._trial.this and self._index == other._index

    def __hash__(self) -> int:
        return hash((id(self._trial.this), self._index))

    def __repr__(self) -> str:
        return one_line(f"platform {self._index}", lambda: f": {self._brief}")

    @property
    def _brief(self) -> str:
        return f"type {self.type}, {' '.join(self.labels) or 'no channels'}"
