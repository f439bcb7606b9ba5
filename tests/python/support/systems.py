"""What the system is that the tests run on, for those that show a rule of one system alone."""

from __future__ import annotations

import os

import pytest

posix = pytest.mark.skipif(os.name != "posix", reason="a rule of POSIX file systems")
windows = pytest.mark.skipif(os.name != "nt", reason="a rule of Windows")


def is_superuser() -> bool:
    """Nothing is forbidden to him."""
    return hasattr(os, "geteuid") and os.geteuid() == 0
