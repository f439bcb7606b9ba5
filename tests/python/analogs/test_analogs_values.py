"""moxGetAnalogsValues and moxGetAnalogNumber."""

from __future__ import annotations

import _moxPY
import numpy as np
import pytest
from analogs.analog_channels import Channel, with_analogs

NAN = np.nan


def test_a_column_a_channel_and_a_row_a_sample() -> None:
    acquisition = with_analogs(
        *[Channel(f"C{n}", np.arange(1000.0) + n * 1000, n) for n in range(4)]
    )
    matrix = _moxPY.moxGetAnalogsValues(acquisition)
    assert matrix.shape == (1000, 4)
    assert matrix.dtype == np.float64
    assert matrix.flags.c_contiguous
    np.testing.assert_array_equal(matrix, np.arange(4000.0).reshape(4, 1000).T)


def test_columns_are_in_ascending_index() -> None:
    acquisition = with_analogs(
        Channel("A", (1, 1), 5), Channel("B", (2, 2), 0), Channel("C", (3, 3), 3)
    )
    assert _moxPY.moxGetAnalogsValues(acquisition).tolist() == [[2, 3, 1], [2, 3, 1]]


def test_no_channels_give_an_array_without_dimensions() -> None:
    matrix = _moxPY.moxGetAnalogsValues(_moxPY.moxNewAcquisition())
    assert type(matrix) is np.ndarray
    assert matrix.shape == ()
    assert matrix.dtype == np.float64


def test_channels_without_an_index_leave_columns_at_the_end() -> None:
    acquisition = with_analogs(
        Channel("A", (1, 1), None), Channel("B", (2, 2), 1), Channel("C", (3, 3), 0)
    )
    expected = [[3, 2, NAN], [3, 2, NAN]]
    np.testing.assert_array_equal(_moxPY.moxGetAnalogsValues(acquisition), expected)


def test_one_sample_is_a_matrix_of_one_row() -> None:
    acquisition = with_analogs(Channel("A", (1,), 0), Channel("B", (2,), 1))
    assert _moxPY.moxGetAnalogsValues(acquisition).tolist() == [[1.0, 2.0]]


@pytest.mark.parametrize("count", [0, 1, 42])
def test_the_number_of_channels_is_a_float(count: int) -> None:
    number = _moxPY.moxGetAnalogNumber(_moxPY.moxNewAcquisition(0, 1, count))
    assert type(number) is float
    assert number == float(count)
