"""Text files as the tests need them, made byte by byte."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.float64]

NAMES = (
    "DataRate", "CameraRate", "NumFrames", "NumMarkers", "Units", "OrigDataRate",
    "OrigDataStartFrame", "OrigNumFrames",
)  # fmt: skip


def cell(number: float) -> str:
    return "" if np.isnan(number) else repr(float(number))


def trc(
    markers: dict[str, Any],
    *,
    rate: str = "100",
    units: str = "mm",
    first: int = 1,
    times: Sequence[str] | None = None,
    frames: int | None = None,
    count: int | None = None,
    blank: bool = True,
    end: str = "\n",
) -> bytes:
    """A TRC file: label -> frames × 3. Times are those of the frames unless they are given."""
    values = [np.asarray(each, float).reshape(-1, 3) for each in markers.values()]
    rows = len(values[0]) if values else len(times or ())
    told = (rate, rate, frames if frames is not None else rows,
            count if count is not None else len(values), units, rate, first, rows)  # fmt: skip
    numbers = range(1, len(values) + 1)
    lines = [
        "PathFileType\t4\t(X/Y/Z)\twalk.trc",
        "\t".join(NAMES),
        "\t".join(map(str, told)),
        "Frame#\tTime\t" + "\t\t\t".join(markers),
        "\t\t" + "\t".join(f"{axis}{number}" for number in numbers for axis in "XYZ"),
        *([""] if blank else []),
    ]
    for row in range(rows):
        time = times[row] if times else f"{(first - 1 + row) / float(rate):.6f}"
        cells = [cell(number) for each in values for number in each[row]]
        lines.append("\t".join([str(first + row), time, *cells]))
    return "".join(line + end for line in lines).encode("latin-1")


def sto(
    columns: dict[str, Any],
    *,
    times: Sequence[str] | None = None,
    header: Sequence[str] | None = None,
    separator: str = "\t",
    end: str = "\n",
) -> bytes:
    """A STO file: label -> samples, at 100 Hz from 0 on unless times are given."""
    values = [np.asarray(each, float) for each in columns.values()]
    rows = len(values[0]) if values else len(times or ())
    head = (f"nRows={rows}", f"nColumns={len(columns) + 1}", "inDegrees=no")
    lines = ["forces", "version=1", *(head if header is None else header), "endheader"]
    lines.append(separator.join(["time", *columns]))
    for row in range(rows):
        time = times[row] if times else f"{row / 100:.2f}"
        lines.append(separator.join([time, *(cell(each[row]) for each in values)]))
    return "".join(line + end for line in lines).encode("latin-1")


def walk(frames: int = 6, markers: int = 3) -> dict[str, Array]:
    """Places that single precision holds, with a frame in which the first was not seen."""
    places = np.arange(frames * markers * 3).reshape(markers, frames, 3) * 0.25 - 7
    places[0, 2] = np.nan
    return dict(zip(("LASI", "RASI", "L KNE", "C7", "T10"), places, strict=False))


def signals(samples: int = 6) -> dict[str, Array]:
    return {
        "ground_force_vy": np.arange(samples) * 12.5,
        "ground_force_px": np.linspace(0, 1, samples).astype(np.float32).astype(float),
    }
