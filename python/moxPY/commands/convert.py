"""``moxpy convert``: files of other formats."""

from __future__ import annotations

import sys
from functools import partial
from pathlib import Path
from typing import Any

import click

from ..formats import Options, formats
from ..formats.options import PARTS
from .conversion import Task, convert, elsewhere
from .each_file import EachFile, meant
from .lines import write_line
from .outputs import output_options, require_distinct
from .parameters import files_argument, jobs_option, parsed
from .parse import units, words
from .workers import workers

_FORMATS = formats()


class Convert(click.Command):
    """A command whose help lists the formats that there are, those of other packages too."""

    def format_epilog(self, ctx: click.Context, formatter: click.HelpFormatter) -> None:
        with formatter.section("Formats"):
            formatter.write_dl([(each.name, each.summary) for each in _FORMATS.values()])


@click.command("convert", cls=Convert)
@files_argument()
@output_options()
@click.option(
    "--to",
    "name",
    required=True,
    type=click.Choice(list(_FORMATS)),
    metavar="FORMAT",
    help="The format; they are listed below.",
)
@click.option(
    "--up",
    type=click.Choice(["x", "y", "z"]),
    help="Turn the laboratory so that this axis points upwards.",
)
@click.option(
    "--units",
    metavar="m,N,Nm",
    callback=parsed(units),
    help="Other units of lengths, forces and moments.",
)
@click.option(
    "--threshold",
    type=click.FloatRange(min=0.0),
    default=Options().threshold,
    show_default=True,
    metavar="FORCE",
    help="The least force on a platform that counts as contact, in the unit that is written.",
)
@click.option(
    "--side",
    type=click.Choice(["measured", "person", "plate"]),
    default="measured",
    show_default=True,
    help="Whom the forces of platforms act on: as the channels have it, the person, the platform.",
)
@click.option("--feet", is_flag=True, help="Forces by the foot that is nearer, not by platform.")
@click.option("--long", is_flag=True, help="Tables with a row a number, not a row a frame.")
@click.option(
    "--parts",
    metavar="PART,...",
    callback=parsed(words),
    help=f"The parts that are written, by default all: {', '.join(PARTS)}.",
)
@jobs_option()
@click.option(
    "--dask",
    "scheduler",
    metavar="ADDRESS",
    help="Let the workers of a Dask scheduler do it, such as tcp://10.0.0.1:8786; they need the "
    "same files at the same places.",
)
def command(
    files: tuple[str, ...],
    folder: Path,
    force: bool,
    name: str,
    jobs: int | None,
    scheduler: str | None,
    **asked: Any,
) -> int:
    """Convert files to another format.

    From each FILE, STEM.c3d say, the files STEM.EXT or STEM_PART.EXT are made in DIR, and their
    names printed. Without options nothing is turned or scaled; what is asked for is stated in the
    file, where its format has a place for it.

    \b
    Examples:
      moxpy convert walk.c3d -o tables --to csv
      moxpy convert session/ -o tables --to parquet --parts markers,events
      moxpy convert session/ -o opensim --to trc --up y --units m,N,Nm
      moxpy convert session/ -o opensim --to mot --up y --side person --feet
    """
    try:
        options = Options(**asked)
    except ValueError as error:
        raise click.UsageError(str(error)) from None
    found, failed = meant(files)
    require_distinct(found)
    task = Task(name, folder, options, force)
    if scheduler is not None:
        found = [file.absolute() for file in found]
        task = elsewhere(task, found)
    with workers(scheduler) as executor:
        trials = EachFile(
            partial(convert, task=task),
            found,
            jobs=jobs,
            computes=True,
            executor=executor,
            progress=not sys.stdout.isatty(),
        )
        for _, paths in trials:
            for path in paths:
                write_line(str(path))
    return 1 if failed or trials.failed else 0
