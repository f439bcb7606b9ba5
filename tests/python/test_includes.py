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
    "plugins/data_modifier": PLATFORM,
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


# What the folders of the C3D plugin may include of it besides themselves. The files beside the
# folders bring all together.
C3D = "plugins/c3d"
BELOW = {
    "bytes": set[str](),
    "parameters": {"bytes"},
    "frames": {"bytes", "parameters"},
    "samples": {"bytes", "parameters", "frames"},
}
BELOW |= {subject: {*BELOW} for subject in ("points", "analogs", "events", "rotations")}
# The table of a platform's channels is written in their order.
BELOW["platforms"] = {*BELOW["analogs"], "analogs"}


def is_below(include: str, subject: str) -> bool:
    """A subject's files include their own folder and those below it, and no file beside these."""
    folder = include.removeprefix(f"{C3D}/").rpartition("/")[0]
    return folder == subject or folder in BELOW[subject]


def test_every_subject_of_the_c3d_plugin_has_its_place():
    folders = {path.name for path in (REPOSITORY / C3D).iterdir() if any(path.glob("*.cpp"))}
    assert folders == BELOW.keys()


def test_subjects_of_the_c3d_plugin_never_include_upwards():
    upwards = [
        (name_of(path), include)
        for subject in BELOW
        for path in sorted((REPOSITORY / C3D / subject).glob("*.[ch]pp"))
        for include in includes_of(path)
        if include.startswith(f"{C3D}/") and not is_below(include, subject)
    ]
    assert upwards == []


@pytest.mark.parametrize(
    ("subject", "include"),
    [
        ("bytes", "plugins/c3d/parameters/parameter.hpp"),
        ("frames", "plugins/c3d/samples/kernel_set.hpp"),
        ("events", "plugins/c3d/points/point_columns.hpp"),
        ("events", "plugins/c3d/header_block.hpp"),
    ],
)
def test_includes_upwards_in_the_c3d_plugin_are_noticed(subject: str, include: str):
    assert not is_below(include, subject)


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
        ("schema", "acquisition/channels.hpp"),
        ("platform/strata", "schema/analog_pairing.hpp"),
        ("platform/anvil", "strata/data_set.hpp"),
        ("platform/strata", "store/typed_access.hpp"),
        ("plugins/c3d", "store/typed_access.hpp"),
        ("plugins/c3d", "plugins/data_modifier/split_set.hpp"),
        ("plugins/c3d", "platform/strata/src/tree/tree_path.hpp"),
        ("store", "acquisition/channels.hpp"),
        ("acquisition", "api/channels/channel_lookup.hpp"),
        ("api", "module/call_frame.hpp"),
    ],
)
def test_includes_that_point_backwards_are_noticed(folder: str, include: str):
    assert not is_allowed(include, folder)
