"""What is said when a call of an editing function fits none of its overloads."""

from __future__ import annotations

from typing import Any

import _moxPY
import pytest
from support.failures import failure_of
from support.store_tree import snapshot

PROTOTYPES = {
    "moxGetMetaData": [
        "moxGetMetaData(strata::data_store)",
        "moxGetMetaData(strata::data_store,std::string const &)",
        "moxGetMetaData(strata::data_store,std::string const &,std::string const &)",
    ],
    "moxMetaDataInfo": [
        "moxMetaDataInfo(std::string const &,PyObject *,int)",
        "moxMetaDataInfo(std::string const &,PyObject *)",
    ],
    "moxFindMetaData": [
        "moxFindMetaData(strata::data_store,std::string const &)",
        "moxFindMetaData(strata::data_store,std::string const &,std::string const &)",
    ],
    "moxSetAnalogDescription": [
        "moxSetAnalogDescription(PyObject *&,PyObject *&,strata::data_store,int,"
        "std::string const &)",
        "moxSetAnalogDescription(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &)",
    ],
    "moxSetAnalogGain": [
        "moxSetAnalogGain(PyObject *&,PyObject *&,strata::data_store,int,int)",
        "moxSetAnalogGain(PyObject *&,PyObject *&,strata::data_store,std::string const &,int)",
    ],
    "moxSetAnalogLabel": [
        "moxSetAnalogLabel(PyObject *&,PyObject *&,strata::data_store,int,std::string const &)",
        "moxSetAnalogLabel(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "std::string const &)",
    ],
    "moxSetAnalogOffset": [
        "moxSetAnalogOffset(PyObject *&,PyObject *&,strata::data_store,int,int)",
        "moxSetAnalogOffset(PyObject *&,PyObject *&,strata::data_store,std::string const &,int)",
    ],
    "moxSetAnalogScale": [
        "moxSetAnalogScale(PyObject *&,PyObject *&,strata::data_store,int,float)",
        "moxSetAnalogScale(PyObject *&,PyObject *&,strata::data_store,std::string const &,float)",
    ],
    "moxSetAnalogUnit": [
        "moxSetAnalogUnit(PyObject *&,PyObject *&,strata::data_store,int,std::string const &)",
        "moxSetAnalogUnit(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "std::string const &)",
    ],
    "moxSetAnalogValues": [
        "moxSetAnalogValues(strata::data_store,int,PyObject *)",
        "moxSetAnalogValues(strata::data_store,std::string &,PyObject *)",
    ],
    "moxRemoveAnalog": [
        "moxRemoveAnalog(PyObject *&,PyObject *&,strata::data_store,std::string const &)",
        "moxRemoveAnalog(PyObject *&,PyObject *&,strata::data_store,int)",
    ],
    "moxAppendAnalog": [
        "moxAppendAnalog(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "PyObject *,std::string const &)",
        "moxAppendAnalog(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "PyObject *)",
    ],
    "moxAppendEvent": [
        "moxAppendEvent(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "double const &,std::string const &)",
        "moxAppendEvent(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "double const &,std::string const &,std::string const &)",
        "moxAppendEvent(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "double const &,std::string const &,std::string const &,std::string const &)",
        "moxAppendEvent(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "double const &,std::string const &,std::string const &,std::string const &,int)",
    ],
    "moxSetPointValues": [
        "moxSetPointValues(strata::data_store,int,PyObject *)",
        "moxSetPointValues(strata::data_store,std::string const &,PyObject *)",
    ],
    "moxRemovePoint": [
        "moxRemovePoint(PyObject *&,PyObject *&,strata::data_store,std::string const &)",
        "moxRemovePoint(PyObject *&,PyObject *&,strata::data_store,int)",
    ],
    "moxSetPointType": [
        "moxSetPointType(PyObject *&,PyObject *&,strata::data_store,int,std::string const &)",
        "moxSetPointType(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "std::string const &)",
    ],
    "moxSetPointLabel": [
        "moxSetPointLabel(PyObject *&,PyObject *&,strata::data_store,std::string const &,"
        "std::string const &)",
        "moxSetPointLabel(PyObject *&,PyObject *&,strata::data_store,int,std::string const &)",
    ],
    "moxSetPointDescription": [
        "moxSetPointDescription(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &)",
        "moxSetPointDescription(PyObject *&,PyObject *&,strata::data_store,int,"
        "std::string const &)",
    ],
    "moxSetFrameNumber": [
        "moxSetFrameNumber(strata::data_store,int)",
        "moxSetFrameNumber(strata::data_store,int,int)",
    ],
    "moxRemoveMetaData": [
        "moxRemoveMetaData(strata::data_store,std::string const &)",
        "moxRemoveMetaData(strata::data_store,std::string const &,std::string const &)",
    ],
    "moxSetMetaDataDimensions": [
        "moxSetMetaDataDimensions(strata::data_store,std::string const &,std::string const &,"
        "PyObject *)",
        "moxSetMetaDataDimensions(strata::data_store,std::string const &,PyObject *)",
    ],
    "moxSetMetaDataDescription": [
        "moxSetMetaDataDescription(strata::data_store,std::string const &,std::string const &)",
        "moxSetMetaDataDescription(strata::data_store,std::string const &,"
        "std::string const &,std::string const &)",
    ],
    "moxSetMetaDataFormat": [
        "moxSetMetaDataFormat(strata::data_store,std::string const &,std::string const &)",
        "moxSetMetaDataFormat(strata::data_store,std::string const &,std::string const &,"
        "std::string const &)",
    ],
    "moxSetMetaDataValue": [
        "moxSetMetaDataValue(strata::data_store,std::string const &,std::string const &,"
        "PyObject *)",
        "moxSetMetaDataValue(strata::data_store,std::string const &,PyObject *)",
    ],
    "moxAppendAnalysisParameter": [
        "moxAppendAnalysisParameter(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &,std::string const &,double)",
        "moxAppendAnalysisParameter(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &,std::string const &,double,"
        "std::string const &)",
        "moxAppendAnalysisParameter(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &,std::string const &,double,"
        "std::string const &,std::string const &)",
    ],
    "moxRemoveAnalysisParameter": [
        "moxRemoveAnalysisParameter(PyObject *&,PyObject *&,strata::data_store,int)",
        "moxRemoveAnalysisParameter(PyObject *&,PyObject *&,strata::data_store,"
        "std::string const &,std::string const &)",
    ],
    "moxSetFirstFrame": [
        "moxSetFirstFrame(strata::data_store,int)",
        "moxSetFirstFrame(strata::data_store,int,int)",
    ],
}

# Function -> fewest and most arguments.
COUNTS = {
    "moxGetMetaData": (1, 3),
    "moxMetaDataInfo": (2, 3),
    "moxFindMetaData": (2, 3),
    "moxSetAnalogDescription": (3, 3),
    "moxSetAnalogGain": (3, 3),
    "moxSetAnalogLabel": (3, 3),
    "moxSetAnalogOffset": (3, 3),
    "moxSetAnalogScale": (3, 3),
    "moxSetAnalogUnit": (3, 3),
    "moxSetAnalogValues": (3, 3),
    "moxRemoveAnalog": (2, 2),
    "moxAppendAnalog": (3, 4),
    "moxAppendEvent": (4, 7),
    "moxSetPointValues": (3, 3),
    "moxRemovePoint": (2, 2),
    "moxSetPointType": (3, 3),
    "moxSetPointLabel": (3, 3),
    "moxSetPointDescription": (3, 3),
    "moxSetFrameNumber": (2, 3),
    "moxRemoveMetaData": (2, 3),
    "moxSetMetaDataDimensions": (3, 4),
    "moxSetMetaDataDescription": (3, 4),
    "moxSetMetaDataFormat": (3, 4),
    "moxSetMetaDataValue": (3, 4),
    "moxAppendAnalysisParameter": (5, 7),
    "moxRemoveAnalysisParameter": (2, 3),
    "moxSetFirstFrame": (2, 3),
}


def overload_message(function: str) -> str:
    lines = "".join(f"    {prototype}\n" for prototype in PROTOTYPES[function])
    return (
        f"Wrong number or type of arguments for overloaded function '{function}'.\n"
        f"  Possible C/C++ prototypes are:\n{lines}"
    )


functions = pytest.mark.parametrize("function", PROTOTYPES)


@functions
def test_prototypes_are_listed_when_no_argument_fits(function: str) -> None:
    fewest, most = COUNTS[function]
    for count in {fewest, most}:
        failure = failure_of(getattr(_moxPY, function), *[object()] * count)
        assert failure == (TypeError, overload_message(function))


@functions
def test_too_few_arguments_are_said_first(function: str) -> None:
    fewest, _ = COUNTS[function]
    text = f"{function} expected at least {fewest} arguments, got {fewest - 1}"
    assert failure_of(getattr(_moxPY, function), *[None] * (fewest - 1)) == (
        TypeError, f"{text}\nAdditional information:\n{overload_message(function)}",
    )  # fmt: skip


@functions
def test_too_many_arguments_are_said_first(function: str) -> None:
    _, most = COUNTS[function]
    text = f"{function} expected at most {most} arguments, got {most + 1}"
    assert failure_of(getattr(_moxPY, function), *[None] * (most + 1)) == (
        TypeError, f"{text}\nAdditional information:\n{overload_message(function)}",
    )  # fmt: skip


def test_every_overloaded_editing_function_is_listed_here() -> None:
    prefixes = ("moxSet", "moxAppend", "moxRemove", "moxClear")
    overloaded = [
        name
        for name in vars(_moxPY)
        if name.startswith(prefixes)
        and "overloaded function" in failure_of(getattr(_moxPY, name))[1]
    ]
    assert overloaded == [name for name in PROTOTYPES if name.startswith(prefixes)]


# Where index and label are both taken, and neither is given.
NEITHER: list[tuple[str, tuple[Any, ...]]] = [
    ("moxSetPointValues", (1.0, [[1.0, 2.0, 3.0]])), ("moxSetPointLabel", (None, "new")),
    ("moxSetPointDescription", (b"LASI", "new")), ("moxSetPointType", (1.0, "force")),
    ("moxRemovePoint", (2**31,)), ("moxRemoveAnalog", (1.5,)),
    ("moxSetAnalogValues", ([0], [[1.0]])), ("moxSetAnalogLabel", (0, 1)),
    ("moxSetAnalogGain", (0, "1")), ("moxAppendAnalog", (1, [[1.0]])),
    ("moxAppendEvent", ("A", "1.0", "Left")), ("moxAppendEvent", ("A", 1.0, "L", "", "", 1.5)),
    ("moxRemoveMetaData", (1,)), ("moxSetMetaDataFormat", ("A", 4)),
    ("moxSetMetaDataValue", (1, 2)), ("moxSetMetaDataDimensions", ("A", 1, [1])),
    ("moxRemoveAnalysisParameter", (1.5,)), ("moxSetFirstFrame", (1.5,)),
    ("moxSetFrameNumber", (4, 1.5)),
]  # fmt: skip


@pytest.mark.parametrize(("function", "arguments"), NEITHER)
def test_values_of_other_types_change_nothing(
    any_trial: Any, function: str, arguments: tuple[Any, ...]
) -> None:
    before = snapshot(any_trial)
    failure = failure_of(getattr(_moxPY, function), any_trial, *arguments)
    assert failure == (TypeError, overload_message(function))
    assert snapshot(any_trial) == before


@pytest.mark.parametrize("point", [True, 1])
def test_a_truth_value_is_an_index(trial: Any, point: int) -> None:
    _moxPY.moxSetPointLabel(trial, point, "by index")
    assert _moxPY.moxGetPoint(trial, 1)[1]["label"] == "by index"


def test_digits_in_a_text_are_a_label(trial: Any) -> None:
    text = "Unable to find channel with given label :  '0'"
    assert failure_of(_moxPY.moxRemovePoint, trial, "0") == (RuntimeError, text)
