"""Which Python values an argument of each declared type takes, and what is said about others."""

from __future__ import annotations

import math
from collections.abc import Callable
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of
from support.proxies import PASSED_ON, Shadow, StoppingShadow, deleted_handle, new_proxy

LARGEST_SINGLE = float(np.finfo(np.float32).max)


class Int(int):
    """An int whose own conversions must not be asked."""

    def __index__(self) -> int:
        raise AssertionError("asked for its index")

    __int__ = __float__ = __index__


class Float(float):
    def __float__(self) -> float:
        raise AssertionError("asked for its value")


class Text(str):
    def __str__(self) -> str:
        raise AssertionError("asked for its text")


class Index:
    """No int, though it could be used as one."""

    def __index__(self) -> int:
        return 1


@pytest.mark.parametrize("value", [0, -1, 2**31 - 1, -(2**31), True, False, Int(7)])
def test_int_takes_ints_of_32_bits(value: int):
    assert probe.take_int(value) == int.__index__(value)


@pytest.mark.parametrize("value", [1.0, "1", b"1", None, Index(), np.int64(1), [1]])
def test_int_takes_nothing_but_ints(value: Any):
    assert failure_of(probe.take_int, value) == (
        TypeError,
        "in method 'take_int', argument 1 of type 'int'",
    )


@pytest.mark.parametrize("value", [2**31, -(2**31) - 1, 2**63, 2**64, -(2**64), 10**400])
def test_int_beyond_32_bits_overflows(value: int):
    assert failure_of(probe.take_int, value) == (
        OverflowError,
        "in method 'take_int', argument 1 of type 'int'",
    )


def test_outputs_are_counted_in_positions():
    assert failure_of(probe.int_behind_outputs, "x") == (
        TypeError,
        "in method 'int_behind_outputs', argument 3 of type 'int'",
    )


NUMBERS = [0, 1.5, True, 2**70, Int(3), Float(2.5), np.float64(0.1), math.inf, -math.inf]


@pytest.mark.parametrize("take", [probe.take_double, probe.take_double_reference])
@pytest.mark.parametrize("value", NUMBERS)
def test_double_takes_floats_and_ints(take: Callable[..., float], value: Any):
    result = take(value)
    assert type(result) is float
    assert result == value


def test_double_takes_nan():
    assert math.isnan(probe.take_double(math.nan))


@pytest.mark.parametrize("value", ["1", b"1", None, Index(), np.float32(1), 1j, 10**400])
@pytest.mark.parametrize(
    ("name", "declared"),
    [("take_double", "double"), ("take_double_reference", "double const &")],
)
def test_double_takes_nothing_but_numbers_that_fit(value: Any, name: str, declared: str):
    assert failure_of(getattr(probe, name), value) == (
        TypeError,
        f"in method '{name}', argument 1 of type '{declared}'",
    )


def test_float_is_narrowed_to_single_precision():
    assert probe.take_float(0.1) == float(np.float32(0.1))


@pytest.mark.parametrize("value", [math.inf, -math.inf, LARGEST_SINGLE, -LARGEST_SINGLE, 3, True])
def test_float_takes_what_single_precision_holds(value: float):
    assert probe.take_float(value) == value


@pytest.mark.parametrize("value", [1e39, -1e39, LARGEST_SINGLE * (1 + 1e-9), 10**39])
def test_finite_float_beyond_single_precision_overflows(value: float):
    assert failure_of(probe.take_float, value) == (
        OverflowError,
        "in method 'take_float', argument 1 of type 'float'",
    )


@pytest.mark.parametrize("value", ["1", None, 1j, 10**400])
def test_float_takes_nothing_but_numbers_that_fit(value: Any):
    assert failure_of(probe.take_float, value) == (
        TypeError,
        "in method 'take_float', argument 1 of type 'float'",
    )


@pytest.mark.parametrize("take", [probe.take_text, probe.take_text_reference])
@pytest.mark.parametrize("value", ["", "LASI", "mm/s²", "膝", "😀", "a\nb", Text("own")])
def test_text_takes_any_str(take: Callable[..., str], value: str):
    assert take(value) == str.__str__(value)


@pytest.mark.parametrize("value", [b"LASI", None, 1, ["LASI"], "\ud800", "a\udcff", "a\0b", "\0"])
@pytest.mark.parametrize(
    ("name", "declared"),
    [("take_text", "std::string const &"), ("take_text_reference", "std::string &")],
)
def test_text_takes_nothing_but_str_with_a_utf8_form_and_without_nul(
    value: Any, name: str, declared: str
):
    assert failure_of(getattr(probe, name), value) == (
        TypeError,
        f"in method '{name}', argument 1 of type '{declared}'",
    )


@pytest.mark.parametrize("value", [None, 1, "x", b"x", object(), _moxPY])
def test_objects_are_passed_through(value: Any):
    assert probe.take_object(value) is value


def test_a_handle_is_taken_as_itself_and_in_a_shadow_instance():
    proxy = new_proxy()
    for handle in (proxy, Shadow(proxy), Shadow(Shadow(Shadow(proxy)))):
        probe.create_group(handle, "made")
        assert probe.list_groups(proxy, "") == ["made"]
        probe.delete_group(proxy, "made")


@pytest.mark.parametrize("make", [lambda: None, deleted_handle, lambda: Shadow(deleted_handle())])
def test_a_handle_on_nothing_is_a_null_reference(make: Callable[[], Any]):
    assert failure_of(probe.take_store, make()) == (
        ValueError,
        "invalid null reference in method 'take_store', argument 1 of type 'strata::data_store'",
    )


class RaisingShadow:
    @property
    def this(self) -> Any:
        raise RuntimeError("no handle here")


class Endless:
    @property
    def this(self) -> Endless:
        return self


def other_proxies() -> list[Any]:
    store = new_proxy()
    probe.create_set(store, "set", 11, [1])
    return [_moxPY.anvil_to_json(1), probe.data_set_proxy(store, "set")]


@pytest.mark.parametrize(
    "value",
    [
        42,
        "handle",
        object(),
        Shadow(None),
        Shadow(42),
        RaisingShadow(),
        Endless(),
        *other_proxies(),
    ],
)
def test_what_is_no_acquisition_is_refused(value: Any):
    assert failure_of(probe.take_store, value) == (
        TypeError,
        "in method 'take_store', argument 1 of type 'strata::data_store'",
    )


@pytest.mark.parametrize("raised", PASSED_ON)
def test_what_stops_the_script_behind_a_handle_is_passed_on(raised: type[BaseException]):
    with pytest.raises(raised, match=r"^stop$"):
        probe.take_store(StoppingShadow(raised))


def test_message_of_a_null_acquisition_counts_outputs():
    assert failure_of(_moxPY.moxGetPoints, None) == (
        ValueError,
        "invalid null reference in method 'moxGetPoints', argument 3 of type 'strata::data_store'",
    )


def test_message_of_a_number_for_an_acquisition():
    assert failure_of(_moxPY.moxGetPointFrequency, 42) == (
        TypeError,
        "in method 'moxGetPointFrequency', argument 1 of type 'strata::data_store'",
    )


@pytest.mark.parametrize("convert", [_moxPY.from_anvil_json, _moxPY.metadata_from_data_set])
def test_conversions_take_their_own_kind_of_proxy_only(convert: Callable[..., Any]):
    declared = {
        _moxPY.from_anvil_json: "anvil::json const",
        _moxPY.metadata_from_data_set: "strata::data_set const",
    }[convert]
    text = f"in method '{convert.__name__}', argument 1 of type '{declared}'"
    assert failure_of(convert, new_proxy()) == (TypeError, text)
    assert failure_of(convert, {}) == (TypeError, text)
    assert failure_of(convert, None) == (TypeError, text)


def test_the_first_bad_argument_is_reported():
    assert failure_of(_moxPY.moxSetFrequency, 42, "fast") == (
        TypeError,
        "in method 'moxSetFrequency', argument 1 of type 'strata::data_store'",
    )
    assert failure_of(_moxPY.moxSetFrequency, new_proxy(), "fast") == (
        TypeError,
        "in method 'moxSetFrequency', argument 2 of type 'double'",
    )


def test_counts_are_floats():
    assert type(_moxPY.moxGetPointNumber(_moxPY.moxNewAcquisition())) is float
