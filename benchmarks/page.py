"""The page of a benchmark run: its ratios as tables and pictures.

    python page.py RESULTS.json DOCS

Writes DOCS/benchmarks.md and the pictures beside those of other pages. Times in seconds are left
out: only ratios carry over to another machine.
"""

from __future__ import annotations

import json
import sys
from collections.abc import Iterable, Sequence
from pathlib import Path
from typing import Any

from pictures import draw_growth, draw_lengths, draw_ratios
from report import LEAST_GROWTH, PLAIN, SYNCED

FORMS = {
    "big": "134 MB, real, Intel",
    "big-integer": "67 MB, integers, Intel",
    "big-dec": "134 MB, real, DEC",
    "big-mips": "134 MB, real, MIPS",
    "typical": "2.5 MB, real, Intel",
    "small": "0.6 MB, real, Intel",
}

OPENING = """\
# Benchmarks

How fast moxPY is beside programs that only move the numbers, and beside two other packages.
`make bench` makes this page; what is measured, and how, stands in
[benchmarks/README.md](../benchmarks/README.md).

The yardstick is a C++ program of a hundred lines that is told where everything lies, decodes the
samples into arrays of double precision and does nothing else: no parameters, no labels, no checks.
Figures are ratios of times in the same run, medians over its rounds; seconds would say something
about one machine alone.
"""


def rows_of(lines: Iterable[Sequence[str]]) -> str:
    head, *body = lines
    rule = ["---" + (":" if place else "") for place in range(len(head))]
    return "\n".join(f"| {' | '.join(line)} |" for line in (head, rule, *body)) + "\n"


def times(ratio: float) -> str:
    return f"{ratio:.1f}" if ratio >= 10 else f"{ratio:.2f}"


def machine_part(machine: dict[str, Any]) -> str:
    versions = ", ".join(f"{name} {machine[name]}" for name in ("numpy", "ezc3d", "c3d"))
    return (
        f"This run: {machine['processor']}, {machine['processors']} processors, "
        f"Python {machine['python']}, {versions}.\n"
    )


def reading_part(results: dict[str, Any]) -> str:
    lines = [["a file", "moxPY / plain C++", "ezc3d / moxPY", "c3d / moxPY", "memory / arrays"]]
    for kind, form in FORMS.items():
        if "reading" not in results.get(kind, {}):
            continue
        measured = results[kind]["reading"]
        readers = measured["readers"]
        peak = readers["moxPY"]["peak_read_bytes"] / measured["final_bytes"]
        lines.append([
            form,
            times(readers["moxPY"]["ratio_to_plain"]),
            *(
                times(readers[name]["ratio_to_moxpy"]) if name in readers else "does not read it"
                for name in ("ezc3d", "c3d")
            ),
            f"{peak:.2f}",
        ])  # fmt: skip
    return (
        "## Reading\n\nFrom the path to the matrices of all points and of all analog channels. "
        "*Memory* is the peak while the file is read, by the size of both as double precision; "
        "that of a small file is mostly fixed.\n\n"
        + rows_of(lines)
        + "\n![Times of reading by those of the plain program](pictures/benchmarks_reading.png)\n"
        + "\n![Times of reading against the length of the file](pictures/benchmarks_lengths.png)\n"
    )


def writing_part(results: dict[str, Any]) -> str:
    lines = [[
        "a file", "moxPY / plain C++ with fsync", "the same, every value set anew",
        "ezc3d / moxPY", "c3d / moxPY",
    ]]  # fmt: skip
    for kind, form in FORMS.items():
        if "writing" not in results.get(kind, {}):
            continue
        writers = results[kind]["writing"]["writers"]
        lines.append([
            form,
            times(writers["moxPY"]["ratio_to_synced"]),
            times(writers["moxPY, edited"]["ratio_to_synced"]),
            times(writers["ezc3d"]["ratio_to_moxpy"]),
            times(writers["c3d"]["ratio_to_moxpy"]),
        ])  # fmt: skip
    return (
        "## Writing\n\nFrom what is in memory to a file that is on the medium. The plain program "
        "waits for the medium, too; ezc3d and c3d do not.\n\n"
        + rows_of(lines)
        + "\n![Times of writing by those of the plain program](pictures/benchmarks_writing.png)\n"
    )


def many_files_part(results: dict[str, Any]) -> str:
    parts = []
    if "threads" in results:
        lines = [["", "times as many files a second"]]
        lines += [[kind, times(it["ratio"])] for kind, it in results["threads"].items()]
        parts.append("Small files, read by threads of one process:\n\n" + rows_of(lines))
    if "batch" in results:
        lines = [["", "time / the loop's"]]
        lines += [[kind, times(it["ratio"])] for kind, it in results["batch"].items()]
        parts.append(
            "1,000 small files, each read and asked for both matrices:\n\n" + rows_of(lines)
        )
    if "folder" in results:
        lines = [["", "time / moxPY's"]]
        lines += [[way, times(it["ratio"])] for way, it in results["folder"].items()]
        parts.append("The markers of 500 small files in one Parquet file:\n\n" + rows_of(lines))
    return "\n".join(["## Many files\n", *parts])


def growth_part(results: dict[str, Any]) -> str:
    lines = [["a call", "with the number of", "grows with its power"]]
    for axis, measured in results["growth"].items():
        for call, figures in measured["calls"].items():
            if figures["exponent"] >= LEAST_GROWTH:
                lines.append([f"`{call}`", axis, f"{figures['exponent']:.2f}"])
    return (
        "## Growth\n\nBy which power of the number of things in a trial the time of a call grows: "
        "1 goes with what there is. Calls that do not grow are left out. *Each* is an edit of "
        "every thing in turn. `mox…` functions that edit give back all that is there, as they "
        "are laid down, so that editing each thing goes with the square.\n\n"
        "![Powers of growth](pictures/benchmarks_growth.png)\n\n" + rows_of(lines)
    )


def page(results: dict[str, Any]) -> str:
    parts = [
        OPENING,
        machine_part(results["machine"]),
        reading_part(results),
        writing_part(results),
    ]
    parts.append(many_files_part(results))
    if "growth" in results:
        parts.append(growth_part(results))
    return "\n".join(parts)


def ratios_of(results: dict[str, Any], job: str, key: str, names: Sequence[str], ratio: str) -> Any:
    """Name -> kind -> ratio, of the kinds that were measured."""
    return {
        name: {
            FORMS[kind]: results[kind][job][key][name][ratio]
            for kind in FORMS
            if job in results.get(kind, {}) and name in results[kind][job][key]
        }
        for name in names
    }


def write_page(results: dict[str, Any], docs: Path) -> None:
    pictures = docs / "pictures"
    readers, writers = ("moxPY", "ezc3d", "c3d"), ("moxPY", "moxPY, edited", "ezc3d", "c3d")
    draw_ratios(
        ratios_of(results, "reading", "readers", readers, "ratio_to_plain"),
        f"time of reading / {PLAIN}",
        pictures / "benchmarks_reading.png",
    )
    draw_ratios(
        ratios_of(results, "writing", "writers", writers, "ratio_to_synced"),
        f"time of writing / {SYNCED}",
        pictures / "benchmarks_writing.png",
    )
    draw_lengths(
        {kind: results[kind]["reading"] for kind in ("small", "typical", "big")},
        pictures / "benchmarks_lengths.png",
    )
    if "growth" in results:
        draw_growth(results["growth"], pictures / "benchmarks_growth.png")
    (docs / "benchmarks.md").write_text(page(results), encoding="utf-8")


if __name__ == "__main__":
    write_page(json.loads(Path(sys.argv[1]).read_text()), Path(sys.argv[2]))
