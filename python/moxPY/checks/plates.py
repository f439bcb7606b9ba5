"""Force platforms: forces outside the corners, baselines that are not zero."""

from __future__ import annotations

from collections.abc import Iterator
from dataclasses import dataclass
from functools import cached_property

import numpy as np
from numpy.typing import NDArray

from ..trial.gaps import runs_of
from ..trial.platform import Platform
from ..trial.samples import FloatArray
from ..trial.units import parse_unit
from ..trial.wrench import Wrench
from .recording import Recording
from .rule import Fault

# The stretches that a baseline is looked for in, and how quiet they are.
_STRETCH = 0.1  # seconds
_QUIET = 5.0  # N, standard deviation in a stretch
_FEWEST_STRETCHES = 2
# A baseline beyond the load of somebody: how steady it is, and that it is no person's weight.
_STEADY = 2.5  # N, standard deviation from stretch to stretch
_STEADY_SHARE = 0.3
_FEWEST_STEADY_STRETCHES = 10
_LEAST_WEIGHT = 300.0  # N
# Where the same number comes as often as this, nothing was measured.
_CLIPPED = 0.9


@dataclass(frozen=True)
class _Plate:
    """A platform with what it measured, in newtons and metres."""

    recording: Recording
    platform: Platform
    contact: float  #: the least load of somebody who stands on it, in N

    @cached_property
    def newton(self) -> float:
        """The platform's units of force in a newton; files that name none are in newtons."""
        unit = parse_unit(self.platform.units.force)
        return 1.0 / unit.size if unit is not None and unit.quantity == "force" else 1.0

    @cached_property
    def wrench(self) -> Wrench:
        """What it measured, in its own axes."""
        return self.platform.wrench(self.contact * self.newton, frame="plate")

    @cached_property
    def force(self) -> FloatArray:
        """(samples, 3), in N."""
        return self.wrench.force / self.newton

    @cached_property
    def corners(self) -> FloatArray:
        """(4, 2), in its own axes."""
        frame = self.platform.frame
        return ((self.platform.corners - frame[:3, 3]) @ frame[:3, :3])[:, :2]

    @cached_property
    def quiet(self) -> FloatArray | None:
        """The samples of the stretches in which nobody is on it, (stretches, samples, 3), in N;
        None where there are none, or where one cannot tell."""
        rate = self.recording.rate * self.recording.samples_per_frame
        length = max(4, round(_STRETCH * rate))
        count = len(self.force) // length
        stretches = self.force[: count * length].reshape(count, length, 3)
        quiet = stretches[stretches[:, :, 2].std(axis=1) < _QUIET]
        unloaded = np.abs(quiet[:, :, 2].mean(axis=1)) < self.contact
        if np.count_nonzero(unloaded) >= _FEWEST_STRETCHES:
            found: FloatArray = quiet[unloaded]
            return found
        return self._steady(quiet, count)

    def _steady(self, quiet: FloatArray, count: int) -> FloatArray | None:
        """Of quiet stretches those at the most common load, where that is a baseline."""
        if len(quiet) < max(_FEWEST_STEADY_STRETCHES, _STEADY_SHARE * count):
            return None
        levels = quiet[:, :, 2].mean(axis=1)
        level = float(np.median(levels))
        common = np.abs(levels - level) < _QUIET
        if np.count_nonzero(common) < _STEADY_SHARE * count or levels[common].std() > _STEADY:
            return None
        load = self.force[:, 2]
        farthest = float(load[np.abs(load - level).argmax()])
        stepped_on = abs(farthest - level) > 2.0 * self.contact
        # Who stands on it and takes some of the weight off brings the load nearer to 0.
        weight_off = 0.0 <= farthest * np.sign(level) < abs(level)
        return None if not stepped_on or weight_off or abs(level) > _LEAST_WEIGHT else quiet[common]


def _plates(recording: Recording, contact: float) -> Iterator[tuple[int, _Plate]]:
    for number, platform in enumerate(recording.trial.platforms):
        plate = _Plate(recording, platform, contact)
        if len(plate.force) and np.isfinite(plate.force).all():
            yield number, plate


def off_plate(
    recording: Recording, *, corner_margin: float, corner_time: float, contact_force: float
) -> Iterator[Fault]:
    """The force on a platform acts outside its corners, where no foot can press: the corners are
    those of another platform or run the wrong way round, a channel has the wrong sign or gain, or
    the baseline is off. Only loads over the limit count, since under it noise moves the point
    about, and only what lasts, at heel strike the point runs; some millimetres are within the
    accuracy of most platforms. The frames are those of the stretch that goes farthest."""
    if recording.metre is None:
        return
    margin = corner_margin / 1000.0 * recording.metre
    rate = recording.rate * recording.samples_per_frame
    for number, plate in _plates(recording, contact_force):
        contact = plate.wrench.contact
        beyond = _outside(plate.wrench.point[:, :2], plate.corners)
        runs = [
            run
            for run in runs_of(contact & (beyond > margin))
            if (run[1] - run[0] + 1) / rate >= corner_time
        ]
        if not runs:
            continue
        first, last = max(runs, key=lambda run: beyond[run[0] : run[1] + 1].max())
        total = sum(last - first + 1 for first, last in runs)
        frames = recording.frames_of_samples(first, last)
        yield Fault(
            f"platform {number}: the force acts up to {beyond[first : last + 1].max():.3g} "
            f"{recording.point_unit} outside the corners, for {total / rate:.3g} s of "
            f"{np.count_nonzero(contact) / rate:.3g} s with load",
            frames=frames,
            time=recording.time_of_sample(first),
        )


def _outside(points: FloatArray, corners: FloatArray) -> FloatArray:
    """How far points lie outside a convex shape, by the edge that they are farthest beyond;
    negative inside, NaN for no point."""
    edges = np.roll(corners, -1, axis=0) - corners
    area = np.sum(corners[:, 0] * edges[:, 1] - corners[:, 1] * edges[:, 0])
    normals = np.column_stack((edges[:, 1], -edges[:, 0])) * (1.0 if area > 0 else -1.0)
    lengths = np.linalg.norm(normals, axis=1, keepdims=True)
    normals = normals / np.where(lengths > 0.0, lengths, 1.0)  # corners may fall together
    distances: FloatArray = ((points[:, None, :] - corners) * normals).sum(axis=2).max(axis=1)
    return distances


def baselines(
    recording: Recording, *, baseline_force: float, contact_force: float
) -> Iterator[Fault]:
    """A platform measures a force with nobody on it: it was not zeroed, or drifted.

    Nobody is on it in stretches of 0.1 s in which the load is less than the second limit and does
    not move, by a standard deviation of 5 N; at least two such stretches are asked for. Where
    there are none, the baseline may be higher than the limit: then nobody is on it at the most
    common load, if that stays within a few newtons for a second and a third of the trial, is less
    than 300 N, and what else happens leads away from it by twice the limit, and not just towards 0
    as when a person takes some weight off. The baseline is the median.
    Platforms drift by one or two newtons; 5 N move the instants of foot strikes and, at light
    loads, the point of application by centimetres. A platform that somebody stands on throughout
    cannot be judged."""
    for number, plate in _plates(recording, contact_force):
        if plate.quiet is None:
            continue
        level = np.median(plate.quiet.mean(axis=1), axis=0)
        axis = int(np.abs(level).argmax())
        if abs(level[axis]) > baseline_force:
            x, y, z = level.round(1) + 0.0  # which makes -0.0 zero
            yield Fault(
                f"platform {number}: {x:.1f}, {y:.1f}, {z:.1f} N along its x, y, z axes "
                "with nobody on it"
            )


def clipped_baselines(recording: Recording, *, contact_force: float) -> Iterator[Fault]:
    """A platform measures exactly one force with nobody on it, and others with somebody: a program
    set everything under a threshold to one value, or the amplifier ends there. Instants of foot
    strikes then depend on that threshold, and nobody can check the baseline. Measured numbers have
    noise, though in files with integers it may be no more than a step; so nine tenths of the
    samples, of each axis, have to be equal. It is a note: some laboratories do so on purpose."""
    for number, plate in _plates(recording, contact_force):
        if plate.quiet is None or not plate.wrench.contact.any():
            continue
        quiet = plate.quiet.reshape(-1, 3)
        if all(_is_one_value(values) for values in quiet.T):
            force = float(np.median(quiet[:, 2]))
            yield Fault(
                f"platform {number}: exactly {force:g} N in "
                f"{100.0 * np.mean(quiet[:, 2] == force):.0f} % of the samples with nobody on it"
            )


def _is_one_value(values: NDArray[np.float64]) -> bool:
    return bool(np.mean(values == np.median(values)) > _CLIPPED)
