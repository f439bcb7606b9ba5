"""``moxpy diff``: what tells two files apart."""

from __future__ import annotations

from dataclasses import asdict
from itertools import groupby
from pathlib import Path

import click

from ..differences import FAMILIES, Difference, differences
from ..trial import Trial, read
from ..trial.summary import finite
from .each_file import tell
from .json_array import JsonArray
from .lines import write_rows
from .parameters import PathType, parsed
from .parse import tolerance

_FAMILY = click.Choice(FAMILIES)


@click.command("diff")
@click.argument("first", metavar="A", type=PathType())
@click.argument("second", metavar="B", type=PathType())
@click.option(
    "--tolerance",
    "-t",
    "tolerances",
    multiple=True,
    metavar="[FAMILY=]NUMBER",
    callback=parsed(tolerance),
    help="How far numbers may be apart, in their units; of one family, or of all others.",
)
@click.option(
    "--without",
    multiple=True,
    type=_FAMILY,
    metavar="FAMILY",
    help=f"Leave out a family: {', '.join(FAMILIES)}.",
)
@click.option(
    "--only", multiple=True, type=_FAMILY, metavar="FAMILY", help="Compare this family, no others."
)
@click.option("--json", "as_json", is_flag=True, help="Print a JSON array, an object a difference.")
def command(
    first: str,
    second: str,
    tolerances: tuple[tuple[str, float], ...],
    without: tuple[str, ...],
    only: tuple[str, ...],
    as_json: bool,
) -> int:
    """Compare two files.

    What differs is shown by family and channel, what A has before what B has. Channels are found by
    their labels, frames by their numbers; where a point was not seen in both, they agree.
    The exit code is 0 when there is no difference, 1 when there is one, 2 when a file failed.

    \b
    Examples:
      moxpy diff walk.c3d copy.c3d
      moxpy diff walk.c3d filled.c3d --only markers -t 0.1
      moxpy diff walk.c3d new.c3d -t 1e-6 -t markers=0.01 --without metadata
    """
    allowed = _allowed(dict(tolerances))
    trials = [_opened(Path(path)) for path in (first, second)]
    one, other = trials
    if one is None or other is None:
        return 2
    with one, other:
        found = differences(one, other, tolerance=allowed, without=without, only=only or None)
    if as_json:
        array = JsonArray()
        for each in found:
            array.add(finite(asdict(each)))
        array.end()
    else:
        for family, group in groupby(found, key=lambda each: each.family):
            write_rows(family, [_row(each) for each in group])
    return 1 if found else 0


def _allowed(tolerances: dict[str, float]) -> dict[str, float]:
    """The tolerance of each family; that without a name is everyone's who has none."""
    allowed = dict.fromkeys(FAMILIES, tolerances.pop("", 0.0)) | tolerances
    try:  # before any file is read
        with Trial.new() as nothing:
            differences(nothing, nothing, tolerance=allowed)
    except ValueError as error:
        raise click.UsageError(str(error)) from None
    return allowed


def _opened(file: Path) -> Trial | None:
    """The trial; None, and a line on standard error, where there is none."""
    try:
        return read(file, odd="ignore")
    except Exception as error:  # whatever is wrong with it, the other one is looked at
        tell(file, error)
        return None


def _row(each: Difference) -> tuple[str, str]:
    """What of it, and how it differs: a text about one side says that itself."""
    is_of_one = each.aspect.startswith("only")
    return each.channel or "", each.text if is_of_one else f"{each.aspect}: {each.text}"
