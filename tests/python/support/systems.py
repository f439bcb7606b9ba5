"""What the system is that the tests run on, for those that show a rule of one system alone."""

from __future__ import annotations

import ctypes
import os
from pathlib import Path

import pytest

posix = pytest.mark.skipif(os.name != "posix", reason="a rule of POSIX")
windows = pytest.mark.skipif(os.name != "nt", reason="a rule of Windows")
interruptible = pytest.mark.skipif(
    os.name != "posix", reason="Ctrl-C reaches a process by itself on POSIX alone"
)
# What is said of a folder on the way that is a file.
NO_FOLDER = NotADirectoryError if os.name == "posix" else FileNotFoundError


def is_superuser() -> bool:
    """Nothing is forbidden to him."""
    return hasattr(os, "geteuid") and os.geteuid() == 0


def make_link(path: Path, target: Path | str) -> None:
    """Make a symbolic link; skips the test where there are none."""
    try:
        path.symlink_to(target)
    except OSError as refused:
        pytest.skip(f"the system makes no links: {refused.strerror}")
    if not path.is_symlink():
        pytest.skip("Wine makes links that are none to programs")


def under_wine() -> bool:
    """Wine stands in for Windows, and is not like it in everything."""
    return os.name == "nt" and hasattr(ctypes.WinDLL("ntdll"), "wine_get_version")  # type: ignore[attr-defined, unused-ignore]
