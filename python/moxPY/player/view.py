"""Looking at a trial: `Trial.view`."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING

from ..trial.writing import PathLike
from .content import Stick, content_of
from .page import page
from .player import Player

if TYPE_CHECKING:
    from ..trial import Trial


def view(
    trial: Trial,
    path: PathLike | None = None,
    *,
    sticks: Iterable[Stick] | None = None,
    up: str | None = None,
    threshold: float = 20.0,
) -> Player:
    """The trial in motion: markers, forces, events and curves, as a page for any browser.

    The page is one file of HTML. It needs no network and nothing that is installed, so it can be
    mailed, and kept with the trial. Anybody who has it has the trial's samples.

    Parameters
    ----------
    path : str or os.PathLike, optional
        Where to write the page, a file that ends on ``.html`` or ``.htm``; one that is there is
        replaced.
    sticks : iterable of (str, str), optional
        The labels of markers that are joined; those of the usual label sets when left out, and no
        sticks when empty.
    up : str, optional
        The axis of the laboratory that points upwards: "x", "y", "z", or "-y" where it points
        downwards. By default the force platforms tell it, then the file.
    threshold : float
        The least force on a platform that is shown as an arrow, as for `Platform.reaction`.

    Returns
    -------
    Player
        The last line of a notebook's cell shows it; `Player.write` writes it, `Player.open` opens
        it in the browser.

    Raises
    ------
    KeyError
        There is no marker of a label.
    ValueError
        `up` is no axis, a stick is no pair, the threshold is negative or NaN, or the file ends on
        something else.
    OSError
        The system does not let the file be made.

    Notes
    -----
    Places and curves are rounded to a 65,534th of the range of their channel: of a walk of 5 m they
    are off by less than 0.04 mm. Forces act on the person, at the instant of each frame. Of more
    than 200,000 analog samples the page shows what those of each frame lie between.

    Examples
    --------
    >>> player = trial.view(path.replace(".c3d", ".html"))
    >>> player.title
    'gait_trial.c3d'
    """
    content = content_of(trial, sticks, up, threshold)
    player = Player(page(content["name"], content), content["name"])
    if path is not None:
        player.write(path)
    return player
