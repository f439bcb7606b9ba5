"""Metadata: the parameters of a trial, in groups."""

from __future__ import annotations

from collections.abc import Iterator, Mapping, MutableMapping
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, TypeGuard

import numpy as np
from _moxPY import trial as calls

from .display import one_line
from .entry_values import Content, content_of, stored_form, value_of
from .labels import nearest
from .popping import PoppingMapping

if TYPE_CHECKING:
    from .trial import Trial


@dataclass(frozen=True, kw_only=True, eq=False, repr=False, slots=True)
class Entry:
    """An entry of metadata as it was when it was asked for; it does not change.

    Attributes
    ----------
    value : int, float, str, list or ndarray
        What indexing the group gives.
    type : str
        ``"Char"``, ``"Byte"``, ``"Integer"`` or ``"Real"``.
    shape : tuple of int
        The dimensions of the file in the order of NumPy, the fastest varying last: two platforms'
        corners have (2, 4, 3). Without those of one text, which are its characters; ``()`` for a
        single value.
    description : str
        What the file that was read says of it.
    locked : bool
        Whether that file asks programs not to change it. That is a note: nothing is refused.
    """

    value: Any
    type: str
    shape: tuple[int, ...]
    description: str = ""
    locked: bool = False

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Entry):
            return NotImplemented
        return _details(self) == _details(other) and _equal(self.value, other.value)

    __hash__ = None  # type: ignore[assignment]  # lists and arrays have none

    def __repr__(self) -> str:
        text = f"<{self.type} {self.shape}: {_brief(self.value)}"
        return text + (f", {self.description}>" if self.description else ">")


class MetadataGroup(MutableMapping[str, Any]):
    """The entries of a group of metadata: values by name.

    One number is an int or a float, several are a read-only array with the dimensions of
    `Entry.shape`; a text is a str, texts with dimensions are nested lists.

    Assigning a value keeps the type of an entry and takes the shape of the value; a plain number
    in the place of one number keeps its dimensions. A new entry is an Integer (16 bits) for whole
    numbers and truth values, a Real (single precision) for others, a Char for text.

    Examples
    --------
    >>> trial.metadata["PROCESSING"]["Bodymass"] = 73.5
    >>> trial.metadata["PROCESSING"].entry("Bodymass").type
    'Real'
    """

    __slots__ = ("_name", "_trial")

    def __init__(self, trial: Trial, name: str) -> None:
        self._trial = trial
        self._name = name

    @property
    def name(self) -> str:
        """The name of the group."""
        return self._name

    @property
    def description(self) -> str:
        """What the file that was read says of the group."""
        self._require()
        return calls.metadata_record(self._trial, self._name, "")[0]

    def entry(self, name: str) -> Entry:
        """An entry with all that is known of it; KeyError when there is none."""
        kind, content = self._found(name)
        description, locked = calls.metadata_record(self._trial, self._name, name)
        return Entry(
            value=value_of(content),
            type=kind,
            shape=content.shape,
            description=description,
            locked=locked,
        )

    def __getitem__(self, name: str) -> Any:
        return value_of(self._found(name)[1])

    def __setitem__(self, name: str, value: Any) -> None:
        """Give an entry another value, or add one.

        Raises
        ------
        TypeError
            Text for numbers, numbers for text, a real number that is not whole for an Integer.
        OverflowError
            A number is beyond what the type can hold.
        ValueError
            Lists of unequal lengths, more than seven dimensions, a text with a NUL character, a
            name that no entry can have, or a single value for an entry of type Byte, which only
            lists have. Nothing has changed then, whatever is raised.
        """
        self._require()
        stored = self._content(name)
        what = f"the entry '{self._name}:{name}'"
        if stored is None:
            _require_name(name, what)
        content = content_of(value, stored, what)
        _require_list_of_bytes(content, stored, what)
        calls.set_metadata_entry(self._trial, self._name, name, stored_form(content))

    def __delitem__(self, name: str) -> None:
        self._found(name)
        calls.remove_metadata_entry(self._trial, self._name, name)

    def __iter__(self) -> Iterator[str]:
        return iter(self._names())

    def __len__(self) -> int:
        return len(self._names())

    def __contains__(self, name: object) -> bool:
        self._require()
        return _is_text(name) and calls.has_metadata_entry(self._trial, self._name, name)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Mapping):
            return NotImplemented
        return self.keys() == other.keys() and all(_equal(self[name], other[name]) for name in self)

    __hash__ = None  # type: ignore[assignment]  # it changes

    def _require(self) -> None:
        """KeyError when the trial no longer has the group."""
        if not calls.has_metadata_group(self._trial, self._name):
            raise _no_group(self._trial, self._name)

    def _names(self) -> list[str]:
        names = calls.metadata_entries(self._trial, self._name)
        if names is None:
            raise _no_group(self._trial, self._name)
        return names

    def _found(self, name: str) -> tuple[str, Content]:
        found = self._read(name)
        if found is None:
            hint = nearest(name, self._names())
            raise KeyError(f"no entry '{name}' in the metadata group '{self._name}'{hint}")
        return found

    def _read(self, name: str) -> tuple[str, Content] | None:
        return calls.metadata_entry(self._trial, self._name, name) if _is_text(name) else None

    def _content(self, name: str) -> Content | None:
        found = self._read(name)
        return None if found is None else found[1]

    def _ipython_key_completions_(self) -> list[str]:
        return self._names()

    def __repr__(self) -> str:
        return one_line("metadata group", lambda: f" {self._name} {_counted(self._names())}")


class Metadata(PoppingMapping[MetadataGroup]):
    """The groups of a trial's metadata by name: ``trial.metadata["POINT"]["RATE"]``.

    Assigning a dictionary makes a group, or replaces one: as a whole, or not at all when one of the
    values cannot be kept. An entry that a replaced group had keeps its type where that holds the
    new value.

    What follows from the content of a trial, such as POINT:RATE and the labels, is written as the
    content is, whatever the metadata say.

    Examples
    --------
    >>> trial.metadata["LAB"] = {"OPERATOR": "Ann", "ROOMS": [1, 2], "HEIGHT": 2.5}
    >>> trial.metadata["LAB"]
    <metadata group LAB (3): OPERATOR, ROOMS, HEIGHT>
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    def __getitem__(self, name: str) -> MetadataGroup:
        if name not in self:
            raise _no_group(self._trial, name)
        return MetadataGroup(self._trial, name)

    def __setitem__(self, name: str, entries: Mapping[str, Any]) -> None:
        if name not in self:
            _require_name(name, f"the metadata group '{name}'")
        if not isinstance(entries, Mapping):
            raise TypeError(
                f"the metadata group '{name}': expected a dictionary of entries, "
                f"got {type(entries).__name__}"
            )
        if isinstance(entries, MetadataGroup):
            contents = {entry: entries._found(entry)[1] for entry in entries}
        else:
            contents = self._contents(MetadataGroup(self._trial, name), entries)
        stored = {entry: stored_form(content) for entry, content in contents.items()}
        calls.set_metadata_group(self._trial, name, stored)

    @staticmethod
    def _contents(group: MetadataGroup, entries: Mapping[str, Any]) -> dict[str, Content]:
        contents = {}
        for name, value in entries.items():
            stored = group._content(name)
            what = f"the entry '{group.name}:{name}'"
            if stored is None:
                _require_name(name, what)
            try:
                content = content_of(value, stored, what)
                _require_list_of_bytes(content, stored, what)
            except (TypeError, OverflowError, ValueError):
                content = content_of(value, None, what)
            contents[name] = content
        return contents

    def _of_copy(self, key: str) -> MetadataGroup:
        return self._trial.copy().metadata[key]

    def __delitem__(self, name: str) -> None:
        if name not in self:
            raise _no_group(self._trial, name)
        calls.remove_metadata_group(self._trial, name)

    def __iter__(self) -> Iterator[str]:
        return iter(calls.metadata_groups(self._trial))

    def __len__(self) -> int:
        return len(calls.metadata_groups(self._trial))

    def __contains__(self, name: object) -> bool:
        return _is_text(name) and calls.has_metadata_group(self._trial, name)

    def _ipython_key_completions_(self) -> list[str]:
        return list(self)

    def __repr__(self) -> str:
        return one_line("metadata", lambda: f" {_counted(list(self))}")


def _no_group(trial: Trial, name: object) -> KeyError:
    return KeyError(f"no metadata group '{name}'{nearest(name, calls.metadata_groups(trial))}")


def _is_text(name: object) -> TypeGuard[str]:
    """Whether a name is one that the store can be asked for: Unicode without NUL."""
    return isinstance(name, str) and not any(
        letter == "\0" or "\ud800" <= letter <= "\udfff" for letter in name
    )


def _require_name(name: object, what: str) -> None:
    """Refuse what no new group and no new entry can be called."""
    if not isinstance(name, str):
        raise TypeError(f"a name of metadata is a str, not {type(name).__name__}")
    if not name or set(name) & set("/\\"):
        raise ValueError(f"{what}: a name is not empty and has no '/' or '\\'")
    if not _is_text(name):
        raise ValueError(f"a name of metadata is Unicode without NUL character: {name!r}")


def _require_list_of_bytes(content: Content, stored: Content | None, what: str) -> None:
    """Files and functions know single integers of 16 bits only, but for one that is there."""
    is_byte = content.dtype.kind in "iu" and content.dtype.itemsize == 1
    if is_byte and content.size == 1 and stored is not None and stored.shape != content.shape:
        raise ValueError(f"{what}: an entry of type Byte holds a list, not a single value")


def _details(entry: Entry) -> tuple[Any, ...]:
    return entry.type, entry.shape, entry.description, entry.locked


def _equal(one: Any, other: Any) -> bool:
    if isinstance(one, np.ndarray) or isinstance(other, np.ndarray):
        return np.array_equal(one, other)
    return bool(one == other)


def _brief(value: Any) -> str:
    text = " ".join(repr(value.tolist() if isinstance(value, np.ndarray) else value).split())
    return text if len(text) <= 60 else f"{text[:57]}…"


def _counted(names: list[str]) -> str:
    shown = ", ".join(names if len(names) <= 6 else [*names[:5], "…", names[-1]])
    return f"({len(names)}): {shown or 'none'}"
