"""A JSON array on standard output, piece by piece, so that many files need no memory."""

from __future__ import annotations

import json
import textwrap
from typing import Any


class JsonArray:
    """Prints each item when it is added.

    Only ASCII is printed: it is JSON on every terminal, and with every name of a file.
    """

    def __init__(self) -> None:
        self._before = "["

    def add(self, item: dict[str, Any]) -> None:
        """Print one more item."""
        text = json.dumps(item, indent=2, allow_nan=False)
        print(f"{self._before}\n{textwrap.indent(text, '  ')}", end="")
        self._before = ","

    def end(self) -> None:
        """Print what is behind the last item."""
        print("[]" if self._before == "[" else "\n]")
