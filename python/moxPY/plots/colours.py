"""Colours, and what else pictures have in common.

Left is red and right is blue. Laboratories print the left side in red nearly everywhere, the right
one in blue or in green; blue it is, since red beside green is what one man in twelve cannot tell
apart. The blue is also the darker of both, so that they differ on a photocopy.
"""

from __future__ import annotations

from collections.abc import Mapping
from types import MappingProxyType

LEFT, RIGHT, NEITHER = "#d7301f", "#0053a6", "#666666"

#: Colour of each side.
SIDE_COLOURS: Mapping[str, str] = MappingProxyType({"Left": LEFT, "Right": RIGHT})

#: Colours of the components x, y and z, which differ in brightness, too.
COMPONENT_COLOURS = ("#e08700", "#00856a", "#6a3d9a")

GAP, REFERENCE, FAINT = "#b8b8b8", "#9a9a9a", "#8c8c8c"


def colour_of(side: str | None) -> str:
    """Of a side, and of what has none."""
    return SIDE_COLOURS.get(side or "", NEITHER)
