"""Appends things one by one to an acquisition, alone in its process, and says what that cost.

    python append_things.py KIND COUNT                       KIND is one of KINDS

The answer is one line of JSON: for the first and the second half of the appends, the median seconds
of an append and of the function that reads all things of that kind afresh, which every append ends
with; and whether all that was appended is there in the end.
"""

from __future__ import annotations

import json
import sys
import time
from collections.abc import Callable
from dataclasses import dataclass
from statistics import median
from typing import Any

import _moxPY
import numpy as np

FRAMES = 3
READ_AFTER = 10  # appends

Acquisition = Any


@dataclass(frozen=True)
class Kind:
    append: Callable[[Acquisition, int], Any]
    read: Callable[[Acquisition], Any]
    appended: Callable[[Any], list[float]]
    """The number of each append, as the result of `read` shows it."""


def event_of_one_set(acquisition: Acquisition, number: int) -> Any:
    return _moxPY.moxAppendEvent(
        acquisition, "Foot Strike", number, "Left", "Ann", "first contact of the heel", 1
    )


def event_of_its_own(acquisition: Acquisition, number: int) -> Any:
    return _moxPY.moxAppendEvent(acquisition, f"E{number}", number, "Left", "Ann", "heel", 1)


def point(acquisition: Acquisition, number: int) -> Any:
    values = np.full((FRAMES, 3), float(number))
    return _moxPY.moxAppendPoint(acquisition, "marker", f"P{number}", values)


def analog_channel(acquisition: Acquisition, number: int) -> Any:
    values = np.full((FRAMES, 1), float(number))
    return _moxPY.moxAppendAnalog(acquisition, f"A{number}", values)


def metadata_entry(acquisition: Acquisition, number: int) -> Any:
    info = {"format": "Real", "values": [float(number), 0.5]}
    return _moxPY.moxAppendMetaData(acquisition, "GROUP", f"E{number}", info)


def first_values(read: Any) -> list[float]:
    return [float(np.ravel(values)[0]) for values in read[0].values()]


def first_values_of_entries(read: Any) -> list[float]:
    entries = read["children"]["GROUP"]["children"]
    return [float(entry["info"]["values"][0]) for entry in entries.values()]


KINDS = {
    "events of one set": Kind(
        event_of_one_set,
        _moxPY.moxGetEvents,
        lambda read: [float(time) for times in read[0].values() for time in times],
    ),
    "events of many sets": Kind(event_of_its_own, _moxPY.moxGetEvents, first_values),
    "points": Kind(point, _moxPY.moxGetPoints, first_values),
    "analog channels": Kind(analog_channel, _moxPY.moxGetAnalogs, first_values),
    "metadata entries": Kind(metadata_entry, _moxPY.moxGetMetaData, first_values_of_entries),
}


def seconds_of(call: Callable[..., Any], *arguments: Any) -> float:
    start = time.perf_counter()
    result = call(*arguments)
    taken = time.perf_counter() - start
    del result
    return taken


def measure(kind: Kind, count: int) -> dict[str, Any]:
    acquisition = _moxPY.moxNewAcquisition(0, FRAMES)
    halves = []
    for half in (range(count // 2), range(count // 2, count)):
        appends, reads = [], []
        for number in half:
            appends.append(seconds_of(kind.append, acquisition, number))
            if number % READ_AFTER == 0:
                reads.append(seconds_of(kind.read, acquisition))
        halves.append({"append": median(appends), "read": median(reads)})
    complete = kind.appended(kind.read(acquisition)) == list(map(float, range(count)))
    return {"halves": halves, "complete": complete}


if __name__ == "__main__":
    name, count = sys.argv[1:]
    print(json.dumps(measure(KINDS[name], int(count))))
