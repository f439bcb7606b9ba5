"""What the tests of commands share."""

from __future__ import annotations

import shutil
from collections.abc import Callable
from pathlib import Path
from typing import NamedTuple

import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


class Called(NamedTuple):
    """What came of a call."""

    code: int
    out: str
    err: str


@pytest.fixture
def call(capsys: pytest.CaptureFixture[str]) -> Callable[..., Called]:
    """Runs a command in this process."""
    from moxPY.commands import main

    def run(*words: str | Path) -> Called:
        code = main([str(word) for word in words])
        return Called(code, *capsys.readouterr())

    return run


@pytest.fixture
def walk(tmp_path: Path) -> Path:
    """A copy of the example trial."""
    path = tmp_path / "walk.c3d"
    shutil.copyfile(EXAMPLE, path)
    return path
