"""What the files of a trial should hold."""

from __future__ import annotations

import math
from typing import Any

import numpy as np
from moxPY.trial import Trial
from numpy.typing import NDArray


def expected_table(trial: Trial, kind: str) -> NDArray[np.float64]:
    """The time, and a column a component of each channel."""
    channels: Any = getattr(trial, kind)
    time = trial.analogs.time if kind == "analogs" else trial.time
    columns = math.prod(channels.values.shape[1:])
    return np.column_stack([time, channels.values.reshape(len(time), columns)])
