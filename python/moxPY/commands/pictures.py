"""What ``moxpy plot`` does with one file."""

from __future__ import annotations

import re
from pathlib import Path
from typing import Any, NamedTuple

import numpy as np

from ..formats.target import Target
from ..trial import Trial

#: What `Trial.plot` draws without being told a channel.
PICTURES = (
    "angles", "moments", "powers", "forces", "butterfly", "emg", "events", "gaps", "sticks",
)  # fmt: skip

_DOTS_PER_INCH = 150


class Wanted(NamedTuple):
    """Which pictures are drawn."""

    names: tuple[str, ...]
    channels: tuple[str, ...]

    @property
    def parts(self) -> list[tuple[str, str | None]]:
        """The end of each file's name, and the channel of those that show one."""
        return [
            *((name, None) for name in self.names),
            *((f"channel_{_safe(label)}", label) for label in self.channels),
        ]


def draw(trial: Trial, wanted: Wanted, folder: Path, suffix: str, *, replace: bool) -> list[Path]:
    """Draw pictures of a trial, named after its file. The files that were made."""
    assert trial.path is not None
    with Target(folder, trial.path.stem, suffix, replace=replace) as target:
        for name, label in wanted.parts:
            place = target.path(name)
            axes = trial.plot.channel(label) if label else getattr(trial.plot, name)()
            figure: Any = np.atleast_1d(axes).flat[0].figure
            # Without its date a picture of the same trial is the same file.
            figure.savefig(place, dpi=_DOTS_PER_INCH, metadata=_undated(suffix))
    return target.paths


def _undated(suffix: str) -> dict[str, None]:
    return {".svg": {"Date": None}, ".pdf": {"CreationDate": None}}.get(suffix, {})


def _safe(label: str) -> str:
    """A label as part of a file's name."""
    return re.sub(r"[^\w.+-]+", "_", label)
