"""What a picture shows, read back from its axes."""

from __future__ import annotations

import io
from typing import Any

import numpy as np


def line(axes: Any, label: str, number: int = 0) -> Any:
    """The line of a label; of several, the one of that number."""
    return [each for each in axes.lines if each.get_label() == label][number]


def xy(line: Any) -> tuple[Any, Any]:
    return np.asarray(line.get_xdata(), float), np.asarray(line.get_ydata(), float)


def collection(axes: Any, label: str) -> Any:
    (found,) = (each for each in axes.collections if each.get_label() == label)
    return found


def texts(axes: Any) -> list[str]:
    return [each.get_text() for each in axes.texts]


def legend_of(axes: Any) -> list[str]:
    """What the legend of a figure says."""
    return [text.get_text() for each in axes.figure.legends for text in each.get_texts()]


def upright(axes: Any) -> list[tuple[float, str, str]]:
    """Time, colour and style of the lines from the bottom to the top of a panel."""
    found = []
    for each in axes.lines:
        times, heights = xy(each)
        if list(heights) == [0.0, 1.0] and times[0] == times[1]:
            found.append((float(times[0]), each.get_color(), each.get_linestyle()))
    return found


def spans(axes: Any) -> list[tuple[float, float]]:
    """Begin and end of the shaded stretches of a panel."""
    return [
        (each.get_x(), each.get_x() + each.get_width())
        for each in axes.patches
        if hasattr(each, "get_width")
    ]


def bars(collection: Any) -> list[tuple[float, float]]:
    """Begin and end of the bars of a `broken_barh`."""
    return [
        (float(path.vertices[:, 0].min()), float(path.vertices[:, 0].max()))
        for path in collection.get_paths()
    ]


def rendered(axes: Any) -> bytes:
    """The picture as PNG."""
    first = axes.flat[0] if isinstance(axes, np.ndarray) else axes
    buffer = io.BytesIO()
    first.figure.savefig(buffer, format="png", dpi=40)
    return buffer.getvalue()
