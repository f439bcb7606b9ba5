"""When each marker was not seen."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

import numpy as np

from ..checks.segment_points import segment_points
from ..trial.gaps import runs_of
from ..trial.samples import FloatArray
from .colours import GAP
from .panels import Panels, plain

if TYPE_CHECKING:
    from ..trial import Trial
    from .plots import Plots

_MISSING = "#a50f15"
# So many rows are legible on a page; of more, those that are complete are left out.
_ROWS = 60
# However many have gaps, more rows than these would take minutes and cover each other.
_MOST_ROWS = 3 * _ROWS


def gaps(plots: Plots, labels: Iterable[str] | None = None, *, ax: Any = None) -> Any:
    """A chart of markers by frames: dark where a marker was not seen.

    At the right stands how much of the trial each marker lacks. The ends of segments' axes, which
    models write among the markers, are left out: they have the gaps of the markers that they are
    computed from. Of more than 60 markers only those with gaps are listed, of more than 180 with
    gaps those that were missing longest; where none has any, one row stands for all.

    Parameters
    ----------
    labels : iterable of str, optional
        Points of any kind, in this order; the markers when left out.
    ax : Axes, optional

    Returns
    -------
    Axes

    Raises
    ------
    KeyError
        There is no point of a label.
    ValueError
        There are no markers, or no frames.
    ImportError
        matplotlib is missing.
    """
    trial = plots.trial
    if labels is None:
        shown, values = _markers(trial)
    else:
        shown = list(labels)
        channels = [trial.points[label].values for label in shown]
        values = np.stack(channels, axis=1) if channels else np.empty((trial.frames, 0, 3))
    if values.shape[1] == 0 or values.shape[0] == 0:
        raise ValueError(f"the trial has no {'markers' if trial.frames else 'frames'}")
    missing = np.isnan(values).any(axis=2)
    total = len(shown)
    incomplete = int(missing.any(axis=0).sum())
    count = sum(len(runs_of(flags)) for flags in missing.T)
    if labels is None and total > _ROWS:
        shown, missing = _worth_a_row(shown, missing)
    rows = min(len(shown), _MOST_ROWS)
    panels = Panels(ax, (1, 1), (8.0, 1.3 + 0.17 * rows))
    axes = panels.axes[0, 0]
    _draw(axes, shown, missing, trial.first_frame)
    axes.set_xlabel("frame")
    panels.title(f"{_counted(count, 'gap')} in {incomplete} of {_counted(total, 'marker')}", trial)
    return axes


def _worth_a_row(labels: list[str], missing: Any) -> tuple[list[str], Any]:
    """Of many markers those with gaps in their order, no more than can be read; or one row."""
    lost = missing.sum(axis=0)
    if not lost.any():
        return [f"all {len(labels)}"], missing[:, :1]
    longest = np.argsort(-lost, kind="stable")[: min(_MOST_ROWS, np.count_nonzero(lost))]
    kept = np.sort(longest)
    return [labels[i] for i in kept], missing[:, kept]


def _markers(trial: Trial) -> tuple[list[str], FloatArray]:
    labels, values = trial.markers.labelled_values()
    computed = segment_points(labels)
    kept = [i for i, label in enumerate(labels) if label not in computed]
    return [labels[i] for i in kept], values[:, kept]


def _draw(axes: Any, labels: list[str], missing: Any, first_frame: int) -> None:
    frames = len(missing)
    start = first_frame - 0.5
    for row, flags in enumerate(missing.T):
        axes.broken_barh([(start, frames)], (row - 0.35, 0.7), color=GAP, alpha=0.3, linewidth=0)
        runs = [(start + int(first), int(last - first + 1)) for first, last in runs_of(flags)]
        if runs:
            # The edge keeps a single frame of a long trial visible.
            axes.broken_barh(
                runs, (row - 0.35, 0.7), color=_MISSING, edgecolor=_MISSING, linewidth=0.6,
                label=labels[row],
            )  # fmt: skip
            axes.annotate(
                _share(flags.mean()), (1.0, row), (4, 0), xycoords=("axes fraction", "data"),
                textcoords="offset points", va="center", fontsize="x-small", color=_MISSING,
            )  # fmt: skip
    axes.set_yticks(range(len(labels)), [plain(label) for label in labels], fontsize="x-small")
    axes.tick_params(axis="y", length=0)
    axes.set_ylim(len(labels) - 0.4, -0.6)
    axes.set_xlim(start, start + frames)
    axes.grid(False)
    axes.spines["left"].set_visible(False)
    axes.set_ylabel("marker")


def _share(share: float) -> str:
    return "< 1 %" if share < 0.01 else f"{share:.0%}".replace("%", " %")


def _counted(count: int, what: str) -> str:
    return f"{count or 'no'} {what}{'' if count == 1 else 's'}"
