"""Make the site of the documents.

Pictures of plots and the player are made of the example trial while it is made. Any warning is an
error, and so is a link that leads nowhere or to another host's script, style, font or picture.

Usage: make_site.py FOLDER
"""

from __future__ import annotations

import os
import sys
from collections.abc import Sequence
from pathlib import Path

import make_pictures
import moxPY
from pages.built import faults
from pages.contents import PROJECT
from pages.staging import stage
from sphinx.cmd.build import main as sphinx


def make(folder: Path) -> int:
    """Make the site below a folder; the number of faults."""
    source, html = folder / "source", folder / "html"
    os.chdir(PROJECT)  # which the examples begin from
    stage(source)
    for document in make_pictures.DOCUMENTS:
        make_pictures.make(document, source)
    options = ["-W", "--keep-going", "-q", "-E", "-c", str(PROJECT / "docs")]
    options += ["-d", str(folder / "doctrees")]
    if sphinx(["-b", "html", *options, str(source), str(html)]) != 0:
        return 1
    with moxPY.read(moxPY.example()) as trial:
        trial.view(html / "_static" / "walk.html")
    found = faults(html)
    for fault in found:
        print(fault, file=sys.stderr)
    return len(found)


def main(arguments: Sequence[str]) -> int:
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    folder = Path(arguments[0]).resolve()
    if make(folder) > 0:
        return 1
    print(
        f"{folder / 'html' / 'index.html'}: {sum(1 for _ in folder.glob('html/**/*.html'))} pages"
    )
    return 0


if __name__ == "__main__":
    raise SystemExit(main(sys.argv[1:]))
