"""The description of a new entry of the metadata."""

from __future__ import annotations

from typing import Any

import _moxPY

__all__ = ["moxMetaDataInfo"]


def moxMetaDataInfo(format: str, values: Any, dimensions: int | None = None) -> dict[str, Any]:
    """Make the dictionary that `moxAppendMetaData` and `moxSetMetaData` take.

    Parameters
    ----------
    format : str
        "Byte", "Char", "Integer" or "Real"; checked only where the dictionary is used.
    values : number, str or list
        The content of the entry.
    dimensions : int, optional
        Number of dimensions, at least that of the values, which it is when not given.

    Returns
    -------
    info : dict
        ``"format"``, ``"values"`` and ``"numdims"``.

    Raises
    ------
    RuntimeError
        The values have more dimensions than given.

    Examples
    --------
    >>> moxMetaDataInfo("Real", [1.5, 2.5])
    {'format': 'Real', 'values': [1.5, 2.5], 'numdims': 1}
    """
    if dimensions is None:
        return _moxPY.moxMetaDataInfo(format, values)
    return _moxPY.moxMetaDataInfo(format, values, dimensions)
