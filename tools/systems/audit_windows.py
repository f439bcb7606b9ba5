"""What a wheel for Windows asks of a system, by the libraries that its own are linked with."""

from __future__ import annotations

import zipfile
from collections.abc import Iterable, Mapping
from pathlib import Path, PurePosixPath

import pefile

from systems.audit import NotPortable

# The C runtime that every Windows from 10 on has.
RUNTIME = "api-ms-win-crt-"
SYSTEM = {"kernel32.dll", "ole32.dll", "shell32.dll"}


def imports_of(content: bytes) -> list[str]:
    """The libraries that one is linked with."""
    image = pefile.PE(data=content, fast_load=True)
    image.parse_data_directories(pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_IMPORT"])
    return [entry.dll.decode() for entry in image.DIRECTORY_ENTRY_IMPORT]


def libraries_in(wheel: Path) -> dict[str, list[str]]:
    """Each by its name with those that it is linked with."""
    with zipfile.ZipFile(wheel) as archive:
        return {
            PurePosixPath(name).name: imports_of(archive.read(name))
            for name in archive.namelist()
            if name.endswith((".dll", ".pyd"))
        }


def foreign(libraries: Mapping[str, Iterable[str]], python: str) -> list[str]:
    """What neither the wheel has nor every Windows with that python3XX.dll, as "user: library"."""
    there = {name.lower() for name in (*libraries, python)} | SYSTEM
    return sorted(
        f"{user}: {name}"
        for user, names in libraries.items()
        for name in names
        if name.lower() not in there and not name.lower().startswith(RUNTIME)
    )


def require_windows(wheel: Path, python: str) -> None:
    """Throw NotPortable where the wheel wants what a Windows may not have."""
    libraries = libraries_in(wheel)
    wanting = foreign(libraries, python)
    if wanting or not libraries:
        raise NotPortable(f"{wheel.name} needs more than Windows has: {', '.join(wanting)}")
