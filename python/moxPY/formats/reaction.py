"""What the force platforms measured, as it was asked for."""

from __future__ import annotations

from dataclasses import replace
from typing import TYPE_CHECKING

import numpy as np

from ..trial.platform import Platform
from ..trial.wrench import Wrench
from .options import Options

if TYPE_CHECKING:
    from ..trial import Trial


def reactions(trial: Trial, options: Options) -> list[Wrench]:
    """Force, point and free moment of each platform, on the side that is asked for.

    Without contact there is no point of application: point and moment are NaN there, and the force
    is what was measured.
    """
    return [_reaction(plate, options) for plate in trial.platforms]


def _reaction(plate: Platform, options: Options) -> Wrench:
    if options.side == "measured":
        wrench = plate.wrench(options.threshold)
    else:
        wrench = plate.reaction(options.threshold)
    sign = -1.0 if options.side == "plate" else 1.0
    # Without contact the moment is another quantity, the one about the measuring origin.
    moment = np.where(wrench.contact[:, np.newaxis], sign * wrench.moment, np.nan)
    return replace(wrench, force=sign * wrench.force, moment=moment)
