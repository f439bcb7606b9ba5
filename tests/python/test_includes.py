"""The folders depend on each other in one direction; the first lines of every file prove it."""

from __future__ import annotations

import re
from pathlib import Path

import pytest

REPOSITORY = Path(__file__).resolve().parents[2]

# What the files of a folder may include besides the folder itself.
PLATFORM = {"anvil", "strata"}
ALLOWED = {
    "platform/anvil": {"anvil"},
    "platform/strata": PLATFORM,
    "schema": PLATFORM,
    "plugins/c3d": PLATFORM | {"schema"},
    "plugins/classical_mechanics": PLATFORM | {"schema"},
    "plugins/data_modifier": PLATFORM | {"schema"},
    "plugins/opensim": PLATFORM | {"schema"},
    "examples/plugin": PLATFORM,
    "store": PLATFORM | {"schema"},
    "acquisition": PLATFORM | {"schema", "store"},
    "api": PLATFORM | {"schema", "store", "acquisition"},
    "module": PLATFORM | {"store", "acquisition", "api"},
}
# First components of include paths that lead into this project.
OWN = PLATFORM | {"platform", "plugins", "examples", "store", "acquisition", "api", "module"}
OWN |= {"schema", "tests", "benchmarks"}

SOURCES = [path for folder in ALLOWED for path in sorted((REPOSITORY / folder).rglob("*.[ch]pp"))]


def name_of(path: Path) -> str:
    return path.relative_to(REPOSITORY).as_posix()


def includes_of(path: Path, marks: str = '"<') -> list[str]:
    """What a file includes, in quotes or in angle brackets."""
    pattern = rf'^\s*#\s*include\s*[{marks}]([^">]+)[">]'
    return re.findall(pattern, path.read_text("utf-8"), re.MULTILINE)


def folder_of(path: Path) -> str:
    return next(folder for folder in ALLOWED if name_of(path).startswith(f"{folder}/"))


def is_allowed(include: str, folder: str) -> bool:
    component = include.partition("/")[0]
    is_own = component in OWN
    return not is_own or component in ALLOWED[folder] or include.startswith(f"{folder}/")


def test_every_folder_with_sources_has_its_place():
    parts = {path.relative_to(REPOSITORY).parts[0] for path in REPOSITORY.glob("[a-z]*/**/*.cpp")}
    known = {folder.partition("/")[0] for folder in ALLOWED}
    assert parts - {"benchmarks", "build", "dist", "tests"} == known


def test_includes_never_point_backwards():
    backwards = [
        (name_of(path), include)
        for path in SOURCES
        for include in includes_of(path)
        if not is_allowed(include, folder_of(path))
    ]
    assert backwards == []


# Folders whose own folders are subjects, and which of these each may include besides itself. The
# files beside the subjects bring all together.
_BYTES_TO_SAMPLES = {"bytes", "parameters", "frames", "samples"}
SUBJECTS: dict[str, dict[str, set[str]]] = {
    "plugins/c3d": {
        "bytes": set(),
        "parameters": {"bytes"},
        "frames": {"bytes", "parameters"},
        "samples": {"bytes", "parameters", "frames"},
        "points": _BYTES_TO_SAMPLES,
        "analogs": _BYTES_TO_SAMPLES,
        "events": _BYTES_TO_SAMPLES,
        "rotations": _BYTES_TO_SAMPLES,
        # The table of a platform's channels is written in their order.
        "platforms": {*_BYTES_TO_SAMPLES, "analogs"},
    },
    "acquisition": {
        "channels": set(),
        "time_base": {"channels"},
        "platforms": {"channels"},
        "files": {"channels", "time_base", "platforms"},
    },
}
every_house = pytest.mark.parametrize("house", SUBJECTS)


def is_below(include: str, house: str, subject: str) -> bool:
    """True for what a subject may include of its house: its own folder and those below it."""
    folder = include.removeprefix(f"{house}/").rpartition("/")[0]
    return folder == subject or folder in SUBJECTS[house][subject]


@every_house
def test_every_subject_has_its_place(house: str):
    folders = {path.name for path in (REPOSITORY / house).iterdir() if any(path.glob("*.cpp"))}
    assert folders == SUBJECTS[house].keys()


@every_house
def test_subjects_never_include_upwards(house: str):
    upwards = [
        (name_of(path), include)
        for subject in SUBJECTS[house]
        for path in sorted((REPOSITORY / house / subject).glob("*.[ch]pp"))
        for include in includes_of(path)
        if include.startswith(f"{house}/") and not is_below(include, house, subject)
    ]
    assert upwards == []


@pytest.mark.parametrize(
    ("house", "subject", "include"),
    [
        ("plugins/c3d", "bytes", "plugins/c3d/parameters/parameter.hpp"),
        ("plugins/c3d", "frames", "plugins/c3d/samples/decoder.hpp"),
        ("plugins/c3d", "events", "plugins/c3d/points/point_columns.hpp"),
        ("plugins/c3d", "events", "plugins/c3d/header_block.hpp"),
        ("acquisition", "channels", "acquisition/time_base/sampling.hpp"),
        ("acquisition", "files", "acquisition/new_acquisition.hpp"),
    ],
)
def test_includes_from_a_subject_upwards_are_noticed(house: str, subject: str, include: str):
    assert not is_below(include, house, subject)


def folders_of(pattern: str) -> set[str]:
    return {path.parent.name for path in REPOSITORY.glob(pattern)}


def test_a_family_has_one_name_everywhere():
    families = folders_of("python/moxPY/functions/*/*.py")
    # What points and analog channels share is no family of functions; the functions of whole
    # acquisitions lie in the folder below the families.
    assert families == folders_of("api/*/*.cpp") - {"channels"} | {"acquisition"}
    assert families | {"channels"} <= folders_of("tests/python/*/test_*.py")


def test_includes_in_quotes_are_paths_from_the_root():
    others = [
        (name_of(path), include)
        for path in SOURCES
        for include in includes_of(path, marks='"')
        if not (REPOSITORY / include).is_file()
    ]
    assert others == []


def test_python_and_numpy_enter_through_one_header():
    entrances = {
        name_of(path)
        for path in SOURCES
        for include in includes_of(path)
        if re.match(r"Python\.h|numpy/", include)
    }
    assert entrances == {"store/python.hpp"}


def test_the_python_header_comes_first():
    later = [name_of(path) for path in SOURCES if "store/python.hpp" in includes_of(path)[1:]]
    assert later == []


def test_sources_include_their_own_header():
    without = [
        name_of(path)
        for path in SOURCES
        if path.suffix == ".cpp"
        and path.with_suffix(".hpp").exists()
        and name_of(path.with_suffix(".hpp")) not in includes_of(path)
    ]
    assert without == []


@pytest.mark.parametrize(
    ("folder", "include"),
    [
        ("schema", "acquisition/channels/channels.hpp"),
        ("platform/strata", "schema/analog_pairing.hpp"),
        ("platform/anvil", "strata/data_set.hpp"),
        ("platform/strata", "store/typed_access.hpp"),
        ("plugins/c3d", "store/typed_access.hpp"),
        ("plugins/c3d", "plugins/data_modifier/split_set.hpp"),
        ("plugins/c3d", "platform/strata/src/tree/tree_path.hpp"),
        ("store", "acquisition/channels/channels.hpp"),
        ("acquisition", "api/channels/channel_lookup.hpp"),
        ("api", "module/call_frame.hpp"),
    ],
)
def test_includes_that_point_backwards_are_noticed(folder: str, include: str):
    assert not is_allowed(include, folder)
