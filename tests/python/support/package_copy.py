"""A copy of the built package, with the plugins that a test wants, in processes of its own."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
from pathlib import Path

import _mox_probe
import _moxPY

from .log_file import lines_of

PACKAGE = Path(_moxPY.__file__).parent
TEST_PLUGINS = Path(_mox_probe.__file__).parent / "plugins"
VERSION_LINE = "[info] [tidepool] Orvane bindings 2025.3.2 started"


def library(folder: Path, name: str) -> Path:
    """The plugin file of a name, whatever the platform calls its libraries."""
    (found,) = folder.glob(f"{name}.*")
    return found


class PackageCopy:
    """`_moxPY` in `folder`, without plugins."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        self.module_folder = folder / "site" / "_moxPY"
        self.plugins = self.module_folder / "plugins"
        self.state = folder / "state"
        shutil.copytree(
            PACKAGE, self.module_folder, ignore=shutil.ignore_patterns("plugins", "__pycache__")
        )
        self.plugins.mkdir()

    def add_own_plugins(self) -> None:
        """The plugins that the package comes with."""
        shutil.copytree(PACKAGE / "plugins", self.plugins, dirs_exist_ok=True)

    def add_test_plugin(self, name: str) -> Path:
        return Path(shutil.copy(library(TEST_PLUGINS, f"{name}_plugin"), self.plugins))

    def run(
        self, code: str, *arguments: str | Path, **environment: str | None
    ) -> subprocess.CompletedProcess[str]:
        """Runs Python code that can import the copy; None removes an environment variable."""
        variables = os.environ | {
            "PYTHONPATH": str(self.folder / "site"),
            "ORVANE_STATE_DIR": str(self.state),
        }
        changed = {name: value for name, value in environment.items() if value is not None}
        variables = {n: v for n, v in variables.items() if n not in environment} | changed
        return subprocess.run(
            [sys.executable, "-W", "error", "-c", code, *map(str, arguments)],
            env=variables,
            capture_output=True,
            text=True,
            timeout=300,
        )

    def output_of(self, code: str, *arguments: str | Path, **environment: str | None) -> str:
        """What code prints that must succeed and must not complain."""
        finished = self.run(code, *arguments, **environment)
        assert (finished.returncode, finished.stderr) == (0, "")
        return finished.stdout

    @property
    def start_lines(self) -> list[str]:
        """What every import logs first."""
        return [VERSION_LINE, f"[info] [tidepool] Plugins path: {self.plugins}"]

    def log(self) -> list[str]:
        return lines_of(self.state / "trace.log")
