"""Every function says which of its arguments is wrong, as its prototype declares it."""

from __future__ import annotations

from typing import Any

import pytest
from support.failures import failure_of
from support.interface import OUTPUT, REGISTERED, Function
from support.proxies import deleted_handle, new_proxy

# For each declared type: a value that is taken, and one that is not.
VALUES: dict[str, tuple[Any, Any]] = {
    "strata::data_store": (new_proxy(), 42),
    "strata::data_store *": (new_proxy(), 42),
    "strata::data_set const": (None, 42),
    "anvil::json const": (None, 42),
    "int": (1, 1.5),
    "double": (1.0, "fast"),
    "double const &": (1.0, "fast"),
    "float": (1.0, "fast"),
    "std::string const &": ("LASI", b"LASI"),
    "std::string &": ("LASI", b"LASI"),
    "PyObject *": (None, None),
}


def bad_calls() -> list[Any]:
    """Calls of functions without overloads with one bad argument."""
    calls = []
    for function in REGISTERED:
        types = function.parameters[0]
        for position, declared in enumerate(types, start=1):
            if function.overloaded or declared in (OUTPUT, "PyObject *"):
                continue
            calls.append(pytest.param(function, position, declared, id=f"{function}-{position}"))
    return calls


def call(function: Function, position: int, value: Any) -> None:
    arguments = [
        value if place == position else VALUES[declared][0]
        for place, declared in enumerate(function.parameters[0], start=1)
        if declared != OUTPUT
    ]
    function(*arguments)


@pytest.mark.parametrize(("function", "position", "declared"), bad_calls())
def test_a_bad_argument_is_named(function: Function, position: int, declared: str):
    bad = [VALUES[declared][1]]
    if not declared.startswith("strata::data_store"):  # of which None is a null reference
        bad.append(None)
    for value in bad:
        assert failure_of(call, function, position, value) == (
            TypeError,
            f"in method '{function}', argument {position} of type '{declared}'",
        )


@pytest.mark.parametrize(
    ("function", "position", "declared"),
    [call for call in bad_calls() if call.values[2].startswith("strata::data_store")],
)
@pytest.mark.parametrize("nothing", [None, deleted_handle()], ids=["None", "deleted"])
def test_a_null_reference_is_named(function: Function, position: int, declared: str, nothing: Any):
    assert failure_of(call, function, position, nothing) == (
        ValueError,
        f"invalid null reference in method '{function}', argument {position} of type '{declared}'",
    )


@pytest.mark.parametrize(
    ("function", "position", "declared"),
    [call for call in bad_calls() if call.values[2] in ("int", "float")],
)
def test_a_number_out_of_range_is_named(function: Function, position: int, declared: str):
    beyond = {"int": 2**40, "float": 1e39}[declared]
    assert failure_of(call, function, position, beyond) == (
        OverflowError,
        f"in method '{function}', argument {position} of type '{declared}'",
    )
