"""Numbers that scripts give, of Python or of NumPy, as the functions take them."""

from __future__ import annotations

from operator import index
from typing import Any

_MOST = 2**31 - 1  # that the functions take


def real_number(number: Any, what: str) -> float:
    """A real number: a rate, say; TypeError for what is none, by what it is for."""
    if isinstance(number, str | bytes) or not hasattr(number, "__float__"):
        raise TypeError(f"{what} is a number, not {type(number).__name__}")
    return float(number)


def whole_number(number: Any, what: str, least: int) -> int:
    """A count, or the number of a frame.

    Parameters
    ----------
    what : str
        What is counted, for the message: ``"the number of frames"``.
    least : int
        The least that is possible.

    Raises
    ------
    TypeError
        It is no whole number.
    ValueError
        It is less than `least`, or more than a trial can have.
    """
    try:
        whole = index(number)
    except TypeError:
        raise TypeError(f"{what} is an int, not {type(number).__name__}") from None
    if whole < least:
        raise ValueError(f"{what} is {least} or more, not {whole}")
    if whole > _MOST:
        raise ValueError(f"{what} is at most {_MOST}, not {whole}")
    return whole
