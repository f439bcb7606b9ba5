"""The group EVENT."""

from __future__ import annotations

import numpy as np

from support.stored_file import INTEGER
from support.structure.list_rules import lists_in_step, required
from support.structure.written_file import Deviations, WrittenFile

LISTS = (
    "CONTEXTS", "LABELS", "DESCRIPTIONS", "SUBJECTS", "TIMES", "ICON_IDS", "GENERIC_FLAGS",
)  # fmt: skip


def parameters(file: WrittenFile) -> Deviations:
    if "EVENT" not in file.groups:
        return
    yield from required(file, {"EVENT:USED": INTEGER})
    count = file.count("EVENT:USED")
    if count:
        yield from required(file, dict.fromkeys(("EVENT:LABELS", "EVENT:TIMES")))
        yield from lists_in_step(file, [f"EVENT:{name}" for name in LISTS], count)


def times(file: WrittenFile) -> Deviations:
    for name, record in file.numbered("EVENT:TIMES"):
        if len(record.dims) != 2 or record.dims[0] != 2:
            yield f"{name}: dimensions {list(record.dims)}, not minutes and seconds"
    if not np.isfinite(file.listed_values("EVENT:TIMES")).all():
        yield "EVENT:TIMES: not finite"
