"""JSON of everything but samples: what the trial has, events, metadata, platforms."""

from __future__ import annotations

import json
from typing import TYPE_CHECKING, Any

from .options import Options
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """One file, in UTF-8, indented."""
    del options
    text = json.dumps(_content(trial), indent=2, ensure_ascii=False)
    target.path().write_text(text + "\n", encoding="utf-8")


def _content(trial: Trial) -> dict[str, Any]:
    return {
        "frames": trial.frames,
        "rate": trial.rate,
        "first_frame": trial.first_frame,
        "samples_per_frame": trial.samples_per_frame,
    }
