"""The page of a run has a row for each file, and pictures beside it."""

from __future__ import annotations

import json
import subprocess
import sys
from pathlib import Path
from typing import Any

import pytest

PROGRAM = Path(__file__).resolve().parents[3] / "benchmarks" / "page.py"

MACHINE = {
    "processor": "A Processor", "processors": 2, "python": "3.13.0", "numpy": "2.2",
    "ezc3d": "1.7", "c3d": "0.6",
}  # fmt: skip


def reader(to_plain: float, to_moxpy: float) -> dict[str, float]:
    return {
        "ratio_to_plain": to_plain, "ratio_to_moxpy": to_moxpy, "peak_read_bytes": 50.0,
        "median_seconds": to_plain,
    }  # fmt: skip


def writer(to_synced: float, to_moxpy: float) -> dict[str, float]:
    return {"ratio_to_synced": to_synced, "ratio_to_moxpy": to_moxpy}


@pytest.fixture
def results() -> dict[str, Any]:
    readers = {
        "plain C++": reader(1.0, 0.8), "moxPY": reader(1.25, 1.0),
        "ezc3d": reader(30.0, 24.0), "c3d": reader(20.0, 16.0),
    }  # fmt: skip
    writers = {
        "moxPY": writer(1.1, 1.0), "moxPY, edited": writer(1.3, 1.2),
        "ezc3d": writer(9.0, 8.2), "c3d": writer(7.0, 6.4),
    }  # fmt: skip
    whole = {
        "reading": {"readers": readers, "final_bytes": 100.0, "file_bytes": 1e6},
        "writing": {"writers": writers},
    }
    without_ezc3d = {name: it for name, it in readers.items() if name != "ezc3d"}
    calls = {"read": {"exponent": 1.01}, "name": {"exponent": 0.02}}
    return {
        "machine": MACHINE,
        **dict.fromkeys(("big", "typical", "small"), whole),
        "big-mips": {"reading": {**whole["reading"], "readers": without_ezc3d}},
        "threads": {"one thread": {"ratio": 1.0}, "two threads": {"ratio": 1.9}},
        "batch": {"a loop over `read`": {"ratio": 1.0}},
        "folder": {"moxPY": {"ratio": 1.0}, "ezc3d": {"ratio": 15.8}},
        "growth": {"frames": {"sizes": [1, 2], "calls": calls}},
    }


@pytest.fixture
def docs(results: dict[str, Any], tmp_path: Path) -> Path:
    (tmp_path / "results.json").write_text(json.dumps(results))
    (tmp_path / "docs" / "pictures").mkdir(parents=True)
    words = [sys.executable, PROGRAM, tmp_path / "results.json", tmp_path / "docs"]
    subprocess.run(words, check=True)
    return tmp_path / "docs"


@pytest.fixture
def text(docs: Path) -> str:
    return (docs / "benchmarks.md").read_text(encoding="utf-8")


def test_each_file_has_its_ratios(text: str):
    lines = text.splitlines()
    assert "| 134 MB, real, Intel | 1.25 | 24.0 | 16.0 | 0.50 |" in lines
    assert "| 134 MB, real, MIPS | 1.25 | does not read it | 16.0 | 0.50 |" in lines
    assert "| 0.6 MB, real, Intel | 1.10 | 1.30 | 8.20 | 6.40 |" in lines
    assert "| two threads | 1.90 |" in lines
    assert not any(line.startswith("| 67 MB") for line in lines)


def test_what_does_not_grow_is_left_out(text: str):
    assert "| `read` | frames | 1.01 |" in text
    assert "`name`" not in text


def test_the_pictures_lie_where_the_page_looks_for_them(text: str, docs: Path):
    pictures = sorted((docs / "pictures").iterdir())
    assert len(pictures) == 4
    for picture in pictures:
        assert f"](pictures/{picture.name})" in text
        assert picture.read_bytes().startswith(b"\x89PNG")
