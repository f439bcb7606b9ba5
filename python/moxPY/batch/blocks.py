"""Channels of many files on their way into a table."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass, field
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ..trial import Channels
from ..trial.bridges.tables import channels_table, wide_names
from ..trial.extras import require

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]

COLUMN = "file"


@dataclass(frozen=True)
class Block:
    """Channels of one file: their samples, not yet as columns, which take time to make."""

    names: tuple[str, ...]
    time: NDArray[np.float64]
    values: NDArray[np.float64]  #: (rows, names without that of the time)

    @classmethod
    def of(cls, channels: Channels) -> Block:
        """The samples of channels, which stay when the trial is closed."""
        table = channels_table(channels, {})
        return cls(("time", *wide_names(table)), table.time, table.values)


@dataclass
class Stack:
    """Blocks with the same names on each other, with room for some rows."""

    names: tuple[str, ...]
    capacity: int
    files: list[Path] = field(default_factory=list)
    lengths: list[int] = field(default_factory=list)
    rows: int = 0

    def __post_init__(self) -> None:
        self._columns = np.empty((len(self.names), self.capacity))

    def fits(self, block: Block) -> bool:
        """Whether the block has the same columns, and there is room for it."""
        return self.rows + len(block.time) <= self.capacity and self.names == block.names

    def add(self, file: Path, block: Block) -> None:
        rows = slice(self.rows, self.rows + len(block.time))
        self._columns[0, rows] = block.time
        self._columns[1:, rows] = block.values.T
        self.rows = rows.stop
        self.files.append(file)
        self.lengths.append(len(block.time))

    def table(self) -> pyarrow.Table:
        """The table of all of them, with the column of files. Nothing can be added afterwards."""
        arrow = require("pyarrow")
        content, kind = arrow.py_buffer(self._columns), arrow.float64()
        step, size = self._columns.strides[0], 8 * self.rows
        arrays = [
            arrow.Array.from_buffers(kind, self.rows, [None, content.slice(place * step, size)])
            for place in range(len(self.names))
        ]
        # That there are no nulls spares the file to say so of each number.
        fields = [arrow.field(name, kind, nullable=False) for name in self.names]
        table = arrow.Table.from_arrays(arrays, schema=arrow.schema(fields))
        return with_files(table, self.files, self.lengths)


def stack_of(file: Path, block: Block) -> Stack:
    """A block alone."""
    stack = Stack(block.names, len(block.time))
    stack.add(file, block)
    return stack


def with_files(table: Any, files: Iterable[Path], lengths: Iterable[int]) -> Any:
    """The table behind a column with the file of each row; each name is in memory once."""
    arrow = require("pyarrow")
    names = arrow.array([str(file) for file in files], arrow.string())
    places = np.repeat(np.arange(len(names), dtype=np.int32), np.asarray(lengths, dtype=np.int64))
    return table.add_column(0, COLUMN, arrow.DictionaryArray.from_arrays(places, names))
