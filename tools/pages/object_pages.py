"""The reference of `Trial`, by what one wants, and of all that belongs to it, by subject."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from pathlib import Path

import moxPY

TRIAL: Mapping[str, Sequence[str]] = {
    "Making one": ("new", "of", "copy"),
    "Its clock": (
        "rate",
        "frames",
        "samples_per_frame",
        "first_frame",
        "last_frame",
        "time",
        "duration",
    ),
    "Its parts": (
        "markers",
        "angles",
        "forces",
        "moments",
        "powers",
        "points",
        "analogs",
        "events",
        "platforms",
        "rotations",
        "metadata",
        "analysis",
    ),
    "Another trial made of it": (
        "crop",
        "resample",
        "fill_gaps",
        "filter",
        "rotated",
        "x_up",
        "y_up",
        "z_up",
        "in_units",
        "merged",
    ),
    "What it tells": ("cycles", "gait", "check", "differences", "unread", "warnings", "path"),
    "Files, tables, pictures": (
        "write",
        "export",
        "to_pandas",
        "to_polars",
        "to_xarray",
        "plot",
        "view",
        "report",
        "to_rerun",
    ),
    "Its memory": ("close", "closed", "this"),
}

# Page: title, then classes and functions by the module that offers them.
OBJECTS: Mapping[str, tuple[str, Sequence[str]]] = {
    "opening": ("Opening files", ("moxPY.read", "moxPY.TrialWarning", "moxPY.example")),
    "channels": (
        "Channels",
        (
            "moxPY.trial.Channels",
            "moxPY.trial.Points",
            "moxPY.trial.Analogs",
            "moxPY.Channel",
            "moxPY.Gap",
            "moxPY.trial.MeanCycle",
        ),
    ),
    "events": (
        "Events and cycles",
        ("moxPY.trial.Events", "moxPY.trial.Event", "moxPY.trial.Cycle"),
    ),
    "platforms": (
        "Force platforms",
        (
            "moxPY.trial.Platforms",
            "moxPY.trial.Platform",
            "moxPY.trial.Wrench",
            "moxPY.trial.WrenchUnits",
        ),
    ),
    "rotations": ("Rotations", ("moxPY.trial.Rotations",)),
    "metadata": (
        "Metadata and analysis parameters",
        (
            "moxPY.trial.Metadata",
            "moxPY.trial.MetadataGroup",
            "moxPY.trial.Entry",
            "moxPY.trial.Analysis",
            "moxPY.trial.AnalysisParameter",
        ),
    ),
    "gait": (
        "Parameters of walking",
        ("moxPY.gait.Gait", "moxPY.gait.GaitSide", "moxPY.gait.Measure", "moxPY.gait.LeftOut"),
    ),
    "pictures": (
        "Pictures",
        ("moxPY.plots.Plots", "moxPY.player.Player", "moxPY.skeleton.sticks_of"),
    ),
    "comparing": (
        "Findings and differences",
        (
            "moxPY.checks.Finding",
            "moxPY.checks.Rule",
            "moxPY.checks.Limit",
            "moxPY.differences.Difference",
        ),
    ),
    "many_files": (
        "Many files",
        (
            "moxPY.map_files",
            "moxPY.collect",
            "moxPY.Result",
            "moxPY.batch.Results",
            "moxPY.batch.gather",
        ),
    ),
    "formats": (
        "Formats",
        (
            "moxPY.formats.Format",
            "moxPY.formats.register",
            "moxPY.formats.formats",
            "moxPY.formats.Options",
            "moxPY.formats.Target",
        ),
    ),
    "handle": ("The handle of the functions", ("moxPY.data_store",)),
}


def write(folder: Path) -> None:
    """Write the pages into a folder."""
    (folder / "trial.rst").write_text(_trial(), "utf-8")
    lines = [
        *_title("Objects"),
        ".. toctree::",
        "   :maxdepth: 1",
        "",
        *(f"   {name}" for name in OBJECTS),
        "",
    ]
    (folder / "objects.rst").write_text("\n".join(lines), "utf-8")
    for name, (title, members) in OBJECTS.items():
        blocks = [_object(member) for member in members]
        (folder / f"{name}.rst").write_text("\n".join([*_title(title), *blocks]), "utf-8")


def _trial() -> str:
    public = {name for name in vars(moxPY.Trial) if not name.startswith("_")}
    lines = [*_title("Trial"), ".. currentmodule:: moxPY", "", ".. autoclass:: Trial", ""]
    for heading, names in TRIAL.items():
        there = [name for name in names if name in public]
        lines += [heading, "-" * len(heading), ""]
        lines += [".. autosummary::", "   :nosignatures:", ""]
        lines += [f"   Trial.{name}" for name in there] + [""]
        for name in there:
            lines += [f".. auto{_kind(name)}:: Trial.{name}", ""]
    return "\n".join(lines)


def unlisted() -> set[str]:
    """Public members of `Trial` that no section names."""
    listed = {name for names in TRIAL.values() for name in names}
    return {name for name in vars(moxPY.Trial) if not name.startswith("_")} - listed


def _kind(name: str) -> str:
    member = vars(moxPY.Trial)[name]
    if isinstance(member, property):
        return "property"
    return "method" if callable(member) or isinstance(member, classmethod) else "attribute"


def _object(path: str) -> str:
    module, _, name = path.rpartition(".")
    found = getattr(__import__(module, fromlist=[name]), name)
    if isinstance(found, type):
        return f".. autoclass:: {path}\n   :members:\n"
    return f".. autofunction:: {path}\n"


def _title(text: str) -> list[str]:
    return [text, "=" * len(text), ""]
