"""Reads a trial, prints what is in it and saves a plot of a few channels.

    python demo.py [FILE.c3d] [PLOT.png]

Without arguments it reads the example trial beside this program; the plot goes into the project's
build folder, or into the current one where there is no build folder.
"""

from __future__ import annotations

import itertools
import sys
import textwrap
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from typing import Any

import matplotlib as mpl
import moxPY
import numpy as np
from matplotlib import pyplot as plt

HERE = Path(__file__).resolve().parent

COLUMNS = 80

# Channels worth a look; of other trials the first ones are plotted.
INTERESTING = {
    "markers": ["RHEE", "LHEE", "LFIN"],
    "angles": ["RKneeAngles", "LKneeAngles"],
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


@dataclass(frozen=True)
class LoadedPlatform:
    """What one force platform measured, in the laboratory's axes."""

    type: int
    unit: str
    force: Any  # (samples, 3); NaN throughout where the platform has no wrench
    place: Any  # (samples, 3), NaN where it carries next to nothing

    @property
    def peak(self) -> int | None:
        """The sample of the largest force."""
        sizes = np.linalg.norm(self.force, axis=1)
        return int(np.nanargmax(sizes)) if np.isfinite(sizes).any() else None


def read_platforms(trial: moxPY.data_store) -> list[LoadedPlatform]:
    platforms, infos = moxPY.moxGetForcePlatforms(trial)
    wrenches = moxPY.moxGetGroundReactionWrenches(trial)
    return [
        LoadedPlatform(
            platform["type"], next(iter(info["units"].values()), ""), wrench["F"], wrench["P"]
        )
        for platform, info, wrench in zip(platforms, infos, wrenches, strict=True)
    ]


# ---- summary


def print_list(head: str, items: Iterable[str]) -> None:
    """The items behind the head, on as many lines as they take."""
    whole = ", ".join(item.replace(" ", "\0") for item in items)  # an item is not taken apart
    text = textwrap.fill(
        whole,
        COLUMNS,
        initial_indent=head,
        subsequent_indent=" " * len(head),
        break_long_words=False,
        break_on_hyphens=False,
    )
    print(text.replace("\0", " "))


def first_labels(labels: list[str], width: int) -> str:
    """Up to four labels, as many as the width has room for."""
    for count in range(min(4, len(labels)), 0, -1):
        text = ", ".join(labels[:count]) + (", ..." if count < len(labels) else "")
        if len(text) <= width:
            return text
    return "..."


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
        head = f"  {len(values):5} {kind:8} {units:10} "
        print(head + first_labels(list(values), COLUMNS - len(head)))


def print_gaps(found: dict[str, list[tuple[int, int]]], frames: float) -> None:
    print("\n  gaps" if found else "\n  no gaps")
    for label, places in found.items():
        missing = sum(last - first + 1 for first, last in places)
        head = f"  {label:>8}  {missing:3} of {frames:.0f} frames: "
        print_list(head, (f"{first} to {last}" for first, last in places))


def print_events(found: dict[str, list[float]]) -> None:
    if found:
        print("\n  events, s")
    for name, times in found.items():
        print_list(f"  {name:>18}  ", (f"{time:.2f}" for time in times))


def print_platforms(platforms: list[LoadedPlatform]) -> None:
    """The largest force of each, which acts on the person where signs are as usual."""
    if platforms:
        print("\n  force platforms: largest ground reaction, and where it acts")
    for platform in platforms:
        peak = platform.peak
        text = "no force"
        if peak is not None:
            text = f"{components(platform.force[peak])} {platform.unit}"
            if np.isfinite(platform.place[peak]).all():
                text += f" at {components(platform.place[peak])}"
        print(f"  {'type':>8} {platform.type}   {text}")


def components(vector: Any) -> str:
    return "(" + ", ".join(f"{round(value)}" for value in vector) + ")"


# ---- plot


@dataclass(frozen=True)
class Panel:
    """Curves that share an axis."""

    subject: str
    unit: str
    rate: float
    curves: dict[str, Any]

    @property
    def label(self) -> str:
        return f"{self.subject}, {self.unit}" if self.unit else self.subject


def trajectories(kinds: Kinds, kind: str, axis: int) -> Panel:
    """One component of the points of a kind that are worth a look."""
    values, info = kinds[kind]
    chosen = [label for label in INTERESTING[kind] if label in values] or list(values)[:3]
    unit = unit_of(info, chosen[0]) if chosen else ""
    return Panel(
        kind,
        unit,
        info.get("frequency") or 1.0,
        {f"{label} {'xyz'[axis]}": values[label].reshape(-1, 3)[:, axis] for label in chosen},
    )


def unit_of(info: dict[str, Any], label: str) -> str:
    """The unit of one channel; kinds with one unit for all channels name it once."""
    units: dict[str, str] = info["units"]
    return units.get(label) or next(iter(units.values()))


def ground_reactions(platforms: list[LoadedPlatform], rate: float) -> Panel | None:
    """The force along the axis on which most of it acts, which is the vertical one."""
    measuring = {n: each for n, each in enumerate(platforms, 1) if each.peak is not None}
    if not measuring:
        return None
    peaks = [each.force[each.peak] for each in measuring.values()]
    axis = int(np.argmax(np.abs(peaks).max(axis=0)))
    curves = {f"platform {n} {'xyz'[axis]}": each.force[:, axis] for n, each in measuring.items()}
    return Panel("ground reaction", next(iter(measuring.values())).unit, rate, curves)


def analog_channels(kinds: Kinds) -> Panel:
    values, info = kinds["analogs"]
    chosen = list(values)[:3]
    unit = unit_of(info, chosen[0]) if chosen else ""
    return Panel(
        "analogs",
        unit,
        info.get("frequency") or 1.0,
        {label: np.atleast_1d(values[label]) for label in chosen},
    )


def plot(panels: list[Panel], found: dict[str, list[float]], start_s: float, file: Path) -> None:
    """The curves against time, with a line at each event."""
    figure, grid = plt.subplots(
        len(panels), sharex=True, squeeze=False, figsize=(10, 8), layout="constrained"
    )
    rows = grid[:, 0]
    for row, panel in zip(rows, panels, strict=True):
        for name, curve in panel.curves.items():
            row.plot(start_s + np.arange(len(curve)) / panel.rate, curve, label=name, linewidth=1)
        row.set_ylabel(panel.label)
        row.legend(loc="center left", bbox_to_anchor=(1.0, 0.5), frameon=False)
        for time in itertools.chain(*found.values()):
            row.axvline(time, color="0.8", linewidth=0.8, zorder=0)
    rows[-1].set_xlabel("time, s (grey lines: events)" if found else "time, s")
    figure.savefig(file, dpi=110)


def main() -> None:
    file = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "gait_trial.c3d"
    build = HERE.parent / "build"
    folder = build if build.is_dir() else Path()
    picture = Path(sys.argv[2]) if len(sys.argv) > 2 else folder / f"{file.stem}.png"

    with moxPY.moxReadAcquisition(str(file)) as trial:
        kinds = read_kinds(trial)
        platforms = read_platforms(trial)
        found = events(trial)
        # Files count frames from 1, the functions from 0. Frame 1 is time 0, also of events.
        first = round(moxPY.moxGetFirstFrame(trial)) + 1
        start_s = (first - 1) / (moxPY.moxGetPointFrequency(trial) or 1.0)
        print(f"{file.name}, read by moxPY {moxPY.moxGetVersion()}\n")
        print_time_base(trial, first)
        print_channels(kinds)
        print_gaps(gaps(kinds["markers"][0], first), moxPY.moxGetPointFrameNumber(trial))
        print_events(found)
        print_platforms(platforms)
        analog_rate = moxPY.moxGetAnalogFrequency(trial)
    # The arrays are ours: they are still there when the trial is closed.
    mpl.use("Agg")  # draws into files, so that no screen is needed
    panels = [
        trajectories(kinds, "markers", axis=2),
        trajectories(kinds, "angles", axis=0),
        ground_reactions(platforms, analog_rate) or analog_channels(kinds),
    ]
    panels = [panel for panel in panels if panel.curves]
    if panels:
        plot(panels, found, start_s, picture)
        print(f"\nPlot: {picture}")
    else:
        print("\nNothing to plot")


if __name__ == "__main__":
    main()
