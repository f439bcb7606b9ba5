"""The group ANALOG."""

from __future__ import annotations

import numpy as np

from support.stored_file import CHARACTER, INTEGER, REAL
from support.structure.list_rules import lists_in_step, required
from support.structure.written_file import Deviations, WrittenFile

REQUIRED_WITH_CHANNELS = {
    "ANALOG:LABELS": CHARACTER, "ANALOG:DESCRIPTIONS": CHARACTER, "ANALOG:GEN_SCALE": REAL,
    "ANALOG:SCALE": REAL, "ANALOG:OFFSET": None, "ANALOG:UNITS": CHARACTER, "ANALOG:RATE": REAL,
}  # fmt: skip
LISTS = ("LABELS", "DESCRIPTIONS", "SCALE", "OFFSET", "UNITS", "GAIN")


def parameters(file: WrittenFile) -> Deviations:
    yield from required(file, {"ANALOG:USED": INTEGER})
    if file.channels == 0:
        return
    yield from required(file, REQUIRED_WITH_CHANNELS)
    yield from lists_in_step(file, [f"ANALOG:{name}" for name in LISTS], file.channels)


def scales(file: WrittenFile) -> Deviations:
    if file.channels == 0:
        return
    for path in ("ANALOG:SCALE", "ANALOG:OFFSET", "ANALOG:GEN_SCALE"):
        if not np.isfinite(file.listed_values(path)).all():
            yield f"{path}: not finite"


def format_word(file: WrittenFile) -> Deviations:
    for text in file.texts("ANALOG:FORMAT"):
        if text not in ("SIGNED", "UNSIGNED"):
            yield f"ANALOG:FORMAT: {text!r}"
