"""What the metadata say of force platforms, changed with the trial."""

from __future__ import annotations

from collections.abc import Callable
from typing import TYPE_CHECKING

import numpy as np

from .samples import FloatArray

if TYPE_CHECKING:
    from .trial import Trial


def change_entry(trial: Trial, name: str, change: Callable[[FloatArray], FloatArray]) -> None:
    """Change the numbers of an entry of the force platforms, where there is such an entry.

    Its dimensions stay; whole numbers become real ones, since what comes of them may be none.

    Parameters
    ----------
    name : str
        Such as ``"CORNERS"``.
    change : callable
        Gives as many numbers as it gets, in the same order.
    """
    group = trial.metadata.get("FORCE_PLATFORM")
    if group is None or name not in group or group.entry(name).type == "Char":
        return
    former = np.asarray(group[name], dtype=np.float64)
    changed = change(former)
    if group.entry(name).type != "Real":
        del group[name]
    group[name] = changed.reshape(former.shape)
