"""What becomes of the failures that an implementation throws, and of its outputs."""

from __future__ import annotations

import _mox_probe as probe
import pytest
from support.failures import failure_of

CODES = {
    -1: RuntimeError,
    -2: IOError,
    -3: RuntimeError,
    -4: IndexError,
    -5: TypeError,
    -6: ZeroDivisionError,
    -7: OverflowError,
    -8: SyntaxError,
    -9: ValueError,
    -10: SystemError,
    -11: AttributeError,
    -12: MemoryError,
    -13: RuntimeError,
    0: RuntimeError,
    99: RuntimeError,
}


@pytest.mark.parametrize(("code", "exception"), CODES.items())
def test_the_code_decides_the_exception(code: int, exception: type[Exception]):
    assert failure_of(probe.throw_code, code, "as it stands") == (exception, "as it stands")


@pytest.mark.parametrize("message", ["", "mm/s² and 膝", "two\nlines", "100 %s {} %d"])
def test_messages_are_not_changed(message: str):
    assert failure_of(probe.throw_code, -3, message) == (RuntimeError, message)


def test_an_unexpected_exception_asks_for_a_report():
    assert failure_of(probe.throw_standard, "boom") == (
        RuntimeError,
        "boom. Exception thrown while it should not. "
        "Please contact the support and report this problem.",
    )


def test_what_is_no_exception_asks_for_a_report():
    assert failure_of(probe.throw_unknown) == (
        RuntimeError,
        "Unknown exception thrown. Please contact the support and report this problem.",
    )


def test_memory_that_cannot_be_had_is_a_memory_error():
    assert failure_of(probe.throw_no_memory) == (MemoryError, "")


def test_outputs_of_a_failed_call_are_dropped():
    assert failure_of(probe.throw_behind_outputs, "late") == (RuntimeError, "late")


def test_empty_outputs_become_none():
    assert probe.outputs_left_empty() == [None, None]


def test_one_empty_output_becomes_none():
    assert probe.second_output_left_empty("first") == ["first", None]


def test_outputs_are_a_list():
    assert type(probe.outputs_left_empty()) is list


def test_an_empty_result_becomes_none():
    assert probe.result_left_empty() is None


def test_no_result_becomes_none():
    assert probe.no_result() is None
