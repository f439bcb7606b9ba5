"""One channel of a trial: a point (marker, angle, force …) or an analog channel."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, Any

import numpy as np
from _moxPY import trial as calls
from numpy.lib.mixins import NDArrayOperatorsMixin
from numpy.typing import DTypeLike, NDArray

from .display import one_line
from .labels import require_text
from .normalize import mean_cycle, normalize
from .samples import FloatArray, as_matrix, samples_of

if TYPE_CHECKING:
    from .trial import Trial


class Channel(NDArrayOperatorsMixin):
    """A channel, which stays the same one when it is renamed.

    Every property is read from the trial when it is asked for. In NumPy a channel behaves as the
    array of its samples: ``channel + 1`` is an array, ``channel += 1`` assigns one to `values`.
    Once the channel was removed from the trial, everything raises KeyError; once the trial was
    closed, ValueError.

    Examples
    --------
    >>> knee = trial.angles["LKneeAngles"]
    >>> knee.values.shape, knee.unit
    ((360, 3), 'deg')
    """

    __slots__ = ("_handle", "_trial")

    def __init__(self, trial: Trial, handle: object) -> None:
        self._trial = trial
        self._handle = handle

    @property
    def trial(self) -> Trial:
        """The trial that the channel belongs to."""
        return self._trial

    @property
    def kind(self) -> str:
        """``"markers"``, ``"angles"``, ``"forces"``, ``"moments"``, ``"powers"`` or
        ``"analogs"``."""
        return calls.channel_kind(self._trial, self._handle).lower()

    @property
    def values(self) -> FloatArray:
        """The samples, read-only: shape (frames, 3), NaN where a point was not seen; of an analog
        channel (samples,). Assign an array of the same shape to replace them."""
        return calls.channel_values(self._trial, self._handle)

    @values.setter
    def values(self, values: Any) -> None:
        shape = calls.channel_shape(self._trial, self._handle)
        axes = ("samples",) if len(shape) == 1 else ("frames", "3")
        array = samples_of(values, shape, axes, f"the channel '{self.label}'")
        calls.set_channel_values(self._trial, self._handle, as_matrix(array))

    @property
    def x(self) -> FloatArray:
        """The first component of a point, shape (frames,)."""
        return self._component(0)

    @property
    def y(self) -> FloatArray:
        """The second component of a point, shape (frames,)."""
        return self._component(1)

    @property
    def z(self) -> FloatArray:
        """The third component of a point, shape (frames,)."""
        return self._component(2)

    def _component(self, index: int) -> FloatArray:
        values = self.values
        if values.ndim == 1:
            raise AttributeError(f"the analog channel '{self.label}' has no components")
        return values[:, index]

    @property
    def time(self) -> FloatArray:
        """The instant of each sample in seconds on the trial's clock."""
        return self._trial.analogs.time if self.kind == "analogs" else self._trial.time

    @property
    def rate(self) -> float:
        """Samples a second."""
        return calls.channel_rate(self._trial, self._handle)

    @property
    def index(self) -> int:
        """Where the channel stands, from 0, as the ``mox…`` functions take it: analog channels are
        counted by themselves, points of all kinds in one sequence."""
        return calls.channel_index(self._trial, self._handle)

    @property
    def label(self) -> str:
        """The label, as the file has it."""
        return calls.channel_text(self._trial, self._handle, "Label")

    @label.setter
    def label(self, label: str) -> None:
        self._set_text("label", label)

    @property
    def unit(self) -> str:
        """The unit of the samples."""
        return calls.channel_text(self._trial, self._handle, "Unit")

    @unit.setter
    def unit(self, unit: str) -> None:
        self._set_text("unit", unit)

    @property
    def description(self) -> str:
        """What the file says of the channel."""
        return calls.channel_text(self._trial, self._handle, "Description")

    @description.setter
    def description(self, description: str) -> None:
        self._set_text("description", description)

    def _set_text(self, name: str, text: str) -> None:
        require_text(text, name)
        calls.set_channel_text(self._trial, self._handle, name.capitalize(), text)

    @property
    def residuals(self) -> FloatArray:
        """How far the rays of the cameras missed each other, shape (frames,), in the unit of
        points: 0 where the point was computed instead of measured, −1 where it was not seen."""
        return calls.channel_residuals(self._trial, self._handle)

    @property
    def cameras(self) -> NDArray[np.bool_]:
        """Which of the first seven cameras saw the point, shape (frames, 7)."""
        return calls.channel_cameras(self._trial, self._handle)

    normalize = normalize
    mean_cycle = mean_cycle

    def carry(self, channel: Channel) -> None:
        """Take over unit, description, residuals and camera masks of another channel, which may
        be part of another trial."""
        calls.carry_channel(self._trial, self._handle, channel._trial, channel._handle)

    def is_same(self, channel: Channel) -> bool:
        """Whether both are one channel of one trial; ``==`` compares samples."""
        return (
            self._trial.this is channel._trial.this
            and self.kind == channel.kind
            and self.index == channel.index
        )

    @property
    def shape(self) -> tuple[int, ...]:
        """Shape of `values`."""
        return calls.channel_shape(self._trial, self._handle)

    @property
    def ndim(self) -> int:
        """Number of dimensions of `values`."""
        return len(self.shape)

    def __array__(self, dtype: DTypeLike | None = None, copy: bool | None = None) -> NDArray[Any]:
        if copy is False:
            raise ValueError("the samples of a channel are always a copy")
        values = self.values
        if dtype is not None and np.dtype(dtype) != values.dtype:
            return values.astype(dtype)
        return values.copy() if copy else values

    def __array_ufunc__(
        self,
        ufunc: np.ufunc,
        method: str,
        *inputs: Any,
        out: tuple[Any, ...] | None = None,
        **options: Any,
    ) -> Any:
        arrays = [item.values if isinstance(item, Channel) else item for item in inputs]
        compute = getattr(ufunc, method)
        if out is None:
            return compute(*arrays, **options)
        # Samples are read-only: what is meant for a channel is computed beside it, then assigned.
        targets = [each.values.copy() if isinstance(each, Channel) else each for each in out]
        result = compute(*arrays, out=tuple(targets), **options)
        for channel, values in zip(out, targets, strict=True):
            if isinstance(channel, Channel):
                channel.values = values
        return out[0] if len(out) == 1 and isinstance(out[0], Channel) else result

    def __len__(self) -> int:
        return self.shape[0]

    def __getitem__(self, index: Any) -> Any:
        return self.values[index]

    def __iter__(self) -> Iterator[Any]:
        return iter(self.values)

    def __repr__(self) -> str:
        try:
            name = self.kind
        except (KeyError, ValueError):
            name = "channel"
        return one_line(name, lambda: f": {self.label}, {self.shape} {self.unit}".rstrip())
