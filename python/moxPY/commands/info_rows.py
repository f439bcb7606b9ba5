"""The rows that ``moxpy info`` shows."""

from __future__ import annotations

from collections.abc import Iterator
from itertools import groupby
from typing import Any

from .lines import Row

# Rows of a list, and items of a row, before the rest is only counted.
_ROWS = 10
_ITEMS = 6

Facts = dict[str, Any]


def rows(facts: Facts) -> Iterator[Row]:
    """What `moxPY.trial.summary.summary` gives, for people.

    Examples
    --------
    >>> from moxPY.trial.summary import summary
    >>> for name, text in list(rows(summary(read(path))))[:3]:
    ...     print(f"{name:8} {text}")
    frames   360 at 100 Hz (3.60 s), 1 to 360
    subject  Walker
    markers  40 in mm, 7 with gaps
    """
    yield "frames", _frames(facts)
    if facts["subjects"]:
        yield "subject", ", ".join(facts["subjects"])
    if facts["date"]:
        yield "date", facts["date"]
    for kind, channels in facts["channels"].items():
        yield kind, _channels(kind, channels, facts)
        yield "", ", ".join(channels["labels"])
    if facts["rotations"]:
        yield "rotations", f"{len(facts['rotations'])}"
        yield "", ", ".join(facts["rotations"])
    for name, texts in (
        ("events", _events(facts["events"])),
        ("platforms", [_platform(plate) for plate in facts["platforms"]]),
        ("gaps", _gaps(facts["gaps"] or [])),
        ("odd", facts["odd"]),
    ):
        yield from _listed(name, texts)


def _frames(facts: Facts) -> str:
    text = f"{facts['frames']} at {facts['rate'] or 0:g} Hz"
    if facts["frames"] and facts["duration"]:
        text += f" ({facts['duration']:.2f} s), {facts['first_frame']} to {facts['last_frame']}"
    return text


def _channels(kind: str, channels: Facts, facts: Facts) -> str:
    """How many, and their units, each once."""
    units = [unit for unit in dict.fromkeys(channels["units"]) if unit]
    text = f"{len(channels['labels'])}"
    if units:
        text += f" in {', '.join(units)}"
    with_gaps = {gap["label"] for gap in facts["gaps"] or () if gap["kind"] == kind}
    if with_gaps:
        text += f", {len(with_gaps)} with gaps"
    if kind == "analogs":
        text += f"; {channels['rate'] or 0:g} Hz, {facts['samples_per_frame']} per frame"
    return text


def _events(events: list[Facts]) -> list[str]:
    """What happened on each side, and when."""
    times: dict[str, list[str]] = {}
    for event in events:
        name = f"{event['context']} {event['label']}".strip()
        times.setdefault(name, []).append("?" if event["time"] is None else f"{event['time']:.3f}")
    return [f"{name}: {_cut(texts)} s" for name, texts in times.items()]


def _platform(plate: Facts) -> str:
    text = f"type {plate['type']}"
    if None not in plate["size"]:
        text += ", {:.4g} by {:.4g} ".format(*plate["size"]) + plate["unit"]
    labels = ", ".join(plate["channels"])
    return f"{text.rstrip()}: {labels or 'no channels'}"


def _gaps(gaps: list[Facts]) -> list[str]:
    """The runs of each marker, those first that were lost for longest.

    What a model computed is there for parts of the trial only; its kind says how many have gaps.
    """
    texts = []
    markers = [gap for gap in gaps if gap["kind"] == "markers"]
    for label, group in groupby(markers, key=lambda gap: gap["label"]):
        runs = [(gap["first"], gap["last"]) for gap in group]
        lost = sum(last - first + 1 for first, last in runs)
        spelt = [str(first) if first == last else f"{first}-{last}" for first, last in runs]
        frames = "1 frame" if lost == 1 else f"{lost} frames"
        texts.append((lost, f"{label}: {frames}, {_cut(spelt)}"))
    return [text for _, text in sorted(texts, key=lambda each: -each[0])]


def _listed(name: str, texts: list[str]) -> Iterator[Row]:
    """A row a text, the rest counted."""
    shown = texts if len(texts) <= _ROWS + 1 else texts[:_ROWS]
    for index, text in enumerate(shown):
        yield ("" if index else name), text
    if len(shown) < len(texts):
        yield "", f"and {len(texts) - len(shown)} more"


def _cut(texts: list[str]) -> str:
    """The first ones, and how many more there are."""
    if len(texts) <= _ITEMS + 1:
        return ", ".join(texts)
    return f"{', '.join(texts[:_ITEMS])} and {len(texts) - _ITEMS} more"
