"""Pictures, one after the other, in the same style whatever a script has set."""

from __future__ import annotations

import sys
from collections.abc import Iterator
from contextlib import AbstractContextManager, contextmanager, nullcontext
from typing import TYPE_CHECKING, Any

import numpy as np

from ..trial.extras import require
from .blocks import NotThere, Picture

if TYPE_CHECKING:
    from ..trial.trial import Trial

# Text stays text, which can be searched and copied.
_OPTIONS = {"svg.fonttype": "none", "pdf.fonttype": 42}


def house_style() -> AbstractContextManager[Any]:
    """The style of all pictures of a report; nothing without matplotlib."""
    try:
        style = require("matplotlib", "style")
    except ImportError:
        return nullcontext()
    context: AbstractContextManager[Any] = style.context(["default", _OPTIONS], after_reset=True)
    return context


@contextmanager
def drawn(picture: Picture) -> Iterator[Any]:
    """The figure of a picture, without a title; nothing keeps it afterwards.

    Raises
    ------
    NotThere
        The trial lacks what the picture shows, or there is no matplotlib.
    """
    figure = _figure(picture)
    try:
        if figure.get_suptitle():
            figure.suptitle("")
        yield figure
    finally:
        # Where somebody uses pyplot, a figure belongs to it, and would be shown, too.
        pyplot = sys.modules.get("matplotlib.pyplot")
        if pyplot is not None:
            pyplot.close(figure)


def _figure(picture: Picture) -> Any:
    try:
        return picture.draw()
    except (ValueError, KeyError, ImportError) as error:
        raise NotThere(str(error.args[0])) from None


def figure_of(trial: Trial, picture: str, *arguments: Any, **options: Any) -> Any:
    """The figure of a picture of `Trial.plot`.

    Raises
    ------
    ValueError
        The trial lacks what the picture shows.
    """
    return np.ravel(getattr(trial.plot, picture)(*arguments, **options))[0].figure
