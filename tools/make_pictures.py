"""Make the pictures of a document by running its examples.

A fenced block marked "pycon" that a picture follows draws it: its last line that assigns axes of
matplotlib, or a tuple of them, does. Blocks run in order, with one namespace.

Usage: make_pictures.py [DOCUMENT...]
"""

from __future__ import annotations

import contextlib
import doctest
import io
import os
import re
import sys
from collections.abc import Sequence
from pathlib import Path
from typing import Any

import numpy as np
from PIL import Image

PROJECT = Path(__file__).resolve().parent.parent
DOCUMENTS = [PROJECT / "docs" / "plots.md"]

_BLOCK = re.compile(
    r"^```pycon\n(?P<code>.*?)^```\n(?:\n!\[[^\]]*\]\((?P<picture>[^)]+)\))?",
    re.DOTALL | re.MULTILINE,
)
# Fine enough for two lines beside each other; few colours make it small all the same.
_DOTS_PER_INCH = 110
_COLOURS = 256


def make(document: Path, folder: Path) -> list[Path]:
    """Make the pictures of a document, below a folder as they lie below the document's."""
    names: dict[str, Any] = {}
    made = []
    for block in _BLOCK.finditer(document.read_text("utf-8")):
        drawn = None
        for example in doctest.DocTestParser().get_examples(block["code"]):
            with contextlib.redirect_stdout(io.StringIO()):
                exec(compile(example.source, document.name, "single"), names)
            drawn = _figure_of(example.source, names) or drawn
        if block["picture"]:
            if drawn is None:
                raise ValueError(f"nothing is drawn for {block['picture']}")
            place = folder / block["picture"]
            place.parent.mkdir(parents=True, exist_ok=True)
            _save(drawn, place)
            made.append(place)
    return made


def _figure_of(source: str, names: dict[str, Any]) -> Any:
    """The first figure that a line has made, which may draw several."""
    targets, equals, _ = source.partition(" = ")
    if not equals:
        return None
    value = names[targets.split(",")[0].strip()]
    first = np.atleast_1d(np.asarray(value, dtype=object)).flat[0]
    return getattr(first, "figure", None)


def _save(figure: Any, place: Path) -> None:
    """Save a figure as a small PNG, of which only what it shows differs from run to run."""
    drawn = io.BytesIO()
    figure.savefig(drawn, format="png", dpi=_DOTS_PER_INCH, metadata={"Software": None})
    drawn.seek(0)
    picture = Image.open(drawn).convert("RGB").quantize(_COLOURS, dither=Image.Dither.NONE)
    picture.save(place, optimize=True)


def main(arguments: Sequence[str]) -> int:
    os.chdir(PROJECT)  # which the examples begin from
    for document in map(Path, arguments or map(str, DOCUMENTS)):
        for place in make(document, document.resolve().parent):
            print(f"{place}: {place.stat().st_size / 1000:.0f} kB")
    return 0


if __name__ == "__main__":
    raise SystemExit(main(sys.argv[1:]))
