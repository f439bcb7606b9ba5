"""``moxpy check``: what may be wrong with trials."""

from __future__ import annotations

from dataclasses import asdict
from functools import partial
from typing import Any

import click

from ..checks import RULES, Finding, check
from ..trial import Trial
from .each_file import EachFile, meant
from .json_array import JsonArray
from .lines import write_line, write_table
from .parameters import files_argument, jobs_option, parsed
from .parse import number

# From what is good to know to what is wrong whatever was recorded.
_SEVERITIES = ("note", "warning", "error")


def _show_rules(ctx: click.Context, parameter: click.Parameter, wanted: bool) -> None:
    if not wanted or ctx.resilient_parsing:
        return
    rows = []
    for rule in RULES:
        limits = [
            f"{limit.name} {limit.value:g} {limit.unit}".rstrip() + f": {limit.summary}"
            for limit in rule.limits
        ]
        rows.append((rule.id, rule.severity, "; ".join([rule.summary, *limits])))
    write_table(("Rule", "Severity", "What it finds, and its limits"), rows)
    ctx.exit()


@click.command("check")
@files_argument()
@click.option("--without", multiple=True, metavar="RULE", help="Leave out a rule.")
@click.option("--only", multiple=True, metavar="RULE", help="Ask this rule, and no others.")
@click.option(
    "--limit",
    "limits",
    multiple=True,
    metavar="NAME=NUMBER",
    callback=parsed(number),
    help="Another number for a rule to judge by; --rules shows their names.",
)
@click.option(
    "--least",
    type=click.Choice(_SEVERITIES),
    default="warning",
    show_default=True,
    help="Show, and count, what is at least so bad.",
)
@click.option("--json", "as_json", is_flag=True, help="Print a JSON array, an object a file.")
@jobs_option()
@click.option(
    "--rules",
    is_flag=True,
    is_eager=True,
    expose_value=False,
    callback=_show_rules,
    help="List the rules with their limits, and exit.",
)
def command(
    files: tuple[str, ...],
    without: tuple[str, ...],
    only: tuple[str, ...],
    limits: tuple[tuple[str, float], ...],
    least: str,
    as_json: bool,
    jobs: int | None,
) -> int:
    """Look for what may be wrong with trials.

    Each rule has a name, which findings begin with: gaps, jumps, doubled labels, events in a wrong
    order, dead analog channels, forces outside their platform and others. --rules lists them all.
    The exit code is 0 when nothing was found, 1 when something was, or a file failed.

    \b
    Examples:
      moxpy check walk.c3d
      moxpy check session/ --without baselines --without gaps
      moxpy check session/ --only gaps --limit gap_length=0.2
    """
    work = partial(_found, without=without, only=only or None, limits=dict(limits))
    _require_sense(work)
    found, failed = meant(files)
    trials = EachFile(work, found, jobs=jobs, computes=True)
    counted = _SEVERITIES[_SEVERITIES.index(least) :]
    worst = 0
    array = JsonArray() if as_json else None
    for file, everything in trials:
        findings = [each for each in everything if each.severity in counted]
        worst = worst or bool(findings)
        if array is not None:
            array.add({"file": str(file), "findings": [asdict(each) for each in findings]})
        else:
            _show(str(file), findings)
    if array is not None:
        array.end()
    return 1 if failed or trials.failed or worst else 0


def _found(
    trial: Trial, without: tuple[str, ...], only: tuple[str, ...] | None, limits: dict[str, float]
) -> list[Finding]:
    return check(trial, without=without, only=only, **limits)


def _require_sense(work: Any) -> None:
    """Refuse rules and limits that there are not before any file is read."""
    try:
        with Trial.new() as nothing:
            work(nothing)
    except (ValueError, TypeError) as error:
        raise click.UsageError(str(error)) from None


def _show(title: str, findings: list[Finding]) -> None:
    write_line(title)
    if not findings:
        write_line("  nothing found")
    rows = [
        (
            f"  {each.severity}",
            each.rule,
            f"{each.channel}: {each.text}" if each.channel else each.text,
        )
        for each in findings
    ]
    write_table(None, rows)
