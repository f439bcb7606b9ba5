"""Parquet: a file a part, with what there is to say of the trial in its schema."""

from __future__ import annotations

from typing import TYPE_CHECKING

from ..trial.extras import require
from .columnar import tables
from .options import Options
from .target import Target

if TYPE_CHECKING:
    from ..trial import Trial


def write(trial: Trial, target: Target, options: Options) -> None:
    """Columns in double precision, NaN where a point was not seen."""
    save = require("pyarrow", "parquet").write_table
    for name, table in tables(trial, options, "Parquet"):
        save(table, target.path(name))
