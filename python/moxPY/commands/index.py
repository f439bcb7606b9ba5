"""``moxpy index``: a table of many trials."""

from __future__ import annotations

from pathlib import Path

import click

from ..index import load, plan, row, save
from ..index.row import name_of
from .each_file import EachFile, meant
from .lines import write_line
from .parameters import PathType, files_argument, jobs_option


@click.command("index")
@files_argument()
@click.option(
    "-o",
    "--output",
    "output",
    required=True,
    metavar="TABLE",
    type=PathType(dir_okay=False, path_type=Path),
    help="The Parquet file of the table, such as trials.parquet.",
)
@click.option("--force", is_flag=True, help="Read all files again; replace a file of another kind.")
@jobs_option()
def command(files: tuple[str, ...], output: Path, force: bool, jobs: int | None) -> int:
    """Make a table of many trials, or update it.

    The table has a row a trial: file, subject, date, rates, counts of channels, labels, events,
    gaps, what checks find, size, time and hash of the file. pandas, polars, DuckDB and others read
    it.

    A table that is there is updated: files that are as they were are not read again, even if they
    were moved, and those that are gone, or are not named now, lose their rows. Where a folder or a
    pattern has no trial at all, nothing is updated.

    \b
    Examples:
      moxpy index data/ -o trials.parquet
      moxpy index "data/*/gait*.c3d" -o gait.parquet --jobs 8
    """
    try:
        former = [] if force else load(output).rows
    except ImportError as error:
        raise click.ClickException(str(error)) from None
    except ValueError:
        raise click.UsageError(
            f"'{output}' is there, and no index of trials; --force replaces it"
        ) from None
    found, failed = meant(files)
    if failed:  # a folder that is not mounted must not empty the table
        return 1
    planned = plan(found, former)
    trials = EachFile(row, planned.to_read, jobs=jobs, computes=True, progress=True)
    rows = planned.kept | {file: {**made, "file": name_of(file)} for file, made in trials}
    save(output, [rows[file] for file in found if file in rows])
    read = len(rows) - len(planned.kept)
    write_line(
        f"{output}: {len(rows)} {'trial' if len(rows) == 1 else 'trials'}; {read} read, "
        f"{len(planned.kept)} as before, {len(planned.gone)} gone"
    )
    return 1 if trials.failed else 0
