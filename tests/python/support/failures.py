"""What a call raises, to be compared whole."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import pytest


def failure_of(function: Callable[..., Any], *arguments: Any) -> tuple[type[Exception], str]:
    """Type and text of the exception that the call raises."""
    try:
        result = function(*arguments)
    except Exception as error:
        return type(error), str(error)
    pytest.fail(f"nothing was raised, {result!r} was returned")
