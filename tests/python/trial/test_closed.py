"""Whatever is asked of a closed trial says that it is closed, not what was called to find out."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np
import pytest
from moxPY.trial import Trial
from support.small_trials import example_trial

PARTS = (
    *("markers", "angles", "forces", "moments", "powers", "points", "analogs"),
    *("events", "platforms", "rotations", "metadata"),
)
QUESTIONS: dict[str, Callable[[Trial, dict[str, Any]], Any]] = {
    **{
        name: lambda trial, _, name=name: getattr(trial, name)
        for name in (
            *("rate", "frames", "first_frame", "last_frame", "time", "duration"),
            *("samples_per_frame", "warnings", "path"),
        )
    },
    **{f"len({part})": lambda _, parts, part=part: len(parts[part]) for part in PARTS},
    **{f"list({part})": lambda _, parts, part=part: list(parts[part]) for part in PARTS},
    "analysis": lambda _, parts: dict(parts["analysis"]),
    "markers.values": lambda _, parts: parts["markers"].values,
    "markers.gaps": lambda _, parts: parts["markers"].gaps(),
    "analogs.values": lambda _, parts: parts["analogs"].values,
    "analogs.time": lambda _, parts: parts["analogs"].time,
    "analogs.rate": lambda _, parts: parts["analogs"].rate,
    "rotations.time": lambda _, parts: parts["rotations"].time,
    "events.clear": lambda _, parts: parts["events"].clear(),
    "cycles": lambda trial, _: trial.cycles("Left"),
    "rate=": lambda trial, _: setattr(trial, "rate", 50.0),
    "first_frame=": lambda trial, _: setattr(trial, "first_frame", 2),
    "markers.values=": lambda _, parts: setattr(parts["markers"], "values", np.zeros((1, 1, 3))),
    "analogs.values=": lambda _, parts: setattr(parts["analogs"], "values", np.zeros((1, 1))),
}


@pytest.fixture
def parts() -> tuple[Trial, dict[str, Any]]:
    trial = Trial.of(example_trial())
    parts = {part: getattr(trial, part) for part in (*PARTS, "analysis")}
    trial.close()
    return trial, parts


@pytest.mark.parametrize("question", QUESTIONS.values(), ids=QUESTIONS)
def test_a_closed_trial_says_that_it_is(
    parts: tuple[Trial, dict[str, Any]], question: Callable[..., Any]
) -> None:
    with pytest.raises(ValueError, match=r"^the trial was closed$"):
        question(*parts)


def test_each_part_of_a_closed_trial_shows_itself(parts: tuple[Trial, dict[str, Any]]) -> None:
    shown = {part: repr(value) for part, value in parts[1].items()}
    assert shown == {part: f"<{part}: closed>" for part in shown}
    group = Trial.of(example_trial()).metadata["POINT"]
    group._trial.close()
    assert repr(group) == "<metadata group: closed>"
