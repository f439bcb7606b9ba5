"""The handle on an acquisition."""

from __future__ import annotations

from types import TracebackType
from typing import Any, Protocol, Self

import _moxPY


class Acquisition(Protocol):
    """What functions take: whatever holds an open acquisition, be it `data_store` or `Trial`."""

    this: Any


class data_store:
    """An acquisition: points, analog channels, events and metadata of one trial, in memory.

    `moxReadAcquisition` and `moxNewAcquisition` make acquisitions; all other functions take one as
    their first argument. ``data_store()`` alone is a store without anything in it.

    The memory is freed when the last reference goes, at `close`, or at the end of a ``with`` block.
    Arrays that functions returned belong to the caller and outlive the acquisition. A function
    that is given a closed acquisition raises ValueError.

    Examples
    --------
    >>> with moxReadAcquisition(path) as trial:
    ...     print(trial, moxGetPointFrequency(trial))
    <data_store: 360 frames at 100 Hz, 68 points, 20 analog channels> 100.0
    >>> trial
    <data_store: closed>
    """

    this: Any  #: the extension module's own handle

    def __init__(self) -> None:
        _moxPY.data_store_swiginit(self, _moxPY.new_data_store())

    @property
    def closed(self) -> bool:
        """Whether the acquisition was closed."""
        try:
            # Looks at the handle and does nothing else.
            _moxPY.moxCloseAcquisition(self)
        except (TypeError, ValueError):
            return True
        return False

    def close(self) -> None:
        """Free the memory now. Closing twice is no error."""
        if not self.closed:
            _moxPY.delete_data_store(self)

    def __enter__(self) -> Self:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        if self.closed:
            return "<data_store: closed>"
        try:
            frames = _moxPY.moxGetPointFrameNumber(self)
            rate = _moxPY.moxGetPointFrequency(self)
            points = _moxPY.moxGetPointNumber(self)
            channels = _moxPY.moxGetAnalogNumber(self)
        except RuntimeError:
            return "<data_store: no acquisition>"
        counts = [
            f"{counted(frames, 'frame')} at {rate:g} Hz",
            counted(points, "point"),
            counted(channels, "analog channel"),
        ]
        return f"<data_store: {', '.join(counts)}>"


def counted(number: float, noun: str) -> str:
    """A number with its noun, in the plural where it is not 1."""
    return f"{number:.0f} {noun}" if number == 1 else f"{number:.0f} {noun}s"


_moxPY.data_store_swigregister(data_store)
