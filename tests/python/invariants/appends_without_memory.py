"""Call a function again and again, each time with another allocation failing; see memory_shim.cpp.

Usage: appends_without_memory.py NAME
NAME is one of CALLS or VIEW_CALLS. The answer is a line of JSON: how often the function had done
nothing, how often all that it does (it failed while it read the result), and how often anything
else.
"""

from __future__ import annotations

import ctypes
import json
import sys
from collections.abc import Callable
from contextlib import suppress
from itertools import count
from typing import Any

import _mox_probe as probe
import _moxPY
import numpy as np
from _moxPY import trial as view
from support.store_tree import snapshot

EVENT = "Format/Events/LeftA"
ROWS = np.arange(6.0).reshape(2, 3)

Change = Callable[[Any], object]


def append_event(acquisition: Any, text: str = "a description that is too long") -> None:
    _moxPY.moxAppendEvent(acquisition, "A", 1.5, "Left", "a subject that is too long", text, 2)


def nothing(acquisition: Any) -> None:
    pass


def one_event(acquisition: Any) -> None:
    append_event(acquisition)


def full_events(acquisition: Any) -> None:
    """As many as there is room for, so that the next one moves what is there."""
    for _ in range(8):
        append_event(acquisition)


def event_without_description(acquisition: Any) -> None:
    append_event(acquisition, "")


def event_with_a_short_array(acquisition: Any) -> None:
    append_event(acquisition)
    probe.delete_attribute(acquisition, EVENT, "OccurrenceSubjects")
    probe.delete_attribute(acquisition, EVENT, "Type")


def append_point(acquisition: Any) -> None:
    _moxPY.moxAppendPoint(acquisition, "angle", "a label that is too long", ROWS)


def append_analog(acquisition: Any) -> None:
    _moxPY.moxAppendAnalog(acquisition, "a label that is too long", ROWS[:, :1], "a description")


# Name -> what comes before, and what is done without memory.
CALLS: dict[str, tuple[Change, Change]] = {
    "first event": (nothing, append_event),
    "second event": (one_event, append_event),
    "event that moves others": (full_events, append_event),
    "event that fills the description": (event_without_description, append_event),
    "event of another form": (event_with_a_short_array, append_event),
    "point": (nothing, append_point),
    "analog channel": (nothing, append_analog),
}


SOLE = (1.0, "A lonely event of a longer name", "Left", "", "", 0)
FIRST = (0.25, "A", "Left", "a subject that is too long", "a description that is too long", 2)
ADDED = (1.5, "A", "Left", "another subject that is too long", "a description", 3)
RENAMED = (1.5, "Another event of a longer name", "Left", "a subject that is too long", "", 3)


def single_events(acquisition: Any) -> None:
    """Three occurrences of an event, one of another."""
    for time in (0.25, 0.75, 0.5):
        view.append_event(acquisition, (time, *FIRST[1:]))
    view.append_event(acquisition, SOLE)


def adding(event: Any) -> Change:
    return lambda acquisition: view.append_event(acquisition, event)


def removing(event: Any) -> Change:
    return lambda acquisition: view.remove_event(acquisition, event)


def replacing(event: Any, by: Any) -> Change:
    return lambda acquisition: view.replace_event(acquisition, event, by)


# The same of what the object view does, which has nothing to read when it is done.
VIEW_CALLS: dict[str, tuple[Change, Change]] = {
    "add a single event": (single_events, adding(ADDED)),
    "add another event": (single_events, adding(RENAMED)),
    "remove an event": (single_events, removing(FIRST)),
    "remove the last of an event": (single_events, removing(SOLE)),
    "replace an event": (single_events, replacing(FIRST, ADDED)),
    "replace an event by another": (single_events, replacing(FIRST, RENAMED)),
    "replace an event that joins others": (single_events, replacing(SOLE, ADDED)),
    "replace the last of an event": (single_events, replacing(SOLE, RENAMED)),
}


def main() -> None:
    prepare, call = (CALLS | VIEW_CALLS)[sys.argv[1]]
    shim = ctypes.CDLL(None)

    def prepared() -> Any:
        acquisition = _moxPY.moxNewAcquisition(1, 2)
        prepare(acquisition)
        return acquisition

    before = snapshot(prepared())
    complete = prepared()
    call(complete)
    after = snapshot(complete)

    answer = {"nothing": 0, "all": 0, "half": 0}
    for index in count():
        acquisition = prepared()
        shim.mox_fail_allocation(index)
        with suppress(MemoryError):
            call(acquisition)
        failed = shim.mox_allocation_failed()
        shim.mox_fail_allocation(-1)
        if not failed:
            break
        found = snapshot(acquisition)
        answer["nothing" if found == before else "all" if found == after else "half"] += 1
    print(json.dumps(answer))


if __name__ == "__main__":
    main()
