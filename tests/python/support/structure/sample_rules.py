"""Places and content of the samples and of the rotations."""

from __future__ import annotations

import numpy as np

from support.stored_file import BLOCK
from support.structure.list_rules import list_lengths
from support.structure.written_file import (
    REALS_OF_A_ROTATION,
    Deviations,
    WrittenFile,
    as_single,
)

LARGEST_FOURTH_WORD = 32767


def places(file: WrittenFile) -> Deviations:
    expected = file.content[0] + file.content[file.parameter_offset + 2]
    start = file.count("POINT:DATA_START")
    if start != expected:
        yield f"POINT:DATA_START: {start}, the parameters end before block {expected}"
        return
    end = file.data_end
    if file.rotations:
        block = file.rotation_offset // BLOCK + 1
        if file.count("ROTATION:DATA_START") != block:
            yield f"ROTATION:DATA_START: {file.count('ROTATION:DATA_START')}, not {block}"
        if any(file.content[file.data_end : file.rotation_offset]):
            yield "samples: the bytes behind the last frame are not 0"
        end = file.rotation_offset + file.rotation_bytes
    length = -(-end // BLOCK) * BLOCK
    if len(file.content) != length:
        yield f"file: {len(file.content)} bytes, its sections end at {length}"
    elif any(file.content[end:]):
        yield "file: the bytes behind the last section are not 0"


def points(file: WrittenFile) -> Deviations:
    if file.frame_table is None or not file.points:
        return
    records = file.frame_table[:, : 4 * file.points].reshape(file.frames, file.points, 4)
    coordinates, words = records[..., :3], records[..., 3]
    yield from _first(~np.isfinite(coordinates).all(axis=2), "a coordinate is not finite")
    known = words >= 0
    wrong = ~((words == -1) | (known & (words <= LARGEST_FOURTH_WORD) & (words % 1 == 0)))
    yield from _first(wrong, "the fourth word is neither -1 nor a mask with a residual")
    somewhere = ((coordinates != 0) | np.signbit(coordinates)).any(axis=2)
    yield from _first((words == -1) & somewhere, "not seen, but not at 0, 0, 0")


def rotations(file: WrittenFile) -> Deviations:
    if not file.rotations:
        return
    yield from list_lengths(file, "ROTATION:LABELS", file.rotations)
    if file.rotation_ratio < 1:
        yield f"ROTATION:RATIO: {file.rotation_ratio}"
    expected = as_single(file.scalar("POINT:RATE") * file.rotation_ratio)
    if "ROTATION:RATE" in file.parameters and file.scalar("ROTATION:RATE") != expected:
        yield f"ROTATION:RATE: {file.scalar('ROTATION:RATE')}, not {expected}"
    start = file.rotation_offset
    content = file.content[start : start + file.rotation_bytes]
    if len(content) == file.rotation_bytes:
        samples = file.reals(content).reshape(-1, REALS_OF_A_ROTATION)
        lost = np.isnan(samples[:, :16]).any(axis=1)
        if (lost & ~(samples[:, 16] < 0)).any():
            yield "rotations: NaN in a transform that is marked as known"


def _first(wrong: np.ndarray, text: str) -> Deviations:
    """The first of them, with their number; frames and points count from 0."""
    places = np.argwhere(wrong)
    if len(places):
        frame, point = places[0]
        yield f"frame {frame}, point {point}: {text} ({len(places)} in all)"
