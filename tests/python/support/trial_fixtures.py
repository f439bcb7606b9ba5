"""The acquisitions that tests of editing start from; a folder's conftest.py names those it uses."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import pytest

from support.small_trials import KINDS, RICH, new_trial


@pytest.fixture
def trial() -> Any:
    """A new acquisition with channels of all types, events and metadata."""
    return new_trial()


@pytest.fixture(params=RICH)
def rich_trial(request: pytest.FixtureRequest, tmp_path: Path) -> Any:
    """The same channels in a new acquisition and in one that was read."""
    return RICH[request.param](tmp_path)


@pytest.fixture(params=KINDS)
def any_trial(request: pytest.FixtureRequest, tmp_path: Path) -> Any:
    """Rich and poor acquisitions, new and read."""
    return KINDS[request.param](tmp_path)


@pytest.fixture(params=[kind for kind in KINDS if kind != "example"])
def small_trial(request: pytest.FixtureRequest, tmp_path: Path) -> Any:
    """All of them but the gait trial, for tests in great numbers."""
    return KINDS[request.param](tmp_path)
