from __future__ import annotations

import subprocess
from pathlib import Path

import changed_sources
import pytest
from changed_sources import base_of, changed_files

FOLDERS = ["api", "platform"]


class Repository:
    """A repository whose commits a test makes."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        self.git("init", "--quiet", "--initial-branch=main")
        self.commit("README.md", "api/old.cpp")

    def git(self, *arguments: str) -> str:
        who = ["-c", "user.name=A", "-c", "user.email=a@example.org", "-c", "commit.gpgsign=false"]
        return subprocess.run(
            ["git", *who, *arguments], cwd=self.folder, check=True, capture_output=True, text=True
        ).stdout.strip()

    def write(self, name: str, text: str = "") -> None:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        old = path.read_text() if path.exists() else ""
        path.write_text(f"{old}{text}\n")

    def commit(self, *names: str) -> str:
        for name in names:
            self.write(name)
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message=A change")
        return self.git("rev-parse", "HEAD")

    def sources(self) -> list[str]:
        return changed_sources.changed_sources(self.folder, base_of(self.folder), FOLDERS)


@pytest.fixture
def repository(tmp_path: Path) -> Repository:
    return Repository(tmp_path)


def test_on_a_branch_all_its_commits_count_the_newest_first(repository: Repository):
    repository.git("switch", "--quiet", "--create", "work")
    repository.commit("api/b.cpp")
    repository.commit("api/a.cpp", "docs/page.md", "tests/a.cpp")
    repository.commit("api/c.cpp")
    assert repository.sources() == ["api/c.cpp", "api/a.cpp", "api/b.cpp"]


def test_changes_of_the_main_branch_since_then_do_not_count(repository: Repository):
    repository.git("switch", "--quiet", "--create", "work")
    repository.commit("api/a.cpp")
    repository.git("switch", "--quiet", "main")
    repository.commit("api/b.cpp")
    repository.git("switch", "--quiet", "work")
    assert repository.sources() == ["api/a.cpp"]


def test_on_the_main_branch_the_last_commit_counts(repository: Repository):
    repository.commit("api/a.cpp")
    repository.commit("api/b.cpp")
    assert repository.sources() == ["api/b.cpp"]


def test_commits_that_were_not_pushed_count(repository: Repository, tmp_path_factory):
    clone = tmp_path_factory.mktemp("clone") / "clone"
    repository.git("clone", "--quiet", ".", str(clone))
    cloned = Repository.__new__(Repository)
    cloned.folder = clone
    cloned.commit("api/a.cpp")
    cloned.commit("api/b.cpp")
    assert cloned.sources() == ["api/b.cpp", "api/a.cpp"]


def test_of_a_shallow_clone_all_files_are_as_new_as_its_commit(
    repository: Repository, tmp_path_factory
):
    repository.commit("api/a.cpp")
    shallow = tmp_path_factory.mktemp("clone") / "shallow"
    repository.git("clone", "--quiet", "--depth=1", f"file://{repository.folder}", str(shallow))
    assert base_of(shallow) is None
    assert changed_files(shallow, None) == ["README.md", "api/a.cpp", "api/old.cpp"]


def test_a_detached_head_without_branches_has_changed_since_its_parent(repository: Repository):
    repository.commit("api/a.cpp")
    repository.commit("api/b.cpp")
    repository.git("checkout", "--quiet", "--detach")
    repository.git("branch", "--quiet", "--delete", "--force", "main")
    assert repository.sources() == ["api/b.cpp"]


def test_without_a_repository_nothing_is_taken_for_unchanged(tmp_path: Path):
    with pytest.raises(SystemExit, match="is no git repository with a commit"):
        base_of(tmp_path)


def test_what_is_not_committed_counts_and_comes_first(repository: Repository):
    repository.commit("api/a.cpp")
    repository.write("api/old.cpp", "changed")
    repository.write("api/new.cpp")
    assert repository.sources() == ["api/new.cpp", "api/old.cpp", "api/a.cpp"]


def test_a_source_that_went_is_left_out(repository: Repository):
    repository.commit("api/a.cpp")
    (repository.folder / "api/old.cpp").unlink()
    repository.commit()
    assert repository.sources() == []


def test_a_header_stands_for_its_source(repository: Repository):
    repository.commit("api/a.cpp", "api/a.hpp")
    repository.commit("api/a.hpp")
    assert repository.sources() == ["api/a.cpp"]


@pytest.mark.parametrize(
    ("header", "include"),
    [
        ("api/all.hpp", '#include "api/all.hpp"'),
        ("platform/anvil/include/anvil/all.hpp", "#include <anvil/all.hpp>"),
    ],
)
def test_a_header_without_a_source_stands_for_one_that_includes_it(
    repository: Repository, header: str, include: str
):
    repository.write("api/deep/user.cpp", include)
    repository.write("tests/user.cpp", include)
    repository.commit()
    repository.commit(header)
    assert repository.sources() == ["api/deep/user.cpp"]
    repository.commit("api/unused.hpp")
    assert repository.sources() == []


def test_the_oldest_changes_are_left_out_and_named(
    repository: Repository, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
):
    base = repository.git("rev-parse", "HEAD")
    for name in "abc":
        repository.commit(f"api/{name}.cpp")
    monkeypatch.setattr(changed_sources, "PROJECT", repository.folder)
    arguments = ["changed_sources.py", "--base", base, "--most", "2", "api"]
    monkeypatch.setattr("sys.argv", arguments)
    assert changed_sources.main() == 0
    printed = capsys.readouterr()
    assert printed.out.split() == ["api/c.cpp", "api/b.cpp"]
    assert printed.err == "Left out, its change is older: api/a.cpp\n"
