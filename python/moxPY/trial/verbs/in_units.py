"""A trial in other units."""

from __future__ import annotations

import math
from collections.abc import Iterator
from typing import TYPE_CHECKING, NamedTuple

import numpy as np
from _moxPY import trial as calls

from ..channel import Channel
from ..plate_entries import change_entry
from ..platform import QUANTITIES
from ..samples import FloatArray
from ..units import Quantity, Unit, parse_unit

if TYPE_CHECKING:
    from ..trial import Trial

_CALIBRATED = 4  # the type of platforms whose channels are outputs of six sensors
# The powers of a length that the coefficients of the correction polynomial divide by.
_POLYNOMIAL = np.array([6.0, 4.0, 2.0, 4.0, 2.0, 0.0] * 2)


def in_units(trial: Trial, length: str = "m", force: str = "N", moment: str = "Nm") -> Trial:
    """A trial in the units that are asked for.

    Markers and their residuals, the places of segments, and analog channels of lengths turn to
    `length`; forces, computed and analog, to `force`; moments to `moment`. What was divided by
    something stays so: ``Nmm/kg`` becomes ``Nm/kg``. Angles, powers, forces, moments and analog
    channels with a unit that is unknown or of another quantity, and metadata of which the file
    format says no unit stay as they are, with the unit that they have.

    Force platforms get their corners and origins in `length`, and moments in `force` times
    `length` whatever `moment` says: the point of application is a moment divided by a force. The
    calibration of a platform of type 4 is taken for one that gives newtons, and newtons times the
    unit of points, unless its channels have units of forces and moments.

    Parameters
    ----------
    length, force, moment : str
        Such as ``"mm"``, ``"N"``, ``"Nmm"``.

    Returns
    -------
    Trial

    Raises
    ------
    ValueError
        A unit that is asked for is unknown or of another quantity; or the present one of a marker
        or of a channel of a force platform is, so that places would not agree: the text names it.

    Examples
    --------
    >>> metres = trial.in_units("m")
    """
    wanted = _Wanted(length, force, moment)
    wanted.require_known()
    changes = [*_points(trial, wanted), *_analogs(trial, wanted)]
    factor = _length_factor(trial, wanted)
    calibrations = _calibration_factors(trial, wanted, factor)

    result = trial.copy()
    for change in changes:
        _convert(result, trial, change)
    if factor is not None:
        calls.multiply_residuals(result, factor)
        _scale_places(result, factor)
        _tell_unit(result, length)
    _scale_calibrations(result, calibrations)
    return result


class _Wanted(NamedTuple):
    """The units that are asked for."""

    length: str
    force: str
    moment: str

    def on_plates(self) -> _Wanted:
        """The units of platforms, whose points of application are moments divided by forces."""
        return self._replace(moment=f"{self.force}{self.length}")

    def require_known(self) -> None:
        for quantity, name in self._asdict().items():
            unit = parse_unit(name)
            if unit is None or unit.quantity != quantity or unit.per:
                raise ValueError(f"'{name}' is no known unit of a {quantity}")

    def factor(self, unit: Unit) -> float:
        """What numbers of a unit are multiplied by."""
        wanted = parse_unit(getattr(self, unit.quantity))
        assert wanted is not None
        return unit.size / wanted.size

    def change(self, kind: str, key: str, unit: Unit) -> _Change:
        """What becomes of a channel of a unit."""
        return _Change(kind, key, self.factor(unit), getattr(self, unit.quantity) + unit.per)


class _Change(NamedTuple):
    """What becomes of a channel."""

    kind: str
    key: str
    factor: float
    unit: str


def _points(trial: Trial, wanted: _Wanted) -> Iterator[_Change]:
    for key, channel in trial.markers.items():
        yield wanted.change("markers", key, _required_unit(channel, "length"))
    computed: dict[str, Quantity] = {"forces": "force", "moments": "moment"}
    for kind, quantity in computed.items():
        for key, channel in getattr(trial, kind).items():
            unit = parse_unit(channel.unit)
            if unit is not None and unit.quantity == quantity:
                yield wanted.change(kind, key, unit)


def _analogs(trial: Trial, wanted: _Wanted) -> Iterator[_Change]:
    plates = _plate_quantities(trial)
    for key, channel in trial.analogs.items():
        quantity = plates.get(channel.index)
        if quantity is not None:
            unit = _required_unit(channel, quantity)
            yield wanted.on_plates().change("analogs", key, unit)
        elif (own := parse_unit(channel.unit)) is not None:
            yield wanted.change("analogs", key, own)


def _plate_quantities(trial: Trial) -> dict[int, Quantity]:
    """What the channels of platforms measure, by their indices.

    Not those whose outputs only a matrix makes forces of, where their units say so.
    """
    return {
        channel.index: quantity
        for plate in trial.platforms
        for quantity, channel in plate.measured
        if quantity and not (plate.type == _CALIBRATED and parse_unit(channel.unit) is None)
    }


def _required_unit(channel: Channel, quantity: Quantity) -> Unit:
    unit = parse_unit(channel.unit)
    if unit is None or unit.quantity != quantity:
        raise ValueError(
            f"the unit '{channel.unit}' of '{channel.label}' among the {channel.kind} is no known "
            f"one of a {quantity}; assign the channel's unit first"
        )
    return unit


def _convert(result: Trial, trial: Trial, change: _Change) -> None:
    original = getattr(trial, change.kind)[change.key]
    converted = getattr(result, change.kind)[change.key]
    if change.factor != 1.0:
        converted.values = original.values * change.factor
        if change.kind == "analogs":
            calls.multiply_scale(result, converted._handle, change.factor)
        else:
            calls.carry_residuals(result, converted._handle, trial, original._handle)
    converted.unit = change.unit


def _present_length(trial: Trial) -> Unit | None:
    """The unit of places in the laboratory; None where the trial has no such place."""
    name = trial.markers.unit
    if name is None:
        if not (trial.markers or trial.platforms or trial.rotations):
            return None
        entry = trial.metadata["POINT"].get("UNITS")
        name = entry if isinstance(entry, str) else ""
    unit = parse_unit(name)
    if unit is None or unit.quantity != "length":
        raise ValueError(f"the unit '{name}' of points is no known one of a length")
    return unit


def _length_factor(trial: Trial, wanted: _Wanted) -> float | None:
    unit = _present_length(trial)
    return None if unit is None else wanted.factor(unit)


def _scale_places(trial: Trial, factor: float) -> None:
    for label, matrices in trial.rotations.items():
        scaled = matrices.copy()
        scaled[:, :3, 3] *= factor
        trial.rotations[label] = scaled
    _scale_entry(trial, "CORNERS", factor)
    _scale_entry(trial, "ORIGIN", factor)
    _scale_entry(trial, "FPCOPPOLY", factor**-_POLYNOMIAL)


def _tell_unit(trial: Trial, unit: str) -> None:
    """Name the unit of points, where there is one for all."""
    group = trial.metadata.get("POINT")
    if group is not None and isinstance(group.get("UNITS", ""), str):
        group["UNITS"] = unit


def _scale_entry(trial: Trial, name: str, factor: float | FloatArray) -> None:
    """Multiply an entry of the force platforms; block by block where there are more numbers than
    factors."""
    change_entry(trial, name, lambda former: former.reshape(-1, *np.shape(factor)) * factor)


def _calibration_factors(
    trial: Trial, wanted: _Wanted, length: float | None
) -> dict[int, FloatArray]:
    """What the matrices of platforms of type 4 are multiplied by, (6, 6), by platform."""
    newtons = wanted.factor(Unit("force", 1.0, ""))
    usual = {"force": newtons, "moment": newtons * (length or 1.0)}
    factors = {}
    for plate in trial.platforms:
        if plate.type != _CALIBRATED or plate.calibration is None or len(plate.channels) != 6:
            continue  # it has no wrench
        inputs = np.ones(6)
        results = np.array([usual[quantity] for quantity in QUANTITIES[_CALIBRATED]])
        for i, channel in enumerate(plate.channels):
            unit = parse_unit(channel.unit)
            if unit is not None:
                inputs[i] = results[i] = wanted.on_plates().factor(unit)
        factors[plate.index] = results[:, np.newaxis] / inputs
    return factors


def _scale_calibrations(trial: Trial, factors: dict[int, FloatArray]) -> None:
    """Multiply the matrices, which lie column by column in the upper left of what each has."""
    if not factors:
        return
    shape = trial.metadata["FORCE_PLATFORM"].entry("CAL_MATRIX").shape
    if len(shape) == 3 or shape[-2:-1] == shape[-1:]:
        extent = shape[-2:]
    else:  # flattened
        side = math.isqrt(math.prod(shape) // len(trial.platforms))
        extent = (side, side)
    scales = np.ones((math.prod(shape) // math.prod(extent), *extent))
    for index, matrix in factors.items():
        scales[index, :6, :6] = matrix.T
    _scale_entry(trial, "CAL_MATRIX", scales)
