"""The axes of panels over the gait cycle, whatever curves they hold."""

from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import NDArray

from ..sides import Side
from ..trial.extras import require
from .colours import NEITHER, REFERENCE
from .cycle_panels import Panel
from .panels import AxesArray, plain

#: The instants that curves are drawn at.
PER_CENT = np.linspace(0.0, 100.0, 101)

#: Of lines. The left one is the wider one and lies below, so that both show where they are one.
WIDTHS: dict[Side, float] = {"Left": 2.8, "Right": 1.1}
LAYERS: dict[Side, float] = {"Left": 3.0, "Right": 3.1}

# A range below this is not blown up to the height of a panel: rest would look like movement.
_LEAST_RANGE = {"deg": 10.0, "rad": 0.175}
_REFERENCE: dict[str, Any] = {"color": REFERENCE, "alpha": 0.35, "label": "reference"}


def size_of(content: NDArray[np.object_]) -> tuple[float, float]:
    """Of a figure with these panels, in inches."""
    rows, columns = content.shape
    return 0.6 + 2.9 * columns, 1.3 + 1.75 * rows


def begin(axes: Any, panel: Panel) -> None:
    """What a panel has before the first curve."""
    axes.set_title(plain(panel.title), loc="left", fontsize="medium")
    axes.set_ylabel(plain(panel.unit or "no unit"), fontsize="small")
    axes.set_xlim(0.0, 100.0)
    axes.set_xticks([0, 25, 50, 75, 100])
    axes.tick_params(labelsize="small")
    axes.axhline(0.0, color=NEITHER, linewidth=0.6, zorder=1)


def draw_reference(axes: Any, panel: Panel, bands: dict[str, Any]) -> None:
    """The grey band of what is usual, where there is one for a panel."""
    band = next((bands[name] for name in panel.names if name in bands), None)
    if band is not None:
        mean, deviation = (part[:, panel.component] for part in band)
        axes.fill_between(
            np.linspace(0.0, 100.0, len(mean)), mean - deviation, mean + deviation,
            linewidth=0, zorder=0, **_REFERENCE,
        )  # fmt: skip


def reference_handle() -> Any:
    """What a legend shows of it."""
    return require("matplotlib", "patches").Patch(**_REFERENCE)


def widen(axes: Any, unit: str) -> None:
    """Leave a panel of hardly any movement flat, once its curves are drawn."""
    low, high = axes.get_ylim()
    short = _LEAST_RANGE.get(unit.lower(), 0.0) - (high - low)
    if short > 0.0:
        axes.set_ylim(low - short / 2, high + short / 2)


def name_below(grid: AxesArray) -> None:
    """Name the horizontal axis below the last panel that is shown of each column."""
    for column in grid.T:
        shown = [axes for axes in column if axes.get_visible()]
        if shown:
            shown[-1].set_xlabel("gait cycle (%)")
