"""What a row of the table says of a trial."""

from __future__ import annotations

import hashlib
import os
from pathlib import Path
from typing import Any

from ..checks import check
from ..trial import Trial
from ..trial.kinds import KINDS
from ..trial.summary import summary

Row = dict[str, Any]


def row(trial: Trial) -> Row:
    """The row of a trial that was read from a file.

    Returns
    -------
    dict
        A value for each of `moxPY.index.columns.COLUMNS`. The file is named as the trial knows it.

    Raises
    ------
    OSError
        The file went away.
    """
    assert trial.path is not None
    facts = summary(trial)
    lost = [gap["last"] - gap["first"] + 1 for gap in facts["gaps"] if gap["kind"] == "markers"]
    labels = {kind: _labels(facts, kind) for kind in KINDS}
    return {
        **state(trial.path),
        "sha256": content_hash(trial.path),
        "subject": ", ".join(facts["subjects"]) or None,
        "date": facts["date"],
        "frames": facts["frames"],
        "first_frame": facts["first_frame"],
        "rate": facts["rate"],
        "analog_rate": facts["rate"] and facts["rate"] * facts["samples_per_frame"],
        "duration": facts["duration"],
        **{kind: len(labels[kind]) for kind in KINDS},
        "rotations": len(facts["rotations"]),
        "platforms": len(facts["platforms"]),
        "marker_labels": labels["markers"],
        "analog_labels": labels["analogs"],
        "lost_frames": sum(lost),
        "longest_gap": max(lost, default=0),
        "events": [
            {name: event[name] for name in ("time", "context", "label")}
            for event in facts["events"]
        ],
        "checks": [
            {
                "rule": each.rule,
                "severity": each.severity,
                "channel": each.channel,
                "text": each.text,
            }
            for each in check(trial)
        ],
        "odd": facts["odd"],
    }


def state(file: Path) -> Row:
    """Name, size and time of a file: while they stay, so does its content."""
    status = file.stat()
    return {"file": name_of(file), "size": status.st_size, "modified": status.st_mtime_ns}


def name_of(file: Path) -> str:
    """The name of a file as a table can hold it: bytes that are no text are spelt out."""
    return os.fsencode(file).decode("utf-8", "backslashreplace")


def content_hash(file: Path) -> str:
    """SHA-256 of the file's bytes."""
    with file.open("rb") as content:
        return hashlib.file_digest(content, "sha256").hexdigest()


def _labels(facts: dict[str, Any], kind: str) -> list[str]:
    labels: list[str] = facts["channels"].get(kind, {"labels": []})["labels"]
    return labels
