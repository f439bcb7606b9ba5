"""C3D: in single precision, as `Trial.write` makes it."""

from __future__ import annotations

from typing import TYPE_CHECKING

from .options import Options
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """One file with everything; the units and axes of the options are in its parameters."""
    del options  # the trial has them already
    trial.write(target.path())
