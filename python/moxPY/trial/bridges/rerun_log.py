"""A recording of Rerun, and the time lines of a trial in it."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

if TYPE_CHECKING:
    from ..trial import Trial


class Log:
    """What a trial is logged with.

    Parameters
    ----------
    package : module
        Rerun.
    recording : rerun.RecordingStream
    """

    def __init__(self, trial: Trial, package: Any, recording: Any) -> None:
        self.trial = trial
        self.package = package
        self._recording = recording
        first = trial.first_frame
        self._frames = self._clock(first + np.arange(trial.frames), trial.time)
        samples = trial.analogs.time
        numbers = first + np.arange(len(samples)) // max(trial.samples_per_frame, 1)
        self._samples = self._clock(numbers, samples)

    def _clock(self, frames: NDArray[Any], seconds: NDArray[Any]) -> list[Any]:
        """The time lines of things at these frames, one of them without a rate."""
        column = self.package.TimeColumn
        clock = [column("frame", sequence=frames)]
        if self.trial.rate > 0.0:
            clock.append(column("time", duration=seconds))
        return clock

    def entity(self, *parts: str) -> str:
        """The path of an entity, whatever characters labels have."""
        return "/".join(self.package.escape_entity_path_part(part) for part in parts)

    def always(self, entity: str, what: Any) -> None:
        """Log what holds at each time."""
        self._recording.log(entity, what, static=True)

    def by_frame(self, entity: str, columns: Any) -> None:
        """Log a row a frame."""
        if self.trial.frames:
            self._recording.send_columns(entity, indexes=self._frames, columns=columns)

    def by_sample(self, entity: str, columns: Any) -> None:
        """Log a row an analog sample."""
        if len(self.trial.analogs.time):
            self._recording.send_columns(entity, indexes=self._samples, columns=columns)

    def at(self, seconds: NDArray[Any], entity: str, columns: Any) -> None:
        """Log rows at times of the trial's clock."""
        if len(seconds):
            frames = np.rint(seconds * self.trial.rate).astype(np.int64) + 1
            clock = self._clock(frames, seconds)
            self._recording.send_columns(entity, indexes=clock, columns=columns)
