"""Recordings of Rerun."""

from __future__ import annotations

import os
from collections.abc import Iterable
from pathlib import Path
from typing import TYPE_CHECKING, Any

from ...readable import readable
from ...skeleton import Stick
from ..extras import require
from ..writing import PathLike
from .rerun_curves import log_curves, log_events
from .rerun_log import Log
from .rerun_scene import Scene, log_scene, scene_of

if TYPE_CHECKING:
    import rerun  # type: ignore[import-untyped, import-not-found, unused-ignore]

    from ..trial import Trial

_CURVES = ("angles", "forces", "moments", "powers", "platforms", "analogs")


def to_rerun(
    trial: Trial,
    path: PathLike | None = None,
    *,
    application_id: str = "moxPY",
    recording: rerun.RecordingStream | None = None,
    sticks: Iterable[Stick] | None = None,
    threshold: float = 20.0,
) -> rerun.RecordingStream:
    """Log the trial for the viewer Rerun: markers, sticks, forces, curves and events.

    Everything stands on two time lines, ``time`` in seconds on the trial's clock and ``frame``. As
    other functions for Rerun do, it logs into the recording that is active, after ``rerun.init``;
    where none is, it begins one of its own and opens the viewer.

    Parameters
    ----------
    path : str or os.PathLike, optional
        Write a file, which ends on ``.rrd``, instead of opening the viewer; one that is there is
        replaced. It is complete when the function returns.
    application_id : str
        What the viewer lists a recording of its own under. Those of one application share the
        layout that a user has given them.
    recording : rerun.RecordingStream, optional
        Log into this one, and open nothing.
    sticks : iterable of (str, str), optional
        Labels of the markers that are joined; the usual ones when left out
        (`moxPY.skeleton.sticks_of`), and none when empty.
    threshold : float
        The least force on a platform that has an arrow, as for `Platform.reaction`.

    Returns
    -------
    rerun.RecordingStream
        What was logged into, to log more; with a path it is closed.

    Raises
    ------
    KeyError
        There is no marker of a label.
    ValueError
        The threshold is negative or NaN, the file ends on something else, or both `path` and
        `recording` are given.
    ImportError
        Rerun is not installed.
    OSError
        The system does not let the file be made; what was there is as it was.

    Notes
    -----
    Entities are ``lab/markers/LABEL``, ``lab/sticks/SIDE``, ``lab/platforms/NUMBER`` with ``force``
    below (numbers begin at 1), ``angles/LABEL``, ``forces/LABEL``, ``moments/LABEL``,
    ``powers/LABEL``, ``analogs/LABEL``, ``platforms/NUMBER/force`` and ``events``. Places stay in
    the unit of the file. An arrow is the force on the person at the instant of a frame, 1 m long
    for 1000 N; the curve beside it has each sample in the unit of the file. Where a marker is not
    seen it is not shown, and curves are interrupted. A trial without a rate has frames alone.

    Examples
    --------
    >>> recording = trial.to_rerun("walk.rrd")  # doctest: +SKIP
    """
    if path is not None and recording is not None:
        raise ValueError("path and recording: a trial goes into a file or into a recording")
    place = None if path is None else _place(path)
    package = require("rerun")
    scene = scene_of(trial, sticks, threshold)
    if place is not None:
        return _written(trial, scene, package.RecordingStream(application_id), place)
    target: rerun.RecordingStream | None = recording or package.get_data_recording()
    if target is None:
        target = package.RecordingStream(application_id)
        target.spawn(default_blueprint=_layout(trial))
    _log(trial, scene, target)
    target.flush()
    return target


def _place(path: PathLike) -> Path:
    """Where a recording is written, which is no other file by mistake."""
    place = Path(os.fsdecode(path))
    if place.suffix.lower() != ".rrd":
        raise ValueError(f"a recording ends on .rrd, not '{place.suffix}'")
    return place


def _written(
    trial: Trial, scene: Scene, recording: rerun.RecordingStream, place: Path
) -> rerun.RecordingStream:
    from ...formats.target import Target  # which knows trials

    with Target(place.parent, place.stem, place.suffix, replace=True) as target:
        try:
            recording.save(target.path(), default_blueprint=_layout(trial))
            _log(trial, scene, recording)
            recording.flush()
        finally:
            recording.disconnect()
    return recording


def _log(trial: Trial, scene: Scene, recording: rerun.RecordingStream) -> None:
    log = Log(trial, require("rerun"), recording)
    if trial.path:
        recording.send_recording_name(readable(trial.path.name))
    log_scene(log, scene)
    log_curves(log, scene)
    log_events(log)


def _layout(trial: Trial) -> Any:
    """The laboratory on the left, curves and events on the right."""
    blueprint = require("rerun", "blueprint")
    curves = [
        blueprint.TimeSeriesView(origin=kind, name=kind.capitalize())
        for kind in _CURVES
        if len(getattr(trial, kind))
    ]
    events = [blueprint.TextLogView(origin="events", name="Events")] if trial.events else []
    right = [*([blueprint.Tabs(*curves)] if curves else []), *events]
    laboratory = blueprint.Spatial3DView(origin="lab", name="Laboratory")
    if not right:
        return blueprint.Blueprint(laboratory)
    return blueprint.Blueprint(blueprint.Horizontal(laboratory, blueprint.Vertical(*right)))
