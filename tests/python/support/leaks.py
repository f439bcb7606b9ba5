"""What a call that is repeated leaves behind."""

from __future__ import annotations

import ctypes
import gc
import tracemalloc
from collections.abc import Callable
from typing import Any

import _mox_probe as probe

CALLS = 1000
# No object and no block of memory takes fewer bytes; one that is lost at each call shows by half.
SMALLEST_LOSS = 16


def python_bytes_lost(action: Callable[[], Any], calls: int = CALLS) -> int:
    """Bytes of Python's and NumPy's memory that so many calls leave behind."""
    tracemalloc.start()
    try:
        return _growth(action, calls, lambda: tracemalloc.get_traced_memory()[0])
    finally:
        tracemalloc.stop()


def native_bytes_lost(action: Callable[[], Any], calls: int = CALLS) -> int:
    """Bytes of the C++ heap that so many calls leave behind; 0 where nothing counts them."""
    held = _heap_counter()
    return _growth(action, calls, held) if held else 0


def native_bytes_are_counted() -> bool:
    return _heap_counter() is not None


def _growth(action: Callable[[], Any], calls: int, held: Callable[[], int]) -> int:
    """The smallest of three growths: a loss shows in each, a cache or the log's buffer does not."""
    _repeat(action, calls // 10)
    growth = calls * SMALLEST_LOSS
    for _ in range(3):
        before = _settled(held)
        _repeat(action, calls)
        growth = min(growth, _settled(held) - before)
        if growth < calls * SMALLEST_LOSS // 2:
            break
    return growth


def _repeat(action: Callable[[], Any], times: int) -> None:
    for _ in range(times):
        action()


def _settled(held: Callable[[], int]) -> int:
    probe.flush_log()
    gc.collect()
    return held()


class _HeapInfo(ctypes.Structure):
    """`struct mallinfo2`; `uordblks` counts the bytes in use."""

    _fields_ = [
        (name, ctypes.c_size_t)
        for name in (
            "arena",
            "ordblks",
            "smblks",
            "hblks",
            "hblkhd",
            "usmblks",
            "fsmblks",
            "uordblks",
            "fordblks",
            "keepcost",
        )
    ]


def _heap_counter() -> Callable[[], int] | None:
    """Bytes in use as the address sanitizer or the GNU C library counts them; None elsewhere."""
    process = ctypes.CDLL(None)
    if hasattr(process, "__sanitizer_get_current_allocated_bytes"):
        in_use = process["__sanitizer_get_current_allocated_bytes"]
        in_use.restype = ctypes.c_size_t
        return lambda: int(in_use())
    if hasattr(process, "mallinfo2"):
        process.mallinfo2.restype = _HeapInfo
        return lambda: int(process.mallinfo2().uordblks)
    return None


def assert_nothing_lost(action: Callable[[], Any], calls: int = CALLS) -> None:
    """Fails when `action` loses as little as one object or one block of memory at each call."""
    assert python_bytes_lost(action, calls) < calls * SMALLEST_LOSS // 2
    assert native_bytes_lost(action, calls) < calls * SMALLEST_LOSS // 2
