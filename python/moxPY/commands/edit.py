"""``moxpy edit``: changed copies of files."""

from __future__ import annotations

import sys
from functools import partial
from pathlib import Path
from typing import Any

import click

from ..trial.extras import require
from .each_file import EachFile, meant
from .edits import Edits, Written, edit
from .lines import write_line
from .outputs import output_options, require_distinct
from .parameters import files_argument, jobs_option, parsed
from .parse import pair, rate, setting, stretch, units


@click.command("edit")
@files_argument()
@output_options()
@click.option(
    "--set",
    multiple=True,
    metavar="GROUP:ENTRY=VALUE",
    callback=parsed(setting),
    help="Give an entry of the metadata another value, or add one. It keeps its type; a list takes "
    "values with commas between them.",
)
@click.option(
    "--remove",
    multiple=True,
    metavar="LABEL",
    help="Remove the channels of a label or of a pattern, such as 'C_*'.",
)
@click.option(
    "--rename",
    multiple=True,
    metavar="OLD=NEW",
    callback=parsed(pair),
    help="Give a channel another label.",
)
@click.option(
    "--fill-gaps",
    metavar="FRAMES",
    type=click.IntRange(min=0),
    help="Fill gaps of markers of at most so many frames.",
)
@click.option(
    "--crop",
    metavar="START:STOP",
    callback=parsed(stretch),
    help="Keep a stretch: 1.0:3.5 in seconds on the trial's clock (frame 1 is 0.0), f100:f250 in "
    "frames, both included. An end that is left out is the trial's own.",
)
@click.option(
    "--resample",
    metavar="RATE",
    callback=parsed(rate),
    help="Other frames a second; analog channels keep their rate.",
)
@click.option(
    "--units",
    metavar="m,N,Nm",
    callback=parsed(units),
    help="Other units of lengths, forces and moments.",
)
@click.option(
    "--up",
    type=click.Choice(["x", "y", "z"]),
    help="Turn the laboratory so that this axis points upwards.",
)
@click.option(
    "--storage",
    type=click.Choice(["real", "integer", "source"]),
    help="How samples are written: real numbers (the default), 16-bit integers, as in FILE.",
)
@click.option(
    "--processor",
    type=click.Choice(["intel", "dec", "mips", "source"]),
    help="Whose numbers are written: Intel's (the default), DEC's, MIPS's, those of FILE.",
)
@jobs_option()
def command(
    files: tuple[str, ...],
    folder: Path,
    force: bool,
    jobs: int | None,
    storage: Any,
    processor: Any,
    **changes: Any,
) -> int:
    """Change copies of files.

    Each FILE is changed and written to DIR as a C3D file of its name; FILE stays as it is. What
    was made is printed.

    Changes are made in the order of the list below, whatever the order in which they are typed:
    entries of the metadata are set first, then channels removed, the others renamed, gaps filled,
    and the trial is cropped, resampled, converted to other units and turned. So frames of --crop
    are those of FILE, and --rename may use a label that --remove made free. --set, --remove and
    --rename may be given several times.

    \b
    Examples:
      moxpy edit walk.c3d -o done --rename LASI=LeftHip --crop 1.0:3.5
      moxpy edit session/ -o done --remove "C_*" --fill-gaps 10 --jobs 4
      moxpy edit walk.c3d -o done --set SUBJECTS:NAMES=Ann --up y --units m,N,Nm
    """
    edits = Edits(**changes)
    if edits == Edits() and not (storage or processor):
        raise click.UsageError("nothing is to be changed; say what, for example --crop 1.0:3.5")
    if len(dict(edits.rename)) < len(edits.rename):
        raise click.UsageError("a label has one new name: --rename gives two")
    if edits.fill_gaps is not None or edits.resample is not None:
        _require_scipy()
    found, failed = meant(files)
    require_distinct(found)
    work = partial(edit, edits=edits, written=Written(folder, force, storage, processor))
    trials = EachFile(work, found, jobs=jobs, computes=True, progress=not sys.stdout.isatty())
    for _, path in trials:
        write_line(str(path))
    return 1 if failed or trials.failed else 0


def _require_scipy() -> None:
    try:
        require("scipy")
    except ImportError as error:
        raise click.ClickException(str(error)) from None
