"""The page: its elements, its style and its script in one text."""

from __future__ import annotations

import json
import re
from functools import cache
from html import escape
from importlib.resources import files
from typing import Any

#: The modules of the script in the order in which they are put together: each behind those that it
#: imports from.
SCRIPTS = (
    "data.js",
    "theme.js",
    "clock.js",
    "camera.js",
    "lab.js",
    "floor.js",
    "names.js",
    "figure.js",
    "arrows.js",
    "stage.js",
    "pointer.js",
    "stretch.js",
    "timeline.js",
    "curves.js",
    "controls.js",
    "keyboard.js",
    "main.js",
)

_PLACEHOLDER = re.compile(r"\{\{(\w+)\}\}")
_IMPORT = re.compile(r"^import [^;]*;\n", re.MULTILINE)
_EXPORT = re.compile(r"^export (?=(?:async )?function|class|const|let)", re.MULTILINE)


def page(title: str, content: dict[str, Any]) -> str:
    """The page of a trial, whole."""
    parts = {
        "title": escape(title),
        "style": source("player.css"),
        "script": script(),
        "trial": as_json(content),
    }
    pieces = _PLACEHOLDER.split(source("page.html"))
    # Texts and names of parts take turns. They are joined at once: a trial may be long.
    return "".join(parts[piece] if index % 2 else piece for index, piece in enumerate(pieces))


def as_json(content: dict[str, Any]) -> str:
    """JSON that an HTML element can hold, labels in plain text."""
    text = json.dumps(content, ensure_ascii=False, allow_nan=False, separators=(",", ":"))
    # No text of a file ends the element. Bytes that were no letters stay as JSON spells them.
    text = text.replace("<", r"\u003c")
    return text.encode("utf-8", "backslashreplace").decode("utf-8")


@cache
def script() -> str:
    """The modules as one script: as names are not used twice, they need no imports."""
    modules = [_EXPORT.sub("", _IMPORT.sub("", source(name))) for name in SCRIPTS]
    return '(() => {\n"use strict";\n' + "".join(modules) + "})();\n"


def source(name: str) -> str:
    """A source file of the page."""
    return files(__package__).joinpath(name).read_text("utf-8")
