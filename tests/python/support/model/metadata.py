"""Metadata: groups and entries."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from .entries import (
    KIND_OF_FORMAT,
    exported,
    kind_of,
    reformatted,
    require_readable,
    shape_of,
    too_large,
    written,
)
from .state import Entry, MetadataGroup, Refused, State

DIFFERENT_SHAPE = (
    "Impossible to write value(s) with a shape different than the one stored in the data attribute"
)
UNKNOWN_FORMAT = (
    "invalid map<K, T> key. Exception thrown while it should not. Please contact the support and "
    "report this problem."
)
UNAVAILABLE = (
    "Function not supported yet. If you are actively using this function, please contact support."
)

Dictionary = dict[str, Any]


class MetadataModel(State):
    def moxGetMetaData(self, group: str = "", entry: str = "") -> Dictionary:
        if entry:
            return exported(self.stored_entry(group, entry))
        return _exported_group(self._group(group))

    moxFindMetaData = moxGetMetaData

    def moxAppendMetaData(self, group: str, entry: str, info: Any) -> Dictionary:
        kind, values = _format_and_values(info)
        try:
            stored = _new_entry(kind, values)
        except Refused:
            if _is_entry_name(entry):
                raise
            raise Refused(kind=Exception) from None
        if not _is_entry_name(entry):
            raise Refused()
        holder = self._group(group, create=True)
        holder.entries.pop(entry, None)
        holder.entries[entry] = stored
        return self.moxGetMetaData()

    def moxSetMetaData(self, group: str, entry: str, info: Any) -> Dictionary:
        try:
            self.stored_entry(group, entry)
        except Refused:
            raise Refused(
                "Unable to set metadata : it doesn't exists in given acquisition"
            ) from None
        return self.moxAppendMetaData(group, entry, info)

    def moxSetMetaDataValue(self, *path_and_value: Any) -> Dictionary:
        group, entry, value = _parts(path_and_value)
        stored = self.stored_entry(group, entry)
        kind = kind_of(value)
        if kind is None:
            raise Refused("Unsupported data type", TypeError)
        if shape_of(value) != stored.dims:
            raise Refused(DIFFERENT_SHAPE)
        _require_same_kind(stored.kind, kind)
        stored.elements = written(value, stored.kind)
        return self.moxGetMetaData()

    def moxSetMetaDataFormat(self, *path_and_format: str) -> Dictionary:
        group, entry, format_name = _parts(path_and_format)
        stored = self.stored_entry(group, entry)
        if format_name not in KIND_OF_FORMAT:
            raise Refused(UNKNOWN_FORMAT)
        kind = KIND_OF_FORMAT[format_name]
        if stored.kind in KIND_OF_FORMAT.values():
            require_readable(kind, len(stored.elements))
            elements = [reformatted(each, stored.kind, kind) for each in stored.elements]
            self._replace(group, entry, Entry(kind, stored.dims, elements))
        return self.moxGetMetaData()

    def moxSetMetaDataDimensions(self, *path_and_dimensions: Any) -> Dictionary:
        group, entry, dimensions = _parts(path_and_dimensions)
        stored = self.stored_entry(group, entry)
        count = _count(dimensions)
        if stored.kind not in KIND_OF_FORMAT.values():
            raise Refused("Unsupported type")
        require_readable(stored.kind, count)
        filler = "" if stored.kind == "str" else 0.0 if stored.kind == "float32" else 0
        elements = [*stored.elements[:count], *[filler] * (count - len(stored.elements))]
        self._replace(group, entry, Entry(stored.kind, (count,), elements))
        return self.moxGetMetaData()

    def moxSetMetaDataDescription(self, *_path_and_description: str) -> Dictionary:
        return self.moxGetMetaData()

    def moxRemoveMetaData(self, group: str, entry: str = "") -> Dictionary:
        if entry:
            self.stored_entry(group, entry)
            del self._group(group).entries[_last(entry)]
        elif not group:
            raise Refused()
        else:
            self._group(group)
            holder, _, name = group.rpartition("/")
            del self._group(holder).groups[name]
        return self.moxGetMetaData()

    def moxClearMetaData(self) -> None:
        self.metadata.groups.clear()

    def moxGetAnalysis(self) -> list[Any]:
        if "ANALYSIS" not in self.metadata.groups:
            raise Refused("Impossible to retrieve group with path : 'Metadata/ANALYSIS'")
        analysis = self.moxGetMetaData("ANALYSIS")
        entries = self._group("ANALYSIS").entries
        units = exported(entries["UNITS"])["info"]["values"] if "UNITS" in entries else []
        return [analysis, {"units": units}]

    def moxAppendAnalysisParameter(self, *_arguments: Any) -> None:
        raise Refused(UNAVAILABLE)

    def moxRemoveAnalysisParameter(self, *_arguments: Any) -> None:
        raise Refused(UNAVAILABLE)

    def moxClearAnalysis(self) -> None:
        raise Refused(UNAVAILABLE)

    def _group(self, path: str, *, create: bool = False) -> MetadataGroup:
        group = self.metadata
        for name in filter(None, path.split("/")):
            if create:
                group.groups.setdefault(name, MetadataGroup())
            if name not in group.groups:
                raise Refused(
                    f"Impossible to retrieve group with path : 'Metadata/{path}' does not exist"
                )
            group = group.groups[name]
        return group

    def stored_entry(self, group: str, entry: str) -> Entry:
        entries, name = self._group(group).entries, _last(entry)
        if name not in entries:
            raise Refused(names=(group, name))
        return entries[name]

    def _replace(self, group: str, entry: str, stored: Entry) -> None:
        """A rebuilt entry is the last one of its group."""
        entries, name = self._group(group).entries, _last(entry)
        del entries[name]
        entries[name] = stored


def _last(entry: str) -> str:
    """What counts of the path of an entry."""
    return entry.rpartition("/")[2]


def _exported_group(group: MetadataGroup) -> Dictionary:
    children = {name: exported(entry) for name, entry in group.entries.items()}
    # An entry that is called like a group gives its place to it.
    children |= {name: _exported_group(inner) for name, inner in group.groups.items()}
    return {"unlocked": 1.0, "description": "", "info": 0.0, "children": children or 0.0}


def _parts(arguments: tuple[Any, ...]) -> tuple[str, str, Any]:
    """Group, entry and value; group and entry may be one path."""
    if len(arguments) == 3:
        return arguments
    path, value = arguments
    group, _, entry = path.rpartition("/")
    return group, entry, value


def _format_and_values(info: Any) -> tuple[str, Any]:
    """Element type and values, if the description of an entry has both."""
    _require_json(info)
    if not isinstance(info, dict) or "format" not in info:
        raise Refused('Given struct has no field "format"')
    if not isinstance(info["format"], str):
        raise Refused('Given struct field "format" needs to have a string value')
    if info["format"] not in KIND_OF_FORMAT:
        raise Refused(
            'Given struct field "format" needs to correspond to a real type {"Integer", "Char", '
            '"Real", "Byte"}'
        )
    if "values" not in info:
        raise Refused('Given struct has no field "values"')
    return KIND_OF_FORMAT[info["format"]], info["values"]


def _new_entry(kind: str, values: Any) -> Entry:
    shape = shape_of(values)
    given = kind_of(values)
    if given is None:
        single_byte = kind == "int8" and math.prod(shape) == 1  # refused with another text
        raise Refused(None if single_byte else "Unexpected Python type to write", SystemError)
    _require_same_kind(kind, given)
    require_readable(kind, math.prod(shape))
    return Entry(kind, shape, written(values, kind))


def _is_entry_name(name: str) -> bool:
    return name != "" and "/" not in name and "\\" not in name


def _require_json(value: Any) -> None:
    if isinstance(value, (dict, list)):
        for item in value.values() if isinstance(value, dict) else value:
            _require_json(item)
    elif value is not None and not isinstance(value, (bool, str, float, int)):
        raise Refused(f"Unsupported data type: '{_full_name(type(value))}'", TypeError)
    elif isinstance(value, int) and not -(2**31) <= value < 2**31:
        raise too_large()


def _full_name(type_: type) -> str:
    builtin = type_.__module__ == "builtins"
    return type_.__name__ if builtin else f"{type_.__module__}.{type_.__name__}"


def _require_same_kind(stored: str, given: str) -> None:
    if (stored == "str") != (given == "str"):
        raise Refused()


def _count(dimensions: Any) -> int:
    """Number of elements that the given dimensions ask for."""
    if not isinstance(dimensions, (list, tuple, np.ndarray)):
        raise Refused(kind=TypeError)
    for extent in dimensions:
        if not isinstance(extent, (int, np.integer)):
            raise Refused(kind=TypeError)
        if extent < 0 or extent > 2**30:
            raise Refused(kind=ValueError)
    return math.prod(int(extent) for extent in dimensions)
