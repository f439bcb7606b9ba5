"""The curves of several trials over the gait cycle, laid over each other."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple

from ..sides import SIDES, Side
from ..trial.channels import Channels
from ..trial.cycles import Cycle
from ..trial.extras import require
from .colours import NEITHER, SIDE_COLOURS
from .cycle_axes import (
    LAYERS,
    PER_CENT,
    WIDTHS,
    begin,
    draw_reference,
    name_below,
    reference_handle,
    size_of,
    widen,
)
from .cycle_panels import Panel, panels_of
from .cycle_reference import reference_of
from .cycles_of_kind import cycles_of_kind
from .panels import Panels, note, plain

if TYPE_CHECKING:
    from ..trial import Trial

# Sides have their colours, so trials differ by the way their lines are drawn.
_LINES: tuple[Any, ...] = (
    "-",
    (0, (4, 1.5)),
    (0, (1, 1)),
    (0, (5, 1, 1, 1)),
    (0, (3, 1, 1, 1, 1, 1)),
    (0, (8, 2)),
)


class _Entry(NamedTuple):
    """A trial in the picture."""

    name: str
    line: Any  #: how its lines are drawn
    channels: Channels
    cycles: dict[Side, list[Cycle]]


def laid_over(
    kind: str,
    trials: Sequence[tuple[str, Trial]],
    labels: Sequence[str],
    reference: Mapping[str, Any] | None = None,
) -> Any:
    """A grid as of `angles`, with the mean of each trial's cycles in each panel: those that
    `cycles_of_kind` gives.

    Deviations are left out: so many bands would hide the curves.

    Parameters
    ----------
    kind : {"angles", "moments", "powers"}
    trials : sequence of (str, Trial)
        With what a legend calls each. All have cycles of that kind, and channels of all labels,
        in the same units.
    labels : sequence of str
    reference : mapping, optional
        As of `angles`.

    Returns
    -------
    ndarray
        Axes, shape (joints, components), or (1, joints).
    """
    first, *others = (getattr(trial, kind) for _, trial in trials)
    content = panels_of(first, labels, others)
    bands = reference_of(reference)
    entries = [
        _Entry(
            name,
            _LINES[number % len(_LINES)],
            getattr(trial, kind),
            cycles_of_kind(trial, kind),
        )
        for number, (name, trial) in enumerate(trials)
    ]
    panels = Panels(None, content.shape, size_of(content))
    for axes, panel in zip(panels.axes.flat, content.flat, strict=True):
        if panel is None:
            axes.set_visible(False)
            continue
        draw_reference(axes, panel, bands)
        begin(axes, panel)
        seen = [_draw(axes, panel, entry) for entry in entries]
        if not any(seen):
            note(axes, "not seen in any cycle")
        widen(axes, panel.unit)
    name_below(panels.axes)
    panels.align()
    panels.legend(_explained(entries, bool(bands)))
    return panels.axes


def _draw(axes: Any, panel: Panel, entry: _Entry) -> bool:
    """The mean of each side; whether there is any."""
    is_seen = False
    for side, channel in panel.channels:
        if not entry.cycles[side]:
            continue
        own = entry.channels[channel.label]
        mean, _, count = own.mean_cycle(entry.cycles[side], len(PER_CENT))
        axes.plot(
            PER_CENT, mean[:, panel.component], color=SIDE_COLOURS[side], linestyle=entry.line,
            linewidth=WIDTHS[side], label=f"{side}, {plain(entry.name)}", zorder=LAYERS[side],
        )  # fmt: skip
        is_seen = is_seen or bool(count[:, panel.component].any())
    return is_seen


def _explained(entries: Sequence[_Entry], banded: bool) -> list[Any]:
    """Colours by side, lines by trial."""
    line = require("matplotlib", "lines").Line2D
    lines = [
        line([], [], color=SIDE_COLOURS[side], linewidth=WIDTHS[side], label=side)
        for side in SIDES
        if any(entry.cycles[side] for entry in entries)
    ]
    lines += [
        line([], [], color=NEITHER, linestyle=entry.line, linewidth=1.4, label=_counted(entry))
        for entry in entries
    ]
    return lines + ([reference_handle()] if banded else [])


def _counted(entry: _Entry) -> str:
    counts = [f"{len(own)} {side.lower()}" for side, own in entry.cycles.items()]
    return plain(f"{entry.name} ({', '.join(counts)})")
