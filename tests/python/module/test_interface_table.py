"""The whole interface, function by function, as `support/interface.txt` spells it."""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any

import _moxPY
import numpy as np
from support.failures import failure_of
from support.interface import FUNCTIONS, OUTPUT, Function

# Fits no declared type but `PyObject *`.
NOTHING_FITS = object()


def test_the_module_has_the_functions_of_the_interface_in_their_order():
    registered = [name for name, value in vars(_moxPY).items() if callable(value)]
    own = [name for name in registered if not name.startswith("__")]
    assert own == [function.name for function in FUNCTIONS]
    assert len(own) == 108


def test_every_function_is_as_the_interface_spells_it():
    deviations = [text for function in FUNCTIONS for text in deviations_of(function)]
    assert deviations == []


def deviations_of(function: Function) -> Iterator[str]:
    if not hasattr(_moxPY, function.name):
        yield f"{function}: not registered"
        return
    registered = getattr(_moxPY, function.name)
    if registered.__name__ != function.name:
        yield f"{function}: is called {registered.__name__}"
    if (registered.__doc__ is not None) != (function.name == "reload"):
        yield f"{function}: documentation {registered.__doc__!r}"
    for count, expected in expected_failures(function).items():
        raised = failure_of(registered, *[NOTHING_FITS] * count)
        if raised != (TypeError, expected):
            yield f"{function} with {count} arguments: {raised}"


def expected_failures(function: Function) -> dict[int, str]:
    """Number of arguments -> what is said about them, for all but calls that may succeed."""
    least, most = min(function.argument_counts), max(function.argument_counts)
    if function.overloaded:
        return (
            {count: with_overloads(function, "at least", least, count) for count in range(least)}
            | dict.fromkeys(range(max(least, 1), most + 1), function.overload_message)
            | {most + 1: with_overloads(function, "at most", most, most + 1)}
        )
    if most == 1:  # the interpreter counts single arguments itself
        text = f"_moxPY.{function}() takes exactly one argument ({{}} given)"
    else:
        text = f"{function} expected {most} arguments, got {{}}"
    counts = [*range(most), most + 1]
    return {count: text.format(count) for count in counts} | first_bad_argument(function)


def with_overloads(function: Function, bound: str, limit: int, given: int) -> str:
    return (
        f"{function} expected {bound} {limit} arguments, got {given}"
        f"\nAdditional information:\n{function.overload_message}"
    )


def first_bad_argument(function: Function) -> dict[int, str]:
    """What is said about objects that fit nothing, when their number is right."""
    for position, declared in enumerate(function.parameters[0], start=1):
        if declared not in (OUTPUT, "PyObject *"):
            text = f"in method '{function}', argument {position} of type '{declared}'"
            return {function.argument_counts[0]: text}
    return {}


def test_counts_are_floats():
    """Every number that is told, counts included."""
    handle: Any = _moxPY.moxNewAcquisition(2, 3, 1, 4)
    numbers = {
        "moxGetPointFrequency": 0.0, "moxGetPointFrameNumber": 3.0, "moxGetPointNumber": 2.0,
        "moxGetAnalogNumber": 1.0, "moxGetAnalogFrameNumber": 12.0, "moxGetAnalogResolution": 12.0,
        "moxGetAnalogFrequency": 0.0, "moxGetEventNumber": 0.0,
        "moxGetAnalogSampleNumberPerFrame": 4.0, "moxGetMaxInterpolationGap": 0.0,
        "moxGetFirstFrame": 0.0, "moxGetLastFrame": 2.0,
    }  # fmt: skip
    found = {name: getattr(_moxPY, name)(handle) for name in numbers}
    assert found == numbers
    assert {type(value) for value in found.values()} == {float}


def test_functions_with_outputs_give_a_list_of_them():
    handle: Any = _moxPY.moxNewAcquisition(1, 2, 1)
    _moxPY.moxSetFrequency(handle, 100.0)
    for function in FUNCTIONS:
        if function.outputs and function.argument_counts == [1] and hasattr(_moxPY, function.name):
            try:
                result = function(handle)
            except RuntimeError:  # what it is asked for is not there
                continue
            assert type(result) is list, function.name
            assert len(result) == function.outputs, function.name


def test_functions_without_a_result_give_none():
    handle: Any = _moxPY.moxNewAcquisition(1, 2)
    for name, arguments in {
        "moxSetFrequency": (100.0,), "moxSetFrameNumber": (3,), "moxSetFirstFrame": (1,),
        "moxSetMaxInterpolationGap": (2,), "moxSetAnalogResolution": (14,),
        "moxSetAnalogSampleNumberPerFrame": (2,), "moxSetPointsValues": (np.zeros((3, 3)),),
        "moxClearAnalogs": (), "moxClearEvents": (), "moxCloseAcquisition": (),
        "moxDeleteAcquisition": (),
    }.items():  # fmt: skip
        assert getattr(_moxPY, name)(handle, *arguments) is None, name
