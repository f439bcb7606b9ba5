"""Random sequences of edits leave an acquisition and its model the same, step by step."""

from __future__ import annotations

import os
import tempfile
from pathlib import Path
from typing import Any

import _moxPY
import pytest
from hypothesis import HealthCheck, settings
from hypothesis import strategies as st
from hypothesis.stateful import precondition, rule, run_state_machine_as_test
from stateful.analog_rules import AnalogRules
from stateful.editing_machine import EditingMachine
from stateful.event_rules import EventRules
from stateful.metadata_rules import MetadataRules
from stateful.point_rules import PointRules
from stateful.refusal_rules import RefusalRules
from stateful.sampling_rules import SamplingRules
from stateful.start_files import (
    TYPES,
    UNITS,
    file_with_everything,
    file_without_analogs,
    file_without_points,
)
from stateful.writing_rules import WritingRules
from support.c3d_bytes import C3DFile
from support.memory import under_a_sanitizer
from support.model.acquisition import Acquisition, acquisition_of, new_acquisition

# The same sequences in every run. A number in MOXPY_EDITING_EXAMPLES searches that many new ones.
EXAMPLES = os.environ.get("MOXPY_EDITING_EXAMPLES")
SETTINGS = settings(
    max_examples=int(EXAMPLES or (30 if under_a_sanitizer() else 120)),
    stateful_step_count=50,
    derandomize=EXAMPLES is None,
    database=None,
    deadline=None,
    report_multiple_bugs=False,
    suppress_health_check=list(HealthCheck),
)


class Editing(
    PointRules,
    AnalogRules,
    EventRules,
    MetadataRules,
    SamplingRules,
    RefusalRules,
    WritingRules,
    EditingMachine,
):
    """All modifiers, and writing."""

    # One rule for all, since there is little to see in an empty acquisition.
    @precondition(lambda self: self.model.points and self.model.metadata.groups)
    @rule(family=st.sampled_from(["Points", "Analogs", "Events", "MetaData"]))
    def clear(self, family: str) -> None:
        self.perform(f"moxClear{family}")


class EditingNew(Editing):
    def start(self) -> tuple[Any, Acquisition]:
        return _moxPY.moxNewAcquisition(2, 4, 2, 2), new_acquisition(2, 4, 2, 2)


class EditingRead(Editing):
    def start(self) -> tuple[Any, Acquisition]:
        file = file_with_everything()
        return read(file), acquisition_of(file, TYPES, UNITS)


class EditingReadWithoutAnalogs(Editing):
    def start(self) -> tuple[Any, Acquisition]:
        file = file_without_analogs()
        return read(file), acquisition_of(file, TYPES, UNITS)


class EditingReadWithoutPoints(Editing):
    def start(self) -> tuple[Any, Acquisition]:
        file = file_without_points()
        return read(file), acquisition_of(file, TYPES, UNITS)


def read(file: C3DFile) -> Any:
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "trial.c3d")
        path.write_bytes(file.to_bytes())
        return _moxPY.moxReadAcquisition(str(path))


@pytest.mark.parametrize(
    "machine",
    [EditingNew, EditingRead, EditingReadWithoutAnalogs, EditingReadWithoutPoints],
    ids=lambda each: each.__name__,
)
def test_random_edits_do_what_the_model_does(machine: type[EditingMachine]) -> None:
    run_state_machine_as_test(machine, settings=SETTINGS)
