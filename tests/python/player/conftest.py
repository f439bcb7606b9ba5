"""What the tests of the player share."""

from __future__ import annotations

from collections.abc import Iterator
from pathlib import Path
from typing import Any

import moxPY
import pytest
from support.chromium import Shown, browser

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@pytest.fixture
def walk() -> moxPY.Trial:
    """The example trial."""
    return moxPY.read(EXAMPLE)


@pytest.fixture(scope="session")
def driver() -> Iterator[Any]:
    """The browser."""
    with browser() as found:
        yield found


@pytest.fixture(scope="session")
def walk_page(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The page of the example trial."""
    path = tmp_path_factory.mktemp("pages") / "walk.html"
    with moxPY.read(EXAMPLE) as trial:
        trial.view(path)
    return path


@pytest.fixture
def shown(driver: Any, walk_page: Path) -> Iterator[Shown]:
    """The page of the example trial in the browser; the console must have nothing to say."""
    page = Shown(driver, walk_page)
    page.errors()
    yield page
    assert page.errors() == []
