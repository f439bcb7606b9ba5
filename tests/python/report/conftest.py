"""What the tests of reports share."""

from __future__ import annotations

import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import moxPY
import pytest
from support.chromium import browser


@pytest.fixture
def walk() -> moxPY.Trial:
    """The example trial."""
    return moxPY.read(moxPY.example())


@pytest.fixture
def other(walk: moxPY.Trial, tmp_path: Path) -> moxPY.Trial:
    """Another trial of the same subject, with other angles, that begins later."""
    trial = moxPY.read(moxPY.example())
    for _, channel in trial.angles.items():
        channel.values = channel.values + 5.0
    trial.crop(start=0.1, stop=3.1).write(tmp_path / "walk_2.c3d")
    return moxPY.read(tmp_path / "walk_2.c3d")


@pytest.fixture(scope="session")
def example_page(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The report of the example trial, with all that it can have."""
    with moxPY.read(moxPY.example()) as trial:
        return trial.report(tmp_path_factory.mktemp("reports") / "walk.html")


@pytest.fixture(scope="session")
def driver() -> Iterator[Any]:
    """The browser."""
    with browser() as found:
        yield found


@pytest.fixture(autouse=True)
def without_pyplot(monkeypatch: pytest.MonkeyPatch) -> Iterator[None]:
    """Reports are made without pyplot, and nobody imports it."""
    monkeypatch.delitem(sys.modules, "matplotlib.pyplot", raising=False)
    yield
    assert "matplotlib.pyplot" not in sys.modules
