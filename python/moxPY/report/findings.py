"""What checks find, and the gaps."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from functools import partial
from itertools import groupby
from typing import TYPE_CHECKING, get_args

from ..checks.finding import Severity
from ..checks.segment_points import segment_points
from ..trial.gaps import Gap
from .blocks import Block, Notes, NotThere, Picture, Subject, Table
from .drawing import figure_of

if TYPE_CHECKING:
    from ..trial.trial import Trial

# Rows of a table before the rest is only counted.
_ROWS = 12
_RUNS = 6
_CHARTED = 60


def checks(about: Subject) -> Iterator[Block]:
    """A table a trial, the worst first; gaps have a section of their own."""
    order = get_args(Severity)
    for name, trial in about.pairs():
        findings = trial.check(without="gaps")
        rows = [
            (each.severity, f"{each.channel}: {each.text}" if each.channel else each.text)
            for each in sorted(findings, key=lambda each: order.index(each.severity))
        ]
        title = about.titled("Finding", name)
        if rows:
            yield Table(("", title), _cut(rows, 2))
        else:
            yield Notes([f"{about.titled('Checks', name)}: nothing found."])


def gaps(about: Subject) -> Iterator[Block]:
    """A chart of the markers with gaps, and the longest ones in words."""
    if not any(len(trial.markers) for trial in about.trials):
        raise NotThere("there are no markers")
    for name, trial in about.pairs():
        computed = segment_points(trial.markers.labels)
        found = [gap for gap in trial.markers.gaps() if gap.label not in computed]
        if computed:
            yield Notes(
                [f"{len(computed)} points that are no markers but axes of segments are left out."]
            )
        if not found:
            yield Notes([f"{about.titled('Markers', name)}: every one seen in every frame."])
            continue
        labels = list(dict.fromkeys(gap.label for gap in found))
        yield Table(
            (about.titled("Marker", name), "Frames not seen", "Runs of frames"),
            _cut(_gap_rows(found, trial), 3),
        )
        # Of very many the picture itself chooses.
        draw = partial(figure_of, trial, "gaps", labels if len(labels) <= _CHARTED else None)
        yield Picture(about.titled("Gaps over the frames", name), draw, single=True)


def _gap_rows(found: list[Gap], trial: Trial) -> list[tuple[str, str, str]]:
    rows = []
    for label, group in groupby(found, key=lambda gap: gap.label):
        runs = [(gap.first, gap.last) for gap in group]
        lost = sum(last - first + 1 for first, last in runs)
        spelt = [str(first) if first == last else f"{first}–{last}" for first, last in runs]
        more = [f"and {len(spelt) - _RUNS} more"] if len(spelt) > _RUNS else []
        share = f"{lost} ({100.0 * lost / trial.frames:.0f} %)"
        rows.append((lost, (label, share, ", ".join(spelt[:_RUNS] + more))))
    return [row for _, row in sorted(rows, key=lambda each: -each[0])]


def _cut(rows: Sequence[tuple[str, ...]], columns: int) -> list[tuple[str, ...]]:
    if len(rows) <= _ROWS + 1:
        return list(rows)
    more = f"… and {len(rows) - _ROWS} more"
    return [*rows[:_ROWS], (more, *[""] * (columns - 1))]
