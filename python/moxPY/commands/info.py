"""``moxpy info``: what files hold."""

from __future__ import annotations

import click

from ..trial.summary import summary
from .each_file import EachFile, meant
from .info_rows import rows
from .json_array import JsonArray
from .lines import write_rows
from .parameters import files_argument, jobs_option


@click.command("info")
@files_argument()
@click.option("--json", "as_json", is_flag=True, help="Print a JSON array, an object a file.")
@click.option(
    "--quick",
    is_flag=True,
    help="Read no samples: many files are done sooner. Gaps are not shown, nor what is odd about "
    "samples alone.",
)
@jobs_option()
def command(files: tuple[str, ...], as_json: bool, quick: bool, jobs: int | None) -> int:
    """Show what is in files.

    For each file: frames and rate, who was recorded and when, the channels of each kind with
    their units, events, force platforms, gaps (frames in which a point was not seen), and what
    was odd about the file. Long lists are cut; --json has everything.

    \b
    Examples:
      moxpy info walk.c3d
      moxpy info session/ | less
      moxpy info --quick data/ | grep subject
      moxpy info --json "session/*.c3d" > session.json
    """
    found, failed = meant(files)
    trials = EachFile(summary, found, jobs=jobs, only=() if quick else None)
    if as_json:
        array = JsonArray()
        for file, facts in trials:
            array.add({"file": str(file), **facts})
        array.end()
    else:
        for file, facts in trials:
            write_rows(str(file), rows(facts))
    return 1 if failed or trials.failed else 0
