"""Reads a trial, prints what is in it and saves a plot of a few channels.

    python demo.py [FILE.c3d] [PLOT.png]

Without arguments it reads the example trial beside this program; the plot goes into the project's
build folder, or into the current one where there is no build folder.
"""

from __future__ import annotations

import itertools
import sys
from pathlib import Path
from typing import Any

import matplotlib as mpl
import moxPY
import numpy as np
from matplotlib import pyplot as plt

HERE = Path(__file__).resolve().parent

# Channels worth a look; of other trials the first ones are plotted.
INTERESTING = {
    "markers": ["LHEE", "RHEE", "LFIN"],
    "angles": ["LKneeAngles", "RKneeAngles"],
    "analogs": ["Fz1", "Fz2"],
}
Kinds = dict[str, tuple[dict[str, Any], dict[str, Any]]]  # values and information


def read_kinds(trial: moxPY.data_store) -> Kinds:
    """Every channel of the trial."""
    readers = {
        "markers": moxPY.moxGetMarkers,
        "angles": moxPY.moxGetAngles,
        "forces": moxPY.moxGetForces,
        "moments": moxPY.moxGetMoments,
        "powers": moxPY.moxGetPowers,
        "analogs": moxPY.moxGetAnalogs,
    }
    kinds = {}
    for kind, read in readers.items():
        values, info = read(trial)
        kinds[kind] = (values, info)
    return kinds


def events(trial: moxPY.data_store) -> dict[str, list[float]]:
    """Times in seconds of each kind of event."""
    values, _ = moxPY.moxGetEvents(trial)
    return {name: np.atleast_1d(times).tolist() for name, times in values.items()}


def gaps(markers: dict[str, Any], first_frame: int) -> dict[str, list[tuple[int, int]]]:
    """First and last frame of every gap of each marker that has one."""
    found = {}
    for label, positions in markers.items():
        missing = np.isnan(positions).reshape(-1, 3).any(axis=1).astype(int)
        edges = np.diff(missing, prepend=0, append=0)
        starts = np.flatnonzero(edges == 1) + first_frame
        ends = np.flatnonzero(edges == -1) + first_frame - 1
        if len(starts):
            found[label] = list(zip(starts.tolist(), ends.tolist(), strict=True))
    return found


# ---- summary


def print_time_base(trial: moxPY.data_store, first: int) -> None:
    frames, rate = moxPY.moxGetPointFrameNumber(trial), moxPY.moxGetPointFrequency(trial)
    last = first + frames - 1
    print(f"  points   {frames:.0f} frames at {rate:g} Hz, from {first:.0f} to {last:.0f}")
    print(
        f"  analogs  {moxPY.moxGetAnalogFrameNumber(trial):.0f} samples"
        f" at {moxPY.moxGetAnalogFrequency(trial):g} Hz,"
        f" {moxPY.moxGetAnalogSampleNumberPerFrame(trial):.0f} per frame"
    )


def print_channels(kinds: Kinds) -> None:
    print("\n  channels")
    for kind, (values, info) in kinds.items():
        if not values:
            continue
        units = ", ".join(dict.fromkeys(info.get("units", {}).values()))
        labels = ", ".join(list(values)[:4]) + (", ..." if len(values) > 4 else "")
        print(f"  {len(values):5} {kind:8} {units:10} {labels}".rstrip())


def print_gaps(found: dict[str, list[tuple[int, int]]], frames: float) -> None:
    print("\n  gaps" if found else "\n  no gaps")
    for label, places in found.items():
        missing = sum(last - first + 1 for first, last in places)
        text = ", ".join(f"{first} to {last}" for first, last in places)
        print(f"  {label:>8}  {missing:3} of {frames:.0f} frames: {text}")


def print_events(found: dict[str, list[float]]) -> None:
    if found:
        print("\n  events, s")
    for name, times in found.items():
        print(f"  {name:>18}  " + "  ".join(f"{time:5.2f}" for time in times))


def print_platforms(trial: moxPY.data_store) -> None:
    """Largest force that each platform carries."""
    platforms, infos = moxPY.moxGetForcePlatforms(trial)
    wrenches = moxPY.moxGetForcePlatformWrenches(trial)
    if platforms:
        print("\n  force platforms")
    for platform, info, wrench in zip(platforms, infos, wrenches, strict=True):
        force = np.linalg.norm(wrench["F"], axis=1)
        unit = next(iter(info["units"].values()), "")
        peak = f"{np.nanmax(force):.0f} {unit}" if np.isfinite(force).any() else "no force"
        print(f"  {'type':>8} {platform['type']}   up to {peak}")


# ---- plot


def labels_of(kind: str, values: dict[str, Any]) -> list[str]:
    """The channels to plot."""
    known = [label for label in INTERESTING[kind] if label in values]
    return known or list(values)[:3]


def curve_of(values: Any, axis: int | None) -> Any:
    """One column of a trajectory, or an analog channel as it is."""
    return np.atleast_1d(values) if axis is None else values.reshape(-1, 3)[:, axis]


def unit_of(info: dict[str, Any], label: str) -> str:
    """The unit of one channel; kinds with one unit for all channels name it once."""
    units: dict[str, str] = info["units"]
    return units.get(label) or next(iter(units.values()))


def plot(kinds: Kinds, found: dict[str, list[float]], start_s: float, file: Path) -> None:
    """Heights of markers, first angles of joints and analog channels against time."""
    figure, panels = plt.subplots(3, sharex=True, figsize=(10, 8), layout="constrained")
    axes = {"markers": 2, "angles": 0, "analogs": None}
    for panel, (kind, axis) in zip(panels, axes.items(), strict=True):
        values, info = kinds[kind]
        for label in labels_of(kind, values):
            curve = curve_of(values[label], axis)
            name = label if axis is None else f"{label} {'xyz'[axis]}"
            times = start_s + np.arange(len(curve)) / info["frequency"]
            panel.plot(times, curve, label=name, linewidth=1)
            panel.set_ylabel(f"{kind}, {unit_of(info, label)}")
            panel.legend(loc="center left", bbox_to_anchor=(1.0, 0.5), frameon=False)
        for time in itertools.chain(*found.values()):
            panel.axvline(time, color="0.8", linewidth=0.8, zorder=0)
    panels[-1].set_xlabel("time, s")
    figure.savefig(file, dpi=110)


def main() -> None:
    file = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "gait_trial.c3d"
    build = HERE.parent / "build"
    folder = build if build.is_dir() else Path()
    picture = Path(sys.argv[2]) if len(sys.argv) > 2 else folder / f"{file.stem}.png"

    with moxPY.moxReadAcquisition(str(file)) as trial:
        kinds = read_kinds(trial)
        found = events(trial)
        # Files count frames from 1, the functions from 0. Frame 1 is time 0, also of events.
        first = round(moxPY.moxGetFirstFrame(trial)) + 1
        start_s = (first - 1) / (moxPY.moxGetPointFrequency(trial) or 1.0)
        print(f"{file.name}, read by moxPY {moxPY.moxGetVersion()}\n")
        print_time_base(trial, first)
        print_channels(kinds)
        print_gaps(gaps(kinds["markers"][0], first), moxPY.moxGetPointFrameNumber(trial))
        print_events(found)
        print_platforms(trial)
    # The arrays are ours: they are still there when the trial is closed.
    mpl.use("Agg")  # draws into files, so that no screen is needed
    plot(kinds, found, start_s, picture)
    print(f"\nPlot: {picture}")


if __name__ == "__main__":
    main()
