"""What was odd about the file."""

from __future__ import annotations

from collections.abc import Iterator

from .recording import Recording
from .rule import Fault


def contradictions(recording: Recording) -> Iterator[Fault]:
    """Whatever reading the file found odd: parts that contradict each other, parts that are
    missing or cut short, each with the text of `Trial.warnings`. There is nothing to judge. A trial
    that does not say its rate is judged as if it had one frame a second."""
    for text in recording.trial.warnings:
        yield Fault(" ".join(text.split()))
    if recording.frames and not recording.trial.rate > 0.0:
        yield Fault("the trial does not say how many frames a second it has")
