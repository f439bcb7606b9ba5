"""``moxpy report``: what is put into the records of a patient."""

from __future__ import annotations

import sys
from collections.abc import Sequence
from contextlib import ExitStack
from functools import partial
from pathlib import Path

import click

from ..report import SECTIONS, report
from ..trial import Trial, read
from ..trial.extras import require
from .each_file import EachFile, meant, tell
from .lines import write_line
from .outputs import output_options, place, require_distinct
from .parameters import files_argument, jobs_option

_SECTION = click.Choice(SECTIONS)


@click.command("report")
@files_argument()
@output_options()
@click.option(
    "--to",
    "suffix",
    type=click.Choice(["html", "pdf"]),
    default="html",
    show_default=True,
    help="HTML, with the trial in motion, or PDF.",
)
@click.option(
    "--together",
    is_flag=True,
    help="Make one report of all files, which are trials of one subject; it is named after the "
    "first.",
)
@click.option(
    "--without",
    multiple=True,
    type=_SECTION,
    metavar="SECTION",
    help=f"Leave out a section: {', '.join(SECTIONS)}.",
)
@jobs_option()
def command(
    files: tuple[str, ...],
    folder: Path,
    force: bool,
    suffix: str,
    together: bool,
    without: tuple[str, ...],
    jobs: int | None,
) -> int:
    """Make reports of trials, with pictures and the trial in motion.

    A report says who was recorded when and with what, what checks find, gaps, events and
    spatio-temporal parameters, and shows curves over the gait cycle, ground reaction and EMG.
    From STEM.c3d the file STEM.html (or STEM.pdf) is made in DIR, and its name printed. It needs no
    other file and no network. Whoever gets a report with the player has the samples of the trial.

    \b
    Examples:
      moxpy report walk.c3d -o reports
      moxpy report session/ -o reports --to pdf --jobs 4
      moxpy report walk1.c3d walk2.c3d walk3.c3d -o reports --together
    """
    try:
        require("matplotlib")
    except ImportError as error:
        raise click.ClickException(str(error)) from None
    found, failed = meant(files)
    if together:
        return _one(found, folder, f".{suffix}", force, without) or int(failed > 0)
    require_distinct(found)
    work = partial(_made, folder=folder, suffix=f".{suffix}", replace=force, without=without)
    # Pictures are drawn one at a time in a process, so that threads would not help.
    several = len(found) > 1 and jobs != 1
    trials = EachFile(
        work,
        found,
        jobs=jobs if several else 1,
        executor="processes" if several else None,
        progress=not sys.stdout.isatty(),
    )
    for _, path in trials:
        write_line(str(path))
    return 1 if failed or trials.failed else 0


def _made(trial: Trial, folder: Path, suffix: str, replace: bool, without: Sequence[str]) -> Path:
    assert trial.path is not None
    path = place(folder, trial.path.stem + suffix, replace=replace)
    return report(trial, path, without=without)


def _one(
    files: Sequence[Path], folder: Path, suffix: str, replace: bool, without: Sequence[str]
) -> int:
    """One report of all files, of which each has to be there."""
    with ExitStack() as opened:
        trials = []
        for file in files:
            try:
                trials.append(opened.enter_context(read(file, odd="ignore")))
            except (OSError, ValueError) as error:
                tell(file, error)
        if not trials or len(trials) < len(files):
            return 1
        try:
            path = place(folder, files[0].stem + suffix, replace=replace)
            write_line(str(report(trials[0], path, others=trials[1:], without=without)))
        except Exception as error:  # whatever is wrong with it, one line says so
            tell(files[0], error)
            return 1
    return 0
