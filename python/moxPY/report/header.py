"""Who was recorded, when, how, and with what."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING

from ..trial.summary import date, device, subjects
from .blocks import Block, Subject, Table

if TYPE_CHECKING:
    from ..trial.trial import Trial

_KINDS = ("markers", "angles", "forces", "moments", "powers", "analogs")


def header(about: Subject) -> Iterator[Block]:
    """A column a trial."""
    for part in about.abreast():
        columns = [_facts(name, trial) for name, trial in part.pairs()]
        rows = [
            (title, *(column[title] for column in columns))
            for title in columns[0]
            if any(column[title] for column in columns)
        ]
        yield Table((), rows)


def names_of(trials: list[Trial]) -> str:
    """The subjects of the trials, each once; empty where no file names any."""
    return ", ".join(dict.fromkeys(name for trial in trials for name in subjects(trial)))


def _facts(name: str, trial: Trial) -> dict[str, str]:
    return {
        "File": name,
        "Subject": ", ".join(subjects(trial)),
        "Recorded": date(trial) or "not stated in the file",
        "Device": device(trial) or "not stated in the file",
        "Length": _length(trial),
        "Rates": _rates(trial),
        "Channels": ", ".join(
            f"{len(part)} {kind}" for kind in _KINDS if len(part := getattr(trial, kind))
        ),
        "Force platforms": ", ".join(f"type {plate.type}" for plate in trial.platforms),
        "Odd in the file": "; ".join(trial.warnings),
    }


def _length(trial: Trial) -> str:
    frames = f"{trial.frames} frames"
    if trial.frames:
        frames += f", {trial.first_frame} to {trial.last_frame}"
    return f"{trial.duration:.2f} s ({frames})" if trial.rate > 0.0 else frames


def _rates(trial: Trial) -> str:
    points = f"{trial.rate:g} Hz"
    return f"{points}, analog {trial.analogs.rate:g} Hz" if len(trial.analogs) else points
