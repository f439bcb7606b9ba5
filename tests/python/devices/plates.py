"""Force plates whose wrench is known: what stands on them gives the channels, by plain physics.

All numbers of the geometry are exact as singles, since files hold them so.
"""

from __future__ import annotations

from dataclasses import dataclass, field, replace
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray
from support.c3d_bytes import Analog, Platform
from support.read_c3d import read_c3d

Array = NDArray[np.float64]

SAMPLES = 700  # more than two blocks of the computation

# Axes of the plate as columns; rational, so that corners are whole numbers.
DIRECTIONS: dict[str, Array] = {
    "z up": np.eye(3),
    "z down": np.array([[1.0, 0, 0], [0, -1, 0], [0, 0, -1]]),
    "turned about the vertical": np.array([[0.6, 0.8, 0], [0.8, -0.6, 0], [0, 0, -1]]),
    "tilted": np.array([[2.0, -1, 2], [2, 2, -1], [-1, 2, 2]]) / 3,
    "on the wall": np.array([[0.0, 0, 1], [1, 0, 0], [0, 1, 0]]),
}
CENTRE = np.array([300.0, -120.0, 45.0])
HALF_SIZE = (150.0, 300.0)
ORIGINS: dict[str, Array] = {
    "at the centre": np.zeros(3),
    "below": np.array([0.0, 0.0, -41.5]),
    "beside and below": np.array([0.5, -1.25, -41.5]),
}
# A full matrix, all entries multiples of 1/64.
MATRIX = (np.arange(36.0).reshape(6, 6) * 17 % 23 - 11) / 64 + 4 * np.eye(6)
SENSORS = (120.0, 200.0)  # distances from the y and the x axis, type 3

FORCES = ("Fx", "Fy", "Fz")
NAMES = {
    1: (*FORCES, "Px", "Py", "Mz"),
    2: (*FORCES, "Mx", "My", "Mz"),
    3: ("Fx12", "Fx34", "Fy14", "Fy23", "Fz1", "Fz2", "Fz3", "Fz4"),
    4: ("O1", "O2", "O3", "O4", "O5", "O6"),
}


@dataclass
class Load:
    """What stands on a plate, in its axes at the centre of its surface."""

    force: Array  # (samples, 3)
    place: Array  # (samples, 3), on the surface
    free_moment: Array  # (samples,), about z


def walking(samples: int = SAMPLES, seed: int = 7) -> Load:
    """A load that changes at every sample and is never small."""
    random = np.random.default_rng(seed)
    force = random.normal(0.0, 60.0, (samples, 3))
    force[:, 2] = random.uniform(50.0, 900.0, samples)
    place = np.zeros((samples, 3))
    place[:, 0] = random.uniform(-140.0, 140.0, samples)
    place[:, 1] = random.uniform(-280.0, 280.0, samples)
    return Load(force, place, random.normal(0.0, 4000.0, samples))


@dataclass
class Plate:
    """A plate of one type somewhere in the laboratory."""

    type: int = 2
    axes: Array = field(default_factory=lambda: DIRECTIONS["z down"])
    # From the measuring origin to the centre of the surface.
    origin: Array = field(default_factory=lambda: ORIGINS["beside and below"])
    centre: Array = field(default_factory=lambda: CENTRE)

    @property
    def corners(self) -> Array:
        a, b = HALF_SIZE
        local = np.array([[a, b, 0], [-a, b, 0], [-a, -b, 0], [a, -b, 0]])
        return np.round(local @ self.axes.T + self.centre, 9)  # free of the thirds' rounding

    @property
    def effective_origin(self) -> Array:
        """The vector that the type gives a meaning to."""
        depth = np.array([0.0, 0.0, self.origin[2]])
        return self.origin if self.type in (2, 4) else depth

    @property
    def stored_origin(self) -> Array:
        return np.array([*SENSORS, self.origin[2]]) if self.type == 3 else self.origin

    def described(self, first_channel: int = 1, **changes: Any) -> Platform:
        """The plate's entry of a file, changed."""
        count = len(NAMES[self.type])
        channels = tuple(range(first_channel, first_channel + count))
        matrix = MATRIX if self.type == 4 else None
        entry = Platform(self.type, self.corners, self.stored_origin, channels, matrix)
        return replace(entry, **changes)

    def moment_at_origin(self, load: Load) -> Array:
        """About the measuring origin, in the plate's axes."""
        arm = load.place + self.effective_origin
        moment = np.cross(arm, load.force)
        moment[:, 2] += load.free_moment
        return moment

    def channels(self, load: Load) -> Array:
        """(samples, channels): what the plate's amplifiers give."""
        wrench = np.hstack([load.force, self.moment_at_origin(load)])
        if self.type == 1:
            return np.hstack([load.force, load.place[:, :2], load.free_moment[:, None]])
        if self.type == 2:
            return wrench
        if self.type == 4:
            return np.linalg.solve(MATRIX, wrench.T).T
        return np.linalg.lstsq(sensor_matrix(), wrench.T, rcond=None)[0].T

    def to_laboratory(self, vectors: Array) -> Array:
        return vectors @ self.axes.T

    def at_origin(self, load: Load) -> dict[str, Array]:
        """The wrench at the measuring origin, in the laboratory."""
        place = self.centre - self.axes @ self.effective_origin
        return {
            "F": self.to_laboratory(load.force),
            "M": self.to_laboratory(self.moment_at_origin(load)),
            "P": np.tile(place, (len(load.force), 1)),
        }

    def at_point(self, load: Load) -> dict[str, Array]:
        """The wrench at the point of application, in the laboratory."""
        free = np.zeros_like(load.force)
        free[:, 2] = load.free_moment
        return {
            "F": self.to_laboratory(load.force),
            "M": self.to_laboratory(free),
            "P": self.to_laboratory(load.place) + self.centre,
        }


def sensor_matrix() -> Array:
    """(6, 8): force and moment about the measuring origin that a unit of each channel gives."""
    a, b = SENSORS
    x, y, z = np.eye(3)
    places = [
        b * y,
        -b * y,
        a * x,
        -a * x,
        a * x + b * y,
        b * y - a * x,
        -a * x - b * y,
        a * x - b * y,
    ]
    directions = [x, x, y, y, z, z, z, z]
    moments = [np.cross(place, force) for place, force in zip(places, directions, strict=True)]
    return np.vstack([np.array(directions).T, np.array(moments).T])


def channel_names(plates: list[Plate]) -> list[str]:
    return [f"{name}_{n}" for n, plate in enumerate(plates) for name in NAMES[plate.type]]


def first_channels(plates: list[Plate]) -> list[int]:
    counts = [len(NAMES[plate.type]) for plate in plates]
    return [1 + sum(counts[:n]) for n in range(len(plates))]


def read_plates(folder: Path, plates: list[Plate], samples: int = SAMPLES, **options: Any) -> Any:
    """A trial with these plates and one more channel, all of zeros."""
    names = [*channel_names(plates), "EMG"]
    described = [
        plate.described(first) for plate, first in zip(plates, first_channels(plates), strict=True)
    ]
    return read_c3d(
        folder,
        **{
            "analogs": [Analog(name, np.zeros(samples), units="N") for name in names],
            "frames": samples,
            "platforms": described,
            **options,
        },
    )


def step_on(acquisition: Any, plate: Plate, load: Load, number: int = 0) -> None:
    """Gives the plate's channels the samples of a load, as doubles."""
    for name, samples in zip(NAMES[plate.type], plate.channels(load).T, strict=True):
        _moxPY.moxSetAnalogValues(acquisition, f"{name}_{number}", samples.reshape(-1, 1))


def loaded_plate(folder: Path, plate: Plate, load: Load) -> Any:
    acquisition = read_plates(folder, [plate], len(load.force))
    step_on(acquisition, plate, load)
    return acquisition


def assert_wrench(actual: dict[str, Array], expected: dict[str, Array]) -> None:
    """Equal within 1e-9 of the greatest number of each part."""
    assert list(actual) == ["F", "M", "P"]
    for key, values in expected.items():
        assert actual[key].dtype == np.float64
        assert actual[key].shape == values.shape
        bound = 1e-9 * max(np.nanmax(np.abs(values)), 1.0)
        np.testing.assert_allclose(actual[key], values, rtol=0.0, atol=bound, err_msg=key)


def nothing(samples: int) -> dict[str, Array]:
    return {key: np.full((samples, 3), np.nan) for key in "FMP"}
