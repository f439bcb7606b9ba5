"""Analysis parameters: reading them, and the functions that refuse every call."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import pytest
from support.failures import failure_of
from support.metadata_entries import append
from support.proxies import deleted_handle
from support.readings import same_reading
from support.small_trials import read_trial
from support.store_tree import snapshot

NOT_SUPPORTED = (
    "Function not supported yet. If you are actively using this function, please contact support."
)

CALLS: list[tuple[str, tuple[Any, ...]]] = [
    ("moxAppendAnalysisParameter", ("Cadence", "Left", "Ann", 1.0)),
    ("moxAppendAnalysisParameter", ("Cadence", "Left", "Ann", 1, "1/s")),
    ("moxAppendAnalysisParameter", ("Cadence", "Left", "Ann", 1.0, "1/s", "described")),
    ("moxRemoveAnalysisParameter", (0,)),
    ("moxRemoveAnalysisParameter", ("Cadence", "Left")),
    ("moxClearAnalysis", ()),
]


def test_parameters_of_a_file_come_with_their_units(tmp_path: Path) -> None:
    acquisition = read_trial(tmp_path)
    returned = _moxPY.moxGetAnalysis(acquisition)
    assert type(returned) is list
    assert same_reading(returned[0], _moxPY.moxGetMetaData(acquisition, "ANALYSIS"))
    assert returned[0]["children"]["VALUES"]["info"]["values"].tolist() == [1.25, 0.5]
    assert returned[1] == {"units": ["m", "s"]}


def test_without_units_their_list_is_empty() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    append(acquisition, "ANALYSIS", "VALUES", "Real", [1.0, 2.0])
    assert _moxPY.moxGetAnalysis(acquisition)[1] == {"units": []}


def test_a_single_unit() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    append(acquisition, "ANALYSIS", "UNITS", "Char", "m")
    assert _moxPY.moxGetAnalysis(acquisition)[1] == {"units": "m"}


def test_without_the_group_its_path_is_named() -> None:
    acquisition = _moxPY.moxNewAcquisition()
    text = "Impossible to retrieve group with path : 'Metadata/ANALYSIS'"
    assert failure_of(_moxPY.moxGetAnalysis, acquisition) == (RuntimeError, text)


@pytest.mark.parametrize(("function", "arguments"), CALLS)
def test_every_change_is_refused(any_trial: Any, function: str, arguments: tuple[Any, ...]) -> None:
    before = snapshot(any_trial)
    failure = failure_of(getattr(_moxPY, function), any_trial, *arguments)
    assert failure == (RuntimeError, NOT_SUPPORTED)
    assert snapshot(any_trial) == before


@pytest.mark.parametrize("value", [42, "handle", object()])
def test_what_is_no_acquisition_is_reported_first(value: Any) -> None:
    text = "in method 'moxClearAnalysis', argument 1 of type 'strata::data_store'"
    assert failure_of(_moxPY.moxClearAnalysis, value) == (TypeError, text)


@pytest.mark.parametrize("value", [None, deleted_handle()])
def test_a_null_reference_is_reported_first(value: Any) -> None:
    text = (
        "invalid null reference in method 'moxClearAnalysis', "
        "argument 1 of type 'strata::data_store'"
    )
    assert failure_of(_moxPY.moxClearAnalysis, value) == (ValueError, text)
