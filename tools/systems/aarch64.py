"""CPython for 64-bit ARM, run by an emulator.

Usage: python -m systems.aarch64 [VERSION]
Prints a program that runs like a python of this machine.
"""

from __future__ import annotations

import shlex
import shutil
import sys
import tempfile
from pathlib import Path

from fetch_python import SUITES
from private_apt import FetchError, PrivateApt, machine_mirror, unpack

from systems.steps import SYSTEMS, made_once

# Debian's name of the processor.
ARCHITECTURE = "arm64"
# In this suite the program needs no library.
EMULATOR_SUITE, EMULATOR_PACKAGE, EMULATOR = "trixie", "qemu-user", "qemu-aarch64"
# A real processor. The emulator's own has instructions by which libraries round otherwise.
PROCESSOR = "cortex-a72"


def emulator(systems: Path) -> Path:
    """The program, made if it is not there."""

    def make(folder: Path) -> None:
        apt = PrivateApt(folder / "apt", EMULATOR_SUITE, machine_mirror())
        apt.update()
        with tempfile.TemporaryDirectory() as packages:
            unpack(apt.download([EMULATOR_PACKAGE], Path(packages)), folder)
        shutil.rmtree(folder / "apt")

    recipe = f"{EMULATOR_SUITE} {EMULATOR_PACKAGE}"
    return made_once(systems / "aarch64" / "emulator", recipe, make) / "usr" / "bin" / EMULATOR


def emulation(emulator: Path, root: Path) -> list[str]:
    """The words before a program, whose libraries lie below the root."""
    return [str(emulator), "-cpu", PROCESSOR, "-L", str(root)]


def script(emulator: Path, root: Path, program: Path) -> str:
    """Runs the program; Python takes it for its own path, so that tests can start another."""
    words = shlex.join([*emulation(emulator, root), "-0"])
    return f'#!/bin/sh\nexec {words} "$0" {shlex.quote(str(program))} "$@"\n'


def folder_of(version: str, systems: Path) -> Path:
    return systems / "aarch64" / f"python-{version}"


def aarch64_python(version: str, systems: Path = SYSTEMS) -> Path:
    """The program, made if it is not there."""
    if version not in SUITES:
        raise FetchError(f"No suite of Debian has CPython {version}.")
    runner = emulator(systems)
    folder = folder_of(version, systems)
    name = f"usr/bin/python{version}"

    def make(unfinished: Path) -> None:
        apt = PrivateApt(
            unfinished / "apt", SUITES[version], machine_mirror(), architecture=ARCHITECTURE
        )
        apt.update()
        # NumPy's wheels look for the C++ library of the system.
        unpack(apt.download_with_dependencies([f"python{version}", "libstdc++6"]), unfinished)
        shutil.rmtree(unfinished / "apt")
        # Programs name their loader by the older of the folder's two names, which newer packages no
        # longer lay their files below.
        if not (unfinished / "lib").exists():
            (unfinished / "lib").symlink_to("usr/lib")
        program = unfinished / "usr" / "bin" / "python"
        program.unlink(missing_ok=True)
        program.write_text(script(runner, folder, folder / name), encoding="utf-8")
        program.chmod(0o755)

    recipe = f"{SUITES[version]} {script(runner, folder, folder / name)}"
    return made_once(folder, recipe, make) / "usr" / "bin" / "python"


def emulated(program: Path, version: str, systems: Path = SYSTEMS) -> list[str | Path]:
    """The words that run any program for that processor, with the libraries that Python has."""
    aarch64_python(version, systems)
    return [*emulation(emulator(systems), folder_of(version, systems)), program]


if __name__ == "__main__":
    print(aarch64_python(sys.argv[1] if sys.argv[1:] else "3.13"))
