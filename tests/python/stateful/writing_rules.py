"""Writing the acquisition in whatever state the edits left it, and reading it again."""

from __future__ import annotations

import io
import tempfile
from pathlib import Path
from typing import Any

import _mox_probe as probe
import _moxPY
import moxPY
import numpy as np
from hypothesis.stateful import rule
from stateful.editing_machine import EditingMachine
from support.failures import failure_of
from support.model.acquisition import Acquisition
from support.model.state import Entry
from support.store_tree import snapshot

NO_RATE = (RuntimeError, "Frequency is not set, impossible to export to c3d")

# Values that 16 bits do not hold, and groups in groups.
NOT_IN_A_FILE = (
    "Export to c3d failed : the metadata group 'MINE' has the group 'DEEP' in it; ",
    "Export to c3d failed : the maximum interpolation gap is ",
    "Export to c3d failed : EVENT:ICON_IDS of the event ",
)


class WritingRules(EditingMachine):
    """What is in memory is what the file holds, and the file does not drift."""

    @rule()
    def write_and_read(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "trial.c3d")
            if not self.model.moxGetPointFrequency():
                assert failure_of(_moxPY.moxWriteAcquisition, self.handle, str(path)) == NO_RATE
                assert not list(Path(folder).iterdir())
                assert _written_by_trial(self.handle) is None
                return
            refusal = _refusal(self.handle, path)
            content = None if refusal else path.read_bytes()
            assert _written_by_trial(self.handle) == content
            if contradiction := _contradiction(self.model):
                assert refusal == contradiction
                assert not list(Path(folder).iterdir())
                return
            self._follow()
            if refusal is not None:
                assert refusal.startswith(NOT_IN_A_FILE), refusal
                assert not list(Path(folder).iterdir())
                return
            first = path.read_bytes()
            written = _moxPY.moxReadAcquisition(str(path))
            self._compare(written)
            assert snapshot(moxPY.read(path, odd="ignore")) == snapshot(written)
            _moxPY.moxWriteAcquisition(written, str(path))
            assert path.read_bytes() == first, "written twice, the file differs"
            assert [entry.name for entry in Path(folder).iterdir()] == [path.name]

    def _follow(self) -> None:
        """What writing does to the acquisition itself."""
        self.model.metadata.entries.setdefault("DeviceType", Entry("str", (), ["Metadata"]))
        # With force platforms, the channels that the labels name come first.
        channels = self.model.analogs.channels
        if "FORCE_PLATFORM" not in self.model.metadata.groups:
            return
        data = probe.tree(self.handle)["groups"]["Format"]["groups"]["Data"]["groups"]
        sets = data["AnalogsExport"]["sets"]
        order = {name: int(sets[name]["attributes"]["RelativeSetIndex"][2]) for name in channels}
        assert sorted(order.values()) == list(range(len(channels)))
        for name, channel in channels.items():
            channel.index = order[name]

    def _compare(self, written: Any) -> None:
        points = np.asarray(_moxPY.moxGetPointsValues(written))
        assert np.array_equal(
            points, _gaps_whole(np.asarray(_moxPY.moxGetPointsValues(self.handle))), equal_nan=True
        )
        analogs = np.asarray(_moxPY.moxGetAnalogsValues(self.handle), dtype=np.float64)
        assert np.allclose(
            np.asarray(_moxPY.moxGetAnalogsValues(written)), analogs, rtol=1e-6, equal_nan=True
        )
        assert _event_times(written) == _event_times(self.handle)
        for getter in (
            _moxPY.moxGetPointFrequency, _moxPY.moxGetPointNumber, _moxPY.moxGetAnalogNumber,
        ):  # fmt: skip
            assert np.float32(getter(written)) == np.float32(getter(self.handle)), getter
        # A change of the rate leaves the start where it was, maybe between two frames.
        first = _moxPY.moxGetFirstFrame(self.handle)
        assert abs(_moxPY.moxGetFirstFrame(written) - first) <= 0.5
        # Nor does it change any samples: until they are set, getters count those of the new rate.
        frames = self.model.point_groups["Angles"].samples
        if _frames_and_samples(self.handle) == (frames, frames * self.model.ratio):
            assert _frames_and_samples(written) == _frames_and_samples(self.handle)


def _contradiction(model: Acquisition) -> str | None:
    """What is said where the analog channels have not the samples of the frames."""
    frames = model.point_groups["Angles"].samples
    wanted, samples = frames * model.ratio, model.analogs.samples
    if not model.analogs.channels or samples == wanted:
        return None
    return (
        f"Export to c3d failed : the points have {frames} frames, to which {wanted} analog samples "
        f"belong, but the analog channels have {samples}. moxSetPointsValues and "
        f"moxSetAnalogsValues take the values of {int(model.moxGetPointFrameNumber())} frames; "
        "moxSetFrameNumber cuts or lengthens what is there"
    )


def _refusal(acquisition: Any, path: Path) -> str | None:
    try:
        _moxPY.moxWriteAcquisition(acquisition, str(path))
    except RuntimeError as refusal:
        return str(refusal)
    return None


def _written_by_trial(acquisition: Any) -> bytes | None:
    """The file that the view of the acquisition writes; None: it refuses, too."""
    file = io.BytesIO()
    try:
        moxPY.Trial.of(acquisition).write(file)
    except ValueError:
        assert file.getvalue() == b""
        return None
    return file.getvalue()


def _gaps_whole(matrix: Any) -> Any:
    """In single precision; without one of its coordinates, a point is missing."""
    if matrix.size == 0 or matrix.ndim == 0:  # without frames or points
        return matrix
    points = matrix.astype(np.float32).astype(np.float64).reshape(len(matrix), -1, 3)
    points[~np.isfinite(points).all(axis=2)] = np.nan
    return points.reshape(matrix.shape)


def _frames_and_samples(acquisition: Any) -> tuple[float, float]:
    frames = _moxPY.moxGetPointFrameNumber(acquisition)
    return frames, _moxPY.moxGetAnalogFrameNumber(acquisition)


def _event_times(acquisition: Any) -> list[float]:
    events, _ = _moxPY.moxGetEvents(acquisition)
    return sorted(float(np.float32(time)) for times in events.values() for time in np.ravel(times))
