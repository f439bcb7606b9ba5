"""Texts of a trial in files of other formats."""

from __future__ import annotations

import re
from collections import Counter
from collections.abc import Iterable
from itertools import count

# Python's stand-ins for bytes that are no UTF-8, and halves of pairs, which are no text at all.
_BYTES = re.compile("[\udc80-\udcff]")
_HALVES = re.compile("[\ud800-\udfff]")
_BREAKS = re.compile(
    r"[\s\x00-\x1f\x7f]*[\t\r\n\v\f\x00-\x1f\x7f\x85\u2028\u2029][\s\x00-\x1f\x7f]*"
)


def plain(text: str) -> str:
    """A text that UTF-8 can hold: single bytes, as older files have them, are Latin-1."""
    text = _BYTES.sub(lambda byte: chr(ord(byte[0]) - 0xDC00), text)
    return _HALVES.sub("\ufffd", text)


def one_line(text: str) -> str:
    """The text without tabs, line breaks and other control characters, each run of which becomes a
    blank."""
    return _BREAKS.sub(" ", plain(text)).strip()


def distinct(names: Iterable[str]) -> list[str]:
    """The names, one that is there again with a number behind it: ``name_2``."""
    listed = list(names)
    taken = Counter(listed)
    met: set[str] = set()
    for position, name in enumerate(listed):
        if name in met:
            numbered = (f"{name}_{number}" for number in count(2))
            listed[position] = next(each for each in numbered if each not in taken)
            taken[listed[position]] += 1
        met.add(listed[position])
    return listed
