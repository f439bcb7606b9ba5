"""What `Trial.check` gives, and how rules are chosen."""

from __future__ import annotations

from pathlib import Path

import _moxPY
import pytest
from checks.made_trials import clean_trial, put, the_one
from moxPY.checks import RULES, Finding, check
from moxPY.trial import Trial
from support.small_trials import KINDS

REPOSITORY = Path(__file__).resolve().parents[3]


def test_a_trial_in_which_all_is_well_has_no_findings() -> None:
    assert clean_trial().check() == []


@pytest.mark.parametrize("kind", KINDS)
def test_rich_and_poor_trials_can_be_checked_and_stay_as_they_were(
    kind: str, tmp_path: Path
) -> None:
    trial = Trial.of(KINDS[kind](tmp_path))
    before = trial.copy()
    for finding in trial.check():
        assert finding.rule in {rule.id for rule in RULES}
        assert finding.text == " ".join(finding.text.split())
    assert trial.differences(before) == []


def test_a_finding_has_the_severity_of_its_rule_and_says_where() -> None:
    trial = clean_trial()
    put(trial, "RTOE", 100, float("nan"), 104)
    assert the_one(check(trial)) == Finding(
        rule="gaps",
        severity="warning",
        channel="RTOE",
        text="1 gap of 5 frames (0.05 s), frames 100 to 104",
        frames=(100, 104),
        time=0.99,
    )


def test_rules_are_left_out_or_asked_alone() -> None:
    trial = clean_trial()
    put(trial, "RTOE", 100, float("nan"), 104)
    trial.markers["*1"] = trial.markers["RTOE"].values * 0.5
    assert [finding.rule for finding in trial.check()] == ["gaps", "gaps", "unlabelled"]
    assert [finding.rule for finding in trial.check(without="gaps")] == ["unlabelled"]
    assert trial.check(without=["gaps", "unlabelled"]) == []
    assert [finding.rule for finding in trial.check(only=("unlabelled",))] == ["unlabelled"]
    assert trial.check(only=["gaps"], without=["gaps"]) == []
    assert trial.check(only=()) == []


def test_limits_are_changed_by_name() -> None:
    trial = clean_trial()
    put(trial, "RTOE", 100, float("nan"), 104)
    assert trial.check(gap_length=0.06) == []
    assert len(trial.check(gap_length=0.05)) == 1


def test_what_there_is_not_is_refused() -> None:
    trial = clean_trial()
    with pytest.raises(ValueError, match="there is no rule 'gap'; nearest: gaps"):
        trial.check(without="gap")
    with pytest.raises(ValueError, match="there is no rule 'jump'; nearest: jumps"):
        trial.check(only=["gaps", "jump"])
    with pytest.raises(TypeError, match="there is no limit 'gap_lenght'; nearest: gap_length"):
        trial.check(gap_lenght=1.0)
    for value in (-1.0, float("nan"), float("inf")):
        with pytest.raises(
            ValueError, match=f"'gap_length' is a number from 0 upwards, not {value}"
        ):
            trial.check(gap_length=value)


def test_a_trial_without_a_rate_is_checked_and_told_so() -> None:
    trial = Trial.of(_moxPY.moxNewAcquisition(2, 10))
    assert the_one(trial.check(only="contradictions")).text == (
        "the trial does not say how many frames a second it has"
    )
    assert trial.check()


def test_a_closed_trial_cannot_be_checked() -> None:
    trial = clean_trial()
    trial.close()
    with pytest.raises(ValueError, match="closed"):
        trial.check()


# The rules.


def test_ids_and_limits_are_told_apart() -> None:
    assert len({rule.id for rule in RULES}) == len(RULES)
    limits = {limit for rule in RULES for limit in rule.limits}
    assert len({limit.name for limit in limits}) == len(limits)
    assert all(rule.id.isidentifier() and rule.summary and rule.function.__doc__ for rule in RULES)


def test_the_page_has_the_rules() -> None:
    page = (REPOSITORY / "docs" / "checks.md").read_text("utf-8")
    assert [line for line in page.splitlines() if line.startswith("| `")] == [
        *(f"| `{rule.id}` | {rule.severity} | {rule.summary} |" for rule in RULES),
        *(
            f"| `{limit.name}` | {f'{limit.value:g} {limit.unit}'.strip()} | {limit.summary} | "
            + ", ".join(f"`{rule.id}`" for rule in RULES if limit in rule.limits)
            + " |"
            for limit in dict.fromkeys(limit for rule in RULES for limit in rule.limits)
        ),
    ]
