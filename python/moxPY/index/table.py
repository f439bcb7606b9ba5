"""The file of the table: Parquet, replaced as a whole."""

from __future__ import annotations

import os
from collections.abc import Iterable
from pathlib import Path
from tempfile import TemporaryDirectory
from typing import NamedTuple

from ..functions.plugins import moxGetVersion
from ..trial.extras import require
from .columns import COLUMNS, schema
from .row import Row

# Entries of the file that say what it is, and by whom its rows were made.
_MARK, _VERSION = b"moxPY.index", b"moxPY.version"


class Index(NamedTuple):
    """What a file of a table says."""

    rows: list[Row]
    current: bool  #: whether this version made it; another one may say other things of a trial


def load(path: Path) -> Index:
    """The rows of a file; none where there is no file.

    Raises
    ------
    ValueError
        It is no such table.
    ImportError
        PyArrow is missing.
    """
    arrow, parquet = require("pyarrow"), require("pyarrow", "parquet")
    if not path.exists():
        return Index([], current=True)
    try:
        table = parquet.read_table(path)
    except arrow.ArrowException as error:
        raise ValueError(f"'{path}': this is no index of trials") from error
    about = table.schema.metadata or {}
    if _MARK not in about:
        raise ValueError(f"'{path}': this is no index of trials")
    is_current = about.get(_VERSION) == moxGetVersion().encode()
    if not is_current or table.schema.names != list(COLUMNS):
        return Index([], current=False)
    # As whole nanoseconds, which Python's own instants cannot hold.
    at = table.schema.names.index("modified")
    table = table.set_column(at, "modified", table["modified"].cast(arrow.int64()))
    return Index(table.to_pylist(), current=True)


def save(path: Path, rows: Iterable[Row]) -> None:
    """Write rows, in order, to a file that takes the place of an older one when it is complete.

    Raises
    ------
    OSError
        The file cannot be made; what was there before stays.
    """
    arrow, parquet = require("pyarrow"), require("pyarrow", "parquet")
    about = {_MARK: b"1", _VERSION: moxGetVersion().encode()}
    table = arrow.Table.from_pylist(list(rows), schema=schema(about))
    folder = path.parent
    folder.mkdir(parents=True, exist_ok=True)
    with TemporaryDirectory(prefix=".moxpy-", dir=folder) as beside:
        written = Path(beside) / path.name
        parquet.write_table(table, written)
        os.replace(written, path)  # noqa: PTH105
