"""Analysis parameters: single results that a file keeps, such as the cadence of each side."""

from __future__ import annotations

from collections import Counter
from collections.abc import Iterator, Mapping
from dataclasses import dataclass
from itertools import count
from typing import TYPE_CHECKING, Any

import numpy as np

from .display import abridged, one_line
from .labels import nearest

if TYPE_CHECKING:
    from .metadata import MetadataGroup
    from .trial import Trial


@dataclass(frozen=True, kw_only=True, slots=True)
class AnalysisParameter:
    """A result that a file keeps.

    Attributes
    ----------
    name : str
        What it is: ``"Cadence"``.
    value : float
        The number.
    unit, context, subject, description : str
        What the file says of it: ``"steps/min"``, ``"Left"``; empty where it says nothing.
    """

    name: str
    value: float
    unit: str = ""
    context: str = ""
    subject: str = ""
    description: str = ""


class Analysis(Mapping[str, float]):
    """The analysis parameters of a trial: values by name, in the order of the file.

    A name that a file has for both sides comes with its context, ``"Left Cadence"``; one that is
    there again has a number behind it. They can be read only here; what the metadata group
    ``ANALYSIS`` says is seen at once. A trial without that group has none.

    Examples
    --------
    >>> round(trial.analysis["Left Cadence"], 1)
    109.1
    >>> trial.analysis.parameter("Left Cadence").unit
    'steps/min'
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    def parameter(self, name: str) -> AnalysisParameter:
        """A parameter with its unit and context; KeyError when there is none of that name."""
        parameters = self._read()
        if name not in parameters:
            raise KeyError(f"no analysis parameter '{name}'{nearest(name, parameters)}")
        return parameters[name]

    def __getitem__(self, name: str) -> float:
        return self.parameter(name).value

    def __iter__(self) -> Iterator[str]:
        return iter(self._read())

    def __len__(self) -> int:
        return len(self._read())

    def _read(self) -> dict[str, AnalysisParameter]:
        group = self._trial.metadata.get("ANALYSIS")
        return {} if group is None else _by_key(_parameters(group))

    def _ipython_key_completions_(self) -> list[str]:
        return list(self)

    def __repr__(self) -> str:
        return one_line("analysis", lambda: f" ({len(self)}): {abridged(list(self))}")


def _parameters(group: MetadataGroup) -> list[AnalysisParameter]:
    names = [str(name) for name in _listed(group, "NAMES")]
    values = [float(value) for value in _listed(group, "VALUES") if not isinstance(value, str)]
    columns = [
        [str(text) for text in _listed(group, column)][: len(names)]
        for column in ("UNITS", "CONTEXTS", "SUBJECTS", "DESCRIPTIONS")
    ]
    rows = min(len(names), len(values))
    filled = [texts + [""] * (rows - len(texts)) for texts in columns]
    return [
        AnalysisParameter(
            name=names[row],
            value=values[row],
            unit=filled[0][row],
            context=filled[1][row],
            subject=filled[2][row],
            description=filled[3][row],
        )
        for row in range(rows)
    ]


def _listed(group: MetadataGroup, name: str) -> list[Any]:
    """All of a list, which goes on in NAME2, NAME3 … where a file has more than 255."""
    items: list[Any] = []
    parts = (f"{name}{number}" for number in count(2))
    part = name
    while part in group:
        items += np.ravel(np.asarray(group[part], dtype=object)).tolist()
        part = next(parts)
    return items


def _by_key(parameters: list[AnalysisParameter]) -> dict[str, AnalysisParameter]:
    named = Counter(parameter.name for parameter in parameters)
    keyed: dict[str, AnalysisParameter] = {}
    for parameter in parameters:
        key = parameter.name
        if named[key] > 1:
            key = f"{parameter.context} {key}".strip()
        numbered = (f"{key}_{number}" for number in count(2))
        while key in keyed:
            key = next(numbered)
        keyed[key] = parameter
    return keyed
