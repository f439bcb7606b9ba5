"""Where links of a file lead when it lies among the pages of the site."""

from __future__ import annotations

import os
import re
from collections.abc import Mapping
from pathlib import Path

from pages.contents import PROJECT

# Behind a text in brackets; not in fenced or indented blocks, which are split off before.
_LINK = re.compile(
    r"(?P<text>!?\[(?:[^\[\]]|\[[^\]]*\])*\])\((?P<target>[^)\s#]*)(?P<part>#[^)\s]*)?\)"
)
_FENCED = re.compile(r"(^```.*?^```$)", re.DOTALL | re.MULTILINE)


def rewritten(text: str, folder: Path, names: Mapping[Path, str]) -> str:
    """The text of a file with its links leading to pages.

    Parameters
    ----------
    text : str
        What stands in the file.
    folder : Path
        Where the file lies.
    names : mapping of Path to str
        The page that each file becomes, relative to the folder of the text's own.

    Returns
    -------
    text : str
        Links to files that are no pages are only their texts. Pictures lie beside the pages under
        the path that they have in ``docs``.
    """

    def link(match: re.Match[str]) -> str:
        shown, target, part = match["text"], match["target"], match["part"] or ""
        if not target or ":" in target:
            return match[0]
        file = Path(os.path.normpath(folder / target))
        if file in names:
            # A link whose text is the file shows the title of the page instead.
            if target.startswith(shown[1:-1]) and ("/" in shown or ".md" in shown):
                shown = "[]"
            return f"{shown}({names[file]}{part})"
        if shown.startswith("!"):
            return f"{shown}({file.relative_to(PROJECT / 'docs').as_posix()})"
        return shown[1:-1]

    parts = _FENCED.split(text)
    return "".join(part if n % 2 else _LINK.sub(link, part) for n, part in enumerate(parts))
