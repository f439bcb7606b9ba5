"""Mappings whose values are views of the trial: what is taken out of them stays what it was."""

from __future__ import annotations

from abc import abstractmethod
from collections.abc import MutableMapping
from typing import Any, Final, TypeVar, overload

_Value = TypeVar("_Value")
_Default = TypeVar("_Default")
_NONE: Final[Any] = object()


class PoppingMapping(MutableMapping[str, _Value]):
    """A mapping of which `pop` and `popitem` give values of a copy of the trial, for a view of what
    has just been removed shows nothing: ``markers["B"] = markers.pop("A")`` would lose a channel.
    """

    __slots__ = ()

    @abstractmethod
    def _of_copy(self, key: str) -> _Value:
        """The value of a key in a copy of the trial; KeyError without that key."""

    @overload
    def pop(self, key: str, /) -> _Value: ...
    @overload
    def pop(self, key: str, default: _Value, /) -> _Value: ...
    @overload
    def pop(self, key: str, default: _Default, /) -> _Value | _Default: ...
    def pop(self, key: str, default: Any = _NONE, /) -> Any:
        """Remove what has a key and return it, as part of a copy of the trial; without it
        `default`, or KeyError."""
        if default is not _NONE and key not in self:
            return default
        value = self._of_copy(key)
        del self[key]
        return value

    def popitem(self) -> tuple[str, _Value]:
        """Remove what has the first key and return both; KeyError when there is none."""
        for key in self:
            return key, self.pop(key)
        raise KeyError("there is nothing left")

    def clear(self) -> None:
        """Remove everything."""
        while keys := list(self):  # removing one may give others their keys
            del self[keys[-1]]
