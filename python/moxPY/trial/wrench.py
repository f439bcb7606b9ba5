"""What a force platform measured."""

from __future__ import annotations

from dataclasses import dataclass
from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray

from .samples import FloatArray


class WrenchUnits(NamedTuple):
    """Units of a wrench, as the trial names them; empty where it does not."""

    force: str  #: that of the force channels
    moment: str  #: that of the moment channels
    point: str  #: that of the points


@dataclass(frozen=True, eq=False, slots=True, kw_only=True)
class Wrench:
    """Force, moment and the point where they act, a row a sample; arrays are read-only."""

    force: FloatArray  #: (samples, 3)
    moment: FloatArray  #: (samples, 3), about `point` where there is contact
    point: FloatArray  #: (samples, 3)
    time: FloatArray  #: (samples,), seconds on the trial's clock
    contact: NDArray[np.bool_]  #: (samples,), whether the platform carries the threshold
    units: WrenchUnits

    def __len__(self) -> int:
        return len(self.time)

    def __repr__(self) -> str:
        force, moment, point = (unit or "?" for unit in self.units)
        return (
            f"<wrench: {len(self)} samples, {np.count_nonzero(self.contact)} with contact, "
            f"{force}, {moment}, {point}>"
        )
