"""A wheel, installed where nothing else is, runs the minimal tests."""

from __future__ import annotations

import os
import subprocess
import sys
import tempfile
from collections.abc import Mapping, Sequence
from pathlib import Path

from run_tests import PROJECT, Tally, tally_of

from systems.wheels import REQUIREMENTS, unpack

MINIMAL = "tests/python/minimal"
NEEDED = "minimal.txt"


def pip(*words: str | Path) -> None:
    subprocess.run([sys.executable, "-m", "pip", *words], check=True)


def run_minimal(python: Path, folder: Path, variables: Mapping[str, str]) -> Tally:
    """Count the minimal tests with what the interpreter has installed."""
    report = folder / "report.xml"
    words: list[str | Path] = [
        "-m", "pytest", "-q", "-p", "no:cacheprovider", f"--junit-xml={report}",
        # Otherwise it ends with deleting what earlier runs left, however much that is.
        f"--basetemp={folder / 'files'}", MINIMAL,
    ]  # fmt: skip
    # Neither the environment that called nor a folder of the user may answer.
    kept = {name: text for name, text in os.environ.items() if not name.startswith("PYTHON")}
    environment = {
        **kept, "PYTHONNOUSERSITE": "1", "PYTHONDONTWRITEBYTECODE": "1", **variables,
    }  # fmt: skip
    finished = subprocess.run([python, *words], cwd=PROJECT, env=environment, check=False)
    return tally_of(report, finished.returncode)


def try_in_empty_environment(wheel: Path, python: Path) -> Tally:
    """For wheels of this machine's kind, with an interpreter that it has."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([python, "-m", "venv", "--without-pip", folder / "venv"], check=True)
        inside = folder / "venv" / "bin" / "python"
        pip(
            "--python", inside, "install", "--quiet", "--only-binary=:all:",
            "--requirement", REQUIREMENTS / NEEDED, wheel,
        )  # fmt: skip
        return run_minimal(inside, folder, {})


def try_with_folders(wheel: Path, python: Path, version: str, platforms: Sequence[str]) -> Tally:
    """For wheels of another kind: pip unpacks them here, where it cannot ask that interpreter."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        packages, installed = folder / "packages", folder / "installed"
        unpack(NEEDED, packages, python=version, platforms=platforms)
        pip(
            "install", "--quiet", "--no-deps", "--only-binary=:all:", "--target", installed,
            f"--python-version={version}", "--implementation=cp",
            *(f"--platform={platform}" for platform in platforms), wheel,
        )  # fmt: skip
        return run_minimal(python, folder, {"PYTHONPATH": f"{installed}:{packages}"})
