"""What comes of the files, brought to a sink in few tables."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING

from .blocks import COLUMN, Block, Stack, stack_of, with_files
from .sinks import GROUP_VALUES, Sink

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]


class OwnColumn(ValueError):
    """Rows have a column that the table has for the file."""


class Stacking:
    """Takes the rows of one file after another; `flush` ends it.

    The first block with other names goes on at once, so that the sink can refuse its columns;
    those with the same names that follow cannot be refused, and go on together.
    """

    def __init__(self, sink: Sink) -> None:
        self._sink = sink
        self._stack: Stack | None = None

    def add(self, file: Path, rows: pyarrow.Table | Block) -> None:
        """Add the rows of a file.

        Raises
        ------
        Misfit
            Its columns do not go together with those of the files before.
        OwnColumn
            There is a column for the file among them.
        """
        names = rows.names if isinstance(rows, Block) else rows.schema.names
        if isinstance(rows, Block) and self._stack and self._stack.names == rows.names:
            self._add_to_stack(file, rows)
            return
        if COLUMN in names:
            raise OwnColumn(f"the table has a column '{COLUMN}' of its own")
        self.flush()
        if isinstance(rows, Block):
            self._sink.add(stack_of(file, rows).table())
            self._stack = Stack(rows.names, GROUP_VALUES // len(rows.names))
        else:
            self._sink.add(with_files(rows, [file], [rows.num_rows]))

    def flush(self) -> None:
        """Let the sink have what came together."""
        stack, self._stack = self._stack, None
        if stack and stack.rows:
            self._sink.add(stack.table())

    def _add_to_stack(self, file: Path, block: Block) -> None:
        assert self._stack
        if not self._stack.fits(block):
            capacity = self._stack.capacity
            self.flush()
            self._stack = Stack(block.names, max(capacity, len(block.time)))
        self._stack.add(file, block)
