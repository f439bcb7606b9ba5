"""Analysis parameters, such as cadence and step length: they can be read, not changed.

They are the metadata group ANALYSIS: lists of names, contexts, subjects, units and values with one
element a parameter. `moxSetMetaData` changes these lists.
"""

from __future__ import annotations

from types import EllipsisType
from typing import Any, NoReturn

import _moxPY

from ...acquisition import Acquisition

__all__ = [
    "moxAppendAnalysisParameter",
    "moxClearAnalysis",
    "moxGetAnalysis",
    "moxRemoveAnalysisParameter",
]


def moxGetAnalysis(acquisition: Acquisition) -> list[dict[str, Any]]:
    """All analysis parameters.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Returns
    -------
    analysis : dict
        The group ANALYSIS as `moxGetMetaData` gives it.
    info : dict
        ``"units"``: the unit of each parameter, a list of str; empty when the group has no units.

    Raises
    ------
    RuntimeError
        There is no group ANALYSIS.

    Examples
    --------
    >>> analysis, info = moxGetAnalysis(trial)
    >>> parameters = analysis["children"]
    >>> names, values = (parameters[key]["info"]["values"] for key in ("NAMES", "VALUES"))
    >>> f"{names[1]} {values[1]:.2f} {info['units'][1]}"
    'Walking Speed 1.18 m/s'
    """
    return _moxPY.moxGetAnalysis(acquisition)


def moxAppendAnalysisParameter(
    acquisition: Acquisition,
    name: str,
    context: str,
    subject: str,
    value: float,
    unit: str = "",
    description: str = "",
) -> NoReturn:
    """Refuse: analysis parameters cannot be added.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    name : str
        Not used.
    context : str
        Not used.
    subject : str
        Not used.
    value : float
        Not used.
    unit : str, optional
        Not used.
    description : str, optional
        Not used.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> values = "Cadence", "Left", "Walker", 110.0
    >>> moxAppendAnalysisParameter(trial, *values)  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: Function not supported yet. ...
    """
    _moxPY.moxAppendAnalysisParameter(acquisition, name, context, subject, value, unit, description)


def moxRemoveAnalysisParameter(
    acquisition: Acquisition, parameter: int | str, context: str | EllipsisType = ...
) -> NoReturn:
    """Refuse: analysis parameters cannot be removed.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.
    parameter : int or str
        Not used; an index, or a name together with a context.
    context : str, optional
        Not used.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> moxRemoveAnalysisParameter(trial, "Cadence", "Left")  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: Function not supported yet. ...
    """
    if context is ...:
        _moxPY.moxRemoveAnalysisParameter(acquisition, parameter)
    _moxPY.moxRemoveAnalysisParameter(acquisition, parameter, context)


def moxClearAnalysis(acquisition: Acquisition) -> NoReturn:
    """Refuse: analysis parameters cannot be removed. `moxRemoveMetaData` removes the group.

    Parameters
    ----------
    acquisition : data_store or Trial
        An open acquisition. It is not changed.

    Raises
    ------
    RuntimeError
        Always.

    Examples
    --------
    >>> moxClearAnalysis(trial)  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    RuntimeError: Function not supported yet. ...
    """
    _moxPY.moxClearAnalysis(acquisition)
