"""Which overload is called, and what is said when none is."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import pytest
from support.failures import failure_of
from support.interface import REGISTERED, Function
from support.proxies import PASSED_ON, StoppingShadow, deleted_handle

OVERLOADED = [function for function in REGISTERED if function.overloaded]

POINT_MESSAGE = (
    "Wrong number or type of arguments for overloaded function 'moxGetPoint'.\n"
    "  Possible C/C++ prototypes are:\n"
    "    moxGetPoint(PyObject *&,PyObject *&,strata::data_store,int)\n"
    "    moxGetPoint(PyObject *&,PyObject *&,strata::data_store,std::string const &)\n"
)

CHOOSE_MESSAGE = (
    "Wrong number or type of arguments for overloaded function 'choose'.\n"
    "  Possible C/C++ prototypes are:\n"
    "    choose(strata::data_store,int)\n"
    "    choose(strata::data_store,float)\n"
    "    choose(strata::data_store,std::string const &)\n"
)


@pytest.fixture
def handle() -> Any:
    return _moxPY.new_data_store()


@pytest.mark.parametrize("function", OVERLOADED, ids=str)
def test_prototypes_are_listed_when_no_overload_fits(function: Function):
    for count in set(function.argument_counts) - {0}:
        arguments = [object()] * count
        assert failure_of(function, *arguments) == (TypeError, function.overload_message)


def test_message_of_a_point_that_is_neither_index_nor_label(handle: Any):
    assert failure_of(_moxPY.moxGetPoint, handle, 1.5) == (TypeError, POINT_MESSAGE)


def test_message_of_an_analog_channel_with_too_many_arguments(handle: Any):
    assert failure_of(_moxPY.moxGetAnalog, handle, 1, 2) == (
        TypeError,
        "moxGetAnalog expected at most 2 arguments, got 3\n"
        "Additional information:\n"
        "Wrong number or type of arguments for overloaded function 'moxGetAnalog'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    moxGetAnalog(PyObject *&,PyObject *&,strata::data_store,int)\n"
        "    moxGetAnalog(PyObject *&,PyObject *&,strata::data_store,std::string const &)\n",
    )


@pytest.mark.parametrize("index", [2**31, -(2**31) - 1, 2**40])
def test_an_index_beyond_32_bits_fits_no_overload(handle: Any, index: int):
    assert failure_of(_moxPY.moxGetPoint, handle, index) == (TypeError, POINT_MESSAGE)


@pytest.mark.parametrize(
    ("value", "overload"),
    [(7, "int"), (True, "int"), (2**31, "float"), (1.5, "float"), ("7", "text"), ("", "text")],
)
def test_the_type_of_the_value_decides(handle: Any, value: Any, overload: str):
    assert probe.choose(handle, value) == overload


@pytest.mark.parametrize("value", [b"7", None, [7], 1e39, 10**400, 1j])
def test_values_that_fit_no_overload(handle: Any, value: Any):
    assert failure_of(probe.choose, handle, value) == (TypeError, CHOOSE_MESSAGE)


@pytest.mark.parametrize("no_handle", [None, 42, "handle", _moxPY.anvil_to_json(1)])
def test_what_is_no_acquisition_fits_no_overload(no_handle: Any):
    assert failure_of(probe.choose, no_handle, 7) == (TypeError, CHOOSE_MESSAGE)


def test_a_deleted_handle_fits_and_is_reported_by_the_overload():
    assert failure_of(probe.choose, deleted_handle(), 7) == (
        ValueError,
        "invalid null reference in method 'choose', argument 1 of type 'strata::data_store'",
    )


def test_a_text_without_utf8_form_is_reported_by_its_overload(handle: Any):
    assert failure_of(probe.choose, handle, "\ud800") == (
        TypeError,
        "in method 'choose', argument 2 of type 'std::string const &'",
    )


@pytest.mark.parametrize("raised", PASSED_ON)
def test_what_stops_the_script_ends_the_search_for_an_overload(raised: type[BaseException]):
    handle = StoppingShadow(raised)
    with pytest.raises(raised, match=r"^stop$"):
        _moxPY.moxGetPoint(handle, 0)
    assert handle.asked == 1


def test_any_other_failure_behind_a_handle_fits_no_overload():
    handle = StoppingShadow(RuntimeError)
    assert failure_of(_moxPY.moxGetPoint, handle, 0) == (TypeError, POINT_MESSAGE)
