"""What ``moxpy edit`` changes, in the order in which it does."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from dataclasses import dataclass
from fnmatch import fnmatchcase
from pathlib import Path
from typing import NamedTuple

from ..trial import Channels, Trial
from ..trial.kinds import KINDS
from ..trial.labels import nearest
from ..trial.writing import Processor, Storage
from .outputs import place
from .parse import Setting, Stretch
from .set_entry import set_entry

Verb = Callable[[Trial], Trial]


@dataclass(frozen=True, kw_only=True, slots=True)
class Edits:
    """Changes of a trial; what is left out changes nothing."""

    set: tuple[Setting, ...] = ()
    remove: tuple[str, ...] = ()
    rename: tuple[tuple[str, str], ...] = ()
    fill_gaps: int | None = None
    crop: Stretch | None = None
    resample: float | None = None
    units: tuple[str, str, str] | None = None
    up: str | None = None

    def applied(self, trial: Trial) -> Trial:
        """The changed trial; the one that is given may be changed, too."""
        for setting in self.set:
            set_entry(trial, setting)
        remove(trial, self.remove)
        rename(trial, dict(self.rename))
        for verb in self._verbs():
            trial = verb(trial)
        return trial

    def _verbs(self) -> Iterator[Verb]:
        frames, stretch, rate, units = self.fill_gaps, self.crop, self.resample, self.units
        if frames is not None:
            yield lambda trial: trial.fill_gaps(frames)
        if stretch is not None:
            yield lambda trial: _cropped(trial, stretch)
        if rate is not None:
            yield lambda trial: trial.resample(rate)
        if units is not None:
            yield lambda trial: trial.in_units(*units)
        if self.up is not None:
            yield {"x": Trial.x_up, "y": Trial.y_up, "z": Trial.z_up}[self.up]


class Written(NamedTuple):
    """Where and how changed trials are written."""

    folder: Path
    replace: bool
    storage: Storage | None = None
    processor: Processor | None = None


def edit(trial: Trial, edits: Edits, written: Written) -> Path:
    """Change a trial and write it under the name of its file. Where it was written."""
    assert trial.path is not None
    path = place(written.folder, f"{trial.path.stem}.c3d", replace=written.replace)
    edits.applied(trial).write(path, storage=written.storage, processor=written.processor)
    return path


def remove(trial: Trial, patterns: tuple[str, ...]) -> None:
    """Remove the channels of labels, or of patterns with ``*``, ``?`` and ``[…]``.

    What is the label of a channel means that one, whatever it looks like. A pattern may fit none.

    Raises
    ------
    KeyError
        No channel has a label. Nothing is removed then.
    """
    found: dict[tuple[str, str], Channels] = {}
    for pattern in patterns:
        hits = _meant(trial, pattern)
        if not hits and not set("*?[") & set(pattern):
            raise _no_channel(trial, pattern)
        found |= hits
    # From the last one on: of two that share a label, the second one has the key label_2.
    for (_, label), channels in reversed(found.items()):
        del channels[label]


def _meant(trial: Trial, pattern: str) -> dict[tuple[str, str], Channels]:
    labels = {(kind, label): part for kind, part in _kinds(trial) for label in part.labels}
    exact = {key: part for key, part in labels.items() if key[1] == pattern}
    return exact or {key: part for key, part in labels.items() if fnmatchcase(key[1], pattern)}


def rename(trial: Trial, labels: dict[str, str]) -> None:
    """Give channels other labels, in every kind that has them.

    Raises
    ------
    KeyError
        No channel has a label.
    ValueError
        Two channels of a kind would have one label.
    """
    for old in labels:
        if not any(old in part for _, part in _kinds(trial)):
            raise _no_channel(trial, old)
    for _, part in _kinds(trial):
        part.rename({old: new for old, new in labels.items() if old in part})


def _kinds(trial: Trial) -> list[tuple[str, Channels]]:
    return [(kind, getattr(trial, kind)) for kind in KINDS]


def _no_channel(trial: Trial, label: str) -> KeyError:
    labels = [label for _, part in _kinds(trial) for label in part.labels]
    return KeyError(f"no channel '{label}'{nearest(label, labels)}")


def _cropped(trial: Trial, stretch: Stretch) -> Trial:
    return trial.crop(stretch.first, stretch.last, start=stretch.start, stop=stretch.stop)
