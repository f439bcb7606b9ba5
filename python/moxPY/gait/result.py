"""Spatio-temporal parameters as they come back."""

from __future__ import annotations

from collections.abc import Iterator, Mapping
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np

from ..trial.extras import require
from ..trial.foot_events import Side
from ..trial.labels import nearest
from ..trial.samples import FloatArray
from .definitions import DEFINITIONS
from .display import gait_html, gait_repr, measure_repr, side_repr
from .stride import Stride

if TYPE_CHECKING:
    import pandas  # type: ignore[import-untyped, import-not-found, unused-ignore]


class LeftOut(NamedTuple):
    """A parameter that is left out."""

    side: Side
    name: str
    reason: str


@dataclass(frozen=True, kw_only=True, slots=True, repr=False, eq=False)
class Measure:
    """A parameter of a side.

    Attributes
    ----------
    name : str
        ``"step_length"``.
    unit : str
        ``"s"``, ``"m"``, ``"m/s"``, ``"steps/min"`` or ``"%"``, which is of the stride time.
    values : ndarray
        The value of each stride, in the order of `GaitSide.strides`; NaN for those that do not
        tell it.
    """

    name: str
    unit: str
    values: FloatArray

    @property
    def count(self) -> int:
        """How many strides have a value: one at least."""
        return int(np.isfinite(self.values).sum())

    @property
    def mean(self) -> float:
        """Over the strides that have a value."""
        return float(np.mean(self.values[np.isfinite(self.values)]))

    @property
    def deviation(self) -> float:
        """Sample standard deviation over the strides that have a value; NaN of a single one."""
        seen = self.values[np.isfinite(self.values)]
        return float(np.std(seen, ddof=1)) if seen.size > 1 else np.nan

    __repr__ = measure_repr


class GaitSide(Mapping[str, Measure]):
    """The parameters of one side, by their names; those that are left out are not there.

    Attributes
    ----------
    side : {"Left", "Right"}
    strides : tuple of Stride
        The strides of that side in order of time.
    """

    __slots__ = ("_measures", "_reasons", "side", "strides")

    def __init__(
        self,
        side: Side,
        strides: tuple[Stride, ...],
        measures: dict[str, Measure],
        reasons: dict[str, str],
    ) -> None:
        self.side = side
        self.strides = strides
        self._measures = measures
        self._reasons = reasons

    @property
    def reasons(self) -> dict[str, str]:
        """The parameters that are left out, and why."""
        return dict(self._reasons)

    def __getitem__(self, name: str) -> Measure:
        if name in self._reasons:
            raise KeyError(f"no '{name}' on the {self.side.lower()} side: {self._reasons[name]}")
        if name not in self._measures:
            known = [definition.name for definition in DEFINITIONS]
            raise KeyError(f"there is no parameter '{name}'{nearest(name, known)}")
        return self._measures[name]

    def __contains__(self, name: object) -> bool:
        return name in self._measures

    def __iter__(self) -> Iterator[str]:
        return iter(self._measures)

    def __len__(self) -> int:
        return len(self._measures)

    def _ipython_key_completions_(self) -> list[str]:
        return list(self)

    __repr__ = side_repr


@dataclass(frozen=True, kw_only=True, slots=True, repr=False, eq=False)
class Gait:
    """Spatio-temporal parameters of a trial.

    Attributes
    ----------
    left, right : GaitSide
        Mappings of names to parameters.
    markers : dict
        The marker on each foot that the lengths are made from, by side; empty without any.
    place : str
        Where on the foot these are: ``"heel"``, ``"ankle"`` or ``"toe"``; empty without any.
    up : str
        The axis that points upwards; empty where lengths are not known.
    treadmill : bool
        Whether the feet come back to where they were.
    left_out : tuple of LeftOut
        The parameters that are left out, with side and reason.
    notes : tuple of str
        Which strides are left out, and why.
    """

    left: GaitSide
    right: GaitSide
    markers: dict[Side, str]
    place: str
    up: str
    treadmill: bool
    left_out: tuple[LeftOut, ...]
    notes: tuple[str, ...]

    @property
    def sides(self) -> tuple[GaitSide, GaitSide]:
        """Left and right."""
        return self.left, self.right

    def mean(self, name: str) -> float:
        """The mean of a parameter over the strides of both sides; NaN where both lack it."""
        values = [side[name].values for side in self.sides if name in side]
        seen = np.concatenate(values) if values else np.empty(0)
        seen = seen[np.isfinite(seen)]
        return float(seen.mean()) if seen.size else np.nan

    def to_pandas(self) -> pandas.DataFrame:
        """A data frame with a row a stride, in order of time, and a column a parameter.

        Returns
        -------
        pandas.DataFrame
            Columns ``side``, ``start`` and ``stop`` (seconds) before those of the parameters, all
            of them; NaN where a stride does not tell one. ``attrs["units"]`` has their units.

        Raises
        ------
        ImportError
            pandas is not installed.
        """
        rows: list[dict[str, Any]] = [
            {"side": side.side, "start": stride.start, "stop": stride.stop}
            | {name: measure.values[index] for name, measure in side.items()}
            for side in self.sides
            for index, stride in enumerate(side.strides)
        ]
        units = {"start": "s", "stop": "s"} | {each.name: each.unit for each in DEFINITIONS}
        rows.sort(key=lambda row: row["start"])
        columns = {name: [row.get(name, np.nan) for row in rows] for name in units}
        frame: pandas.DataFrame = (
            require("pandas")
            .DataFrame({"side": [row["side"] for row in rows], **columns})
            .astype({"side": str} | dict.fromkeys(columns, "float64"))
        )
        frame.attrs["units"] = units
        return frame

    __repr__ = gait_repr
    _repr_html_ = gait_html
