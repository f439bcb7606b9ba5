"""The parts of a trial as tables: columns of numbers over time, and the list of events."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.bridges.tables import AXES, event_columns
from ..trial.kinds import KINDS
from ..trial.partial import measured_platforms, unread_of
from ..trial.samples import FloatArray
from .options import PARTS, Options
from .reaction import reactions
from .text import distinct, plain

if TYPE_CHECKING:
    from ..trial import Trial

#: What tables are made of.
TABLES = ("trial", *KINDS, "platforms", "events")


@dataclass(frozen=True, slots=True)
class Part:
    """Numbers over time, a column a component of a channel or of a platform."""

    name: str  #: such as ``"markers"``
    rate: float  #: rows a second
    time: FloatArray  #: (rows,), seconds on the trial's clock
    levels: tuple[str, ...]  #: what each part of a column's name is: ``("label", "axis")``
    columns: list[tuple[Any, ...]]  #: the names of the columns in these parts
    units: list[str]  #: of each column; empty where the trial names none
    values: FloatArray  #: (rows, columns)

    def names(self, separator: str) -> list[str]:
        """The names of the columns, each in one text; `text.distinct` makes them differ."""
        texts = [[str(piece) for piece in column] for column in self.columns]
        if self.levels[0] == "platform":
            texts = [[f"platform_{number}", *rest] for number, *rest in texts]
        return [separator.join(pieces) for pieces in texts]


def chosen(trial: Trial, options: Options, offered: Sequence[str], format: str) -> list[str]:
    """The parts that a file of a format gets: all that the trial has, or those that are asked for.

    Parameters
    ----------
    offered : sequence of str
        What the format can hold.
    format : str
        Its name, for the message.

    Raises
    ------
    ValueError
        The trial lacks a part that is asked for, the format cannot hold it, or the trial has
        nothing that it could.
    """
    if options.parts is None:
        found = [part for part in offered if has(trial, part)]
        if not any(part != "trial" for part in found):
            kinds = _listed([part for part in offered if part != "trial"], "or")
            raise ValueError(f"the trial has no {kinds}, of which {format} needs one")
        return found
    for part in options.parts:
        if part not in offered:
            raise ValueError(f"{format} holds {_listed(offered, 'and')}, not '{part}'")
        require(trial, part)
    return [part for part in PARTS if part in options.parts]


def has(trial: Trial, part: str) -> bool:
    """Whether the trial has something of a part."""
    if part == "platforms":
        return bool(measured_platforms(trial))
    return part == "trial" or len(getattr(trial, part)) > 0


def require(trial: Trial, part: str, why: str = "which is asked for") -> None:
    """ValueError where the trial has nothing of a part."""
    if not has(trial, part):
        if unread_of(trial, "analogs" if part == "platforms" else part):
            raise ValueError(f"the {spelled(part)} were not read, {why}")
        raise ValueError(f"the trial has no {spelled(part)}, {why}")


def require_clock(trial: Trial) -> None:
    """ValueError where nothing tells when the frames are."""
    if not trial.rate > 0.0:
        raise ValueError("the trial has no rate, without which frames have no time: assign one")


def spelled(part: str) -> str:
    """What messages call a part."""
    return {"platforms": "force platforms", "analogs": "analog channels"}.get(part, part)


def _listed(parts: Sequence[str], word: str) -> str:
    texts = [spelled(part) for part in parts]
    return texts[0] if len(texts) == 1 else f"{', '.join(texts[:-1])} {word} {texts[-1]}"


def part_of(trial: Trial, name: str, options: Options) -> Part:
    """A part that is numbers over time: a kind of channels, or the platforms."""
    if name == "platforms":
        return _platforms(trial, options)
    require_clock(trial)
    channels = getattr(trial, name)
    labels = [plain(label) for label in channels.labels]
    units = [plain(unit) for unit in channels.units.values()]
    if name == "analogs":
        columns: list[tuple[Any, ...]] = [(label,) for label in labels]
        analogs = trial.analogs
        return Part(name, analogs.rate, analogs.time, ("label",), columns, units, analogs.values)
    columns = [(label, axis) for label in labels for axis in AXES]
    repeated = [unit for unit in units for _ in AXES]
    values = channels.values.reshape(trial.frames, len(columns))
    return Part(name, trial.rate, trial.time, ("label", "axis"), columns, repeated, values)


def headings(part: Part) -> list[str]:
    """The first row of a table for people: ``time [s]``, ``LASI.x [mm]`` …, all different."""
    units = [f" [{unit}]" if unit else "" for unit in part.units]
    names = [f"{name}{unit}" for name, unit in zip(part.names("."), units, strict=True)]
    return distinct(["time [s]", *names])


def _platforms(trial: Trial, options: Options) -> Part:
    """Force, point of application and free moment of each platform, numbered from 1."""
    require_clock(trial)
    columns: list[tuple[Any, ...]] = []
    units: list[str] = []
    arrays: list[FloatArray] = []
    for number, wrench in enumerate(reactions(trial, options), 1):
        for quantity, unit, array in (
            ("force", wrench.units.force, wrench.force),
            ("point", wrench.units.point, wrench.point),
            ("free_moment", wrench.units.moment, wrench.moment),
        ):
            columns += [(number, quantity, axis) for axis in AXES]
            units += [plain(unit)] * len(AXES)
            arrays.append(array)
    rate, time = trial.analogs.rate, trial.analogs.time
    values = np.concatenate(arrays, axis=1) if arrays else np.empty((len(time), 0))
    levels = ("platform", "quantity", "axis")
    return Part("platforms", rate, time, levels, columns, units, values)


def events_of(trial: Trial) -> dict[str, list[Any]]:
    """The events, a row each, column by column in order of time."""
    return {
        name: [plain(cell) if isinstance(cell, str) else cell for cell in cells]
        for name, cells in event_columns(trial).items()
    }
