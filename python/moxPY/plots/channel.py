"""A channel over time, with its gaps and the events."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.channel import Channel
from ..trial.extras import require
from ..trial.gaps import runs_of
from ..trial.labels import nearest
from ..trial.samples import FloatArray
from .colours import COMPONENT_COLOURS, GAP
from .occasions import mark_events
from .panels import Panels, note, require_clock, with_unit

if TYPE_CHECKING:
    from .plots import Plots

AXES = ("x", "y", "z")
_QUANTITIES = {
    "markers": "position", "angles": "angle", "forces": "force", "moments": "moment",
    "powers": "power", "analogs": "signal",
}  # fmt: skip


def channel(
    plots: Plots,
    channel: str | Channel,
    component: str | None = None,
    *,
    events: bool = True,
    ax: Any = None,
) -> Any:
    """A channel over time: gaps as grey stretches, events as upright lines.

    Lines of events are red for the left side, blue for the right one; those of foot strikes are
    drawn through, those of foot offs dashed.

    Parameters
    ----------
    channel : str or Channel
        The label of a point or of an analog channel, or the channel itself.
    component : {"x", "y", "z"}, optional
        One component of a point; all three when left out.
    events : bool
        Whether events are drawn.
    ax : Axes or array of three Axes, optional
        Three for a point of which all components are drawn, else one.

    Returns
    -------
    Axes or ndarray
        One of an analog channel or of one component; else three, x on top.

    Raises
    ------
    KeyError
        There is no such channel.
    ValueError
        The trial has no frames or no rate, or there is no such component.
    ImportError
        matplotlib is missing.

    Examples
    --------
    >>> axes = trial.plot.channel("LASI", "z")
    >>> axes.get_ylabel()
    'z (mm)'
    """
    shown = _found(plots, channel)
    require_clock(shown.trial)
    drawn, values, time = _components(shown, component), shown.values, shown.time
    if not len(time):
        raise ValueError(f"the channel '{shown.label}' has no samples")
    count = len(drawn)
    panels = Panels(ax, (count, 1), (8.0, 1.4 + (1.5 if count > 1 else 2.2) * count), sharex=True)
    explained: list[Any] = []
    period = 1.0 / shown.rate
    for axes, (name, index, colour) in zip(panels.axes[:, 0], drawn, strict=True):
        samples = values if index is None else values[:, index]
        axes.plot(time, samples, color=colour, linewidth=1.3, **_dot(len(samples)))
        axes.set_ylabel(with_unit(name, shown.unit))
        axes.set_xlim(time[0] - period / 2, time[-1] + period / 2)
        gaps = _draw_gaps(axes, time, samples, period)
        explained = explained or gaps
    if events:
        explained = explained + mark_events(panels.axes.flat, shown.trial)
    panels.axes[-1, 0].set_xlabel("time (s)")
    panels.align()
    panels.title(f"{shown.label}: {_QUANTITIES[shown.kind]}", shown.trial)
    panels.legend(explained)
    return panels.axes[0, 0] if component or count == 1 else panels.axes[:, 0]


def _found(plots: Plots, channel: str | Channel) -> Channel:
    if isinstance(channel, Channel):
        return channel
    trial = plots.trial
    for mapping in (trial.points, trial.analogs):
        if channel in mapping:
            return mapping[channel]
    labels = [*trial.points.labels, *trial.analogs.labels]
    raise KeyError(f"no channel '{channel}'{nearest(channel, labels)}")


def _components(channel: Channel, component: str | None) -> list[tuple[str, int | None, str]]:
    """Name, column and colour of what is drawn."""
    if channel.kind == "analogs":
        if component is not None:
            raise ValueError(f"the analog channel '{channel.label}' has no components")
        return [(channel.label, None, COMPONENT_COLOURS[2])]
    if component is not None and component not in AXES:
        raise ValueError(f"a component is x, y or z, not {component!r}")
    every = list(zip(AXES, range(3), COMPONENT_COLOURS, strict=True))
    return [each for each in every if component in (None, each[0])]


def _dot(samples: int) -> dict[str, Any]:
    """How a single sample, of which there is no line, shows."""
    return {"marker": "o"} if samples == 1 else {}


def _draw_gaps(axes: Any, time: FloatArray, samples: FloatArray, period: float) -> list[Any]:
    """Shade where there is no value; what a legend needs to explain it."""
    missing = np.isnan(samples)
    if missing.all():
        note(axes, "not seen in any frame")
    for first, last in runs_of(missing):
        axes.axvspan(
            time[first] - period / 2, time[last] + period / 2, color=GAP, alpha=0.45, linewidth=0,
            zorder=0,
        )  # fmt: skip
    patch = require("matplotlib", "patches").Patch
    return [patch(color=GAP, alpha=0.45, label="not seen")] if missing.any() else []
