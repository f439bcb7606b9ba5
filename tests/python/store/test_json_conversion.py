"""Python values as JSON and back."""

from __future__ import annotations

from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
import pytest
from support.failures import failure_of


class Dict(dict):  # type: ignore[type-arg]
    pass


class Float(float):
    pass


class Int(int):
    pass


class Text(str):
    pass


class List(list):  # type: ignore[type-arg]
    pass


def there_and_back(value: Any) -> Any:
    return _moxPY.from_anvil_json(_moxPY.anvil_to_json(value))


@pytest.mark.parametrize(
    ("value", "expected"),
    [
        (None, None),
        (True, True),
        (False, False),
        (0, 0),
        (-(2**31), -(2**31)),
        (2**31 - 1, 2**31 - 1),
        (Int(7), 7),
        (0.1, 0.1),
        (1e300, 1e300),
        (Float(2.5), 2.5),
        ("", ""),
        ("膝 mm/s² 😀", "膝 mm/s² 😀"),
        (Text("own"), "own"),
        ([], []),
        ([1, [2.5, "a", None, True]], [1, [2.5, "a", None, True]]),
        (List([1]), [1]),
        ({}, {}),
        ({"a": {"b": [1, {"c": None}]}}, {"a": {"b": [1, {"c": None}]}}),
        (Dict(a=1), {"a": 1}),
    ],
)
def test_values_survive_the_way_there_and_back(value: Any, expected: Any):
    result = there_and_back(value)
    assert result == expected
    assert type(result) is type(expected)


def test_true_is_a_boolean_and_not_a_number():
    assert there_and_back([True, 1]) == [True, 1]
    assert [type(item) for item in there_and_back([True, 1])] == [bool, int]


@pytest.mark.parametrize(
    ("text", "expected"),
    [
        ("18446744073709551615", 2**64 - 1),
        ("-9223372036854775808", -(2**63)),
        ("1.0", 1.0),
        ("[true, false, null]", [True, False, None]),
        ('{"b": 1, "a": [0.5]}', {"b": 1, "a": [0.5]}),
    ],
)
def test_json_of_other_origin_is_converted(text: str, expected: Any):
    result = _moxPY.from_anvil_json(probe.json_from_text(text))
    assert result == expected
    assert type(result) is type(expected)


@pytest.mark.parametrize(
    ("value", "name"),
    [
        ((1, 2), "tuple"),
        ({1}, "set"),
        (b"x", "bytes"),
        (1j, "complex"),
        (object(), "object"),
        (np.zeros(2), "numpy.ndarray"),
        (np.float32(1), "numpy.float32"),
        ([{"a": (1,)}], "tuple"),
        ({1: "a"}, "int"),
        ({None: 1}, "NoneType"),
    ],
)
def test_other_types_are_named(value: Any, name: str):
    assert failure_of(_moxPY.anvil_to_json, value) == (
        TypeError,
        f"Unsupported data type: '{name}'",
    )


@pytest.mark.parametrize("number", [2**31, -(2**31) - 1, 2**64])
def test_ints_are_32_bits_wide(number: int):
    assert failure_of(_moxPY.anvil_to_json, [number]) == (
        OverflowError,
        "Python int too large to convert to C long",
    )


def test_a_text_without_utf8_form_is_refused():
    raised, _ = failure_of(_moxPY.anvil_to_json, {"a": "\ud800"})
    assert raised is UnicodeEncodeError


def nested(depth: int) -> Any:
    value: Any = 1
    for level in range(depth):
        value = [value] if level % 2 else {"deeper": value}
    return value


def test_values_nested_too_deeply_are_refused():
    raised, _ = failure_of(_moxPY.anvil_to_json, nested(100_000))
    assert raised is RecursionError


def test_a_list_that_holds_itself_is_refused():
    circular: list[Any] = []
    circular.append(circular)
    raised, _ = failure_of(_moxPY.anvil_to_json, circular)
    assert raised is RecursionError


def test_deep_nesting_survives_the_way_there_and_back():
    value = nested(150)
    assert there_and_back(value) == value


def test_a_proxy_is_returned():
    proxy = _moxPY.anvil_to_json({"a": 1})
    assert repr(proxy).startswith("<Swig Object of type 'anvil::json *' at 0x")


def test_a_conversion_leaves_the_proxy_as_it_was():
    proxy = _moxPY.anvil_to_json({"a": [1]})
    _moxPY.from_anvil_json(proxy)["a"].append(2)
    assert _moxPY.from_anvil_json(proxy) == {"a": [1]}


@pytest.mark.parametrize(
    ("value", "name"), [(3, "int"), (None, "NoneType"), ("x", "str"), ([], "list")]
)
def test_the_error_of_an_unsupported_type_is_raised_for_any_value(value: Any, name: str):
    assert failure_of(_moxPY.throw_type_error, value) == (
        TypeError,
        f"Unsupported data type: '{name}'",
    )
