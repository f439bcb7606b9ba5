"""Real recordings: what was looked at and found true, and no false alarms beside it."""

from __future__ import annotations

from typing import Any

import moxPY
import pytest

FOUND = {
    "2198928.c3d": {"ends"},
    "C3DRotationExample.c3d": set(),
    # Two markers that were swapped or moved, platforms that nobody zeroed.
    "Eb015pr.c3d": {"gaps", "ends", "jumps", "baselines"},
    "Eb015si.c3d": {"gaps", "ends", "jumps", "baselines"},
    "Optotrak.c3d": {"contradictions", "ends", "empty"},
    "TYPE-2.C3D": {"contradictions", "ends"},
    # Baselines of 79 to 212 N, which move the points of application.
    "TYPE-3.c3d": {"gaps", "ends", "doubled", "off_plate", "baselines"},
    "TYPE-4.C3D": {"contradictions", "ends"},
    # Metres that are called millimetres.
    "basketball.c3d": {"contradictions", "extent"},
    # Channels that nothing is plugged in.
    "gait-pig.c3d": {"contradictions", "ends", "dead"},
    "kyowadengyo.c3d": {"contradictions", "ends", "dead"},
    # Every marker shivers in the first frame; forces under a threshold are 0.
    "type1.C3D": {"ends", "jumps", "clipped_baselines"},
    "short.c3d": {"empty", "doubled", "one_sided"},
}


@pytest.mark.parametrize("name", FOUND)
def test_real_recordings_have_the_faults_that_they_have(sample: Any, name: str) -> None:
    with moxPY.read(sample(name), odd="ignore") as trial:
        assert {finding.rule for finding in trial.check()} == FOUND[name]


def test_a_marker_that_was_swapped_is_found_where_it_is(sample: Any) -> None:
    with moxPY.read(sample("Eb015pr.c3d"), odd="ignore") as trial:
        jumps = {finding.channel: finding.frames for finding in trial.check(only="jumps")}
    assert jumps == {"LFT3": (43, 44), "RSK1": (167, 168)}
