"""What a repeated call leaves behind: blocks of Python, bytes of the C heap, references."""

from __future__ import annotations

import ctypes
import gc
import operator
import os
import sys
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from itertools import repeat
from typing import Any

import _mox_probe as probe

# A loss at every call, or at every third, shows by more than the limits below; a cache that fills,
# or a table that grows once, does not show in all rounds.
CALLS = 60
ROUNDS = 6
# No object and no block of memory takes fewer bytes.
SMALLEST_LOSS = 16


@dataclass(frozen=True)
class Growth:
    """What `calls` calls left behind."""

    calls: int
    blocks: int  # of Python's allocator
    heap: int  # bytes
    references: int  # the most that one of the watched objects gained

    @property
    def is_level(self) -> bool:
        few = self.calls // 3
        return self.blocks < few and self.heap < few * SMALLEST_LOSS and self.references < few


def growth_of(action: Callable[[], Any], *watched: Any, calls: int = CALLS) -> Growth:
    """The first level one of several rounds, else the last one.

    The references of `watched`, which the calls were given, are counted.
    """
    _repeat(action, calls)
    with _few_objects_to_search():
        for _ in range(ROUNDS):
            growth = _growth(action, watched, calls)
            if growth.is_level:
                break
    return growth


def assert_nothing_lost(action: Callable[[], Any], *watched: Any, calls: int = CALLS) -> None:
    """Fails when `action` loses as little as one object or one block of memory at each call."""
    growth = growth_of(action, *watched, calls=calls)
    assert growth.is_level, growth


def python_blocks_are_counted() -> bool:
    """False under PYTHONMALLOC=malloc, where every object is on the C heap."""
    return sys.getallocatedblocks() > 0


def heap_is_counted() -> bool:
    return _heap_counter() is not None


def _growth(action: Callable[[], Any], watched: tuple[Any, ...], calls: int) -> Growth:
    held = _HEAP_COUNTER or (lambda: 0)
    references = _references(watched)
    _settle()
    blocks, heap = sys.getallocatedblocks(), held()
    _repeat(action, calls)
    _settle()
    blocks, heap = sys.getallocatedblocks() - blocks, held() - heap
    gained = map(operator.sub, _references(watched), references)
    return Growth(calls, blocks, heap, max(gained, default=0))


def _references(watched: tuple[Any, ...]) -> list[int]:
    return [sys.getrefcount(each) for each in watched]


def _repeat(action: Callable[[], Any], times: int) -> None:
    for _ in repeat(None, times):
        action()


def _settle() -> None:
    probe.flush_log()
    gc.collect()


@contextmanager
def _few_objects_to_search() -> Iterator[None]:
    """Takes what is alive already out of the collector's sight: it makes a collection cheap."""
    gc.freeze()
    try:
        yield
    finally:
        gc.unfreeze()


class _HeapInfo(ctypes.Structure):
    """`struct mallinfo2`; large blocks are mapped and counted apart."""

    _fields_ = [(name, ctypes.c_size_t) for name in (
        "arena", "free_chunks", "fast_chunks", "mapped_regions", "mapped_bytes", "unused",
        "fast_bytes", "used_bytes", "free_bytes", "releasable",
    )]  # fmt: skip


def _heap_counter() -> Callable[[], int] | None:
    """Bytes in use as the address sanitizer or the GNU C library counts them; None elsewhere."""
    if os.name == "nt":  # there is no name for the program itself, nor a counter in it
        return None
    process = ctypes.CDLL(None)
    if hasattr(process, "__sanitizer_get_current_allocated_bytes"):
        in_use = process["__sanitizer_get_current_allocated_bytes"]
        in_use.restype = ctypes.c_size_t
        return lambda: int(in_use())
    if not hasattr(process, "mallinfo2"):
        return None
    process.mallinfo2.restype = _HeapInfo

    def used() -> int:
        counts = process.mallinfo2()
        return int(counts.used_bytes) + int(counts.mapped_bytes)

    return used


_HEAP_COUNTER = _heap_counter()
