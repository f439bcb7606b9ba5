"""What a report says, read back from the file."""

from __future__ import annotations

import re
from html import unescape
from html.parser import HTMLParser
from typing import NamedTuple

# Which pictures of drawings and players are no part of the text.
_OUTSIDE = re.compile(r"<svg.*?</svg>|<iframe.*?</iframe>|<style.*?</style>", re.DOTALL)
_SECTION = re.compile(r'<section id="([^"]*)"><h2>(.*?)</h2>(.*?)</section>', re.DOTALL)


class Part(NamedTuple):
    """A section of a page."""

    title: str
    tables: list[list[list[str]]]  #: tables of rows of cells, heads among them
    texts: list[str]  #: what stands in paragraphs and lists
    captions: list[str]  #: of pictures that have one
    pictures: list[str]  #: what each picture is called


def sections(page: str) -> dict[str, Part]:
    """The sections of a page by their ids."""
    return {name: _part(unescape(title), body) for name, title, body in _SECTION.findall(page)}


def players(page: str) -> list[str]:
    """The pages of the players inside."""
    return [unescape(text) for text in re.findall(r'<iframe [^>]*srcdoc="([^"]*)"', page)]


def without_players(page: str) -> str:
    return re.sub(r"<iframe.*?</iframe>", "", page, flags=re.DOTALL)


def _part(title: str, body: str) -> Part:
    pictures = [unescape(name) for name in re.findall(r'role="img" aria-label="([^"]*)"', body)]
    reader = _Reader()
    reader.feed(_OUTSIDE.sub("", body))
    return Part(title, reader.tables, reader.texts, reader.captions, pictures)


class _Reader(HTMLParser):
    def __init__(self) -> None:
        super().__init__()
        self.tables: list[list[list[str]]] = []
        self.texts: list[str] = []
        self.captions: list[str] = []
        self._into: list[str] | None = None

    def handle_starttag(self, tag: str, attrs: object) -> None:
        if tag == "table":
            self.tables.append([])
        elif tag == "tr":
            self.tables[-1].append([])
        elif tag in ("th", "td", "p", "li", "figcaption"):
            places = {"p": self.texts, "li": self.texts, "figcaption": self.captions}
            self._into = places[tag] if tag in places else self.tables[-1][-1]
            self._into.append("")

    def handle_endtag(self, tag: str) -> None:
        if tag in ("th", "td", "p", "li", "figcaption"):
            self._into = None

    def handle_data(self, data: str) -> None:
        if self._into is not None:
            self._into[-1] += data
