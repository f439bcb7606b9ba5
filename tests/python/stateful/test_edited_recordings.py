"""Real files and files made by code: whatever was edited is what the written file says.

The getters of the acquisition before it is written and of the one that is read back are compared,
value by value. A file holds single precision, a unit for each kind of points, lists that follow
from its content, and new samples of a channel without the offset or the scale of 0 that would
spoil them; nothing else may differ.
"""

from __future__ import annotations

import os
from collections.abc import Callable, Iterator
from pathlib import Path
from random import Random
from typing import Any

import _moxPY
import numpy as np
import pytest
from stateful.random_edits import DERIVED_GROUPS, EDITS
from stateful.start_files import file_with_everything, file_without_analogs
from support.c3d_bytes import C3DFile
from support.same_readings import readings
from support.sample_table import SAMPLES
from support.ways import Way, write_to

# The same sequences in every run. A number in MOXPY_EDITING_SEQUENCES searches that many.
SEQUENCES = range(int(os.environ.get("MOXPY_EDITING_SEQUENCES", "2")))
ROUNDS, EDITS_A_ROUND = 4, 5
MADE: dict[str, Callable[[], C3DFile]] = {
    "everything": file_with_everything,
    "no analogs": file_without_analogs,
}


def edit_at_random(random: Random, acquisition: Any) -> Iterator[str]:
    """Names of the edits that were done; those that are refused are part of a user's day."""
    for _ in range(EDITS_A_ROUND):
        name = random.choice(list(EDITS))
        try:
            EDITS[name](random, acquisition)
        except (RuntimeError, ValueError, TypeError, OverflowError, SystemError) as refusal:
            yield f"{name}: {refusal}"
        else:
            yield name


def told(acquisition: Any) -> dict[str, Any]:
    """What the getters say, as far as a file can hold it."""
    results = readings(acquisition)
    groups = _moxPY.moxGetMetaData(acquisition)["children"]
    results["metadata"] = {
        name: group for name, group in groups.items() if name not in DERIVED_GROUPS
    }
    return results


def differences(place: str, before: Any, after: Any) -> Iterator[str]:
    if isinstance(before, dict) and isinstance(after, dict):
        for key in {**before, **after}:
            if key not in before or key not in after:
                yield f"{place}/{key}: {'lost' if key in before else 'came from nowhere'}"
            else:
                yield from differences(f"{place}/{key}", before[key], after[key])
    elif isinstance(before, list) and isinstance(after, list):
        if len(before) != len(after):
            yield f"{place}: {len(before)} entries became {len(after)}"
        for index, (one, other) in enumerate(zip(before, after, strict=False)):
            yield from differences(f"{place}/{index}", one, other)
    elif not (are_same(before, after, place) or is_expected(place, before, after)):
        yield f"{place}: {before!r:.200} became {after!r:.200}"


def is_expected(place: str, before: Any, after: Any) -> bool:
    if isinstance(before, tuple):  # it raised, for what every written file has
        return True
    match place.rpartition("/")[2]:
        case "units":
            return bool(before == "Unknown" and isinstance(after, str))
        case "offset":
            return bool(after == 0.0)
        case "scale":
            return bool(before == 0.0 and after == 1.0)
    return False


def are_same(before: Any, after: Any, place: str) -> bool:
    """Points as the same singles, analog samples and what is computed from them nearly so."""
    one, other = np.asarray(before), np.asarray(after)
    if type(before) is not type(after) or one.shape != other.shape or one.dtype != other.dtype:
        return False
    if one.dtype.kind != "f":
        return bool(np.all(one == other))
    if place.startswith("/Point"):
        return np.array_equal(one.astype(np.float32), other.astype(np.float32), equal_nan=True)
    unit = np.nanmax(np.abs(one), initial=0.0, where=~np.isnan(one))
    return np.allclose(one, other, rtol=1e-6, atol=1e-6 * unit, equal_nan=True)


@pytest.mark.parametrize("sequence", SEQUENCES)
@pytest.mark.parametrize("name", [*MADE, *(entry.name for entry in SAMPLES)])
def test_what_was_edited_is_what_is_read_back(
    sample: Callable[[str], Path], tmp_path: Path, way: Way, name: str, sequence: int
) -> None:
    source = tmp_path / "source.c3d"
    source.write_bytes(MADE[name]().to_bytes() if name in MADE else sample(name).read_bytes())
    random = Random(f"{name} {sequence}")
    acquisition = way.read(source)
    done: list[str] = []
    for round_number in range(ROUNDS):
        done += edit_at_random(random, acquisition)
        path = tmp_path / f"{round_number}.c3d"
        before = told(acquisition)
        write_to(acquisition, path)
        written = way.read(path)
        found = list(differences("", before, told(written)))
        assert found == [], "\n".join([*found[:20], "after", *done])
        if random.random() < 0.5:
            acquisition = written
