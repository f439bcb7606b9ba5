"""Where the tables of a batch go: memory, or a file of Parquet."""

from __future__ import annotations

import os
from pathlib import Path
from tempfile import TemporaryDirectory
from typing import TYPE_CHECKING, Any, Literal, Protocol

from ..trial.extras import require
from .group_writer import GroupWriter
from .schema import Schema

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]

#: Packages whose tables can be asked for.
PACKAGES = ("pandas", "polars", "arrow")
SUFFIX = ".parquet"

# A group of rows is in memory as a whole when it is written and when it is read: 16 MB of numbers.
GROUP_VALUES = 2 << 20


class Sink(Protocol):
    """Takes tables one after another, and gives what is asked for in the end."""

    @property
    def is_empty(self) -> bool: ...

    def add(self, table: pyarrow.Table) -> None: ...

    def finished(self) -> Any: ...

    def close(self) -> None: ...


def sink_for(to: str | os.PathLike[str] | None) -> Sink:
    """The sink that `to` names.

    Raises
    ------
    ValueError
        It is neither a package nor a file of Parquet.
    ImportError
        What it needs is not installed.
    """
    require("pyarrow")
    if to is None:
        return InMemory("pandas")
    if isinstance(to, str) and to in PACKAGES:
        return InMemory(to)
    path = Path(to)
    if path.suffix.lower() != SUFFIX:
        raise ValueError(
            f"a table goes to 'pandas', 'polars', 'arrow' or a {SUFFIX} file, not {to!r}"
        )
    return OnDisk(path)


class InMemory:
    """A frame of pandas or polars, or a table of Arrow."""

    def __init__(self, package: Literal["pandas", "polars", "arrow"] | str) -> None:
        if package != "arrow":
            require(package)
        self._package = package
        self._arrow = require("pyarrow")
        self._schema = Schema()
        self._tables: list[pyarrow.Table] = []

    @property
    def is_empty(self) -> bool:
        """Whether nothing was added yet."""
        return self._schema.fields is None

    def add(self, table: pyarrow.Table) -> None:
        self._schema.include(table.schema)
        self._tables.append(table)

    def finished(self) -> Any:
        tables = [self._schema.conform(table) for table in self._tables]
        self._tables.clear()
        table = self._arrow.concat_tables(tables).unify_dictionaries().combine_chunks()
        if self._package == "pandas":
            return table.to_pandas()
        return require("polars").from_arrow(table) if self._package == "polars" else table

    def close(self) -> None:
        self._tables.clear()


class OnDisk:
    """A file of Parquet, written as the tables come; it has its name once it is complete.

    While all tables have the columns of the first one, there is one part, which becomes the file.
    A table that adds a column begins another part, and in the end all parts go into one file.
    """

    def __init__(self, path: Path) -> None:
        self._arrow = require("pyarrow")
        self._path = path
        self._schema = Schema()
        self._tables: list[pyarrow.Table] = []
        self._values = 0
        self._parts: list[Path] = []
        self._writer: GroupWriter | None = None
        self._beside = TemporaryDirectory(prefix=".moxpy-", dir=path.parent)

    @property
    def is_empty(self) -> bool:
        """Whether nothing was added yet."""
        return self._schema.fields is None

    def add(self, table: pyarrow.Table) -> None:
        if self._schema.include(table.schema) and (self._tables or self._writer):
            self._end_part()
        self._tables.append(self._schema.conform(table))
        self._values += table.num_rows * table.num_columns
        if self._values >= GROUP_VALUES:
            self._write()

    def finished(self) -> Path:
        self._end_part()
        (whole, *others) = self._parts
        if others:
            whole = self._joined()
        os.replace(whole, self._path)  # noqa: PTH105
        return self._path

    def close(self) -> None:
        if self._writer is not None:
            self._writer.abandon()
        self._beside.cleanup()

    def _write(self) -> None:
        """A group of rows of what is in memory."""
        if self._writer is None:
            self._parts.append(self._new_path())
            self._writer = GroupWriter(self._parts[-1], self._tables[0].schema)
        self._writer.write(self._arrow.concat_tables(self._tables))
        self._tables, self._values = [], 0

    def _end_part(self) -> None:
        if self._tables:
            self._write()
        if self._writer is not None:
            self._writer.finish()
            self._writer = None

    def _joined(self) -> Path:
        """A file with the groups of all parts."""
        path = self._new_path()
        parquet = require("pyarrow", "parquet")
        self._writer = GroupWriter(path, self._schema.fields)
        for part in self._parts:
            with parquet.ParquetFile(part) as file:
                for group in range(file.num_row_groups):
                    self._writer.write(self._schema.conform(file.read_row_group(group)))
        self._end_part()
        return path

    def _new_path(self) -> Path:
        return Path(self._beside.name) / f"{len(self._parts)}{SUFFIX}"
