"""What the tests of pictures share."""

from __future__ import annotations

import sys
from collections.abc import Iterator
from pathlib import Path

import moxPY
import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@pytest.fixture(scope="session")
def example() -> moxPY.Trial:
    """The example trial, which tests must not change."""
    return moxPY.read(EXAMPLE)


@pytest.fixture
def walk() -> moxPY.Trial:
    """A copy of the example trial to change."""
    return moxPY.read(EXAMPLE)


@pytest.fixture(autouse=True)
def without_pyplot(monkeypatch: pytest.MonkeyPatch) -> Iterator[None]:
    """Pictures are drawn without pyplot, and nobody imports it."""
    monkeypatch.delitem(sys.modules, "matplotlib.pyplot", raising=False)
    yield
    assert "matplotlib.pyplot" not in sys.modules
