"""Reading a part of a file: which channels are asked for, and which ones a trial lacks for it."""

from __future__ import annotations

from collections.abc import Iterable
from itertools import chain
from typing import TYPE_CHECKING, Literal, TypeAlias, cast

from _moxPY import trial as calls

from .kinds import POINT_KINDS

if TYPE_CHECKING:
    from .platform import Platform
    from .trial import Trial

Kind: TypeAlias = Literal[
    "markers", "angles", "forces", "moments", "powers", "points", "analogs", "rotations"
]
Only: TypeAlias = Kind | Iterable[Kind]

# What can be asked for, as the extension calls it.
_ASKED = {
    **{kind: (kind.capitalize(),) for kind in POINT_KINDS},
    "points": tuple(kind.capitalize() for kind in POINT_KINDS),
    "analogs": ("Analogs",),
    "rotations": ("Rotations",),
}


def chosen(only: Only | None) -> tuple[Kind, ...] | None:
    """The kinds that are asked for; None for all.

    Raises
    ------
    ValueError
        There is no such kind; the text names those that there are.
    TypeError
        `only` is neither a str nor an iterable of them.
    """
    if only is None:
        return None
    if not isinstance(only, Iterable):
        raise TypeError(f"only is a kind or several, not {type(only).__name__}")
    kinds = cast("tuple[Kind, ...]", (only,) if isinstance(only, str) else tuple(only))
    for kind in kinds:
        if not isinstance(kind, str) or kind not in _ASKED:
            raise ValueError(f"only takes {', '.join(map(repr, _ASKED))}; not {kind!r}")
    return kinds


def kinds_asked(only: Only | None) -> list[str] | None:
    """The same, each once, as the extension calls them."""
    kinds = chosen(only)
    return None if kinds is None else list(dict.fromkeys(chain(*(_ASKED[kind] for kind in kinds))))


def unread(trial: Trial) -> dict[str, dict[str, str]]:
    """What `Trial.unread` gives."""
    return {kind.lower(): units for kind, units in calls.unread(trial).items()}


def unread_of(trial: Trial, kind: str) -> dict[str, str]:
    """Those of one kind, or of all kinds of points."""
    left_out = unread(trial)
    kinds = POINT_KINDS if kind == "points" else (kind,)
    return {label: unit for each in kinds for label, unit in left_out.get(each, {}).items()}


def measured_platforms(trial: Trial) -> list[Platform]:
    """The force platforms; none where the channels that they measure with were not read."""
    return [plate for plate in trial.platforms if plate.is_read]


def require_read(trial: Trial, label: object, kind: str) -> None:
    """What becomes of asking for a channel that the trial does not have: KeyError if the file has
    one of that label that was not read."""
    if label in unread_of(trial, kind):
        raise KeyError(f"'{label}' was not read, since only other kinds than {kind} were asked for")
