"""The axes that a picture is drawn into: its own ones, or those that it is given."""

from __future__ import annotations

import sys
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ..readable import readable
from ..trial.extras import require
from .colours import FAINT

if TYPE_CHECKING:
    from matplotlib.axes import Axes
    from matplotlib.figure import Figure

    from ..trial import Trial

#: Axes, in an array of the shape that a picture says.
AxesArray = NDArray[Any]


class Panels:
    """The axes of a picture.

    A new figure belongs to pyplot where somebody has imported that, or works in IPython: it shows
    there as any other. Otherwise nobody keeps it but its axes, so that nothing piles up in a batch.

    Parameters
    ----------
    ax : Axes, array of Axes or None
        What the caller gave: as many axes as the picture has panels; None for new ones.
    shape : (int, int)
        Rows and columns.
    size : (float, float)
        Of a new figure, in inches.
    **options
        For `Figure.subplots`.

    Raises
    ------
    ValueError
        `ax` has another number of axes.
    ImportError
        matplotlib is missing.
    """

    def __init__(
        self, ax: Any, shape: tuple[int, int], size: tuple[float, float], **options: Any
    ) -> None:
        self._is_new = ax is None
        if ax is None:
            figure = _new_figure(size)
            self.axes: AxesArray = figure.subplots(*shape, squeeze=False, **options)
        else:
            require("matplotlib")
            self.axes = _given(ax, shape)
        for each in self.axes.flat:
            _tidy(each)

    @property
    def figure(self) -> Figure:
        figure: Figure = self.axes.flat[0].figure
        return figure

    def title(self, text: str, trial: Trial) -> None:
        """Head a new figure with what it shows and the name of the file."""
        if self._is_new:
            name = [trial.path.name] if trial.path else []
            self.figure.suptitle(
                plain(" · ".join([text, *name])),
                x=0.01,
                ha="left",
                fontsize="large",
                fontweight="bold",
                wrap=True,
            )

    def align(self) -> None:
        """Set the labels of axes above each other."""
        if self._is_new:
            self.figure.align_ylabels()

    def legend(self, handles: Sequence[Any]) -> None:
        """Explain what is drawn: below a new figure; in the first of given axes. A tuple of handles
        is one entry."""
        if not handles:
            return
        first = [each[0] if isinstance(each, tuple) else each for each in handles]
        side_by_side = require("matplotlib", "legend_handler").HandlerTuple(ndivide=None, pad=0.0)
        options: Any = {
            "labels": [each.get_label() for each in first],
            "handler_map": {tuple: side_by_side},
        }
        if self._is_new:
            columns = min(len(handles), max(2, int(self.figure.get_figwidth() / 1.5)))
            self.figure.legend(
                handles=handles,
                loc="outside lower center",
                ncols=columns,
                frameon=False,
                fontsize="small",
                **options,
            )
        else:
            self.axes.flat[0].legend(handles=handles, fontsize="x-small", framealpha=0.7, **options)


def require_clock(trial: Trial) -> None:
    """Refuse a trial whose frames have no time.

    Raises
    ------
    ValueError
        It has no rate.
    """
    if not trial.rate > 0.0:
        raise ValueError("a trial without a rate has no seconds, which this picture is drawn over")


def with_unit(name: str, unit: str | None) -> str:
    """What stands at an axis: the quantity and its unit."""
    return plain(f"{name} ({unit or 'no unit'})")


def plain(text: str) -> str:
    """A text of a file, in which each letter can be drawn and no dollar begins a formula."""
    return readable(text).replace("$", r"\$")


def on_top(axes: Axes) -> dict[str, Any]:
    """How a text is drawn that stays legible where lines run through it."""
    ground = {"facecolor": axes.get_facecolor(), "alpha": 0.75, "linewidth": 0, "pad": 0.6}
    return {"bbox": ground, "zorder": 4}


def note(axes: Axes, text: str) -> None:
    """Say in an empty panel why it is empty."""
    axes.text(
        0.5, 0.5, plain(text), transform=axes.transAxes, ha="center", va="center", color=FAINT
    )


def _new_figure(size: tuple[float, float]) -> Figure:
    options: Any = {"figsize": size, "layout": "constrained"}
    if _is_shown_by_pyplot():
        figure: Figure = require("matplotlib", "pyplot").figure(**options)
    else:
        figure = require("matplotlib", "figure").Figure(**options)
    return figure


def _is_shown_by_pyplot() -> bool:
    shell = sys.modules.get("IPython")
    return "matplotlib.pyplot" in sys.modules or bool(shell and shell.get_ipython() is not None)


def _given(ax: Any, shape: tuple[int, int]) -> AxesArray:
    given = np.atleast_1d(np.asarray(ax, dtype=object))
    axes_class = require("matplotlib", "axes").Axes
    if not all(isinstance(each, axes_class) for each in given.flat):
        raise TypeError(f"ax is axes of matplotlib, or an array of them, not {type(ax).__name__}")
    rows, columns = shape
    if given.size != rows * columns:
        wanted = "one panel" if rows * columns == 1 else f"{rows} × {columns} panels"
        raise ValueError(f"the picture has {wanted}; ax has {given.size} axes")
    return given.reshape(shape)


def _tidy(axes: Axes) -> None:
    if axes.name == "rectilinear":
        axes.spines[["top", "right"]].set_visible(False)
    axes.grid(True, axis="y", alpha=0.25, linewidth=0.6)
    axes.set_axisbelow(True)
