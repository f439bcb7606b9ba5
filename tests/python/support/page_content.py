"""What a page of the player has in it, read without a browser."""

from __future__ import annotations

import base64
import json
import re
from typing import Any

import numpy as np
from numpy.typing import NDArray


def content_in(html: str) -> dict[str, Any]:
    """The trial of a page."""
    found = re.findall(
        r'<script type="application/json" id="trial">(.*?)</script>', html, re.DOTALL
    )
    assert len(found) == 1
    content: dict[str, Any] = json.loads(found[0])
    return content


def numbers_of(packed: dict[str, Any], components: int = 3) -> NDArray[np.float64]:
    """The samples of a track, shape (samples, components), as the format of the page says."""
    raw = base64.b64decode(packed["samples"], validate=True)
    if packed["form"] == "float32":
        return np.frombuffer(raw, "<f4").reshape(components, -1).T.astype(np.float64)
    assert packed["form"] == "int16"
    whole = np.frombuffer(raw, "<i2").reshape(components, -1).T
    numbers = np.array(packed["offset"]) + np.array(packed["step"]) * whole
    return np.where(whole == -32768, np.nan, numbers)
