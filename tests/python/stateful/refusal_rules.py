"""Calls that are refused whatever the acquisition holds."""

from __future__ import annotations

from typing import Any

from stateful.editing_machine import EditingMachine
from support.model.state import Refused

UNAVAILABLE: list[tuple[str, tuple[Any, ...]]] = [
    ("moxSetEventLabel", (0, "Heel")),
    ("moxSetEventTime", (0, 1.0)),
    ("moxSetEventSubject", (0, "Ann")),
    ("moxAppendAnalysisParameter", ("Cadence", "Left", "Ann", 100.0)),
    ("moxRemoveAnalysisParameter", (0,)),
    ("moxClearAnalysis", ()),
]

# Arguments, and the position and type that the message names.
WRONG_ARGUMENTS: list[tuple[type[Exception], int, str, str, tuple[Any, ...]]] = [
    (TypeError, 5, "std::string const &", "moxAppendPoint", ("marker", "\udc80", [[0.0] * 3])),
    (TypeError, 3, "std::string const &", "moxSetPointsUnit", ("marker", b"mm")),
    (TypeError, 2, "double", "moxSetFrequency", ("100",)),
    (TypeError, 2, "int", "moxSetAnalogNumber", (2.0,)),
    (TypeError, 5, "int", "moxSetEventId", ("Heel", 1.5)),
    (OverflowError, 4, "int", "moxSetPointNumber", (2**40,)),
    (OverflowError, 2, "int", "moxSetAnalogNumber", (-(2**40),)),
]


class RefusalRules(EditingMachine):
    def teardown(self) -> None:
        """Whatever the acquisition has become, they change nothing."""
        for name, arguments in UNAVAILABLE:
            self.perform(name, *arguments)
        for kind, position, declared, name, arguments in WRONG_ARGUMENTS:
            text = f"in method '{name}', argument {position} of type '{declared}'"
            self.require_refusal(Refused(text, kind), name, *arguments)
        super().teardown()
