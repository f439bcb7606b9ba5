"""Where results lie: directly in a folder, named after the files that they were made from."""

from __future__ import annotations

import errno
import os
from collections.abc import Callable, Iterable
from pathlib import Path
from typing import Any

import click

from .parameters import PathType


def output_options() -> Callable[[Any], Any]:
    """``-o DIR`` and ``--force``."""

    def decorate(function: Any) -> Any:
        folder = click.option(
            "-o",
            "--output",
            "folder",
            required=True,
            metavar="DIR",
            type=PathType(file_okay=False, path_type=Path),
            help="The folder for what is made; it is made, too, where there is none.",
        )
        force = click.option("--force", is_flag=True, help="Replace files that are there.")
        return folder(force(function))

    return decorate


def require_distinct(files: Iterable[Path]) -> None:
    """Refuse two files whose results would have one name, before anything is written.

    Raises
    ------
    click.UsageError
        It names both.
    """
    met: dict[str, Path] = {}
    for file in files:
        other = met.setdefault(file.stem, file)
        if other != file:
            raise click.UsageError(
                f"'{other}' and '{file}' would both become {file.stem}; give them to calls with "
                "folders of their own"
            )


def place(folder: Path, name: str, *, replace: bool) -> Path:
    """The path of a result.

    Raises
    ------
    FileExistsError
        There is such a file, which is not to be replaced.
    """
    path = folder / name
    if not replace and os.path.lexists(path):
        raise FileExistsError(errno.EEXIST, os.strerror(errno.EEXIST), os.fspath(path))
    folder.mkdir(parents=True, exist_ok=True)
    return path
