"""`moxpy check`: what may be wrong with trials, and an exit code that says so."""

from __future__ import annotations

import json
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from moxPY.checks import RULES

Call = Callable[..., Any]


@pytest.fixture
def sound(walk: Path) -> Path:
    """A trial in which nothing is wrong."""
    trial = moxPY.Trial.new(100, 100.0)
    time = np.linspace(0.0, 6.0, 100)
    for number, label in enumerate(("LASI", "RASI", "SACR")):
        place = 300.0 * number
        trial.markers[label] = np.column_stack(
            [place + 90 * np.sin(time + number), 50 * time, time]
        )
    trial.markers.unit = "mm"
    trial.write(walk)
    return walk


def with_late_event(path: Path) -> Path:
    trial = moxPY.read(path)
    trial.events.add("Foot Strike", 5.0, "Left")
    late = path.with_name("late.c3d")
    trial.write(late)
    return late


def test_a_sound_trial_has_no_findings(call: Call, sound: Path):
    assert call("check", sound) == (0, f"{sound}\n  nothing found\n", "")


def test_findings_say_how_bad_which_rule_and_what(call: Call, sound: Path):
    late = with_late_event(sound)
    (finding,) = moxPY.read(late).check()
    code, out, err = call("check", sound, late)
    assert (code, err) == (1, "")
    line = f"  error  outside  {finding.channel + ': ' if finding.channel else ''}{finding.text}\n"
    assert out == f"{sound}\n  nothing found\n{late}\n{line}"


def test_rules_are_left_out_and_chosen(call: Call, sound: Path):
    late = with_late_event(sound)
    assert call("check", late, "--without", "outside").code == 0
    assert call("check", late, "--only", "gaps", "--only", "order").code == 0
    assert call("check", late, "--only", "outside").code == 1


def test_notes_are_shown_and_counted_on_request(call: Call, sound: Path):
    trial = moxPY.read(sound)
    values = trial.markers["SACR"].values.copy()
    values[-3:] = np.nan
    trial.markers["SACR"] = values
    trial.write(sound)
    assert call("check", sound).code == 0
    code, out, _ = call("check", sound, "--least", "note")
    assert code == 1
    assert "  note  ends  " in out


def test_limits_are_changed_by_name(call: Call, sound: Path):
    trial = moxPY.read(sound)
    values = trial.markers["SACR"].values.copy()
    values[10:15] = np.nan
    trial.markers["SACR"] = values
    trial.write(sound)
    assert call("check", sound, "--only", "gaps").code == 1
    assert call("check", sound, "--only", "gaps", "--limit", "gap_length=0.06").code == 0


def test_json_has_the_fields_of_findings(call: Call, sound: Path):
    late = with_late_event(sound)
    code, out, _ = call("check", "--json", late, sound)
    first, second = json.loads(out)
    (finding,) = moxPY.read(late).check()
    assert code == 1
    assert second == {"file": str(sound), "findings": []}
    assert first["findings"][0]["rule"] == "outside"
    assert first["findings"][0]["time"] == finding.time


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["--only", "gap"], "there is no rule 'gap'; nearest: gaps"),
        (["--without", "gap"], "there is no rule 'gap'"),
        (["--limit", "gap_len=1"], "there is no limit 'gap_len'; nearest: gap_length"),
        (["--limit", "gap_length=far"], "'gap_length=far' is no number for a name"),
        (["--limit", "gap_length=-1"], "a number from 0 upwards, not -1"),
    ],
)
def test_what_there_is_not_is_refused(words: list[str], text: str, call: Call):
    code, out, err = call("check", "missing.c3d", *words)
    assert (code, out) == (2, "")
    assert text in " ".join(err.split())


def test_a_file_that_fails_counts_too(call: Call, sound: Path, tmp_path: Path):
    missing = tmp_path / "missing.c3d"
    code, out, err = call("check", missing, sound)
    assert (code, out) == (1, f"{sound}\n  nothing found\n")
    assert err == f"{missing}: No such file or directory\n"


def test_the_rules_are_listed(call: Call):
    code, out, _ = call("check", "--rules")
    lines = out.splitlines()
    assert code == 0
    assert [line.split()[0] for line in lines[1:]] == [rule.id for rule in RULES]
    gaps = next(line for line in lines if line.startswith("gaps "))
    assert gaps.endswith(
        "a marker was lost and seen again; gap_length 0 s: the shortest gap that counts"
    )
