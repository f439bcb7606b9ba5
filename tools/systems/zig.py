"""Zig, the compiler for other systems: Clang, libc++ and the system libraries of many targets.

Usage: python -m systems.zig
Unpacks it and makes the programs that the toolchain files name: cc, c++, ar, ranlib, rc, dlltool.
"""

from __future__ import annotations

import os
import shlex
from pathlib import Path

from systems.steps import SYSTEMS, made_once
from systems.wheels import recipe_of, unpack

# Each of our libraries has a C++ library of its own inside, so that a type has an address in each.
# Where exceptions were compared by them, as is usual on Linux, std::bad_alloc would arrive in
# another library as something unknown.
TYPES = Path("ziglang", "lib", "libcxx", "include", "typeinfo")
BY_ADDRESS = "#          define _LIBCPP_TYPEINFO_COMPARISON_IMPLEMENTATION 1\n"
BY_NAME = BY_ADDRESS.replace(" 1\n", " 2\n")
PROGRAMS = ("cc", "c++", "ar", "ranlib", "rc", "dlltool")


def script(zig: Path, program: str, cache: Path) -> str:
    """A program of one word, as CMake wants it."""
    return (
        "#!/bin/sh\n"
        f"export ZIG_GLOBAL_CACHE_DIR={shlex.quote(str(cache))}\n"
        f'exec {shlex.quote(str(zig))} {program} "$@"\n'
    )


def compare_types_by_name(header: Path) -> None:
    """Change what the C++ library is compiled with, and what is compiled with it."""
    text = header.read_text(encoding="utf-8")
    if text.count(BY_ADDRESS) != 1:
        raise ValueError(f"{header} is not as expected: how are types compared?")
    header.write_text(text.replace(BY_ADDRESS, BY_NAME), encoding="utf-8")


def zig(systems: Path = SYSTEMS) -> Path:
    """The folder of the programs, made if it is not there."""
    folder = systems / "zig"

    def make(unfinished: Path) -> None:
        unpack("zig.txt", unfinished / "package")
        compare_types_by_name(unfinished / "package" / TYPES)
        bin_folder = unfinished / "bin"
        bin_folder.mkdir()
        for program in PROGRAMS:
            path = bin_folder / program
            path.write_text(
                script(folder / "package" / "ziglang" / "zig", program, systems / "zig-cache"),
                encoding="utf-8",
            )
            path.chmod(0o755)

    recipe = f"{recipe_of('zig.txt')}{os.fspath(folder)} {' '.join(PROGRAMS)}{BY_NAME}"
    return made_once(folder, recipe, make) / "bin"


if __name__ == "__main__":
    print(zig())
