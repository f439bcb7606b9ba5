"""Writes a C3D file to measure with, and beside it what a reader has to find.

    python make_trial.py KIND FOLDER         KIND is "big" or "small"

FOLDER/KIND.c3d is real and in Intel order. FOLDER/KIND.layout holds as text what a program needs to
decode it without looking at its parameters; FOLDER/KIND.json, written last, the extents and the
fingerprints of both matrices, taken from the values that were written.
"""

from __future__ import annotations

import json
import sys
from dataclasses import asdict, dataclass
from pathlib import Path
from typing import Any, BinaryIO

import numpy as np
from c3d_records import BLOCK, parameter, parameter_section
from column_sums import column_sums
from numpy.typing import NDArray

Floats = NDArray[np.float32]

POINT_RATE_HZ = 200.0
GENERAL_SCALE = 0.5
FRAMES_AT_ONCE = 4000
GAP_FRAMES = 15  # 2 in 1000 frames start a gap, so that 3 % of the samples are invalid


@dataclass(frozen=True)
class Extents:
    """How much a trial holds."""

    points: int
    frames: int
    channels: int
    ratio: int


TRIALS = {"big": Extents(60, 60_000, 32, 10), "small": Extents(40, 500, 16, 10)}


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


def head(extents: Extents) -> bytes:
    """Header and parameters."""

    def section(data_start: int) -> bytes:
        names = range(1, extents.channels + 1)
        return parameter_section(
            {
                "POINT": [
                    parameter("USED", extents.points),
                    parameter("SCALE", -0.1),
                    parameter("RATE", POINT_RATE_HZ),
                    parameter("DATA_START", data_start),
                    # Counts are unsigned, whatever the type is called.
                    parameter("FRAMES", np.uint16(extents.frames).astype(np.int16)),
                    parameter("LABELS", [f"M{number:03}" for number in range(extents.points)]),
                    parameter("DESCRIPTIONS", ["marker"] * extents.points),
                    parameter("UNITS", "mm  "),
                ],
                "ANALOG": [
                    parameter("USED", extents.channels),
                    parameter("LABELS", [f"EMG{number:02}" for number in names]),
                    parameter("DESCRIPTIONS", ["muscle"] * extents.channels),
                    parameter("GEN_SCALE", GENERAL_SCALE),
                    parameter("SCALE", scales(extents)),
                    parameter("OFFSET", offsets(extents)),
                    parameter("UNITS", ["mV"] * extents.channels),
                    parameter("RATE", POINT_RATE_HZ * extents.ratio),
                    parameter("FORMAT", "SIGNED"),
                    parameter("BITS", 16),
                ],
                "FORCE_PLATFORM": [parameter("USED", 0)],
            }
        )

    # The length of the section does not depend on the number that it tells.
    data_start = 2 + len(section(0)) // BLOCK
    words = np.zeros(256, dtype="<u2")
    words[0] = 0x5002  # parameters start in block 2; 0x50 marks the format
    words[1:5] = [extents.points, extents.channels * extents.ratio, 1, extents.frames]
    words[6:8] = np.array([-0.1], dtype="<f4").view("<u2")
    words[8:10] = [data_start, extents.ratio]
    words[10:12] = np.array([POINT_RATE_HZ], dtype="<f4").view("<u2")
    return words.tobytes() + section(data_start)


def write_data(file: BinaryIO, extents: Extents) -> dict[str, Any]:
    """Appends the data section; fingerprints of the values in it."""
    rng = np.random.default_rng(seed=7)
    absent = gaps(rng, extents)
    points = np.empty((extents.frames, extents.points * 3), dtype=np.float32)
    analogs = np.empty((extents.frames * extents.ratio, extents.channels))
    length = 0
    for start in range(0, extents.frames, FRAMES_AT_ONCE):
        frames = np.arange(start, min(start + FRAMES_AT_ONCE, extents.frames))
        records = point_records(rng, extents, frames)
        records[absent[frames]] = [0.0, 0.0, 0.0, -1.0]
        counts = analog_counts(rng, extents, frames)
        rows = np.hstack([records.reshape(len(frames), -1), counts.reshape(len(frames), -1)])
        length += file.write(rows.astype("<f4").tobytes())
        records[absent[frames], :3] = np.nan
        points[frames] = records[..., :3].reshape(len(frames), -1)
        samples = slice(start * extents.ratio, start * extents.ratio + len(counts))
        factors = scales(extents).astype(np.float64) * GENERAL_SCALE
        analogs[samples] = (counts.astype(np.float64) - offsets(extents)) * factors
    file.write(bytes(-length % BLOCK))
    return {"points": column_sums(points), "analogs": column_sums(analogs)}


def layout_text(extents: Extents, data_offset: int) -> str:
    numbers = [extents.points, extents.channels, extents.ratio, extents.frames, data_offset]
    lines = [" ".join(str(number) for number in numbers), str(GENERAL_SCALE)]
    for scale, offset in zip(scales(extents), offsets(extents), strict=True):
        lines.append(f"{float(scale)!r} {offset}")
    return "\n".join(lines) + "\n"


def make_trial(kind: str, folder: Path) -> None:
    extents = TRIALS[kind]
    opening = head(extents)
    with (folder / f"{kind}.c3d").open("wb") as file:
        file.write(opening)
        sums = write_data(file, extents)
    (folder / f"{kind}.layout").write_text(layout_text(extents, len(opening)))
    description = {"extents": asdict(extents), "sums": sums}
    (folder / f"{kind}.json").write_text(json.dumps(description))


if __name__ == "__main__":
    make_trial(sys.argv[1], Path(sys.argv[2]))
