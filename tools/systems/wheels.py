"""Wheels of this and of other platforms, unpacked by pip."""

from __future__ import annotations

import subprocess
import sys
from collections.abc import Sequence
from pathlib import Path

REQUIREMENTS = Path(__file__).resolve().parent / "requirements"


def recipe_of(name: str) -> str:
    """The requirements file as text: whoever unpacked it before need not do so again."""
    return (REQUIREMENTS / name).read_text(encoding="utf-8")


def unpack(name: str, folder: Path, *, python: str = "", platforms: Sequence[str] = ()) -> None:
    """Unpack what a requirements file names into the folder.

    With `platforms`, the wheels that CPython `python` ("3.13") of these platforms would take,
    the most wanted one first.
    """
    target = [f"--platform={platform}" for platform in platforms]
    if platforms:
        target += [f"--python-version={python}", "--implementation=cp"]
    command: list[str | Path] = [
        sys.executable, "-m", "pip", "install", "--quiet", "--no-deps", "--no-compile",
        "--only-binary=:all:", "--target", folder, *target, "--requirement", REQUIREMENTS / name,
    ]  # fmt: skip
    subprocess.run(command, check=True)
