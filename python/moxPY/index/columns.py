"""Names and types of the table."""

from __future__ import annotations

from typing import Any

from ..trial.extras import require
from ..trial.kinds import KINDS

#: Name -> type, as PyArrow calls it; a dictionary is a structure, a list one of what it holds.
COLUMNS: dict[str, Any] = {
    "file": "string",
    "subject": "string",
    "date": "string",
    "frames": "int64",
    "first_frame": "int64",
    "rate": "float64",
    "analog_rate": "float64",
    "duration": "float64",
    **dict.fromkeys(KINDS, "int32"),
    "rotations": "int32",
    "platforms": "int32",
    "marker_labels": ["string"],
    "analog_labels": ["string"],
    "lost_frames": "int64",
    "longest_gap": "int64",
    "events": [{"time": "float64", "context": "string", "label": "string"}],
    "checks": [{"rule": "string", "severity": "string", "channel": "string", "text": "string"}],
    "odd": ["string"],
    "size": "int64",
    "modified": "timestamp",
    "sha256": "string",
}


def schema(metadata: dict[bytes, bytes]) -> Any:
    """The schema of the table, for PyArrow."""
    arrow = require("pyarrow")
    fields = [arrow.field(name, _type(arrow, what)) for name, what in COLUMNS.items()]
    return arrow.schema(fields, metadata)


def _type(arrow: Any, what: Any) -> Any:
    if isinstance(what, list):
        return arrow.list_(_type(arrow, what[0]))
    if isinstance(what, dict):
        return arrow.struct([(name, _type(arrow, each)) for name, each in what.items()])
    return arrow.timestamp("ns", "UTC") if what == "timestamp" else getattr(arrow, what)()
