"""What an acquisition holds, in a few lines."""

from __future__ import annotations

from typing import Any

import numpy as np

from .acquisition import data_store
from .functions.acquisition.sampling import (
    moxGetAnalogSampleNumberPerFrame,
    moxGetFirstFrame,
    moxGetLastFrame,
    moxGetPointFrameNumber,
    moxGetPointFrequency,
)
from .functions.analogs.read_analogs import moxGetAnalogs
from .functions.points.read_points import (
    moxGetAngles,
    moxGetForces,
    moxGetMarkers,
    moxGetMoments,
    moxGetPowers,
)

KINDS = {
    "markers": moxGetMarkers,
    "angles": moxGetAngles,
    "forces": moxGetForces,
    "moments": moxGetMoments,
    "powers": moxGetPowers,
}


def summary_lines(acquisition: data_store) -> list[str]:
    """One line for the time base, and one for each kind of channel that there is.

    Examples
    --------
    >>> print(*summary_lines(trial), sep="\\n")
    frames   360 at 100 Hz (3.60 s), 1 to 360
    markers  40 in mm, 7 with gaps
    angles   8 in deg
    forces   8 in N
    moments  6 in Nmm/kg
    powers   6 in W
    analogs  20 in N, Nmm, V; 1000 Hz, 10 per frame
    """
    lines = {"frames": frames_text(acquisition)}
    for kind, read in KINDS.items():
        values, info = read(acquisition)
        if values:
            lines[kind] = channels_text(values, info)
        gaps = sum(bool(np.isnan(channel).any()) for channel in values.values())
        if kind == "markers" and gaps:
            lines[kind] += f", {gaps} with gaps"
    values, info = moxGetAnalogs(acquisition)
    if values:
        ratio = moxGetAnalogSampleNumberPerFrame(acquisition)
        lines["analogs"] = channels_text(values, info)
        lines["analogs"] += f"; {info['frequency']:g} Hz, {ratio:g} per frame"
    return [f"{name:7}  {text}" for name, text in lines.items()]


def frames_text(acquisition: data_store) -> str:
    frames, rate = moxGetPointFrameNumber(acquisition), moxGetPointFrequency(acquisition)
    text = f"{frames:.0f} at {rate:g} Hz"
    if frames and rate:
        first, last = moxGetFirstFrame(acquisition) + 1, moxGetLastFrame(acquisition) + 1
        text += f" ({frames / rate:.2f} s), {first:.0f} to {last:.0f}"
    return text


def channels_text(values: dict[str, Any], info: dict[str, Any]) -> str:
    """How many channels, and their units, each once."""
    units = dict.fromkeys(info.get("units", {}).values())
    known = [unit for unit in units if unit]
    return f"{len(values)} in {', '.join(known)}" if known else f"{len(values)}"
