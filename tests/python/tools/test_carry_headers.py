"""What a source archive carries along is what was recorded, and nothing else."""

import hashlib

import pytest
from carry_headers import carry, faults, files_below, read_record, record_of
from private_apt import FetchError

PLACES = {"include/one": "usr/include/one", "licences/one.txt": "usr/share/doc/one/copyright"}


@pytest.fixture
def packages(tmp_path):
    root = tmp_path / "packages"
    for name, text in {
        "usr/include/one/one.h": "int one();\n",
        "usr/include/one/detail/more.h": "int more();\n",
        "usr/include/other.h": "int other();\n",
        "usr/share/doc/one/copyright": "Free.\n",
    }.items():
        (root / name).parent.mkdir(parents=True, exist_ok=True)
        (root / name).write_text(text, encoding="utf-8")
    return root


def test_files_are_named_as_in_the_archive(packages):
    assert list(files_below(packages, PLACES)) == [
        "include/one/detail/more.h",
        "include/one/one.h",
        "licences/one.txt",
    ]


def test_record_is_in_the_form_of_sha256sum(packages):
    digest = hashlib.sha256(b"Free.\n").hexdigest()
    text = record_of(files_below(packages, PLACES))
    assert text.splitlines()[-1] == f"{digest}  licences/one.txt"
    assert read_record(text)["licences/one.txt"] == digest


def test_recorded_files_are_carried_and_older_ones_leave(packages, tmp_path):
    files = files_below(packages, PLACES)
    into = tmp_path / "carried"
    into.mkdir()
    (into / "old.h").write_text("int old();\n", encoding="utf-8")
    carry(files, read_record(record_of(files)), into)
    assert {
        path.relative_to(into).as_posix(): path.read_bytes()
        for path in into.rglob("*")
        if path.is_file()
    } == {name: path.read_bytes() for name, path in files.items()}


def test_every_difference_from_the_record_is_named(packages, tmp_path):
    recorded = read_record(record_of(files_below(packages, PLACES)))
    one = packages / "usr" / "include" / "one"
    (one / "one.h").write_text("int two();\n", encoding="utf-8")
    (one / "detail" / "more.h").rename(one / "new.h")
    files = files_below(packages, PLACES)
    assert list(faults(files, recorded)) == [
        "include/one/detail/more.h is missing",
        "include/one/new.h is not recorded",
        "include/one/one.h is not the recorded file",
    ]
    into = tmp_path / "carried"
    with pytest.raises(FetchError, match=r"^The carried headers differ from their record:\n"):
        carry(files, recorded, into)
    assert not into.exists()
