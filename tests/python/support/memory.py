"""Less memory for a while, so that a test that goes wrong does no harm to the machine."""

from __future__ import annotations

import sys
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import pytest

STATE = Path("/proc/self/statm")
# Below Wine there is such a file too, of the system that Wine runs on.
CAN_BE_LIMITED = sys.platform == "linux" and STATE.exists()
# For what would take all memory of the machine, or not fail, without the limit.
limited = pytest.mark.skipif(not CAN_BE_LIMITED, reason="memory is limited on Linux alone")


def under_a_sanitizer() -> bool:
    """Sanitizers reserve more address space than any limit would leave."""
    maps = Path("/proc/self/maps")
    return maps.exists() and "libasan" in maps.read_text()


@contextmanager
def address_space(bytes_more: int) -> Iterator[None]:
    """Lets this process map no more than so many bytes beyond what it has, where that can be."""
    if not CAN_BE_LIMITED or under_a_sanitizer():
        yield
        return
    import resource

    pages = int(STATE.read_text().split()[0])
    before = resource.getrlimit(resource.RLIMIT_AS)
    held = pages * resource.getpagesize()
    resource.setrlimit(resource.RLIMIT_AS, (held + bytes_more, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_AS, before)
