"""Wine: runs programs for Windows, in a Windows of its own below the folder for systems.

Needs the Debian packages wine and wine64.
"""

from __future__ import annotations

import os
import shutil
import subprocess
from collections.abc import Mapping, Sequence
from pathlib import Path

from systems.steps import SYSTEMS, made_once

# A program that looks for a Windows older than 10 finds none of its newer functions.
WINDOWS_VERSION = "win10"
QUIET = {
    "WINEDEBUG": "-all",
    # No offers to install what none of our programs needs, no entries in the user's menus.
    # Nor a debugger, which takes minutes to say what a program died of.
    "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe,winedbg.exe=",
}


class NoWine(Exception):
    """Wine is not installed."""


def wine_program() -> str:
    for name in ("wine64", "wine"):
        if found := shutil.which(name):
            return found
    raise NoWine("Wine is missing: apt-get install --no-install-recommends wine wine64")


def windows_path(path: Path) -> str:
    """A path of this system as programs under Wine name it: the whole tree is drive Z."""
    return "Z:" + os.fspath(path.resolve()).replace("/", "\\")


class Wine:
    """Runs programs for Windows."""

    def __init__(self, systems: Path = SYSTEMS) -> None:
        self.program_ = wine_program()
        folder = systems / "windows" / "wine"

        def make(unfinished: Path) -> None:
            environment = {**os.environ, **QUIET, "WINEPREFIX": str(unfinished / "prefix")}
            version = ["reg", "add", r"HKCU\Software\Wine", "/v", "Version", "/d"]
            # Each call ends when the server has written the registry: the folder is renamed then.
            for words in (["wineboot", "-i"], [*version, WINDOWS_VERSION, "/f"]):
                self.finished_(words, environment)
            subprocess.run(["wineserver", "-w"], env=environment, check=True)

        prefix = made_once(folder, WINDOWS_VERSION, make) / "prefix"
        self.environment_ = {**os.environ, **QUIET, "WINEPREFIX": str(prefix)}

    def command(self, words: Sequence[str | Path]) -> list[str]:
        return [self.program_, *map(str, words)]

    def environment(self, variables: Mapping[str, str]) -> dict[str, str]:
        return {**self.environment_, **variables}

    def run(self, words: Sequence[str | Path], variables: Mapping[str, str], cwd: Path) -> int:
        """Run a program with its output copied to ours; its exit code."""
        # Through a pipe: a program whose output is a file finds a handle that it cannot use.
        process = subprocess.Popen(
            self.command(words),
            env=self.environment(variables),
            cwd=cwd,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
        )
        assert process.stdout
        while piece := os.read(process.stdout.fileno(), 65536):
            os.write(1, piece)
        return process.wait()

    def finished_(self, words: Sequence[str], environment: Mapping[str, str]) -> None:
        subprocess.run(
            self.command(words),
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            check=True,
        )
