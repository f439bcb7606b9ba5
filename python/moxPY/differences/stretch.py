"""The frames that two trials have in common."""

from __future__ import annotations

from typing import NamedTuple

from .comparison import Comparison


class Stretch(NamedTuple):
    """The samples of the frames that both trials have, by the numbers of the frames."""

    first_frame: int
    first: slice  #: the samples of the first trial
    second: slice  #: those of the second one
    per_frame: int  #: samples in a frame
    rate: float  #: of the first trial's frames

    @classmethod
    def of(cls, compared: Comparison, per_frame: int = 1) -> Stretch:
        """The stretch of channels with so many samples in a frame."""
        one, other = compared.first, compared.second
        first = max(one.first_frame, other.first_frame)
        count = max(0, min(one.last_frame, other.last_frame) - first + 1)
        starts = [(first - trial.first_frame) * per_frame for trial in (one, other)]
        slices = [slice(start, start + count * per_frame) for start in starts]
        return cls(first, slices[0], slices[1], per_frame, one.rate)

    def place(self, row: int) -> tuple[int, float | None]:
        """The frame of a sample, and its instant on the first trial's clock."""
        sample = (self.first_frame - 1) * self.per_frame + row
        time = sample / (self.rate * self.per_frame) if self.rate > 0.0 else None
        return self.first_frame + row // self.per_frame, time
