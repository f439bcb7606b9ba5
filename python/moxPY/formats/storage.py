"""The form that OpenSim's MOT and STO files share: a head, and columns with tabs between."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from pathlib import Path

from ..trial.samples import FloatArray
from .rows import rows, with_time
from .text import distinct, one_line


def save(
    place: Path,
    name: str,
    facts: Mapping[str, object],
    columns: Sequence[str],
    rate: float,
    time: FloatArray,
    values: FloatArray,
    *,
    in_degrees: bool = False,
) -> None:
    """Write a file.

    Parameters
    ----------
    name : str
        The first line.
    facts : mapping
        Lines of the head, such as ``side=person``, which readers that do not know them skip; those
        that are None or empty are left out.
    columns : sequence of str
        The names of the columns behind the time.
    rate : float
        Rows a second, which neither a single row tells nor times that are close to a rounder one.
    time, values : ndarray
        Shapes (rows,) and (rows, columns).
    in_degrees : bool
        Whether angles are in degrees.
    """
    head = [
        one_line(name),
        "version=1",
        f"nRows={len(time)}",
        f"nColumns={1 + len(columns)}",
        f"inDegrees={'yes' if in_degrees else 'no'}",
        f"DataRate={rate!r}",
        *(one_line(f"{key}={fact}") for key, fact in facts.items() if fact not in (None, "")),
        "endheader",
        "\t".join(distinct(["time", *map(one_line, columns)])),
    ]
    with place.open("w", encoding="utf-8", newline="") as file:
        file.writelines(f"{line}\n" for line in head)
        file.writelines(f"{line}\n" for line in rows(with_time(time, values), "\t", "nan"))
