"""A trial as rules look at it."""

from __future__ import annotations

from functools import cached_property
from typing import TYPE_CHECKING

import numpy as np
from numpy.typing import NDArray

from ..trial.samples import FloatArray
from ..trial.units import parse_unit

if TYPE_CHECKING:
    from ..trial.trial import Trial


class Recording:
    """A trial, each part of which is read once, when the first rule asks for it.

    Arrays have the channel first, so that the samples of one lie together: rules look at one
    channel after the other.
    """

    def __init__(self, trial: Trial) -> None:
        self.trial = trial

    @cached_property
    def rate(self) -> float:
        """Frames a second."""
        return self.trial.rate

    @cached_property
    def frames(self) -> int:
        """Number of frames."""
        return self.trial.frames

    @cached_property
    def first_frame(self) -> int:
        """The number of the first frame."""
        return self.trial.first_frame

    def frames_at(self, first: int, last: int) -> tuple[int, int]:
        """Frames by their numbers, from indices."""
        return self.first_frame + int(first), self.first_frame + int(last)

    def time_at(self, index: int) -> float:
        """The instant of a frame, from its index."""
        return float((self.first_frame - 1 + int(index)) / self.rate)

    @cached_property
    def markers(self) -> list[str]:
        """The keys of the markers."""
        return self.trial.markers.labels

    @cached_property
    def places(self) -> FloatArray:
        """Where the markers were, in the trial's unit: (markers, frames, 3)."""
        return np.ascontiguousarray(self.trial.markers.values.transpose(1, 0, 2))

    @cached_property
    def seen(self) -> NDArray[np.bool_]:
        """Whether they were seen: (markers, frames)."""
        # A sum is NaN where one of three is, and much faster than asking each.
        flags: NDArray[np.bool_] = ~np.isnan(self.places.sum(axis=2))
        return flags

    @cached_property
    def metre(self) -> float | None:
        """The trial's units of length in a metre; None where no unit is named, or several are."""
        unit = parse_unit(self.trial.markers.unit or "")
        return 1.0 / unit.size if unit is not None and unit.quantity == "length" else None

    @property
    def point_unit(self) -> str:
        """The unit of the markers, for texts."""
        return self.trial.markers.unit or ""

    @cached_property
    def analogs(self) -> list[str]:
        """The keys of the analog channels."""
        return self.trial.analogs.labels

    @cached_property
    def signals(self) -> FloatArray:
        """The samples of the analog channels: (channels, samples)."""
        return np.ascontiguousarray(self.trial.analogs.values.T)

    @cached_property
    def samples_per_frame(self) -> int:
        """Samples of an analog channel in each frame."""
        return max(1, self.trial.samples_per_frame)

    def frames_of_samples(self, first: int, last: int) -> tuple[int, int]:
        """Frames by their numbers, from indices of analog samples."""
        ratio = self.samples_per_frame
        return self.frames_at(int(first) // ratio, int(last) // ratio)

    def time_of_sample(self, index: int) -> float:
        """The instant of an analog sample, from its index."""
        first = (self.first_frame - 1) * self.samples_per_frame
        return float((first + int(index)) / (self.rate * self.samples_per_frame))
