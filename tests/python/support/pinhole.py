"""A camera with a pinhole, as textbooks have it: where on a picture a place is seen."""

from __future__ import annotations

from dataclasses import dataclass

import numpy as np
from numpy.typing import ArrayLike, NDArray


@dataclass(frozen=True)
class Pinhole:
    """Where a camera stands, what it looks at, which way is up."""

    eye: list[float]
    target: list[float]
    up: list[float]
    opening: float
    """Radians across the shorter side of the picture."""


def pixel_of(place: ArrayLike, camera: Pinhole, width: float, height: float) -> NDArray[np.float64]:
    """The pixel, from the left and from the top."""
    eye = np.asarray(camera.eye)
    ahead = np.asarray(camera.target) - eye
    ahead /= np.linalg.norm(ahead)
    rightwards = np.cross(ahead, camera.up)
    rightwards /= np.linalg.norm(rightwards)
    upwards = np.cross(rightwards, ahead)
    away = np.asarray(place) - eye
    depth = away @ ahead
    assert depth > 0.0, "behind the camera"
    scale = min(width, height) / 2.0 / np.tan(camera.opening / 2.0)
    aside, above = away @ rightwards / depth, away @ upwards / depth
    return np.array([width / 2.0 + scale * aside, height / 2.0 - scale * above])
