"""Files of any content, made from a number: the same number gives the same bytes everywhere.

Usage: python -m support.random_files FOLDER COUNT
"""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Any

import numpy as np

from .c3d_bytes import Analog, C3DFile, Event, Platform, integer, real

# Calibrations and forces are read from so many channels by each type of platform.
CHANNELS_OF_TYPE = {1: 6, 2: 6, 3: 8, 4: 6}
KINDS = ("ANGLES", "FORCES", "MOMENTS", "POWERS")
NAMES = ("LASI", "RASI", "Über", "L/R", "C_7", "ann:LKNE", "*12", "a label that is rather long")


def random_file(number: int) -> C3DFile:
    """Points with gaps, channels, platforms, events and rotations in any of the storage forms."""
    draw = np.random.default_rng(number)
    frames, ratio = int(draw.integers(1, 40)), int(draw.integers(1, 11))
    storage = str(draw.choice(["real", "integer"]))
    points = _points(draw, frames, storage)
    names = [name for name, _ in points]
    platforms = [_platform(draw, 8 * place) for place in range(draw.integers(0, 4))]
    channels = max(8 * len(platforms), int(draw.integers(0, 6)))
    return C3DFile(
        points,
        processor=str(draw.choice(["intel", "dec", "mips"])),
        storage=storage,
        scale=float(draw.choice([0.1, 0.05, 1 / 3])),
        rate=float(draw.choice([50, 100, 119.88, 240])),
        first_frame=int(draw.integers(1, 5000)),
        frames=frames,
        frame_counts=[str(draw.choice(["integer", "real", "trial", "long_frames"]))],
        point_units=str(draw.choice(["mm", "m", "cm"])),
        analogs=[_channel(draw, place, frames * ratio) for place in range(channels)],
        samples_per_frame=ratio if channels else None,
        gen_scale=float(draw.choice([1.0, 0.25, 0.001])),
        analog_format=str(draw.choice(["SIGNED", "UNSIGNED"])),
        bits=16,
        platforms=platforms,
        events=[_event(draw) for _ in range(draw.integers(0, 8))],
        rotations=[
            (f"Segment{place}", _finite(draw, (frames, 17), 10.0))
            for place in range(draw.integers(0, 3))
        ],
        leading_zeros=512 * int(draw.integers(0, 2)),
        parameters={
            # The other points are markers.
            **{f"POINT:{kind}": [name] for kind, name in zip(KINDS, names[::2], strict=False)},
            "MINE:REALS": real("REALS", _finite(draw, (2, 3), 1e6)),
            "MINE:WORDS": integer("WORDS", draw.integers(-32768, 32768, 5)),
            "MINE:TEXT": "äöü 漢字 by hand",
        },
    )


def write_random_files(folder: Path, count: int) -> list[Path]:
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"random_{number:03}.c3d" for number in range(count)]
    for number, path in enumerate(paths):
        path.write_bytes(random_file(number).to_bytes())
    return paths


def _finite(draw: np.random.Generator, shape: tuple[int, ...], size: float) -> Any:
    return draw.uniform(-size, size, shape)


def _points(draw: np.random.Generator, frames: int, storage: str) -> list[tuple[str, Any]]:
    # Integers times the scale have to fit.
    size = 3000.0 if storage == "real" else 1000.0
    names = draw.permutation(NAMES)[: draw.integers(0, len(NAMES) + 1)]
    points = []
    for name in names:
        values = _finite(draw, (frames, 3), size)
        values[draw.random(frames) < 0.2] = np.nan
        points.append((str(name), values))
    return points


def _channel(draw: np.random.Generator, place: int, samples: int) -> Analog:
    return Analog(
        f"Channel{place}",
        draw.integers(-2000, 2000, samples),
        scale=float(draw.uniform(0.001, 2)),
        offset=int(draw.integers(-100, 100)),
        units=str(draw.choice(["V", "N", "Nmm", "mV"])),
    )


def _platform(draw: np.random.Generator, first_channel: int) -> Platform:
    kind = int(draw.choice(list(CHANNELS_OF_TYPE)))
    count = CHANNELS_OF_TYPE[kind]
    x, y = draw.uniform(-1000, 1000, 2)
    width, length = draw.uniform(200, 600, 2)
    turned = draw.uniform(0, 2) * np.array([[0, 0, 0, 0], [0, 0, 0, 0], [1, 2, 3, 2]]).T
    corners = np.array([[0, 0, 0], [width, 0, 0], [width, length, 0], [0, length, 0]])
    return Platform(
        kind,
        corners + np.array([x, y, 0]) + turned,
        draw.uniform(-50, 0, 3),
        [first_channel + channel + 1 for channel in range(count)],
        draw.uniform(-2, 2, (6, 6)) if kind == 4 else None,
    )


def _event(draw: np.random.Generator) -> Event:
    return Event(
        str(draw.choice(["Left", "Right", "General"])),
        str(draw.choice(["Foot Strike", "Foot Off", "Heel", "Übergabe"])),
        float(draw.uniform(0, 100)),
        str(draw.choice(["", "Ann"])),
    )


if __name__ == "__main__":
    write_random_files(Path(sys.argv[1]), int(sys.argv[2]))
