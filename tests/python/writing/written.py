"""Acquisitions written to files, and files judged as they are written."""

from __future__ import annotations

from collections.abc import Collection
from pathlib import Path
from typing import Any

import _moxPY
from support.c3d_structure import deviations


def write(
    acquisition: Any,
    path: Path,
    source: bytes | None = None,
    excused: Collection[str] = (),
    form: tuple[int, str] = (84, "real"),
) -> bytes:
    """The bytes of the file that the module writes; it keeps the rules of the format.

    `source` is the file that the acquisition was read from, whose own oddities may stay; `form`
    are the processor and the storage that the file should have.
    """
    assert _moxPY.moxWriteAcquisition(acquisition, str(path)) is None
    content = path.read_bytes()
    found = [text for text in deviations(content, source, *form) if text not in excused]
    assert found == [], found
    return content


def written_again(acquisition: Any, folder: Path, source: bytes | None = None) -> Any:
    """The acquisition in a file that this one is written to: `folder`/written.c3d."""
    path = folder / "written.c3d"
    write(acquisition, path, source)
    return _moxPY.moxReadAcquisition(str(path))


def source_in(folder: Path) -> bytes | None:
    """The file that an acquisition of the tests was read from; None: it is a new one."""
    path = folder / "trial.c3d"
    return path.read_bytes() if path.exists() else None


def files_in(folder: Path) -> list[str]:
    return sorted(path.name for path in folder.iterdir())
