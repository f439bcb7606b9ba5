"""TRC: markers, for OpenSim."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from typing import TYPE_CHECKING

from ..trial.units import parse_unit
from .options import Options
from .part import part_of, require
from .rows import rows, with_time
from .target import Target
from .text import one_line, plain

if TYPE_CHECKING:
    from ..trial import Trial

_UNITS = {0.001: "mm", 0.01: "cm", 1.0: "m"}  # by what they are in metres


def write(trial: Trial, target: Target, options: Options) -> None:
    """Tabs between, empty cells where a marker was not seen.

    Raises
    ------
    ValueError
        The trial has no markers; their units are several or none that the format knows; a label is
        empty or there twice, once tabs and line breaks are blanks.
    """
    require(trial, "markers", "which TRC needs")
    labels = labels_of(trial.markers.labels)
    part = part_of(trial, "markers", options)
    place = target.path()
    with place.open("w", encoding="utf-8", newline="") as file:
        file.writelines(f"{line}\n" for line in _head(trial, labels, plain(place.name)))
        # A tab ends each row, since OpenSim misses an empty cell that a row ends with.
        numbers = rows(with_time(part.time, part.values), "\t", "")
        file.writelines(
            f"{frame}\t{line}\t\n" for frame, line in enumerate(numbers, trial.first_frame)
        )


def labels_of(labels: Sequence[str]) -> list[str]:
    """Labels that tabs can stand between, none of them empty or there twice."""
    cleaned = [one_line(label) for label in labels]
    met: dict[str, str] = {}
    for label, text in zip(labels, cleaned, strict=True):
        if not text:
            raise ValueError(f"the label {label!r} is nothing but blanks, which TRC cannot hold")
        if text in met:
            raise ValueError(f"the labels {met[text]!r} and {label!r} would both be '{text}'")
        met[text] = label
    return cleaned


def _head(trial: Trial, labels: list[str], name: str) -> Iterator[str]:
    rate, frames = repr(trial.rate), str(trial.frames)
    numbers = range(1, len(labels) + 1)
    yield f"PathFileType\t4\t(X/Y/Z)\t{one_line(name)}"
    yield (
        "DataRate\tCameraRate\tNumFrames\tNumMarkers\tUnits\t"
        "OrigDataRate\tOrigDataStartFrame\tOrigNumFrames"
    )
    facts = (rate, rate, frames, str(len(labels)), _unit(trial), rate, str(trial.first_frame))
    yield "\t".join([*facts, frames])
    yield "Frame#\tTime\t" + "".join(f"{label}\t\t\t" for label in labels)
    yield "\t\t" + "".join(f"X{n}\tY{n}\tZ{n}\t" for n in numbers)
    yield ""


def _unit(trial: Trial) -> str:
    """The unit of all markers, as OpenSim spells it."""
    unit = trial.markers.unit
    if unit is None:
        several = ", ".join(dict.fromkeys(trial.markers.units.values()))
        raise ValueError(f"the markers have units {several}, and TRC has one: ask for units")
    parsed = parse_unit(unit)
    if parsed is None or parsed.quantity != "length" or parsed.size not in _UNITS or parsed.per:
        raise ValueError(
            f"the unit '{unit}' of the markers is none that TRC has, which are "
            f"{', '.join(_UNITS.values())}: assign trial.markers.unit, or ask for units"
        )
    return _UNITS[parsed.size]
