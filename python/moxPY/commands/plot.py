"""``moxpy plot``: pictures of trials."""

from __future__ import annotations

import sys
from functools import partial
from pathlib import Path

import click

from ..trial.extras import require
from .each_file import EachFile, meant
from .lines import write_line
from .outputs import output_options, require_distinct
from .parameters import files_argument, jobs_option
from .pictures import PICTURES, Wanted, draw


@click.command("plot")
@files_argument()
@output_options()
@click.option(
    "--what",
    "names",
    multiple=True,
    type=click.Choice(list(PICTURES)),
    metavar="PICTURE",
    help=f"Which picture, or several: {', '.join(PICTURES)}.",
)
@click.option(
    "--channel",
    "channels",
    multiple=True,
    metavar="LABEL",
    help="The picture of a point or an analog channel over time.",
)
@click.option(
    "--format",
    "suffix",
    type=click.Choice(["png", "svg", "pdf"]),
    default="png",
    show_default=True,
    help="The format of the pictures.",
)
@jobs_option()
def command(
    files: tuple[str, ...],
    folder: Path,
    force: bool,
    names: tuple[str, ...],
    channels: tuple[str, ...],
    suffix: str,
    jobs: int | None,
) -> int:
    """Draw pictures of trials.

    From each FILE, STEM.c3d say, the pictures STEM_PICTURE.png and STEM_channel_LABEL.png are made
    in DIR, all of them or none, and their names printed. --what and --channel may be given several
    times. Left is red, right is blue.

    \b
    Examples:
      moxpy plot walk.c3d -o pictures --what angles --what forces
      moxpy plot session/ -o pictures --what gaps --format pdf
      moxpy plot walk.c3d -o pictures --channel LKneeAngles --channel Fz1
    """
    wanted = Wanted(tuple(dict.fromkeys(names)), tuple(dict.fromkeys(channels)))
    if not (names or channels):
        raise click.UsageError("nothing is to be drawn; say what, for example --what angles")
    if len({name for name, _ in wanted.parts}) < len(wanted.parts):
        raise click.UsageError("two channels would have one picture; give them to two calls")
    _require_packages(names)
    found, failed = meant(files)
    require_distinct(found)
    work = partial(draw, wanted=wanted, folder=folder, suffix=f".{suffix}", replace=force)
    trials = EachFile(work, found, jobs=jobs, computes=True, progress=not sys.stdout.isatty())
    for _, paths in trials:
        for path in paths:
            write_line(str(path))
    return 1 if failed or trials.failed else 0


def _require_packages(names: tuple[str, ...]) -> None:
    try:
        require("matplotlib")
        if "emg" in names:
            require("scipy")
    except ImportError as error:
        raise click.ClickException(str(error)) from None
