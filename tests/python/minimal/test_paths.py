"""Names of files that are more than plain letters."""

from __future__ import annotations

from pathlib import Path

import moxPY as mox
import numpy as np
import pytest

NAMES = ["my trial.c3d", "Läufer ÄÖÜ ß.c3d", "歩行.c3d", "🚶.c3d", "{}.c3d"]


@pytest.mark.parametrize("name", NAMES)
def test_a_name_is_written_and_read(trial: mox.Trial, tmp_path: Path, name: str) -> None:
    path = tmp_path / name
    trial.write(path)
    assert path.name in [entry.name for entry in tmp_path.iterdir()]
    np.testing.assert_array_equal(
        mox.read(path).markers["LASI"].values, trial.markers["LASI"].values
    )


def test_a_relative_name(trial: mox.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(tmp_path)
    (tmp_path / "inner").mkdir()
    trial.write("inner/../new.c3d")
    assert mox.read("new.c3d").frames == 5
