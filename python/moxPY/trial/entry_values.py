"""Values of metadata entries: what an entry of each type can hold, and what it then holds."""

from __future__ import annotations

import math
from typing import Any

import numpy as np
from numpy.typing import NDArray

Content = NDArray[Any]  #: numbers of the stored type, or objects that are texts

_MOST_DIMENSIONS = 7  # as in a file
_NEW_INTEGER = np.dtype(np.int16)
_NEW_REAL = np.dtype(np.float32)
_TEXT = np.dtype(object)


def value_of(content: Content) -> Any:
    """The content of an entry as scripts see it: one number as int or float, several as a read-only
    array; a text as str, texts with dimensions as nested lists."""
    if content.dtype == _TEXT:
        return content.tolist()
    if content.size == 1:
        return content.item()
    content.flags.writeable = False
    return content


def content_of(value: Any, stored: Content | None, what: str) -> Content:
    """What an entry has to hold for a value.

    Parameters
    ----------
    value : Any
        A number, a text, or an array or nested lists of either.
    stored : ndarray or None
        What the entry holds now, whose type it keeps; None for a new one.
    what : str
        The entry, for the message.

    Raises
    ------
    TypeError
        Text for numbers, numbers for text, a real number for whole ones, or neither.
    OverflowError
        A number is beyond the type.
    ValueError
        Lists of unequal lengths, too many dimensions, a NUL character in a text.
    """
    given = _as_array(value, what)
    if given.ndim > _MOST_DIMENSIONS:
        raise ValueError(
            f"{what}: at most {_MOST_DIMENSIONS} dimensions are possible, got {given.ndim}"
        )
    content = _content_of_array(given, stored, what)
    if stored is not None and _says_less(given, content, stored):
        return stored if _is_nan(content) and _is_nan(stored) else content.reshape(stored.shape)
    return content


def _content_of_array(given: NDArray[Any], stored: Content | None, what: str) -> Content:
    items = given.ravel().tolist()
    dtype = _type_of(given, items, what) if stored is None else stored.dtype
    if dtype == _TEXT:
        return _objects(_texts(items, what), given.shape)
    if dtype == given.dtype:
        return given
    return np.array(_numbers(items, dtype, what), dtype=dtype).reshape(given.shape)


def _says_less(given: NDArray[Any], content: Content, stored: Content) -> bool:
    """Whether what is given leaves the dimensions open: a plain number in the place of one number,
    and lists of no texts."""
    if content.dtype != _TEXT:
        return given.ndim == 0 and stored.size == 1
    return content.size == stored.size == 0 and content.tolist() == stored.tolist()


def _is_nan(content: Content) -> bool:
    """A single NaN, of which there are many: the one that is stored stays."""
    return content.dtype.kind == "f" and content.size == 1 and bool(np.isnan(content).all())


def stored_form(content: Content) -> Content:
    """A content as the store takes it: texts as bytes. What is no UTF-8 there is read as lone
    surrogates and goes back as it was."""
    if content.dtype != _TEXT:
        return content
    texts = [text.encode("utf-8", "surrogateescape") for text in content.ravel()]
    return _objects(texts, content.shape)


def _as_array(value: Any, what: str) -> NDArray[Any]:
    """The value as an array, numbers of Python as they are: NumPy would round mixed ones."""
    try:
        if isinstance(value, np.ma.MaskedArray):
            array = _filled(value)
        elif hasattr(value, "__array__"):
            array = np.asarray(value)
        else:
            array = np.array(value, dtype=object)
    except (TypeError, ValueError) as error:
        raise type(error)(f"{what}: {error}") from None
    if array.dtype.kind not in "biufUO":
        raise TypeError(f"{what}: expected numbers or text, got {array.dtype.name}")
    return array


def _filled(value: np.ma.MaskedArray[Any, Any]) -> NDArray[Any]:
    """What is masked is NaN, which numbers that are whole cannot be."""
    if not np.ma.is_masked(value):
        return np.asarray(value.data)
    return np.asarray(np.ma.filled(value.astype(np.float64), np.nan))


def _type_of(given: NDArray[Any], items: list[Any], what: str) -> np.dtype[Any]:
    """The type of a new entry. A file knows no truth values: they are the integers 0 and 1. An
    empty list is one of texts, as it is when it is read."""
    if given.dtype.kind in "biuf":
        return _NEW_REAL if given.dtype.kind == "f" else _NEW_INTEGER
    if all(isinstance(item, str) for item in items):
        return _TEXT
    for item in items:
        if isinstance(item, str):
            raise TypeError(f"{what}: text beside numbers")
        _number(item, what)
    is_real = any(isinstance(item, float | np.floating) for item in items)
    return _NEW_REAL if is_real else _NEW_INTEGER


def _objects(items: list[Any], shape: tuple[int, ...]) -> Content:
    array = np.empty(len(items), dtype=object)
    array[:] = items
    return array.reshape(shape)


def _texts(items: list[Any], what: str) -> list[str]:
    for item in items:
        _require_no_list(item, what)
        if not isinstance(item, str):
            raise TypeError(f"{what}: expected text, got {type(item).__name__}")
        if "\0" in item:
            raise ValueError(f"{what}: a text cannot have a NUL character")
    return items


def _numbers(items: list[Any], dtype: np.dtype[Any], what: str) -> list[Any]:
    numbers = [_number(item, what) for item in items]
    if dtype.kind == "f":
        return [_real(number, dtype, what) for number in numbers]
    lowest, highest = (0, 1) if dtype.kind == "b" else (np.iinfo(dtype).min, np.iinfo(dtype).max)
    return [_whole(number, int(lowest), int(highest), what) for number in numbers]


def _number(item: Any, what: str) -> int | float:
    if isinstance(item, int | np.integer | np.bool_):
        return int(item)
    if isinstance(item, float | np.floating):
        return float(item)
    _require_no_list(item, what)
    raise TypeError(f"{what}: expected a number, got {type(item).__name__}")


def _require_no_list(item: Any, what: str) -> None:
    if isinstance(item, list | tuple | np.ndarray):
        raise ValueError(f"{what}: lists of unequal lengths")


def _real(number: float, dtype: np.dtype[Any], what: str) -> float:
    try:
        real = float(number)
    except OverflowError:
        real = math.inf
    if abs(real) > float(np.finfo(dtype).max) and number not in (math.inf, -math.inf):
        with np.errstate(over="ignore"):
            rounds_to_infinity = np.isinf(dtype.type(real))
        if rounds_to_infinity:
            raise OverflowError(f"{what}: a number is beyond the largest that the entry can hold")
    return real


def _whole(number: float, lowest: int, highest: int, what: str) -> int:
    if isinstance(number, float):
        if math.isinf(number):
            raise OverflowError(f"{what}: infinity is no whole number")
        if not number.is_integer():
            raise TypeError(f"{what}: expected whole numbers, got {number}")
    whole = int(number)
    if not lowest <= whole <= highest:
        raise OverflowError(f"{what}: {whole} is not between {lowest} and {highest}")
    return whole
