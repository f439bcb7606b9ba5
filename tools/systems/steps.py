"""Folders that are made once, or anew when their recipe changes."""

from __future__ import annotations

import os
import shutil
import sys
from collections.abc import Callable
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
# Elsewhere, several checkouts share what takes long to fetch and to make.
SYSTEMS = Path(os.environ.get("MOX_SYSTEMS", PROJECT / "build" / "systems")).resolve()
STAMP = "made_by"


def made_once(folder: Path, recipe: str, make: Callable[[Path], None]) -> Path:
    """The folder, filled by `make` unless it was filled by the same recipe before.

    It appears in one step when all is done, so that an interrupted run leaves no half of it.
    """
    stamp = folder / STAMP
    if stamp.exists() and stamp.read_text(encoding="utf-8") == recipe:
        return folder
    print(f"Making {folder}", file=sys.stderr, flush=True)
    unfinished = folder.with_name(folder.name + ".unfinished")
    shutil.rmtree(unfinished, ignore_errors=True)
    unfinished.mkdir(parents=True)
    make(unfinished)
    (unfinished / STAMP).write_text(recipe, encoding="utf-8")
    shutil.rmtree(folder, ignore_errors=True)
    unfinished.replace(folder)
    return folder
