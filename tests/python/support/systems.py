"""What the system is that the tests run on, for those that show a rule of one system alone."""

from __future__ import annotations

import ctypes
import os

import pytest

posix = pytest.mark.skipif(os.name != "posix", reason="a rule of POSIX file systems")
windows = pytest.mark.skipif(os.name != "nt", reason="a rule of Windows")


def is_superuser() -> bool:
    """Nothing is forbidden to him."""
    return hasattr(os, "geteuid") and os.geteuid() == 0


def under_wine() -> bool:
    """Wine stands in for Windows, and is not like it in everything."""
    return os.name == "nt" and hasattr(ctypes.WinDLL("ntdll"), "wine_get_version")  # type: ignore[attr-defined, unused-ignore]
