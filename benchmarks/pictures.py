"""The pictures of a benchmark run."""

from __future__ import annotations

from collections.abc import Mapping
from pathlib import Path
from typing import Any

from matplotlib.figure import Figure
from PIL import Image

COLOURS = {
    "plain C++": "#555555",
    "moxPY": "#0b6e99",
    "moxPY, edited": "#7fb8d1",
    "ezc3d": "#c8641e",
    "c3d": "#e2a76f",
}
DOTS_PER_INCH = 110
FEW_COLOURS = 128
LIMIT = 1.1  # a power of growth that is still linear


def draw_ratios(ratios: Mapping[str, Mapping[str, float]], label: str, path: Path) -> None:
    """Bars of each name beside each other, kind by kind, on a logarithmic axis."""
    kinds = list(dict.fromkeys(kind for given in ratios.values() for kind in given))
    figure = Figure(figsize=(8, 0.42 * len(kinds) * len(ratios) / 2 + 1.2), layout="constrained")
    axes = figure.add_subplot()
    height = 0.8 / len(ratios)
    for number, (name, given) in enumerate(ratios.items()):
        places = [kinds.index(kind) + (number + 0.5) * height - 0.4 for kind in given]
        bars = axes.barh(places, list(given.values()), height, label=name, color=COLOURS[name])
        axes.bar_label(bars, [f"{value:.3g}" for value in given.values()], padding=3, size=8)
    axes.axvline(1.0, color=COLOURS["plain C++"], linestyle="--", linewidth=1)
    axes.set_xscale("log")
    axes.set_xlim(left=0.3, right=2.5 * max(max(given.values()) for given in ratios.values()))
    axes.set_yticks(range(len(kinds)), kinds)
    axes.invert_yaxis()
    axes.set_xlabel(label)
    axes.spines[["top", "right"]].set_visible(False)
    figure.legend(loc="outside upper right", ncols=len(ratios), frameon=False)
    save(figure, path)


def draw_lengths(measured: Mapping[str, Mapping[str, Any]], path: Path) -> None:
    """The time of reading against the length of the file, both axes logarithmic."""
    figure = Figure(figsize=(8, 3.6), layout="constrained")
    axes = figure.add_subplot()
    names = list(dict.fromkeys(name for it in measured.values() for name in it["readers"]))
    unit = min(it["readers"]["plain C++"]["median_seconds"] for it in measured.values())
    for name in names:
        lengths = [it["file_bytes"] / 1e6 for it in measured.values()]
        seconds = [it["readers"][name]["median_seconds"] / unit for it in measured.values()]
        axes.plot(lengths, seconds, "o-", label=name, color=COLOURS[name])
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_xlabel("length of the file, MB")
    axes.set_ylabel("time of reading / shortest")
    axes.grid(alpha=0.3)
    axes.spines[["top", "right"]].set_visible(False)
    axes.legend(frameon=False)
    save(figure, path)


def draw_growth(growth: Mapping[str, Any], path: Path) -> None:
    """For each axis the powers of all its calls, as marks on a line."""
    figure = Figure(figsize=(8, 0.45 * len(growth) + 1.2), layout="constrained")
    axes = figure.add_subplot()
    for place, measured in enumerate(growth.values()):
        powers = [figures["exponent"] for figures in measured["calls"].values()]
        colours = [COLOURS["moxPY" if power <= LIMIT else "ezc3d"] for power in powers]
        axes.scatter(powers, [place] * len(powers), c=colours, alpha=0.6)
    axes.axvline(1.0, color=COLOURS["plain C++"], linestyle="--", linewidth=1)
    axes.set_yticks(range(len(growth)), list(growth))
    axes.invert_yaxis()
    axes.set_xlabel("the time of a call grows with this power of their number")
    axes.spines[["top", "right"]].set_visible(False)
    save(figure, path)


def save(figure: Figure, path: Path) -> None:
    figure.savefig(path, dpi=DOTS_PER_INCH)
    with Image.open(path) as picture:
        picture.convert("RGB").quantize(FEW_COLOURS).save(path, optimize=True)
