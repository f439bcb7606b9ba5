"""``moxpy info``: what files hold."""

from __future__ import annotations

import json
import textwrap
from typing import Any

import click

from ..summary import summary
from .each_file import EachFile, meant
from .info_rows import rows
from .lines import write_rows
from .parameters import files_argument, jobs_option


@click.command("info")
@files_argument()
@click.option("--json", "as_json", is_flag=True, help="Print a JSON array, an object a file.")
@jobs_option()
def command(files: tuple[str, ...], as_json: bool, jobs: int | None) -> int:
    """Show what is in files.

    For each file: frames and rate, who was recorded and when, the channels of each kind with
    their units, events, force platforms, gaps (frames in which a point was not seen), and what
    was odd about the file. Long lists are cut; --json has everything.

    \b
    Examples:
      moxpy info walk.c3d
      moxpy info session/ | less
      moxpy info --json "session/*.c3d" > session.json
    """
    found, failed = meant(files)
    trials = EachFile(summary, found, jobs=jobs)
    if as_json:
        _print_json(trials)
    else:
        for file, facts in trials:
            write_rows(str(file), rows(facts))
    return 1 if failed or trials.failed else 0


def _print_json(trials: EachFile[dict[str, Any]]) -> None:
    """Print an array piece by piece, so that many files need no memory."""
    before = "["
    for file, facts in trials:
        # Only ASCII: it is JSON on every terminal, and with every name of a file.
        text = json.dumps({"file": str(file), **facts}, indent=2)
        print(f"{before}\n{textwrap.indent(text, '  ')}", end="")
        before = ","
    print("[]" if before == "[" else "\n]")
