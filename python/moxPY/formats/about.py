"""What a file says about the trial in it, and about what was asked."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from ..trial.up_axis import up_axis
from .options import Options
from .text import plain

if TYPE_CHECKING:
    from ..trial import Trial


def about(trial: Trial, options: Options) -> dict[str, Any]:
    """Facts by name, all of which JSON can hold; None where the trial does not say it."""
    path = trial.path
    return {
        "source": None if path is None else plain(path.name),
        "subject": subject(trial),
        "frames": trial.frames,
        "rate": trial.rate,
        "first_frame": trial.first_frame,
        "samples_per_frame": trial.samples_per_frame,
        "analog_rate": trial.analogs.rate,
        "up": up(trial, options),
        "length_unit": _only(list(trial.markers.units.values())) or _said(trial, "POINT", "UNITS"),
        "force_unit": _only([plate.units.force for plate in trial.platforms]),
        "moment_unit": _only([plate.units.moment for plate in trial.platforms]),
        "side": options.side,
        "threshold": options.threshold,
    }


def subject(trial: Trial) -> str | None:
    """Who was recorded, as the metadata names them."""
    return _said(trial, "SUBJECTS", "NAMES")


def up(trial: Trial, options: Options) -> str | None:
    """The axis that points upwards: ``"x"``, ``"y"``, ``"z"``."""
    axis = up_axis(trial)
    return options.up if axis is None else "xyz"[axis]


def _said(trial: Trial, group: str, entry: str) -> str | None:
    """The texts of an entry of the metadata."""
    entries = trial.metadata.get(group)
    found = None if entries is None else entries.get(entry)
    listed = found if isinstance(found, list) else [found]
    told = [plain(text).strip() for text in listed if isinstance(text, str) and text.strip()]
    return ", ".join(told) or None


def _only(units: list[str]) -> str | None:
    """The unit, or all of them where there are several."""
    return ", ".join(dict.fromkeys(plain(unit) for unit in units if unit)) or None
