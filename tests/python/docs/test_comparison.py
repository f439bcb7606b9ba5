"""What the README says of two other packages, asked of those versions that it names."""

from __future__ import annotations

import re
from collections.abc import Callable
from importlib.metadata import version
from pathlib import Path
from typing import Any

import c3d
import ezc3d
import moxPY
import numpy as np
import pytest

README = (Path(__file__).resolve().parents[3] / "README.md").read_text("utf-8")
NAMED = re.search(r"^ezc3d (\S+) and c3d (\S+), as they come", README, re.MULTILINE)

pytestmark = pytest.mark.skipif(
    NAMED is None or NAMED.groups() != (version("ezc3d"), version("c3d")),
    reason="the README compares other versions of ezc3d and c3d",
)


def answers(row: str) -> list[str]:
    """What the table of the README says of moxPY, ezc3d and c3d."""
    found = re.search(rf"^\| {re.escape(row)} \| (.*) \|$", README, re.MULTILINE)
    assert found, row
    return found[1].split(" | ")


@pytest.fixture
def trial() -> moxPY.Trial:
    return moxPY.read(moxPY.example())


def read_by_ezc3d(path: Path) -> Any:
    return ezc3d.c3d(str(path))["data"]["points"][:3].transpose(2, 1, 0)


def read_by_c3d(path: Path) -> Any:
    with path.open("rb") as file:
        frames = [points[:, :3] for _, points, _ in c3d.Reader(file).read_frames()]
    return np.array(frames)


@pytest.mark.parametrize("storage", ["real", "integer"])
@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_who_reads_which_files(
    trial: moxPY.Trial, tmp_path: Path, processor: Any, storage: Any
) -> None:
    path = tmp_path / "form.c3d"
    trial.write(path, storage=storage, processor=processor)
    expected = moxPY.read(path).points.values
    row = (
        "reads MIPS files" if processor == "mips" else "reads Intel and DEC files, real and integer"
    )
    for read, answer in zip([read_by_ezc3d, read_by_c3d], answers(row)[1:], strict=True):
        if answer == "no":
            with pytest.raises(RuntimeError, match="not supported"):
                read(path)
            continue
        found = read(path)
        seen = np.isfinite(expected.reshape(found.shape))
        np.testing.assert_allclose(found[seen], expected[seen.reshape(expected.shape)], atol=2e-4)


def test_what_a_marker_is_that_was_not_seen(trial: moxPY.Trial) -> None:
    missing = np.isnan(trial.points.values)
    assert answers("a marker that was not seen") == ["NaN", "NaN", "0, and a residual of −1"]
    by_ezc3d = read_by_ezc3d(moxPY.example()).reshape(missing.shape)
    assert np.isnan(by_ezc3d[missing]).all()
    by_c3d = read_by_c3d(moxPY.example()).reshape(missing.shape)
    assert not by_c3d[missing].any()


def test_the_forms_that_are_written(trial: moxPY.Trial, tmp_path: Path) -> None:
    source, copy = tmp_path / "source.c3d", tmp_path / "copy.c3d"
    trial.write(source, storage="integer", processor="dec")
    ezc3d.c3d(str(source)).write(str(copy))
    assert processor_and_sign(copy) == (84, -1.0)
    with (
        source.open("rb") as file,
        pytest.raises(ValueError, match="only 'shallow_copy' mode is supported for non Intel"),
    ):
        c3d.Writer.from_reader(c3d.Reader(file), conversion="copy")
    trial.write(source, storage="integer")
    with source.open("rb") as file, copy.open("wb") as written:
        c3d.Writer.from_reader(c3d.Reader(file), conversion="copy").write(written)
    assert processor_and_sign(copy) == (84, 1.0)


def processor_and_sign(path: Path) -> tuple[int, float]:
    """The kind of numbers of a file, and the sign of its scale: negative for real samples."""
    content = path.read_bytes()
    scale = moxPY.read(path, odd="ignore").metadata["POINT"]["SCALE"]
    return content[(content[0] - 1) * 512 + 3], float(np.sign(scale))


@pytest.mark.parametrize("kind", [1, 2])
def test_ezc3d_computes_forces_of_platforms(trial: moxPY.Trial, tmp_path: Path, kind: int) -> None:
    trial.metadata["FORCE_PLATFORM"]["TYPE"] = [kind, kind]
    path = tmp_path / "kind.c3d"
    trial.write(path)
    found = ezc3d.c3d(str(path), extract_forceplat_data=True)["data"]["platform"]
    for by_ezc3d, platform in zip(found, moxPY.read(path).platforms, strict=True):
        force = platform.wrench(at="origin").force
        np.testing.assert_allclose(by_ezc3d["force"].T, force, atol=1e-9)


@pytest.mark.parametrize("name", ["TYPE-3.c3d", "TYPE-4.C3D"])
def test_ezc3d_computes_forces_of_recordings(sample: Callable[[str], Path], name: str) -> None:
    path = sample(name)
    found = ezc3d.c3d(str(path), extract_forceplat_data=True)["data"]["platform"]
    for by_ezc3d, platform in zip(found, moxPY.read(path, odd="ignore").platforms, strict=True):
        force = platform.wrench(at="origin").force
        np.testing.assert_allclose(by_ezc3d["force"].T, force, atol=1e-9)
