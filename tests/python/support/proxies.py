"""Handles on stores in the forms that Python can hold them."""

from __future__ import annotations

from typing import Any

import _moxPY


def new_proxy() -> Any:
    """A proxy that owns an empty store, without the instance of a shadow class around it."""
    handle = _moxPY.new_data_store()
    return getattr(handle, "this", handle)


def deleted_handle() -> Any:
    """A handle whose store was destroyed."""
    handle = _moxPY.new_data_store()
    _moxPY.delete_data_store(handle)
    return handle


class Shadow:
    """An instance with a handle in its attribute `this`."""

    def __init__(self, this: Any) -> None:
        self.this = this


# What is not the answer of an object that is asked for its handle.
PASSED_ON = (KeyboardInterrupt, SystemExit, MemoryError)


class StoppingShadow:
    """An instance whose attribute `this` raises, and counts how often it was asked for."""

    def __init__(self, raised: type[BaseException]) -> None:
        self.raised = raised
        self.asked = 0

    @property
    def this(self) -> Any:
        self.asked += 1
        raise self.raised("stop")
