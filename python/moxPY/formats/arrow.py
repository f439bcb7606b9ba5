"""Arrow files (also called Feather or IPC): as Parquet, for reading without unpacking."""

from __future__ import annotations

from typing import TYPE_CHECKING

from ..trial.extras import require
from .columnar import tables
from .options import Options
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """Columns in double precision, NaN where a point was not seen; not compressed."""
    begin = require("pyarrow", "ipc").new_file
    for name, table in tables(trial, options, "Arrow"):
        with begin(str(target.path(name)), table.schema) as file:
            file.write_table(table)
