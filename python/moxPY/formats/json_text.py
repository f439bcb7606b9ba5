"""JSON as people read it: records over lines, numbers in one."""

from __future__ import annotations

import json
import math
from collections.abc import Mapping
from typing import Any

import numpy as np

from .text import plain

_INDENT = "  "


def json_text(value: Any) -> str:
    """The JSON of dictionaries, lists, arrays, texts, numbers, truth values and None.

    NaN and infinity are null; texts are what UTF-8 can hold.
    """
    return _laid_out(_ready(value), "")


def _ready(value: Any) -> Any:
    """What JSON can hold of a value."""
    if isinstance(value, Mapping):
        return {plain(str(key)): _ready(each) for key, each in value.items()}
    if isinstance(value, np.ndarray):
        return _ready(value.tolist())
    if isinstance(value, list | tuple):
        return [_ready(each) for each in value]
    if isinstance(value, str):
        return plain(value)
    if isinstance(value, float) and not math.isfinite(value):
        return None
    return value


def _laid_out(value: Any, indent: str) -> str:
    inner = indent + _INDENT
    if isinstance(value, dict) and value:
        lines = [f"{_brief(key)}: {_laid_out(each, inner)}" for key, each in value.items()]
        return _block("{", lines, "}", indent)
    if isinstance(value, list) and any(isinstance(each, dict) for each in value):
        return _block("[", [_laid_out(each, inner) for each in value], "]", indent)
    return _brief(value)


def _block(opening: str, lines: list[str], closing: str, indent: str) -> str:
    inner = f"\n{indent}{_INDENT}"
    return f"{opening}{inner}{f',{inner}'.join(lines)}\n{indent}{closing}"


def _brief(value: Any) -> str:
    return json.dumps(value, ensure_ascii=False, allow_nan=False)
