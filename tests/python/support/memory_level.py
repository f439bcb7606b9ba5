"""How much a process holds: Python's blocks, the C heap, references to given objects."""

from __future__ import annotations

import ctypes
import gc
import sys
from collections.abc import Callable
from dataclasses import dataclass
from itertools import repeat
from typing import Any


class _HeapCounts(ctypes.Structure):
    """What the C library says of its heap, as `struct mallinfo2` has it."""

    _fields_ = [(name, ctypes.c_size_t) for name in (
        "arena", "free_chunks", "fast_chunks", "mapped_regions", "mapped_bytes", "unused",
        "fast_bytes", "used_bytes", "free_bytes", "releasable",
    )]  # fmt: skip


def _heap_counter() -> Callable[[], _HeapCounts] | None:
    function = getattr(ctypes.CDLL(None), "mallinfo2", None) if sys.platform == "linux" else None
    if function is not None:
        function.restype = _HeapCounts
    return function


_HEAP_COUNTS = _heap_counter()


def heap_bytes() -> int:
    """Bytes taken from the C heap; 0 where the C library does not tell."""
    if _HEAP_COUNTS is None:
        return 0
    counts = _HEAP_COUNTS()
    return counts.used_bytes + counts.mapped_bytes


def python_blocks_are_counted() -> bool:
    """False under PYTHONMALLOC=malloc, where every object is on the C heap."""
    return sys.getallocatedblocks() > 0


@dataclass(frozen=True)
class Growth:
    blocks: int
    heap: int
    references: int  # the most that one of the given objects gained


def growth_of(call: Callable[[], Any], calls: int, *objects: Any) -> Growth:
    """What `calls` calls leave behind, after some that fill every cache.

    The references of `objects`, which the call was given, are counted.
    """
    for _ in range(100):
        call()
    gc.collect()
    references = [sys.getrefcount(each) for each in objects]
    heap, blocks = heap_bytes(), sys.getallocatedblocks()
    for _ in repeat(None, calls):
        call()
    gc.collect()
    blocks, heap = sys.getallocatedblocks() - blocks, heap_bytes() - heap
    gained = [
        sys.getrefcount(each) - before for each, before in zip(objects, references, strict=True)
    ]
    return Growth(blocks, heap, max(gained, default=0))
