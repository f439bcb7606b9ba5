"""``moxpy view``: a trial in motion."""

from __future__ import annotations

import sys
from pathlib import Path

import click

from ..player import Player
from ..trial import read
from .each_file import tell
from .lines import write_line
from .outputs import place


@click.command("view")
@click.argument("file", metavar="FILE", type=click.Path(path_type=Path))
@click.option(
    "-o",
    "--output",
    "output",
    metavar="PAGE",
    type=click.Path(dir_okay=False, path_type=Path),
    help="Write the page to this file, such as walk.html, and open no browser.",
)
@click.option("--force", is_flag=True, help="Replace a page that is there.")
@click.option(
    "--up",
    type=click.Choice(["x", "y", "z", "-x", "-y", "-z"]),
    help="The axis of the laboratory that points upwards; by default the trial tells it.",
)
def command(file: Path, output: Path | None, force: bool, up: str | None) -> int:
    """Show a trial in motion, in the browser.

    Markers, forces on the person, events and any channel as a curve are shown by one page, which
    needs neither a network nor anything else. With -o it is written to a file that can be mailed
    and opened anywhere.

    \b
    Examples:
      moxpy view walk.c3d
      moxpy view walk.c3d -o walk.html
    """
    try:
        with read(file, odd="ignore") as trial:
            player = trial.view(up=up)
        if output is None:
            return _opened(player)
        write_line(str(player.write(place(output.parent, output.name, replace=force))))
    except Exception as error:  # whatever is wrong with it, one line says so
        tell(file, error)
        return 1
    return 0


def _opened(player: Player) -> int:
    path, is_shown = player.open()
    if is_shown:
        write_line(str(path))
        return 0
    write_line(f"moxpy: there is no browser to show '{path}' in", sys.stderr)
    return 1
