"""What a public CI is told to make is every wheel that is promised."""

import tomllib
from pathlib import Path

import pytest
import yaml

PROJECT = Path(__file__).parents[3]
PYTHONS = ["cp311", "cp312", "cp313", "cp314"]


@pytest.fixture(scope="module")
def settings():
    project = tomllib.loads((PROJECT / "pyproject.toml").read_text(encoding="utf-8"))
    return project["tool"]["cibuildwheel"]


@pytest.fixture(scope="module")
def jobs():
    text = (PROJECT / ".github" / "workflows" / "wheels.yml").read_text(encoding="utf-8")
    return yaml.safe_load(text)["jobs"]


def test_each_python_is_built_for(settings):
    assert settings["build"] == [f"{python}-*" for python in PYTHONS]


def test_each_processor_of_each_system_has_a_machine(settings, jobs):
    machines = jobs["wheel"]["strategy"]["matrix"]["include"]
    wanted = [
        arch for system in ("linux", "windows", "macos") for arch in settings[system]["archs"]
    ]
    assert [machine["archs"] for machine in machines] == wanted


def test_the_command_runs_tests_that_exist(settings):
    *_, folder = settings["test-command"].split()
    tests = PROJECT / folder.removeprefix("{project}/")
    assert sorted(tests.glob("test_*.py"))


def test_only_a_tag_publishes_and_only_what_was_tested(jobs):
    publish = jobs["publish"]
    assert publish["if"] == "startsWith(github.ref, 'refs/tags/v')"
    assert publish["needs"] == ["archive", "wheel"]
    assert [name for name, job in jobs.items() if "id-token" in job.get("permissions", {})] == [
        "publish"
    ]
