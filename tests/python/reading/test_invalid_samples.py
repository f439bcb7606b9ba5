"""Which samples count as not seen."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import numpy as np
import pytest
from support.read_c3d import analogs_of, points_of, read_c3d, track

NAN = np.nan
LOST = [NAN, NAN, NAN]


@pytest.mark.parametrize("word", [65535.0, 32768.0, 40000.0, 65281.0])
def test_a_real_fourth_word_of_an_unsigned_writer_is_invalid(tmp_path: Path, word: float) -> None:
    points = {"A": [[1, 2, 3, 0], [4, 5, 6, word]]}
    np.testing.assert_array_equal(points_of(read_c3d(tmp_path, points))["A"], [[1, 2, 3], LOST])


@pytest.mark.parametrize("coordinate", [NAN, np.inf, -np.inf])
def test_a_coordinate_that_is_no_number_makes_the_sample_invalid(
    tmp_path: Path, coordinate: float
) -> None:
    points = {"A": [[1, 2, 3, 0], [4, coordinate, 6, 0]]}
    np.testing.assert_array_equal(points_of(read_c3d(tmp_path, points))["A"], [[1, 2, 3], LOST])


def test_a_fourth_word_that_is_no_number_makes_the_sample_invalid(tmp_path: Path) -> None:
    points = {"A": [[1, 2, 3, 0], [4, 5, 6, NAN]]}
    np.testing.assert_array_equal(points_of(read_c3d(tmp_path, points))["A"], [[1, 2, 3], LOST])


def test_zeros_with_a_valid_word_are_a_position(tmp_path: Path) -> None:
    points = {"A": [[0, 0, 0, 0], [0, 0, 0, -1]]}
    np.testing.assert_array_equal(points_of(read_c3d(tmp_path, points))["A"], [[0, 0, 0], LOST])


def test_each_point_is_judged_by_its_own_word(tmp_path: Path) -> None:
    words = {"A": [0, -1, 0], "B": [-1, 0, 0]}
    points = points_of(read_c3d(tmp_path, {"A": track(3), "B": track(3, 9)}, residuals=words))
    np.testing.assert_array_equal(np.isnan(points["A"]).any(axis=1), [False, True, False])
    np.testing.assert_array_equal(np.isnan(points["B"]).any(axis=1), [True, False, False])


@pytest.mark.parametrize("storage", ["integer", "real"])
def test_a_file_without_any_valid_sample_was_written_without_residuals(
    tmp_path: Path, storage: str
) -> None:
    acquisition = read_c3d(
        tmp_path, {"A": track(4), "B": track(4, 20)}, residuals={"A": [-1] * 4, "B": [-1] * 4},
        storage=storage, scale=0.25,
    )  # fmt: skip
    np.testing.assert_array_equal(points_of(acquisition)["A"], track(4))
    np.testing.assert_array_equal(points_of(acquisition)["B"], track(4, 20))


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
@pytest.mark.parametrize(
    ("storage", "unusable", "lost"),
    [
        ("real", 1.7e38, -1), ("real", 1.7e38, -1e38), ("real", 65536.0, 65535.0),
        ("real", 1.7e38, 32768.0), ("integer", -300, -1), ("integer", -32768, -2),
    ],
)  # fmt: skip
def test_without_a_usable_word_zeros_with_a_negative_one_are_not_seen(
    tmp_path: Path, processor: str, storage: str, unusable: float, lost: float
) -> None:
    points = {
        "A": [[1, 2, 3, unusable], [0, 0, 0, lost], [4, 5, 6, lost], [0, 0, -0.5, unusable]],
        "B": [[0, 0, 0, lost]] * 4,
    }
    acquisition = read_c3d(tmp_path, points, processor=processor, storage=storage, scale=0.5)
    expected = {"A": [[1, 2, 3], LOST, [4, 5, 6], [0, 0, -0.5]], "B": [LOST] * 4}
    np.testing.assert_equal(points_of(acquisition), expected)
    again = tmp_path / "again.c3d"
    _moxPY.moxWriteAcquisition(acquisition, str(again))
    np.testing.assert_equal(points_of(_moxPY.moxReadAcquisition(str(again))), expected)


def test_without_a_usable_word_zeros_are_a_position_where_it_is_not_negative(
    tmp_path: Path,
) -> None:
    points = {"A": [[1, 2, 3, 1.7e38], [0, 0, 0, 1.7e38], [0, 0, 0, NAN], [0, 0, 0, -1]]}
    acquisition = read_c3d(tmp_path, points)
    expected = {"A": [[1, 2, 3], [0, 0, 0], [0, 0, 0], LOST]}
    np.testing.assert_equal(points_of(acquisition), expected)


def test_one_valid_sample_is_enough_to_believe_the_residuals(tmp_path: Path) -> None:
    words = {"A": [-1] * 4, "B": [-1, -1, 0, -1]}
    points = points_of(read_c3d(tmp_path, {"A": track(4), "B": track(4)}, residuals=words))
    assert np.isnan(points["A"]).all()
    np.testing.assert_array_equal(points["B"][2], track(4)[2])


def test_a_file_of_zeros_that_are_all_invalid_stays_invalid(tmp_path: Path) -> None:
    points = {"A": np.zeros((3, 3))}
    acquisition = read_c3d(tmp_path, points, residuals={"A": [-1] * 3})
    assert np.isnan(points_of(acquisition)["A"]).all()


def test_analog_samples_that_are_no_numbers_stay(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, analogs={"A": [1.0, NAN, np.inf, 2.0]}, samples_per_frame=1)
    np.testing.assert_array_equal(analogs_of(acquisition)["A"], [1.0, NAN, np.inf, 2.0])
