"""Markers at one place."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Iterator

import numpy as np
from numpy.typing import NDArray

from ..trial.gaps import runs_of
from ..trial.samples import FloatArray
from .recording import Recording
from .rule import Fault

Indices = NDArray[np.intp]

# A direction of length 1 in which no two places of a grid of markers meet.
_LINE = np.sqrt([1 / 6, 1 / 3, 1 / 2])


def duplicates(
    recording: Recording, *, duplicate_distance: float, duplicate_time: float
) -> Iterator[Fault]:
    """Two markers are nearer to each other than markers can be, for longer than a coincidence: one
    was labelled twice, or a gap of one was filled with the other.

    The smallest markers in use are some 2 mm across, so that the centres of two cannot come within
    1 mm. Computed points can: the ends of two segments fall together in a joint. So the ends of
    segments do not count, nor do places with a residual of 0 in a trial that has other residuals;
    and those of any other model at least move, so a quarter of a second is asked for. The frames
    are those of the longest stretch. Where all markers lie within a hundred times the limit, none
    are near: they have another unit than the file says."""
    if recording.metre is None:
        return
    limit = duplicate_distance / 1000.0 * recording.metre
    if recording.size < 100.0 * limit:
        return
    least = max(2, round(duplicate_time * recording.rate))
    stretches: dict[int, list[tuple[int, int, int]]] = defaultdict(list)
    for one, other in _candidates(recording, limit, least):
        near = _apart(recording.places[one], recording.places[other]) <= limit
        near &= recording.measured(one) | recording.measured(other)
        runs = runs_of(near)
        if len(runs):
            first, last = max(runs, key=lambda run: run[1] - run[0])
            if last - first + 1 >= least:
                stretches[one].append((int(last - first) + 1, int(first), other))
    for one, found in stretches.items():
        length, first, other = max(found, key=lambda stretch: stretch[0])
        frames = recording.frames_at(first, first + length - 1)
        others = f" and of {len(found) - 1} more" if len(found) > 1 else ""
        yield Fault(
            f"at the place of {recording.markers[other]}{others} for "
            f"{length / recording.rate:.3g} s, frames {frames[0]} to {frames[1]}",
            recording.markers[one],
            frames,
            recording.time_at(first),
        )


def _candidates(recording: Recording, limit: float, least: int) -> list[tuple[int, int]]:
    """Pairs of markers that are near in one of the frames that are so far apart that a stretch of
    the least length has one of them: pairs are many, and so are frames."""
    markers = np.array(
        [
            index
            for index, label in enumerate(recording.markers)
            if label not in recording.segment_points
        ],
        dtype=np.intp,
    )
    frames = slice(None, None, least)
    places = recording.places[markers, :, frames]
    measured = np.array([recording.measured(int(marker))[frames] for marker in markers], bool)
    pairs: set[tuple[int, int]] = set()
    for one, other, frame in _neighbours(places, limit):
        near = measured[one, frame] | measured[other, frame]
        near &= _apart(places[one, :, frame].T, places[other, :, frame].T) <= limit
        found = np.sort(markers[np.stack([one[near], other[near]], axis=1)], axis=1)
        pairs.update(map(tuple, np.unique(found, axis=0).tolist()))
    return sorted(pairs)


def _neighbours(places: FloatArray, limit: float) -> Iterator[tuple[Indices, Indices, Indices]]:
    """Markers that may be within a limit of each other: one, another, and in which frame.

    Along a line the near ones follow each other closely, so that in this order each is compared
    with the next one, then with the one after that, until none is in reach.
    """
    along = np.einsum("mcf,c->mf", np.where(np.isfinite(places), places, np.nan), _LINE)
    order = np.argsort(along, axis=0)  # those that were not seen are the last
    along = np.take_along_axis(along, order, axis=0)
    reach = limit * 1.001 + 8.0 * np.spacing(np.nanmax(np.abs(along), initial=0.0))
    for step in range(1, len(along)):
        place, frame = np.nonzero(along[step:] - along[:-step] <= reach)
        if not len(place):
            return
        yield order[place, frame], order[place + step, frame], frame


def _apart(one: FloatArray, other: FloatArray) -> FloatArray:
    """How far columns are apart."""
    vectors = one - other
    distances: FloatArray = np.sqrt(np.einsum("ij,ij->j", vectors, vectors))
    return distances
