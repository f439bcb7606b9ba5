"""Frames in which markers were not seen."""

from __future__ import annotations

from collections.abc import Iterator

import numpy as np
from numpy.typing import NDArray

from ..trial.display import abridged
from ..trial.gaps import runs_of
from .recording import Recording
from .rule import Fault


def gaps(recording: Recording, *, gap_length: float) -> Iterator[Fault]:
    """A marker was lost and seen again. Every gap counts that is at least as long as the limit,
    which is 0: whether a gap can be filled depends on the movement, and one frame matters at a foot
    strike. The ends of segments have the gaps of the markers that they are computed from, and do
    not count. The frames are those of the longest gap."""
    rate = recording.rate
    for label, seen in _incomplete(recording):
        first_seen, last_seen = np.flatnonzero(seen)[[0, -1]]
        counted = [
            (int(first), int(last))
            for first, last in runs_of(~seen)
            if first_seen < first < last_seen and (last - first + 1) / rate >= gap_length
        ]
        if not counted:
            continue
        first, last = max(counted, key=lambda gap: gap[1] - gap[0])
        frames = recording.frames_at(first, last)
        total = sum(gap[1] - gap[0] + 1 for gap in counted)
        length = last - first + 1
        many = len(counted) > 1
        text = f"{len(counted)} gaps of {total} frames in all, the longest" if many else "1 gap"
        yield Fault(
            f"{text} of {_frames(length)} ({length / rate:.3g} s), {_range(*frames)}",
            label,
            frames,
            recording.time_at(first),
        )


def ends(recording: Recording) -> Iterator[Fault]:
    """Markers were first seen after the trial began, or last before it ended, as those of everybody
    who enters or leaves the volume that the cameras see; so it is but a note, one for all. The
    frames are those from which on and up to which each of them was seen, apart from gaps."""
    found = [
        (label, *np.flatnonzero(seen)[[0, -1]])
        for label, seen in _incomplete(recording)
        if not (seen[0] and seen[-1])
    ]
    if not found:
        return
    labels = [label for label, _, _ in found]
    first, last = max(first for _, first, _ in found), min(last for _, _, last in found)
    begin = f"{len(found)} of {len(recording.markers)} markers not seen at an end of the trial"
    if first > last:
        yield Fault(f"{begin}, and never all of them: {abridged(labels)}")
        return
    frames = recording.frames_at(first, last)
    yield Fault(
        f"{begin}, all from frame {frames[0]} to {frames[1]}: {abridged(labels)}",
        labels[0] if len(labels) == 1 else None,
        frames,
        recording.time_at(first),
    )


def empty(recording: Recording) -> Iterator[Fault]:
    """A marker was never seen: it fell off before, or its label was given to nothing."""
    for label, seen in zip(recording.markers, recording.seen, strict=True):
        if len(seen) and not seen.any():
            yield Fault("not seen in any frame", label)


def _incomplete(recording: Recording) -> Iterator[tuple[str, NDArray[np.bool_]]]:
    """The markers that were seen in some of the frames, and in which."""
    for label, seen in zip(recording.markers, recording.seen, strict=True):
        if seen.any() and not seen.all() and label not in recording.segment_points:
            yield label, seen


def _frames(count: int) -> str:
    return f"{count} frame" if count == 1 else f"{count} frames"


def _range(first: int, last: int) -> str:
    return f"frame {first}" if first == last else f"frames {first} to {last}"
