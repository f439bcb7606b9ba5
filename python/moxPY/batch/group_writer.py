"""A file of Parquet that is written beside other work."""

from __future__ import annotations

from concurrent.futures import Future, ThreadPoolExecutor, wait
from pathlib import Path
from typing import TYPE_CHECKING, Any

from ..trial.extras import require

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]


class GroupWriter:
    """Writes groups of rows, one while the next one comes together.

    What fails, such as a disk that is full, is raised by the next call.
    """

    def __init__(self, path: Path, schema: pyarrow.Schema) -> None:
        is_number = require("pyarrow").types.is_floating
        numbers = [field.name for field in schema if is_number(field.type)]
        others = [field.name for field in schema if not is_number(field.type)]
        # Samples hardly repeat, and looking for those that do takes most of the time. They differ
        # little in their first bytes, and most are singles with zeros behind: bytes of one place
        # together take a third of the room, and less time.
        self._file: Any = require("pyarrow", "parquet").ParquetWriter(
            path,
            schema,
            use_dictionary=others,
            write_statistics=others,
            use_byte_stream_split=numbers,
            compression="zstd",
            compression_level=1,
        )
        self._thread = ThreadPoolExecutor(1, thread_name_prefix="moxPY-writing")
        self._last: Future[None] = Future()
        self._last.set_result(None)

    def write(self, table: pyarrow.Table) -> None:
        """Begin to write a group when the one before it is written."""
        self._last.result()
        rows = max(table.num_rows, 1)
        self._last = self._thread.submit(self._file.write_table, table, row_group_size=rows)

    def finish(self) -> None:
        """The file is complete when this returns."""
        self._last.result()
        self._thread.shutdown()
        self._file.close()

    def abandon(self) -> None:
        """End without an error; the file is good for nothing."""
        wait([self._last])
        self._thread.shutdown()
        self._file.close()
