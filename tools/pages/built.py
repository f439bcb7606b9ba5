"""Whether links of a site lead anywhere, and nothing of it comes from another host."""

from __future__ import annotations

import re
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

# What a browser fetches to show a page. A link that a reader may follow is another matter.
_FETCHED = {
    "script": "src",
    "img": "src",
    "iframe": "src",
    "source": "src",
    "video": "src",
    "audio": "src",
    "embed": "src",
    "object": "data",
    "link": "href",
}


_OF_STYLE = re.compile(r"""(?:url\(\s*|@import\s+)["']?((?:https?:)?//[^"')\s]+)""")


class _Page(HTMLParser):
    """The ids of a page, where its links lead, and what it fetches."""

    def __init__(self, text: str) -> None:
        super().__init__()
        self.ids: set[str] = set()
        self.links: list[str] = []
        self.fetched: list[str] = []
        self.feed(text)

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        values = {name: value for name, value in attributes if value}
        if "id" in values:
            self.ids.add(values["id"])
        if tag == "a" and "href" in values:
            self.links.append(values["href"])
        if tag in _FETCHED and _FETCHED[tag] in values:
            self.fetched.append(values[_FETCHED[tag]])


def faults(folder: Path) -> list[str]:
    """What is wrong with the pages below a folder, a line each."""
    read = {
        path: _Page(path.read_text("utf-8"))
        for path in sorted(folder.rglob("*.html"))
        # There the theme keeps templates.
        if path.relative_to(folder).parts[0] != "_static"
    }
    found = []
    for path, page in read.items():
        name = path.relative_to(folder)
        for target in page.fetched:
            parts = urlsplit(target)
            if parts.scheme in {"http", "https"} or parts.netloc:
                found.append(f"{name}: fetches {target}")
            elif parts.scheme != "data" and not _file(path, parts.path).exists():
                found.append(f"{name}: {target} is not there")
        found += [f"{name}: {text}" for link in page.links if (text := _dead(path, link, read))]
    for path in sorted(folder.rglob("*.css")):
        foreign = _OF_STYLE.findall(path.read_text("utf-8"))
        found += [f"{path.relative_to(folder)}: fetches {target}" for target in foreign]
    return found


def _file(page: Path, target: str) -> Path:
    return (page.parent / unquote(target)).resolve() if target else page


def _dead(page: Path, link: str, pages: dict[Path, _Page]) -> str:
    """Why a link leads nowhere; "" where it does not."""
    parts = urlsplit(link)
    if parts.scheme or parts.netloc:
        return ""
    file = _file(page, parts.path)
    if not file.exists():
        return f"the link to {link} leads nowhere"
    anchor = unquote(parts.fragment)
    if anchor and file in pages and anchor not in pages[file].ids:
        return f"{link} names no place on that page"
    return ""
