"""The folder that the site is made of."""

from __future__ import annotations

import shutil
from pathlib import Path

from pages import function_pages, layers, object_pages
from pages.contents import CHAPTERS, PROJECT, START, Chapter, Page, pages
from pages.links import rewritten

_PLAYER = """
```{raw} html
<p><iframe class="player" src="_static/walk.html" title="The example trial in the player"
  loading="lazy"></iframe></p>
```
"""


def stage(folder: Path) -> None:
    """Make the folder anew, with every page in it."""
    if folder.exists():
        shutil.rmtree(folder)
    (folder / "reference").mkdir(parents=True)
    shutil.copytree(PROJECT / "docs" / "pictures", folder / "pictures")
    layers.write(folder / "pictures" / layers.PICTURE.name)
    names = {page.file: f"{page.name}.md" for page in pages()}
    for page in pages():
        text = rewritten(page.file.read_text("utf-8"), page.file.parent, names)
        if page.name == "player":
            text = _with_player(text)
        if page == START:
            text += _table_of_contents([chapter.name for chapter in CHAPTERS], hidden=True)
        (folder / f"{page.name}.md").write_text(text, "utf-8")
    for chapter in CHAPTERS:
        (folder / f"{chapter.name}.md").write_text(_chapter(chapter), "utf-8")
    function_pages.write(folder / "reference")
    object_pages.write(folder / "reference")


def _with_player(text: str) -> str:
    """The page about the player shows it in motion, in the place of its picture."""
    before, found, behind = text.partition("![")
    picture, _, behind = behind.partition("\n")
    if not found or "player.png" not in picture:
        raise ValueError("the page about the player does not begin with its picture")
    return before + _PLAYER.lstrip() + behind


def _chapter(chapter: Chapter) -> str:
    there = [page for page in chapter.pages if page.file.exists()]
    names = [name for name, _ in chapter.made] + [page.name for page in there]
    entries = [f"[](/{name})\n: {what}\n" for name, what in chapter.made]
    entries += [_entry(page) for page in there]
    return "\n".join(
        [f"# {chapter.title}\n", f"{chapter.introduction}\n", *entries]
    ) + _table_of_contents(names, hidden=True)


def _entry(page: Page) -> str:
    return f"[{page.title}](/{page.name}.md)\n: {page.summary}\n"


def _table_of_contents(names: list[str], *, hidden: bool) -> str:
    lines = ["", "```{toctree}", *([":hidden:"] if hidden else []), "", *names, "```", ""]
    return "\n".join(lines)
