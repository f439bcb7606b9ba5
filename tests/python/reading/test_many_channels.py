"""More channels than one parameter can name: LABELS goes on in LABELS2, LABELS3, ..."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog
from support.read_c3d import analogs_of, points_of, read_c3d

COUNTS = [255, 256, 511, 1000]


def many_points(count: int) -> dict[str, Any]:
    """Point n stays at (n, n + 0.25, n + 0.5)."""
    return {f"P{n:03}": np.array([[n, n + 0.25, n + 0.5]] * 2) for n in range(count)}


def many_analogs(count: int) -> list[Analog]:
    """Channel n has its own offset and scale, so that swapped lists show."""
    return [
        Analog(
            f"A{n:03}", [n, n + 1, n + 2, n + 3], scale=0.5 + n, offset=n % 7,
            units=f"u{n % 100}", description=f"channel {n}",
        )
        for n in range(count)
    ]  # fmt: skip


@pytest.mark.parametrize("count", COUNTS)
@pytest.mark.parametrize("storage", ["integer", "real"])
def test_every_point_has_its_label_and_samples(tmp_path: Path, count: int, storage: str) -> None:
    points = many_points(count)
    read = points_of(read_c3d(tmp_path, points, storage=storage, scale=0.25))
    assert list(read) == list(points)
    for label, values in points.items():
        np.testing.assert_array_equal(read[label], values, err_msg=label)


@pytest.mark.parametrize("count", COUNTS)
def test_every_point_has_its_description(tmp_path: Path, count: int) -> None:
    texts = [f"point {n}" for n in range(count)]
    acquisition = read_c3d(tmp_path, many_points(count), point_descriptions=texts)
    descriptions = _moxPY.moxGetPoints(acquisition)[1]["description"]
    assert list(descriptions.values()) == texts


@pytest.mark.parametrize("count", COUNTS)
def test_every_analog_channel_has_its_samples(tmp_path: Path, count: int) -> None:
    channels = many_analogs(count)
    read = analogs_of(read_c3d(tmp_path, analogs=channels, samples_per_frame=2))
    assert list(read) == [channel.label for channel in channels]
    for n, values in enumerate(read.values()):
        expected = (np.arange(4) + n - n % 7) * (0.5 + n)
        np.testing.assert_array_equal(values, expected, err_msg=str(n))


@pytest.mark.parametrize("count", COUNTS)
def test_every_analog_channel_has_its_information(tmp_path: Path, count: int) -> None:
    acquisition = read_c3d(tmp_path, analogs=many_analogs(count), samples_per_frame=2)
    info = _moxPY.moxGetAnalogs(acquisition)[1]
    numbers = range(count)
    assert list(info["units"].values()) == [f"u{n % 100}" for n in numbers]
    assert list(info["scale"].values()) == [0.5 + n for n in numbers]
    assert list(info["offset"].values()) == [float(n % 7) for n in numbers]
    assert list(info["description"].values()) == [f"channel {n}" for n in numbers]


def test_more_than_255_angles(tmp_path: Path) -> None:
    points = many_points(600)
    angles = list(points)[:300]
    acquisition = read_c3d(tmp_path, points, parameters={"POINT:ANGLES": angles})
    assert list(_moxPY.moxGetAngles(acquisition)[0]) == angles
    assert list(_moxPY.moxGetMarkers(acquisition)[0]) == list(points)[300:]


def test_the_matrix_of_more_than_255_points_is_in_order(tmp_path: Path) -> None:
    matrix = _moxPY.moxGetPointsValues(read_c3d(tmp_path, many_points(1000)))
    numbers = np.arange(1000)
    row = np.column_stack([numbers, numbers + 0.25, numbers + 0.5]).ravel()
    np.testing.assert_array_equal(matrix, [row, row])


def test_lists_that_were_split_before_255_entries(tmp_path: Path) -> None:
    points = many_points(5)
    labels = list(points)
    acquisition = read_c3d(
        tmp_path, points, parameters={"POINT:LABELS": labels[:2], "POINT:LABELS2": labels[2:]}
    )  # fmt: skip
    assert list(points_of(acquisition)) == labels
