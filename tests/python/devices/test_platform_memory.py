"""Without enough memory platforms are a MemoryError, never a wrench of NaN."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import Plate, read_plates
from support.memory import address_space, limited

SAMPLES = 300_000
WRENCH = 9 * 8 * SAMPLES
wrench_functions = pytest.mark.parametrize(
    "read", [_moxPY.moxGetForcePlatformWrenches, _moxPY.moxGetGroundReactionWrenches]
)


@wrench_functions
def test_a_wrench_is_whole_or_an_error(tmp_path: Path, read: Callable[[Any], Any]) -> None:
    acquisition = read_plates(tmp_path, [Plate(2)], 4)
    _moxPY.moxSetFrameNumber(acquisition, SAMPLES)
    _moxPY.moxSetAnalogValues(acquisition, "Fz_0", np.full((SAMPLES, 1), 100.0))
    outcomes = []
    for share in np.arange(0.0, 3.0, 0.15):
        with address_space(int(share * WRENCH)):
            try:
                outcomes.append(not np.isnan(read(acquisition)[0]["F"]).any())
            except MemoryError:
                outcomes.append(True)
    assert outcomes == [True] * len(outcomes)
    assert not np.isnan(read(acquisition)[0]["P"]).any()


@limited
@wrench_functions
def test_lists_that_no_memory_holds_are_refused(read: Callable[[Any], Any]) -> None:
    acquisition = _moxPY.moxNewAcquisition(0, 1_000_000, 0, 1)
    for entry, values in (("USED", 500), ("TYPE", [2] * 500)):
        info = {"format": "Integer", "values": values}
        _moxPY.moxAppendMetaData(acquisition, "FORCE_PLATFORM", entry, info)
    with address_space(1 << 30), pytest.raises(MemoryError):
        read(acquisition)
    assert len(_moxPY.moxGetForcePlatforms(acquisition)[0]) == 500
