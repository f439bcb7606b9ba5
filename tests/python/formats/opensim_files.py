"""TRC, MOT and STO files as they stand, without any code of the package."""

from __future__ import annotations

from pathlib import Path
from typing import NamedTuple

import pandas


class Storage(NamedTuple):
    """A MOT or STO file."""

    name: str
    head: dict[str, str]
    table: pandas.DataFrame


def read_storage(path: Path) -> Storage:
    """Head and rows of a MOT or STO file."""
    lines = path.read_text("utf-8").splitlines()
    end = lines.index("endheader")
    head = dict(line.split("=", 1) for line in lines[1:end])
    table = pandas.read_csv(path, sep="\t", skiprows=end + 1, encoding="utf-8")
    assert int(head["nRows"]) == len(table)
    assert int(head["nColumns"]) == len(table.columns)
    return Storage(lines[0], head, table)


class Markers(NamedTuple):
    """A TRC file."""

    head: dict[str, str]
    labels: list[str]
    table: pandas.DataFrame


def read_markers(path: Path) -> Markers:
    """Head and rows of a TRC file; the rows by Frame#, Time, X1 …"""
    lines = path.read_text("utf-8").split("\n")
    head = dict(zip(lines[1].split("\t"), lines[2].split("\t"), strict=True))
    labels = lines[3].split("\t")[2::3]
    assert labels.pop() == ""  # a tab ends the line
    names = ["Frame#", "Time", *lines[4].split("\t")[2:-1]]
    assert lines[5] == ""
    table = pandas.read_csv(
        path, sep="\t", skiprows=6, header=None, names=[*names, "end"], encoding="utf-8",
        skip_blank_lines=False,
    )  # fmt: skip
    assert table.pop("end").isna().all()
    return Markers(head, labels, table)
