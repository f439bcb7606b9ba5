"""Texts of files and their names as pictures and pages can show them."""

from __future__ import annotations

import re

# What neither a font nor XML has: control characters, but for those that part words and lines.
_CONTROL = re.compile(r"[\x00-\x08\x0b\x0c\x0e-\x1f\x7f\ufffe\uffff]")


def readable(text: str) -> str:
    """The text with question marks for bytes that are no letters and for control characters."""
    return _CONTROL.sub("?", text.encode("utf-8", "replace").decode("utf-8"))
