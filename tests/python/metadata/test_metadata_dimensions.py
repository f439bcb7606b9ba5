"""moxSetMetaDataDimensions: new extents, and what is refused."""

from __future__ import annotations

from typing import Any

import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.metadata_entries import WAYS, add_entry, info_of, ways
from support.store_tree import snapshot

NOT_READABLE = "Trying to read an unsupported data type for a data set"


@pytest.fixture
def acquisition() -> Any:
    return _moxPY.moxNewAcquisition()


# Entry, dimensions, what is read then.
EXTENTS: list[tuple[str, Any, Any]] = [
    ("COUNTS", [2, 3], [1, 2, 3, 0, 0, 0]), ("COUNTS", [2], [1, 2]), ("COUNTS", [], 1),
    ("COUNTS", [1], 1), ("COUNTS", [0], []), ("COUNTS", [3, 0, 2], []),
    ("COUNTS", (4,), [1, 2, 3, 0]), ("COUNTS", np.array([2, 2]), [1, 2, 3, 0]),
    ("COUNTS", [np.int16(2), True], [1, 2]), ("COUNT", [3], [7, 0, 0]),
    ("BYTES", [3], [4, 5, 0]), ("BYTES", [0], []), ("WEIGHTS", [5], [0.5, 1.5, 2.5, 3.5, 0.0]),
    ("NAMES", [3], ["hip", "knee", ""]), ("NAMES", [], ["hip"]), ("NAME", [2], ["gait", ""]),
    ("GRID", [6], [1.0, 2.0, 3.0, 4.0, 5.0, 6.0]), ("GRID", [2, 2], [1.0, 2.0, 3.0, 4.0]),
]  # fmt: skip


@ways
@pytest.mark.parametrize(("entry", "dimensions", "read"), EXTENTS)
def test_dimensions_give_as_many_values_in_one_dimension(
    rich_trial: Any, way: str, entry: str, dimensions: Any, read: Any
) -> None:
    kind = info_of(rich_trial, "TRIAL", entry)["format"]
    WAYS[way]("moxSetMetaDataDimensions", rich_trial, "TRIAL", entry, dimensions)
    count = int(np.prod(dimensions, dtype=int))
    assert info_of(rich_trial, "TRIAL", entry) == {
        "values": read, "format": kind, "dims": [count],
    }  # fmt: skip


MUST_BE_LIST = "The dimensions of a metadata entry must be a list of integers, current is : "
MUST_BE_INTEGERS = "The dimensions of a metadata entry must be integers, current has : "
NEGATIVE = "The dimensions of a metadata entry cannot be negative, current has : "
TOO_LARGE = "The dimensions of a metadata entry are too large, current are : "

REFUSED_DIMENSIONS: list[tuple[Any, type[Exception], str]] = [
    (3, TypeError, MUST_BE_LIST + "3"), (None, TypeError, MUST_BE_LIST + "None"),
    ("23", TypeError, MUST_BE_LIST + "'23'"), ({2: 3}, TypeError, MUST_BE_LIST + "{2: 3}"),
    ([2.0], TypeError, MUST_BE_INTEGERS + "2.0"), (["2"], TypeError, MUST_BE_INTEGERS + "'2'"),
    ([2, None], TypeError, MUST_BE_INTEGERS + "None"),
    ([[2]], TypeError, MUST_BE_INTEGERS + "[2]"),
    ([2, -1], ValueError, NEGATIVE + "-1"), ([-(2**70)], ValueError, NEGATIVE + str(-(2**70))),
    ([2**70], ValueError, TOO_LARGE + f"[{2**70}]"),
    ([2**20, 2**20], ValueError, TOO_LARGE + "[1048576, 1048576]"),
    ([2**62, 4], ValueError, TOO_LARGE + f"[{2**62}, 4]"),
]  # fmt: skip


@ways
@pytest.mark.parametrize("entry", ["COUNTS", "NAMES"])
@pytest.mark.parametrize(("dimensions", "raised", "text"), REFUSED_DIMENSIONS)
def test_refused_dimensions_are_named_and_change_nothing(
    rich_trial: Any, way: str, entry: str, dimensions: Any, raised: type[Exception], text: str
) -> None:
    before = snapshot(rich_trial)
    function = "moxSetMetaDataDimensions"
    failure = failure_of(WAYS[way], function, rich_trial, "TRIAL", entry, dimensions)
    assert failure == (raised, text)
    assert snapshot(rich_trial) == before


def test_a_missing_entry_is_named_before_its_dimensions_are_looked_at(acquisition: Any) -> None:
    text = "Unable to find the metadata entry 'N' in the group 'Metadata/ANALOG'"
    failure = failure_of(_moxPY.moxSetMetaDataDimensions, acquisition, "ANALOG", "N", "text")
    assert failure == (RuntimeError, text)


@pytest.mark.parametrize("dimensions", [[], [1], [1, 1]])
def test_bytes_cannot_be_cut_to_one(rich_trial: Any, dimensions: list[int]) -> None:
    before = snapshot(rich_trial)
    failure = failure_of(_moxPY.moxSetMetaDataDimensions, rich_trial, "TRIAL", "BYTES", dimensions)
    assert failure == (SystemError, NOT_READABLE)
    assert snapshot(rich_trial) == before


@pytest.mark.parametrize("element", ["int32", "int64", "float64"])
def test_the_extent_of_other_element_types_stays(acquisition: Any, element: str) -> None:
    add_entry(acquisition, "G", "E", element, [2], [1, 2])
    before = snapshot(acquisition)
    failure = failure_of(_moxPY.moxSetMetaDataDimensions, acquisition, "G", "E", [3])
    assert failure == (RuntimeError, "Unsupported type")
    assert snapshot(acquisition) == before
