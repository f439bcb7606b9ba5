"""Rotations of segments."""

from __future__ import annotations

from collections.abc import Iterator, Mapping
from typing import TYPE_CHECKING, Any

from _moxPY import trial as calls

from .display import abridged, one_line
from .labels import nearest
from .partial import require_read
from .samples import FloatArray, instants, read_only, samples_of

if TYPE_CHECKING:
    from .trial import Trial


class Rotations(Mapping[str, FloatArray]):
    """The segments of a trial and where they were: homogeneous matrices that take places in a
    segment to the laboratory, by the segment's label.

    Each is a read-only array of shape (samples, 4, 4), with as many samples as there are frames
    unless the file has more in each; NaN where a segment was not seen. Assigning an array of that
    shape replaces those of a segment, in what is written to a file, too.
    """

    __slots__ = ("_trial",)

    def __init__(self, trial: Trial) -> None:
        self._trial = trial

    @property
    def labels(self) -> list[str]:
        """The labels of the segments in the file's order."""
        return calls.rotation_labels(self._trial)

    @property
    def samples_per_frame(self) -> int:
        """Samples in each frame, usually 1."""
        return calls.rotation_ratio(self._trial)

    @property
    def rate(self) -> float:
        """Samples a second."""
        return self._trial.rate * self.samples_per_frame

    @property
    def time(self) -> FloatArray:
        """The instant of each sample in seconds on the trial's clock, shape (samples,). NaN
        without a rate."""
        first = (self._trial.first_frame - 1) * self.samples_per_frame
        return instants(first, self._samples, self.rate)

    @property
    def _samples(self) -> int:
        """Samples of each segment: fewer than belong to the frames where a file was cut short."""
        labels = self.labels
        return calls.rotation_samples(self._trial, labels[0]) if labels else 0

    def __getitem__(self, label: str) -> FloatArray:
        self._require(label)
        return read_only(calls.rotation_values(self._trial, label)[0])

    def __setitem__(self, label: str, matrices: Any) -> None:
        """Replace the matrices of a segment.

        Parameters
        ----------
        label : str
            The label of a segment that the trial has.
        matrices : array_like
            Shape (samples, 4, 4). A sample with a NaN in it is one in which the segment was not
            seen.

        Raises
        ------
        KeyError
            There is no segment of that label.
        TypeError, ValueError
            The matrices are no numbers, or of another shape. Nothing has changed then.
        """
        self._require(label)
        shape = (calls.rotation_samples(self._trial, label), 4, 4)
        array = samples_of(matrices, shape, ("samples", "4", "4"), f"the rotations of '{label}'")
        calls.set_rotation(self._trial, label, array.reshape(-1, 16))

    def __iter__(self) -> Iterator[str]:
        return iter(self.labels)

    def __len__(self) -> int:
        return len(self.labels)

    def __contains__(self, label: object) -> bool:
        return label in self.labels

    def _require(self, label: object) -> None:
        labels = self.labels
        if label not in labels:
            require_read(self._trial, label, "rotations")
            raise KeyError(f"no segment '{label}' among the rotations{nearest(label, labels)}")

    def _ipython_key_completions_(self) -> list[str]:
        return self.labels

    def __repr__(self) -> str:
        return one_line("rotations", lambda: f" ({len(self)}): {abridged(self.labels)}")
