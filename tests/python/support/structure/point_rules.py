"""The group POINT."""

from __future__ import annotations

import numpy as np

from support.stored_file import CHARACTER, INTEGER, REAL
from support.structure.list_rules import list_lengths, required
from support.structure.written_file import LARGEST_WORD, Deviations, WrittenFile

REQUIRED = {
    "POINT:USED": INTEGER, "POINT:SCALE": REAL, "POINT:RATE": REAL, "POINT:DATA_START": INTEGER,
    "POINT:FRAMES": None, "POINT:LABELS": CHARACTER, "POINT:DESCRIPTIONS": CHARACTER,
    "POINT:UNITS": CHARACTER,
}  # fmt: skip
KINDS = ("ANGLES", "FORCES", "MOMENTS", "POWERS")


def parameters(file: WrittenFile) -> Deviations:
    yield from required(file, REQUIRED)
    for name in ("LABELS", "DESCRIPTIONS"):
        yield from list_lengths(file, f"POINT:{name}", file.points)


def scale(file: WrittenFile) -> Deviations:
    stored = file.scalar("POINT:SCALE")
    sign = -1 if file.storage == "real" else 1
    if not (np.isfinite(stored) and sign * stored > 0):
        kind = "reals have a negative" if sign < 0 else "integers have a positive"
        yield f"POINT:SCALE: {stored}; {kind} scale"


def frame_counts(file: WrittenFile) -> Deviations:
    record = file.parameters.get("POINT:FRAMES")
    stored = file.count("POINT:FRAMES")
    long_frames = file.count("POINT:LONG_FRAMES")
    if record is not None and record.type == INTEGER:
        if file.frames >= LARGEST_WORD and stored != LARGEST_WORD:
            yield f"POINT:FRAMES: {stored} for {file.frames} frames"
        if file.frames < LARGEST_WORD and stored != file.frames:
            yield f"POINT:FRAMES: {stored}, POINT:LONG_FRAMES is {long_frames}"
    elif stored != file.frames:
        yield f"POINT:FRAMES: {stored}, POINT:LONG_FRAMES is {long_frames}"
    trial = file.trial_frames
    if trial is not None and trial != file.frames:
        yield f"TRIAL:ACTUAL_END_FIELD: a range of {trial} frames, the file has {file.frames}"
    first = file.trial_first
    if trial is not None and first is not None:
        beyond = first + file.frames - 1 > LARGEST_WORD
        if file.word(4) != first and not (beyond and file.word(4) == 1):
            yield f"TRIAL:ACTUAL_START_FIELD: {first}, header word 4 is {file.word(4)}"


def kinds(file: WrittenFile) -> Deviations:
    """Lists of angles, forces, ... name points that exist, and each of them once."""
    labels = set(file.listed_texts("POINT:LABELS"))
    seen: set[str] = set()
    for kind in KINDS:
        yield from list_lengths(file, f"POINT:{kind}", None)
        for label in file.listed_texts(f"POINT:{kind}"):
            if label not in labels:
                yield f"POINT:{kind}: no point is called {label!r}"
            if label in seen:
                yield f"POINT:{kind}: {label!r} is listed twice"
            seen.add(label)
