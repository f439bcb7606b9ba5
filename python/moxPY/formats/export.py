"""Exporting a trial: `Trial.export`."""

from __future__ import annotations

import os
from pathlib import Path
from typing import TYPE_CHECKING, Any

from .options import Options
from .prepared import prepared
from .registry import Format, formats
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def export(
    trial: Trial,
    path: str | os.PathLike[str],
    to: str | None = None,
    *,
    replace: bool = True,
    **options: Any,
) -> list[Path]:
    """Write the trial to a file of another format.

    Parameters
    ----------
    path : str or os.PathLike
        The file, such as ``"walk.trc"``; a format with several files puts the part's name behind
        the stem, as in ``walk_markers.csv``.
    to : str, optional
        The format, where the name does not tell it: one of `moxPY.formats.formats`.
    replace : bool
        Whether files that are there are replaced.
    **options
        The fields of `moxPY.formats.Options`.

    Returns
    -------
    list of Path
        The files that were made.

    Raises
    ------
    FileExistsError
        A file is there and `replace` is False.
    ValueError
        There is no such format, or the trial cannot be turned or scaled as asked.
    ImportError
        A package that the format needs is not installed; the text says how to.
    """
    place = Path(path)
    format = _format_of(place, to)
    has_suffix = place.name.lower().endswith(format.suffix)
    stem = place.name[: -len(format.suffix)] if has_suffix else place.name
    return write_as(format, trial, place.parent, stem, Options(**options), replace=replace)


def write_as(
    format: Format,
    trial: Trial,
    folder: Path,
    stem: str,
    options: Options,
    *,
    replace: bool = False,
) -> list[Path]:
    """Write a trial to the files ``STEM.ext``, ``STEM_part.ext`` of a folder."""
    with Target(folder, stem, format.suffix, replace=replace) as target:
        format.function(prepared(trial, options), target, options)
    return target.paths


def _format_of(path: Path, name: str | None) -> Format:
    known = formats()
    if name is not None:
        if name not in known:
            raise ValueError(f"there is no format '{name}'; there are {', '.join(known)}")
        return known[name]
    for format in known.values():
        if path.name.lower().endswith(format.suffix):
            return format
    raise ValueError(f"'{path}': no format has files that end so; there are {', '.join(known)}")
