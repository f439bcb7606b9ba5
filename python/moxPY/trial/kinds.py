"""The kinds of channels, as `Trial` calls them."""

from __future__ import annotations

#: The kinds of points.
POINT_KINDS = ("markers", "angles", "forces", "moments", "powers")

#: All kinds of channels.
KINDS = (*POINT_KINDS, "analogs")
