"""Labels: what is one, and which ones are nearest to one that there is not."""

from __future__ import annotations

import difflib
from collections.abc import Iterable


def require_text(text: object, what: str) -> None:
    """Refuse what no file can hold as the label, unit or description of a channel.

    Raises
    ------
    TypeError
        It is no text.
    ValueError
        It has a NUL character.
    """
    if not isinstance(text, str):
        raise TypeError(f"a {what} is a str, not {type(text).__name__}")
    if "\0" in text:
        raise ValueError(f"a {what} has no NUL character: {text!r}")


def nearest(label: object, labels: Iterable[str]) -> str:
    """What an error says behind a label that there is not: "; nearest: …", or nothing. Upper and
    lower case count as one."""
    spellings: dict[str, list[str]] = {}
    for known in labels:
        spellings.setdefault(known.casefold(), []).append(known)
    matches = difflib.get_close_matches(str(label).casefold(), spellings, n=3)
    found = [known for match in matches for known in spellings[match]]
    return f"; nearest: {', '.join(found[:3])}" if found else ""
