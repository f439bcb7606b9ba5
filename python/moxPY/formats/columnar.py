"""Parts of a trial as Arrow tables, which Parquet and Arrow files hold."""

from __future__ import annotations

import json
from collections.abc import Iterator
from dataclasses import asdict
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.extras import require
from .about import about
from .options import Options
from .part import TABLES, Part, chosen, events_of, part_of
from .text import distinct, plain

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]

    from ..trial import Trial

_METADATA = b"moxPY"  # the key of ours among the metadata of a schema


def tables(trial: Trial, options: Options, format: str) -> Iterator[tuple[str, pyarrow.Table]]:
    """The parts with their names.

    What there is to say of the trial is JSON in the metadata of the schema, under ``moxPY``; unit
    and names of a column are in the metadata of its field.
    """
    packaged = require("pyarrow")
    offered = [part for part in TABLES if part != "trial"]
    for name in chosen(trial, options, offered, format):
        if name == "events":
            table = _events(packaged, trial)
        else:
            part = part_of(trial, name, options)
            table = _long(packaged, part) if options.long else _wide(packaged, part)
        said = _said(trial, options, name)
        yield name, table.replace_schema_metadata({**(table.schema.metadata or {}), **said})


def _said(trial: Trial, options: Options, part: str) -> dict[bytes, bytes]:
    events = [
        {name: plain(value) if isinstance(value, str) else value for name, value in event.items()}
        for event in map(asdict, trial.events)
    ]
    content = {"part": part, **about(trial, options), "events": events}
    return {_METADATA: json.dumps(content, ensure_ascii=False).encode()}


def _wide(packaged: Any, part: Part) -> pyarrow.Table:
    names = distinct(["time", *part.names("_")])
    fields = [packaged.field(names[0], packaged.float64(), metadata={"unit": "s"})]
    arrays = [packaged.array(part.time)]
    columns = np.asfortranarray(part.values)
    described = zip(names[1:], part.columns, part.units, strict=True)
    for position, (name, pieces, unit) in enumerate(described):
        told = {"unit": unit, **dict(zip(part.levels, map(str, pieces), strict=True))}
        fields.append(packaged.field(name, packaged.float64(), metadata=told))
        arrays.append(packaged.array(columns[:, position]))
    return packaged.Table.from_arrays(arrays, schema=packaged.schema(fields))


def _long(packaged: Any, part: Part) -> pyarrow.Table:
    rows, count = len(part.time), len(part.columns)
    owner = np.repeat(np.arange(count, dtype=np.int32), rows)
    columns = {"time": packaged.array(np.tile(part.time, count))}
    for level, names in zip(part.levels, zip(*part.columns, strict=True), strict=True):
        columns[level] = _repeated(packaged, owner, list(names))
    columns["value"] = packaged.array(part.values.ravel(order="F"))
    columns["unit"] = _repeated(packaged, owner, part.units)
    return packaged.table(columns)


def _repeated(packaged: Any, owner: Any, values: list[Any]) -> Any:
    """A column that names, in each row, something of the one that the row belongs to."""
    return packaged.array(values).take(packaged.array(owner))


def _events(packaged: Any, trial: Trial) -> pyarrow.Table:
    types = {"time": packaged.float64(), "id": packaged.int64()}
    columns = events_of(trial)
    fields = [
        packaged.field(
            name,
            types.get(name, packaged.string()),
            metadata={"unit": "s"} if name == "time" else None,
        )
        for name in columns
    ]
    return packaged.table(columns, schema=packaged.schema(fields))
