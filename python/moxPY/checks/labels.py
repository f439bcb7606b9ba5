"""Labels that are missing, doubled, or there for one side only."""

from __future__ import annotations

import re
from collections import Counter
from collections.abc import Iterator

from ..sides import sided
from ..trial.display import abridged
from ..trial.kinds import KINDS
from .recording import Recording
from .rule import Fault

# What programs call a trajectory that nobody gave a label to.
_UNLABELLED = re.compile(
    r"(?:.*:)?(?:\*|u(?:nlabell?ed|nnamed|nidentified)[ _-]?)\d*", re.IGNORECASE
)

# Left out on purpose: markers on the back and the arms that tell left from right.
_ASYMMETRIC = re.compile(r"(?:.*:)?(?:R|Right[_ ]?)(?:BAK|BACK|OFF(?:SET)?|SCAP?)", re.IGNORECASE)
_FEWEST_PAIRS = 3


def unnamed(recording: Recording) -> Iterator[Fault]:
    """Channels without any label. The trial calls them by a word and a number, and nobody can tell
    what they are."""
    for kind, labels in _labels(recording):
        count = sum(not label.strip() for label in labels)
        if count:
            yield Fault(f"{_counted(count, kind)} without a label")


def doubled(recording: Recording) -> Iterator[Fault]:
    """Several channels of one kind have the same label, often one that was cut off after four
    characters. The trial numbers their keys; other programs show one of them, or none."""
    for kind, labels in _labels(recording):
        counts = Counter(label for label in labels if label.strip())
        several = [f"{label} ({count})" for label, count in counts.items() if count > 1]
        if several:
            yield Fault(f"several {kind} have one label: {abridged(several)}")


def unlabelled(recording: Recording) -> Iterator[Fault]:
    """Trajectories that nobody gave a name to: their labels are a star and a number, or say
    "unlabeled". They may be the missing pieces of a marker that has gaps, or reflections; so it is
    but a note."""
    found = [label for label in recording.markers if _UNLABELLED.fullmatch(label)]
    if found:
        yield Fault(f"{_counted(len(found), 'markers')} not labelled: {abridged(found)}")


def one_sided(recording: Recording) -> Iterator[Fault]:
    """A marker on one side of the body without the one on the other. Sides are told by the
    beginnings of labels, which is a guess (``LUMB`` is on no side): so it is but a note, and only
    made where at least three markers have their counterpart, and twice as many as have none.
    Markers that sets leave out on one side to tell left from right (``RBAK``) do not count."""
    labels = set(recording.markers)
    single, paired = [], 0
    for label in recording.markers:
        parts = sided(label)
        if parts is None or label in recording.segment_points:
            continue
        if parts.other in labels:
            paired += 1
        elif not _ASYMMETRIC.fullmatch(label):
            single.append((label, parts.other))
    if paired >= 2 * max(_FEWEST_PAIRS, 2 * len(single)):
        for label, other in single:
            yield Fault(f"there is no {other}", label)


def _labels(recording: Recording) -> Iterator[tuple[str, list[str]]]:
    """The labels of each kind of channels, as the file has them."""
    for kind in KINDS:
        channels = getattr(recording.trial, kind)
        name = "analog channels" if kind == "analogs" else kind
        yield name, [channel.label for _, channel in channels.items()]


def _counted(count: int, kind: str) -> str:
    return f"{count} {kind.removesuffix('s') if count == 1 else kind}"
