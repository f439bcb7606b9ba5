"""A trial with a group of metadata, an entry of each kind."""

from __future__ import annotations

import _moxPY
import numpy as np
from moxPY.trial import Trial

GROUP = "LAB"


def lab_trial() -> Trial:
    """A trial with the group LAB."""
    trial = Trial.new(frames=3)
    trial.metadata[GROUP] = {
        "COUNT": 3,
        "HEIGHT": 2.5,
        "OPERATOR": "Ann",
        "ROOMS": [1, 2, 3],
        "OFFSETS": [[0.5, 1.5, 2.5], [3.5, 4.5, 5.5]],
        "NAMES": ["x", "yz"],
        "TABLE": [["a", "b", "c"], ["d", "e", "ff"]],
        "NOTHING": [],
        "BYTES": np.array([1, -2, 3]),
    }
    _moxPY.moxSetMetaDataFormat(trial, GROUP, "BYTES", "Byte")
    return trial
