"""The formats that trials are exported to."""

from __future__ import annotations

from collections.abc import Callable
from dataclasses import dataclass
from functools import cache
from importlib import import_module
from importlib.metadata import entry_points
from typing import TYPE_CHECKING

from .options import Options
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial

#: Writes a trial, which has the axes and units of the options already, into the target's files.
WriteFunction = Callable[["Trial", Target, Options], None]

# Other packages offer formats under this name: each entry is a `Format`.
_ENTRY_POINTS = "moxPY.formats"


@dataclass(frozen=True, slots=True)
class Format:
    """A format that trials are exported to.

    Attributes
    ----------
    name : str
        What users call it, such as ``"trc"``.
    suffix : str
        How its files end, such as ``".trc"``.
    summary : str
        What its files hold, for lists and help.
    write : callable or str
        A `WriteFunction`, or the module that has one of the name ``write``, which is imported when
        a file is written.
    """

    name: str
    suffix: str
    summary: str
    write: WriteFunction | str

    @property
    def function(self) -> WriteFunction:
        """What writes a trial."""
        if not isinstance(self.write, str):
            return self.write
        found: WriteFunction = import_module(self.write).write
        return found


def _own(name: str, summary: str) -> Format:
    return Format(name, f".{name}", summary, f"{__package__}.{name}")


_OWN = (
    _own("csv", "tables as text, a file a part: markers, angles, analogs, platforms, events"),
    _own("parquet", "the same tables for pandas, polars and DuckDB, with units and events inside"),
    _own("arrow", "as Parquet, but not packed: Feather, IPC"),
    _own("xlsx", "an Excel workbook with a sheet a part"),
    _own("trc", "markers, for OpenSim"),
    _own("mot", "ground reaction forces by platform or by foot, for OpenSim"),
    _own("sto", "any channels and platforms, for OpenSim, a file a part"),
    _own("json", "events, metadata, platforms, labels, units, gaps; samples on request"),
    _own("npz", "arrays for NumPy"),
    _own("c3d", "a C3D file"),
)
_registered: dict[str, Format] = {}


def register(format: Format) -> None:
    """Add a format of your own, which takes the place of one of the same name.

    A package adds its formats for everybody who installs it by entry points of the group
    ``moxPY.formats``.
    """
    _registered[format.name] = format


def formats() -> dict[str, Format]:
    """All formats by name: our own, those of other packages, those that were registered."""
    return {**{each.name: each for each in _OWN}, **_offered(), **_registered}


@cache
def _offered() -> dict[str, Format]:
    found = [point.load() for point in entry_points(group=_ENTRY_POINTS)]
    return {each.name: each for each in found}
