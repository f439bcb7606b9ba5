"""A trial as rules look at it."""

from __future__ import annotations

from functools import cached_property
from typing import TYPE_CHECKING

import numpy as np
from numpy.typing import NDArray

from ..trial.place_unit import place_unit
from ..trial.samples import FloatArray
from ..trial.units import parse_unit
from .segment_points import segment_points

if TYPE_CHECKING:
    from ..trial.trial import Trial


class Recording:
    """A trial, each part of which is read once, when the first rule asks for it.

    Arrays have the channel first and the frame last, so that the numbers which rules go through
    lie together.
    """

    def __init__(self, trial: Trial) -> None:
        self.trial = trial

    @cached_property
    def rate(self) -> float:
        """Frames a second; 1 where the trial does not say it."""
        return self.trial.rate or 1.0

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
        """Where the markers were, in the trial's unit: (markers, 3, frames)."""
        return np.ascontiguousarray(self.trial.markers.values.transpose(1, 2, 0))

    @cached_property
    def seen(self) -> NDArray[np.bool_]:
        """Whether they were seen: (markers, frames)."""
        flags: NDArray[np.bool_] = ~np.isnan(self.places).any(axis=1)
        return flags

    @cached_property
    def size(self) -> float:
        """The longest edge of the space that all markers lie in, in the trial's unit; 0 without
        any that was seen."""
        places = self.places[self.seen.any(axis=1)]
        if places.size == 0:
            return 0.0
        highest = np.fmax.reduce(places, axis=2).max(axis=0)
        lowest = np.fmin.reduce(places, axis=2).min(axis=0)
        return float((highest - lowest).max())

    @cached_property
    def metre(self) -> float | None:
        """How many of the trial's units of length are a metre; None where none is named."""
        unit = parse_unit(self.point_unit)
        return 1.0 / unit.size if unit is not None and unit.quantity == "length" else None

    @cached_property
    def segment_points(self) -> set[str]:
        """The markers that are no markers but ends of the axes of segments."""
        return segment_points(self.markers)

    def measured(self, marker: int) -> NDArray[np.bool_]:
        """In which frames a place was measured and not computed, as its residual says; all of them
        where the trial has no residuals over 0."""
        flags: NDArray[np.bool_] = self._residuals[marker] > 0.0
        return flags if self._has_residuals else np.ones_like(flags)

    @cached_property
    def _residuals(self) -> FloatArray:
        channels = self.trial.markers.items()
        return np.array([marker.residuals for _, marker in channels]).reshape(-1, self.frames)

    @cached_property
    def _has_residuals(self) -> bool:
        return bool((self._residuals > 0.0).any())

    @cached_property
    def point_unit(self) -> str:
        """The unit of places, as `place_unit` tells it."""
        return place_unit(self.trial)

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
