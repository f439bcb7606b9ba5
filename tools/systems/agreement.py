"""What two systems made of the same files, laid beside each other."""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any

from run_tests import Tally

Said = dict[str, dict[str, Any]]  # what was read and written, by file


def differences(one: Any, other: Any, place: str = "") -> Iterator[str]:
    """Where two systems say otherwise."""
    if isinstance(one, dict) and isinstance(other, dict):
        for key in {**one, **other}:
            yield from differences(one.get(key), other.get(key), f"{place}/{key}")
    elif one != other:
        yield place


def compare(expected: Said, said: Said, system: str) -> Tally:
    tally = Tally()
    for file in {**expected, **said}:
        places = list(differences(expected.get(file), said.get(file)))
        if places:
            print(f"{system}, {file}: {', '.join(places)}")
        tally += Tally(failed=1) if places else Tally(passed=1)
    return tally
