"""How spatio-temporal parameters show themselves: in one line, and as a table."""

from __future__ import annotations

from collections.abc import Iterator
from html import escape
from itertools import groupby
from typing import TYPE_CHECKING, NamedTuple

import numpy as np

from .definitions import DEFINITIONS

if TYPE_CHECKING:
    from .result import Gait, GaitSide, LeftOut, Measure

_IN_ONE_LINE = ("stride_length", "walking_speed", "cadence")
_BY_NAME = {definition.name: definition for definition in DEFINITIONS}


class Row(NamedTuple):
    """A parameter in a table, all of it text."""

    title: str
    unit: str
    left: str
    right: str


def rows(gait: Gait) -> list[Row]:
    """The parameters that one side at least has: mean ± deviation."""
    return [
        Row(each.title, each.unit, *(_cell(side, each.name) for side in gait.sides))
        for each in DEFINITIONS
        if any(each.name in side for side in gait.sides)
    ]


def _cell(side: GaitSide, name: str) -> str:
    return shown(side[name]) if name in side else "–"


def shown(measure: Measure) -> str:
    """The mean, with the deviation of several strides: ``0.65 ± 0.01``."""
    decimals = _BY_NAME[measure.name].decimals
    mean = f"{measure.mean:.{decimals}f}"
    return mean if np.isnan(measure.deviation) else f"{mean} ± {measure.deviation:.{decimals}f}"


def remarks(gait: Gait) -> Iterator[str]:
    """What one has to know to read the table, a sentence each."""
    counts = [f"{len(side.strides)} {side.side.lower()}" for side in gait.sides]
    yield f"Strides: {', '.join(counts)}."
    if gait.markers:
        yield (
            f"Lengths by the markers {' and '.join(gait.markers.values())} ({gait.place}), "
            f"{gait.up} upwards{', on a treadmill' if gait.treadmill else ''}."
        )
    for reason, group in groupby(sorted(gait.left_out, key=_grouped), key=_grouped):
        yield f"Left out {_listed(list(group))}: {reason[0]}."
    for note in gait.notes:
        yield f"{note}."


def _grouped(left_out: LeftOut) -> tuple[str, str]:
    return left_out.reason, left_out.side


def _listed(group: list[LeftOut]) -> str:
    names = dict.fromkeys(_BY_NAME[each.name].title.lower() for each in group)
    if len(names) == len({each.title for each in DEFINITIONS}):
        return f"all parameters of the {group[0].side.lower()} side"
    return f"{', '.join(names)} ({group[0].side.lower()})"


def measure_repr(measure: Measure) -> str:
    strides = "1 stride" if measure.count == 1 else f"{measure.count} strides"
    return f"<{measure.name}: {shown(measure)} {measure.unit}, {strides}>"


def side_repr(side: GaitSide) -> str:
    return f"<{side.side.lower()} side: {len(side)} parameters of {len(side.strides)} strides>"


def gait_repr(gait: Gait) -> str:
    """What is most asked for, over both sides."""
    strides = " and ".join(f"{len(side.strides)} {side.side.lower()}" for side in gait.sides)
    length, *others = (
        "" if np.isnan(mean := gait.mean(name)) else f"{mean:.{each.decimals}f} {each.unit}"
        for name, each in ((name, _BY_NAME[name]) for name in _IN_ONE_LINE)
    )
    counted = f"{strides} strides of {length}" if length else f"{strides} strides"
    return f"<gait: {', '.join(filter(None, [counted, *others]))}>"


def gait_html(gait: Gait) -> str:
    """A table for notebooks."""
    left = 'style="text-align: left"'
    heads = "".join(f"<th {left}>{head}</th>" for head in ("", "Left", "Right", ""))
    body = "".join(
        f"<tr><td {left}>{row.title}</td><td>{row.left}</td><td>{row.right}</td>"
        f"<td {left}>{row.unit}</td></tr>"
        for row in rows(gait)
    )
    table = f"<table><thead><tr>{heads}</tr></thead><tbody>{body}</tbody></table>"
    notes = "<br>".join(escape(remark) for remark in remarks(gait))
    return f"<div>{table if body else ''}<small>{notes}</small></div>"
