"""The page about errors quotes texts that are raised."""

from __future__ import annotations

import re
from pathlib import Path

import pytest

REPOSITORY = Path(__file__).resolve().parents[3]
PAGE = (REPOSITORY / "docs" / "errors.md").read_text("utf-8")
FOLDERS = ("store", "acquisition", "api", "module", "plugins", "platform")

# Python's own, for a missing argument.
PYTHONS_OWN = "moxGetPoint() missing 1 required positional argument: 'point'"


def quoted() -> list[str]:
    rows = [line for line in PAGE.splitlines() if line.startswith("|")]
    return [text for row in rows for text in re.findall(r'"([^"]+)"', row) if text != PYTHONS_OWN]


@pytest.fixture(scope="module")
def sources() -> str:
    """All C++ sources, with string literals that stand behind each other made one."""
    files = [path for name in FOLDERS for path in sorted((REPOSITORY / name).rglob("*.[ch]pp"))]
    text = "\n".join(path.read_text("utf-8") for path in files)
    return re.sub(r'"\s*"', "", text)


def test_texts_are_quoted() -> None:
    assert len(quoted()) > 20


@pytest.mark.parametrize("text", quoted())
def test_every_text_that_is_quoted_stands_in_the_sources(text: str, sources: str) -> None:
    # What a message fills in stands for itself, for any number, name or type.
    parts = re.split(r"…|'\w+'|argument \d|'[\w:]+'", text)
    for part in filter(None, (part.strip(" ,.") for part in parts)):
        assert part in sources
