"""What the tests of the player share."""

from __future__ import annotations

from pathlib import Path

import moxPY
import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@pytest.fixture
def walk() -> moxPY.Trial:
    """The example trial."""
    return moxPY.read(EXAMPLE)
