"""One stride: from a strike of a foot to its next one."""

from __future__ import annotations

from dataclasses import dataclass, field

import numpy as np

from ..trial.foot_events import Side
from ..trial.samples import FloatArray

OTHER: dict[Side, Side] = {"Left": "Right", "Right": "Left"}


def _nowhere() -> FloatArray:
    return np.full(2, np.nan)


@dataclass(frozen=True, kw_only=True, slots=True)
class Stride:
    """A stride of one foot; NaN for what the trial does not tell.

    Times are seconds on the trial's clock, places metres in the level plane: the first axis, turned
    by a quarter anticlockwise as seen from above, is the second one.
    """

    side: Side  #: whose foot
    start: float  #: its strike
    stop: float  #: its next strike
    off: float = np.nan  #: when the foot leaves the floor
    other_off: float = np.nan  #: when the other foot leaves the floor
    other_strike: float = np.nan  #: when the other foot strikes
    begin: FloatArray = field(default_factory=_nowhere)  #: where the foot struck, (2,)
    between: FloatArray = field(default_factory=_nowhere)  #: where the other foot struck, (2,)
    end: FloatArray = field(default_factory=_nowhere)  #: where the foot struck again, (2,)

    @property
    def duration(self) -> float:
        """Seconds from strike to strike."""
        return self.stop - self.start

    @property
    def is_walked(self) -> bool:
        """Whether one foot at least is always on the floor: each foot leaves it only after the
        other one struck."""
        return self.start <= self.other_off < self.other_strike <= self.off < self.stop

    @property
    def along(self) -> FloatArray:
        """The direction of walking, a vector of length 1, shape (2,): from the foot's place to its
        next one."""
        way = self.end - self.begin
        length = np.hypot(*way)
        return way / length if length > 0.0 else _nowhere()
