"""The drawing of the layers: who stands on whom, and what is loaded at run time.

Usage: python -m pages.layers, in tools, writes docs/pictures/layers.svg.
"""

from __future__ import annotations

from dataclasses import dataclass
from html import escape
from pathlib import Path

from pages.contents import PROJECT

PICTURE = PROJECT / "docs" / "pictures" / "layers.svg"

_WIDTH, _HEIGHT = 760, 628
_ROW, _GAP = 52, 20
_INK, _PAPER, _FRAME = "#14181e", "#ffffff", "#8a94a3"
_PYTHON, _MODULE, _PLUGIN, _GROUND = "#fdebd0", "#d9e8fb", "#dcf0e1", "#eceff3"


@dataclass(frozen=True)
class Box:
    """A folder of the sources, and what it is for."""

    folder: str
    name: str
    text: str
    left: int
    top: int
    width: int
    colour: str

    @property
    def bottom(self) -> int:
        return self.top + _ROW


def _rows(*names: str, top: int) -> dict[str, int]:
    return {name: top + n * (_ROW + _GAP) for n, name in enumerate(names)}


# Above the boxes of a frame stands what it is.
_NAME = 24
_TOP = {"moxPY": 24} | _rows(
    "module", "api", "acquisition", "store", "schema", "strata", "anvil", top=96 + _NAME
)
_LINE = 340
_FULL, _LEFT, _RIGHT = (20, 720), (36, 392), (476, 248)


def _box(folder: str, text: str, top: int, place: tuple[int, int], colour: str) -> Box:
    return Box(folder, folder.rpartition("/")[2], text, place[0], top, place[1], colour)


BOXES = [
    _box(
        "python/moxPY",
        "Trial, the functions with their documentation, command line, plots, player",
        _TOP["moxPY"],
        _FULL,
        _PYTHON,
    ),
    _box("module", "Python's calls: arguments, errors, table", _TOP["module"], _LEFT, _MODULE),
    _box("api", "what the functions do, by family", _TOP["api"], _LEFT, _MODULE),
    _box("acquisition", "where things lie; files, time", _TOP["acquisition"], _LEFT, _MODULE),
    _box("store", "Python values and stored values", _TOP["store"], _LEFT, _MODULE),
    _box("plugins/c3d", "C3D files", _TOP["module"], _RIGHT, _PLUGIN),
    _box("plugins/opensim", "TRC, MOT, STO", _TOP["api"], _RIGHT, _PLUGIN),
    _box("plugins/data_modifier", "sets split", _TOP["acquisition"], _RIGHT, _PLUGIN),
    _box("plugins/classical_mechanics", "wrenches", _TOP["store"], _RIGHT, _PLUGIN),
    _box("schema", "names and rules in the data store", _TOP["schema"], _FULL, _GROUND),
    _box(
        "platform/strata",
        "the data store: tree, channel buffers, registries of plugins",
        _TOP["strata"],
        _FULL,
        _GROUND,
    ),
    _box("platform/anvil", "files, folders, status, log", _TOP["anvil"], _FULL, _GROUND),
]

# Who stands on whom, from top to bottom; the frame of the plugins stands on schema as one.
ARROWS = [
    ("python/moxPY", "module"),
    ("module", "api"),
    ("api", "acquisition"),
    ("acquisition", "store"),
    ("store", "schema"),
    ("schema", "platform/strata"),
    ("platform/strata", "platform/anvil"),
]


def drawing() -> str:
    """The picture as SVG."""
    by_folder = {box.folder: box for box in BOXES}
    arrows = [
        _arrow(_middle(by_folder[upper]), by_folder[upper].bottom, by_folder[lower].top)
        for upper, lower in ARROWS
    ]
    plugins = by_folder["plugins/classical_mechanics"]
    arrows.append(_arrow(_middle(plugins), plugins.bottom + 9, _TOP["schema"]))
    top, bottom = _TOP["module"] - 9 - _NAME, _TOP["store"] + _ROW + 9
    across = _TOP["acquisition"] + _ROW // 2
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {_WIDTH} {_HEIGHT}"'
        f' width="{_WIDTH}" height="{_HEIGHT}" font-family="sans-serif" font-size="14">',
        "<title>The layers of moxPY</title>",
        '<defs><marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="8"'
        f' markerHeight="8" orient="auto"><path d="M0 0 8 4 0 8z" fill="{_INK}"/></marker></defs>',
        f'<rect width="{_WIDTH}" height="{_HEIGHT}" fill="{_PAPER}"/>',
        _frame("_moxPY, the extension module", 20, top, 424, bottom - top),
        _frame("plugins, loaded at run time", 460, top, 280, bottom - top),
        *(_drawn(box) for box in BOXES),
        *arrows,
        f'<path d="M428 {across}H457" stroke="{_INK}" stroke-width="1.5" stroke-dasharray="4 3"'
        ' marker-end="url(#head)"/>',
        "</svg>",
    ]
    return "\n".join(lines) + "\n"


def _middle(box: Box) -> int:
    # Of those on the left one line, which passes the frame behind its name.
    return _LINE if box.left <= _LEFT[0] else box.left + box.width // 2


def _arrow(x: int, top: int, bottom: int) -> str:
    return (
        f'<path d="M{x} {top}V{bottom - 1}" stroke="{_INK}" stroke-width="1.5"'
        ' marker-end="url(#head)"/>'
    )


def _frame(name: str, left: int, top: int, width: int, height: int) -> str:
    return (
        f'<text x="{left + 16}" y="{top + _NAME - 3}" font-style="italic" fill="{_INK}">'
        f"{escape(name)}</text>"
        f'<rect x="{left}" y="{top}" width="{width}" height="{height}" rx="8" fill="none"'
        f' stroke="{_FRAME}" stroke-dasharray="5 4"/>'
    )


def _drawn(box: Box) -> str:
    return (
        f'<rect x="{box.left}" y="{box.top}" width="{box.width}" height="{_ROW}" rx="5"'
        f' fill="{box.colour}" stroke="{_INK}"/>'
        f'<text x="{box.left + 12}" y="{box.top + 21}" font-weight="bold" fill="{_INK}">'
        f"{escape(box.name)}</text>"
        f'<text x="{box.left + 12}" y="{box.top + 41}" fill="{_INK}">{escape(box.text)}</text>'
    )


def write(path: Path = PICTURE) -> None:
    """Write the picture."""
    path.write_text(drawing(), "utf-8")


if __name__ == "__main__":
    write()
