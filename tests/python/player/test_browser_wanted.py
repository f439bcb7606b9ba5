"""Without a browser its tests are skipped, or fail where a browser is required."""

from __future__ import annotations

from pathlib import Path

import pytest
from support.chromium import PROGRAMS, WANTED, programs


@pytest.fixture(autouse=True)
def folder(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    """The only folder on the path."""
    monkeypatch.setenv("PATH", str(tmp_path))
    monkeypatch.delenv("LD_PRELOAD", raising=False)
    monkeypatch.delenv(WANTED, raising=False)
    return tmp_path


def install(folder: Path, *names: str) -> list[str]:
    for name in names:
        (folder / name).touch(0o755)
    return [str(folder / name) for name in names]


def test_both_programs_are_found(folder: Path):
    found = install(folder, *PROGRAMS)
    assert programs() == found


def test_without_a_browser_the_tests_are_skipped():
    with pytest.raises(pytest.skip.Exception, match="no chromium and no chromedriver on the path"):
        programs()


def test_where_a_browser_is_required_they_fail(folder: Path, monkeypatch: pytest.MonkeyPatch):
    monkeypatch.setenv(WANTED, "required")
    install(folder, "chromium")
    with pytest.raises(pytest.fail.Exception, match="no chromedriver on the path, and MOXPY_BROW"):
        programs()


def test_under_the_sanitizers_they_are_skipped(folder: Path, monkeypatch: pytest.MonkeyPatch):
    install(folder, *PROGRAMS)
    monkeypatch.setenv(WANTED, "required")
    monkeypatch.setenv("LD_PRELOAD", "libasan.so")
    with pytest.raises(pytest.skip.Exception, match="sanitizers"):
        programs()


def test_ci_requires_one():
    run = Path(__file__).resolve().parents[3] / ".ci" / "run"
    lines = run.read_text("utf-8").splitlines()
    assert f"export {WANTED}=required" in lines
