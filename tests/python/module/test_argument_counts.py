"""Calls with too few or too many arguments."""

from __future__ import annotations

import _moxPY
import pytest
from support.failures import failure_of
from support.interface import REGISTERED, Function

ONE_COUNT = [function for function in REGISTERED if not function.overloaded]
OVERLOADED = [function for function in REGISTERED if function.overloaded]

# An argument that fits none of the declared types but `PyObject *`.
NOTHING_FITS = object()


def message_of(function: Function, arguments: int) -> str:
    raised, text = failure_of(function, *[NOTHING_FITS] * arguments)
    assert raised is TypeError
    return text


@pytest.mark.parametrize("function", ONE_COUNT, ids=str)
def test_a_wrong_count_is_named(function: Function):
    (count,) = function.argument_counts
    if count == 1:  # the interpreter itself counts single arguments
        expected = f"_moxPY.{function.name}() takes exactly one argument ({{}} given)"
    else:
        expected = f"{function.name} expected {count} arguments, got {{}}"
    for given in {count + 1, max(count - 1, 0)} - {count}:
        assert message_of(function, given) == expected.format(given)


@pytest.mark.parametrize("function", OVERLOADED, ids=str)
def test_too_many_arguments_are_named_before_the_overloads(function: Function):
    most = max(function.argument_counts)
    assert message_of(function, most + 1) == (
        f"{function.name} expected at most {most} arguments, got {most + 1}"
        f"\nAdditional information:\n{function.overload_message}"
    )


@pytest.mark.parametrize("function", OVERLOADED, ids=str)
def test_too_few_arguments_are_named_before_the_overloads(function: Function):
    least = min(function.argument_counts)
    for given in range(least):
        assert message_of(function, given) == (
            f"{function.name} expected at least {least} arguments, got {given}"
            f"\nAdditional information:\n{function.overload_message}"
        )


def test_message_of_a_function_without_arguments():
    text = "unload expected 0 arguments, got 1"
    assert failure_of(_moxPY.unload, 1) == (TypeError, text)


def test_message_of_a_function_with_a_fixed_count():
    text = "moxSetFrequency expected 2 arguments, got 1"
    assert failure_of(_moxPY.moxSetFrequency, _moxPY.new_data_store()) == (TypeError, text)


def test_message_of_too_many_counts_for_a_new_acquisition():
    assert failure_of(_moxPY.moxNewAcquisition, 1, 2, 3, 4, 5) == (
        TypeError,
        "moxNewAcquisition expected at most 4 arguments, got 5\n"
        "Additional information:\n"
        "Wrong number or type of arguments for overloaded function 'moxNewAcquisition'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    moxNewAcquisition()\n"
        "    moxNewAcquisition(int)\n"
        "    moxNewAcquisition(int,int)\n"
        "    moxNewAcquisition(int,int,int)\n"
        "    moxNewAcquisition(int,int,int,int)\n",
    )
