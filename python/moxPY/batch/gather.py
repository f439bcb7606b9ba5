"""Which files are meant: files, folders and patterns."""

from __future__ import annotations

import errno
import glob
import os
from collections.abc import Iterable
from pathlib import Path
from typing import TypeAlias

PathLike: TypeAlias = str | os.PathLike[str]
Files: TypeAlias = PathLike | Iterable[PathLike]

#: What a folder's trials end in, in small letters.
SUFFIXES = (".c3d", ".trc", ".mot", ".sto")


def gather(files: Files, suffixes: tuple[str, ...] = SUFFIXES) -> list[Path]:
    """The files that are meant, each once, in the order of the names.

    Parameters
    ----------
    files : path or iterable of paths
        Files, which are taken as they are, whether they exist or not; folders, whose trials are
        taken with those of the folders below; patterns with ``*``, ``?``, ``[…]`` or ``**``.
    suffixes : tuple of str
        What the files that folders are searched for end in; capitals do not matter.

    Raises
    ------
    FileNotFoundError
        A pattern or a folder has no trial, or a text is empty.
    """
    named = [files] if isinstance(files, str | os.PathLike) else files
    found = [path for each in named for path in _meant(_path(each), suffixes)]
    return list(dict.fromkeys(found))


def _path(named: PathLike) -> Path:
    # A path of an empty text is the current folder, where a script's variable was only empty.
    if not os.fspath(named):
        raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), "")
    return Path(named)


def _meant(path: Path, suffixes: tuple[str, ...]) -> list[Path]:
    if path.is_dir():
        trials = [each for each in path.rglob("*") if each.suffix.lower() in suffixes]
        found = sorted(each for each in trials if each.is_file())
    elif glob.has_magic(os.fspath(path)) and not path.exists():
        # Path.glob takes no absolute patterns.
        matches = map(Path, glob.iglob(os.fspath(path), recursive=True))  # noqa: PTH207
        found = sorted(each for each in matches if each.is_file())
    else:
        return [path]
    if not found:
        raise FileNotFoundError(errno.ENOENT, "there is no trial", os.fspath(path))
    return found
