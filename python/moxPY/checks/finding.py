"""What a check finds."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Literal

#: An error is wrong whatever was recorded, a warning wants a look, a note is good to know.
Severity = Literal["error", "warning", "note"]


@dataclass(frozen=True, kw_only=True, slots=True)
class Finding:
    """Something about a trial that may be wrong.

    Attributes
    ----------
    rule : str
        The id of the rule that found it.
    severity : {"error", "warning", "note"}
        How bad that is.
    channel : str or None
        The key of the channel that it is about; None for what is about none or about several.
    text : str
        What was found, without the channel: one line.
    frames : tuple of int or None
        The first and the last frame of the place, as the trial numbers its frames; where there are
        several places, of the worst one. None for what is true of the whole trial.
    time : float or None
        Seconds on the trial's clock at which the place begins; of an event its time.
    """

    rule: str
    severity: Severity
    channel: str | None
    text: str
    frames: tuple[int, int] | None = None
    time: float | None = None
