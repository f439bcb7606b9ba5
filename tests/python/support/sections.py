"""Bytes of the data section and of the rotation section."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np
from numpy.typing import NDArray

from .contents import Analog, Point, Rotation
from .number_formats import Bits, NumberFormat


def data_bytes(
    points: Sequence[Point],
    analogs: Sequence[Analog],
    frames: int,
    *,
    real: bool,
    scale: float,
    numbers: NumberFormat,
) -> bytes:
    """Frame by frame: all points, then all channels of each analog sample."""
    if frames == 0:
        return b""
    encode = numbers.real_bits if real else numbers.word_bits
    parts = []
    if points:
        table = np.stack([values for _, values in points], axis=1)
        if not real:
            table = _counts(table, scale)
        parts.append(_bytes_a_frame(encode(table), frames))
    if analogs:
        # Sample after sample lies in one channel; a frame holds several samples of all channels.
        samples = np.stack([np.asarray(channel.raw) for channel in analogs], axis=1)
        parts.append(_bytes_a_frame(encode(samples), frames))
    return np.hstack(parts).tobytes() if parts else b""


def _bytes_a_frame(bits: Bits, frames: int) -> Bits:
    # As bytes, because joining arrays of numbers would turn them to this machine's byte order.
    return bits.reshape(frames, -1).view(np.uint8)


def _counts(table: NDArray[Any], scale: float) -> NDArray[Any]:
    """Coordinates as multiples of the scale; the fourth word as it is."""
    counts: NDArray[Any] = np.rint(table / np.array([scale, scale, scale, 1.0]))
    return counts


def rotation_bytes(rotations: Sequence[Rotation], numbers: NumberFormat) -> bytes:
    """Sample by sample, 17 reals of every segment."""
    if not rotations:
        return b""
    return numbers.reals(np.stack([samples for _, samples in rotations], axis=1))
