"""The channels of a kind as a mapping of labels: markers, angles …, all points, analog channels."""

from __future__ import annotations

from collections.abc import Callable, Iterable, Iterator, Mapping
from contextlib import suppress
from typing import TYPE_CHECKING, Any

import _moxPY
import numpy as np
from _moxPY import trial as calls

from .asking import ask
from .bridges.updating import update_from
from .channel import Channel
from .display import abridged, one_line
from .gaps import Gap, runs_of
from .labels import nearest, require_text
from .partial import require_read, unread_of
from .popping import PoppingMapping
from .samples import FloatArray, as_matrix, instants, read_only, samples_of

if TYPE_CHECKING:
    from .trial import Trial


class Channels(PoppingMapping[Channel]):
    """The points of one kind in the file's order.

    Keys are labels; where a file repeats one, its second channel has the key ``label_2``.
    Assigning an array replaces the samples of a channel or appends one; assigning a channel
    carries its unit, description, residuals and camera masks along.

    `values` is one array of all samples, not the method of dictionaries: iterate over `items` to
    meet the channels.

    Examples
    --------
    >>> trial.markers["MID"] = (trial.markers["LASI"] + trial.markers["RASI"]) / 2
    >>> "MID" in trial.markers
    True
    """

    __slots__ = ("_kind", "_trial")

    def __init__(self, trial: Trial, kind: str) -> None:
        self._trial = trial
        self._kind = kind

    @property
    def labels(self) -> list[str]:
        """The keys in the file's order."""
        return calls.channel_keys(self._trial, self._kind)

    @property
    def unit(self) -> str | None:
        """The unit that all channels have; None where they differ and without channels. Assign one
        to say it of all channels; samples are not converted."""
        units = set(self.units.values())
        return units.pop() if len(units) == 1 else None

    @unit.setter
    def unit(self, unit: str) -> None:
        for _, channel in self.items():
            channel.unit = unit

    @property
    def units(self) -> dict[str, str]:
        """The unit of each channel."""
        units = {}
        for label in self.labels:
            with suppress(KeyError):  # another thread has removed it
                units[label] = self[label].unit
        return units

    @property  # type: ignore[override]
    def values(self) -> FloatArray:
        """All samples, read-only: shape (frames, channels, 3), the channels in the order of
        `labels`. Assign an array of that shape to replace them. ValueError where the file has such
        channels and none was read (`Trial.unread`)."""
        shape = self._shape
        if shape[1] == 0 and unread_of(self._trial, self._kind.lower()):
            raise ValueError(f"the {self._kind.lower()} were not read")
        if 0 in shape:
            return read_only(np.empty(shape))
        # One call, so that the frames are of one moment: another thread may append channels.
        matrix = calls.kind_values(self._trial, self._kind)
        return read_only(matrix.reshape(len(matrix), -1, *shape[2:]))

    @values.setter
    def values(self, values: Any) -> None:
        self._assign(values)

    def _assign(self, values: Any) -> None:
        shape = self._shape
        array = samples_of(values, shape, self._axes, f"the {self._kind.lower()}")
        if 0 in shape:
            return
        try:
            calls.set_kind_values(self._trial, self._kind, as_matrix(array))
        except RuntimeError as error:  # another thread added or removed channels since
            raise ValueError(f"the {self._kind.lower()} were not replaced: {error}") from None

    @property
    def _shape(self) -> tuple[int, ...]:
        return self._trial.frames, len(self), 3

    _axes: tuple[str, ...] = ("frames", "channels", "3")

    def rename(self, labels: Mapping[str, str] | Callable[[str], str]) -> None:
        """Give channels other labels, in place.

        Parameters
        ----------
        labels : mapping of str to str, or callable
            New labels by old ones, or a function of the label that gives the new one. Swapping
            labels is fine.

        Raises
        ------
        KeyError
            There is no channel of a label.
        ValueError
            Two channels would have one label, or a new one has a NUL character.
        TypeError
            A new label is no text. Nothing is renamed in any of these cases.
        """
        if callable(labels):
            labels = {label: labels(label) for label in self.labels}
        renamed = {label: new for label, new in labels.items() if new != label}
        for new in renamed.values():
            require_text(new, "label")
        channels = [(self[label], new) for label, new in renamed.items()]
        if len(set(renamed.values())) < len(renamed) or any(
            new not in renamed and new in self for new in renamed.values()
        ):
            _require_distinct(renamed.get(label, label) for label in self.labels)
        for channel, new in channels:
            channel.label = new

    update_from = update_from

    @property
    def _time(self) -> FloatArray:
        return self._trial.time

    @property
    def _rate(self) -> float:
        return self._trial.rate

    def gaps(self) -> list[Gap]:
        """Every run of frames in which a point was not seen, by channel and frame; runs at the
        beginning and the end count.

        Returns
        -------
        list of Gap
            Label, first and last frame, as the trial numbers its frames.
        """
        labels, values = self.labelled_values()
        missing = np.isnan(values).any(axis=2)
        start = self._trial.first_frame
        return [
            Gap(label, start + int(first), start + int(last))
            for label, flags in zip(labels, missing.T, strict=True)
            for first, last in runs_of(flags)
        ]

    def labelled_values(self) -> tuple[list[str], FloatArray]:
        """`labels` and `values` of one moment, though another thread adds or removes channels."""
        while True:
            labels, values = self.labels, self.values
            if values.shape[1] == len(labels) and labels == self.labels:
                return labels, values

    def __getitem__(self, label: str) -> Channel:
        return Channel(self._trial, self._found(label))

    def __setitem__(self, label: str, values: Any) -> None:
        require_text(label, "label")
        handle = self._find(label)
        if handle is not None:
            channel = Channel(self._trial, handle)
            if isinstance(values, Channel) and channel.is_same(values):
                return
            channel.values = values
        else:
            channel = self._append(label, values)
        if isinstance(values, Channel):
            channel.carry(values)

    def update(self, channels: Any = (), /, **more: Any) -> None:
        """Assign to each label what a mapping, or pairs, or the keywords have for it."""
        super().update(channels, **more)

    def setdefault(self, label: str, values: Any = None) -> Channel:
        """The channel of a label, which is appended where there is none."""
        if label not in self:
            self[label] = values
        return self[label]

    def _append(self, label: str, values: Any) -> Channel:
        shape = (self._shape[0], *self._shape[2:])
        axes = (self._axes[0], *self._axes[2:])
        array = samples_of(values, shape, axes, f"the new channel '{label}'")
        kind = self._kind_of_new(values)
        return Channel(
            self._trial, calls.append_channel(self._trial, kind, label, as_matrix(array))
        )

    def _kind_of_new(self, values: Any) -> str:
        return self._kind

    def _of_copy(self, key: str) -> Channel:
        copied: Channels = getattr(self._trial.copy(), self._kind.lower())
        return copied[key]

    def __delitem__(self, label: str) -> None:
        calls.remove_channel(self._trial, self._found(label))

    def __iter__(self) -> Iterator[str]:
        return iter(self.labels)

    def __len__(self) -> int:
        return calls.channel_count(self._trial, self._kind)

    def __contains__(self, label: object) -> bool:
        return isinstance(label, str) and self._find(label) is not None

    def __eq__(self, other: object) -> bool:
        """Whether both have the same labels with the same samples; NaN is as NaN."""
        if not isinstance(other, Channels):
            return NotImplemented
        return set(self.labels) == set(other.labels) and all(
            np.array_equal(channel.values, other[label].values, equal_nan=True)
            for label, channel in self.items()
        )

    __hash__ = None  # type: ignore[assignment]  # it changes

    def _find(self, label: str) -> object | None:
        if "\0" in label:  # such a label is in no trial
            return None
        return calls.find_channel(self._trial, self._kind, label)

    def _found(self, label: str) -> object:
        if not isinstance(label, str):
            raise TypeError(f"channels are found by labels, not by {type(label).__name__}")
        handle = self._find(label)
        if handle is None:
            kind = self._kind.lower()
            require_read(self._trial, label, kind)
            raise KeyError(f"no channel '{label}' among the {kind}{nearest(label, self.labels)}")
        return handle

    def _ipython_key_completions_(self) -> list[str]:
        return self.labels

    def __repr__(self) -> str:
        return one_line(self._kind.lower(), lambda: f" ({len(self)}): {abridged(self.labels)}")


class Points(Channels):
    """The points of all kinds. A label that two kinds share is numbered.

    A new point is a marker, unless a channel of another kind is assigned.
    """

    __slots__ = ()

    def __init__(self, trial: Trial) -> None:
        super().__init__(trial, "Points")

    def _kind_of_new(self, values: Any) -> str:
        is_point = isinstance(values, Channel) and values.kind != "analogs"
        return values.kind.capitalize() if is_point else "Markers"


class Analogs(Channels):
    """The analog channels: force platforms, electromyography and other sensors."""

    __slots__ = ()

    def __init__(self, trial: Trial) -> None:
        super().__init__(trial, "Analogs")

    @property
    def rate(self) -> float:
        """Samples a second of each channel."""
        return self._trial.rate * self._trial.samples_per_frame

    @property
    def time(self) -> FloatArray:
        """The instant of each sample in seconds on the trial's clock, shape (samples,). NaN
        without a rate."""
        ratio = self._trial.samples_per_frame
        first = (self._trial.first_frame - 1) * ratio
        return instants(first, self._samples, self._trial.rate * ratio)

    @property  # type: ignore[override]
    def values(self) -> FloatArray:
        """All samples, read-only: shape (samples, channels), the channels in the order of
        `labels`. Assign an array of that shape to replace them."""
        return super().values

    @values.setter
    def values(self, values: Any) -> None:
        self._assign(values)

    @property
    def _time(self) -> FloatArray:
        return self.time

    @property
    def _rate(self) -> float:
        return self.rate

    def gaps(self) -> list[Gap]:
        """Analog channels have a value for every sample: an empty list."""
        return []

    @property
    def _samples(self) -> int:
        return int(ask(_moxPY.moxGetAnalogFrameNumber, self._trial))

    @property
    def _shape(self) -> tuple[int, ...]:
        return self._samples, len(self)

    _axes = ("samples", "channels")


def _require_distinct(labels: Iterable[str]) -> None:
    met: set[str] = set()
    for label in labels:
        if label in met:
            raise ValueError(f"two channels would have the label '{label}'")
        met.add(label)
