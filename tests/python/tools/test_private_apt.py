import pytest
from private_apt import (
    FetchError,
    Mirror,
    mirrors_in_list,
    mirrors_in_sources,
    release_codename,
    versions_in,
)


def test_codename_is_read_with_and_without_quotes():
    assert release_codename('ID=debian\nVERSION_CODENAME="bookworm"\n') == "bookworm"
    assert release_codename("VERSION_CODENAME=trixie\n") == "trixie"


def test_machine_without_codename_is_refused_in_words():
    with pytest.raises(FetchError) as error:
        release_codename("ID=other\n")
    assert str(error.value) == "This machine does not name a Debian release in /etc/os-release."


@pytest.mark.parametrize(
    ("line", "key"),
    [
        ("deb http://mirror.example/debian bookworm main", None),
        ("deb [arch=amd64 signed-by=/k.gpg] http://mirror.example/debian bookworm main", "/k.gpg"),
    ],
)
def test_one_line_source_of_the_suite_is_taken(line, key):
    assert list(mirrors_in_list(line, "bookworm")) == [Mirror("http://mirror.example/debian", key)]


@pytest.mark.parametrize(
    "line",
    [
        "# deb http://mirror.example/debian bookworm main",
        "deb-src http://mirror.example/debian bookworm main",
        "deb http://mirror.example/debian bookworm-security main",
        "deb http://mirror.example/other bookworm contrib",
    ],
)
def test_other_one_line_sources_are_left_out(line):
    assert list(mirrors_in_list(line, "bookworm")) == []


STANZA = """\
Types: deb
# a remark
URIs: http://mirror.example/debian
Suites: bookworm bookworm-updates
Components: main contrib
Signed-By: /k.gpg
"""


def test_stanza_of_the_suite_is_taken():
    found = list(mirrors_in_sources(STANZA, "bookworm"))
    assert found == [Mirror("http://mirror.example/debian", "/k.gpg")]


def test_disabled_stanza_is_left_out():
    assert list(mirrors_in_sources(STANZA + "Enabled: no\n", "bookworm")) == []


def test_second_stanza_is_found():
    other = "Types: deb\nURIs: http://other.example\nSuites: else\nComponents: main\n"
    found = list(mirrors_in_sources(other + "\n" + STANZA, "bookworm"))
    assert found == [Mirror("http://mirror.example/debian", "/k.gpg")]


def test_key_block_keeps_its_lines():
    block = "-----BEGIN PGP PUBLIC KEY BLOCK-----\n .\n mQINBF\n"
    stanza = STANZA.replace("Signed-By: /k.gpg", f"Signed-By:\n {block}".rstrip())
    (mirror,) = mirrors_in_sources(stanza, "bookworm")
    assert mirror.signed_by == f"{block}".rstrip()


MADISON = """\
libfmt-dev | 12.1.0-1 | http://mirror.example/debian sid/main amd64 Packages
libfmt-dev | 11.1.1+ds1-2 | http://mirror.example/debian sid/main amd64 Packages
libfmt-dev | 11.0.2-1 | http://mirror.example/debian sid/main amd64 Packages
 googletest |   1.18.0-1 | http://mirror.example/debian sid/main amd64 Packages
other | 11.5 | http://mirror.example/debian sid/main amd64 Packages
"""


def test_first_fitting_version_of_each_package_is_taken():
    requests = {"libfmt-dev": "11.*", "googletest": "1.*", "nlohmann-json3-dev": "*"}
    expected = {"libfmt-dev": "11.1.1+ds1-2", "googletest": "1.18.0-1"}
    assert versions_in(MADISON, requests) == expected


def test_package_without_a_fitting_version_is_left_out():
    assert versions_in(MADISON, {"libfmt-dev": "10.*"}) == {}
