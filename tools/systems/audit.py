"""What a wheel for Linux asks of a system, by its libraries."""

from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path


class NotPortable(Exception):
    """A wheel needs more of a system than its name says."""


def glibc_of(platform: str) -> tuple[int, int]:
    """The version of the C library that a platform tag promises to get by with."""
    found = re.fullmatch(r"manylinux_(\d+)_(\d+)_\w+", platform)
    if not found:
        raise NotPortable(f"{platform} names no C library")
    major, minor = map(int, found.groups())
    return major, minor


def allowed_platform(told: str) -> str:
    """The oldest platform in the words of `auditwheel show`."""
    found = re.search(r'platform\s+tag:\s+"(\w+)"', told)
    if not found:
        raise NotPortable(told)
    return found.group(1)


def require_platform(wheel: Path, platform: str) -> None:
    """Throw NotPortable unless auditwheel allows the wheel its platform tag."""
    shown = subprocess.run(
        [sys.executable, "-m", "auditwheel", "show", wheel],
        stdout=subprocess.PIPE, text=True, check=True,
    )  # fmt: skip
    allowed = allowed_platform(shown.stdout)
    if glibc_of(allowed) > glibc_of(platform):
        raise NotPortable(f"{wheel.name} needs {allowed}:\n{shown.stdout}")
