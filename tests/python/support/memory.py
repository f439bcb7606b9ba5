"""Less memory for a while, so that a test that goes wrong does no harm to the machine."""

from __future__ import annotations

import os
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path


def under_a_sanitizer() -> bool:
    """Sanitizers reserve more address space than any limit would leave."""
    maps = Path("/proc/self/maps")
    return maps.exists() and "libasan" in maps.read_text()


@contextmanager
def address_space(bytes_more: int) -> Iterator[None]:
    """Lets this process map no more than so many bytes beyond what it has, where that can be."""
    if os.name != "posix" or not Path("/proc/self/statm").exists() or under_a_sanitizer():
        yield
        return
    import resource

    pages = int(Path("/proc/self/statm").read_text().split()[0])
    before = resource.getrlimit(resource.RLIMIT_AS)
    held = pages * resource.getpagesize()
    resource.setrlimit(resource.RLIMIT_AS, (held + bytes_more, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_AS, before)
