"""Files that a test describes, read by the module."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from support.c3d_bytes import c3d_bytes

Array = NDArray[Any]


def read_bytes(folder: Path, content: bytes, name: str = "trial.c3d") -> Any:
    """The acquisition in a file of these bytes, which `folder` then holds."""
    path = folder / name
    path.write_bytes(content)
    return _moxPY.moxReadAcquisition(str(path))


def read_c3d(folder: Path, points: Any = (), **options: Any) -> Any:
    """The acquisition in a file as `c3d_bytes` describes it."""
    return read_bytes(folder, c3d_bytes(points, **options))


def track(frames: int, start: float = 0.0) -> Array:
    """A trajectory in which every coordinate of every frame differs; exact as a single."""
    frame = np.arange(frames, dtype=np.float64)
    return np.column_stack([start + frame, start + frame + 0.25, start + frame + 0.5])


def points_of(acquisition: Any) -> dict[str, Array]:
    return _moxPY.moxGetPoints(acquisition)[0]


def analogs_of(acquisition: Any) -> dict[str, Array]:
    return _moxPY.moxGetAnalogs(acquisition)[0]
