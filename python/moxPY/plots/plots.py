"""`Trial.plot`: the pictures of a trial."""

from __future__ import annotations

from typing import TYPE_CHECKING

from ..trial.display import one_line
from .angles import angles, moments, powers
from .butterfly import butterfly
from .channel import channel
from .emg import emg
from .events import events
from .forces import forces
from .gaps import gaps
from .sticks import sticks

if TYPE_CHECKING:
    from ..trial import Trial


class Plots:
    """Pictures of a trial by matplotlib.

    Each gives the axes that it was drawn into, which change as any others do; ``ax=`` takes axes
    that are there. A new figure belongs to pyplot where that has been imported, or in IPython: it
    is in the notebook, and ``plt.show()`` shows it. Elsewhere it is kept by nobody;
    ``axes.figure.savefig`` saves it.

    Examples
    --------
    >>> axes = trial.plot.angles()
    >>> axes.shape, axes[0, 0].get_ylabel()
    ((4, 3), 'deg')
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    @property
    def trial(self) -> Trial:
        """The trial that is drawn."""
        return self._trial

    channel = channel
    angles = angles
    moments = moments
    powers = powers
    forces = forces
    butterfly = butterfly
    emg = emg
    events = events
    gaps = gaps
    sticks = sticks

    def __repr__(self) -> str:
        return one_line("plots", lambda: f" of {self._trial!r}")
