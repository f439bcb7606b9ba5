"""The files that an export makes: complete ones, or none."""

from __future__ import annotations

import errno
import os
import shutil
from contextlib import suppress
from pathlib import Path
from tempfile import TemporaryDirectory
from types import TracebackType
from typing import Self

# Folders in the one beside: of the files that are made, and of those that they replace.
_NEW, _FORMER = "new", "former"


class Target:
    """The files of one export, ``STEM.ext`` and ``STEM_part.ext`` in a folder.

    They are written in a folder beside their places, and moved there when the block ends well;
    whatever fails, what was there before stays, and nothing else.

    Examples
    --------
    >>> with Target(Path(path).parent, "walk", ".csv") as target:
    ...     _ = target.path("markers").write_text("time\\n")
    >>> [each.name for each in target.paths]
    ['walk_markers.csv']
    """

    def __init__(self, folder: Path, stem: str, suffix: str, *, replace: bool = False) -> None:
        self._folder = folder
        self._stem = stem
        self._suffix = suffix
        self._replace = replace
        self._beside: TemporaryDirectory[str] | None = None
        self._new_folders: list[Path] = []
        self._names: list[str] = []

    @property
    def stem(self) -> str:
        """The name of the export, which all files begin with."""
        return self._stem

    @property
    def paths(self) -> list[Path]:
        """The files of the export, in the order in which they were begun."""
        return [self._folder / name for name in self._names]

    def path(self, part: str = "") -> Path:
        """Where to write a part for now; the whole is the part without a name.

        Raises
        ------
        FileExistsError
            There is such a file, which is not to be replaced.
        IsADirectoryError
            There is a folder of that name.
        """
        if self._beside is None:
            raise ValueError("a target takes files inside its with block")
        name = (f"{self._stem}_{part}" if part else self._stem) + self._suffix
        place = self._folder / name
        if place.is_dir():
            raise IsADirectoryError(errno.EISDIR, os.strerror(errno.EISDIR), os.fspath(place))
        if not self._replace and os.path.lexists(place):
            raise _refused(place)
        if name not in self._names:
            self._names.append(name)
        return Path(self._beside.name) / _NEW / name

    def __enter__(self) -> Self:
        missing = [each for each in (self._folder, *self._folder.parents) if not each.exists()]
        self._folder.mkdir(parents=True, exist_ok=True)
        self._new_folders = missing
        self._beside = TemporaryDirectory(prefix=".moxpy-", dir=self._folder)
        for name in (_NEW, _FORMER):
            (Path(self._beside.name) / name).mkdir()
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        assert self._beside is not None
        beside, self._beside = self._beside, None
        done = False
        try:
            with beside:
                if failure is None:
                    self._move(Path(beside.name) / _NEW, Path(beside.name) / _FORMER)
                    done = True
        finally:
            if not done:
                self._remove_new_folders()

    def _move(self, new: Path, former: Path) -> None:
        """Move all files to their places, or, where one cannot be, none."""
        begun: list[str] = []
        try:
            for name in self._names:
                place = self._folder / name
                if self._replace:
                    _keep(place, former / name)
                    begun.append(name)
                    os.replace(new / name, place)  # noqa: PTH105
                else:
                    begun.append(name)
                    _move_where_nothing_is(new / name, place)
        except BaseException:
            for name in begun:
                _restore(new / name, former / name, self._folder / name)
            raise

    def _remove_new_folders(self) -> None:
        with suppress(OSError):  # somebody else put something there
            for folder in self._new_folders:
                folder.rmdir()


def _refused(place: Path) -> FileExistsError:
    text = "there is such a file, which is replaced on request only"
    return FileExistsError(errno.EEXIST, text, os.fspath(place))


def _keep(place: Path, former: Path) -> None:
    """A second name for what is there, or a copy, so that it can come back."""
    if not os.path.lexists(place):
        return
    try:
        os.link(place, former, follow_symlinks=False)
    except OSError:
        shutil.copy2(place, former, follow_symlinks=False)


def _move_where_nothing_is(new: Path, place: Path) -> None:
    # Linking refuses what another process made meanwhile, where moving would replace it.
    try:
        os.link(new, place)
    except FileExistsError:
        raise _refused(place) from None
    except OSError:  # a file system without links
        if os.path.lexists(place):
            raise _refused(place) from None
        os.replace(new, place)  # noqa: PTH105
    else:
        new.unlink()


def _restore(new: Path, former: Path, place: Path) -> None:
    """Put back what was there before, where the new file has come to its place."""
    if new.exists() and not (place.exists() and new.samefile(place)):
        return
    if os.path.lexists(former):
        os.replace(former, place)  # noqa: PTH105
    else:
        place.unlink(missing_ok=True)
