"""Writes a C3D file to measure with, and beside it what a reader has to find.

    python make_trial.py KIND FOLDER         KIND is one of TRIALS

FOLDER/KIND.c3d is the file. FOLDER/KIND.layout holds as text what a program needs to decode it
without looking at its parameters; FOLDER/KIND.json, written last, the extents and the fingerprints
of both matrices, taken from the values that were written.
"""

from __future__ import annotations

import json
import sys
from dataclasses import asdict, dataclass
from pathlib import Path

import numpy as np
from column_sums import column_sums
from numpy.typing import NDArray
from support.c3d_bytes import Analog, C3DFile

Floats = NDArray[np.float32]

POINT_RATE_HZ = 200.0
POINT_SCALE = 0.1
GENERAL_SCALE = 0.5
GAP_FRAMES = 15  # 2 in 1000 frames start a gap, so that 3 % of the samples are invalid


@dataclass(frozen=True)
class Extents:
    """How much a trial holds."""

    points: int
    frames: int
    channels: int
    ratio: int


@dataclass(frozen=True)
class Form:
    """How a file stores its samples."""

    processor: str
    storage: str


REAL = "real"
FORMS = {
    REAL: Form("intel", "real"),
    "integer": Form("intel", "integer"),
    "dec": Form("dec", "real"),
    "mips": Form("mips", "real"),
}
BIG = Extents(60, 60_000, 32, 10)
TRIALS = {
    "big": (BIG, REAL),
    "big-integer": (BIG, "integer"),
    "big-dec": (BIG, "dec"),
    "big-mips": (BIG, "mips"),
    "typical": (Extents(55, 600, 40, 20), REAL),
    "small": (Extents(40, 500, 16, 10), REAL),
}


def scales(extents: Extents) -> Floats:
    return (0.0025 * np.arange(1, extents.channels + 1)).astype(np.float32)


def offsets(extents: Extents) -> NDArray[np.int16]:
    # None is negative: readers do not agree about those.
    return (15 + 40 * np.arange(extents.channels)).astype(np.int16)


def gaps(rng: np.random.Generator, extents: Extents) -> NDArray[np.bool_]:
    """(frames, points): where a marker was not seen."""
    starts = rng.random((extents.frames, extents.points)) < 0.002
    begun = np.cumsum(starts, axis=0)
    ended = np.zeros_like(begun)
    ended[GAP_FRAMES:] = begun[:-GAP_FRAMES]
    return np.asarray(begun > ended)


def point_records(rng: np.random.Generator, extents: Extents, frames: NDArray[np.int64]) -> Floats:
    """(frames, points, 4): positions in mm and the fourth word, as stored."""
    times = frames[:, None, None] / POINT_RATE_HZ
    phases = np.arange(extents.points * 3).reshape(1, extents.points, 3)
    records = np.empty((len(frames), extents.points, 4), dtype=np.float32)
    records[..., :3] = 900.0 + 8.0 * phases + 250.0 * np.sin(5.7 * times + phases)
    # Cameras that saw the marker in the high byte, residual in the low one.
    shape = (len(frames), extents.points)
    records[..., 3] = 256 * rng.integers(1, 128, shape) + rng.integers(3, 14, shape)
    return records


def analog_counts(rng: np.random.Generator, extents: Extents, frames: NDArray[np.int64]) -> Floats:
    """(samples, channels): counts of the converter, as stored."""
    samples = len(frames) * extents.ratio
    times = (frames[0] * extents.ratio + np.arange(samples)) / (POINT_RATE_HZ * extents.ratio)
    waves = 3000.0 * np.sin(times[:, None] * (2.0 + np.arange(extents.channels)))
    noise = rng.integers(-100, 101, (samples, extents.channels))
    return np.asarray(np.rint(waves + noise + offsets(extents)), dtype=np.float32)


def c3d_file(extents: Extents, form: Form, points: Floats, counts: Floats) -> C3DFile:
    """From (frames, points, 4) and (samples, channels), both as stored."""
    factors, shifts = scales(extents), offsets(extents)
    return C3DFile(
        [(f"M{number:03}", points[:, number]) for number in range(extents.points)],
        processor=form.processor,
        storage=form.storage,
        scale=POINT_SCALE,
        rate=POINT_RATE_HZ,
        point_descriptions=["marker"] * extents.points,
        analogs=[
            Analog(
                f"EMG{number + 1:02}", counts[:, number], scale=float(factors[number]),
                offset=int(shifts[number]), units="mV", description="muscle",
            )
            for number in range(extents.channels)
        ],
        samples_per_frame=extents.ratio,
        gen_scale=GENERAL_SCALE,
        analog_format="SIGNED",
        bits=16,
    )  # fmt: skip


def layout_text(extents: Extents, form: str, data_offset: int) -> str:
    numbers = [extents.points, extents.channels, extents.ratio, extents.frames, data_offset]
    lines = [
        form,
        " ".join(str(number) for number in numbers),
        f"{float(np.float32(POINT_SCALE))!r} {GENERAL_SCALE}",
    ]
    for scale, offset in zip(scales(extents), offsets(extents), strict=True):
        lines.append(f"{float(scale)!r} {offset}")
    return "\n".join(lines) + "\n"


def make_trial(kind: str, folder: Path) -> None:
    extents, form = TRIALS[kind]
    rng = np.random.default_rng(seed=7)
    absent = gaps(rng, extents)
    frames = np.arange(extents.frames)
    points = point_records(rng, extents, frames)
    points[absent] = [0.0, 0.0, 0.0, -1.0]
    counts = analog_counts(rng, extents, frames)
    file = c3d_file(extents, FORMS[form], points, counts)
    (folder / f"{kind}.c3d").write_bytes(file.to_bytes())
    layout = layout_text(extents, form, file.layout().data_offset)
    (folder / f"{kind}.layout").write_text(layout)

    positions = stored_positions(points[..., :3], FORMS[form])
    positions[absent] = np.nan
    values = (counts.astype(np.float64) - offsets(extents)) * (
        scales(extents).astype(np.float64) * GENERAL_SCALE
    )
    sums = {
        "points": column_sums(positions.reshape(extents.frames, -1)),
        "analogs": column_sums(values),
    }
    (folder / f"{kind}.json").write_text(json.dumps({"extents": asdict(extents), "sums": sums}))


def stored_positions(positions: Floats, form: Form) -> NDArray[np.float64]:
    """What is left of them in the file."""
    if form.storage == "real":
        return positions.astype(np.float64)
    counts = np.rint(positions.astype(np.float64) / POINT_SCALE)
    return counts * np.float64(np.float32(POINT_SCALE))


if __name__ == "__main__":
    make_trial(sys.argv[1], Path(sys.argv[2]))
