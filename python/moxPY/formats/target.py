"""The files that an export makes: complete ones, or none."""

from __future__ import annotations

import errno
import os
from pathlib import Path
from tempfile import TemporaryDirectory
from types import TracebackType
from typing import Self


class Target:
    """The files of one export, ``STEM.ext`` and ``STEM_part.ext`` in a folder.

    They are written in a folder beside their places, and moved there when the block ends well;
    whatever fails, what was there before stays.

    Examples
    --------
    >>> with Target(Path("out"), "walk", ".csv") as target:
    ...     target.path("markers").write_text("time\\n")
    """

    def __init__(self, folder: Path, stem: str, suffix: str, *, replace: bool = False) -> None:
        self._folder = folder
        self._stem = stem
        self._suffix = suffix
        self._replace = replace
        self._beside: TemporaryDirectory[str] | None = None
        self._names: dict[str, str] = {}

    @property
    def paths(self) -> list[Path]:
        """The files of the export, in the order in which they were begun."""
        return [self._folder / name for name in self._names]

    def path(self, part: str = "", suffix: str | None = None) -> Path:
        """Where to write a part for now; the whole is the part without a name.

        Raises
        ------
        FileExistsError
            There is such a file, which is not to be replaced.
        """
        if self._beside is None:
            raise ValueError("a target takes files inside its with block")
        name = f"{self._stem}_{part}" if part else self._stem
        name += self._suffix if suffix is None else suffix
        place = self._folder / name
        if not self._replace and place.exists():
            text = "there is such a file, which is replaced on request only"
            raise FileExistsError(errno.EEXIST, text, os.fspath(place))
        self._names[name] = part
        return Path(self._beside.name) / name

    def __enter__(self) -> Self:
        self._folder.mkdir(parents=True, exist_ok=True)
        self._beside = TemporaryDirectory(prefix=".moxpy-", dir=self._folder)
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        assert self._beside is not None
        with self._beside as beside:
            if failure is None:
                for name in self._names:
                    os.replace(Path(beside) / name, self._folder / name)  # noqa: PTH105
        self._beside = None
