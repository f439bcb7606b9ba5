"""Acquisitions written to files, and files judged as they are written."""

from __future__ import annotations

from collections.abc import Collection
from pathlib import Path
from typing import Any

from support.c3d_structure import deviations
from support.ways import way_of, write_to


def write(
    acquisition: Any,
    path: Path,
    source: bytes | None = None,
    excused: Collection[str] = (),
    form: tuple[int, str] = (84, "real"),
    **options: Any,
) -> bytes:
    """The bytes of the file that the module writes, by function or, for a trial, by its method.

    They keep the rules of the format.

    `source` is the file that the acquisition was read from, whose own oddities may stay; `form`
    are the processor and the storage that the file should have, `options` those of `Trial.write`.
    """
    write_to(acquisition, path, **options)
    content = path.read_bytes()
    found = [text for text in deviations(content, source, *form) if text not in excused]
    assert found == [], found
    return content


def written_again(acquisition: Any, folder: Path, source: bytes | None = None) -> Any:
    """The acquisition in a file that this one is written to: `folder`/written.c3d.

    Both are held in the same way, as a handle or as a trial.
    """
    path = folder / "written.c3d"
    write(acquisition, path, source)
    return way_of(acquisition).read(path)


def source_in(folder: Path) -> bytes | None:
    """The file that an acquisition of the tests was read from; None: it is a new one."""
    path = folder / "trial.c3d"
    return path.read_bytes() if path.exists() else None


def files_in(folder: Path) -> list[str]:
    return sorted(path.name for path in folder.iterdir())
