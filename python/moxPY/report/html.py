"""A report as one file of HTML, which needs nothing beside it."""

from __future__ import annotations

import base64
import io
import re
from collections.abc import Iterable, Iterator
from html import escape
from importlib.resources import files
from itertools import count
from typing import Any

from ..functions.plugins import moxGetVersion
from ..trial.extras import require
from .blocks import Block, Moving, Notes, NotThere, Picture, Section, Table
from .drawing import drawn, house_style
from .sections import Content

# A drawing of more than so many letters is a picture of dots instead: EMG has a point a sample.
_LONGEST_SVG = 600_000
_DOTS_PER_INCH = 130

# Of a player: most of a screen, so that there is something beside it to scroll the page by.
_HEIGHT = "clamp(26rem, 88vh, 54rem)"

# The page holds all it needs, so nothing is fetched and nothing sent. Players have a script.
_POLICY = (
    '<meta http-equiv="Content-Security-Policy" content="default-src \'none\'; img-src data:; '
    "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">"
)
_NO_METADATA = {"Date": None, "Creator": None, "Format": None, "Type": None}
_XML_HEAD = re.compile(r"^.*?(?=<svg)", re.DOTALL)
_TAG_OR_STYLE = re.compile(r"<style.*?</style>|<[^!][^>]*>", re.DOTALL)
_NAME = re.compile(r'\bid="|href="#|url\(#')
_SIZE = re.compile(r'(<svg[^>]*?) width="[^"]*"| height="[^"]*pt"')


def html(title: str, content: Content) -> str:
    """The page.

    Drawings are numbered, for what is referred to inside one must be found in no other.
    """
    numbers = count(1)
    with house_style():
        written = [(each, _body(each, content, numbers)) for each in content]
    sections = [(each.name, each.title, body) for each, body in written if body]
    if content.left_out:
        items = "".join(f"<li>{escape(text)}</li>" for text in content.left_out)
        sections.append(("not-shown", "Not shown", f"<ul>{items}</ul>"))
    links = "".join(f'<a href="#{name}">{escape(title)}</a>' for name, title, _ in sections)
    head = (
        '<meta charset="utf-8"><meta name="viewport" content="width=device-width">'
        f'<meta name="color-scheme" content="light dark">{_POLICY}'
        f"<title>{escape(title)}</title><style>{_style()}</style>"
    )
    names = ", ".join(content.about.names)
    below = f"<p>{escape(names)}</p>" if names != title else ""
    return (
        f'<!DOCTYPE html>\n<html lang="en"><head>{head}</head>\n<body><main>'
        f"<header><h1>{escape(title)}</h1>{below}<nav>{links}</nav></header>\n"
        f"{''.join(_section(*each) for each in sections)}"
        f"<footer>Made with moxPY {moxGetVersion()}</footer></main></body></html>\n"
    )


def _style() -> str:
    return files(__package__).joinpath("report.css").read_text("utf-8")


def _section(name: str, title: str, body: str) -> str:
    return f'<section id="{name}"><h2>{escape(title)}</h2>{body}</section>\n'


def _body(section: Section, content: Content, numbers: Iterator[int]) -> str:
    return "".join(_block(block, section, content, numbers) for block in section.blocks)


def _block(block: Block, section: Section, content: Content, numbers: Iterator[int]) -> str:
    match block:
        case Table():
            return _table(block)
        case Notes():
            texts = "".join(f"<p>{escape(text)}</p>" for text in block.texts)
            return f'<div class="notes">{texts}</div>'
        case Picture():
            caption = "" if block.title == section.title else block.title
            return _picture(block, caption, content, next(numbers))
        case Moving():
            return block.trial.view().frame(_HEIGHT)


def _table(table: Table) -> str:
    kind = ' class="numbers"' if table.numbers else ""
    heads = f"<thead>{_row('th', table.heads)}</thead>" if table.heads else ""
    rows = "".join(_row("td", row) for row in table.rows)
    return f"<table{kind}>{heads}<tbody>{rows}</tbody></table>"


def _row(cell: str, texts: Iterable[str]) -> str:
    return f"<tr>{''.join(f'<{cell}>{escape(text)}</{cell}>' for text in texts)}</tr>"


def _picture(picture: Picture, caption: str, content: Content, number: int) -> str:
    try:
        with drawn(picture) as figure:
            image = _svg(figure, number) or _png(figure)
            width = figure.get_figwidth()
    except NotThere as reason:
        if picture.instead is not None:
            return _table(picture.instead)
        content.leave_out(picture.title, str(reason))
        return ""
    heading = f"<figcaption>{escape(caption)}</figcaption>" if caption else ""
    return (
        f'<figure style="--width: {width:.2f}in">{heading}'
        f'<div role="img" aria-label="{escape(picture.title)}">{image}</div></figure>'
    )


def _svg(figure: Any, number: int) -> str | None:
    """The drawing; None where it is too long."""
    file = io.StringIO()
    with require("matplotlib").rc_context({"svg.hashsalt": f"picture {number}"}):
        figure.savefig(file, format="svg", metadata=_NO_METADATA)
    text = file.getvalue()
    if len(text) > _LONGEST_SVG:
        return None
    drawing = _SIZE.sub(r"\1", _XML_HEAD.sub("", text, count=1), count=2)
    return _with_own_names(drawing, f"p{number}-")


def _with_own_names(drawing: str, prefix: str) -> str:
    """A drawing whose ids, and what refers to them, begin with a prefix; its texts stay."""

    def named(tag: re.Match[str]) -> str:
        return _NAME.sub(lambda name: name[0] + prefix, tag[0])

    return _TAG_OR_STYLE.sub(named, drawing)


def _png(figure: Any) -> str:
    file = io.BytesIO()
    figure.savefig(file, format="png", dpi=_DOTS_PER_INCH)
    return f'<img alt="" src="data:image/png;base64,{base64.b64encode(file.getvalue()).decode()}">'
