"""How trials and their parts show themselves: in one line, and as tables in a notebook."""

from __future__ import annotations

from collections.abc import Callable, Iterable, Sequence
from html import escape
from itertools import groupby
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from .asking import CLOSED
from .kinds import KINDS

if TYPE_CHECKING:
    from .channels import Channels
    from .events import Event
    from .gaps import Gap
    from .platform import Platform
    from .trial import Trial

# Rows of a table, and items of a cell, before the rest is only counted.
_ROWS = 12
_ITEMS = 4


def one_line(name: str, describe: Callable[[], str]) -> str:
    """``<name: …>``, whatever state the trial is in: a text that is shown while somebody looks for
    an error must not be another one."""
    try:
        return f"<{name}{describe()}>".replace("\n", r"\n")
    except Exception as error:
        reason = str(error.args[0]) if error.args else type(error).__name__
        return f"<{name}: {'closed' if reason == CLOSED else reason}>"


def abridged(texts: Sequence[str]) -> str:
    """The texts, the first three and the last one where there are many; "none" of none."""
    shown = texts if len(texts) <= _ITEMS else [*texts[: _ITEMS - 1], "…", texts[-1]]
    return ", ".join(shown) or "none"


def trial_repr(trial: Trial) -> str:
    """What a trial has, in one line."""
    return one_line(type(trial).__name__, lambda: f": {_summary(trial)}")


def _summary(trial: Trial) -> str:
    counts = [
        _counted(len(part), kind)
        for kind, part in [
            *((kind, getattr(trial, kind)) for kind in KINDS),
            ("events", trial.events),
            ("platforms", trial.platforms),
            ("rotations", trial.rotations),
        ]
        if len(part)
    ]
    left_out = [_counted(len(units), kind) for kind, units in trial.unread.items()]
    text = ", ".join([*_name(trial), _clock(trial), *counts])
    return f"{text}; not read: {', '.join(left_out)}" if left_out else text


def _name(trial: Trial) -> list[str]:
    """The name of the file, where the trial knows one."""
    path = getattr(trial, "path", None)
    return [Path(path).name] if path else []


def _clock(trial: Trial) -> str:
    frames = _counted(trial.frames, "frames")
    if not trial.rate > 0.0:
        return frames
    return f"{frames} at {trial.rate:g} Hz ({trial.duration:g} s)"


def _counted(count: int, plural: str) -> str:
    return f"{count} {plural.removesuffix('s') if count == 1 else plural}"


def trial_html(trial: Trial) -> str:
    """Tables of what a trial has, for notebooks. Every text of the file is escaped."""
    try:
        return _page(trial)
    except Exception:
        return f"<code>{escape(trial_repr(trial))}</code>"


def _page(trial: Trial) -> str:
    heading = " · ".join([*_name(trial), _clock(trial), _frame_numbers(trial)])
    channels = len(trial.points) + len(trial.analogs)
    gaps = _gap_rows(trial.points.gaps() if len(trial.points) else [])
    plates = _platform_rows(trial)
    events = [_event_row(event) for event in trial.events]
    tables = [
        _table(f"Channels ({channels})", ["", "", "Unit", "Rate", "Labels"], _kind_rows(trial)),
        _table(f"Not seen ({len(gaps)})", ["Point", "Frames", "Runs"], gaps),
        _table(f"Events ({len(events)})", ["Time", "Context", "Label"], events),
        _table(f"Platforms ({len(plates)})", ["", "Type", "Size", "Channels"], plates),
    ]
    return (
        f"<div><p><b>{escape(heading)}</b></p>"
        f'<div style="display: flex; flex-wrap: wrap; gap: 0 2em; align-items: flex-start">'
        f"{''.join(tables)}</div></div>"
    )


def _frame_numbers(trial: Trial) -> str:
    if trial.frames == 0:
        return "no frames"
    return f"frames {trial.first_frame} to {trial.last_frame}"


def _kind_rows(trial: Trial) -> list[list[str]]:
    kinds: list[Channels] = [getattr(trial, kind) for kind in KINDS]
    return [
        [
            kind.capitalize(),
            str(len(channels)),
            abridged(list(dict.fromkeys(channels.units.values()))),
            f"{trial.analogs.rate if kind == 'analogs' else trial.rate:g} Hz",
            abridged(channels.labels),
        ]
        for kind, channels in zip(KINDS, kinds, strict=True)
        if len(channels)
    ]


def _gap_rows(gaps: list[Gap]) -> list[list[str]]:
    """A row a point."""
    rows = []
    for label, group in groupby(gaps, key=lambda gap: gap.label):
        runs = list(group)
        texts = [_run(gap) for gap in runs]
        rows.append([label, str(sum(gap.frames for gap in runs)), abridged(texts)])
    return rows


def _run(gap: Gap) -> str:
    return str(gap.first) if gap.first == gap.last else f"{gap.first}–{gap.last}"


def _event_row(event: Event) -> list[str]:
    return [f"{event.time:.3f} s", event.context, event.label]


def _platform_rows(trial: Trial) -> list[list[str]]:
    return [
        [
            str(plate.index),
            str(plate.type),
            _size(plate),
            abridged(plate.labels),
        ]
        for plate in trial.platforms
    ]


def _size(plate: Platform) -> str:
    """Its edges along x and y."""
    corners = plate.corners
    edges = np.linalg.norm([corners[0] - corners[1], corners[0] - corners[3]], axis=1)
    if not np.isfinite(edges).all():
        return ""
    return f"{edges[0]:.4g} × {edges[1]:.4g} {plate.units.point}".rstrip()


def _table(title: str, heads: Sequence[str], rows: Sequence[Sequence[str]]) -> str:
    """A table with a caption, nothing without rows."""
    if not rows:
        return ""
    body = "".join(_row("td", row) for row in rows[:_ROWS])
    if len(rows) > _ROWS:
        body += f'<tr><td colspan="{len(heads)}">… and {len(rows) - _ROWS} more</td></tr>'
    caption = f'<caption style="text-align: left">{title}</caption>'
    return f"<table>{caption}<thead>{_row('th', heads)}</thead><tbody>{body}</tbody></table>"


def _row(cell: str, texts: Iterable[Any]) -> str:
    left = 'style="text-align: left"'
    return f"<tr>{''.join(f'<{cell} {left}>{escape(text)}</{cell}>' for text in texts)}</tr>"
