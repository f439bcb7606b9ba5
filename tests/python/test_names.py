"""What module and plugins call things between them is spelt in one place, in schema/."""

from __future__ import annotations

import re
from pathlib import Path

import pytest

REPOSITORY = Path(__file__).resolve().parents[2]
NAMES = [REPOSITORY / "schema" / name for name in ("names.hpp", "computations.hpp")]
FOLDERS = ("schema", "plugins", "store", "acquisition", "api", "module")
SOURCES = [
    path
    for folder in FOLDERS
    for path in sorted((REPOSITORY / folder).rglob("*.[ch]pp"))
    if path not in NAMES
]

TEXT = r'"(?:[^"\\\n]|\\.)*"'

# Functions whose first argument, or whose second, is what something in the store is called. All
# that is told to anybody begins with a capital.
_MEMBERS = r"(?:exists|retrieve|create|delete)_(?:group|set|attribute)"
_BEHIND_OWNER = (
    r"write_(?:number|text)s?|write_or_create|create_text|text_of|"
    r"create_(?:channel_set|row_attribute)|read_parameter_list"
)
_OWNER = r"[\w.:*>-]+(?:\([^()]*\))?"
NAMING_CALL = re.compile(
    rf'\b(?:{_MEMBERS})\(\s*("[A-Z][^"]*")|\b(?:{_BEHIND_OWNER})\(\s*{_OWNER},\s*("[A-Z][^"]*")'
)


def without_comments(code: str) -> str:
    return re.sub(rf"({TEXT})|//[^\n]*", lambda found: found[1] or "", code)


def texts_of(code: str) -> set[str]:
    """The string literals of C++ code; what is included counts as none."""
    lines = [line for line in code.splitlines() if not line.lstrip().startswith("#")]
    return {text[1:-1] for text in re.findall(TEXT, without_comments("\n".join(lines)))}


def names() -> set[str]:
    """All names but those in capitals, which are words of the file format as well."""
    spelt = (texts_of(path.read_text("utf-8")) for path in NAMES)
    return {text for texts in spelt for text in texts if not text.isupper()}


def names_given_to_calls(code: str) -> list[str]:
    return [first or second for first, second in NAMING_CALL.findall(without_comments(code))]


def test_the_names_are_found():
    assert {"Format/Data/Points", "Labels", "T_SCS", "SourceGroup"} - names() == {"T_SCS"}


def test_no_other_file_spells_one_of_the_names():
    spelt = {
        path.relative_to(REPOSITORY).as_posix(): texts_of(path.read_text("utf-8")) & names()
        for path in SOURCES
    }
    assert {path: texts for path, texts in spelt.items() if texts} == {}


def test_no_call_spells_a_name_of_its_own():
    spelt = {
        path.relative_to(REPOSITORY).as_posix(): names_given_to_calls(path.read_text("utf-8"))
        for path in SOURCES
    }
    assert {path: texts for path, texts in spelt.items() if texts} == {}


@pytest.mark.parametrize(
    ("code", "text"),
    [
        ('group.retrieve_attribute("Colour")', '"Colour"'),
        ('if (!format.exists_set("Data/Videos"))', '"Data/Videos"'),
        ('schema::write_texts(set, "Colours", colours);', '"Colours"'),
        ('strata::create_channel_set(\n    data, "Videos", 3, frames);', '"Videos"'),
        ('write_or_create(retrieve_group(root, path), "COLOUR", 1);', '"COLOUR"'),
    ],
)
def test_a_name_in_a_call_is_noticed(code: str, text: str):
    assert names_given_to_calls(code) == [text]


@pytest.mark.parametrize(
    "code",
    [
        "set.retrieve_attribute(attribute::label)",
        'write_text(header, attribute::storage, "real")',
        'create_text(set, attribute::unit, text.empty() ? "" : "mm")',
        'throw_no_such_group("Points")',
        'scratch.create_set("elements", shape)',
        '// as in retrieve_attribute("Label")',
        'splits.empty() ? column("") : set.retrieve_attribute("")',
    ],
)
def test_other_texts_are_none_of_the_rule_s_business(code: str):
    assert names_given_to_calls(code) == []


def test_names_in_comments_and_includes_may_be_spelt():
    code = '#include "Label"\nint x; // "Label"\nauto y = "not // a comment";'
    assert texts_of(code) == {"not // a comment"}
