"""The unit of places in the laboratory."""

from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from .trial import Trial


def place_unit(trial: Trial) -> str:
    """The unit of the markers; without any, as where platforms were recorded alone, the one that
    the metadata name. Empty where there is none, or markers have several."""
    if trial.markers:
        return trial.markers.unit or ""
    named = trial.metadata["POINT"].get("UNITS") if "POINT" in trial.metadata else ""
    return named if isinstance(named, str) else ""
