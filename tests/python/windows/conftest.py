"""What the tests of rules of Windows share; elsewhere they are skipped."""

from __future__ import annotations

import ctypes
from collections.abc import Callable, Iterator
from contextlib import AbstractContextManager, contextmanager
from pathlib import Path

import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes

GENERIC_READ = 0x80000000
OPEN_EXISTING = 3
NOT_OPENED = ctypes.c_void_p(-1).value

CONTENT = c3d_bytes({"A": np.arange(6.0).reshape(2, 3)})


@pytest.fixture
def trial(tmp_path: Path) -> mox.Trial:
    return mox.read(CONTENT)


@contextmanager
def _held(path: Path, sharing: int) -> Iterator[None]:
    system = ctypes.WinDLL("kernel32", use_last_error=True)  # type: ignore[attr-defined]
    system.CreateFileW.restype = ctypes.c_void_p
    handle = system.CreateFileW(str(path), GENERIC_READ, sharing, None, OPEN_EXISTING, 0, None)
    assert handle != NOT_OPENED
    try:
        yield
    finally:
        system.CloseHandle(ctypes.c_void_p(handle))


@pytest.fixture
def held() -> Callable[[Path, int], AbstractContextManager[None]]:
    """Holds a file open as another program does: 1 lets others read, 2 write, 4 replace it."""
    return _held
