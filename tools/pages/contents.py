"""The chapters of the site and their pages, in the order in which they are read."""

from __future__ import annotations

import re
from collections.abc import Sequence
from dataclasses import dataclass, field
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]


@dataclass(frozen=True)
class Page:
    """A page: its name on the site, and the file that it is read from."""

    name: str
    source: str = ""

    @property
    def file(self) -> Path:
        return PROJECT / (self.source or f"docs/{self.name}.md")

    @property
    def title(self) -> str:
        return self.file.read_text("utf-8").partition("\n")[0].lstrip("# ")

    @property
    def summary(self) -> str:
        """The first sentence behind the title."""
        paragraphs = self.file.read_text("utf-8").split("\n\n")
        text = next(part for part in paragraphs[1:] if part[0].isalnum() or part[0] in "`*[")
        text = re.sub(r"\[([^\]]+)\]\([^)]+\)", r"\1", " ".join(text.split()))
        return re.split(r"(?<=\.) ", text)[0]


@dataclass(frozen=True)
class Chapter:
    """Some pages that belong together, with those that are made for the site in front."""

    name: str
    title: str
    introduction: str
    pages: Sequence[Page]
    #: name on the site and what it is
    made: Sequence[tuple[str, str]] = field(default=())


START = Page("index", "README.md")

CHAPTERS = (
    Chapter(
        "getting_started",
        "Getting started",
        "From installing to the first numbers, and everyday tasks in a few lines.",
        [
            Page("start"),
            Page("cookbook"),
            Page("glossary"),
            Page("example_trial", "examples/README.md"),
            Page("systems"),
        ],
    ),
    Chapter(
        "how_to",
        "How to",
        "A page for each thing that one does with trials.",
        [
            Page("gait"),
            Page("force_platforms"),
            Page("plots"),
            Page("player"),
            Page("reports"),
            Page("checks"),
            Page("writing"),
            Page("exports"),
            Page("opensim"),
            Page("batches"),
            Page("command_line"),
        ],
    ),
    Chapter(
        "functions",
        "The functions",
        "How scripts that call the `mox…` functions read and change each kind of content.",
        [
            Page("reading"),
            Page("points"),
            Page("analogs"),
            Page("events"),
            Page("metadata"),
        ],
    ),
    Chapter(
        "reference",
        "Reference",
        "What each name does, and what numbers, files and messages mean.",
        [
            Page("conventions"),
            Page("errors"),
            Page("quirks"),
            Page("c3d"),
            Page("promises"),
            Page("benchmarks"),
            Page("measuring", "benchmarks/README.md"),
        ],
        [
            ("reference/trial", "`moxPY.Trial`: one recording with everything in it."),
            ("reference/objects", "What a trial consists of, and what its methods give."),
            ("reference/functions", "The `mox…` functions, by family, with their prototypes."),
        ],
    ),
    Chapter(
        "development",
        "Development",
        "How it is made and tested, and how to add to it.",
        [
            Page("architecture"),
            Page("contributing", "CONTRIBUTING.md"),
            Page("plugins", "examples/plugin/README.md"),
            Page("testing", "tests/README.md"),
            Page("changes", "CHANGELOG.md"),
        ],
    ),
)


def pages() -> list[Page]:
    """All pages that are read from files which exist."""
    listed = [START, *(page for chapter in CHAPTERS for page in chapter.pages)]
    return [page for page in listed if page.file.exists()]
