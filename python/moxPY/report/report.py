"""Writing a report: `Trial.report`."""

from __future__ import annotations

import os
from collections.abc import Callable, Iterable, Mapping
from pathlib import Path
from typing import TYPE_CHECKING, Any

from ..formats.target import Target
from ..readable import readable
from .blocks import Subject
from .header import names_of
from .html import html
from .pdf import pdf
from .sections import Content, require_known

if TYPE_CHECKING:
    from ..trial.trial import Trial
    from ..trial.writing import PathLike

_WRITERS: dict[str, Callable[[str, Content], str | bytes]] = {
    ".html": html,
    ".htm": html,
    ".pdf": pdf,
}


def report(
    trial: Trial,
    path: PathLike,
    *,
    others: Trial | Iterable[Trial] = (),
    reference: Mapping[str, Any] | None = None,
    without: str | Iterable[str] = (),
) -> Path:
    """Write a report: who was recorded when, checks, gaps, events with spatio-temporal parameters,
    curves over the gait cycle, ground reaction, EMG, and the trial in motion.

    A report in HTML is one file that needs no other one and no network, and prints on A4. One in
    PDF has the same pages without the player. What the trial does not have is not shown, and the
    report says why. Pictures need matplotlib; a page of HTML is made without it, too.

    Parameters
    ----------
    path : str or os.PathLike
        A file that ends on ``.html`` or ``.pdf``; one that is there is replaced once the new one is
        complete.
    others : Trial or iterable of Trial, optional
        Further trials of the subject: tables get columns for each, and curves over the gait cycle
        are laid over each other.
    reference : mapping, optional
        What is usual over the gait cycle, as `Trial.plot.angles` takes it.
    without : str or iterable of str, optional
        Sections that are left out, by the names in `moxPY.report.SECTIONS`: ``"player"``.

    Returns
    -------
    Path
        The file.

    Raises
    ------
    ValueError
        The file ends on something else, or there is no section of a name.
    TypeError
        One of `others` is no trial.
    ImportError
        A PDF is wanted, and matplotlib is not installed.
    OSError
        The system does not let the file be made.

    Examples
    --------
    >>> trial.report(path.replace(".c3d", ".html"), without=["emg", "player"]).name
    'gait_trial.html'
    """
    place = Path(os.fsdecode(path))
    if place.suffix.lower() not in _WRITERS:
        raise ValueError(f"a report ends on .html or .pdf, not '{place.suffix}'")
    left_out = {without} if isinstance(without, str) else set(without)
    require_known(left_out)
    trials = [trial, *_trials(others)]
    about = Subject(trials, _names(trials), reference)
    title = names_of(trials) or about.names[0]
    page = _WRITERS[place.suffix.lower()](title, Content(about, left_out))
    with Target(place.parent, place.stem, place.suffix, replace=True) as target:
        target.path().write_bytes(
            page.encode("utf-8", "replace") if isinstance(page, str) else page
        )
    return place


def _trials(others: Trial | Iterable[Trial]) -> list[Trial]:
    from ..trial.trial import Trial  # which has this as a method

    found = [others] if isinstance(others, Trial) else list(others)
    for each in found:
        if not isinstance(each, Trial):
            raise TypeError(f"others are trials, not {type(each).__name__}")
    return found


def _names(trials: list[Trial]) -> list[str]:
    """What the trials are called: by their files, with numbers where there are several."""
    names = [readable(trial.path.name) if trial.path else "trial" for trial in trials]
    return names if len(names) == 1 else [f"{n}. {name}" for n, name in enumerate(names, 1)]
