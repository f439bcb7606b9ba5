"""Python values that run code of their own while a call reads them."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from typing import Any

import _moxPY
import numpy as np

Action = Callable[[], Any]


class Number:
    """A number that does something whenever its value is asked for."""

    def __init__(self, action: Action, value: float = 1.0) -> None:
        self.action, self.value = action, value

    def __float__(self) -> float:
        self.action()
        return float(self.value)

    def __index__(self) -> int:
        self.action()
        return int(self.value)


class Row:
    """A row of three numbers that acts when NumPy takes it as an array."""

    def __init__(self, action: Action, columns: int = 3) -> None:
        self.action, self.columns = action, columns

    def __array__(self, *_: Any, **__: Any) -> Any:
        self.action()
        return np.ones(self.columns)


class Sequence:
    """The same, as a sequence that acts whenever its length or an item is asked for."""

    def __init__(self, action: Action, columns: int = 3) -> None:
        self.action, self.columns = action, columns

    def __len__(self) -> int:
        self.action()
        return self.columns

    def __getitem__(self, item: int) -> float:
        self.action()
        if not 0 <= item < self.columns:
            raise IndexError(item)
        return 1.0


class Rows(list):  # type: ignore[type-arg]
    """A list that acts when it is iterated."""

    def __init__(self, action: Action, items: Any) -> None:
        super().__init__(items)
        self.action = action

    def __iter__(self) -> Iterator[Any]:
        self.action()
        return super().__iter__()


class Matrix(np.ndarray):
    """An array that acts whenever NumPy makes one like it."""

    action: Action | None = None

    def __array_finalize__(self, other: Any) -> None:
        self.action = getattr(other, "action", None)
        if self.action is not None:
            self.action()


def acting_matrix(array: Any, action: Action) -> Any:
    matrix = np.asarray(array).view(Matrix)
    matrix.action = action
    return matrix


class Handle:
    """Stands for an acquisition, and acts whenever it is asked for it."""

    def __init__(self, acquisition: Any, action: Action) -> None:
        self.acquisition, self.action = acquisition, action

    @property
    def this(self) -> Any:
        self.action()
        return getattr(self.acquisition, "this", self.acquisition)


class Key(str):
    """A key that acts whenever a dictionary compares it."""

    action: Action

    def __hash__(self) -> int:
        return super().__hash__()

    def __eq__(self, other: object) -> bool:
        self.action()
        return super().__eq__(other)


def acting_key(text: str, action: Action) -> Key:
    key = Key(text)
    key.action = action
    return key


def delete_everything(acquisition: Any) -> None:
    for clear in ("Points", "Analogs", "Events", "MetaData"):
        getattr(_moxPY, f"moxClear{clear}")(acquisition)


# What meddles with an acquisition. Each can be done again and again.
ACTIONS: dict[str, Callable[[Any], Any]] = {
    "clears it": delete_everything,
    "removes its points": _moxPY.moxClearPoints,
    "adds a point": lambda acquisition: _moxPY.moxSetPointNumber(
        acquisition, int(_moxPY.moxGetPointNumber(acquisition)) + 1
    ),
    "adds an analog channel": lambda acquisition: _moxPY.moxSetAnalogNumber(
        acquisition, int(_moxPY.moxGetAnalogNumber(acquisition)) + 1
    ),
    "changes its frames": lambda acquisition: _moxPY.moxSetFrameNumber(
        acquisition, (int(_moxPY.moxGetPointFrameNumber(acquisition)) + 3) % 7
    ),
    "moves a point": lambda acquisition: (
        _moxPY.moxGetPointNumber(acquisition) and _moxPY.moxSetPointType(acquisition, 0, "power")
    ),
    "changes its metadata": lambda acquisition: _moxPY.moxAppendMetaData(
        acquisition, "TRIAL", "COUNTS", {"format": "Char", "values": "a text"}
    ),
    "nothing": lambda acquisition: None,
}
