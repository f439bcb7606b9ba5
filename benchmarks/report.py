"""Figures and tables of a benchmark run."""

from __future__ import annotations

import os
import platform
import re
from importlib.metadata import PackageNotFoundError, version
from pathlib import Path
from statistics import median
from typing import Any

import numpy as np

PLAIN = "plain C++"
SYNCED = "plain C++, fsync"
MEGABYTE = 1e6
LEAST_GROWTH = 0.25  # power of the size, below which a time counts as fixed
STEPS = ("append", "read")  # as append_things.py tells their times


def machine() -> dict[str, Any]:
    """What the figures were measured on."""
    found = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    packages = {}
    for package in ("ezc3d", "c3d"):
        try:
            packages[package] = version(package)
        except PackageNotFoundError:
            packages[package] = "not installed as a package"
    return {
        "processor": found[1] if found else platform.processor(),
        "processors": len(os.sched_getaffinity(0)),
        "python": platform.python_version(),
        "numpy": np.__version__,
        **packages,
    }


def summary(
    extents: dict[str, int], file_bytes: int, answers: dict[str, list[dict[str, Any]]], cold: int
) -> dict[str, Any]:
    """Medians, ratios and memory of one file; `cold` first times of each process do not count."""
    rows, samples = extents["frames"], extents["frames"] * extents["ratio"]
    final_bytes = 8 * (rows * extents["points"] * 3 + samples * extents["channels"])
    seconds = {
        reader: [median(answer["seconds"][cold:]) for answer in given]
        for reader, given in answers.items()
    }
    return {
        "extents": extents,
        "file_bytes": file_bytes,
        "final_bytes": final_bytes,
        "readers": {
            reader: {
                "seconds": seconds[reader],
                "median_seconds": median(seconds[reader]),
                "ratio_to_plain": ratio(seconds[reader], seconds[PLAIN]),
                "ratio_to_moxpy": ratio(seconds[reader], seconds["moxPY"]),
                "peak_read_bytes": median(answer["peak_read"] for answer in given),
                "peak_bytes": median(answer["peak"] for answer in given),
            }
            for reader, given in answers.items()
        },
    }


def writing_summary(
    file_bytes: int, answers: dict[str, list[dict[str, Any]]], cold: int
) -> dict[str, Any]:
    """Medians, ratios and memory of writing a file."""
    seconds = {
        writer: [median(answer["seconds"][cold:] or answer["seconds"]) for answer in given]
        for writer, given in answers.items()
    }
    return {
        "file_bytes": file_bytes,
        "writers": {
            writer: {
                "seconds": seconds[writer],
                "median_seconds": median(seconds[writer]),
                "ratio_to_plain": ratio(seconds[writer], seconds[PLAIN]),
                "ratio_to_synced": ratio(seconds[writer], seconds[SYNCED]),
                "ratio_to_moxpy": ratio(seconds[writer], seconds["moxPY"]),
                "peak_bytes": median(answer["peak"] for answer in given),
            }
            for writer, given in answers.items()
        },
    }


def appending_summary(
    counts: dict[str, int], answers: dict[str, list[dict[str, Any]]]
) -> dict[str, Any]:
    """Medians and ratios of appends one by one, and of the readings that they end with."""
    return {
        kind: {
            "count": counts[kind],
            "halves": [
                {step: median(answer["halves"][half][step] for answer in given) for step in STEPS}
                for half in (0, 1)
            ],
            "ratio_to_reading": median(map(ratio_to_reading, given)),
            "growth": median(map(growth, given)),
        }
        for kind, given in answers.items()
    }


def threads_summary(answers: dict[str, list[dict[str, Any]]], files: int) -> dict[str, Any]:
    """Medians of the files a second; by how much all others are faster than the first one."""
    # The first repetition of a process gets fresh memory from the system.
    seconds = {
        kind: [median(answer["seconds"][1:]) for answer in given] for kind, given in answers.items()
    }
    alone = next(iter(seconds.values()))
    return {
        kind: {"files_per_second": files / median(times), "ratio": ratio(alone, times)}
        for kind, times in seconds.items()
    }


def folder_summary(answers: dict[str, list[dict[str, Any]]], files: int) -> dict[str, Any]:
    """Medians of each way; how often its time the other one takes, within a round."""
    seconds = {way: [answer["seconds"] for answer in given] for way, given in answers.items()}
    alone = next(iter(seconds.values()))
    return {
        way: {
            "files": files,
            "seconds": times,
            "ratio": ratio(times, alone),
            "peak_bytes": median(answer["peak"] for answer in answers[way]),
            "bytes": median(answer["bytes"] for answer in answers[way]),
        }
        for way, times in seconds.items()
    }


def batch_summary(answers: dict[str, list[dict[str, Any]]]) -> dict[str, Any]:
    """Medians of each way; its time by that of the first one, within a round."""
    seconds = {way: [answer["seconds"] for answer in given] for way, given in answers.items()}
    alone = next(iter(seconds.values()))
    return {way: {"seconds": times, "ratio": ratio(times, alone)} for way, times in seconds.items()}


def growth_summary(answers: dict[str, list[dict[str, Any]]]) -> dict[str, Any]:
    """For each axis and call the seconds at each size, and by which power of the size they grow."""
    result: dict[str, Any] = {}
    for axis, given in answers.items():
        sizes = given[0]["sizes"]
        result[axis] = {"sizes": sizes, "calls": {}}
        for call in given[0]["seconds"]:
            # Whatever else a machine does can only add to a time.
            seconds = [
                min(times) for times in zip(*(a["seconds"][call] for a in given), strict=True)
            ]
            grown = exponent(sizes[: len(seconds)], seconds)
            result[axis]["calls"][call] = {"seconds": seconds, "exponent": grown}
    return result


def exponent(sizes: list[int], seconds: list[float]) -> float:
    """The slope of the line through the larger half, both axes logarithmic."""
    half = len(sizes) // 2
    slope, _ = np.polyfit(np.log(sizes[half:]), np.log(seconds[half:]), 1)
    return float(slope)


def ratio_to_reading(answer: dict[str, Any]) -> float:
    """An append of the second half, by the reading of all that it ends with."""
    second = answer["halves"][1]
    return float(second["append"] / second["read"])


def growth(answer: dict[str, Any]) -> float:
    """What an append of the second half takes beside its reading, by that of the first half."""
    first, second = (half["append"] - half["read"] for half in answer["halves"])
    return float(second / first)


def ratio(seconds: list[float], others: list[float]) -> float:
    """Median of the ratios of the rounds in which both took part."""
    return median(time / other for time, other in zip(seconds, others, strict=False))


def table(kind: str, result: dict[str, Any]) -> list[str]:
    extents = result["extents"]
    final = result["final_bytes"]
    lines = [
        f"{kind}: {extents['points']} points × {extents['frames']:,} frames, "
        f"{extents['channels']} analog channels × {extents['ratio']}; "
        f"file {megabytes(result['file_bytes'])} MB, both matrices {megabytes(final)} MB",
        f"  {'':9}  {'time, ms':>27}  {'times the one of':>17}"
        f"  {'peak memory, MB (× matrices)':>31}",
        f"  {'':9}  {'median':>9}{'fastest':>9}{'slowest':>9}  {'plain C++':>9}{'moxPY':>8}"
        f"  {'after reading':>15} {'with matrices':>15}",
    ]
    for reader, figures in result["readers"].items():
        seconds = figures["seconds"]
        times = [f"{1000 * time:9.2f}" for time in (median(seconds), min(seconds), max(seconds))]
        lines.append(
            f"  {reader:9}  {''.join(times)}"
            f"  {figures['ratio_to_plain']:9.2f}{figures['ratio_to_moxpy']:8.2f}"
            f"  {memory(figures['peak_read_bytes'], final):>15}"
            f" {memory(figures['peak_bytes'], final):>15}"
        )
    return lines


def writing_table(kind: str, result: dict[str, Any]) -> list[str]:
    lines = [
        f"{kind}, writing: file {megabytes(result['file_bytes'])} MB",
        f"  {'':16}  {'time, ms':>27}  {'times the one of':>26}  {'peak memory':>11}",
        f"  {'':16}  {'median':>9}{'fastest':>9}{'slowest':>9}  {'plain C++':>9}{'fsync':>9}"
        f"{'moxPY':>8}  {'MB':>11}",
    ]
    for writer, figures in result["writers"].items():
        seconds = figures["seconds"]
        times = [f"{1000 * time:9.2f}" for time in (median(seconds), min(seconds), max(seconds))]
        lines.append(
            f"  {writer:16}  {''.join(times)}"
            f"  {figures['ratio_to_plain']:9.2f}{figures['ratio_to_synced']:9.2f}"
            f"{figures['ratio_to_moxpy']:8.2f}  {megabytes(figures['peak_bytes']):>11}"
        )
    return lines


def appending_table(result: dict[str, Any]) -> list[str]:
    halves = f"  {'1st half':>9} {'2nd half':>9}"
    lines = [
        "appending one by one, with one reading of all of the kind in each append",
        f"  {'':19}  {'':>6}  {'append, µs':>19}  {'reading alone, µs':>19}"
        f"  {'append / reading':>16}  {'the rest,':>17}",
        f"  {'':19}  {'number':>6}{halves}{halves}  {'2nd half':>16}  {'2nd half / 1st':>17}",
    ]
    for kind, figures in result.items():
        times = [f"{1e6 * half[step]:9.1f}" for step in STEPS for half in figures["halves"]]
        # Below that, the rest is no more than what the reading's times differ by.
        rest = f"{figures['growth']:.2f}" if figures["ratio_to_reading"] > 1.5 else "too small"
        lines.append(
            f"  {kind:19}  {figures['count']:>6}  {times[0]} {times[1]}  {times[2]} {times[3]}"
            f"  {figures['ratio_to_reading']:16.2f}  {rest:>17}"
        )
    return lines


def threads_table(result: dict[str, Any], processors: int) -> list[str]:
    lines = [f"threads that read, with {processors} processors", f"  {'':13}  files/s  ratio"]
    for kind, figures in result.items():
        lines.append(f"  {kind:13}  {figures['files_per_second']:7.0f}  {figures['ratio']:5.2f}")
    return lines


def batch_table(result: dict[str, Any]) -> list[str]:
    lines = ["batch: 1,000 small files, both matrices of each", f"  {'':22}  seconds  ratio"]
    for way, figures in result.items():
        lines.append(f"  {way:22}  {median(figures['seconds']):7.2f}  {figures['ratio']:5.2f}")
    return lines


def folder_table(result: dict[str, Any]) -> list[str]:
    files = next(iter(result.values()))["files"]
    lines = [
        f"folder: the markers of {files} small files in one Parquet file",
        f"  {'':15}  {'seconds':>8}  {'times moxPY':>11}  {'peak memory, MB':>15}  {'file, MB':>8}",
    ]
    for way, figures in result.items():
        lines.append(
            f"  {way:15}  {median(figures['seconds']):8.2f}  {figures['ratio']:11.1f}"
            f"  {megabytes(figures['peak_bytes']):>15}  {megabytes(figures['bytes']):>8}"
        )
    return lines


def megabytes(count: float) -> str:
    return f"{count / MEGABYTE:.1f}"


def memory(count: float, final: float) -> str:
    return f"{count / MEGABYTE:.1f} ({count / final:.2f})"


def growth_table(result: dict[str, Any]) -> list[str]:
    """The calls whose time grows at all; of those that edit, what each edit costs in the end."""
    lines = ["growth: the time of a call goes with this power of the number of …"]
    for axis, measured in result.items():
        sizes = measured["sizes"]
        lines.append(f"  {axis}, {sizes[0]:,} to {sizes[-1]:,}")
        for call, figures in measured["calls"].items():
            if figures["exponent"] < LEAST_GROWTH:
                continue
            seconds = figures["seconds"]
            last = seconds[-1] * 1e6
            if call.endswith(", each"):
                last /= sizes[len(seconds) - 1]
            lines.append(f"    {call:42}{figures['exponent']:6.2f}{last:12,.1f} µs")
    return lines
