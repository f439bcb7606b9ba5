"""The matrices of moxGetPointsValues and its siblings."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from points.point_channels import Channel, with_points

GROUPS = ["Angles", "Forces", "Markers", "Moments", "Powers"]
NAN = np.nan

every_group = pytest.mark.parametrize("group", GROUPS)


def matrix_of(acquisition: Any, group: str) -> Any:
    return getattr(_moxPY, f"moxGet{group}Values")(acquisition)


def still(group: str, value: float, index: int | None, frames: int = 2) -> Channel:
    """A point that stays at (value, value + 0.25, value + 0.5)."""
    rows = [(value + part,) * frames for part in (0.0, 0.25, 0.5)]
    return Channel(group, f"P{value}", rows, index)


@every_group
def test_rows_are_frames_and_columns_are_components(group: str) -> None:
    acquisition = with_points(
        Channel(group, "A", ((1, 2), (3, 4), (5, 6)), 0),
        Channel(group, "B", ((10, 20), (30, 40), (50, 60)), 1),
    )
    matrix = matrix_of(acquisition, group)
    assert matrix.tolist() == [[1, 3, 5, 10, 30, 50], [2, 4, 6, 20, 40, 60]]
    assert matrix.dtype == np.float64
    assert matrix.flags.c_contiguous


@every_group
def test_no_points_give_an_array_without_dimensions(group: str) -> None:
    matrix = matrix_of(with_points(), group)
    assert type(matrix) is np.ndarray
    assert matrix.shape == ()
    assert matrix.dtype == np.float64


@every_group
def test_columns_are_in_ascending_index(group: str) -> None:
    acquisition = with_points(still(group, 1, 30), still(group, 2, -4), still(group, 3, 7))
    assert matrix_of(acquisition, group)[0, ::3].tolist() == [2.0, 3.0, 1.0]


def test_all_groups_share_one_sequence() -> None:
    acquisition = with_points(
        still("Powers", 1, 0), still("Angles", 2, 4), still("Markers", 3, 1),
        still("Forces", 4, 3), still("Moments", 5, 2),
    )  # fmt: skip
    assert _moxPY.moxGetPointsValues(acquisition)[0, ::3].tolist() == [1.0, 3.0, 5.0, 4.0, 2.0]


def test_no_points_at_all_give_an_array_without_dimensions() -> None:
    assert _moxPY.moxGetPointsValues(with_points()).shape == ()


def test_points_without_an_index_leave_columns_at_the_end() -> None:
    acquisition = with_points(
        still("Markers", 1, None), still("Markers", 2, 5), still("Markers", 3, None),
        still("Markers", 4, 1),
    )  # fmt: skip
    row = [4, 4.25, 4.5, 2, 2.25, 2.5, NAN, NAN, NAN, NAN, NAN, NAN]
    np.testing.assert_array_equal(_moxPY.moxGetMarkersValues(acquisition), [row, row])


def test_points_that_share_an_index_leave_columns_at_the_end() -> None:
    acquisition = with_points(still("Markers", 1, 0), still("Forces", 2, 0))
    matrix = _moxPY.moxGetPointsValues(acquisition)
    assert matrix.shape == (2, 6)
    assert matrix[0, 0] in (1.0, 2.0)
    assert np.isnan(matrix[:, 3:]).all()


def test_points_all_without_an_index() -> None:
    acquisition = with_points(still("Markers", 1, None), still("Markers", 2, None))
    matrix = _moxPY.moxGetMarkersValues(acquisition)
    assert matrix.shape[1] == 6
    assert np.isnan(matrix).all()


def test_one_frame_is_a_matrix_of_one_row() -> None:
    acquisition = with_points(still("Markers", 1, 0, frames=1), still("Markers", 2, 1, frames=1))
    assert _moxPY.moxGetMarkersValues(acquisition).tolist() == [[1, 1.25, 1.5, 2, 2.25, 2.5]]


def test_the_point_of_lowest_index_sets_the_rows() -> None:
    acquisition = with_points(still("Markers", 1, 1, frames=4), still("Markers", 2, 0, frames=2))
    matrix = _moxPY.moxGetMarkersValues(acquisition)
    assert matrix.shape == (2, 6)
    assert matrix[:, 3].tolist() == [1.0, 1.0]


def test_rows_that_a_shorter_point_lacks_are_nan() -> None:
    acquisition = with_points(still("Markers", 1, 0, frames=3), still("Markers", 2, 1, frames=2))
    matrix = _moxPY.moxGetMarkersValues(acquisition)
    np.testing.assert_array_equal(matrix[:, 3], [2.0, 2.0, NAN])


def test_nan_stays() -> None:
    acquisition = with_points(Channel("Markers", "A", ((1, NAN), (3, 4), (5, 6)), 0))
    np.testing.assert_array_equal(_moxPY.moxGetMarkersValues(acquisition), [[1, 3, 5], [NAN, 4, 6]])


@pytest.mark.parametrize("frames", [1, 2, 1023, 1024, 1025, 5000])
def test_long_recordings_are_whole(frames: int) -> None:
    # Matrices are filled in blocks of rows.
    expected = np.arange(frames * 6, dtype=np.float64).reshape(frames, 6)
    acquisition = with_points(
        Channel("Markers", "A", expected[:, :3].T, 0), Channel("Markers", "B", expected[:, 3:].T, 1)
    )
    np.testing.assert_array_equal(_moxPY.moxGetMarkersValues(acquisition), expected)


def test_frames_without_points_make_no_rows() -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 100)
    assert _moxPY.moxGetPointsValues(acquisition).shape == ()


def test_points_without_frames_make_columns() -> None:
    acquisition = _moxPY.moxNewAcquisition(4, 0)
    assert _moxPY.moxGetPointsValues(acquisition).shape == (0, 12)


@every_group
def test_a_missing_group_is_named(group: str) -> None:
    acquisition = with_points(Channel("Markers", "A"))
    probe.delete_group(acquisition, f"Format/Data/{group}")
    for read in (getattr(_moxPY, f"moxGet{group}Values"), _moxPY.moxGetPointsValues):
        with pytest.raises(RuntimeError) as failure:
            read(acquisition)
        expected = f"Impossible to retrieve group with path : 'Format/Data/{group}'"
        assert str(failure.value) == expected
